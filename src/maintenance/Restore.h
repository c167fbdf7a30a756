#pragma once

#include "store/Result.h"

#include <QDateTime>
#include <QString>

#include <functional>

// Putting an archive back in place of the clinic database of the open store.
namespace restore {

struct RestoreReport final
{
    QString safetyCopy; // the clinic database as it was before, kept in the data folder
    qint64 patients = 0;
    qint64 serviceLines = 0;
};

// Asked before an archive with far fewer patients or service lines than the practice is put in
// place; true goes on. The window asks the person, the command line answers what --yes said.
using ConfirmSmaller = std::function<bool(const QString &question)>;

// Replaces velmorata.db of the store by a copy of `archive`. The store must hold the folder's
// lock (openStore or lockFolder); its clinic file may be open or may not open at all. The archive
// is copied into the data folder first and the copy checked whole (a database, its integrity,
// the clinic tables and their columns, that it takes writes); only then is the current file kept
// under a dated name and the copy given its name in one step, and the clinic file opened again.
// A restored file that does not open gives way to the kept one again. A refusal leaves the live
// database as it was; a crash at any point leaves it either as before or as after. Copies that
// killed restores left in the data folder are removed first.
Result<RestoreReport> RestoreDatabase(const QString &archive, const ConfirmSmaller &confirm,
                                      const QDateTime &now = QDateTime::currentDateTime());

// The name of the safety copy of a restore at `now`: velmorata-before-restore-YYYYMMDD-HHMMSS.db.
QString safetyCopyName(const QString &folder, const QDateTime &now);

} // namespace restore
