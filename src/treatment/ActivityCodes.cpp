#include "treatment/ActivityCodes.h"

#include <QSet>

namespace activities {

bool IsFillingCode(const QString &code)
{
    static const QSet<QString> codes = [] {
        QSet<QString> all;
        for (const QString &base : {QStringLiteral("301"), QStringLiteral("302"), QStringLiteral("303"), QStringLiteral("304")})
            for (const QString &letter : {QString(), QStringLiteral("А"), QStringLiteral("Б"), QStringLiteral("В"),
                                         QStringLiteral("A"), QStringLiteral("B")})
                all.insert(base + letter);
        return all;
    }();
    return codes.contains(code);
}

bool IsToothBoundCode(const QString &code)
{
    static const QSet<QString> others{QStringLiteral("332"), QStringLiteral("333"), QStringLiteral("508"),
                                      QStringLiteral("509")};
    return IsFillingCode(code) || others.contains(code);
}

} // namespace activities
