#pragma once

#include "base/Page.h"
#include "treatment/SheetPrintCells.h"

// The ambulatory sheet "Амбулаторен лист" (rprKarton) laid out as the fund's form is ruled:
// the data cells carry the report's label names, the form's own lines and captions are
// marked as ruling, so that the data alone can go onto the pre-printed paper.
print::PageDescription KartonPage(const SheetData &sheet);
