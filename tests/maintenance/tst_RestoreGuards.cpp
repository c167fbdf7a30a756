#include "CommandRun.h"
#include "TestPractice.h"

#include "maintenance/Backup.h"
#include "maintenance/Restore.h"
#include "maintenance/ui/MaintenanceCommands.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QDir>
#include <QTest>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

// What stands between a practice and the loss of its data on a backup or a restore: an archive
// far smaller than the practice is asked about, a damaged database never replaces a good
// archive, a restore that cannot finish leaves the old database in place, a killed run's
// left-overs go with the next run, and a full disk or a wrong kind of file is called so.
namespace {

QString fileOf(const QString &folder)
{
    return folder + QStringLiteral("/velmorata.db");
}

int patients()
{
    return store::scalar(store::clinicDb(), QStringLiteral("SELECT COUNT(*) FROM Pacients")).toInt();
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// A practice's files, written out whole, in a folder no program holds.
QString closedFolder(const TestPractice &practice, const QTemporaryDir &work, const QString &name)
{
    const QString folder = work.filePath(name);
    if (!QDir().mkpath(folder) || !practice.copyFilesTo(folder))
        qFatal("cannot copy the practice to %s", qPrintable(folder));
    return folder;
}

int patientsIn(const QString &folder)
{
    if (!store::openStore(store::DataPaths::inFolder(folder)))
        return -1;
    const int count = patients();
    store::closeStore();
    return count;
}

// Runs `script` in a mount namespace of its own, where it may mount a small file system that
// goes away with it; false where this user may not.
bool runIsolated(const QString &script, const QStringList &arguments)
{
    QProcess shell;
    shell.start(QStringLiteral("unshare"), QStringList{QStringLiteral("-m"), QStringLiteral("sh"), QStringLiteral("-c"),
                                                       script, QStringLiteral("sh")} +
                                               arguments);
    return shell.waitForFinished(120000) && shell.exitStatus() == QProcess::NormalExit && shell.exitCode() == 0;
}

bool mayMount()
{
    return runIsolated(QStringLiteral("mount -t tmpfs -o size=64k tmpfs \"$1\""), {QDir::tempPath()});
}

} // namespace

class TestRestoreGuards final : public QObject
{
    Q_OBJECT
  private slots:
    void farSmallerArchiveIsAskedAbout_data()
    {
        QTest::addColumn<int>("archived");
        QTest::addColumn<int>("current");
        QTest::addColumn<bool>("asked");
        QTest::newRow("no patients over some") << 0 << 3 << true;
        QTest::newRow("less than half") << 9 << 20 << true;
        QTest::newRow("half") << 10 << 20 << false;
        QTest::newRow("more than now") << 12 << 6 << false;
        QTest::newRow("both empty") << 0 << 0 << false;
    }
    void farSmallerArchiveIsAskedAbout()
    {
        QFETCH(int, archived);
        QFETCH(int, current);
        QFETCH(bool, asked);
        for (const bool answer : {false, true}) {
            TestPractice practice;
            practice.addNumberedPatients(archived);
            QTemporaryDir elsewhere;
            const QString archive = elsewhere.filePath(QStringLiteral("older.arh"));
            QVERIFY(backup::BackupDatabase(store::paths().clinicDb, archive));
            if (current > archived)
                practice.addNumberedPatients(current - archived, 1000);
            else
                store::run(store::clinicDb(), QStringLiteral("DELETE FROM Pacients WHERE ID > ?"), {current});
            QStringList questions;
            const auto restored = restore::RestoreDatabase(archive, [&](const QString &question) {
                questions << question;
                return answer;
            });
            QCOMPARE(questions.size(), asked ? 1 : 0);
            const bool done = !asked || answer;
            QCOMPARE(bool(restored), done);
            QCOMPARE(patients(), done ? archived : current);
            if (asked)
                QVERIFY2(questions.first().contains(QStringLiteral("%1 пациенти").arg(archived)) &&
                             questions.first().contains(QStringLiteral("%1 пациенти").arg(current)),
                         qPrintable(questions.first()));
            if (!done)
                QVERIFY2(restored.error().contains(QStringLiteral("не е променена")), qPrintable(restored.error()));
        }
    }

