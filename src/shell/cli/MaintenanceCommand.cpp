#include "shell/cli/MaintenanceCommand.h"

int MaintenanceCommand::execute(const QStringList &arguments, QTextStream &out, QTextStream &err)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(description());
    parser.addHelpOption();
    const QCommandLineOption dataDir(QStringLiteral("data-dir"), QStringLiteral("The data folder."),
                                     QStringLiteral("DIR"), store::DataPaths::defaultFolder());
    parser.addOption(dataDir);
    addArguments(parser);
    if (!parser.parse(arguments)) {
        err << name() << ": " << parser.errorText() << Qt::endl;
        return 2;
    }
    if (parser.isSet(QStringLiteral("help"))) {
        out << parser.helpText();
        return 0;
    }
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
