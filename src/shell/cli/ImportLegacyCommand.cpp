#include "shell/cli/ImportLegacyCommand.h"

#include "shell/cli/DataFolderOption.h"
#include "shell/cli/ParseArguments.h"

#include "maintenance/LegacyTakeover.h"

#include <QCommandLineParser>

int ImportLegacyCommand::execute(const QStringList &arguments, QTextStream &out, QTextStream &err)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Takes over the practice of the earlier Windows edition: velmorata.mdb and data.mdb of the\n"
        "folder given by --from become the data of the data folder, which must hold no practice yet.\n"
        "Dates are converted, access codes hashed; repeated rows are refused and numbers that fail\n"
        "the EGN rules are taken and listed. The fund's prices stay those of this version.\n"
        "With --dry-run nothing is written: the lines say what would be taken and refused."));
    parser.addHelpOption();
    const QCommandLineOption from(QStringLiteral("from"), QStringLiteral("The folder of velmorata.mdb and data.mdb."),
                                  QStringLiteral("DIR"));
    const QCommandLineOption dryRun(QStringLiteral("dry-run"), QStringLiteral("Report only; write nothing."));
    parser.addOptions({dataFolderOption(QStringLiteral("The new data folder")), from, dryRun});
    if (const auto ended = parseArguments(parser, arguments, out, err, QStringLiteral("import-legacy: ")))
        return *ended;
    if (!parser.isSet(from) || !parser.positionalArguments().isEmpty()) {
        err << "import-legacy: give --from DIR and nothing else" << Qt::endl;
        return 2;
    }
    const auto paths = dataFolderOf(parser, err, QStringLiteral("import-legacy: "));
    if (!paths)
        return 2;
    const auto plan = parser.isSet(dryRun) ? legacy::tryTakeOver(parser.value(from), paths->folder)
                                           : legacy::takeOverOldPractice(parser.value(from), paths->folder);
    if (!plan) {
        err << "import-legacy: " << plan.error() << Qt::endl;
        return 1;
    }
    QStringList lines = legacy::reportLines(plan.value());
    out << (parser.isSet(dryRun) ? QStringLiteral("Проба, нищо не е записано. ") : QString()) << lines.takeFirst()
        << Qt::endl;
    for (const QString &line : lines)
        err << "import-legacy: " << line << Qt::endl;
    return 0;
}
