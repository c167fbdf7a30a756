#pragma once

#include "base/Page.h"
#include "patients/DateLists.h"

namespace datelists {

// "rprDataR" (born, registered) and "rprDataP" (visited) on A4: the heading with the period and
// one line per patient, number, names and date, the heading again on every page.
print::PageDescription DateListPage(const DateList &list);

} // namespace datelists
