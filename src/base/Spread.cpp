#include "base/Spread.h"

namespace {

QString spread(const QString &value, const QString &gap)
{
    QString result = value.left(1);
    for (int position = 2; position <= 10; ++position)
        result += gap + value.mid(position - 1, 1);
    return result;
}

} // namespace

QString SpreadWide(const QString &value) { return spread(value, QStringLiteral("  ")); }
QString SpreadNarrow(const QString &value) { return spread(value, QStringLiteral(" ")); }
