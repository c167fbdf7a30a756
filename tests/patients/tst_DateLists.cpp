// Lists of patients by a date period: the checks of a row and the three lists.
#include "TestPractice.h"

#include "patients/DateLists.h"
#include "patients/DateListsPage.h"
#include "store/Sql.h"

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

} // namespace

class TestDateLists final : public QObject
{
    Q_OBJECT
private slots:
    void rowChecks_data()
    {
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("fromQuery");
        QTest::newRow("good") << "01.02.2005" << "28.02.2005" << "" << "02/01/2005";
        QTest::newRow("slashes pass") << "01/02/2005" << "28/02/2005" << "" << "02/01/2005";
        QTest::newRow("short date") << "1.2.2005" << "28.02.2005" << DateMessage() << "";
        QTest::newRow("month 13") << "01.01.2005" << "01.13.2005" << MonthMessage() << "";
        QTest::newRow("one box empty: skipped") << "01.02.2005" << "" << "" << "";
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
};

QTEST_GUILESS_MAIN(TestDateLists)
#include "tst_DateLists.moc"
