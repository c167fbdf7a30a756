#pragma once

#include <QString>

// The data folder holds health data: only its owner may read it. New files are made private by
// the process's file mode mask; a folder made by an earlier version, or copied in, is tightened.
// A folder named by the user may hold files of their own as well: those are never touched.
namespace store {

// Sets the file mode mask so that every folder and file the program makes is its owner's alone.
void makeNewFilesPrivate();
// Whether a file of the data folder, by its name, is one the program makes: the databases and
// their journals, the lock, the log, a database being built or an archive being put in place,
// and the copies a restore keeps.
bool isOwnFileName(const QString &name);
// Takes group and other access off the folder and off the program's own files in it. Returns
// the one-line notice to give when anything was wider, or an empty text when all was private.
QString tightenFolder(const QString &folder);

} // namespace store
