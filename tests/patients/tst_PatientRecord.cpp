// The printed card of a patient: the personal lines, the 52 chart cells, the services in order.
#include "TestPractice.h"

#include "patients/PatientRecord.h"
#include "patients/PatientRecordPage.h"
#include "store/Sql.h"

#include <QTest>

using namespace patientrecord;

namespace {

const QChar CR(13);

PatientRow row(std::initializer_list<std::pair<const char *, const char *>> values)
{
    PatientRow patient;
    for (const auto &[field, value] : values)
        patient.insert(QString::fromUtf8(field), QString::fromUtf8(value));
    return patient;
}

void addLine(const QString &egn, const QString &isoDate, const QString &kod, const QString &help)
{
    store::run(store::clinicDb(),
               QStringLiteral("INSERT INTO Help (EGN, Data, KodHelp, Help, KodMedic, ListID) VALUES (?,?,?,?,'D1','000001')"),
               {egn, isoDate, kod, help});
}

} // namespace

class TestPatientRecord final : public QObject
{
    Q_OBJECT
private slots:
    void address_data()
    {
        QTest::addColumn<PatientRow>("patient");
        QTest::addColumn<bool>("lineBreak");
        QTest::addColumn<QString>("expected");
        const PatientRow full = row({{"PKod", "1000"}, {"Tawn", "София"}, {"Obsh", "Столична"}, {"Obl", "София-град"},
                                     {"KV", "ж.к. Младост "}, {"UL", "ул. Роза"}, {"BL", "5"}, {"VX", "А"}, {"ET", "3"},
                                     {"AP", "12"}});
        QTest::newRow("whole, record")
            << full << true
            << QString("1000 София, общ.Столична, обл.София-град" + QString(CR)
                       + "ж.к. Младост ул. Роза, бл.5, вх.А, ет.3, ап.12");
        QTest::newRow("whole, treatment data runs on")
            << full << false
            << QString("1000 София, общ.Столична, обл.София-град" "ж.к. Младост ул. Роза, бл.5, вх.А, ет.3, ап.12");
        QTest::newRow("neither KV nor UL keeps the break")
            << row({{"Tawn", "Русе"}, {"BL", "7"}}) << true << QString(" Русе" + QString(CR) + ", бл.7");
        QTest::newRow("blank fields are left out") << row({{"PKod", "  "}, {"UL", "ул. 'Опълченска' \"5\""}}) << true
                                                   << QString(QString(CR) + "ул. 'Опълченска' \"5\"");
        QTest::newRow("nothing at all") << PatientRow() << true << QString(CR);
    }
    void address()
    {
        QFETCH(PatientRow, patient);
        QFETCH(bool, lineBreak);
        QTEST(PrintedAddress(patient, lineBreak), "expected");
    }

    void telephonesWorkAndCaption()
    {
        QCOMPARE(PrintedTelephones(row({{"TKod", "02"}, {"DTel", "123"}, {"STel", " "}, {"MTel", "0888"}, {"Fax", "9"}})),
                 QString("код 02  дом.: 123  моб.: 0888  факс: 9"));
        QCOMPARE(PrintedTelephones(row({{"MTel", "0888"}})), QString("  моб.: 0888"));
        QCOMPARE(PrintedWork(row({{"Prof", "учител"}, {"Work", "СОУ 5"}})), QString("учител в СОУ 5"));
        QCOMPARE(PrintedWork(row({{"Work", "СОУ 5"}})), QString(" в СОУ 5"));
        QCOMPARE(RegisteredCaption(QStringLiteral("  Жена")), QString("Регистрирана на:"));
        QCOMPARE(RegisteredCaption(QStringLiteral("М")), QString("Регистриран на:"));
    }