    // The window asks through the dialogs and says nothing more on "НЕ"; the command line
    // refuses without --yes and names it.
    void emptyArchiveNeedsAYes()
    {
        QTemporaryDir work;
        const QString archive = work.filePath(QStringLiteral("empty.arh"));
        {
            TestPractice empty;
            QVERIFY(backup::BackupDatabase(store::paths().clinicDb, archive));
        }
        TestPractice practice;
        practice.addNumberedPatients(8);
        maintenanceui::setArchiveChooser([&](QWidget *, maintenanceui::ArchiveDialog) { return archive; });
        practice.dialogs().answers = {false, true};
        maintenanceui::restoreData(
            nullptr, [] { return true; }, [] {});
        QCOMPARE(patients(), 8);
        QCOMPARE(practice.dialogs().questions.size(), 1);
        QVERIFY(practice.dialogs().messages.isEmpty());
        maintenanceui::restoreData(
            nullptr, [] { return true; }, [] {});
        QCOMPARE(patients(), 0);
        maintenanceui::setArchiveChooser(nullptr);

        practice.addNumberedPatients(5);
        const QString folder = closedFolder(practice, work, QStringLiteral("cli"));
        const QStringList restoring{QStringLiteral("restore"), QStringLiteral("--data-dir"), folder, archive};
        const CommandRun refused = runProgram(restoring);
        QCOMPARE(refused.exitCode, 1);
        QVERIFY2(refused.err.contains(QStringLiteral("--yes")) && refused.err.contains(QStringLiteral("5 пациенти")),
                 qPrintable(refused.err));
        QCOMPARE(patientsIn(folder), 5);
        const CommandRun done = runProgram(restoring + QStringList{QStringLiteral("--yes")});
        QVERIFY2(done.exitCode == 0, qPrintable(done.err));
        QCOMPARE(patientsIn(folder), 0);
    }

    // A damaged page is copied page by page like any other: the copy is checked before it
    // takes the archive's name.
    void damagedDatabaseNeverReplacesAGoodArchive()
    {
        TestPractice practice;
        practice.addNumberedPatients(400);
        QTemporaryDir work;
        const QString folder = closedFolder(practice, work, QStringLiteral("damaged"));
        const QString archive = work.filePath(QStringLiteral("good.arh"));
        const QStringList backingUp{QStringLiteral("backup"), QStringLiteral("--data-dir"), folder, archive};
        QCOMPARE(runProgram(backingUp).exitCode, 0);
        const QByteArray good = contentOf(archive);
        {
            QFile file(fileOf(folder));
            QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(10 * 4096));
            QCOMPARE(file.write(QByteArray(4096, 'x')), 4096);
        }
        const CommandRun refused = runProgram(backingUp);
        QCOMPARE(refused.exitCode, 1);
        QVERIFY2(refused.err.contains(QStringLiteral("повреда")), qPrintable(refused.err));
        QCOMPARE(contentOf(archive), good);
        QCOMPARE(QDir(work.path()).entryList({QStringLiteral("good.arh*")}, QDir::Files), QStringList{"good.arh"});
    }

