#pragma once

#include <QDate>
#include <QList>

// The working days of an invented practice and how full each doctor's day is, so that the
// demo books no doctor beyond the minutes of a working day and the day that the program
// opens on ("today") leaves room for the person trying it.
class DemoDays final
{
public:
    // A doctor's chair takes at most this many patients a day, whatever their minutes: a visit
    // of lines that cost no minutes (103) still takes a sheet number, and this keeps a doctor's
    // sheets of a year far below the 32767 the numbering allows.
    static constexpr int VisitsPerDay = 16;
    // How many later working days a visit may move to when its day is full.
    static constexpr int DaysToTry = 10;

    // Monday to Friday from `first` to `today` for `doctors` doctors. `dayMinutes` is what one
    // doctor's day holds; today's lines of all doctors together get half of it, as the
    // minutes left of today are counted over all doctors.
    DemoDays(const QDate &first, const QDate &today, int doctors, int dayMinutes);

    int count() const { return int(m_days.size()); }
    const QDate &day(int index) const { return m_days.at(index); }
    // The index of the first working day on or after `date`; count() when there is none.
    int firstOnOrAfter(const QDate &date) const;

    // Books a visit of `minutes` for the doctor on day `index` or, when that day is full, on one
    // of the next few working days of the same year. The index booked, or -1 when none had room.
    int book(int doctor, int index, int minutes);

private:
    bool fits(int doctor, int index, int minutes) const;

    QList<QDate> m_days;
    QList<int> m_minutes; // per doctor and day: doctor * count() + index
    QList<int> m_visits;
    QDate m_today;
    int m_dayMinutes;
    int m_todayMinutes = 0; // all doctors together
};
