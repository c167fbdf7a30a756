#pragma once

#include "store/DataPaths.h"
#include "store/Result.h"

namespace store {

// Opens velmorata.db and data.db of the folder under ConnectMain and ConnectData for the
// whole run. A missing file is created with its schema and reference rows in one transaction;
// a file that is no database of this program, or lacks tables, is refused with a message
// naming the file. The folder is created if need be.
Outcome openStore(const DataPaths &paths);
void closeStore();
// The paths of the store opened last.
const DataPaths &paths();

// Opens (creating if missing) one file under the given connection name; used by openStore
// and by the tools that build a practice elsewhere (demo, benchmarks).
Outcome openClinicFile(const QString &path, const QString &connection);
Outcome openDataFile(const QString &path, const QString &connection);

} // namespace store
