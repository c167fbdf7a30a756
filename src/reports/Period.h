#pragma once

#include <QDate>
#include <QString>

// The period of a report to the fund, as the period dialog ("Период...") takes it: two typed
// dates DD.MM.YYYY, checked, and turned into the text forms that the reports print and the
// builders query by.
namespace reports {

struct Period final
{
    QString PeriodFromText;  // DD.MM.YYYY, for the captions of the printed reports
    QString PeriodToText;
    QString PeriodFromQuery; // MM/DD/YYYY, as the builders were handed it
    QString PeriodToQuery;
    QDate from;              // the same two days as dates; what the store is asked by
    QDate to;

    // "от <first> до <last>", or the single date when both are the same day.
    QString caption() const;
};

enum class PeriodCheck {
    Incomplete,    // a box left empty: nothing happens, no message
    BadLength,     // "Грешка в изписването на датата!"
    BadMonth,      // "Грешка в изписването на месеца!"
    NoCalendarDay, // passes the two checks but names no day of the calendar (31.02, a leading blank)
    Accepted,
};

struct PeriodEntry final
{
    PeriodCheck check = PeriodCheck::Incomplete;
    QString message; // what InfDialog shows; empty for Incomplete and Accepted
    Period period;   // filled when Accepted
};

// The checks of "Търси", in their order. A reversed period passes: it finds no lines.
PeriodEntry CheckPeriod(const QString &first, const QString &last);

// "Справка ... от д-р <name>": the doctor line of the activity report and the fund summary.
QString DoctorCaption(const QString &medicName);

} // namespace reports
