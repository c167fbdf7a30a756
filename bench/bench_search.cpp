// The name search of one doctor who keeps 100,000 patients: the list must be full in well
// under a tenth of a second.
#include "BenchPractice.h"

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
QString oneDoctorPracticeFolder() { return benchpractice::practiceFolder(Patients, 1, 1, 11); }

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
        const auto found = namesearch::searchByFirstName(store::clinicDb(), typed, doctor);
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
