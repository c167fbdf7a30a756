#include "shell/cli/UpkeepCommands.h"

#include "maintenance/Restore.h"
#include "store/Store.h"

namespace {

const QString Yes = QStringLiteral("yes");

} // namespace

QString RestoreCommand::description() const
{
    return QStringLiteral("Replaces velmorata.db of the data folder by the archive FILE. The archive is\n"
                          "checked first: a database, whole, with the clinic tables and their columns, that\n"
                          "can be written to; a damaged file is refused and nothing changes. The current\n"
                          "database is kept beside it as velmorata-before-restore-DATE-TIME.db; should the\n"
                          "restored file not open, the current one is put back. An archive with less than\n"
                          "half the patients or service lines of the current database (or none) is refused\n"
                          "unless --yes is given. Refused, changing nothing, while the program has the\n"
                          "folder open.\n"
                          "The checks see the structure only: an archive whose content was changed inside\n"
                          "a whole file (a town's name, a service's text, a cut last letter) cannot be told\n"
                          "from a good one; only an encrypted, authenticated archive could show that.");
}

void RestoreCommand::addArguments(QCommandLineParser &parser) const
{
    parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("The archive to put back."));
    parser.addOption(
        QCommandLineOption(Yes, QStringLiteral("Restores also an archive far smaller than the current database.")));
}

int RestoreCommand::run(const QCommandLineParser &parser, const store::DataPaths &paths, QTextStream &out,
                        QTextStream &err)
{
    // Only the lock: a clinic file too damaged to open is what a restore is for.
    if (auto locked = store::lockFolder(paths); !locked)
        return fail(err, locked.error());
    const QString archive = parser.positionalArguments().first();
    bool asked = false;
    const auto restored = restore::RestoreDatabase(archive, [&](const QString &) {
        asked = true;
        return parser.isSet(Yes);
    });
    store::closeStore();
    if (!restored && asked && !parser.isSet(Yes))
        return fail(err, restored.error() + QStringLiteral(" To restore it all the same, add --yes."));
    if (!restored)
        return fail(err, restored.error());
    out << "Restored " << archive << " into " << paths.clinicDb << " (" << restored->patients << " patients, "
        << restored->serviceLines << " service lines)";
    if (!restored->safetyCopy.isEmpty())
        out << "; the previous database is kept as " << restored->safetyCopy;
    out << Qt::endl;
    return 0;
}
