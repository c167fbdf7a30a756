#pragma once

#include "store/Result.h"

#include <QString>

#include <optional>

// What makes a copy of an archive fit to take the place of the clinic database: a whole
// database of this program's layout that the engine will write to, and how much it holds next
// to the practice it would replace. The checks see the structure only: a changed name or a cut
// text inside a whole file looks exactly like the real thing.
namespace restore {

struct PracticeSize final
{
    qint64 patients = 0;
    qint64 serviceLines = 0;
};

// "The file is no archive of the program's data: <why> The database is unchanged."
QString refusedArchive(const QString &archive, const QString &why);

// Checks the copy `staged` of `archive` (named so in the messages): the header's file format
// versions, the full integrity check, every clinic table with the columns this program makes,
// and a write that begins and is rolled back. The copy is left in the rollback journal's mode.
Result<PracticeSize> CheckArchiveCopy(const QString &staged, const QString &archive);

// What the clinic file holds now; nothing when it cannot be read (a damaged file that a
// restore is to replace).
std::optional<PracticeSize> currentSize(const QString &clinicPath);

// What to tell before an archive with far fewer patients or service lines than the practice
// replaces it; empty when the archive is not that much smaller.
QString smallerArchiveNotice(const QString &archive, const PracticeSize &archived, const PracticeSize &current);

} // namespace restore
