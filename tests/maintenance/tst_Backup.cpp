#include "CommandRun.h"
#include "TestPractice.h"

#include "maintenance/Backup.h"
#include "maintenance/Restore.h"
#include "maintenance/ui/MaintenanceCommands.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QDir>
#include <QProcess>
#include <QTest>

// Archives are whole copies taken while the program works, and a restore puts back only a file
// that is a whole clinic database: anything else is refused and the live database stays.
namespace {

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
}

int patients() { return store::scalar(store::clinicDb(), QStringLiteral("SELECT COUNT(*) FROM Pacients")).toInt(); }

QStringList folderFiles(const QString &folder)
{
    // The log may gain the engine's own words about the refused file.
    QStringList files = QDir(folder).entryList(QDir::Files, QDir::Name);
    files.removeAll(QStringLiteral("velmorata.log"));
    return files;
}

const auto velmorata = runProgram;
const auto yes = [](const QString &) { return true; };

} // namespace

class TestBackup final : public QObject
{
    Q_OBJECT
private slots:
    void backupReplacesTheTargetWithAWholeCopy()
    {
        TestPractice practice;
        practice.addNumberedPatients(30);
        const QString archive = practice.folder() + QStringLiteral("/../") + QFileInfo(practice.folder()).fileName()
            + QStringLiteral(".arh");
        write(archive, "an older file under the same name");
        const auto copied = backup::BackupDatabase(store::paths().clinicDb, archive);
        QVERIFY2(copied, qPrintable(copied.error()));
        QCOMPARE(copied->patients, 30);
        // The archive is one file that opens by itself: no write-ahead log beside it nor marked in
        // it, and private as the data folder is.
        QVERIFY(!QFileInfo::exists(archive + QStringLiteral("-wal")));
        QCOMPARE(QFileInfo(archive).size(), copied->bytes);
        QFile header(archive);
        QVERIFY(header.open(QIODevice::ReadOnly) && header.seek(18));
        QCOMPARE(header.read(2), QByteArray("\x01\x01"));
        QCOMPARE(QFileInfo(archive).permissions() & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
        QVERIFY(QFile::remove(archive));
    }

    void backupRefusesWithoutTouchingTheTarget_data()
    {
        QTest::addColumn<QString>("target");
        QTest::newRow("the database itself") << "velmorata.db";
        QTest::newRow("a folder that is not there") << "missing/a.arh";
    }
    void backupRefusesWithoutTouchingTheTarget()
    {
        QFETCH(QString, target);
        TestPractice practice;
        practice.addNumberedPatients(3);
        const QStringList before = folderFiles(practice.folder());
        const auto copied = backup::BackupDatabase(store::paths().clinicDb, practice.folder() + u'/' + target);
        QVERIFY(!copied);
        QVERIFY(!copied.error().isEmpty());
        QCOMPARE(patients(), 3);
        QCOMPARE(folderFiles(practice.folder()), before);
    }

    // The command needs no lock: it works while this process holds the folder and has written
    // rows not yet folded into the database file.
    void backupCommandWorksWhileTheProgramRuns()
    {
        TestPractice practice;
        practice.addNumberedPatients(25);
        QTemporaryDir elsewhere;
        const QString archive = elsewhere.filePath(QStringLiteral("copy.arh"));
        const CommandRun done = velmorata({QStringLiteral("backup"), QStringLiteral("--data-dir"), practice.folder(), archive});
        QCOMPARE(done.exitCode, 0);
        QVERIFY2(done.out.startsWith(QStringLiteral("Backup written: ")), qPrintable(done.out + done.err));
        QVERIFY(done.out.contains(QStringLiteral("25 patients")));
        QCOMPARE(velmorata({QStringLiteral("backup"), QStringLiteral("--data-dir"), elsewhere.path(), archive}).exitCode, 1);
    }

    void restorePutsTheArchiveBackAndKeepsTheCurrent()
    {
        TestPractice practice;
        practice.addNumberedPatients(10);
        QTemporaryDir elsewhere;
        const QString archive = elsewhere.filePath(QStringLiteral("ten.arh"));
        QVERIFY(backup::BackupDatabase(store::paths().clinicDb, archive));
        practice.addNumberedPatients(5, 100);
        const QDateTime now(QDate(2026, 3, 15), QTime(9, 30, 5));
        const auto restored = restore::RestoreDatabase(archive, yes, now);
        QVERIFY2(restored, qPrintable(restored.error()));
        QCOMPARE(patients(), 10); // the store works on the restored file at once
        QCOMPARE(restored->safetyCopy, practice.folder() + QStringLiteral("/velmorata-before-restore-20260315-093005.db"));
        safetyCopyHolds(restored->safetyCopy, 15);
        QCOMPARE(QFileInfo(store::paths().clinicDb).permissions() & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
        // A second restore in the same second keeps its own safety copy.
        const auto again = restore::RestoreDatabase(archive, yes, now);
        QVERIFY(again);
        QVERIFY(again->safetyCopy.endsWith(QStringLiteral("-093005-2.db")));
    }

    void restoreRefusesWhatIsNoArchive_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::newRow("text file") << "text";
        QTest::newRow("empty file") << "empty";
        QTest::newRow("another program's database") << "other";
        QTest::newRow("truncated copy") << "truncated";
        // Whole pages and cells, but an index that does not hold what its table holds.
        QTest::newRow("index on other values") << "index-other";
        QTest::newRow("index that lost rows") << "index-short";
        QTest::newRow("no such file") << "missing";
        // Format versions the engine opens read-only or not at all: every later write would fail.
        QTest::newRow("write version 0xFE") << "version-18-254";
        QTest::newRow("write version 3") << "version-18-3";
        QTest::newRow("read version 3") << "version-19-3";
        QTest::newRow("a column fewer") << "columns-fewer";
        QTest::newRow("a column more") << "columns-more";
    }
    void restoreRefusesWhatIsNoArchive()
    {
        QFETCH(QString, kind);
        TestPractice practice;
        practice.addNumberedPatients(40);
        QTemporaryDir elsewhere;
        const QString archive = elsewhere.filePath(QStringLiteral("bad.arh"));
        makeBadArchive(kind, archive);
        const QStringList filesBefore = folderFiles(practice.folder());
        const auto restored = restore::RestoreDatabase(archive, yes);
        QVERIFY(!restored);
        QVERIFY2(restored.error().contains(archive), qPrintable(restored.error()));
        QCOMPARE(patients(), 40);
        QCOMPARE(folderFiles(practice.folder()), filesBefore); // no copy left behind
    }

    // A damaged live file is what a restore is for: the command takes the lock only.
    void restoreCommandReplacesADamagedFile()
    {
        QTemporaryDir elsewhere;
        const QString archive = elsewhere.filePath(QStringLiteral("good.arh"));
        const QString folder = elsewhere.filePath(QStringLiteral("second"));
        {
            TestPractice practice;
            practice.addNumberedPatients(12);
            QVERIFY(backup::BackupDatabase(store::paths().clinicDb, archive));
            QVERIFY(QDir().mkpath(folder));
            write(folder + QStringLiteral("/velmorata.db"), QByteArray(8192, 'x'));
            const CommandRun held = velmorata({QStringLiteral("restore"), QStringLiteral("--data-dir"), practice.folder(), archive});
            QCOMPARE(held.exitCode, 1);
            QVERIFY2(held.err.contains(QStringLiteral("вече работи")), qPrintable(held.err));
            const CommandRun done = velmorata({QStringLiteral("restore"), QStringLiteral("--data-dir"), folder, archive});
            QCOMPARE(done.exitCode, 0);
            QVERIFY2(done.out.contains(QStringLiteral("12 patients")), qPrintable(done.out + done.err));
        }
        QVERIFY(store::openStore(store::DataPaths::inFolder(folder)));
        QCOMPARE(patients(), 12);
        store::closeStore();
    }

    void menuRestoreStopsWhenAWindowStaysOpen()
    {
        TestPractice practice;
        practice.addNumberedPatients(4);
        QTemporaryDir elsewhere;
        const QString archive = elsewhere.filePath(QStringLiteral("empty-practice.arh"));
        QVERIFY(backup::BackupDatabase(store::paths().clinicDb, archive));
        practice.addNumberedPatients(1, 50);
        maintenanceui::setArchiveChooser([&](QWidget *, maintenanceui::ArchiveDialog) { return archive; });
        int reloads = 0;
        maintenanceui::restoreData(nullptr, [] { return false; }, [&] { ++reloads; });
        QCOMPARE(patients(), 5);
        maintenanceui::restoreData(nullptr, [] { return true; }, [&] { ++reloads; });
        QCOMPARE(patients(), 4);
        QCOMPARE(reloads, 1);
        maintenanceui::setArchiveChooser([](QWidget *, maintenanceui::ArchiveDialog) { return QString(); });
        maintenanceui::restoreData(nullptr, [] { return true; }, [&] { ++reloads; }); // cancelled
        QCOMPARE(reloads, 1);
        maintenanceui::setArchiveChooser(nullptr);
    }

private:
    void safetyCopyHolds(const QString &path, int expectedPatients)
    {
        const QString name = QStringLiteral("safety");
        {
            QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
            db.setDatabaseName(path);
            QVERIFY(db.open());
            QCOMPARE(store::scalar(db, QStringLiteral("SELECT COUNT(*) FROM Pacients")).toInt(), expectedPatients);
            db.close();
        }
        QSqlDatabase::removeDatabase(name);
    }

    // Rewrites an index's definition under its built entries, the way a damaged file disagrees
    // with itself: it then stands for other values, or for rows it never received.
    void damageIndex(const QString &archive, bool otherValues)
    {
        const QString name = QStringLiteral("damage");
        {
            QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
            db.setDatabaseName(archive);
            QVERIFY(db.open());
            if (!otherValues)
                store::run(db, QStringLiteral("CREATE INDEX PacientsPart ON Pacients (Names) WHERE ID % 2 = 0"));
            store::run(db, QStringLiteral("PRAGMA writable_schema = ON"));
            store::run(db, QStringLiteral("UPDATE sqlite_schema SET sql = ? WHERE name = ?"),
                       {otherValues ? QStringLiteral("CREATE INDEX PacientsByEgn ON Pacients (Names)")
                                    : QStringLiteral("CREATE INDEX PacientsPart ON Pacients (Names)"),
                        otherValues ? QStringLiteral("PacientsByEgn") : QStringLiteral("PacientsPart")});
            db.close();
        }
        QSqlDatabase::removeDatabase(name);
    }

    void changeColumns(const QString &archive, const QString &statement)
    {
        const QString name = QStringLiteral("columns");
        {
            QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
            db.setDatabaseName(archive);
            QVERIFY(db.open());
            store::run(db, statement);
            db.close();
        }
        QSqlDatabase::removeDatabase(name);
    }

    void makeBadArchive(const QString &kind, const QString &archive)
    {
        if (kind == u"text")
            write(archive, "EGN;Names\n7501121234;Иван\n");
        else if (kind == u"empty")
            write(archive, {});
        else if (kind == u"other") {
            QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("other"));
            db.setDatabaseName(archive);
            QVERIFY(db.open());
            store::run(db, QStringLiteral("CREATE TABLE Pacients (EGN TEXT)"));
            db.close();
            db = QSqlDatabase();
            QSqlDatabase::removeDatabase(QStringLiteral("other"));
        } else if (kind.startsWith(u"version")) {
            QVERIFY(backup::BackupDatabase(store::paths().clinicDb, archive));
            QFile file(archive);
            QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(kind.section(u'-', 1, 1).toInt()));
            QVERIFY(file.putChar(char(kind.section(u'-', 2, 2).toInt())));
        } else if (kind.startsWith(u"columns")) {
            QVERIFY(backup::BackupDatabase(store::paths().clinicDb, archive));
            changeColumns(archive, kind == u"columns-fewer" ? QStringLiteral("ALTER TABLE Help DROP COLUMN Schet")
                                                            : QStringLiteral("ALTER TABLE Pacients ADD COLUMN Email TEXT"));
        } else if (kind.startsWith(u"index")) {
            QVERIFY(backup::BackupDatabase(store::paths().clinicDb, archive));
            damageIndex(archive, kind == u"index-other");
        } else if (kind == u"truncated") {
            const QString whole = archive + QStringLiteral(".whole");
            QVERIFY(backup::BackupDatabase(store::paths().clinicDb, whole));
            QFile source(whole);
            QVERIFY(source.open(QIODevice::ReadOnly));
            write(archive, source.read(source.size() * 2 / 3));
        }
    }
};

QTEST_MAIN(TestBackup)
#include "tst_Backup.moc"
