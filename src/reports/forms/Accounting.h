#pragma once

#include "reports/Period.h"
#include "store/Result.h"

#include <QDate>
#include <QList>
#include <QSqlDatabase>
#include <QString>

// The accounting marks of the service lines: the flag Schet says that a line has been taken
// into the books. Money is counted in whole cents, so that a sum of many prices stays exact.
namespace accounting {

inline const QString NoDataMessage = QStringLiteral("Няма данни за осчетоводяване!");

struct BookLine final
{
    qint64 ID = 0;
    QDate Data;
    QString KodHelp;
    QString TextHelp;
    qint64 cents = 0; // Cena; a line without a price counts 0
    bool Schet = false;
    QString EGN;
};

// The running totals of the form: everything, what is booked, and what remains.
struct BookSums final
{
    qint64 totalCents = 0;
    qint64 bookedCents = 0;

    qint64 remainingCents() const { return totalCents - bookedCents; }
    // A save moves the booked sum by the line's price, up when the flag is on, down when off,
    // whether or not the flag changed: the totals are a running aid until the next load.
    void countSave(qint64 cents, bool schet) { bookedCents += schet ? cents : -cents; }
};

struct BookPeriod final
{
    QList<BookLine> lines; // every doctor's lines of the period, by date, ties as stored
    BookSums sums;
};

// "123.45 лв.": a sum as plain currency with the unit behind it.
QString LevaText(qint64 cents);
// A stored price in whole cents; nothing or no number gives 0.
qint64 PriceCents(const QVariant &cena);

// The period's lines and their sums.
Result<BookPeriod> LoadBookPeriod(const QSqlDatabase &clinic, const reports::Period &period);
// Sets or clears the flag of one line by its ID; a line that is not there is a message.
Outcome SaveBooking(const QSqlDatabase &clinic, qint64 lineId, bool schet);

// Before the materials report: every unmarked line and every "301" line is marked booked, and
// a "301" filling gets the code of its material, "301А" for amalgam and "301Б" for composite
// (Cyrillic letters), so that the material norms of those codes apply. The other spelling
// "Обт.амлгама" that service entry also writes keeps 301. In one transaction.
Outcome ClassifyFillings(const QSqlDatabase &clinic);

} // namespace accounting
