#include "reports/forms/Accounting.h"

#include "reports/PeriodLines.h"
#include "store/Sql.h"

#include <cmath>

namespace accounting {

QString LevaText(qint64 cents)
{
    const QString sign = cents < 0 ? QStringLiteral("-") : QString();
    const qint64 whole = std::llabs(cents);
    return sign + QStringLiteral("%1.%2 лв.").arg(whole / 100).arg(whole % 100, 2, 10, QChar(u'0'));
}

qint64 PriceCents(const QVariant &cena)
{
    bool ok = false;
    const double value = cena.toDouble(&ok);
    return ok && std::isfinite(value) ? std::llround(value * 100.0) : 0;
}

Result<BookPeriod> LoadBookPeriod(const QSqlDatabase &clinic, const reports::Period &period)
{
    BookPeriod book;
    try {
        reports::WalkLines(clinic, {period, {}, reports::LineOrder::ByDate}, [&book](const reports::ServiceLine &line) {
            const BookLine row{line.id, line.Data, line.KodHelp, line.TextHelp, PriceCents(line.Cena), line.Schet, line.EGN};
            book.sums.totalCents += row.cents;
            if (row.Schet)
                book.sums.bookedCents += row.cents;
            book.lines << row;
        });
    } catch (const store::SqlError &error) {
        return Result<BookPeriod>::failure(error.message());
    }
    return Result<BookPeriod>::success(book);
}

Outcome SaveBooking(const QSqlDatabase &clinic, qint64 lineId, bool schet)
{
    try {
        store::Transaction transaction(clinic);
        const QSqlQuery update = store::run(clinic, QStringLiteral("UPDATE Help SET Schet = ? WHERE ID = ?"),
                                            {schet ? 1 : 0, lineId});
        if (update.numRowsAffected() != 1)
            return Outcome::failure(QStringLiteral("Редът на услугата (№ %1) вече не е в базата данни: "
                                                   "отворете осчетоводяването отново.")
                                        .arg(lineId));
        transaction.commit();
    } catch (const store::SqlError &error) {
        return Outcome::failure(error.message());
    }
    return Outcome::success();
}

Outcome ClassifyFillings(const QSqlDatabase &clinic)
{
    const QString code301 = QStringLiteral("301");
    try {
        store::Transaction transaction(clinic);
        // A flag that was never written is an unbooked line, as a new yes/no field reads false.
        store::run(clinic, QStringLiteral("UPDATE Help SET Schet = 1 WHERE KodHelp = ? OR Schet = 0 OR Schet IS NULL"),
                   {code301});
        const QString byMaterial = QStringLiteral("UPDATE Help SET KodHelp = ? WHERE KodHelp = ? AND TextHelp = ?");
        store::run(clinic, byMaterial, {QStringLiteral("301А"), code301, QStringLiteral("Обт.амалгама")});
        store::run(clinic, byMaterial, {QStringLiteral("301Б"), code301, QStringLiteral("Обт.хим.композ.")});
        transaction.commit();
    } catch (const store::SqlError &error) {
        return Outcome::failure(error.message());
    }
    return Outcome::success();
}

} // namespace accounting
