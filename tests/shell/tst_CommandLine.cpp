#include "store/Sql.h"
#include "store/Store.h"

#include <QFileInfo>
#include <QProcess>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

namespace {

struct Run
{
    int exitCode;
    QString out;
    QString err;
};

void start(QProcess &process, const QStringList &arguments)
{
    process.start(qEnvironmentVariable("VELMORATA_BINARY"), arguments);
}

// A run that waits for a sign-in instead of ending is a fault in itself: it is stopped at the
// limit and reported as such.
Run finish(QProcess &process, int limit = 120000)
{
    if (!process.waitForFinished(limit)) {
        process.kill();
        process.waitForFinished();
        return {-1, {}, QStringLiteral("did not finish")};
    }
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

Run velmorata(const QStringList &arguments, int limit = 120000)
{
    QProcess process;
    start(process, arguments);
    return finish(process, limit);
}

QStringList column(const QString &folder, const QString &sql)
{
    if (!store::openStore(store::DataPaths::inFolder(folder)).ok())
        qFatal("cannot open %s", qPrintable(folder));
    QStringList values;
    {
        QSqlQuery query = store::run(store::clinicDb(), sql);
        while (query.next())
            values << query.value(0).toString();
    }
    store::closeStore();
    return values;
}

Run demo(const QString &folder, const QString &seed)
{
    return velmorata({QStringLiteral("demo"), QStringLiteral("--data-dir"), folder, QStringLiteral("--patients"),
                      QStringLiteral("60"), QStringLiteral("--seed"), seed, QStringLiteral("--today"),
                      QStringLiteral("20.11.2026")});
}

} // namespace

class TestCommandLine final : public QObject
{
    Q_OBJECT
private slots:
    void egn_data()
    {
        QTest::addColumn<QString>("number");
        QTest::addColumn<QString>("line");
        QTest::newRow("good") << "7501012347" << "7501012347\t0\t0\t0\t01.01.1975\tМ\t1";
        QTest::newRow("turns eighteen today") << "0843150004" << "0843150004\t0\t0\t1\t15.3.2008\tМ\t0";
        QTest::newRow("no birth date") << "7501000000" << "7501000000\t0\t0\t1\t00.01.1975\tМ\t?";
        QTest::newRow("2010 refused") << "1041015557" << "1041015557\t0\t1\t0\t01.1.2010\tЖ\t0";
        QTest::newRow("letters") << "abc" << "abc\t0\t1\t0\t.c.19ab\tМ\t?";
        QTest::newRow("tab inside, one escaped line") << "75010\t12347" << "75010\\t12347\t0\t0\t0\t0\\t.01.1975\tЖ\t?";
        QTest::newRow("line break and backslash") << "7\r\n0\\1" << "7\\r\\n0\\\\1\t0\t0\t1\t\\\\1.\\n0.197\\r\tМ\t?";
    }
    void egn()
    {
        QFETCH(QString, number);
        QFETCH(QString, line);
        const Run result = velmorata({QStringLiteral("egn"), QStringLiteral("--today"), QStringLiteral("15.03.2026"), number});
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(result.out, line + u'\n');
    }

    void egnRefusesBadArguments()
    {
        QCOMPARE(velmorata({QStringLiteral("egn"), QStringLiteral("--today"), QStringLiteral("31.02.2026"), QStringLiteral("1")}).exitCode, 2);
        QCOMPARE(velmorata({QStringLiteral("egn")}).exitCode, 2);
    }

    void anUnknownCommandListsTheCommandsWithoutAWindow_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("a word") << QStringList{QStringLiteral("frobnicate")};
        QTest::newRow("a verb of a later version, with options") << QStringList{QStringLiteral("invoice"), QStringLiteral("--data-dir"), QStringLiteral("x")};
    }
    void anUnknownCommandListsTheCommandsWithoutAWindow()
    {
        QFETCH(QStringList, arguments);
        const Run result = velmorata(arguments, 20000);
        QCOMPARE(result.exitCode, 2);
        QVERIFY2(result.err.contains(QStringLiteral("unknown command \"%1\"").arg(arguments.first())), qPrintable(result.err));
        for (const char *verb : {"egn", "demo", "import-postcodes"})
            QVERIFY2(result.err.contains(QLatin1String(verb)), verb);
        QVERIFY(result.out.isEmpty());
    }

    void versionAndHelpNeedNoWindow()
    {
        const Run version = velmorata({QStringLiteral("--version")});
        QCOMPARE(version.exitCode, 0);
        QVERIFY(version.out.contains(QStringLiteral("Velmorata")));
        const Run help = velmorata({QStringLiteral("--help")});
        QCOMPARE(help.exitCode, 0);
        QVERIFY(help.out.contains(QStringLiteral("import-postcodes")));
    }

