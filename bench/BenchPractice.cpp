#include "BenchPractice.h"

#include "demo/DemoPractice.h"
#include "store/DataPaths.h"
#include "store/Store.h"

#include <QDir>
#include <QFile>

#include <cstdio>
#include <cstdlib>

namespace benchpractice {

QString practiceFolder(int patients, int doctors, int years, quint32 seed)
{
    // The generator's version is in the name: a folder of an older generator is another practice.
    const QString folder = QDir::tempPath()
        + QStringLiteral("/velmorata-bench-%1-%2-%3-%4-v%5").arg(patients).arg(doctors).arg(years).arg(seed).arg(DemoGeneratorVersion);
    if (QFile::exists(folder + QStringLiteral("/complete")))
        return folder;
    QDir(folder).removeRecursively();
    DemoOptions options;
    options.folder = folder;
    options.patients = patients;
    options.years = years;
    options.doctors = doctors;
    options.seed = seed;
    options.today = QDate(2026, 11, 20);
    const auto made = generateDemoPractice(options);
    store::closeStore();
    QFile mark(folder + QStringLiteral("/complete"));
    if (!made || !mark.open(QIODevice::WriteOnly)) {
        std::fprintf(stderr, "%s\n", made ? "cannot mark the practice complete" : qPrintable(made.error()));
        std::exit(1);
    }
    return folder;
}

QString largePracticeFolder() { return practiceFolder(Patients, Doctors, Years, 7); }

QString measuredPracticeFolder()
{
    const QString chosen = qEnvironmentVariable("VELMORATA_BENCH_FOLDER");
    return chosen.isEmpty() ? largePracticeFolder() : chosen;
}

void openLargePractice()
{
    const auto opened = store::openStore(store::DataPaths::inFolder(largePracticeFolder()));
    if (!opened) {
        std::fprintf(stderr, "%s\n", qPrintable(opened.error()));
        std::exit(1);
    }
}

} // namespace benchpractice
