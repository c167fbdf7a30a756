#include "admin/AccessCodes.h"
#include "maintenance/LegacyTakeover.h"
#include "store/DataPaths.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

// The take-over of the earlier edition's files, read from the real velmorata.mdb and data.mdb.
class LegacyTakeoverTest final : public QObject
{
    Q_OBJECT

    static QString from() { return qEnvironmentVariable("VELMORATA_TEST_DATA") + u"/legacy"_qs; }
    static QVariant clinic(const QString &sql) { return store::scalar(store::clinicDb(), sql); }

private slots:
    void takesEveryTableWithDatesAndCodesConverted()
    {
        QTemporaryDir dir;
        const QString folder = dir.filePath(u"new"_qs);
        auto plan = legacy::takeOverOldPractice(from(), folder);
        QVERIFY2(plan.ok(), qPrintable(plan.error()));
        QVERIFY(store::openStore(store::DataPaths::inFolder(folder)).ok());
        QStringList counts;
        for (const QString table : {"Pacients", "Dental", "Help", "Medic", "MedicUnit", "Path", "Invest", "Spec", "Grafic"})
            counts << table + u'=' + clinic(u"SELECT COUNT(*) FROM "_qs + table).toString();
        QCOMPARE(counts, (QStringList{"Pacients=60", "Dental=60", "Help=264", "Medic=3", "MedicUnit=1", "Path=23",
                                      "Invest=19", "Spec=11", "Grafic=10"}));
        QCOMPARE(clinic(u"SELECT COUNT(*) FROM Help WHERE Data NOT LIKE '20__-__-__'"_qs).toInt(), 0);
        QCOMPARE(clinic(u"SELECT DataB FROM Pacients WHERE EGN = '0747091619'"_qs).toString(), u"2007-07-09"_qs);
        QCOMPARE(clinic(u"SELECT COUNT(*) FROM Help WHERE ZK NOT IN (0, 1)"_qs).toInt(), 0);
        const QString hash = clinic(u"SELECT Password FROM Medic WHERE Names = 'Анна Петрова Колева'"_qs).toString();
        QVERIFY(accesscodes::matches(hash, u"Аня123"_qs));
        QVERIFY(clinic(u"SELECT Password FROM Medic WHERE Names = 'Д''Арси Петров Стоянов'"_qs).isNull());
        QVERIFY(clinic(u"SELECT COUNT(*) FROM CenyZK"_qs).toInt() > 8); // the fund's table of this version
        QCOMPARE(store::scalar(store::dataDb(), u"SELECT COUNT(*) FROM PostCode"_qs).toInt(), 6);
        QCOMPARE(store::scalar(store::dataDb(), u"SELECT M4 FROM RazhNorm WHERE KodHelp = '101'"_qs).toDouble(), 0.68);
        store::closeStore();
    }

    void refusesAFolderThatHoldsAPractice()
    {
        QTemporaryDir dir;
        QVERIFY(legacy::takeOverOldPractice(from(), dir.path()).ok());
        QVERIFY(store::openStore(store::DataPaths::inFolder(dir.path())).ok());
        store::run(store::clinicDb(), u"DELETE FROM Help"_qs);
        store::closeStore();
        for (auto attempt : {&legacy::takeOverOldPractice, &legacy::tryTakeOver}) {
            auto again = attempt(from(), dir.path());
            QVERIFY(!again.ok());
            QVERIFY(again.error().contains(dir.path()));
        }
        QVERIFY(store::openStore(store::DataPaths::inFolder(dir.path())).ok());
        QCOMPARE(clinic(u"SELECT COUNT(*) FROM Help"_qs).toInt(), 0); // not taken again
        store::closeStore();
    }

    void refusesAFolderInUse()
    {
        QTemporaryDir dir;
        QVERIFY(store::openStore(store::DataPaths::inFolder(dir.path())).ok());
        auto taken = legacy::takeOverOldPractice(from(), dir.path());
        QVERIFY(!taken.ok());
        QCOMPARE(clinic(u"SELECT COUNT(*) FROM Pacients"_qs).toInt(), 0);
        store::closeStore();
    }

    void dryRunWritesNothing()
    {
        QTemporaryDir dir;
        const QString folder = dir.filePath(u"new"_qs);
        auto plan = legacy::tryTakeOver(from(), folder);
        QVERIFY(plan.ok());
        QCOMPARE(plan->refused(), 0);
        QVERIFY(plan->taken() > 400);
        QVERIFY(!QDir(folder).exists());
    }

    void refusesFoldersWithoutTheOldFiles()
    {
        QTemporaryDir dir;
        auto plan = legacy::tryTakeOver(dir.path(), dir.filePath(u"new"_qs));
        QVERIFY(!plan.ok());
        QVERIFY(plan.error().contains(u"velmorata.mdb"_qs));
    }
};

QTEST_GUILESS_MAIN(LegacyTakeoverTest)
#include "tst_LegacyTakeover.moc"