    void demoIsDeterministicForASeed()
    {
        QTemporaryDir one, two, three;
        QCOMPARE(demo(one.path(), QStringLiteral("5")).exitCode, 0);
        QCOMPARE(demo(two.path(), QStringLiteral("5")).exitCode, 0);
        QCOMPARE(demo(three.path(), QStringLiteral("6")).exitCode, 0);
        const QString sql = QStringLiteral("SELECT EGN || Names || COALESCE(PKod, '') FROM Pacients ORDER BY ID");
        const QStringList first = column(one.path(), sql);
        QCOMPARE(first.size(), 60);
        QCOMPARE(column(two.path(), sql), first);
        QVERIFY(column(three.path(), sql) != first);
        const QString lines = QStringLiteral("SELECT EGN || Data || KodHelp || ListID || Cena FROM Help ORDER BY ID");
        QCOMPARE(column(two.path(), lines), column(one.path(), lines));
    }

    void demoRefusesAPracticeWithPeople()
    {
        QTemporaryDir folder;
        QCOMPARE(demo(folder.path(), QStringLiteral("1")).exitCode, 0);
        const Run again = demo(folder.path(), QStringLiteral("1"));
        QCOMPARE(again.exitCode, 1);
        QVERIFY(again.err.contains(folder.path()));
        QCOMPARE(column(folder.path(), QStringLiteral("SELECT COUNT(*) FROM Pacients")), QStringList{QStringLiteral("60")});
    }

    void importPostcodesReportsTheBrokenLine()
    {
        QTemporaryDir folder;
        const QString csv = folder.filePath(QStringLiteral("codes.csv"));
        QFile file(csv);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("PKod,Tawn,Obsh,Obl,ZK,ZdRn\n1000,a,b,c,22,01\n\"1001,a\n");
        file.close();
        const Run result = velmorata({QStringLiteral("import-postcodes"), QStringLiteral("--data-dir"), folder.path(), csv});
        QCOMPARE(result.exitCode, 1);
        QVERIFY2(result.err.contains(QStringLiteral("ред 3")), qPrintable(result.err));
    }

    // Two writers started together on one new folder: every time one practice and one clear
    // refusal, never a deleted, broken or merged file.
    void twoWritersOnOneNewFolder()
    {
        for (int trial = 0; trial < 4; ++trial) {
            QTemporaryDir dir;
            const QString folder = dir.filePath(QStringLiteral("practice"));
            const QStringList arguments{QStringLiteral("demo"), QStringLiteral("--data-dir"), folder,
                                        QStringLiteral("--patients"), QStringLiteral("100")};
            QProcess first, second;
            start(first, arguments);
            start(second, arguments);
            const Run one = finish(first);
            const Run two = finish(second);
            QCOMPARE(one.exitCode + two.exitCode, 1);
            const Run &refused = one.exitCode ? one : two;
            QVERIFY2(refused.err.contains(folder)
                         && (refused.err.contains(QStringLiteral("вече работи")) || refused.err.contains(QStringLiteral("вече съдържа"))),
                     qPrintable(refused.err));
            QCOMPARE(column(folder, QStringLiteral("PRAGMA quick_check")), QStringList{QStringLiteral("ok")});
            QCOMPARE(column(folder, QStringLiteral("SELECT COUNT(*) FROM Medic")), QStringList{QStringLiteral("2")});
            QCOMPARE(column(folder, QStringLiteral("SELECT COUNT(*) FROM Pacients")), QStringList{QStringLiteral("100")});
        }
    }

    void aWiderFolderIsMadePrivateWithOneLine()
    {
        QTemporaryDir dir;
        QFile::setPermissions(dir.path(), QFileDevice::Permissions(0x7755));
        const Run made = demo(dir.path(), QStringLiteral("1"));
        QCOMPARE(made.exitCode, 0);
        QCOMPARE(made.err.count(u'\n'), 1);
        QVERIFY2(made.err.contains(dir.path()), qPrintable(made.err));
        QCOMPARE(QFileInfo(dir.path()).permissions(), QFileDevice::Permissions(0x7700));
    }

    void anEmptyClinicFileIsNotTakenForANewPractice()
    {
        QTemporaryDir dir;
        const QString clinic = dir.filePath(QStringLiteral("velmorata.db"));
        QFile empty(clinic);
        QVERIFY(empty.open(QIODevice::WriteOnly));
        empty.close();
        const Run refused = demo(dir.path(), QStringLiteral("1"));
        QCOMPARE(refused.exitCode, 1);
        QVERIFY2(refused.err.contains(clinic) && refused.err.contains(QStringLiteral("архив")), qPrintable(refused.err));
        QCOMPARE(QFileInfo(clinic).size(), 0);
    }
};

QTEST_GUILESS_MAIN(TestCommandLine)
#include "tst_CommandLine.moc"
