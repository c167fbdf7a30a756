#include "demo/DemoDays.h"

#include <algorithm>

DemoDays::DemoDays(const QDate &first, const QDate &today, int doctors, int dayMinutes)
    : m_today(today)
    , m_dayMinutes(dayMinutes)
{
    for (QDate day = first; day <= today; day = day.addDays(1))
        if (day.dayOfWeek() <= 5)
            m_days << day;
    m_minutes.fill(0, qsizetype(doctors) * m_days.size());
    m_visits.fill(0, m_minutes.size());
}

int DemoDays::firstOnOrAfter(const QDate &date) const
{
    return int(std::lower_bound(m_days.cbegin(), m_days.cend(), date) - m_days.cbegin());
}

int DemoDays::book(int doctor, int index, int minutes)
{
    const int year = m_days.at(index).year();
    for (int tried = 0; tried < DaysToTry && index < count() && m_days.at(index).year() == year; ++tried, ++index) {
        if (!fits(doctor, index, minutes))
            continue;
        const qsizetype slot = qsizetype(doctor) * count() + index;
        m_minutes[slot] += minutes;
        ++m_visits[slot];
        if (m_days.at(index) == m_today)
            m_todayMinutes += minutes;
        return index;
    }
    return -1;
}

bool DemoDays::fits(int doctor, int index, int minutes) const
{
    const qsizetype slot = qsizetype(doctor) * count() + index;
    if (m_visits.at(slot) >= VisitsPerDay || m_minutes.at(slot) + minutes > m_dayMinutes)
        return false;
    return m_days.at(index) != m_today || m_todayMinutes + minutes <= m_dayMinutes / 2;
}
