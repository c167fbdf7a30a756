#include "shell/cli/RestoreCommand.h"

#include "maintenance/Restore.h"
#include "store/Store.h"

QString RestoreCommand::description() const
{
    return QStringLiteral("Replaces velmorata.db of the data folder by the archive FILE. The archive is\n"
                          "checked first (a database, whole, with the clinic tables); the current database\n"
                          "is kept beside it as velmorata-before-restore-DATE-TIME.db. Refused, changing\n"
                          "nothing, while the program has the folder open.");
}

void RestoreCommand::addArguments(QCommandLineParser &parser) const
{
    parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("The archive to put back."));
}

int RestoreCommand::run(const QCommandLineParser &parser, const store::DataPaths &paths, QTextStream &out,
                        QTextStream &err)
{
    // Only the lock: a clinic file too damaged to open is what a restore is for.
    if (auto locked = store::lockFolder(paths); !locked)
        return fail(err, locked.error());
    const QString archive = parser.positionalArguments().first();
    const auto restored = restore::RestoreDatabase(archive);
    store::closeStore();
    if (!restored)
        return fail(err, restored.error());
    out << "Restored " << archive << " into " << paths.clinicDb << " (" << restored->patients << " patients, "
        << restored->serviceLines << " service lines)";
    if (!restored->safetyCopy.isEmpty())
        out << "; the previous database is kept as " << restored->safetyCopy;
    out << Qt::endl;
    return 0;
}
