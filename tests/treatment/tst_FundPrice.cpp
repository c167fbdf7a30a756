#include "TestPractice.h"

#include "store/Sql.h"
#include "treatment/FundPrice.h"
#include "treatment/ShortCodes.h"

#include <QTest>

class TestFundPrice final : public QObject
{
    Q_OBJECT
private slots:
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
        QFETCH(int, minutes);
        QFETCH(double, price);
        TestPractice practice;
        const auto priced = fundPriceFor(store::clinicDb(), key, validEgn(QDate(2008, 3, 15)), today);
        QVERIFY2(priced.ok(), qPrintable(priced.error()));
        QCOMPARE(int(priced->minutes), minutes);
        QCOMPARE(priced->storedPrice(), price);
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
        const auto price = fundPriceFor(store::clinicDb(), key, QStringLiteral("7501000000"), QDate(2026, 3, 15));
        QCOMPARE(price.ok(), priced);
        if (!priced) // the message names the number and says how to put it right
            QVERIFY(price.error().contains(QStringLiteral("7501000000")) && price.error().contains(QStringLiteral("Корекция ЕГН")));
    }

    void theFirstRowOfAKeyCounts()
    {
        TestPractice practice;
        store::run(store::clinicDb(), QStringLiteral("INSERT INTO CenyZK (Kod, Times, CenaNad, CenaDo) VALUES ('301', 1, 1, 1)"));
        const auto table = FundPriceTable::load(store::clinicDb());
        const auto priced = table.priceFor(QStringLiteral("301"), validEgn(QDate(1970, 1, 1)), QDate(2026, 3, 15));
        QCOMPARE(priced->storedPrice(), 21.13);
    }

    void everyShortCodeHasAFundRow()
    {
        TestPractice practice;
        for (const ShortCode &code : shortCodeTable())
            QVERIFY2(practice.count(QStringLiteral("SELECT COUNT(*) FROM CenyZK WHERE Kod = '%1'").arg(code.fundKey)) == 1,
                     qPrintable(code.typed));
    }
};

QTEST_GUILESS_MAIN(TestFundPrice)
#include "tst_FundPrice.moc"
