#pragma once

#include "store/Result.h"

// Makes sure that a doctor exists: with at least one row in Medic, the first doctor of the
// table counts as the current one until sign-in, and the answer is true. With none, false:
// the first-run path has to enter one.
Result<bool> CheckDoctors();
