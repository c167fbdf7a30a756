#include "base/Spread.h"

#include <QTest>

class TestSpread final : public QObject
{
    Q_OBJECT
private slots:
    void spread_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("wide");
        QTest::addColumn<QString>("narrow");
        QTest::newRow("ten digits") << "7501012345" << "7  5  0  1  0  1  2  3  4  5" << "7 5 0 1 0 1 2 3 4 5";
        QTest::newRow("empty gives only gaps") << "" << QString(18, u' ') << QString(9, u' ');
        QTest::newRow("short value ends in gaps") << "123" << "1  2  3" + QString(14, u' ') << "1 2 3" + QString(7, u' ');
        QTest::newRow("past ten is dropped") << "123456789012" << "1  2  3  4  5  6  7  8  9  0"
                                             << "1 2 3 4 5 6 7 8 9 0";
    }
    void spread()
    {
        QFETCH(QString, value);
        QFETCH(QString, wide);
        QFETCH(QString, narrow);
        QCOMPARE(SpreadWide(value), wide);
        QCOMPARE(SpreadNarrow(value), narrow);
    }
};

QTEST_GUILESS_MAIN(TestSpread)
#include "tst_Spread.moc"
