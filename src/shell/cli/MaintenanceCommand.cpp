#include "shell/cli/MaintenanceCommand.h"

#include "shell/cli/DataFolderOption.h"
#include "shell/cli/ParseArguments.h"

int MaintenanceCommand::execute(const QStringList &arguments, QTextStream &out, QTextStream &err)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(description());
    parser.addHelpOption();
    parser.addOption(dataFolderOption());
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
    const auto paths = dataFolderOf(parser, err, name() + QStringLiteral(": "));
    return paths ? run(parser, *paths, out, err) : 2;
}

int MaintenanceCommand::fail(QTextStream &err, const QString &message) const
{
    err << name() << ": " << message << Qt::endl;
    return 1;
}
