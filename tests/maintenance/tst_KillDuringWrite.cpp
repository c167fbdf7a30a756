#include "store/DataPaths.h"
#include "store/Store.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

// A run of the program killed at any moment of a long write leaves the file whole, and either as
// it was before the run or as a finished run leaves it: never half a practice or half a list,
// and a restore never a mixture of the database that was there and the archive.
namespace {

struct FileState
{
    QString integrity;
    QList<int> counts; // rows of each table asked for

    QString text() const
    {
        QStringList numbers;
        for (int n : counts)
            numbers << QString::number(n);
        return integrity + u' ' + numbers.join(u'/');
    }
};

// Looks at the files through connections of their own, as the next start would: a write-ahead
// log or a journal that a killed run left is taken up or dropped by SQLite here. `tables` are
// "file/table": the take-over writes two files, which must be seen together.
FileState look(const QString &folder, const QStringList &tables)
{
    FileState state;
    QStringList verdicts;
    const QString connection = QStringLiteral("look");
    for (const QString &file : {QStringLiteral("velmorata.db"), QStringLiteral("data.db")}) {
        const QStringList asked = tables.filter(QRegularExpression(u'^' + QRegularExpression::escape(file) + u'/'));
        if (asked.isEmpty())
            continue;
        {
            QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
            db.setDatabaseName(folder + u'/' + file);
            if (!db.open())
                qFatal("cannot open %s", qPrintable(file));
            QSqlQuery query(db);
            query.exec(QStringLiteral("PRAGMA integrity_check"));
            verdicts << (query.next() ? query.value(0).toString() : QStringLiteral("no answer"));
            for (const QString &table : asked) {
                query.exec(QStringLiteral("SELECT COUNT(*) FROM %1").arg(table.section(u'/', 1)));
                state.counts << (query.next() ? query.value(0).toInt() : -1);
            }
        }
        QSqlDatabase::removeDatabase(connection);
    }
    verdicts.removeDuplicates();
    state.integrity = verdicts.join(u',');
    return state;
}

// A new folder with the store made and closed, as before the command runs.
void prepareFolder(const QString &folder)
{
    if (!store::openStore(store::DataPaths::inFolder(folder)).ok())
        qFatal("cannot make the store in %s", qPrintable(folder));
    store::closeStore();
}

void copyFolder(const QString &from, const QString &to)
{
    QDir().mkpath(to);
    for (const QString &name : QDir(from).entryList(QDir::Files))
        if (!QFile::copy(from + u'/' + name, to + u'/' + name))
            qFatal("cannot copy %s", qPrintable(name));
}

// Runs the command, killing it after `killAfterMs` if it is still running; the time it ran.
qint64 run(const QStringList &arguments, qint64 killAfterMs)
{
    QElapsedTimer clock;
    QProcess process;
    clock.start();
    process.start(qEnvironmentVariable("VELMORATA_BINARY"), arguments);
    if (!process.waitForStarted() || (!process.waitForFinished(int(killAfterMs)) && process.state() != QProcess::NotRunning)) {
        process.kill();
        process.waitForFinished();
    }
    return clock.elapsed();
}

} // namespace

class TestKillDuringWrite final : public QObject
{
    Q_OBJECT
private slots:
    void killedCommandLeavesBeforeOrAfter_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QStringList>("tables");
        QTest::newRow("demo") << "demo"
                              << QStringList{"velmorata.db/Medic", "velmorata.db/Pacients", "velmorata.db/Dental",
                                             "velmorata.db/Help", "velmorata.db/Grafic"};
        QTest::newRow("post-code import") << "import-postcodes" << QStringList{"data.db/PostCode"};
        QTest::newRow("restore") << "restore" << QStringList{"velmorata.db/Pacients", "velmorata.db/Help"};
        QTest::newRow("take-over") << "import-legacy"
                                   << QStringList{"velmorata.db/Pacients", "velmorata.db/Help", "data.db/PostCode",
                                                  "data.db/RazhNorm"};
    }
    void killedCommandLeavesBeforeOrAfter()
    {
        QFETCH(QString, command);
        QFETCH(QStringList, tables);
        QTemporaryDir work;
        const QString csv = writePostCodes(work.filePath(QStringLiteral("codes.csv")));
        const QString archive = work.filePath(QStringLiteral("large.arh"));
        const auto demo = [](const QString &folder, int patients) {
            return QStringList{QStringLiteral("demo"), QStringLiteral("--data-dir"), folder, QStringLiteral("--patients"),
                               QString::number(patients), QStringLiteral("--today"), QStringLiteral("20.11.2026")};
        };
        const auto arguments = [&](const QString &folder) {
            if (command == u"demo")
                return demo(folder, 250);
            if (command == u"import-legacy")
                return QStringList{command, QStringLiteral("--data-dir"), folder, QStringLiteral("--from"),
                                   qEnvironmentVariable("VELMORATA_TEST_DATA") + QStringLiteral("/legacy")};
            return QStringList{command, QStringLiteral("--data-dir"), folder, command == u"restore" ? archive : csv};
        };
        // A restore puts a large practice's archive over a small practice.
        const QString large = work.filePath(QStringLiteral("large")), small = work.filePath(QStringLiteral("small"));
        if (command == u"restore") {
            run(demo(large, 1500), 120000);
            run({QStringLiteral("backup"), QStringLiteral("--data-dir"), large, archive}, 120000);
            run(demo(small, 80), 120000);
        }
        const auto prepare = [&](const QString &folder) {
            if (command == u"restore")
                copyFolder(small, folder);
            else
                prepareFolder(folder);
        };
        const QString finished = work.filePath(QStringLiteral("finished"));
        prepare(finished);
        const FileState before = look(finished, tables);
        const qint64 duration = run(arguments(finished), 60000);
        const FileState after = look(finished, tables);
        QVERIFY2(before.counts != after.counts, qPrintable(before.text())); // the command did write

        QRandomGenerator random(20261120);
        int killedMidway = 0;
        for (int trial = 0; trial < 6; ++trial) {
            const QString folder = work.filePath(QStringLiteral("trial%1").arg(trial));
            prepare(folder);
            const qint64 ran = run(arguments(folder), random.bounded(duration));
            const FileState found = look(folder, tables);
            QCOMPARE(found.integrity, QStringLiteral("ok"));
            QVERIFY2(found.counts == before.counts || found.counts == after.counts,
                     qPrintable(QStringLiteral("after %1 ms: %2").arg(ran).arg(found.text())));
            killedMidway += found.counts == before.counts ? 1 : 0;
        }
        QVERIFY(killedMidway > 0); // at least one kill fell inside the write
    }

private:
    QString writePostCodes(const QString &path)
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            qFatal("cannot write %s", qPrintable(path));
        file.write("PKod,Tawn,Obsh,Obl,ZK,ZdRn\n");
        for (int code = 100000; code < 130000; ++code)
            file.write(QByteArray::number(code) + ",гр. Примерно,Община,Област,03,06\n");
        return path;
    }
};

QTEST_GUILESS_MAIN(TestKillDuringWrite)
#include "tst_KillDuringWrite.moc"
