#include "treatment/Minutes.h"

#include "base/Calendar.h"
#include "base/RunState.h"
#include "store/Dates.h"
#include "store/Sql.h"

#include <QHash>

#include <limits>

qint16 ActivityMinutes(const QString &code)
{
    // А and Б are Cyrillic, A and B Latin: both alphabets are taken.
    static const QHash<QString, qint16> minutes{
        {QStringLiteral("101"), 15},  {QStringLiteral("301"), 26},  {QStringLiteral("301А"), 26},
        {QStringLiteral("301Б"), 26}, {QStringLiteral("301A"), 26}, {QStringLiteral("301B"), 26},
        {QStringLiteral("302"), 26},  {QStringLiteral("302А"), 26}, {QStringLiteral("302Б"), 26},
        {QStringLiteral("302A"), 26}, {QStringLiteral("302B"), 26}, {QStringLiteral("303"), 26},
        {QStringLiteral("303А"), 26}, {QStringLiteral("303Б"), 26}, {QStringLiteral("303A"), 26},
        {QStringLiteral("303B"), 26}, {QStringLiteral("304"), 26},  {QStringLiteral("304А"), 26},
        {QStringLiteral("304Б"), 26}, {QStringLiteral("304A"), 26}, {QStringLiteral("304B"), 26},
        {QStringLiteral("332"), 39},  {QStringLiteral("333"), 141}, {QStringLiteral("508"), 17},
        {QStringLiteral("509"), 22},
    };
    return minutes.value(code, 0);
}

int DayBudgetMinutes(const QString &code)
{
    // Cyrillic letters only: a Latin 301B uses up nothing of the day.
    static const QHash<QString, int> minutes{
        {QStringLiteral("101"), 15},  {QStringLiteral("301"), 26}, {QStringLiteral("301А"), 26},
        {QStringLiteral("301Б"), 26}, {QStringLiteral("508"), 17}, {QStringLiteral("509"), 22},
        {QStringLiteral("332"), 39},  {QStringLiteral("333"), 141},
    };
    return minutes.value(code, 0);
}

Result<qint16> MinutesLeftOn(const QSqlDatabase &clinic, const QDate &day)
{
    try {
        // Grouped in the store: one row per code, so the cost does not grow with the day's lines.
        QSqlQuery codes = store::run(clinic, QStringLiteral("SELECT KodHelp, COUNT(*) FROM Help WHERE Data = ? GROUP BY KodHelp"),
                                     {dates::toIso(day)});
        qint64 left = MinutesOfDay;
        while (codes.next())
            left -= qint64(DayBudgetMinutes(codes.value(0).toString())) * codes.value(1).toLongLong();
        if (left < std::numeric_limits<qint16>::min())
            return Result<qint16>::failure(
                QStringLiteral("Минутите за деня излизат извън допустимите граници (%1). "
                               "Проверете дейностите, записани с дата %2.")
                    .arg(left)
                    .arg(dates::toTyped(day)));
        return Result<qint16>::success(qint16(left));
    } catch (const store::SqlError &error) {
        return Result<qint16>::failure(error.message());
    }
}

Outcome RecalcMinutesLeft(const QSqlDatabase &clinic)
{
    const auto left = MinutesLeftOn(clinic, calendar::today());
    if (!left)
        return Outcome::failure(left.error());
    run().MinutesLeft = left.value();
    return Outcome::success();
}
