#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

// A restore killed at any moment leaves the clinic database whole, and either the one that was
// there or the archive: never a mixture, never a missing or empty file.
namespace {

struct Found
{
    QString integrity;
    int patients = -1;
    int services = -1;

    bool operator==(const Found &) const = default;
    QString text() const { return QStringLiteral("%1 %2/%3").arg(integrity).arg(patients).arg(services); }
};

// Looks at the folder's clinic file on a connection of its own, as the next start would.
Found look(const QString &folder)
{
    Found found;
    const QString connection = QStringLiteral("look");
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
        db.setDatabaseName(folder + QStringLiteral("/velmorata.db"));
        if (db.open()) {
            QSqlQuery query(db);
            query.exec(QStringLiteral("PRAGMA integrity_check"));
            found.integrity = query.next() ? query.value(0).toString() : QStringLiteral("no answer");
            query.exec(QStringLiteral("SELECT (SELECT COUNT(*) FROM Pacients), (SELECT COUNT(*) FROM Help)"));
            if (query.next()) {
                found.patients = query.value(0).toInt();
                found.services = query.value(1).toInt();
            }
        }
    }
    QSqlDatabase::removeDatabase(connection);
    return found;
}

bool velmorata(const QStringList &arguments, int killAfterMs = 120000)
{
    QProcess process;
    process.start(qEnvironmentVariable("VELMORATA_BINARY"), arguments);
    if (!process.waitForStarted())
        return false;
    if (!process.waitForFinished(killAfterMs) && process.state() != QProcess::NotRunning) {
        process.kill();
        process.waitForFinished();
        return false;
    }
    return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

QString demo(const QString &folder, int patients)
{
    if (!velmorata({QStringLiteral("demo"), QStringLiteral("--data-dir"), folder, QStringLiteral("--patients"),
                    QString::number(patients), QStringLiteral("--today"), QStringLiteral("20.11.2026")}))
        qFatal("demo in %s failed", qPrintable(folder));
    return folder;
}

void copyFolder(const QString &from, const QString &to)
{
    QDir().mkpath(to);
    for (const QString &name : QDir(from).entryList(QDir::Files))
        if (!QFile::copy(from + u'/' + name, to + u'/' + name))
            qFatal("cannot copy %s", qPrintable(name));
}

} // namespace

class TestRestore final : public QObject
{
    Q_OBJECT
private slots:
    void killedRestoreLeavesBeforeOrAfter()
    {
        QTemporaryDir work;
        const QString archive = work.filePath(QStringLiteral("large.arh"));
        QVERIFY(velmorata({QStringLiteral("backup"), QStringLiteral("--data-dir"), demo(work.filePath("large"), 1500), archive}));
        const QString pristine = demo(work.filePath(QStringLiteral("small")), 80);
        const Found before = look(pristine);

        const QString finished = work.filePath(QStringLiteral("finished"));
        copyFolder(pristine, finished);
        QElapsedTimer clock;
        clock.start();
        QVERIFY(velmorata({QStringLiteral("restore"), QStringLiteral("--data-dir"), finished, archive}));
        const qint64 duration = clock.elapsed();
        const Found after = look(finished);
        QCOMPARE(after.integrity, QStringLiteral("ok"));
        QVERIFY2(after.patients != before.patients, qPrintable(after.text()));

        QRandomGenerator random(20260315);
        for (int trial = 0; trial < 8; ++trial) {
            const QString folder = work.filePath(QStringLiteral("trial%1").arg(trial));
            copyFolder(pristine, folder);
            const int killAt = int(random.bounded(duration + 1));
            velmorata({QStringLiteral("restore"), QStringLiteral("--data-dir"), folder, archive}, killAt);
            const Found found = look(folder);
            QCOMPARE(found.integrity, QStringLiteral("ok"));
            QVERIFY2(found == before || found == after,
                     qPrintable(QStringLiteral("killed after %1 ms: %2").arg(killAt).arg(found.text())));
        }
    }
};

QTEST_GUILESS_MAIN(TestRestore)
#include "tst_Restore.moc"
