#pragma once

#include "base/Page.h"
#include "reports/forms/ClaimFormCells.h"

#include <QList>

namespace reports {

// The claim form "Спецификация" (rptSpec) on one A4 sheet of plain paper: the fund's ruling
// and fixed texts, and the cells, each under the form's own control name.
print::PageDescription SpecificationPage(const QList<SpecificationCell> &cells);

} // namespace reports
