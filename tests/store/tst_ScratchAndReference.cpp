#include "TestPractice.h"

#include "store/Scratch.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QFile>
#include <QSqlQuery>
#include <QTest>

namespace {

QStringList tablesOf(const QSqlDatabase &db)
{
    QStringList names;
    QSqlQuery query = store::run(db, QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name"));
    while (query.next())
        names << query.value(0).toString();
    return names;
}

} // namespace

class TestScratchAndReference final : public QObject
{
    Q_OBJECT
private slots:
    void layouts_data()
    {
        QTest::addColumn<QString>("table");
        QTest::addColumn<QStringList>("columns");
        QTest::newRow("TempMater") << "TempMater" << QStringList{"Kod", "Name", "Kol", "Ed"};
        QTest::newRow("TempWork") << "TempWork" << QStringList{"Data", "Name1", "EGN", "Godini", "KodHelp", "Time"};
        QTest::newRow("TempZOKC") << "TempZOKC"
                                  << QStringList{"Godini", "Kod_101", "Kod_103", "Kod_301", "Kod_332", "Kod_333",
                                                 "Kod_508", "Kod_509"};
        QTest::newRow("TempSpec") << "TempSpec"
                                  << QStringList{"F10112", "F10312", "F30112", "F50912", "F10111", "F10311",
                                                 "F30111", "F33211", "F33311", "F50811", "F50911"};
    }
    void layouts()
    {
        QFETCH(QString, table);
        QFETCH(QStringList, columns);
        TestPractice practice;
        QVERIFY(store::CreateScratchTable(table).ok());
        QSqlQuery info = store::run(store::scratchDb(), QStringLiteral("PRAGMA table_info(%1)").arg(table));
        QStringList names;
        while (info.next())
            names << info.value(1).toString();
        QCOMPARE(names, columns);
    }

    void secondReportReplacesTheFirst()
    {
        TestPractice practice;
        QVERIFY(store::CreateScratchTable(QStringLiteral("TempWork")).ok());
        store::run(store::scratchDb(), QStringLiteral("INSERT INTO TempWork (EGN) VALUES ('1')"));
        QVERIFY(store::CreateScratchTable(QStringLiteral("TempSpec")).ok());
        QCOMPARE(tablesOf(store::scratchDb()), QStringList{QStringLiteral("TempSpec")});
    }

    void emptyingLeavesAnEmptyTable()
    {
        TestPractice practice;
        QVERIFY(store::CreateScratchTable(QStringLiteral("TempMater")).ok());
        store::run(store::scratchDb(), QStringLiteral("INSERT INTO TempMater (Kod, Kol) VALUES ('001', 1.5)"));
        QVERIFY(store::EmptyScratchTable(QStringLiteral("TempMater")).ok());
        QCOMPARE(store::scalar(store::scratchDb(), QStringLiteral("SELECT COUNT(*) FROM TempMater")).toInt(), 0);
        QVERIFY(QFile::exists(store::paths().scratchDb));
    }

    void unknownLayoutIsRefusedAndDeletingIsQuiet()
    {
        TestPractice practice;
        QVERIFY(!store::CreateScratchTable(QStringLiteral("TempNothing")).ok());
        QVERIFY(!QFile::exists(store::paths().scratchDb));
        store::DeleteScratchFile(); // nothing there: nothing to do
        QVERIFY(store::CreateScratchTable(QStringLiteral("TempWork")).ok());
        store::DeleteScratchFile();
        QVERIFY(!QFile::exists(store::paths().scratchDb));
    }
};

QTEST_GUILESS_MAIN(TestScratchAndReference)
#include "tst_ScratchAndReference.moc"
