#pragma once

#include "store/Result.h"

#include <QString>

// Archives of the clinic database (*.arh): a whole, consistent copy of velmorata.db under a
// name the user chooses, taken while the program runs and writes.
namespace backup {

struct BackupReport final
{
    qint64 bytes = 0;
    qint64 patients = 0;
    qint64 serviceLines = 0;
};

// Copies the clinic database `clinicPath` to `target`, replacing a file of that name only when
// the copy is whole and passes the start-up's quick check. The copy is read on a read-only
// connection of its own, so it needs neither the folder's lock nor a pause of the program that
// works on the folder. Parts that killed backups to `target` left beside it are removed first.
Result<BackupReport> BackupDatabase(const QString &clinicPath, const QString &target);

} // namespace backup
