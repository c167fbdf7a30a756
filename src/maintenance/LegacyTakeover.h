#pragma once

#include "maintenance/LegacyTables.h"

// Taking over a practice that used the earlier Windows edition: its velmorata.mdb and data.mdb
// become the files of a new data folder. The folder's lock is held for the whole write, so a
// program working with that folder is refused, and a folder that already holds a practice is
// refused inside the write's own transaction: nothing of a running practice is ever replaced.
namespace legacy {

// Writes what `fromFolder` holds into `dataFolder` (made if missing). The fund's prices
// (CenyZK) stay as this version brings them. Gives what was taken and refused.
Result<Plan> takeOverOldPractice(const QString &fromFolder, const QString &dataFolder);

// Reads and checks as the take-over would, and writes nothing. A data folder that holds a
// practice is reported as the take-over would refuse it.
Result<Plan> tryTakeOver(const QString &fromFolder, const QString &dataFolder);

} // namespace legacy
