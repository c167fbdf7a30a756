#pragma once

#include "treatment/ActivityCodes.h"

// Code groups the reports to the fund count by (treatment/ActivityCodes.h).
namespace reports {

using activities::IsFillingCode;

} // namespace reports
