// The printed card of a patient with 500 services: read, laid out and written to a PDF.
#include "base/ui/PrintRenderer.h"
#include "patients/PatientRecord.h"
#include "patients/PatientRecordPage.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QDate>
#include <QGuiApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

const QString Egn = QStringLiteral("8501150000");

// A clinic file with one patient, a full chart and 500 services over five years.
void fillPatient()
{
    const QSqlDatabase db = store::clinicDb();
    store::run(db, QStringLiteral("INSERT INTO Pacients (EGN, Names, Tawn, UL, Pol) VALUES (?, ?, ?, ?, ?)"),
               {Egn, QStringLiteral("Мария Иванова Петрова"), QStringLiteral("София"), QStringLiteral("ул. Роза 5"),
                QStringLiteral("Ж")});
    store::run(db, QStringLiteral("INSERT INTO Dental (EGN, Z1, Z24, Z40) VALUES (?, '*', 'C', 'O')"), {Egn});
    store::Transaction transaction(db);
    for (int n = 0; n < 500; ++n)
        store::run(db,
                   QStringLiteral("INSERT INTO Help (EGN, Data, KodHelp, Help, TextHelp, KodZab, KodMedic) "
                                  "VALUES (?, ?, ?, 'кариес', 'Обтурация с химичен композит', '36', 'D1')"),
                   {Egn, QDate(2021, 1, 4).addDays(n * 3).toString(Qt::ISODate), QString::number(101 + n % 9)});
    transaction.commit();
}

void recordToPdf(benchmark::State &state)
{
    QTemporaryDir dir;
    for (auto _ : state) {
        const auto record = patientrecord::LoadPatientRecord(store::clinicDb(), Egn);
        const Outcome written =
            print::writePdf(patientrecord::RecordPage(record.value()), dir.filePath(QStringLiteral("record.pdf")));
        if (!written)
            state.SkipWithError(written.error().toStdString().c_str());
    }
}
BENCHMARK(recordToPdf)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    QTemporaryDir folder;
    if (!store::openClinicFile(folder.filePath(QStringLiteral("velmorata.db")), store::ConnectMain))
        return 1;
    fillPatient();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
