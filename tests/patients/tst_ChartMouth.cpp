// The drawn mouth beside the chart inputs of the card: a click on a tooth puts the cursor into
// the input its place shows, and what is typed is drawn at once.
#include "patients/ui/ChartWidget.h"
#include "patients/ui/MouthView.h"

#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QTest>

namespace {

class ChartDriver final
{
  public:
    ChartDriver()
    {
        m_chart.show();
        m_chart.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&m_chart));
    }

    QLineEdit *input(int field) { return m_chart.findChild<QLineEdit *>(QStringLiteral("Z%1").arg(field)); }
    MouthView *mouth() { return m_chart.findChild<MouthView *>(QStringLiteral("Mouth")); }
    const mouth::Tooth &tooth(int field) { return mouth()->picture().teeth.at(field - 1); }
    bool drawn(const QString &tag) { return mouth()->picture().drawing.has(tag); }
    void clickTooth(int field) { QTest::mouseClick(mouth(), Qt::LeftButton, {}, mouth()->centreOf(field)); }
    // Leaves the chart input for the next one, as Tab does.
    void leave(int field) { input(field)->nextInFocusChain()->setFocus(Qt::TabFocusReason); }

    ChartWidget m_chart;
};

} // namespace

class TestChartMouth final : public QObject
{
    Q_OBJECT
  private slots:
    void clickPutsTheCursorInTheToothsInput_data()
    {
        QTest::addColumn<int>("clicked");
        QTest::addColumn<int>("focused");
        QTest::newRow("molar 36") << 50 << 50;
        QTest::newRow("molar 18") << 21 << 21;
        QTest::newRow("incisor 41, lower row") << 44 << 44;
        QTest::newRow("canine 23") << 31 << 31;
        // Only one input of a place can be reached: with its box off, the milk tooth's click
        // lands in the permanent input.
        QTest::newRow("milk 55 of a permanent place") << 1 << 24;
        QTest::newRow("milk 71 of a permanent place") << 16 << 45;
    }
    void clickPutsTheCursorInTheToothsInput()
    {
        QFETCH(int, clicked);
        QFETCH(int, focused);
        ChartDriver chart;
        QVERIFY(chart.mouth()->isVisible());
        QVERIFY(chart.mouth()->width() >= chart.mouth()->minimumSizeHint().width());
        chart.clickTooth(clicked);
        QVERIFY(chart.input(focused)->hasFocus());
    }

    void typingRedrawsAtOnce()
    {
        ChartDriver chart;
        chart.clickTooth(50);
        QTest::keyClicks(chart.input(50), QStringLiteral("1"));
        QVERIFY(chart.drawn(QStringLiteral("Z50:caries"))); // before the input is left
        QTest::keyClicks(chart.input(50), QStringLiteral("2"));
        QVERIFY(chart.drawn(QStringLiteral("Z50:filling")) && chart.drawn(QStringLiteral("Z50:caries")));
        QTest::keyClick(chart.input(50), Qt::Key_Backspace);
        QTest::keyClick(chart.input(50), Qt::Key_Backspace);
        QVERIFY(!chart.drawn(QStringLiteral("Z50:caries")) && !chart.drawn(QStringLiteral("Z50:filling")));
    }

    // A star typed into a boxed place turns it to milk: the milk tooth is drawn in the mouth,
    // its permanent twin faded, and a click on either now lands in the milk input.
    void starTurnsThePlaceToMilkInThePicture()
    {
        ChartDriver chart;
        QVERIFY(chart.tooth(24).present && !chart.tooth(1).present);
        chart.clickTooth(24);
        QTest::keyClicks(chart.input(24), QStringLiteral("*"));
        chart.leave(24);
        QVERIFY(chart.m_chart.findChild<QCheckBox *>(QStringLiteral("Check1"))->isChecked());
        QVERIFY(chart.tooth(1).present && !chart.tooth(24).present);
        chart.clickTooth(24);
        QVERIFY(chart.input(1)->hasFocus());
    }

    void storedChartIsDrawnWithItsMilkPlaces()
    {
        ChartDriver chart;
        QStringList texts(52, QString());
        texts[1] = QStringLiteral("K");     // Z2, milk 54
        texts[39] = QStringLiteral("МОСТ"); // Z40, tooth 45
        chart.m_chart.setTexts(texts);
        chart.m_chart.comeToFront();
        QVERIFY(chart.drawn(QStringLiteral("Z2:crown")));
        QVERIFY(chart.tooth(2).present && !chart.tooth(25).present);
        QCOMPARE(chart.mouth()->picture().drawing.tagged(QStringLiteral("Z40:text")).first()->text,
                 QStringLiteral("МОСТ"));
    }
};

QTEST_MAIN(TestChartMouth)
#include "tst_ChartMouth.moc"
