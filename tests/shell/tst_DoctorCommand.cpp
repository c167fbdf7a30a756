// velmorata doctor add: the doctor form's checks and messages on the command line, the code
// read twice from standard input when that is no terminal.
#include "admin/AccessCodes.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

struct Run
{
    int exitCode;
    QString out;
    QString err;
};

Run addDoctor(const QString &folder, const QStringList &options, const QByteArray &input)
{
    QProcess process;
    process.start(qEnvironmentVariable("VELMORATA_BINARY"),
                  QStringList{QStringLiteral("doctor"), QStringLiteral("add"), QStringLiteral("--data-dir"), folder} +
                      options);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(60000))
        qFatal("velmorata did not finish");
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

// Names and codes of the stored doctors, the code checked against `code`.
QStringList doctorsMatching(const QString &folder, const QString &code)
{
    if (!store::openStore(store::DataPaths::inFolder(folder)).ok())
        qFatal("cannot open %s", qPrintable(folder));
    QStringList found;
    {
        QSqlQuery rows =
            store::run(store::clinicDb(), QStringLiteral("SELECT Names, KodMedic, Password FROM Medic ORDER BY ID"));
        while (rows.next())
            if (accesscodes::matches(rows.value(2).toString(), code))
                found << rows.value(0).toString() + u'/' + rows.value(1).toString();
    }
    store::closeStore();
    return found;
}

const QStringList Complete{QStringLiteral("--name"),     QStringLiteral("Мария Петрова"), QStringLiteral("--number"),
                           QStringLiteral("7501010000"), QStringLiteral("--practice"),    QStringLiteral("2201234567")};

} // namespace

class TestDoctorCommand final : public QObject
{
    Q_OBJECT
  private slots:
    void addsADoctor()
    {
        QTemporaryDir folder;
        const Run run = addDoctor(folder.path(), Complete, "секрет1\nсекрет1\n");
        QVERIFY2(run.exitCode == 0, qPrintable(run.err));
        QCOMPARE(run.out.count(u'\n'), 1);
        QVERIFY(run.out.contains(QStringLiteral("Мария Петрова")));
        QVERIFY(run.err.isEmpty());
        QCOMPARE(doctorsMatching(folder.path(), QStringLiteral("секрет1")),
                 QStringList{QStringLiteral("Мария Петрова/2201234567")});
        // The same name again would hide the first doctor at sign-in.
        const Run again = addDoctor(folder.path(), Complete, "друг123\nдруг123\n");
        QCOMPARE(again.exitCode, 1);
        QVERIFY(again.err.contains(QStringLiteral("Мария Петрова")));
    }

    void refusesWhatTheFormRefuses_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QString>("message");
        QTest::newRow("no name") << Complete.mid(2) << QByteArray("секрет1\nсекрет1\n")
                                 << QStringLiteral("Моля, попълнете името на стоматолога!");
        QTest::newRow("no practice") << Complete.mid(0, 4) << QByteArray("секрет1\nсекрет1\n")
                                     << QStringLiteral("Моля, попълнете кода на практиката на стоматолога!");
        QTest::newRow("no code") << Complete << QByteArray() << QStringLiteral("Моля, попълнете паролата!");
        QTest::newRow("five characters") << Complete << QByteArray("12345\n12345\n")
                                         << QStringLiteral("Минималната дължина на паролата е повече от 6 символа!");
        QTest::newRow("not repeated alike") << Complete << QByteArray("секрет1\nсекрет2\n")
                                            << QStringLiteral("Кодът за достъп не е потвърден, опитайте отново!");
        QTest::newRow("repeated line missing") << Complete << QByteArray("секрет1\n")
                                               << QStringLiteral("Кодът за достъп не е потвърден, опитайте отново!");
    }
    void refusesWhatTheFormRefuses()
    {
        QFETCH(QStringList, options);
        QFETCH(QByteArray, input);
        QFETCH(QString, message);
        QTemporaryDir folder;
        const Run run = addDoctor(folder.path(), options, input);
        QCOMPARE(run.exitCode, 1);
        QCOMPARE(run.err.trimmed(), QStringLiteral("doctor: ") + message);
        QVERIFY(run.out.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestDoctorCommand)
#include "tst_DoctorCommand.moc"
