// The reports to the fund on the large practice, each beside the sqlite3 shell reading the same
// rows (or making the equivalent aggregate) in the same iteration: ratio_to_shell is their
// quotient. Every builder covers a whole year of the busiest doctor (the materials every
// doctor's year), the XML report the busiest month, the claims check the busiest doctor's year
// and, one doctor after the other, the whole practice's year. VELMORATA_BENCH_FOLDER names another folder.
#include "BenchPractice.h"

#include "reports/claimscheck/ClaimsCheck.h"
#include "reports/forms/PrintedReports.h"
#include "reports/xml/StomatologyXml.h"
#include "store/DataPaths.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>

#include <benchmark/benchmark.h>

namespace {

const QString YearFrom = QStringLiteral("2025-01-01");
const QString YearTo = QStringLiteral("2025-12-31");

void openPractice()
{
    if (!store::openStore(store::DataPaths::inFolder(benchpractice::measuredPracticeFolder())))
        qFatal("cannot open the practice");
}

QString busiestDoctor(const QString &from, const QString &to)
{
    return store::scalar(store::clinicDb(),
                         QStringLiteral("SELECT KodMedic FROM Help WHERE Data BETWEEN ? AND ? GROUP BY KodMedic "
                                        "ORDER BY COUNT(*) DESC"),
                         {from, to})
        .toString();
}

reports::Period periodOf(const QString &from, const QString &to)
{
    auto typed = [](const QString &iso) { return iso.mid(8, 2) + u'.' + iso.mid(5, 2) + u'.' + iso.left(4); };
    return reports::CheckPeriod(typed(from), typed(to)).period;
}

// The shell's time for a statement, its output thrown away, in seconds.
double shellSeconds(const QString &sql)
{
    QProcess shell;
    QElapsedTimer clock;
    clock.start();
    shell.start(QStringLiteral("sqlite3"), {store::DataPaths::inFolder(benchpractice::measuredPracticeFolder()).clinicDb, sql});
    if (!shell.waitForFinished(-1) || shell.exitCode() != 0)
        qFatal("sqlite3 failed: %s", shell.readAllStandardError().constData());
    shell.readAllStandardOutput();
    return double(clock.nsecsElapsed()) / 1e9;
}

QString bound(QString sql, const QString &doctor, const QString &from, const QString &to)
{
    return sql.replace(QStringLiteral(":doctor"), u'\'' + doctor + u'\'')
        .replace(QStringLiteral(":from"), u'\'' + from + u'\'')
        .replace(QStringLiteral(":to"), u'\'' + to + u'\'');
}

void measure(benchmark::State &state, reports::ReportKind kind, const QString &shellSql, bool everyDoctor = false)
{
    openPractice();
    const QString doctor = busiestDoctor(YearFrom, YearTo);
    const reports::Period period = periodOf(YearFrom, YearTo);
    const QString sql = bound(shellSql, doctor, YearFrom, YearTo);
    double ours = 0, shell = 0;
    for (auto _ : state) {
        state.PauseTiming();
        shell += shellSeconds(sql);
        if (!reports::PrepareReport(store::openedDatabases(), kind))
            state.SkipWithError("cannot make the scratch table");
        state.ResumeTiming();
        QElapsedTimer clock;
        clock.start();
        const auto built = reports::BuildReport(store::openedDatabases(), kind, period, everyDoctor ? QString() : doctor);
        ours += double(clock.nsecsElapsed()) / 1e9;
        if (!built)
            state.SkipWithError(qPrintable(built.error()));
    }
    state.counters["ratio_to_shell"] = ours / shell;
    store::closeStore();
}

const QString DoctorYear = QStringLiteral("FROM Help WHERE KodMedic = :doctor AND Data BETWEEN :from AND :to");

void activityReport(benchmark::State &state)
{
    measure(state, reports::ReportKind::Activity,
            QStringLiteral("SELECT h.EGN, MIN(h.Data), p.Names, group_concat(h.KodHelp, ',') FROM (SELECT * ")
                + DoctorYear + QStringLiteral(" ORDER BY Data, KodHelp, ID) h LEFT JOIN Pacients p ON p.EGN = h.EGN "
                                              "GROUP BY h.EGN ORDER BY MIN(h.Data)"));
}
BENCHMARK(activityReport)->Iterations(5)->Unit(benchmark::kMillisecond)->UseRealTime();

void fundSummary(benchmark::State &state)
{
    measure(state, reports::ReportKind::FundSummary,
            QStringLiteral("SELECT KodHelp, EGN, Data ") + DoctorYear + QStringLiteral(" ORDER BY Data, KodHelp, ID"));
}
BENCHMARK(fundSummary)->Iterations(5)->Unit(benchmark::kMillisecond)->UseRealTime();

void specification(benchmark::State &state)
{
    measure(state, reports::ReportKind::Specification,
            QStringLiteral("SELECT KodHelp, EGN, Data ") + DoctorYear + QStringLiteral(" ORDER BY Data, KodHelp, ID"));
}
BENCHMARK(specification)->Iterations(5)->Unit(benchmark::kMillisecond)->UseRealTime();

void materials(benchmark::State &state)
{
    measure(state, reports::ReportKind::Materials,
            // The quantities are single precision, so the lines are added in their order: the
            // equivalent read is every line's code by date.
            QStringLiteral("SELECT ID, KodHelp FROM Help WHERE Data BETWEEN :from AND :to ORDER BY Data, ID"),
            true);
}
BENCHMARK(materials)->Iterations(3)->Unit(benchmark::kMillisecond)->UseRealTime();

// The busiest month of the busiest doctor: the sheets with their patients, charts and lines.
void xmlReport(benchmark::State &state)
{
    openPractice();
    const QString from = QStringLiteral("2025-03-01");
    const QString to = QStringLiteral("2025-03-31");
    const QString doctor = busiestDoctor(from, to);
    const QString sql = bound(
        QStringLiteral("SELECT p.*, d.*, h.* FROM Help h JOIN Pacients p ON p.EGN = h.EGN "
                       "LEFT JOIN Dental d ON d.EGN = h.EGN WHERE h.KodMedic = :doctor AND h.Data BETWEEN :from AND :to "
                       "ORDER BY h.ListID, h.KodHelp"),
        doctor, from, to);
    const reports::Period period = periodOf(from, to);
    double ours = 0, shell = 0;
    for (auto _ : state) {
        state.PauseTiming();
        shell += shellSeconds(sql);
        state.ResumeTiming();
        QElapsedTimer clock;
        clock.start();
        const auto built = reports::BuildStomatologyXml(store::clinicDb(), period, doctor, QDate(2026, 4, 2));
        ours += double(clock.nsecsElapsed()) / 1e9;
        if (!built)
            state.SkipWithError(qPrintable(built.error()));
    }
    state.counters["ratio_to_shell"] = ours / shell;
    store::closeStore();
}
BENCHMARK(xmlReport)->Iterations(5)->Unit(benchmark::kMillisecond)->UseRealTime();

// The claims check of the busiest doctor's year, beside the shell reading what it reads: the
// doctor's lines and the year's lines of the same patients.
void claimsCheck(benchmark::State &state)
{
    openPractice();
    const QString doctor = busiestDoctor(YearFrom, YearTo);
    const QString sql = bound(QStringLiteral("SELECT * ") + DoctorYear +
                                  QStringLiteral(" ORDER BY Data, ID; SELECT ID, EGN, Data, KodHelp, KodZab, KodMedic "
                                                 "FROM Help WHERE Data BETWEEN :from AND :to AND EGN IN (SELECT EGN ") +
                                  DoctorYear + QStringLiteral(") ORDER BY EGN, Data, ID"),
                              doctor, YearFrom, YearTo);
    const auto packages = reports::AnnualPackageTable::shipped();
    double ours = 0, shell = 0;
    qsizetype findings = 0;
    for (auto _ : state) {
        state.PauseTiming();
        shell += shellSeconds(sql);
        state.ResumeTiming();
        QElapsedTimer clock;
        clock.start();
        const auto found = reports::CheckClaims(store::clinicDb(), packages.value(), periodOf(YearFrom, YearTo), doctor,
                                                QDate(2026, 4, 2));
        ours += double(clock.nsecsElapsed()) / 1e9;
        if (!found)
            state.SkipWithError(qPrintable(found.error()));
        else
            findings = found->size();
    }
    state.counters["ratio_to_shell"] = ours / shell;
    state.counters["findings"] = double(findings);
    store::closeStore();
}
BENCHMARK(claimsCheck)->Iterations(5)->Unit(benchmark::kMillisecond)->UseRealTime();

// Every doctor's year checked one doctor after the other: the whole practice's year.
void claimsCheckEveryDoctor(benchmark::State &state)
{
    openPractice();
    QStringList doctors;
    QSqlQuery query = store::run(store::clinicDb(), QStringLiteral("SELECT KodMedic FROM Medic"));
    while (query.next())
        doctors << query.value(0).toString();
    const auto packages = reports::AnnualPackageTable::shipped();
    qsizetype findings = 0;
    for (auto _ : state) {
        findings = 0;
        for (const QString &doctor : std::as_const(doctors)) {
            const auto found = reports::CheckClaims(store::clinicDb(), packages.value(), periodOf(YearFrom, YearTo),
                                                    doctor, QDate(2026, 4, 2));
            if (!found)
                state.SkipWithError(qPrintable(found.error()));
            else
                findings += found->size();
        }
    }
    state.counters["doctors"] = double(doctors.size());
    state.counters["findings"] = double(findings);
    store::closeStore();
}
BENCHMARK(claimsCheckEveryDoctor)->Iterations(2)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
