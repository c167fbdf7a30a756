// The treatment data print: milk teeth take their permanent twin's cell with their number framed.
#include "TestPractice.h"

#include "store/Sql.h"
#include "treatment/TreatmentData.h"
#include "treatment/TreatmentDataPage.h"

#include <QTest>

using namespace treatmentdata;

namespace {


DataChartCell cellAt(const DataChart &chart, int place)
{
    for (const QList<DataChartCell> *row : {&chart.upper, &chart.lower})
        for (const DataChartCell &cell : *row)
            if (cell.place == place)
                return cell;
    return {};
}

} // namespace

class TestTreatmentData final : public QObject
{
    Q_OBJECT
private slots:
    void chartCells_data()
    {
        QTest::addColumn<QStringList>("chart");
        QTest::addColumn<int>("place");
        QTest::addColumn<QString>("number");
        QTest::addColumn<bool>("framed");
        QTest::addColumn<QString>("code");
        QStringList chart(52, QString());
        QTest::newRow("empty chart shows the place's number") << chart << 15 << "15" << false << "";
        QStringList milk = chart;
        milk[0] = QStringLiteral("*");  // Z1: 55 at the place of 15
        milk[10] = QStringLiteral("C"); // Z11: 85 at the place of 45
        QTest::newRow("milk star") << milk << 15 << "55" << true << "*";
        QTest::newRow("milk code, lower jaw") << milk << 45 << "85" << true << "C";
        QStringList both = milk;
        both[23] = QStringLiteral("P"); // Z24: 15
        QTest::newRow("both filled: the permanent code, the milk frame") << both << 15 << "55" << true << "P";
        QStringList blankMilk = chart;
        blankMilk[5] = QStringLiteral("  "); // Z6: 61 blank
        blankMilk[33] = QStringLiteral("K"); // Z34: 26, a molar
        QTest::newRow("a blank milk field frames nothing") << blankMilk << 21 << "21" << false << "";
        QTest::newRow("molar") << blankMilk << 26 << "26" << false << "K";
    }
    void chartCells()
    {
        QFETCH(QStringList, chart);
        QFETCH(int, place);
        const DataChartCell cell = cellAt(BuildDataChart(chart), place);
        QTEST(cell.number, "number");
        QTEST(cell.framed, "framed");
        QTEST(cell.code, "code");
    }

    void rowsRunLeftToRight()
    {
        const DataChart chart = BuildDataChart(QStringList(52, QString()));
        QCOMPARE(chart.upper.size(), 16);
        QCOMPARE(chart.upper.first().place, 18);
        QCOMPARE(chart.upper.at(8).place, 21);
        QCOMPARE(chart.lower.first().place, 48);
        QCOMPARE(chart.lower.last().place, 38);
    }

    void pageFramesMilkNumbers()
    {
        QStringList chart(52, QString());
        chart[0] = QStringLiteral("*");
        TreatmentData data{patientrecord::BuildPersonalTexts({}, false), BuildDataChart(chart), {}};
        const QList<print::Page> pages = TreatmentDataPage(data).pages();
        QCOMPARE(pages.size(), 1); // no services: the head and an empty list
        QCOMPARE(pages.first().textAt("z_15"), QString("55"));
        QCOMPARE(pages.first().textAt("s_15"), QString("*"));
        QVERIFY(pages.first().has("frame_15"));
        QVERIFY(!pages.first().has("frame_14"));
        QCOMPARE(pages.first().textAt("z_14"), QString("14"));
        QCOMPARE(pages.first().textAt("Head6"), QString("Вид"));
        QCOMPARE(pages.first().textAt("sReg"), QString("Регистриран на:"));
    }

    void storedPatient()
    {
        TestPractice practice;
        const QString egn = validEgn(QDate(2012, 7, 1), false); // month code 47
        practice.addPatient(egn, QStringLiteral("Ана"), QStringLiteral("D1"));
        store::run(store::clinicDb(), QStringLiteral("UPDATE Pacients SET Tawn = 'Бургас', UL = 'ул. \"Бор\"' WHERE EGN = ?"),
                   {egn});
        store::run(store::clinicDb(),
                   QStringLiteral("INSERT INTO Help (EGN, Data, KodHelp, Vid, KodMedic) VALUES (?, '2026-01-05', '101', 'П', 'D1')"),
                   {egn});
        const auto data = LoadTreatmentData(store::clinicDb(), egn);
        QVERIFY2(data.ok(), qPrintable(data.error()));
        QCOMPARE(data->personal.address, QString(" Бургасул. \"Бор\""));
        QCOMPARE(data->personal.names, "на Ана    ЕГН " + egn);
        QCOMPARE(data->services.size(), 1);
        QCOMPARE(data->services.first().Vid, QString("П"));
        QCOMPARE(data->services.first().Data, QString("05.01.2026"));
        QVERIFY(!LoadTreatmentData(store::clinicDb(), QStringLiteral("9999999999")).ok());
    }
};

QTEST_GUILESS_MAIN(TestTreatmentData)
#include "tst_TreatmentData.moc"
