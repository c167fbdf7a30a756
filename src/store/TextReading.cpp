#include "store/TextReading.h"

#include <limits>

namespace text {

qint64 leadingNumber(QStringView text)
{
    constexpr qint64 ceiling = std::numeric_limits<qint64>::max() / 10 - 9;
    qint64 value = 0;
    for (const QChar c : text) {
        if (c < u'0' || c > u'9')
            break;
        if (value > ceiling)
            return std::numeric_limits<qint64>::max();
        value = value * 10 + (c.unicode() - u'0');
    }
    return value;
}

qint64 numberAt(QStringView text, int from, int length)
{
    if (from < 1 || from > text.size())
        return 0;
    return leadingNumber(text.mid(from - 1, length));
}

} // namespace text
