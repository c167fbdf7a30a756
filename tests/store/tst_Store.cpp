#include "store/Schema.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QDir>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

class TestStore final : public QObject
{
    Q_OBJECT
private slots:
    void cleanup() { store::closeStore(); }

    void createsEveryTableWithReferenceRows()
    {
        QTemporaryDir dir;
        const auto paths = store::DataPaths::inFolder(dir.path() + QStringLiteral("/new/folder"));
        QVERIFY2(store::openStore(paths).ok(), "a missing folder and files are created");
        for (const store::TableDef &table : store::clinicTables()) {
            QSqlQuery columns = store::run(store::clinicDb(), QStringLiteral("PRAGMA table_info(%1)").arg(table.name));
            QStringList names;
            while (columns.next())
                names << columns.value(1).toString();
            QCOMPARE(names, QStringList{QStringLiteral("ID")} + table.columnNames());
        }
        QCOMPARE(store::scalar(store::clinicDb(), QStringLiteral("PRAGMA user_version")).toInt(), store::SchemaVersion);
        QCOMPARE(store::scalar(store::clinicDb(), QStringLiteral("SELECT COUNT(*) FROM CenyZK")).toInt(), 9);
        QVERIFY(store::scalar(store::clinicDb(), QStringLiteral("SELECT COUNT(*) FROM Ceny")).toInt() > 9);
        QVERIFY(store::scalar(store::dataDb(), QStringLiteral("SELECT COUNT(*) FROM PostCode")).toInt() >= 28);
        QCOMPARE(store::scalar(store::clinicDb(), QStringLiteral("SELECT COUNT(*) FROM Medic")).toInt(), 0);
    }

    void fundPricesAsShipped_data()
    {
        QTest::addColumn<QString>("kod");
        QTest::addColumn<int>("minutes");
        QTest::addColumn<double>("over");
        QTest::addColumn<double>("upTo");
        QTest::newRow("101") << "101" << 15 << 6.44 << 6.44;
        QTest::newRow("103 takes no minutes") << "103" << 0 << 6.44 << 6.44;
        QTest::newRow("301") << "301" << 26 << 21.13 << 25.13;
        QTest::newRow("301А Cyrillic") << QStringLiteral("301А") << 26 << 21.13 << 25.13;
        QTest::newRow("301Б Cyrillic") << QStringLiteral("301Б") << 26 << 21.13 << 25.13;
        QTest::newRow("332 children only") << "332" << 39 << 0.0 << 21.92;
        QTest::newRow("333 children only") << "333" << 141 << 0.0 << 68.93;
        QTest::newRow("508 children only") << "508" << 17 << 0.0 << 11.98;
        QTest::newRow("509") << "509" << 22 << 21.13 << 25.13;
    }
    void fundPricesAsShipped()
    {
        QFETCH(QString, kod);
        QFETCH(int, minutes);
        QFETCH(double, over);
        QFETCH(double, upTo);
        QTemporaryDir dir;
        QVERIFY(store::openStore(store::DataPaths::inFolder(dir.path())).ok());
        QSqlQuery row = store::run(store::clinicDb(), QStringLiteral("SELECT Times, CenaNad, CenaDo FROM CenyZK WHERE Kod = ?"), {kod});
        QVERIFY(row.next());
        QCOMPARE(row.value(0).toInt(), minutes);
        QCOMPARE(row.value(1).toDouble(), over);
        QCOMPARE(row.value(2).toDouble(), upTo);
    }

    void everyStorableCodeHasANormRow()
    {
        QTemporaryDir dir;
        QVERIFY(store::openStore(store::DataPaths::inFolder(dir.path())).ok());
        const int materials = store::scalar(store::dataDb(), QStringLiteral("SELECT COUNT(*) FROM Mater")).toInt();
        QVERIFY(materials > 0);
        // One norm column per material, and the last one is M<materials>.
        QVERIFY(store::run(store::dataDb(), QStringLiteral("SELECT M%1 FROM RazhNorm").arg(materials)).isActive());
        for (const QString code : {"101", "103", "301", "301А", "301Б", "332", "333", "508", "509"})
            QVERIFY2(store::scalar(store::dataDb(), QStringLiteral("SELECT COUNT(*) FROM RazhNorm WHERE KodHelp = ?"), {code}).toInt() == 1,
                     qPrintable(code));
    }

