#include "shell/cli/UpkeepCommands.h"

#include "maintenance/CleanOut.h"
#include "store/Sql.h"
#include "store/Store.h"

namespace {

const QString Doctor = QStringLiteral("doctor");
const QString Yes = QStringLiteral("yes");

} // namespace

QString CleanOutCommand::description() const
{
    return QStringLiteral("Deletes every patient whose doctor (LKod) is not the doctor with the practice\n"
                          "code KOD, with their services and dental charts, in one transaction. Patients\n"
                          "without a doctor stay. Make a backup first: the deletion cannot be undone.\n"
                          "Refused without --yes, for a code no doctor has, and while the program has\n"
                          "the folder open.");
}

void CleanOutCommand::addArguments(QCommandLineParser &parser) const
{
    parser.addOption(QCommandLineOption(Doctor, QStringLiteral("The practice code of the doctor whose patients stay."),
                                        QStringLiteral("KOD")));
    parser.addOption(QCommandLineOption(Yes, QStringLiteral("Confirms the deletion.")));
}

QString CleanOutCommand::usageError(const QCommandLineParser &parser) const
{
    if (!parser.isSet(Doctor))
        return QStringLiteral("give the practice code of the doctor whose patients stay: --doctor KOD");
    if (!parser.isSet(Yes))
        return QStringLiteral("this deletes the patients of every other doctor; confirm it with --yes");
    return {};
}

int CleanOutCommand::run(const QCommandLineParser &parser, const store::DataPaths &paths, QTextStream &out,
                         QTextStream &err)
{
    if (auto opened = store::openStore(paths, {.practiceMustExist = true}); !opened)
        return fail(err, opened.error());
    const QString code = parser.value(Doctor);
    const auto doctor = cleanout::doctorWithCode(store::clinicDb(), code);
    const auto cleaned = doctor && !doctor->isEmpty() ? cleanout::CleanDatabase(store::clinicDb(), code)
                                                      : Result<cleanout::CleanOutReport>::failure(
                                                            doctor ? QStringLiteral("Няма лекар с код на практика %1.").arg(code)
                                                                   : doctor.error());
    store::closeStore();
    if (!cleaned)
        return fail(err, cleaned.error());
    out << "Deleted " << cleaned->patients << " patients of other doctors with " << cleaned->serviceLines
        << " service lines and " << cleaned->charts << " charts; the patients of " << doctor.value() << " stay"
        << Qt::endl;
    return 0;
}
