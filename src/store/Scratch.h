#pragma once

#include "store/Result.h"

#include <QSqlDatabase>
#include <QString>

// The scratch database temp.db holds the one table of the report in progress. It holds nothing
// that is not derived, so it is thrown away and rebuilt for each report.
namespace store {

// Replaces temp.db by a new file holding the named table, one of "TempMater", "TempWork",
// "TempZOKC", "TempSpec", with its fixed layout; leaves it open under ConnectTemp.
Outcome CreateScratchTable(const QString &tableName);
// Deletes all rows of the table, so that a closed report leaves an empty table behind.
Outcome EmptyScratchTable(const QString &tableName);
// Closes the scratch connection and deletes temp.db if it is there.
void DeleteScratchFile();
// The same, only when this run made temp.db: the store's closing calls it, so that no way out
// of the program (its close box, "Изход", the end of a command) leaves the file behind.
void DeleteScratchFileOfThisRun();

QSqlDatabase scratchDb();
// The column names of a layout in creation order; empty for an unknown name.
QStringList scratchColumns(const QString &tableName);

} // namespace store