    void reopeningKeepsTheData()
    {
        QTemporaryDir dir;
        const auto paths = store::DataPaths::inFolder(dir.path());
        QVERIFY(store::openStore(paths).ok());
        store::run(store::clinicDb(), QStringLiteral("INSERT INTO Medic (Names) VALUES (?)"), {QStringLiteral("д-р О'Нийл")});
        store::closeStore();
        QVERIFY(store::openStore(paths).ok());
        QCOMPARE(store::scalar(store::clinicDb(), QStringLiteral("SELECT Names FROM medic")).toString(), QStringLiteral("д-р О'Нийл"));
        QCOMPARE(store::scalar(store::clinicDb(), QStringLiteral("SELECT COUNT(*) FROM CenyZK")).toInt(), 9);
    }

    void refusesDamagedFiles_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("expected");
        QTest::newRow("not a database") << QByteArray("this is a letter, not a database\n").repeated(200)
                                        << QStringLiteral("не е база данни");
    }
    void refusesDamagedFiles()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, expected);
        QTemporaryDir dir;
        const auto paths = store::DataPaths::inFolder(dir.path());
        QFile file(paths.clinicDb);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.close();
        const auto opened = store::openStore(paths);
        QVERIFY(!opened.ok());
        QVERIFY2(opened.error().contains(expected) && opened.error().contains(paths.clinicDb), qPrintable(opened.error()));
        QFile again(paths.clinicDb);
        QVERIFY(again.open(QIODevice::ReadOnly));
        QCOMPARE(again.readAll(), content); // left as it was
    }

    void refusesAFileWithTablesMissing()
    {
        QTemporaryDir dir;
        const auto paths = store::DataPaths::inFolder(dir.path());
        {
            QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("other"));
            db.setDatabaseName(paths.clinicDb);
            QVERIFY(db.open());
            store::run(db, QStringLiteral("CREATE TABLE Pacients (EGN TEXT)"));
            store::run(db, QStringLiteral("CREATE TABLE Help (EGN TEXT)"));
            db.close();
        }
        QSqlDatabase::removeDatabase(QStringLiteral("other"));
        const auto opened = store::openStore(paths);
        QVERIFY(!opened.ok());
        QVERIFY2(opened.error().contains(QStringLiteral("Medic")) && opened.error().contains(paths.clinicDb),
                 qPrintable(opened.error()));
        QVERIFY(!opened.error().contains(QStringLiteral("Pacients")));
    }

    void refusesAFolderThatCannotBeMade()
    {
        QTemporaryDir dir;
        QFile blocker(dir.filePath(QStringLiteral("plain-file")));
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        blocker.close();
        const QString folder = blocker.fileName() + QStringLiteral("/practice");
        const auto opened = store::openStore(store::DataPaths::inFolder(folder));
        QVERIFY(!opened.ok());
        QVERIFY2(opened.error().contains(folder), qPrintable(opened.error()));
    }

    void refusesAFileThatIsAFolder()
    {
        QTemporaryDir dir;
        const auto paths = store::DataPaths::inFolder(dir.path());
        QVERIFY(QDir().mkpath(paths.clinicDb));
        const auto opened = store::openStore(paths);
        QVERIFY(!opened.ok());
        QVERIFY(opened.error().contains(paths.clinicDb));
    }

    void transactionRollsBackUnlessCommitted()
    {
        QTemporaryDir dir;
        QVERIFY(store::openStore(store::DataPaths::inFolder(dir.path())).ok());
        try {
            store::Transaction transaction(store::clinicDb());
            store::run(store::clinicDb(), QStringLiteral("INSERT INTO Medic (Names) VALUES ('A')"));
            store::run(store::clinicDb(), QStringLiteral("INSERT INTO NoSuchTable VALUES (1)"));
            transaction.commit();
            QFAIL("the broken statement must throw");
        } catch (const store::SqlError &) {
        }
        QCOMPARE(store::scalar(store::clinicDb(), QStringLiteral("SELECT COUNT(*) FROM Medic")).toInt(), 0);
    }
};

QTEST_GUILESS_MAIN(TestStore)
#include "tst_Store.moc"
