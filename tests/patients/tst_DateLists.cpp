// Lists of patients by a date period: the checks of a row, the three lists, and the search form
// that fills one row at a time.
#include "TestPractice.h"
#include "Typing.h"

#include "patients/DateLists.h"
#include "patients/DateListsPage.h"
#include "patients/ui/SeekDati.h"
#include "store/Sql.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

using namespace datelists;

namespace {

void addPatient(const QString &egn, const QString &names, const QString &bornIso, const QString &registeredIso)
{
    store::run(store::clinicDb(), QStringLiteral("INSERT INTO Pacients (EGN, Names, DataB, DataR) VALUES (?,?,?,?)"),
               {egn, names, bornIso, registeredIso});
}

QStringList egns(const DateList &list)
{
    QStringList numbers;
    for (const ListRow &row : list.rows)
        numbers << row.EGN;
    return numbers;
}

QLineEdit *box(SeekDati *form, const QString &name) { return form->findChild<QLineEdit *>(name); }

QList<ListKind> kinds(const QSignalSpy &spy)
{
    QList<ListKind> asked;
    for (const QList<QVariant> &call : spy)
        asked << call.first().value<ListRequest>().kind;
    return asked;
}

} // namespace

class TestDateLists final : public QObject
{
    Q_OBJECT
private slots:
    // (A short date, month 13 and a row with one box empty are tried through the form below.)
    void rowChecks_data()
    {
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("fromQuery");
        QTest::newRow("good") << "01.02.2005" << "28.02.2005" << "" << "02/01/2005";
        QTest::newRow("slashes pass") << "01/02/2005" << "28/02/2005" << "" << "02/01/2005";
        QTest::newRow("no such day") << "31.02.2005" << "01.03.2005" << DateMessage() << "";
        QTest::newRow("trailing blank is too long") << "01.02.2005 " << "01.03.2005" << DateMessage() << "";
    }
    void rowChecks()
    {
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(QString, fromQuery);
        const RowCheck check = CheckDateRow(ListKind::Born, from, to);
        QTEST(check.message, "message");
        QCOMPARE(check.request.has_value(), !fromQuery.isEmpty());
        if (check.request)
            QCOMPARE(check.request->ListFromQuery, fromQuery);
    }

    void lists_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QStringList>("expected");
        QTest::addColumn<QString>("wording");
        QTest::addColumn<QString>("heading");
        QTest::addColumn<bool>("forPatients");
        QTest::newRow("born") << 1 << QStringList({"B", "A"}) << "родени от" << "Дата на раждане" << true;
        QTest::newRow("registered") << 2 << QStringList({"A", "C"}) << "регистрирани от" << "Дата на регист." << true;
        QTest::newRow("visited is by registration") << 3 << QStringList({"A", "C"}) << "посетили кабинета от"
                                                    << "Дата на посещ." << false;
    }
    void lists()
    {
        QFETCH(int, kind);
        TestPractice practice;
        addPatient(QStringLiteral("A"), QStringLiteral("О'Нийл"), QStringLiteral("2005-02-20"), QStringLiteral("2005-02-01"));
        addPatient(QStringLiteral("B"), QStringLiteral("Б"), QStringLiteral("2005-02-01"), QStringLiteral("2010-01-01"));
        addPatient(QStringLiteral("C"), QStringLiteral("В"), QStringLiteral("1990-01-01"), QStringLiteral("2005-02-28"));
        addPatient(QStringLiteral("D"), QStringLiteral("Г"), QStringLiteral("2005-03-01"), QStringLiteral("2005-03-01"));
        store::run(store::clinicDb(),
                   QStringLiteral("INSERT INTO Help (EGN, Data, KodHelp) VALUES ('D', '2005-02-10', '101')"));
        const RowCheck check = CheckDateRow(ListKind(kind), QStringLiteral("01.02.2005"), QStringLiteral("28.02.2005"));
        QVERIFY(check.request);
        const auto list = LoadDateList(store::clinicDb(), *check.request);
        QVERIFY2(list.ok(), qPrintable(list.error()));
        QTEST(egns(list.value()), "expected");
        QTEST(list->kindWording, "wording");
        QTEST(list->dateHeading, "heading");
        QTEST(list->forPatients, "forPatients");
        const print::Page page = DateListPage(list.value()).pages().first();
        QTEST(page.has("Label9"), "forPatients");
        QCOMPARE(page.textAt("Label6"), list->dateHeading);
        QCOMPARE(page.textAt(print::rowItemName("Text1", 0)), list->rows.first().EGN);
        QCOMPARE(list->fromText, QString("01.02.2005"));
        QCOMPARE(list->toText, QString("28.02.2005"));
    }

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
        form->close();
    }

    void seekChecksEachRow_data()
    {
        QTest::addColumn<QStringList>("rows"); // from, to of rows 1..3
        QTest::addColumn<QStringList>("messages");
        QTest::addColumn<QList<ListKind>>("lists");
        QTest::addColumn<QString>("button");
        QTest::newRow("born") << QStringList({"01.02.2005", "28.02.2005", "", "", "", ""}) << QStringList()
                              << QList<ListKind>({ListKind::Born}) << "SeekButton";
        QTest::newRow("one box only: nothing at all") << QStringList({"01.02.2005", "", "", "", "", ""})
                                                      << QStringList() << QList<ListKind>() << "SeekButton";
        QTest::newRow("each row reports on its own")
            << QStringList({"1.2.2005", "28.02.2005", "01.13.2005", "01.01.2006", "01/02/2005", "28/02/2005"})
            << QStringList({DateMessage(), MonthMessage()}) << QList<ListKind>({ListKind::Visited}) << "SeekButton";
        QTest::newRow("cancel says so and closes") << QStringList({"01.02.2005", "28.02.2005", "", "", "", ""})
                                                   << QStringList(NoLimitsMessage()) << QList<ListKind>() << "CancelButton";
    }
    void seekChecksEachRow()
    {
        QFETCH(QStringList, rows);
        QFETCH(QString, button);
        TestPractice practice;
        QPointer<SeekDati> form = SeekDati::open();
        for (int i = 0; i < 6; ++i)
            box(form, QStringLiteral("Text%1_%2").arg(i / 2 + 1).arg(i % 2))->setText(rows.at(i));
        QSignalSpy asked(form.data(), &SeekDati::listRequested);
        QTest::mouseClick(form->findChild<QPushButton *>(button), Qt::LeftButton);
        QTEST(practice.dialogs().messages, "messages");
        QTEST(kinds(asked), "lists");
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        // A search that listed something ends the form, as a cancel does.
        QCOMPARE(form.isNull(), !asked.isEmpty() || button == u"CancelButton");
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
};

QTEST_MAIN(TestDateLists)
#include "tst_DateLists.moc"
