// The printed diary page: row labels and slots, the day printed for a cancelled choice.
#include "TestPractice.h"

#include "admin/DiaryPrint.h"
#include "admin/DiaryPrintPage.h"
#include "store/Sql.h"

#include <QTest>

using namespace diaryprint;

class TestDiaryPrint final : public QObject
{
    Q_OBJECT
private slots:
    void rows_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("label");
        QTest::addColumn<int>("slot");
        QTest::newRow("first") << 0 << "7.30 - " << 0;
        QTest::newRow("on the hour") << 1 << "8.00 - " << 1;
        QTest::newRow("9.00") << 3 << "9.00 - " << 3;
        QTest::newRow("9.30 prints the 9.00 slot") << 4 << "9.30 - " << 3;
        QTest::newRow("10.00") << 5 << "10.00 - " << 5;
        QTest::newRow("13.00 has no closing blank") << 11 << "13.00 -" << 11;
        QTest::newRow("13.30") << 12 << "13.30 - " << 12;
        QTest::newRow("last") << 25 << "20.00 - " << 25;
    }
    void rows()
    {
        QFETCH(int, row);
        QTEST(RowLabel(row), "label");
        QTEST(RowSlot(row), "slot");
    }

    void printDay_data()
    {
        QTest::addColumn<DateChoice>("choice");
        QTest::addColumn<QDate>("today");
        QTest::addColumn<QDate>("shown");
        QTest::addColumn<QDate>("looked");
        const QDate chosen(2026, 4, 7);
        QTest::newRow("chosen") << DateChoice{true, chosen} << QDate(2026, 3, 15) << chosen << chosen;
        QTest::newRow("cancelled mid-month")
            << DateChoice{false, QDate(2026, 3, 16)} << QDate(2026, 3, 15) << QDate(2026, 3, 16) << QDate(2026, 3, 16);
        QTest::newRow("cancelled on the last of a month: the first of the same month")
            << DateChoice{false, QDate(2026, 4, 1)} << QDate(2026, 3, 31) << QDate(2026, 4, 1) << QDate(2026, 3, 1);
        QTest::newRow("cancelled on new year's eve")
            << DateChoice{false, QDate()} << QDate(2026, 12, 31) << QDate(2027, 1, 1) << QDate(2026, 12, 1);
    }
    void printDay()
    {
        QFETCH(DateChoice, choice);
        QFETCH(QDate, today);
        const PrintDay day = ResolvePrintDay(choice, today);
        QTEST(day.shown, "shown");
        QTEST(day.looked, "looked");
    }

    void pageOfTheDoctorAndDay()
    {
        TestPractice practice;
        practice.addDoctor(QStringLiteral("Д-р О'Брайън"), QStringLiteral("D1"));
        store::run(store::clinicDb(),
                   QStringLiteral("INSERT INTO Grafic (KodMedic, Data, Ch3, Ch4, Ch25) VALUES ('D1', '2026-03-20', "
                                  "'Иван ', 'Петър ', 'Късен ')"));
        store::run(store::clinicDb(),
                   QStringLiteral("INSERT INTO Grafic (KodMedic, Data, Ch3) VALUES ('D2', '2026-03-20', 'Чужд ')"));
        const auto print = LoadDiaryPrint(store::clinicDb(), u"D1"_qs, u"Д-р О'Брайън"_qs, {QDate(2026, 3, 20), QDate(2026, 3, 20)});
        QVERIFY2(print.ok(), qPrintable(print.error()));
        QCOMPARE(print->pages.size(), 1);
        const QList<Row> &rows = print->pages.first();
        QCOMPARE(rows.size(), RowCount);
        QCOMPARE(rows.at(3).text + rows.at(4).text + rows.at(25).text, QString("Иван Иван Късен ")); // 9.30 shows 9.00
        for (const Row &row : rows)
            QVERIFY(row.text != u"Петър ");
        QCOMPARE(print->dateHeading, QString("20.03.2026 - Петък"));

        const print::Page page = DiaryPage(print.value()).pages().first();
        QCOMPARE(page.textAt("Label3"), QString("20.03.2026 - Петък"));
        QCOMPARE(page.textAt("Label4"), QString("при д-р Д-р О'Брайън"));
        QCOMPARE(page.textAt(print::rowItemName("lblTime4", 0)), QString("9.30 - "));
        QCOMPARE(page.textAt(print::rowItemName("txtSlot4", 0)), QString("Иван "));
        QCOMPARE(page.textAt(print::rowItemName("lblTime11", 0)), QString("13.00 -"));

        const auto empty = LoadDiaryPrint(store::clinicDb(), QStringLiteral("D1"), {}, {QDate(2026, 3, 21), QDate(2026, 3, 21)});
        QVERIFY(empty.ok());
        QVERIFY(empty->pages.isEmpty());
    }

    void doctorByCode()
    {
        TestPractice practice;
        practice.addDoctor(QStringLiteral("Мария Петрова"), QStringLiteral("2201"));
        QCOMPARE(DoctorName(store::clinicDb(), QStringLiteral("2201")).value(), QString("Мария Петрова"));
        const auto unknown = DoctorName(store::clinicDb(), QStringLiteral("9'9"));
        QVERIFY(!unknown.ok());
        QVERIFY(unknown.error().contains(QStringLiteral("9'9")));
    }
};

QTEST_GUILESS_MAIN(TestDiaryPrint)
#include "tst_DiaryPrint.moc"
