// The command line: the built program run without a window on temporary folders, and the
// read-only prints run in the test's own process.
#include "CommandRun.h"
#include "TestPractice.h"

#include "admin/AccessCodes.h"
#include "base/ui/PrintRenderer.h"
#include "shell/cli/PrintCommand.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

void start(QProcess &process, const QStringList &arguments, const QByteArray &input = {},
           const QString &workingFolder = {})
{
    process.setWorkingDirectory(workingFolder);
    process.start(qEnvironmentVariable("VELMORATA_BINARY"), arguments);
    process.write(input);
    process.closeWriteChannel();
}

// A run that waits for a sign-in instead of ending is a fault in itself: it is stopped at the
// limit and reported as such.
CommandRun finish(QProcess &process, int limit = 120000)
{
    if (!process.waitForFinished(limit)) {
        process.kill();
        process.waitForFinished();
        return {-1, {}, u"did not finish"_s};
    }
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

CommandRun velmorata(const QStringList &arguments, const QByteArray &input = {}, const QString &workingFolder = {})
{
    QProcess process;
    start(process, arguments, input, workingFolder);
    return finish(process);
}

// The first column of every row the query gives on the practice in `folder`.
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

CommandRun demo(const QString &folder, const QString &seed)
{
    return velmorata({u"demo"_s, u"--data-dir"_s, folder, u"--patients"_s, u"60"_s, u"--seed"_s, seed, u"--today"_s,
                      u"20.11.2026"_s});
}

const QStringList Doctor{u"--name"_s,       u"Мария Петрова"_s, u"--number"_s,
                         u"7501010000"_s,   u"--practice"_s,    u"2201234567"_s};

CommandRun addDoctor(const QString &folder, const QStringList &options, const QByteArray &input)
{
    return velmorata(QStringList{u"doctor"_s, u"add"_s, u"--data-dir"_s, folder} + options, input);
}

const QString Printed = u"2223945198"_s;

const QStringList Period{u"--doctor"_s, u"2201234567"_s, u"--from"_s, u"01.03.2026"_s, u"--to"_s, u"31.03.2026"_s};

int modeOf(const QString &path)
{
    struct stat info {};
    return ::stat(QFile::encodeName(path).constData(), &info) == 0 ? int(info.st_mode & 0777) : -1;
}

QStringList entriesOf(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

// A file of the user's own, readable by others as such files are.
void writeUsersFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write("the user's own\n") < 0)
        qFatal("cannot write %s", qPrintable(path));
    file.close();
    ::chmod(QFile::encodeName(path).constData(), 0644);
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
        QTest::newRow("good") << "7501012347" << "7501012347\t0\t0\t0\t01.01.1975\tМ\t1\t0";
        QTest::newRow("turns eighteen today") << "0843150004" << "0843150004\t0\t0\t1\t15.3.2008\tМ\t0\t0";
        QTest::newRow("no birth date") << "7501000000" << "7501000000\t0\t0\t1\t00.01.1975\tМ\t?\t0";
        // The three tests read a letter as 0 and pass these; the card refuses them.
        QTest::newRow("letter O for zeros") << "85O1O11234" << "85O1O11234\t0\t0\t0\tO1.O1.1985\tЖ\t?\t1";
        QTest::newRow("nine digits, missing tenth read as 0") << "750101100" << "750101100\t0\t0\t0\t01.01.1975\tМ\t1\t1";
        QTest::newRow("eleven digits") << "75010123470" << "75010123470\t0\t0\t0\t01.01.1975\tМ\t1\t1";
        QTest::newRow("tab inside, one escaped line") << "75010\t12347" << "75010\\t12347\t0\t0\t0\t0\\t.01.1975\tЖ\t?\t1";
        QTest::newRow("line break and backslash") << "7\r\n0\\1" << "7\\r\\n0\\\\1\t0\t0\t1\t\\\\1.\\n0.197\\r\tМ\t?\t1";
    }
    void egn()
    {
        QFETCH(QString, number);
        QFETCH(QString, line);
        const CommandRun result = velmorata({u"egn"_s, u"--today"_s, u"15.03.2026"_s, number});
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(result.out, line + u'\n');
    }

    // A child born in 2015: the system's rule finds a month fault, the public rule none; the
    // birth date and the age read the same by both.
    void egnByEitherRule_data()
    {
        QTest::addColumn<QStringList>("rule");
        QTest::addColumn<QString>("line");
        QTest::newRow("default") << QStringList{} << "1545120008\t0\t1\t0\t12.5.2015\tМ\t0\t0";
        QTest::newRow("system") << QStringList{"--egn-rule", "system"} << "1545120008\t0\t1\t0\t12.5.2015\tМ\t0\t0";
        QTest::newRow("public") << QStringList{"--egn-rule", "public"} << "1545120008\t0\t0\t0\t12.5.2015\tМ\t0\t0";
    }
    void egnByEitherRule()
    {
        QFETCH(QStringList, rule);
        QFETCH(QString, line);
        const CommandRun result = velmorata(QStringList{u"egn"_s, u"--today"_s, u"15.03.2026"_s} + rule + QStringList{u"1545120008"_s});
        QCOMPARE(result.exitCode, 0);
        QCOMPARE(result.out, line + u'\n');
    }

    // Runs that need no practice and no window: what they print, and where.
    void plainRuns_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QStringList>("said"); // on stdout for exit code 0, on stderr otherwise
        const QStringList verbs{"egn", "demo", "import-postcodes"};
        QTest::newRow("a word") << QStringList{"frobnicate"} << 2 << QStringList{"unknown command \"frobnicate\""} + verbs;
        QTest::newRow("a verb of a later version, with options")
            << QStringList{"invoice", "--data-dir", "x"} << 2 << QStringList{"unknown command \"invoice\""} + verbs;
        QTest::newRow("--version") << QStringList{"--version"} << 0 << QStringList{"Velmorata"};
        QTest::newRow("egn, today no date") << QStringList{"egn", "--today", "31.02.2026", "1"} << 2 << QStringList{};
        QTest::newRow("egn, a rule of no name") << QStringList{"egn", "--egn-rule", "lax", "1"} << 2 << QStringList{"public or system"};
        QTest::newRow("report with options only") << QStringList{"report", "--doctor", "1", "--from", "01.01.2026"} << 2
                                                  << QStringList{"report: no report named", "report xml"};
        QTest::newRow("print with options only") << QStringList{"print", "--data-dir", "x", "--pdf", "f.pdf"} << 2
                                                 << QStringList{"print: no form named", "sheet"};
    }
    void plainRuns()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, exitCode);
        QFETCH(QStringList, said);
        const CommandRun result = velmorata(arguments);
        QCOMPARE(result.exitCode, exitCode);
        for (const QString &part : said)
            QVERIFY2((exitCode ? result.err : result.out).contains(part), qPrintable(part));
        if (exitCode)
            QVERIFY(result.out.isEmpty());
    }

    void demoIsDeterministicForASeedAndRefusesAPracticeWithPeople()
    {
        QTemporaryDir one, two, three;
        QCOMPARE(demo(one.path(), u"5"_s).exitCode, 0);
        QCOMPARE(demo(two.path(), u"5"_s).exitCode, 0);
        QCOMPARE(demo(three.path(), u"6"_s).exitCode, 0);
        const QString sql = u"SELECT EGN || Names || COALESCE(PKod, '') FROM Pacients ORDER BY ID"_s;
        const QStringList first = column(one.path(), sql);
        QCOMPARE(first.size(), 60);
        QCOMPARE(column(two.path(), sql), first);
        QVERIFY(column(three.path(), sql) != first);
        const QString lines = u"SELECT EGN || Data || KodHelp || ListID || Cena FROM Help ORDER BY ID"_s;
        QCOMPARE(column(two.path(), lines), column(one.path(), lines));
        const CommandRun again = demo(one.path(), u"1"_s);
        QCOMPARE(again.exitCode, 1);
        QVERIFY(again.err.contains(one.path()));
        QCOMPARE(column(one.path(), sql), first);
    }

    void importPostcodesReportsTheBrokenLine()
    {
        QTemporaryDir folder;
        const QString csv = folder.filePath(u"codes.csv"_s);
        QFile file(csv);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("PKod,Tawn,Obsh,Obl,ZK,ZdRn\n1000,a,b,c,22,01\n\"1001,a\n");
        file.close();
        QCOMPARE(addDoctor(folder.path(), Doctor, "секрет1\nсекрет1\n").exitCode, 0);
        const CommandRun result = velmorata({u"import-postcodes"_s, u"--data-dir"_s, folder.path(), csv});
        QCOMPARE(result.exitCode, 1);
        QVERIFY2(result.err.contains(u"ред 3"_s), qPrintable(result.err));
    }

    // Two writers started together on one new folder: every time one practice and one clear
    // refusal, never a deleted, broken or merged file.
    void twoWritersOnOneNewFolder()
    {
        for (int trial = 0; trial < 4; ++trial) {
            QTemporaryDir dir;
            const QString folder = dir.filePath(u"practice"_s);
            const QStringList arguments{u"demo"_s, u"--data-dir"_s, folder, u"--patients"_s, u"100"_s};
            QProcess first, second;
            start(first, arguments);
            start(second, arguments);
            const CommandRun one = finish(first);
            const CommandRun two = finish(second);
            QCOMPARE(one.exitCode + two.exitCode, 1);
            const CommandRun &refused = one.exitCode ? one : two;
            QVERIFY2(refused.err.contains(folder) &&
                         (refused.err.contains(u"вече работи"_s) || refused.err.contains(u"вече съдържа"_s)),
                     qPrintable(refused.err));
            QCOMPARE(column(folder, u"PRAGMA quick_check"_s), QStringList{u"ok"_s});
            QCOMPARE(column(folder, u"SELECT COUNT(*) FROM Medic"_s), QStringList{u"2"_s});
            QCOMPARE(column(folder, u"SELECT COUNT(*) FROM Pacients"_s), QStringList{u"100"_s});
        }
    }

    // The folder holds health data and is tightened; a file of the user's own in it is not ours to touch.
    void aWiderFolderIsMadePrivateWithOneLine()
    {
        QTemporaryDir dir;
        QFile::setPermissions(dir.path(), QFileDevice::Permissions(0x7755));
        writeUsersFile(dir.filePath(u"notes.txt"_s));
        const CommandRun made = demo(dir.path(), u"1"_s);
        QCOMPARE(made.exitCode, 0);
        QCOMPARE(made.err.count(u'\n'), 1);
        QVERIFY2(made.err.contains(dir.path()), qPrintable(made.err));
        QCOMPARE(modeOf(dir.path()), 0700);
        QCOMPARE(modeOf(dir.filePath(u"velmorata.db"_s)), 0600);
        QCOMPARE(modeOf(dir.filePath(u"notes.txt"_s)), 0644);
    }

    // An empty --data-dir is a fault of the command line, never the current folder: the window
    // and every command refuse it, and the folder they were started in is left as it was.
    void anEmptyDataFolderIsRefused_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("window") << QStringList{"--data-dir", ""};
        QTest::newRow("window, --data-dir=") << QStringList{"--data-dir="};
        QTest::newRow("demo") << QStringList{"demo", "--data-dir", ""};
        QTest::newRow("doctor add") << QStringList{"doctor", "add", "--data-dir", ""} + Doctor;
        QTest::newRow("report") << QStringList{"report", "activity", "--data-dir", ""} + Period;
        QTest::newRow("print") << QStringList{"print", "record", "--data-dir", "", "--egn", "7501012347", "--pdf", "r.pdf"};
        QTest::newRow("accounting") << QStringList{"accounting", "--data-dir", ""} + Period.mid(2);
        QTest::newRow("backup") << QStringList{"backup", "--data-dir", "", "copy.arh"};
        QTest::newRow("restore") << QStringList{"restore", "--data-dir", "", "notes.txt"};
        QTest::newRow("repair") << QStringList{"repair", "--data-dir", ""};
        QTest::newRow("clean-out") << QStringList{"clean-out", "--data-dir", "", "--doctor", "1", "--yes"};
        QTest::newRow("import-zoks") << QStringList{"import-zoks", "--data-dir", "", "--doctor", "1", "notes.txt"};
        QTest::newRow("import-postcodes") << QStringList{"import-postcodes", "--data-dir", "", "notes.txt"};
        QTest::newRow("import-legacy") << QStringList{"import-legacy", "--data-dir", "", "--from", "."};
    }
    void anEmptyDataFolderIsRefused()
    {
        QFETCH(QStringList, arguments);
        QTemporaryDir dir;
        QFile::setPermissions(dir.path(), QFileDevice::Permissions(0x7755));
        writeUsersFile(dir.filePath(u"notes.txt"_s));
        const CommandRun run = velmorata(arguments, "секрет1\nсекрет1\n", dir.path());
        QCOMPARE(run.exitCode, 2);
        QVERIFY2(run.err.contains(u"--data-dir"_s), qPrintable(run.err));
        QVERIFY(run.out.isEmpty());
        QCOMPARE(entriesOf(dir.path()), QStringList{u"notes.txt"_s});
        QCOMPARE(modeOf(dir.path()), 0755);
        QCOMPARE(modeOf(dir.filePath(u"notes.txt"_s)), 0644);
    }

    // A folder that holds no practice, a mistyped --data-dir most likely, is refused by every
    // command that needs one, naming it; nothing is made: not the folder, not a file, not the lock.
    void aFolderWithoutAPracticeIsRefused_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("exitCode");
        QTest::newRow("report") << QStringList{"report", "activity"} + Period << 1;
        QTest::newRow("report as PDF") << QStringList{"report", "summary", "--pdf", "r.pdf"} + Period << 1;
        QTest::newRow("XML report") << QStringList{"report", "xml", "--out", "r.xml"} + Period << 1;
        QTest::newRow("claims check") << QStringList{"report", "check"} + Period << 2;
        QTest::newRow("print") << QStringList{"print", "record", "--egn", "7501012347", "--pdf", "r.pdf"} << 1;
        QTest::newRow("accounting") << QStringList{"accounting"} + Period.mid(2) << 1;
        QTest::newRow("accounting, booking") << QStringList{"accounting", "--book", "1"} + Period.mid(2) << 1;
        QTest::newRow("backup") << QStringList{"backup", "copy.arh"} << 1;
        QTest::newRow("repair") << QStringList{"repair"} << 1;
        QTest::newRow("repair, dry run") << QStringList{"repair", "--dry-run"} << 1;
        QTest::newRow("clean-out") << QStringList{"clean-out", "--doctor", "1", "--yes"} << 1;
        QTest::newRow("import-zoks") << QStringList{"import-zoks", "--doctor", "1", "zoks.mdb"} << 1;
        QTest::newRow("import-postcodes") << QStringList{"import-postcodes", "codes.csv"} << 1;
    }
    void aFolderWithoutAPracticeIsRefused()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, exitCode);
        QTemporaryDir dir;
        const QString empty = dir.filePath(u"empty"_s);
        QVERIFY(QDir().mkpath(empty));
        for (const QString &folder : {dir.filePath(u"mistyped"_s), empty}) {
            const CommandRun run = velmorata(arguments + QStringList{u"--data-dir"_s, folder}, {}, dir.path());
            QCOMPARE(run.exitCode, exitCode);
            QVERIFY2(run.err.contains(folder), qPrintable(run.err));
        }
        QCOMPARE(entriesOf(dir.path()), QStringList{u"empty"_s});
        QCOMPARE(entriesOf(empty), QStringList());
    }

    void anEmptyClinicFileIsNotTakenForANewPractice()
    {
        QTemporaryDir dir;
        const QString clinic = dir.filePath(u"velmorata.db"_s);
        QFile empty(clinic);
        QVERIFY(empty.open(QIODevice::WriteOnly));
        empty.close();
        const CommandRun refused = demo(dir.path(), u"1"_s);
        QCOMPARE(refused.exitCode, 1);
        QVERIFY2(refused.err.contains(clinic) && refused.err.contains(u"архив"_s), qPrintable(refused.err));
        QCOMPARE(QFileInfo(clinic).size(), 0);
    }

    // Runs that only read leave the folder as they found it: no log of the engine's, no index of
    // it, no scratch file. (The engine leaves its log behind when the last connection to close
    // was opened read-only.)
    void readingRunsLeaveTheFolderAsTheyFoundIt_data()
    {
        QTest::addColumn<QStringList>("arguments");
        const QStringList march{u"--from"_s, u"01.10.2026"_s, u"--to"_s, u"31.10.2026"_s};
        QTest::newRow("report") << QStringList{"report", "activity", "--doctor", "DOCTOR"} + march;
        QTest::newRow("report as PDF") << QStringList{"report", "summary", "--doctor", "DOCTOR", "--pdf", "OUTSIDE/r.pdf"} + march;
        QTest::newRow("claims check") << QStringList{"report", "check", "--doctor", "DOCTOR", "--today", "20.11.2026"} + march;
        QTest::newRow("print") << QStringList{"print", "record", "--egn", "PATIENT", "--pdf", "OUTSIDE/r.pdf"};
        QTest::newRow("accounting") << QStringList{"accounting"} + march;
        QTest::newRow("backup") << QStringList{"backup", "OUTSIDE/copy.arh"};
        QTest::newRow("repair, dry run") << QStringList{"repair", "--dry-run"};
    }
    void readingRunsLeaveTheFolderAsTheyFoundIt()
    {
        QFETCH(QStringList, arguments);
        const QString folder = m_demo.filePath(u"practice"_s);
        if (!QFile::exists(folder))
            QCOMPARE(demo(folder, u"3"_s).exitCode, 0);
        const QStringList before = entriesOf(folder);
        QVERIFY2(!before.contains(u"velmorata.db-wal"_s), qPrintable(before.join(u' ')));
        const QString doctor = column(folder, u"SELECT KodMedic FROM Medic ORDER BY ID"_s).value(0);
        const QString patient = column(folder, u"SELECT EGN FROM Pacients ORDER BY ID"_s).value(0);
        QTemporaryDir outside;
        arguments.replaceInStrings(u"DOCTOR"_s, doctor).replaceInStrings(u"PATIENT"_s, patient)
            .replaceInStrings(u"OUTSIDE"_s, outside.path());
        const CommandRun run = velmorata(arguments + QStringList{u"--data-dir"_s, folder});
        QVERIFY2(run.exitCode == 0, qPrintable(run.err));
        QCOMPARE(entriesOf(folder), before);
    }

    // velmorata doctor add: the code read twice from standard input when that is no terminal.
    void doctorAdd()
    {
        QTemporaryDir folder;
        const CommandRun run = addDoctor(folder.path(), Doctor, "секрет1\nсекрет1\n");
        QVERIFY2(run.exitCode == 0, qPrintable(run.err));
        QCOMPARE(run.out.section(u'\n', 0, 0), u"New practice in "_s + folder.path()); // the first doctor starts it
        QVERIFY(run.out.section(u'\n', 1).contains(u"Мария Петрова"_s));
        QVERIFY(run.err.isEmpty());
        QCOMPARE(column(folder.path(), u"SELECT Names || '/' || KodMedic FROM Medic"_s),
                 QStringList{u"Мария Петрова/2201234567"_s});
        QVERIFY(accesscodes::matches(column(folder.path(), u"SELECT Password FROM Medic"_s).value(0), u"секрет1"_s));
    }

    void doctorAddRefusesWhatTheFormRefuses_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QString>("message");
        const QByteArray code("секрет1\nсекрет1\n");
        QTest::newRow("no name") << Doctor.mid(2) << code << "Моля, попълнете името на стоматолога!";
        QTest::newRow("no code") << Doctor << QByteArray() << "Моля, попълнете паролата!";
        QTest::newRow("not repeated alike") << Doctor << QByteArray("секрет1\nсекрет2\n")
                                            << "Кодът за достъп не е потвърден, опитайте отново!";
        QTest::newRow("repeated line missing") << Doctor << QByteArray("секрет1\n")
                                               << "Кодът за достъп не е потвърден, опитайте отново!";
    }
    void doctorAddRefusesWhatTheFormRefuses()
    {
        QFETCH(QStringList, options);
        QFETCH(QByteArray, input);
        QFETCH(QString, message);
        QTemporaryDir folder;
        const CommandRun run = addDoctor(folder.path(), options, input);
        QCOMPARE(run.exitCode, 1);
        QCOMPARE(run.err.trimmed(), u"doctor: "_s + message);
        QVERIFY(run.out.isEmpty());
    }

    // The read-only forms of `velmorata print`: a page where there is something to print, a
    // message and no file where the patient, the doctor or the period is wrong.
    void printFormsPrintOrRefuse_data()
    {
        QTest::addColumn<QStringList>("form");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("said");
        const QString egn = validEgn(QDate(1975, 4, 12));
        const QStringList year{"--from", "01.01.1975", "--to", "31.12.1975"};
        QTest::newRow("record") << QStringList{"record", "--egn", egn} << 0 << "Картон на";
        QTest::newRow("record, unknown EGN") << QStringList{"record", "--egn", "1111111111"} << 1 << "1111111111";
        QTest::newRow("treatment data") << QStringList{"data", "--egn", egn} << 0 << "Данни за лечение";
        QTest::newRow("diary") << QStringList{"diary", "--doctor", Printed, "--date", "20.03.2026"} << 0 << "График за";
        QTest::newRow("diary, unknown doctor") << QStringList{"diary", "--doctor", "999", "--date", "20.03.2026"} << 1
                                               << "999";
        QTest::newRow("diary, not a date") << QStringList{"diary", "--doctor", Printed, "--date", "31.02.2026"} << 1
                                           << "31.02.2026";
        QTest::newRow("born") << QStringList{"list", "born"} + year << 0 << "Списък";
        QTest::newRow("no such list") << QStringList{"list", "died"} + year << 1 << "born, registered or visited";
        QTest::newRow("options before the form") << QStringList{"--egn", egn, "record"} << 0 << "Картон на";
        QTest::newRow("an option with = before the list") << QStringList{"--from=01.01.1975", "list", "born", "--to", "31.12.1975"}
                                                          << 0 << "Списък";
        QTest::newRow("no form, only options") << QStringList{"--egn", egn} << 2 << "print: no form named";
        QTest::newRow("a rule of no name") << QStringList{"record", "--egn", egn, "--egn-rule", "lax"} << 2 << "--egn-rule";
    }
    void printFormsPrintOrRefuse()
    {
        QFETCH(QStringList, form);
        QFETCH(int, exitCode);
        QFETCH(QString, said);
        if (!QFile::exists(m_printed.filePath(u"velmorata.db"_s))) {
            print::installPdfWriter();
            TestPractice practice;
            const QString egn = validEgn(QDate(1975, 4, 12));
            practice.addDoctor(u"Христо Петков"_s, Printed);
            practice.addPatient(egn, u"Петър О'Нийл \"Пепи\""_s, Printed);
            practice.addService(egn, QDate(2026, 3, 2), u"101"_s, Printed);
            store::run(store::clinicDb(), u"INSERT INTO Grafic (KodMedic, Data, Ch3) VALUES (?, '2026-03-20', 'Петър ')"_s,
                       {Printed});
            QVERIFY(practice.copyFilesTo(m_printed.path()));
        }
        const QString pdf = m_printed.filePath(u"form.pdf"_s);
        QFile::remove(pdf);
        PrintCommand command;
        const CommandRun run = runCommand(
            command, QStringList{u"print"_s} + form + QStringList{u"--data-dir"_s, m_printed.path(), u"--pdf"_s, pdf});
        QCOMPARE(run.exitCode, exitCode);
        QVERIFY2((exitCode == 0 ? run.out : run.err).contains(said), qPrintable(run.out + run.err));
        QCOMPARE(QFile::exists(pdf), exitCode == 0);
        QVERIFY(exitCode || QFile(pdf).size() > 1000);
    }

private:
    QTemporaryDir m_printed; // one practice for every print
    QTemporaryDir m_demo;    // one practice for every run that only reads
};

QTEST_MAIN(TestCommandLine)
#include "tst_CommandLine.moc"
