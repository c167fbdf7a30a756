#include "shell/cli/ImportZoksCommand.h"

#include "shell/cli/DataFolderOption.h"
#include "shell/cli/ParseArguments.h"

#include "maintenance/ZoksImport.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QCommandLineParser>

namespace {

bool doctorExists(const QString &code)
{
    return store::scalar(store::clinicDb(), QStringLiteral("SELECT COUNT(*) FROM Medic WHERE KodMedic = ?"), {code})
               .toInt()
        > 0;
}

} // namespace

int ImportZoksCommand::execute(const QStringList &arguments, QTextStream &out, QTextStream &err)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Adds the patients of the ZOKS package's database (tables patients, address, eknm, s_code,\n"
        "st_code; a Jet .mdb file or an SQLite file) to the clinic database, for the doctor whose\n"
        "practice code is given. Existing patients are left as they are. A patient without an\n"
        "address or settlement in the source is left out and named. Nothing changes when the file\n"
        "lacks a table or a patient lacks a number, name or date."));
    parser.addHelpOption();
    const QCommandLineOption doctor(QStringLiteral("doctor"), QStringLiteral("KodMedic of the doctor who keeps them."),
                                    QStringLiteral("KOD"));
    parser.addOptions({dataFolderOption(), doctor});
    parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("The ZOKS database."));
    if (const auto ended = parseArguments(parser, arguments, out, err, QStringLiteral("import-zoks: ")))
        return *ended;
    if (parser.positionalArguments().size() != 1 || parser.value(doctor).trimmed().isEmpty()) {
        err << "import-zoks: give --doctor KOD and exactly one file" << Qt::endl;
        return 2;
    }
    const auto paths = dataFolderOf(parser, err, QStringLiteral("import-zoks: "));
    if (!paths)
        return 2;
    // The patients go to a doctor of a practice that is there: a new one would have no doctor.
    if (auto opened = store::openStore(*paths, {.practiceMustExist = true}); !opened) {
        err << "import-zoks: " << opened.error() << Qt::endl;
        return 1;
    }
    const QString code = parser.value(doctor).trimmed();
    if (!doctorExists(code)) {
        store::closeStore();
        err << "import-zoks: " << QStringLiteral("Няма лекар с код %1.").arg(code) << Qt::endl;
        return 1;
    }
    const auto imported = zoks::ImportFromZoks(store::clinicDb(), parser.positionalArguments().first(), code);
    store::closeStore();
    if (!imported) {
        err << "import-zoks: " << imported.error() << Qt::endl;
        return 1;
    }
    out << zoks::summaryText(imported.value()) << Qt::endl;
    for (const QString &skipped : imported->skipped)
        err << "import-zoks: пропуснат " << skipped << Qt::endl;
    return 0;
}
