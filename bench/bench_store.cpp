// Generating and opening a large practice: the cost of `velmorata demo` and of every start-up,
// with the integrity check of the clinic file that the start-up runs.
#include "BenchPractice.h"

#include "demo/DemoPractice.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

void generatePractice(benchmark::State &state)
{
    for (auto _ : state) {
        QTemporaryDir folder;
        DemoOptions options;
        options.folder = folder.path();
        options.patients = int(state.range(0));
        options.years = benchpractice::Years;
        options.doctors = benchpractice::Doctors;
        options.today = QDate(2026, 11, 20);
        const auto made = generateDemoPractice(options);
        store::closeStore();
        if (!made)
            state.SkipWithError(qPrintable(made.error()));
        else
            state.counters["service_lines"] = double(made->serviceLines);
    }
}
BENCHMARK(generatePractice)->Arg(10000)->Arg(benchpractice::Patients)->Iterations(1)->Unit(benchmark::kSecond);

void openPractice(benchmark::State &state)
{
    const auto paths = store::DataPaths::inFolder(benchpractice::largePracticeFolder());
    for (auto _ : state) {
        const auto opened = store::openStore(paths);
        if (!opened)
            state.SkipWithError(qPrintable(opened.error()));
        benchmark::DoNotOptimize(store::scalar(store::clinicDb(), QStringLiteral("SELECT COUNT(*) FROM Medic")));
        store::closeStore();
    }
}
BENCHMARK(openPractice)->Unit(benchmark::kMillisecond);

// The integrity check that every start runs on the clinic file, alone: the larger part of the
// start-up on a practice of a million service lines.
void quickCheckClinicFile(benchmark::State &state)
{
    benchpractice::openLargePractice();
    for (auto _ : state)
        if (!store::checkClinicFile(store::clinicDb()))
            state.SkipWithError("the practice fails its integrity check");
    state.counters["service_lines"] = store::scalar(store::clinicDb(), QStringLiteral("SELECT COUNT(*) FROM Help")).toDouble();
    store::closeStore();
}
BENCHMARK(quickCheckClinicFile)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
