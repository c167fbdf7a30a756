// The day's minutes are counted anew at every activation of the main window, so the count must
// not grow with the service lines of the practice.
#include "BenchPractice.h"

#include "shell/Calendar.h"
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
    for (auto _ : state) {
        const auto left = MinutesLeftOn(store::clinicDb(), day);
        if (!left)
            state.SkipWithError(qPrintable(left.error()));
        benchmark::DoNotOptimize(left.ok());
    }
}
BENCHMARK(minutesLeftOnBusiestDay)->Unit(benchmark::kMicrosecond);

void recalcMinutesLeftToday(benchmark::State &state)
{
    calendar::fixToday(QDate(2026, 11, 20));
    for (auto _ : state) {
        const Outcome recalculated = RecalcMinutesLeft();
        if (!recalculated)
            state.SkipWithError(qPrintable(recalculated.error()));
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
