#include "shell/cli/HelpPathCommand.h"

#include "shell/DataFiles.h"
#include "shell/cli/ParseArguments.h"

#include <QDir>

#include <optional>

namespace {

std::optional<int> contextOf(const QStringList &positional)
{
    if (positional.isEmpty())
        return 0;
    bool ok = false;
    const int context = positional.first().toInt(&ok);
    if (!ok || context < 0 || positional.size() > 1)
        return std::nullopt;
    return context;
}

} // namespace

HelpPathCommand::HelpPathCommand() = default;

HelpPathCommand::HelpPathCommand(const QString &helpFolder)
    : m_helpFolder(helpFolder)
{
}

QString HelpPathCommand::summary() const { return QStringLiteral("print the file of a help page"); }

int HelpPathCommand::execute(const QStringList &arguments, QTextStream &out, QTextStream &err)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Prints the file of the help page of a help context number, or of the contents when none is given\n"
        "or the number has no page of its own."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("CONTEXT"), QStringLiteral("A help context number."),
                                 QStringLiteral("[CONTEXT]"));
    if (const std::optional<int> ended = parseArguments(parser, arguments, out, err))
        return *ended;
    const std::optional<int> context = contextOf(parser.positionalArguments());
    if (!context) {
        err << "help-path: give one help context number (0 or more)" << Qt::endl;
        return 2;
    }
    // The program's folder is known only once the application object runs, after the commands
    // are made.
    const QString folder = m_helpFolder.isEmpty() ? datafiles::helpFolder() : m_helpFolder;
    const QString page = datafiles::helpPagePath(folder, *context);
    if (page.isEmpty()) {
        err << "help-path: no help pages in " << QDir::toNativeSeparators(folder) << Qt::endl;
        return 1;
    }
    out << QDir::toNativeSeparators(page) << Qt::endl;
    return 0;
}
