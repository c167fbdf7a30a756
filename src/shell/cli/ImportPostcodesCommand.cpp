#include "shell/cli/ImportPostcodesCommand.h"

#include "shell/cli/DataFolderOption.h"
#include "shell/cli/ParseArguments.h"

#include "store/ReferenceData.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QCommandLineParser>

int ImportPostcodesCommand::execute(const QStringList &arguments, QTextStream &out, QTextStream &err)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Replaces the post codes of data.db by the rows of a CSV file with the columns\n"
        "PKod, Tawn, Obsh, Obl, ZK, ZdRn (by header; others are ignored; comma or semicolon).\n"
        "The file must be UTF-8 text (a byte order mark is allowed); a file in Windows-1251,\n"
        "as older spreadsheets save it, is refused naming its first bad line. Convert it first:\n"
        "  iconv -f CP1251 -t UTF-8 codes.csv -o codes-utf8.csv\n"
        "Lines may end in LF, CRLF or CR; a value in double quotes may hold commas, line breaks\n"
        "and doubled quotes (\"\" stands for one quote). A file with no rows, a repeated or empty\n"
        "post code, or a NUL byte is refused naming the line.\n"
        "Nothing changes unless every line of the file is good."));
    parser.addHelpOption();
    parser.addOption(dataFolderOption());
    parser.addPositionalArgument(QStringLiteral("FILE.csv"), QStringLiteral("The post code list."));
    if (const auto ended = parseArguments(parser, arguments, out, err, QStringLiteral("import-postcodes: ")))
        return *ended;
    if (parser.positionalArguments().size() != 1) {
        err << "import-postcodes: give exactly one CSV file" << Qt::endl;
        return 2;
    }
    const auto paths = dataFolderOf(parser, err, QStringLiteral("import-postcodes: "));
    if (!paths)
        return 2;
    // The list belongs to a practice: one is started by the window, demo, doctor add or import-legacy.
    if (auto opened = store::openStore(*paths, {.practiceMustExist = true}); !opened) {
        err << "import-postcodes: " << opened.error() << Qt::endl;
        return 1;
    }
    const auto loaded = store::importPostCodes(store::dataDb(), parser.positionalArguments().first());
    store::closeStore();
    if (!loaded) {
        err << "import-postcodes: " << loaded.error() << Qt::endl;
        return 1;
    }
    out << "Post codes loaded: " << loaded.value() << Qt::endl;
    return 0;
}
