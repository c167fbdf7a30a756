#pragma once

#include <QDate>

// Today's date as the program sees it. Tests fix it so that ages, prices and minutes do not
// depend on the day the tests run.
namespace calendar {

QDate today();
void fixToday(const QDate &date); // an invalid date returns to the real calendar

} // namespace calendar
