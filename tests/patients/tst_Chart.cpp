#include "patients/Chart.h"

#include <QTest>

// Fields: Z1..Z20 milk, Z21..Z52 permanent; box n joins Zn with its permanent twin
// (Check1: Z1/Z24, Check2: Z2/Z25, Check5: Z5/Z28). Z21 is a molar (tooth 18) without a box.
class TestChart final : public QObject
{
    Q_OBJECT
private slots:
    void leavingTranslatesTheTypedCode_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("stored");
        QTest::newRow("1 is caries") << "1" << "C";
        QTest::newRow("0 is periodontosis") << "0" << "Pa";
        QTest::newRow("18 is OP, not caries") << "18" << "OP";
        QTest::newRow("12") << "12" << "OC";
        QTest::newRow("44") << "44" << "Rr";
        QTest::newRow("03") << "03" << "III";
        QTest::newRow("no trimming: blank and 1 stays") << " 1" << " 1";
        QTest::newRow("unknown text is upper-cased and kept") << "кариес?" << "КАРИЕС?";
        QTest::newRow("stored Pa passed through becomes PA") << "Pa" << "PA";
        QTest::newRow("two codes are no code") << "1 8" << "1 8";
    }
    void leavingTranslatesTheTypedCode()
    {
        QFETCH(QString, typed);
        Chart chart;
        chart.setText(30, typed);
        chart.inputLeft(30);
        QTEST(chart.text(30), "stored");
        QVERIFY(!chart.boxOn(7));
    }

    void digitsAnywhereAreTranslatedOnAnyLeaving()
    {
        Chart chart;
        chart.setText(3, QStringLiteral("8")); // a milk field read from the store
        chart.setText(40, QStringLiteral("9"));
        chart.inputLeft(0); // leaving an input of the personal data
        QCOMPARE(chart.text(3), QStringLiteral("P"));
        QCOMPARE(chart.text(40), QStringLiteral("G"));
    }

    // A star anywhere (typed as * or 00, or stored in a milk field) turns the boxed place just
    // left to milk: its entry moves to the milk field, which is shown instead.
    void starTurnsTheBoxedPlaceLeftToMilk_data()
    {
        QTest::addColumn<int>("starField");
        QTest::addColumn<QString>("star");
        QTest::addColumn<int>("left");
        QTest::addColumn<QString>("entry"); // what the milk field holds afterwards
        QTest::newRow("star typed on the place") << 24 << "*" << 24 << "*";
        QTest::newRow("double zero typed on the place") << 24 << "00" << 24 << "*";
        QTest::newRow("star on a molar, another place left") << 21 << "*" << 28 << "C";
        QTest::newRow("star stored in a milk field") << 3 << "*" << 29 << "C";
    }
    void starTurnsTheBoxedPlaceLeftToMilk()
    {
        QFETCH(int, starField);
        QFETCH(QString, star);
        QFETCH(int, left);
        Chart chart;
        if (left != starField)
            chart.setText(left, QStringLiteral("C"));
        chart.setText(starField, star);
        chart.inputLeft(left);
        const int box = left - 23;
        QVERIFY(chart.boxOn(box));
        QTEST(chart.text(box), "entry");
        QCOMPARE(chart.text(left), QString());
        QVERIFY(chart.isShown(box) && !chart.isShown(left));
        chart.inputLeft(25); // every later leaving of a boxed place flips that one too
        QVERIFY(chart.boxOn(2) && chart.isShown(2));
    }

    void milkMarkOnMolarStaysInPermanentField()
    {
        Chart chart;
        chart.setText(21, QStringLiteral("00"));
        chart.inputLeft(21);
        QCOMPARE(chart.text(21), QStringLiteral("*"));
        QVERIFY(chart.isShown(21));
        for (int box = 1; box <= 20; ++box)
            QVERIFY(!chart.boxOn(box));
    }

    // A box moves the entry when it loses focus, not when clicked: clicked twice, nothing moves.
    void boxMovesTheEntryWhenItLosesFocus()
    {
        Chart chart;
        chart.setText(28, QStringLiteral("C"));
        chart.boxFocusIn(5);
        chart.setBoxOn(5, true);
        chart.setBoxOn(5, false);
        chart.boxFocusOut(5);
        QCOMPARE(chart.text(28), QStringLiteral("C"));
        QVERIFY(chart.isShown(28));
        chart.boxFocusIn(5);
        chart.setBoxOn(5, true);
        QCOMPARE(chart.text(28), QStringLiteral("C"));
        chart.boxFocusOut(5);
        QCOMPARE(chart.text(5), QStringLiteral("C"));
        QCOMPARE(chart.text(28), QString());
        QVERIFY(chart.isShown(5) && !chart.isShown(28));
    }

    // A stored milk tooth comes up boxed over the permanent entry, which is kept unseen; switched
    // off, the milk entry moves back over the permanent one. Empty milk fields leave boxes be.
    void storedMilkToothComesUpAndHidesThePermanentEntry()
    {
        Chart chart;
        chart.setText(1, QStringLiteral("P"));
        chart.setText(24, QStringLiteral("C"));
        chart.setText(2, QStringLiteral("  "));
        chart.setBoxOn(4, true);
        chart.comeToFront();
        QVERIFY(chart.boxOn(1) && chart.boxOn(4) && !chart.boxOn(2));
        QVERIFY(chart.isShown(1) && !chart.isShown(24) && chart.isShown(25));
        QCOMPARE(chart.text(24), QStringLiteral("C"));
        chart.boxFocusIn(1);
        chart.setBoxOn(1, false);
        chart.boxFocusOut(1);
        QCOMPARE(chart.text(24), QStringLiteral("P"));
        QCOMPARE(chart.text(1), QString());
        QVERIFY(chart.isShown(24) && !chart.isShown(1));
    }

    void resetShowsEveryPermanentInputAndKeepsTexts()
    {
        Chart chart;
        chart.setText(7, QStringLiteral("K"));
        chart.comeToFront();
        QVERIFY(chart.boxOn(7));
        chart.ResetChartBoxes();
        for (int box = 1; box <= 20; ++box)
            QVERIFY(!chart.boxOn(box));
        for (int field = 1; field <= 52; ++field)
            QCOMPARE(chart.isShown(field), field > 20);
        QCOMPARE(chart.text(7), QStringLiteral("K"));
    }
};

QTEST_GUILESS_MAIN(TestChart)
#include "tst_Chart.moc"
