// The day's minutes are counted anew at every activation of the main window, so the count must
// not grow with the service lines of the practice.
#include "BenchPractice.h"

#include "base/Calendar.h"
#include "store/Dates.h"
#include "store/Sql.h"
#include "treatment/Minutes.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>

namespace {

QDate busiestDay()
{
    const QVariant day = store::scalar(
        store::clinicDb(), QStringLiteral("SELECT Data FROM Help GROUP BY Data ORDER BY COUNT(*) DESC LIMIT 1"));
    return dates::fromIso(day.toString()).value_or(QDate(2026, 11, 20));
}

void minutesLeftOnBusiestDay(benchmark::State &state)
{
    const QDate day = busiestDay();
    state.counters["lines_that_day"] = store::scalar(store::clinicDb(), QStringLiteral("SELECT COUNT(*) FROM Help WHERE Data = ?"),
                                                     {dates::toIso(day)})
                                           .toDouble();
    // The generated practice puts far more lines on a day than a chair can do, so the count leaves
    // the 16-bit range there; that outcome costs the same query and is measured alike.
    for (auto _ : state) {
        const auto left = MinutesLeftOn(store::clinicDb(), day);
        benchmark::DoNotOptimize(left.ok());
    }
}
BENCHMARK(minutesLeftOnBusiestDay)->Unit(benchmark::kMicrosecond);

void recalcMinutesLeftToday(benchmark::State &state)
{
    calendar::fixToday(QDate(2026, 11, 20));
    for (auto _ : state) {
        const Outcome recalculated = RecalcMinutesLeft(store::clinicDb());
        benchmark::DoNotOptimize(recalculated.ok());
    }
    calendar::fixToday({});
}
BENCHMARK(recalcMinutesLeftToday)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchpractice::openLargePractice();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
