#include "TestPractice.h"

#include "base/RunState.h"
#include "store/Sql.h"
#include "treatment/Minutes.h"

#include <QTest>

class tst_Minutes final : public QObject
{
    Q_OBJECT
private slots:
    void activityAndDayTablesDiffer_data();
    void activityAndDayTablesDiffer();
    void dayCount_data();
    void dayCount();
    void countsOnlyTheDayOfTheService();
    void overflowIsAMessageAndKeepsTheValue();
};

void tst_Minutes::activityAndDayTablesDiffer_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<int>("activity");
    QTest::addColumn<int>("dayBudget");
    QTest::newRow("101") << "101" << 15 << 15;
    QTest::newRow("103 uses nothing") << "103" << 0 << 0;
    QTest::newRow("301") << "301" << 26 << 26;
    QTest::newRow("301 Cyrillic А") << "301А" << 26 << 26;
    QTest::newRow("301 Cyrillic Б") << "301Б" << 26 << 26;
    QTest::newRow("301 Latin A") << "301A" << 26 << 0;
    QTest::newRow("301 Latin B") << "301B" << 26 << 0;
    QTest::newRow("302") << "302" << 26 << 0;
    QTest::newRow("303 Cyrillic Б") << "303Б" << 26 << 0;
    QTest::newRow("304 Latin B") << "304B" << 26 << 0;
    QTest::newRow("332") << "332" << 39 << 39;
    QTest::newRow("333") << "333" << 141 << 141;
    QTest::newRow("508") << "508" << 17 << 17;
    QTest::newRow("509") << "509" << 22 << 22;
    QTest::newRow("lower-case Cyrillic б matches nothing") << "301б" << 0 << 0;
    QTest::newRow("lower-case Latin b matches nothing") << "301b" << 0 << 0;
    QTest::newRow("blank around the code matches nothing") << " 301" << 0 << 0;
    QTest::newRow("empty") << "" << 0 << 0;
}

void tst_Minutes::activityAndDayTablesDiffer()
{
    QFETCH(QString, code);
    QFETCH(int, activity);
    QFETCH(int, dayBudget);
    QCOMPARE(int(ActivityMinutes(code)), activity);
    QCOMPARE(DayBudgetMinutes(code), dayBudget);
}

void tst_Minutes::dayCount_data()
{
    QTest::addColumn<QStringList>("codes");
    QTest::addColumn<int>("left");
    QTest::newRow("no lines") << QStringList{} << 360;
    QTest::newRow("333 and two 301Б") << QStringList{"333", "301Б", "301Б"} << 167;
    QTest::newRow("302 and 103 use nothing") << QStringList{"302", "103"} << 360;
    QTest::newRow("Latin 301B uses nothing") << QStringList{"301B"} << 360;
    QTest::newRow("every code of the day table")
        << QStringList{"101", "301", "301А", "301Б", "508", "509", "332", "333"} << 360 - 15 - 78 - 17 - 22 - 39 - 141;
    QTest::newRow("fourteen 301 go below zero") << QStringList(14, QStringLiteral("301")) << -4;
}

void tst_Minutes::dayCount()
{
    QFETCH(QStringList, codes);
    QFETCH(int, left);
    TestPractice practice;
    // Lines of two doctors: the day's budget counts them all together.
    for (int i = 0; i < codes.size(); ++i)
        practice.addService(QStringLiteral("7501010001"), QDate(2026, 3, 15), codes[i],
                            i % 2 ? QStringLiteral("2200000001") : QStringLiteral("2200000002"));
    run().MinutesLeft = 0;
    QVERIFY(RecalcMinutesLeft().ok());
    QCOMPARE(int(run().MinutesLeft), left);
}

void tst_Minutes::countsOnlyTheDayOfTheService()
{
    TestPractice practice(QDate(2026, 3, 15));
    practice.addService(QStringLiteral("7501010001"), QDate(2026, 3, 14), QStringLiteral("333"), QStringLiteral("1"));
    practice.addService(QStringLiteral("7501010001"), QDate(2026, 3, 16), QStringLiteral("333"), QStringLiteral("1"));
    practice.addService(QStringLiteral("7501010001"), QDate(2026, 3, 15), QStringLiteral("101"), QStringLiteral("1"));
    QVERIFY(RecalcMinutesLeft().ok());
    QCOMPARE(int(run().MinutesLeft), 345);
    const auto yesterday = MinutesLeftOn(store::clinicDb(), QDate(2026, 3, 14));
    QVERIFY(yesterday.ok());
    QCOMPARE(int(yesterday.value()), 219);
}

void tst_Minutes::overflowIsAMessageAndKeepsTheValue()
{
    TestPractice practice;
    // 360 - 234 * 141 = -32634 still fits; one more line leaves the 16-bit range.
    store::Transaction transaction(store::clinicDb());
    for (int i = 0; i < 234; ++i)
        practice.addService(QStringLiteral("7501010001"), QDate(2026, 3, 15), QStringLiteral("333"), QStringLiteral("1"));
    transaction.commit();
    QVERIFY(RecalcMinutesLeft().ok());
    QCOMPARE(int(run().MinutesLeft), 360 - 234 * 141);

    practice.addService(QStringLiteral("7501010001"), QDate(2026, 3, 15), QStringLiteral("333"), QStringLiteral("1"));
    run().MinutesLeft = 77;
    const Outcome recalculated = RecalcMinutesLeft();
    QVERIFY(!recalculated.ok());
    QVERIFY(recalculated.error().contains(QStringLiteral("15.03.2026"))); // names the day to look at
    QCOMPARE(int(run().MinutesLeft), 77);
}

QTEST_GUILESS_MAIN(tst_Minutes)
#include "tst_Minutes.moc"
