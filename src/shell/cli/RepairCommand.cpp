#include "shell/cli/UpkeepCommands.h"

#include "maintenance/Repair.h"
#include "shell/cli/EgnRuleOption.h"
#include "shell/cli/ParseArguments.h"
#include "store/Sql.h"
#include "store/Store.h"

namespace {

const QString DryRun = QStringLiteral("dry-run");

void printSummary(const repair::RepairReport &report, bool dryRun, QTextStream &out)
{
    out << "Checked " << report.patients << " patients: " << report.faults.size() << " faults in personal numbers; ";
    if (!report.faults.isEmpty())
        out << "no date of birth changed" << Qt::endl;
    else
        out << report.rewritten << (dryRun ? " dates of birth would be rewritten" : " dates of birth rewritten")
            << Qt::endl;
}

} // namespace

QString RepairCommand::description() const
{
    return QStringLiteral("Checks the integrity of velmorata.db and the personal number of every patient,\n"
                          "printing each fault. Only when all numbers are valid is every date of birth\n"
                          "written anew from the number. Refused while the program has the folder open.");
}

void RepairCommand::addArguments(QCommandLineParser &parser) const
{
    parser.addOption(QCommandLineOption(DryRun, QStringLiteral("Check and report, change nothing.")));
    parser.addOption(egnRuleOption());
}

int RepairCommand::run(const QCommandLineParser &parser, const store::DataPaths &paths, QTextStream &out,
                       QTextStream &err)
{
    if (!applyEgnRuleOption(parser, err, QStringLiteral("repair: ")))
        return 2;
    if (auto opened = store::openStore(paths, {.practiceMustExist = true}); !opened)
        return fail(err, opened.error());
    const bool dryRun = parser.isSet(DryRun);
    const auto repaired = repair::RepairDatabase(store::clinicDb(), dryRun ? repair::Mode::DryRun : repair::Mode::Write);
    store::closeStore();
    if (!repaired)
        return fail(err, repaired.error());
    if (repaired->fileDamaged())
        return fail(err, repair::damagedFileMessage());
    for (const QString &fault : repaired->faults)
        out << oneLine(fault) << Qt::endl;
    printSummary(repaired.value(), dryRun, out);
    return repaired->faults.isEmpty() ? 0 : 1;
}
