#pragma once

#include <QString>

// The data folder holds health data: only its owner may read it. New files are made private by
// the process's file mode mask; a folder made by an earlier version, or copied in, is tightened.
namespace store {

// Sets the file mode mask so that every folder and file the program makes is its owner's alone.
void makeNewFilesPrivate();
// Takes group and other access off the folder and the files in it. Returns the one-line notice
// to give when anything was wider, or an empty text when all was private already.
QString tightenFolder(const QString &folder);

} // namespace store