    void recordOfStoredPatient()
    {
        TestPractice practice;
        const QString egn = validEgn(QDate(1980, 5, 17), false);
        const QString longName = QString("О'Нийл \"Мария\" ") + QString(255 - 16, u'я');
        practice.addPatient(egn, longName, QStringLiteral("D1"));
        store::run(store::clinicDb(), u"UPDATE Pacients SET Pol = 'Ж', DataR = '2024-02-29', Nep = ?"_qs, {QString(255, u'н')});
        store::run(store::clinicDb(), u"UPDATE Dental SET Z1 = '*', Z24 = 'C', Z52 = '  '"_qs);
        addLine(egn, QStringLiteral("2025-03-02"), QStringLiteral("508"), QStringLiteral("b"));
        addLine(egn, QStringLiteral("2025-01-10"), QStringLiteral("301"), QStringLiteral("c"));
        addLine(egn, QStringLiteral("2025-03-02"), QStringLiteral("101"), QStringLiteral("a"));

        const auto record = LoadPatientRecord(store::clinicDb(), egn);
        QVERIFY2(record.ok(), qPrintable(record.error()));
        const PersonalTexts &personal = record->personal;
        QCOMPARE((QStringList{personal.names, personal.registeredCaption, personal.DataR, personal.Nep, personal.Osob}),
                 (QStringList{"на " + longName + "    ЕГН " + egn, "Регистрирана на:", "29.02.2024", QString(255, u'н'), ""}));
        QStringList order;
        for (const ServiceLine &line : record->services)
            order << line.Data + ' ' + line.KodHelp + ' ' + line.Help;
        QCOMPARE(order, QStringList({"10.01.2025 301 c", "02.03.2025 101 a", "02.03.2025 508 b"}));
        const RecordChart &chart = record->chart;
        QCOMPARE((QStringList{chart.milkUpper.first().code, chart.permanentUpper.at(3).code, chart.permanentLower.last().code}),
                 (QStringList{"*", "C", ""})); // teeth 55, 15 and 38
    }

    void chartRowsRunAsTheFormNumbersThem()
    {
        const RecordChart chart = BuildRecordChart(QStringList(52, QString()));
        auto teeth = [](const QList<ChartCell> &cells) {
            QList<int> numbers;
            for (const ChartCell &cell : cells)
                numbers << cell.tooth;
            return numbers;
        };
        QCOMPARE(teeth(chart.permanentUpper), QList<int>({18, 17, 16, 15, 14, 13, 12, 11, 21, 22, 23, 24, 25, 26, 27, 28}));
        QCOMPARE(teeth(chart.milkUpper), QList<int>({55, 54, 53, 52, 51, 61, 62, 63, 64, 65}));
        QCOMPARE(teeth(chart.milkLower), QList<int>({85, 84, 83, 82, 81, 71, 72, 73, 74, 75}));
        QCOMPARE(teeth(chart.permanentLower), QList<int>({48, 47, 46, 45, 44, 43, 42, 41, 31, 32, 33, 34, 35, 36, 37, 38}));
    }

    // A patient without chart or services still prints; an unknown number is refused, named.
    void patientWithoutChartOrServicesStillPrints()
    {
        TestPractice practice;
        const QString egn = validEgn(QDate(1990, 1, 2));
        practice.addPatient(egn, QStringLiteral("Иван Петров"), QStringLiteral("D1"));
        store::run(store::clinicDb(), QStringLiteral("DELETE FROM Dental WHERE EGN = ?"), {egn});
        const auto source = LoadPatientPrintSource(store::clinicDb(), egn);
        QVERIFY2(source.ok(), qPrintable(source.error()));
        QVERIFY(!source->hasChart);
        QVERIFY(source->services.isEmpty());
        const PatientRecord record = BuildPatientRecord(source.value());
        QCOMPARE(record.personal.registeredCaption, QString("Регистриран на:"));
        QCOMPARE(record.chart.milkLower.at(4).code, QString());
        const auto unknown = LoadPatientRecord(store::clinicDb(), QStringLiteral("0000000000"));
        QVERIFY(!unknown.ok());
        QVERIFY(unknown.error().contains(QStringLiteral("0000000000")));
    }

