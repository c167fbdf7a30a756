#include "Version.h"
#include "base/QtTranslations.h"
#include "base/ui/PrintRenderer.h"
#include "maintenance/JetReader.h"
#include "shell/cli/Command.h"
#include "shell/cli/DataFolderOption.h"
#include "shell/ui/Desktop.h"
#include "store/Log.h"
#include "store/PrivateFolder.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QGuiApplication>

#include <memory>

namespace {

void nameApplication()
{
    QCoreApplication::setApplicationName(QStringLiteral("Velmorata"));
    QCoreApplication::setOrganizationName(QStringLiteral("Velmorata"));
    QCoreApplication::setApplicationVersion(QString::fromLatin1(version::Text));
}

QStringList argumentsOf(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    return arguments;
}

// A command that renders a form needs fonts and a painter: a GUI application on the offscreen
// platform, so that it runs without a display. The others need no more than the core.
std::unique_ptr<QCoreApplication> applicationFor(int &argc, char **argv, const Command &command)
{
    if (!command.rendersForms())
        return std::make_unique<QCoreApplication>(argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    auto app = std::make_unique<QGuiApplication>(argc, argv);
    print::installPdfWriter();
    return app;
}

int runCommand(int argc, char **argv, Command &command)
{
    const auto app = applicationFor(argc, argv, command);
    nameApplication();
    QTextStream out(stdout);
    QTextStream err(stderr);
    // Notices of the store, such as a data folder made private, go where a script sees them.
    store::setNoticeSink([&err](const QString &text) { err << text << Qt::endl; });
    return command.execute(app->arguments().mid(1), out, err);
}

QString commandList()
{
    QString text = QStringLiteral("Commands (velmorata COMMAND --help for their options):\n");
    for (const auto &command : allCommands())
        text += QStringLiteral("  %1  %2\n").arg(command->name(), -18).arg(command->summary());
    return text;
}

// A word that is no command must not start the window: a script would wait for a sign-in.
int refuseUnknownCommand(const QString &word)
{
    QTextStream(stderr) << "velmorata: unknown command \"" << word << "\"\n" << commandList();
    return 2;
}

bool wantsNoWindow(const QStringList &arguments)
{
    for (const char *flag : {"--help", "-h", "--version", "-v"})
        if (arguments.contains(QLatin1String(flag)))
            return true;
    return false;
}

// --help and --version are answered without opening a window, so they work without a display.
int runWithoutWindow(int argc, char **argv, QCommandLineParser &parser)
{
    QCoreApplication app(argc, argv);
    nameApplication();
    parser.process(app);
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    store::makeNewFilesPrivate();
    const QStringList arguments = argumentsOf(argc, argv);
    // The program as the reader child of its own Jet import: no window, no data folder.
    if (arguments.size() > 1 && arguments.at(1) == QLatin1String(jet::ReaderCommand))
        return jet::serveReaderRequest(arguments.mid(2));
    if (arguments.size() > 1) {
        if (auto command = findCommand(arguments.at(1)))
            return runCommand(argc, argv, *command);
        if (!arguments.at(1).startsWith(u'-'))
            return refuseUnknownCommand(arguments.at(1));
    }

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Velmorata: the card index of a dental practice under contract with the health insurance fund.\n\n")
        + commandList());
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOption(dataFolderOption());
    if (wantsNoWindow(arguments))
        return runWithoutWindow(argc, argv, parser);

    // The folder's name is judged before the window's application starts, so that a refusal needs
    // no display. Qt's own options (-platform ...) are unknown to this first reading: its verdict
    // on the command line waits for process() below.
    (void)parser.parse(arguments);
    QTextStream err(stderr);
    const auto paths = dataFolderOf(parser, err, QStringLiteral("velmorata: "));
    if (!paths)
        return 2;

    QApplication app(argc, argv);
    nameApplication();
    installQtTranslations(app);
    parser.process(app);
    if (!parser.positionalArguments().isEmpty())
        return refuseUnknownCommand(parser.positionalArguments().first());
    return runDesktop(*paths);
}
