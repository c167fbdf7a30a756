#pragma once

#include <QString>
#include <QStringList>

// Where the program finds the files it ships beside its code: the help pages. A build folder
// keeps them beside the executable; an installed program keeps them under the prefix's
// share/velmorata/help, found from the executable's own folder so that any prefix works.
namespace datafiles {

// The folders that may hold the help pages, in the order they are tried.
QStringList helpFolderCandidates(const QString &programFolder);
// The first candidate that holds the contents page; the first candidate when none does, so
// that the message about missing help names where the pages were expected.
QString helpFolder(const QString &programFolder);
// The help folder of the running program.
QString helpFolder();

// The page of a context number, or the contents for 0 or a number without a page; empty when
// the folder holds neither.
QString helpPagePath(const QString &folder, int context);

} // namespace datafiles
