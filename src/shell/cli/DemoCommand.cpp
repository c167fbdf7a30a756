#include "shell/cli/DemoCommand.h"

#include "shell/cli/DataFolderOption.h"
#include "shell/cli/ParseArguments.h"

#include "demo/DemoPractice.h"
#include "store/Dates.h"
#include "store/Store.h"

#include <QCommandLineParser>

#include <algorithm>
#include <limits>

namespace {

// A whole number of the option within its bounds; an absent option keeps `value`.
bool readCount(const QCommandLineParser &parser, const QCommandLineOption &option, qint64 minimum, qint64 maximum,
               qint64 &value, QTextStream &err)
{
    if (!parser.isSet(option))
        return true;
    bool ok = false;
    const qint64 read = parser.value(option).toLongLong(&ok);
    if (ok && read >= minimum && read <= maximum) {
        value = read;
        return true;
    }
    err << "demo: --" << option.names().first() << " wants a whole number from " << minimum << " to " << maximum
        << Qt::endl;
    return false;
}

// What the check is to find, one fault a line: its rules' codes, the number, the day, the doctor.
void printFaults(const QList<DemoFault> &faults, QTextStream &out)
{
    out << "Faults made on purpose: " << faults.size() << '\n';
    for (const DemoFault &fault : faults) {
        QStringList codes;
        for (const reports::ClaimRule rule : fault.rules)
            codes << reports::ClaimRuleOf(rule).code;
        out << "  " << codes.join(u',') << '\t' << fault.EGN << '\t' << dates::toTyped(fault.date) << '\t'
            << fault.medicCode << '\n';
    }
}

} // namespace

int DemoCommand::execute(const QStringList &arguments, QTextStream &out, QTextStream &err)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Fills an empty data folder with an invented practice."));
    parser.addHelpOption();
    const QCommandLineOption doctors(QStringLiteral("doctors"), QStringLiteral("Number of doctors, 1 to 100 (2, or one for every 1,000 patients)."),
                                     QStringLiteral("D"));
    const QCommandLineOption patients(QStringLiteral("patients"), QStringLiteral("Number of patients, 0 to 2,000,000 (300)."), QStringLiteral("N"));
    const QCommandLineOption years(QStringLiteral("years"), QStringLiteral("Years of services, 1 to 30 (3)."), QStringLiteral("Y"));
    const QCommandLineOption seed(QStringLiteral("seed"), QStringLiteral("Seed of the invention, 0 to 4294967295 (1)."), QStringLiteral("S"));
    const QCommandLineOption today(QStringLiteral("today"), QStringLiteral("The last day of the practice, in 2000..2099 (today)."),
                                   QStringLiteral("DD.MM.YYYY"));
    const QCommandLineOption faults(QStringLiteral("faults"),
                                    QStringLiteral("Also make a few faults on purpose, in the last full month before today, "
                                                   "for the claims check (report check) to find."));
    parser.addOptions({dataFolderOption(), doctors, patients, years, seed, today, faults});
    if (const auto ended = parseArguments(parser, arguments, out, err, QStringLiteral("demo: ")))
        return *ended;
    const auto paths = dataFolderOf(parser, err, QStringLiteral("demo: "));
    if (!paths)
        return 2;
    DemoOptions options;
    options.folder = paths->folder;
    qint64 doctorCount = 0, patientCount = options.patients, yearCount = options.years, seedValue = options.seed;
    if (!readCount(parser, doctors, 1, DemoOptions::MaxDoctors, doctorCount, err)
        || !readCount(parser, patients, 0, DemoOptions::MaxPatients, patientCount, err)
        || !readCount(parser, years, 1, DemoOptions::MaxYears, yearCount, err)
        || !readCount(parser, seed, 0, std::numeric_limits<quint32>::max(), seedValue, err))
        return 2;
    options.patients = int(patientCount);
    options.years = int(yearCount);
    options.seed = quint32(seedValue);
    options.faults = parser.isSet(faults);
    // A doctor's days hold about a thousand patients' visits within the minutes of the day.
    options.doctors = parser.isSet(doctors) ? int(doctorCount)
                                            : std::clamp((options.patients + 999) / 1000, 2, DemoOptions::MaxDoctors);
    if (parser.isSet(today)) {
        const auto day = dates::fromTyped(parser.value(today));
        if (!day) {
            err << "demo: --today wants a date as DD.MM.YYYY" << Qt::endl;
            return 2;
        }
        options.today = *day;
    }
    if (const QString fault = demoOptionsFault(options); !fault.isEmpty()) {
        err << "demo: " << fault << Qt::endl;
        return 2;
    }
    const auto summary = generateDemoPractice(options);
    store::closeStore();
    if (!summary) {
        err << "demo: " << summary.error() << Qt::endl;
        return 1;
    }
    out << "Data folder: " << paths->folder << '\n';
    out << "Patients: " << summary->patients << ", service lines: " << summary->serviceLines << '\n';
    out << "Doctors (name, practice code, access code):\n";
    for (const DemoDoctor &doctor : summary->doctors)
        out << "  " << doctor.name << '\t' << doctor.code << '\t' << doctor.accessCode << '\n';
    if (options.faults)
        printFaults(summary->faults, out);
    out.flush();
    return 0;
}
