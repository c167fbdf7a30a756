#include "shell/cli/MaintenanceCommand.h"

#include "shell/cli/ParseArguments.h"

int MaintenanceCommand::execute(const QStringList &arguments, QTextStream &out, QTextStream &err)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(description());
    parser.addHelpOption();
    const QCommandLineOption dataDir(QStringLiteral("data-dir"), QStringLiteral("The data folder."),
                                     QStringLiteral("DIR"), store::DataPaths::defaultFolder());
    parser.addOption(dataDir);
    addArguments(parser);
    if (const auto ended = parseArguments(parser, arguments, out, err, name() + QStringLiteral(": ")))
        return *ended;
    QString wrong = usageError(parser);
    if (wrong.isEmpty() && parser.positionalArguments().size() != positionalCount())
        wrong = positionalCount() == 0 ? QStringLiteral("takes no file") : QStringLiteral("give exactly one file");
    if (!wrong.isEmpty()) {
        err << name() << ": " << wrong << Qt::endl;
        return 2;
    }
    return run(parser, store::DataPaths::inFolder(parser.value(dataDir)), out, err);
}

int MaintenanceCommand::fail(QTextStream &err, const QString &message) const
{
    err << name() << ": " << message << Qt::endl;
    return 1;
}
