#pragma once

#include "base/Page.h"
#include "diary/DiaryPrint.h"

namespace diaryprint {

// "rprGrafic" on A4: the heading, then each page of the day as two columns of thirteen rows
// ("Час", "Име на пациента"), 7.30 to 13.30 on the left and 14.00 to 20.00 on the right.
print::PageDescription DiaryPage(const DiaryPrint &diary);

} // namespace diaryprint
