// The name search of one doctor who keeps 100,000 patients: the list must be full in well
// under a tenth of a second.
#include "maintenance/DemoPractice.h"
#include "patients/NameSearch.h"
#include "store/DataPaths.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int Patients = 100000;

// A practice of a single doctor, generated once into the temporary folder and reused.
QString oneDoctorPracticeFolder()
{
    const QString folder = QDir::tempPath() + QStringLiteral("/velmorata-bench-onedoctor-%1").arg(Patients);
    if (QFile::exists(folder + QStringLiteral("/complete")))
        return folder;
    QDir(folder).removeRecursively();
    DemoOptions options;
    options.folder = folder;
    options.patients = Patients;
    options.years = 1;
    options.doctors = 1;
    options.seed = 11;
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

QString doctorCode() { return store::scalar(store::clinicDb(), QStringLiteral("SELECT KodMedic FROM Medic")).toString(); }

// The most frequent first word: the search with the longest list.
QString commonestFirstName()
{
    QHash<QString, int> counts;
    QSqlQuery rows = store::run(store::clinicDb(), QStringLiteral("SELECT Names FROM Pacients"));
    while (rows.next())
        ++counts[namesearch::firstWord(rows.value(0).toString())];
    QString best;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it)
        if (best.isEmpty() || it.value() > counts.value(best))
            best = it.key();
    return best;
}

void searchFor(benchmark::State &state, const QString &typed)
{
    const QString doctor = doctorCode();
    qsizetype listed = 0;
    int patients = 0;
    for (auto _ : state) {
        const auto found = namesearch::searchByFirstName(typed, doctor);
        if (!found) {
            state.SkipWithError(qPrintable(found.error()));
            return;
        }
        listed = found->entries.size();
        patients = found->patientsOfDoctor;
    }
    state.counters["listed"] = double(listed);
    state.counters["patients_of_doctor"] = double(patients);
}

void searchCommonName(benchmark::State &state) { searchFor(state, commonestFirstName().toLower()); }
BENCHMARK(searchCommonName)->Unit(benchmark::kMillisecond);

void searchUnknownName(benchmark::State &state) { searchFor(state, QStringLiteral("Несъществуващ")); }
BENCHMARK(searchUnknownName)->Unit(benchmark::kMillisecond);

// An empty key: every row of the doctor comes back to be compared.
void searchEmptyKey(benchmark::State &state) { searchFor(state, QString()); }
BENCHMARK(searchEmptyKey)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const auto opened = store::openStore(store::DataPaths::inFolder(oneDoctorPracticeFolder()));
    if (!opened) {
        std::fprintf(stderr, "%s\n", qPrintable(opened.error()));
        return 1;
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    store::closeStore();
    return 0;
}
