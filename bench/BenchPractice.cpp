#include "BenchPractice.h"

#include "maintenance/DemoPractice.h"
#include "store/DataPaths.h"
#include "store/Store.h"

#include <QDir>
#include <QFile>

#include <cstdio>
#include <cstdlib>

namespace benchpractice {

QString largePracticeFolder()
{
    const QString folder = QDir::tempPath() + QStringLiteral("/velmorata-bench-%1").arg(Patients);
    if (QFile::exists(folder + QStringLiteral("/complete")))
        return folder;
    QDir(folder).removeRecursively();
    DemoOptions options;
    options.folder = folder;
    options.patients = Patients;
    options.years = Years;
    options.doctors = 3;
    options.seed = 7;
    options.today = QDate(2026, 11, 20);
    const auto made = generateDemoPractice(options);
    store::closeStore();
    if (!made) {
        std::fprintf(stderr, "%s\n", qPrintable(made.error()));
        std::exit(1);
    }
    QFile mark(folder + QStringLiteral("/complete"));
    if (!mark.open(QIODevice::WriteOnly))
        std::exit(1);
    return folder;
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
