#include "shell/cli/UpkeepCommands.h"

#include "maintenance/Backup.h"

QString BackupCommand::description() const
{
    return QStringLiteral("Copies velmorata.db of the data folder to FILE (an archive, by custom *.arh),\n"
                          "replacing FILE only once the copy is whole. Works while the program is open.");
}

void BackupCommand::addArguments(QCommandLineParser &parser) const
{
    parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("The archive to write."));
}

int BackupCommand::run(const QCommandLineParser &parser, const store::DataPaths &paths, QTextStream &out,
                       QTextStream &err)
{
    const QString target = parser.positionalArguments().first();
    const auto copied = backup::BackupDatabase(paths.clinicDb, target);
    if (!copied)
        return fail(err, copied.error());
    out << "Backup written: " << target << " (" << copied->patients << " patients, " << copied->serviceLines
        << " service lines, " << copied->bytes << " bytes)" << Qt::endl;
    return 0;
}
