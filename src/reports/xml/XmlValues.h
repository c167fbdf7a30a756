#pragma once

#include <QDate>
#include <QString>

#include <optional>

// The shapes the fund's import takes the values of the XML report in. They are the fund's
// shapes, kept as they are even where they look odd (a price of 12.05 goes out as "12.5").
namespace reports {

// The full name cut at its first two blanks. Two words leave the middle name empty, one word
// leaves the first and the middle name empty, a fourth word stays with the third.
struct PersonName final
{
    QString first;
    QString middle;
    QString last;
};
PersonName SplitPersonName(const QString &names);

// The price as its whole lev, ".", its whole cents, neither padded: 12.50 -> "12.50",
// 12.05 -> "12.5", 0 -> "0.0". The fund's import holds the lev in a 16-bit number, so a price
// above 32767 lev or below zero has no shape: nullopt.
std::optional<QString> RepPrice(double cena);

// A date typed DD.MM.YYYY recut as YYYY-MM-DD by position, the way the fund receives the
// birth date and the date of a service.
QString YearMonthDayOfTyped(const QString &typed);
// A stored date as year-month-day without padding (2012-3-7); "--" when there is none.
QString UnpaddedDate(const std::optional<QDate> &date);
// A period text MM/DD/YYYY recut as YYYY-MM-DD.
QString YearMonthDayOfQueryForm(const QString &queryForm);

// An investigation code of four characters written as two pairs: "1012" -> "10.12".
QString InvestigationCodeName(const QString &kod);

} // namespace reports
