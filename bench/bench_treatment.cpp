// The treatment window on a large practice: what it reads to open for a patient (header, chart,
// the patient's lines and the next sheet number), and the save of one line with the day's recount.
#include "BenchPractice.h"

#include "base/Calendar.h"
#include "base/RunState.h"
#include "store/Sql.h"
#include "treatment/ChartPicture.h"
#include "treatment/PatientHeader.h"
#include "treatment/ServiceEntry.h"
#include "treatment/SheetNumbers.h"

#include <QCoreApplication>
#include <QSqlQuery>

#include <benchmark/benchmark.h>

namespace {

const QDate BenchToday(2026, 11, 20); // the last day of the generated practice

struct Patient
{
    QString egn;
    QString doctor;
};

// Patients spread over the file, each with the doctor who keeps them.
QList<Patient> samplePatients()
{
    QList<Patient> patients;
    QSqlQuery rows = store::run(store::clinicDb(),
                                QStringLiteral("SELECT EGN, LKod FROM Pacients WHERE ID % 997 = 0 ORDER BY ID"));
    while (rows.next())
        patients << Patient{rows.value(0).toString(), rows.value(1).toString()};
    return patients;
}

void openTreatmentWindow(benchmark::State &state)
{
    const QList<Patient> patients = samplePatients();
    qsizetype next = 0;
    qint64 lines = 0;
    for (auto _ : state) {
        const Patient &patient = patients.at(next++ % patients.size());
        const QSqlDatabase clinic = store::clinicDb();
        const auto header = LoadPatientHeader(clinic, patient.egn);
        const auto chart = LoadChart(clinic, patient.egn);
        const auto shown = LoadServiceLines(clinic, patient.egn);
        const auto sheet = SheetNumber(clinic, patient.doctor, BenchToday);
        if (!header || !chart || !shown || !sheet) {
            state.SkipWithError("the treatment window could not load");
            break;
        }
        if (chart.value())
            benchmark::DoNotOptimize(BuildChartPicture(*chart.value()));
        lines += shown->size();
        benchmark::DoNotOptimize(sheet.value());
    }
    state.counters["lines_per_patient"] = benchmark::Counter(double(lines), benchmark::Counter::kAvgIterations);
}
BENCHMARK(openTreatmentWindow)->Unit(benchmark::kMillisecond);

// The first opening of a year: no line of the year yet, so the walk passes all the doctor's lines.
void sheetNumberInANewYear(benchmark::State &state)
{
    const QList<Patient> patients = samplePatients();
    qsizetype next = 0;
    for (auto _ : state) {
        const auto sheet = SheetNumber(store::clinicDb(), patients.at(next++ % patients.size()).doctor, QDate(2027, 1, 2));
        if (!sheet || sheet.value() != sheetNumberText(1)) {
            state.SkipWithError("a new year does not start at 000001");
            break;
        }
    }
}
BENCHMARK(sheetNumberInANewYear)->Unit(benchmark::kMillisecond);

void saveServiceLine(benchmark::State &state)
{
    const QList<Patient> patients = samplePatients();
    qsizetype next = 0;
    QList<qint64> added;
    // The window expects its sheet when it opens; the first line of an opening takes the number
    // inside its transaction (state.range(0) == 0), the later ones keep it (1).
    QHash<QString, QString> sheets;
    for (const Patient &patient : patients) {
        if (sheets.contains(patient.doctor))
            continue;
        const auto sheet = SheetNumber(store::clinicDb(), patient.doctor, BenchToday);
        if (!sheet) {
            state.SkipWithError(qPrintable(sheet.error()));
            return;
        }
        sheets.insert(patient.doctor, sheet.value());
    }
    ServiceLine line;
    line.Data = QStringLiteral("20.11.2026");
    line.KodHelp = QStringLiteral("30-2");
    for (auto _ : state) {
        const Patient &patient = patients.at(next++ % patients.size());
        const auto saved = SaveServiceLine(store::clinicDb(),
                                           {patient.egn, patient.doctor, sheets.value(patient.doctor), BenchToday,
                                            state.range(0) == 1},
                                           line, 5);
        if (!saved) {
            state.SkipWithError(qPrintable(saved.error()));
            break;
        }
        added << saved->line.id;
    }
    // The practice is left as it was found.
    for (const qint64 id : added)
        (void)DeleteServiceLine(store::clinicDb(), id);
}
BENCHMARK(saveServiceLine)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    benchpractice::openLargePractice();
    calendar::fixToday(BenchToday);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
