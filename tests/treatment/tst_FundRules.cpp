// The fund's two minute tables, the day's count of minutes, and the fund's price by age.
#include "TestPractice.h"

#include "base/RunState.h"
#include "store/Sql.h"
#include "treatment/FundPrice.h"
#include "treatment/Minutes.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestFundRules final : public QObject
{
    Q_OBJECT
private slots:
    void activityAndDayTablesDiffer_data()
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
    void activityAndDayTablesDiffer()
    {
        QFETCH(QString, code);
        QTEST(int(ActivityMinutes(code)), "activity");
        QTEST(DayBudgetMinutes(code), "dayBudget");
    }

    void dayCount_data()
    {
        QTest::addColumn<QStringList>("codes"); // "333@14": a line of the 14th, not of today
        QTest::addColumn<int>("left");
        QTest::newRow("no lines") << QStringList{} << 360;
        QTest::newRow("333 and two 301Б") << QStringList{"333", "301Б", "301Б"} << 167;
        QTest::newRow("302 and 103 use nothing") << QStringList{"302", "103"} << 360;
        QTest::newRow("Latin 301B uses nothing") << QStringList{"301B"} << 360;
        QTest::newRow("every code of the day table")
            << QStringList{"101", "301", "301А", "301Б", "508", "509", "332", "333"} << 360 - 15 - 78 - 17 - 22 - 39 - 141;
        QTest::newRow("fourteen 301 go below zero") << QStringList(14, u"301"_s) << -4;
        QTest::newRow("only the day of today counts") << QStringList{"333@14", "333@16", "101"} << 345;
    }
    void dayCount()
    {
        QFETCH(QStringList, codes);
        TestPractice practice(QDate(2026, 3, 15));
        // Lines of two doctors: the day's budget counts them all together.
        for (int i = 0; i < codes.size(); ++i)
            practice.addService(u"7501010001"_s, QDate(2026, 3, codes[i].section(u'@', 1).toInt() ?: 15),
                                codes[i].section(u'@', 0, 0), i % 2 ? u"2200000001"_s : u"2200000002"_s);
        run().MinutesLeft = 0;
        QVERIFY(RecalcMinutesLeft(store::clinicDb()).ok());
        QTEST(int(run().MinutesLeft), "left");
    }

    void overflowIsAMessageAndKeepsTheValue()
    {
        TestPractice practice;
        // 360 - 234 * 141 = -32634 still fits; one more line leaves the 16-bit range.
        practice.addServices(234, u"7501010001"_s, QDate(2026, 3, 15), u"333"_s, u"1"_s);
        QVERIFY(RecalcMinutesLeft(store::clinicDb()).ok());
        QCOMPARE(int(run().MinutesLeft), 360 - 234 * 141);
        practice.addService(u"7501010001"_s, QDate(2026, 3, 15), u"333"_s, u"1"_s);
        run().MinutesLeft = 77;
        const Outcome recalculated = RecalcMinutesLeft(store::clinicDb());
        QVERIFY(!recalculated.ok());
        QVERIFY(recalculated.error().contains(u"15.03.2026"_s)); // names the day to look at
        QCOMPARE(int(run().MinutesLeft), 77);
    }

    void priceByAge_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QDate>("today");
        QTest::addColumn<int>("minutes");
        QTest::addColumn<double>("price");
        // The patient was born on 15.03.2008 and turns eighteen on 15.03.2026.
        QTest::newRow("301 on the birthday: up to 18") << "301" << QDate(2026, 3, 15) << 26 << 25.13;
        QTest::newRow("301 the day after: over 18") << "301" << QDate(2026, 3, 16) << 26 << 21.13;
        QTest::newRow("333 for a child") << "333" << QDate(2020, 1, 1) << 141 << 68.93;
        QTest::newRow("333 for an adult: the fund pays nothing") << "333" << QDate(2030, 1, 1) << 141 << 0.0;
        QTest::newRow("key without a row") << "999" << QDate(2026, 3, 16) << 0 << 0.0;
        QTest::newRow("empty key") << "" << QDate(2026, 3, 16) << 0 << 0.0;
    }
    void priceByAge()
    {
        QFETCH(QString, key);
        QFETCH(QDate, today);
        TestPractice practice;
        // A second row of a key is never read: the first one counts.
        store::run(store::clinicDb(), u"INSERT INTO CenyZK (Kod, Times, CenaNad, CenaDo) VALUES ('301', 1, 1, 1)"_s);
        const QString egn = validEgn(QDate(2008, 3, 15));
        const auto priced = fundPriceFor(store::clinicDb(), key, egn, today);
        QVERIFY2(priced.ok(), qPrintable(priced.error()));
        QTEST(int(priced->minutes), "minutes");
        QTEST(priced->storedPrice(), "price");
        // The whole table, as the demo practice loads it once, prices alike.
        QTEST(FundPriceTable::load(store::clinicDb()).priceFor(key, egn, today)->storedPrice(), "price");
    }

    // A number that names no birth date: only a price that is the same at every age is given.
    void numberWithoutBirthDate_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<bool>("priced");
        QTest::newRow("101 costs the same at every age") << "101" << true;
        QTest::newRow("no fund code") << "" << true;
        QTest::newRow("301 depends on age") << "301" << false;
    }
    void numberWithoutBirthDate()
    {
        QFETCH(QString, key);
        QFETCH(bool, priced);
        TestPractice practice;
        const auto price = fundPriceFor(store::clinicDb(), key, u"7501000000"_s, QDate(2026, 3, 15));
        QCOMPARE(price.ok(), priced);
        if (!priced) // the message names the number and says how to put it right
            QVERIFY(price.error().contains(u"7501000000"_s) && price.error().contains(u"Корекция ЕГН"_s));
    }
};

QTEST_GUILESS_MAIN(TestFundRules)
#include "tst_FundRules.moc"
