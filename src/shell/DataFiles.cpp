#include "shell/DataFiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

// The build sets where the install directories put the help pages, seen from the executable's.
#ifndef VELMORATA_HELP_FROM_PROGRAM
#define VELMORATA_HELP_FROM_PROGRAM "../share/velmorata/help"
#endif

namespace datafiles {

namespace {

const QString ContentsPage = QStringLiteral("index.html");

bool holdsContents(const QString &folder) { return QFileInfo(QDir(folder).filePath(ContentsPage)).isFile(); }

} // namespace

QStringList helpFolderCandidates(const QString &programFolder)
{
    const QDir program(programFolder);
    return {QDir::cleanPath(program.absoluteFilePath(QStringLiteral("help"))),
            QDir::cleanPath(program.absoluteFilePath(QStringLiteral(VELMORATA_HELP_FROM_PROGRAM)))};
}

QString helpFolder(const QString &programFolder)
{
    const QStringList candidates = helpFolderCandidates(programFolder);
    for (const QString &folder : candidates)
        if (holdsContents(folder))
            return folder;
    return candidates.first();
}

QString helpFolder() { return helpFolder(QCoreApplication::applicationDirPath()); }

QString helpPagePath(const QString &folder, int context)
{
    const QDir dir(folder);
    if (context > 0) {
        const QFileInfo page(dir.filePath(QStringLiteral("%1.html").arg(context)));
        if (page.isFile())
            return page.absoluteFilePath();
    }
    const QFileInfo contents(dir.filePath(ContentsPage));
    return contents.isFile() ? contents.absoluteFilePath() : QString();
}

} // namespace datafiles
