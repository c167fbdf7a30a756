#include "TestPractice.h"

#include "store/ReferenceData.h"
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

QString writeFile(const QString &folder, const QString &content)
{
    const QString path = folder + QStringLiteral("/codes.csv");
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("cannot write %s", qPrintable(path));
    file.write(content.toUtf8());
    return path;
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

    void importPostCodes_data()
    {
        QTest::addColumn<QString>("content");
        QTest::addColumn<int>("loaded"); // -1: refused
        QTest::addColumn<QString>("error");
        QTest::newRow("header in another order, extra column")
            << "ZdRn;Obl;Extra;PKod;Tawn;Obsh;ZK\n01;Варна;x;9000;гр. Варна;Варна;03\n02;Варна;y;9010;гр. Варна;Варна;03\n"
            << 2 << "";
        QTest::newRow("broken line is named") << "PKod,Tawn,Obsh,Obl,ZK,ZdRn\n9000,Варна,Варна,Варна,03,06\n9010,Варна\n"
                                              << -1 << "ред 3";
        QTest::newRow("missing column") << "PKod,Tawn,Obsh,Obl,ZK\n9000,a,b,c,03\n" << -1 << "ZdRn";
        QTest::newRow("empty post code") << "PKod,Tawn,Obsh,Obl,ZK,ZdRn\n,a,b,c,03,01\n" << -1 << "ред 2";
    }
    void importPostCodes()
    {
        QFETCH(QString, content);
        QFETCH(int, loaded);
        QFETCH(QString, error);
        TestPractice practice;
        const int before = store::scalar(store::dataDb(), QStringLiteral("SELECT COUNT(*) FROM PostCode")).toInt();
        const auto result = store::importPostCodes(store::dataDb(), writeFile(practice.folder(), content));
        const int after = store::scalar(store::dataDb(), QStringLiteral("SELECT COUNT(*) FROM PostCode")).toInt();
        if (loaded < 0) {
            QVERIFY(!result.ok());
            QVERIFY2(result.error().contains(error), qPrintable(result.error()));
            QCOMPARE(after, before); // nothing changed
            return;
        }
        QVERIFY2(result.ok(), qPrintable(result.error()));
        QCOMPARE(result.value(), loaded);
        QCOMPARE(after, loaded);
        QCOMPARE(store::scalar(store::dataDb(), QStringLiteral("SELECT ZK FROM PostCode WHERE PKod = '9010'")).toString(),
                 QStringLiteral("03"));
    }
};

QTEST_GUILESS_MAIN(TestScratchAndReference)
#include "tst_ScratchAndReference.moc"