    void pageCarriesEveryTextAndBreaksWithItsHeader()
    {
        PatientRecord record;
        record.personal = BuildPersonalTexts(row({{"Names", "О'Нийл \"Мария\""}, {"EGN", "8045170000"}}), true);
        record.chart = BuildRecordChart([] {
            QStringList chart(52, QString());
            chart[0] = QStringLiteral("*");
            chart[51] = QStringLiteral("K");
            return chart;
        }());
        for (int n = 0; n < 60; ++n)
            record.services << ServiceLine{"01.02.2026", "", "", QString::number(100 + n), "", ""};
        const QList<print::Page> pages = RecordPage(record).pages();
        QVERIFY(pages.size() >= 2);
        const print::Page &first = pages.first();
        QCOMPARE(first.textAt("Label2"), QString("на О'Нийл \"Мария\"    ЕГН 8045170000"));
        QCOMPARE(first.textAt("Label52"), QString("*"));   // Z1, milk 55
        QCOMPARE(first.textAt("Label99"), QString("K"));   // Z52, tooth 38
        QCOMPARE(first.textAt("Label7"), QString("Внимание! Непоносимост към:"));
        QCOMPARE(first.textAt("Label33"), QString("Регистриран на:"));
        QCOMPARE(first.textAt(print::rowItemName("Text5", 0)), QString("100"));
        const print::Page &last = pages.last();
        QCOMPARE(last.textAt("Label10"), QString("код дейност")); // the header again
        QVERIFY(!last.has("Label2"));                          // the head once
        QCOMPARE(last.textAt(print::rowItemName("Text5", 59)), QString("159"));
    }

    // The drawn mouth stands on the first page between the cells' legend and the services, on
    // the paper, drawn from the stored fields: milk where a milk field holds something.
    void pageHoldsTheDrawnChart()
    {
        TestPractice practice;
        const QString egn = validEgn(QDate(2016, 3, 4));
        practice.addPatient(egn, QStringLiteral("Ана Иванова"), QStringLiteral("D1"));
        store::run(store::clinicDb(),
                   QStringLiteral("UPDATE Dental SET Z3 = 'C', Z26 = 'O', Z50 = 'МОСТ' WHERE EGN = ?"), {egn});
        addLine(egn, "2026-02-01", "101", "преглед");
        const auto record = LoadPatientRecord(store::clinicDb(), egn);
        QVERIFY2(record.ok(), qPrintable(record.error()));
        const print::PageDescription form = RecordPage(record.value());
        const print::Page first = form.pages().first();
        const print::PageItem *drawn = first.item(QStringLiteral("Mouth"));
        QVERIFY(drawn && drawn->kind == print::ItemKind::Picture && drawn->picture);
        QVERIFY(drawn->rect.top() >= first.item(QStringLiteral("Label35"))->rect.bottom());
        QVERIFY(drawn->rect.bottom() <= form.band.top);
        QVERIFY(drawn->rect.left() >= 0 && drawn->rect.right() <= form.size.width());
        const drawing::Drawing &picture = *drawn->picture;
        QVERIFY(picture.has(QStringLiteral("Z3:caries")) && picture.has(QStringLiteral("Z26:filling")));
        QCOMPARE(picture.tagged(QStringLiteral("Z50:text")).first()->text, QStringLiteral("МОСТ"));
        // Z3 holds a code: milk 53 is in the mouth and 13 faded.
        QVERIFY(!picture.tagged(QStringLiteral("Z3.outline")).first()->dashed);
        QVERIFY(picture.tagged(QStringLiteral("Z26.outline")).first()->dashed);
        QCOMPARE(first.textAt(print::rowItemName("Text5", 0)), QString("101"));
    }
};

QTEST_GUILESS_MAIN(TestPatientRecord)
#include "tst_PatientRecord.moc"
