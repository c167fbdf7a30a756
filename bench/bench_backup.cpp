// Backup and checked restore of the large practice's clinic file, each beside a plain copy of
// the same file made in the same iteration: the counter ratio_to_copy is their quotient.
// VELMORATA_BENCH_FOLDER names another practice folder to measure on.
#include "BenchPractice.h"

#include "maintenance/Backup.h"
#include "maintenance/Restore.h"
#include "store/Store.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

// The plain copy that the others are held against, in seconds.
double plainCopySeconds(const QString &from, const QString &to)
{
    QFile::remove(to);
    QElapsedTimer clock;
    clock.start();
    if (!QFile::copy(from, to))
        qFatal("cannot copy %s", qPrintable(from));
    const double seconds = double(clock.nsecsElapsed()) / 1e9;
    QFile::remove(to);
    return seconds;
}

void backupLargePractice(benchmark::State &state)
{
    const auto paths = store::DataPaths::inFolder(benchpractice::measuredPracticeFolder());
    QTemporaryDir out;
    double copied = 0, backedUp = 0;
    for (auto _ : state) {
        state.PauseTiming();
        copied += plainCopySeconds(paths.clinicDb, out.filePath(QStringLiteral("plain.db")));
        state.ResumeTiming();
        QElapsedTimer clock;
        clock.start();
        const auto made = backup::BackupDatabase(paths.clinicDb, out.filePath(QStringLiteral("practice.arh")));
        backedUp += double(clock.nsecsElapsed()) / 1e9;
        if (!made)
            state.SkipWithError(qPrintable(made.error()));
    }
    state.counters["ratio_to_copy"] = backedUp / copied;
}
BENCHMARK(backupLargePractice)->Iterations(3)->Unit(benchmark::kSecond)->UseRealTime();

void restoreLargePractice(benchmark::State &state)
{
    const auto practice = store::DataPaths::inFolder(benchpractice::measuredPracticeFolder());
    QTemporaryDir work;
    const QString archive = work.filePath(QStringLiteral("practice.arh"));
    const QString folder = work.filePath(QStringLiteral("data"));
    QDir().mkpath(folder);
    if (!backup::BackupDatabase(practice.clinicDb, archive) || !QFile::copy(archive, folder + QStringLiteral("/velmorata.db"))
        || !QFile::copy(practice.dataDb, folder + QStringLiteral("/data.db"))) {
        state.SkipWithError("cannot prepare the folder");
        return;
    }
    if (!store::lockFolder(store::DataPaths::inFolder(folder))) {
        state.SkipWithError("cannot lock the folder");
        return;
    }
    double copied = 0, restored = 0;
    for (auto _ : state) {
        state.PauseTiming();
        copied += plainCopySeconds(archive, work.filePath(QStringLiteral("plain.db")));
        state.ResumeTiming();
        QElapsedTimer clock;
        clock.start();
        const auto done = restore::RestoreDatabase(archive, [](const QString &) { return true; });
        restored += double(clock.nsecsElapsed()) / 1e9;
        state.PauseTiming();
        if (!done)
            state.SkipWithError(qPrintable(done.error()));
        else
            QFile::remove(done->safetyCopy);
        state.ResumeTiming();
    }
    store::closeStore();
    state.counters["ratio_to_copy"] = restored / copied;
}
BENCHMARK(restoreLargePractice)->Iterations(3)->Unit(benchmark::kSecond)->UseRealTime();

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
