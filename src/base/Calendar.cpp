#include "base/Calendar.h"

namespace calendar {
namespace {

QDate &fixed()
{
    static QDate date;
    return date;
}

} // namespace

QDate today() { return fixed().isValid() ? fixed() : QDate::currentDate(); }
void fixToday(const QDate &date) { fixed() = date; }

} // namespace calendar
