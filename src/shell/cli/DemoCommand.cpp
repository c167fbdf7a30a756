#include "shell/cli/DemoCommand.h"

#include "maintenance/DemoPractice.h"
#include "store/Dates.h"
#include "store/DataPaths.h"
#include "store/Store.h"

#include <QCommandLineParser>

#include <algorithm>

namespace {

bool readCount(const QCommandLineParser &parser, const QCommandLineOption &option, int minimum, int &value,
               QTextStream &err)
{
    if (!parser.isSet(option))
        return true;
    bool ok = false;
    value = parser.value(option).toInt(&ok);
    if (ok && value >= minimum)
        return true;
    err << "demo: --" << option.names().first() << " wants a whole number of at least " << minimum << Qt::endl;
    return false;
}

} // namespace

int DemoCommand::execute(const QStringList &arguments, QTextStream &out, QTextStream &err)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Fills an empty data folder with an invented practice."));
    parser.addHelpOption();
    const QCommandLineOption dataDir(QStringLiteral("data-dir"), QStringLiteral("The data folder."), QStringLiteral("DIR"),
                                     store::DataPaths::defaultFolder());
    const QCommandLineOption doctors(QStringLiteral("doctors"), QStringLiteral("Number of doctors (2, one more for every 10,000 patients)."),
                                     QStringLiteral("D"));
    const QCommandLineOption patients(QStringLiteral("patients"), QStringLiteral("Number of patients (300)."), QStringLiteral("N"));
    const QCommandLineOption years(QStringLiteral("years"), QStringLiteral("Years of services (3)."), QStringLiteral("Y"));
    const QCommandLineOption seed(QStringLiteral("seed"), QStringLiteral("Seed of the invention (1)."), QStringLiteral("S"));
    const QCommandLineOption today(QStringLiteral("today"), QStringLiteral("The last day of the practice (today)."),
                                   QStringLiteral("DD.MM.YYYY"));
    parser.addOptions({dataDir, doctors, patients, years, seed, today});
    if (!parser.parse(arguments)) {
        err << "demo: " << parser.errorText() << Qt::endl;
        return 2;
    }
    if (parser.isSet(QStringLiteral("help"))) {
        out << parser.helpText();
        return 0;
    }
    DemoOptions options;
    options.folder = parser.value(dataDir);
    int seedValue = 1;
    if (!readCount(parser, doctors, 1, options.doctors, err) || !readCount(parser, patients, 0, options.patients, err)
        || !readCount(parser, years, 1, options.years, err) || !readCount(parser, seed, 0, seedValue, err))
        return 2;
    options.seed = quint32(seedValue);
    // A doctor writes at most 32767 sheets a year; a large invented practice gets more doctors.
    if (!parser.isSet(doctors))
        options.doctors = std::max(2, (options.patients + 9999) / 10000);
    if (parser.isSet(today)) {
        const auto day = dates::fromTyped(parser.value(today));
        if (!day) {
            err << "demo: --today wants a date as DD.MM.YYYY" << Qt::endl;
            return 2;
        }
        options.today = *day;
    }
    const auto summary = generateDemoPractice(options);
    store::closeStore();
    if (!summary) {
        err << "demo: " << summary.error() << Qt::endl;
        return 1;
    }
    out << "Data folder: " << store::DataPaths::inFolder(options.folder).folder << '\n';
    out << "Patients: " << summary->patients << ", service lines: " << summary->serviceLines << '\n';
    out << "Doctors (name, practice code, access code):\n";
    for (const DemoDoctor &doctor : summary->doctors)
        out << "  " << doctor.name << '\t' << doctor.code << '\t' << doctor.accessCode << '\n';
    out.flush();
    return 0;
}
