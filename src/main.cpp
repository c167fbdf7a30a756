#include "Version.h"
#include "shell/cli/Command.h"
#include "shell/ui/Desktop.h"
#include "store/DataPaths.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstring>

namespace {

void nameApplication()
{
    QCoreApplication::setApplicationName(QStringLiteral("Velmorata"));
    QCoreApplication::setOrganizationName(QStringLiteral("Velmorata"));
    QCoreApplication::setApplicationVersion(QString::fromLatin1(version::Text));
}

int runCommand(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    nameApplication();
    QTextStream out(stdout);
    QTextStream err(stderr);
    const QStringList arguments = app.arguments().mid(1);
    return findCommand(arguments.first())->execute(arguments, out, err);
}

bool wantsNoWindow(int argc, char **argv)
{
    for (int i = 1; i < argc; ++i)
        for (const char *flag : {"--help", "-h", "--version", "-v"})
            if (std::strcmp(argv[i], flag) == 0)
                return true;
    return false;
}

QString usage()
{
    QString text = QStringLiteral("\nCommands (velmorata COMMAND --help for their options):\n");
    for (const auto &command : allCommands())
        text += QStringLiteral("  %1  %2\n").arg(command->name(), -18).arg(command->summary());
    return text;
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
    if (argc > 1 && findCommand(QString::fromLocal8Bit(argv[1])))
        return runCommand(argc, argv);

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Velmorata: the card index of a dental practice under contract with the health insurance fund.")
        + usage());
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption dataDir(QStringLiteral("data-dir"), QStringLiteral("The data folder (default: %1).")
                                                                     .arg(store::DataPaths::defaultFolder()),
                                     QStringLiteral("DIR"));
    parser.addOption(dataDir);
    if (wantsNoWindow(argc, argv))
        return runWithoutWindow(argc, argv, parser);

    QApplication app(argc, argv);
    nameApplication();
    parser.process(app);
    return runDesktop(parser.isSet(dataDir) ? parser.value(dataDir) : store::DataPaths::defaultFolder());
}
