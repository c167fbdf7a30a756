#include "admin/AccessCodes.h"
#include "maintenance/JetReader.h"
#include "maintenance/LegacyTakeover.h"
#include "store/DataPaths.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

// The take-over of the earlier edition's files, read from the real velmorata.mdb and data.mdb.
class LegacyTakeoverTest final : public QObject
{
    Q_OBJECT

    static QString from() { return qEnvironmentVariable("VELMORATA_TEST_DATA") + u"/legacy"_qs; }
    static QVariant clinic(const QString &sql) { return store::scalar(store::clinicDb(), sql); }

    // The old files with `clinic` in place of velmorata.mdb, in a folder of `dir`.
    static QString oldFolderWith(const QTemporaryDir &dir, const QByteArray &clinic)
    {
        const QString folder = dir.filePath(u"old"_qs);
        QDir().mkpath(folder);
        QFile::copy(from() + u"/data.mdb"_qs, folder + u"/data.mdb"_qs);
        QFile out(folder + u"/velmorata.mdb"_qs);
        if (!out.open(QIODevice::WriteOnly) || out.write(clinic) != clinic.size())
            qFatal("cannot write the damaged file");
        return folder;
    }

    static QByteArray goodClinic()
    {
        QFile file(from() + u"/velmorata.mdb"_qs);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private slots:
    void initTestCase() { jet::setReaderProgram(qEnvironmentVariable("VELMORATA_BINARY")); }

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

        // A folder with an empty practice is looked into and left as it was found.
        QVERIFY(store::openStore(store::DataPaths::inFolder(folder)).ok());
        store::closeStore();
        const QStringList before = QDir(folder).entryList(QDir::Files);
        QVERIFY(legacy::tryTakeOver(from(), folder).ok());
        QCOMPARE(QDir(folder).entryList(QDir::Files), before);
    }

    void refusesADamagedPracticeWhole_data()
    {
        QTest::addColumn<QByteArray>("oldClinic");
        QByteArray changed = goodClinic();
        changed[60780] = char(0xFF); // a row of Help that points outside its page
        QTest::newRow("one byte changed") << changed;
        QTest::newRow("cut at 96256") << goodClinic().left(96256);
        QTest::newRow("cut at 98304") << goodClinic().left(98304);
        QTest::newRow("page 47 zeroed") << goodClinic().replace(47 * 2048, 2048, QByteArray(2048, '\0'));
    }

    // A table that cannot be read whole refuses the whole take-over, on the command line too;
    // the folder then takes the good files as if nothing had been tried.
    void refusesADamagedPracticeWhole()
    {
        QFETCH(QByteArray, oldClinic);
        QTemporaryDir dir;
        const QString folder = dir.filePath(u"new"_qs);
        QProcess command;
        command.start(qEnvironmentVariable("VELMORATA_BINARY"),
                      {u"import-legacy"_qs, u"--data-dir"_qs, folder, u"--from"_qs, oldFolderWith(dir, oldClinic)});
        QVERIFY(command.waitForFinished(60000));
        QCOMPARE(command.exitStatus(), QProcess::NormalExit);
        QCOMPARE(command.exitCode(), 1);
        QVERIFY(QString::fromUtf8(command.readAllStandardError()).contains(u"velmorata.mdb"_qs));
        QVERIFY(!QFileInfo::exists(folder + u"/velmorata.db"_qs));

        auto again = legacy::takeOverOldPractice(from(), folder);
        QVERIFY2(again.ok(), qPrintable(again.error()));
        QVERIFY(store::openStore(store::DataPaths::inFolder(folder)).ok());
        QCOMPARE(clinic(u"SELECT COUNT(*) FROM Help"_qs).toInt(), 264);
        store::closeStore();
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