    // Only files of the name our parts get, that no live run holds locked, are removed.
    void nextRunRemovesTheLeftOversOfAKilledOne_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("held");
        QTest::addColumn<bool>("removed");
        for (const QString &command : {QStringLiteral("backup"), QStringLiteral("restore")}) {
            const QString part = command == u"backup" ? QStringLiteral("copy.arh.part-Ab12Cd")
                                                      : QStringLiteral("velmorata.db.part-Ab12Cd");
            const QByteArray row = command.toLatin1() + ": ";
            QTest::newRow(row + "left by a killed run") << command << part << false << true;
            QTest::newRow(row + "written by a live run") << command << part << true << false;
            QTest::newRow(row + "another name") << command << part + QStringLiteral(".txt") << false << false;
            QTest::newRow(row + "another file's part")
                << command << QStringLiteral("other.arh.part-Ab12Cd") << false << false;
        }
    }
    void nextRunRemovesTheLeftOversOfAKilledOne()
    {
        QFETCH(QString, command);
        QFETCH(QString, name);
        QFETCH(bool, held);
        QFETCH(bool, removed);
        TestPractice practice;
        practice.addNumberedPatients(3);
        const QString archive = practice.folder() + QStringLiteral("/copy.arh");
        const QString besides = practice.folder();
        if (command == u"restore")
            QVERIFY(backup::BackupDatabase(store::paths().clinicDb, archive));
        const QString leftOver = besides + u'/' + name;
        const int fd = ::open(QFile::encodeName(leftOver).constData(), O_CREAT | O_RDWR | O_CLOEXEC, 0600);
        QVERIFY(fd >= 0 && ::write(fd, "half a copy", 11) == 11);
        QVERIFY(!held || ::flock(fd, LOCK_EX | LOCK_NB) == 0); // a live run holds its part so
        const bool done = command == u"backup"
                              ? bool(backup::BackupDatabase(store::paths().clinicDb, archive))
                              : bool(restore::RestoreDatabase(archive, [](const QString &) { return false; }));
        ::close(fd);
        QVERIFY(done);
        QCOMPARE(QFileInfo::exists(leftOver), !removed);
        const QStringList parts = QDir(besides).entryList({QStringLiteral("*.part-*")}, QDir::Files);
        QCOMPARE(parts, removed ? QStringList() : QStringList{name}); // and the run left none of its own
    }

    void restoreNamesWhatTheFileIs_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("said");
        QTest::newRow("missing") << "missing"
                                 << "не съществува";
        QTest::newRow("folder") << "folder"
                                << "е папка";
        QTest::newRow("named pipe") << "fifo"
                                    << "не е обикновен файл";
        QTest::newRow("device") << "/dev/zero"
                                << "не е обикновен файл";
    }
    void restoreNamesWhatTheFileIs()
    {
        QFETCH(QString, kind);
        QFETCH(QString, said);
        TestPractice practice;
        practice.addNumberedPatients(2);
        QTemporaryDir elsewhere;
        const QString archive = kind.startsWith(u'/') ? kind : elsewhere.filePath(kind);
        if (kind == u"folder")
            QVERIFY(QDir().mkpath(archive));
        else if (kind == u"fifo")
            QCOMPARE(::mkfifo(QFile::encodeName(archive).constData(), 0600), 0);
        const auto restored = restore::RestoreDatabase(archive, [](const QString &) { return true; });
        QVERIFY(!restored);
        QVERIFY2(restored.error().contains(said) && restored.error().contains(archive), qPrintable(restored.error()));
        QCOMPARE(patients(), 2);
    }

    // A small file system of its own, filled up, so that the program meets a full disk where
    // the rows say: with no room at all, or with room for the archive's copy but not for the
    // journal the restored file needs when it is opened.
    void fullDisk_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<int>("roomBeyondArchive");
        QTest::addColumn<QString>("said");
        const QString full = QStringLiteral("Дискът е пълен");
        QTest::newRow("backup in a full data folder") << "backup" << 0 << full;
        QTest::newRow("restore with no room") << "restore" << 0 << full;
        QTest::newRow("restore with room for the copy alone") << "restore" << 4096 << full;
        QTest::newRow("restore with room for the copy and its check") << "restore" << 32768 << full;
    }
    void fullDisk()
    {
        QFETCH(QString, command);
        QFETCH(int, roomBeyondArchive);
        QFETCH(QString, said);
        if (!mayMount())
            QSKIP("no mount namespace for this user: a full disk cannot be made");
        TestPractice practice;
        practice.addNumberedPatients(300);
        QTemporaryDir work;
        const QString source = closedFolder(practice, work, QStringLiteral("source"));
        const QString archive = work.filePath(QStringLiteral("older.arh"));
        QVERIFY(backup::BackupDatabase(fileOf(source), archive));
        const QString mount = work.filePath(QStringLiteral("mount")), kept = work.filePath(QStringLiteral("kept"));
        QVERIFY(QDir().mkpath(mount) && QDir().mkpath(kept));
        const QString target = command == u"backup" ? mount + QStringLiteral("/new.arh") : archive;
        const qint64 room = roomBeyondArchive == 0 ? 0 : QFileInfo(archive).size() + roomBeyondArchive;
        // The folder is filled up to `room` free bytes; what the command printed and left is
        // kept outside, since the file system goes with the namespace.
        const QString script =
            QStringLiteral("mount -t tmpfs -o size=4m,mode=0700 tmpfs \"$1\" && cp \"$2\"/velmorata.db \"$2\"/data.db "
                           "\"$1\"/ || exit 1\n"
                           "free=$(df --output=avail -B1 \"$1\" | tail -1)\n"
                           "head -c $((free - $3)) /dev/zero > \"$1\"/filler 2>/dev/null\n"
                           "\"$4\" \"$5\" --data-dir \"$1\" \"$6\" > \"$7\"/out 2> \"$7\"/err; echo $? > \"$7\"/exit\n"
                           "cp \"$1\"/velmorata.db \"$7\"/ && ls \"$1\" > \"$7\"/files");
        QVERIFY(runIsolated(script, {mount, source, QString::number(room), qEnvironmentVariable("VELMORATA_BINARY"),
                                     command, target, kept}));
        const QString err = QString::fromUtf8(contentOf(kept + QStringLiteral("/err")));
        QCOMPARE(contentOf(kept + QStringLiteral("/exit")).trimmed(), QByteArray("1"));
        QVERIFY2(err.contains(said) && err.contains(mount), qPrintable(err));
        QVERIFY2(!err.contains(QStringLiteral("velmorata.log")), qPrintable(err));
        // The old database is in place, whole, and nothing half-made is left beside it.
        QCOMPARE(contentOf(kept + QStringLiteral("/velmorata.db")), contentOf(fileOf(source)));
        QStringList files =
            QString::fromUtf8(contentOf(kept + QStringLiteral("/files"))).split(u'\n', Qt::SkipEmptyParts);
        for (const char *expected : {"data.db", "filler", "velmorata.db", "velmorata.db-shm", "velmorata.db-wal",
                                     "velmorata.lock", "velmorata.log"})
            files.removeAll(expected);
        QVERIFY2(files.isEmpty(), qPrintable(files.join(u' ')));
    }
};

QTEST_MAIN(TestRestoreGuards)
#include "tst_RestoreGuards.moc"
