#pragma once

#include "base/Page.h"
#include "treatment/TreatmentData.h"

namespace treatmentdata {

// "rprHelpData" on A4: the head of the printed card, the 32 cells s_18..s_38 with their numbers
// z_18..z_38 (a milk tooth's number in a frame), and the services with their kind.
print::PageDescription TreatmentDataPage(const TreatmentData &data);

} // namespace treatmentdata
