// The date list search form: one row filled at a time, the three checks, the lists it asks for.
#include "TestPractice.h"
#include "Typing.h"

#include "patients/ui/SeekDati.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

using datelists::ListKind;
using datelists::ListRequest;

namespace {

QLineEdit *box(SeekDati *form, const QString &name) { return form->findChild<QLineEdit *>(name); }

QColor colourOf(QWidget *input) { return input->palette().color(QPalette::Base); }

QList<ListKind> kinds(const QSignalSpy &spy)
{
    QList<ListKind> asked;
    for (const QList<QVariant> &call : spy)
        asked << call.first().value<ListRequest>().kind;
    return asked;
}

} // namespace

class TestDateListsScreen final : public QObject
{
    Q_OBJECT
private slots:
    void enteringARowEmptiesTheOthers()
    {
        TestPractice practice;
        QPointer<SeekDati> form = SeekDati::open();
        QVERIFY(QTest::qWaitForWindowActive(form));
        form->findChild<QComboBox *>("Combo5")->setFocus();
        box(form, "Text2_0")->setText("01.01.2005");
        box(form, "Text3_1")->setText("01.01.2006");
        box(form, "Text1_0")->setFocus();
        QVERIFY(box(form, "Text2_0")->text().isEmpty());
        QVERIFY(box(form, "Text3_1")->text().isEmpty());
        QCOMPARE(colourOf(box(form, "Text1_0")), QColor(Qt::white));
        QCOMPARE(colourOf(box(form, "Text1_1")), QColor(Qt::white));
        form->findChild<QComboBox *>("Combo2")->setFocus();
        QCOMPARE(colourOf(box(form, "Text1_0")), QColor(192, 192, 192));
        QCOMPARE(colourOf(form->findChild<QComboBox *>("Combo2")), QColor(Qt::white));
        form->close();
    }

    void seekChecksEachRow_data()
    {
        QTest::addColumn<QStringList>("rows"); // from, to of rows 1..3
        QTest::addColumn<QStringList>("messages");
        QTest::addColumn<QList<ListKind>>("lists");
        const QString dateMessage = datelists::DateMessage();
        const QString monthMessage = datelists::MonthMessage();
        QTest::newRow("born") << QStringList({"01.02.2005", "28.02.2005", "", "", "", ""}) << QStringList()
                              << QList<ListKind>({ListKind::Born});
        QTest::newRow("one box only: nothing at all") << QStringList({"01.02.2005", "", "", "", "", ""})
                                                      << QStringList() << QList<ListKind>();
        QTest::newRow("each row reports on its own")
            << QStringList({"1.2.2005", "28.02.2005", "01.13.2005", "01.01.2006", "01/02/2005", "28/02/2005"})
            << QStringList({dateMessage, monthMessage}) << QList<ListKind>({ListKind::Visited});
    }
    void seekChecksEachRow()
    {
        QFETCH(QStringList, rows);
        TestPractice practice;
        QPointer<SeekDati> form = SeekDati::open();
        for (int i = 0; i < 6; ++i)
            box(form, QStringLiteral("Text%1_%2").arg(i / 2 + 1).arg(i % 2))->setText(rows.at(i));
        QSignalSpy asked(form.data(), &SeekDati::listRequested);
        QTest::mouseClick(form->findChild<QPushButton *>("SeekButton"), Qt::LeftButton);
        QTEST(practice.dialogs().messages, "messages");
        QTEST(kinds(asked), "lists");
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(form.isNull(), !asked.isEmpty()); // a search that listed something ends the form
        delete form;
    }

    void listBoxesAreKeptButReadByNoSearch()
    {
        TestPractice practice;
        QPointer<SeekDati> form = SeekDati::open();
        auto *settlement = form->findChild<QComboBox *>("Combo2");
        typeText(settlement->lineEdit(), " sofia ");
        QCOMPARE(form->SettlementText(), QString("SOFIA"));
        QVERIFY(form->findChild<QPushButton *>("SeekButton")->isDefault());
        QTest::mouseClick(form->findChild<QComboBox *>("Combo3"), Qt::LeftButton);
        QCOMPARE(form->AddressText(), QString("москва"));
        box(form, "Text2_0")->setText("01.02.2005");
        box(form, "Text2_1")->setText("28.02.2005");
        QSignalSpy asked(form.data(), &SeekDati::listRequested);
        form->seek();
        QCOMPARE(asked.size(), 1);
        const auto request = asked.first().first().value<ListRequest>();
        QCOMPARE(request.kind, ListKind::Registered);
        QCOMPARE(request.ListToQuery, QString("02/28/2005"));
        QCOMPARE(request.ListToDate, QDate(2005, 2, 28));
        delete form;
    }

    void cancelSaysSoAndCloses()
    {
        TestPractice practice;
        QPointer<SeekDati> form = SeekDati::open();
        box(form, "Text1_0")->setText("01.02.2005");
        QTest::mouseClick(form->findChild<QPushButton *>("CancelButton"), Qt::LeftButton);
        QCOMPARE(practice.dialogs().messages, QStringList(datelists::NoLimitsMessage()));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(form.isNull());
    }
};

QTEST_MAIN(TestDateListsScreen)
#include "tst_DateListsScreen.moc"
