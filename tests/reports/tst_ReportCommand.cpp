#include "CommandRun.h"
#include "TestPractice.h"

#include "base/ui/PrintRenderer.h"
#include "shell/cli/AccountingCommand.h"
#include "shell/cli/ReportCommand.h"
#include "store/Sql.h"

#include <QFile>
#include <QTest>
#include <QXmlStreamReader>

namespace {

const QString Doctor = QStringLiteral("2223945198");

// The command run in this process on the practice copied to `folder`.
template <typename CommandType>
CommandRun runCommand(const QString &verb, const QStringList &arguments, const QString &folder)
{
    CommandType command;
    return runCommand(command, QStringList{verb} + arguments + QStringList{QStringLiteral("--data-dir"), folder});
}

} // namespace

// The month-end reports without a window: the rows on stdout, a PDF, the XML file, and a clear
// refusal with no output where the period, the doctor or the data is wrong.
class TestReportCommand final : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        print::installPdfWriter();
        TestPractice practice;
        practice.addDoctor(QStringLiteral("Христо Петков"), Doctor);
        practice.addPatient(m_adult, QStringLiteral("Петър О'Нийл & Син"), Doctor);
        practice.addPatient(m_child, QStringLiteral("Ана Петрова"), Doctor);
        const QStringList codes{"101", "301", "333", "301Б", "332", "509", "301А"};
        for (const QString &code : codes)
            practice.addService(m_adult, QDate(2026, 3, 2), code, Doctor, QStringLiteral("000001"));
        practice.addService(m_child, QDate(2026, 3, 9), QStringLiteral("101"), Doctor, QStringLiteral("000002"));
        practice.addService(m_child, QDate(2026, 3, 9), QStringLiteral("508"), Doctor, QStringLiteral("000002"));
        store::run(store::clinicDb(), QStringLiteral("UPDATE Help SET Cena = 17.99"));
        store::run(store::clinicDb(), QStringLiteral("UPDATE MedicUnit SET UserUIN = '2300012345', UserID = '2201130457'"));
        QVERIFY(practice.copyFilesTo(m_folder.path()));
    }

    // One line per row of the report's table, the layout's fields in order, dates DD.MM.YYYY.
    void rowsOnStdout_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QStringList>("lines");
        QTest::newRow("activity, seven codes not cut")
            << "activity"
            << QStringList{"02.03.2026\tПетър О'Нийл & Син\t" + m_adult + "\t51\t101,301,301А,301Б,332,333,509\t295",
                           "09.03.2026\tАна Петрова\t" + m_child + "\t5\t101,508\t32"};
        QTest::newRow("summary") << "summary"
                                 << QStringList{"Под 18 години\t1\t\t0\t0\t0\t1\t0", "Над 18 години\t1\t\t3\t1\t1\t0\t1"};
    }
    void rowsOnStdout()
    {
        QFETCH(QString, kind);
        QFETCH(QStringList, lines);
        const CommandRun run = report(kind, {"--from", "01.03.2026", "--to", "31.03.2026"});
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.out.split(u'\n', Qt::SkipEmptyParts), lines);
    }

    // The report's name may stand after its options, as the options may stand after it.
    void theReportsNameAfterItsOptions()
    {
        const QStringList period{"--from", "01.03.2026", "--to", "31.03.2026"};
        const CommandRun first = report(QStringLiteral("summary"), period);
        const CommandRun last = runCommand<ReportCommand>(
            QStringLiteral("report"), QStringList{QStringLiteral("--doctor"), Doctor} + period + QStringList{"summary"},
            m_folder.path());
        QCOMPARE(last.exitCode, 0);
        QVERIFY(!last.out.isEmpty());
        QCOMPARE(last.out, first.out);
    }

    void specificationCells()
    {
        const CommandRun run = report(QStringLiteral("specification"), {"--from", "01.03.2026", "--to", "31.03.2026"});
        QCOMPARE(run.exitCode, 0);
        const QStringList lines = run.out.split(u'\n', Qt::SkipEmptyParts);
        for (const char *cell : {"Label68\t1", "Label86\t3", "Label87\t63.39", "Label110\t1", "Label128\t1",
                                    "Label52\t2", "Label213\t3", "Label220\t5"})
            QVERIFY2(lines.contains(QString::fromUtf8(cell)), qPrintable(QString::fromUtf8(cell) + QStringLiteral(" not in ") + lines.join(u'|')));
    }

    void printedFormsAsPdf_data()
    {
        QTest::addColumn<QString>("kind");
        for (const char *kind : {"activity", "summary", "specification", "materials"})
            QTest::newRow(kind) << kind;
    }
    void printedFormsAsPdf()
    {
        QFETCH(QString, kind);
        const QString pdf = m_folder.filePath(kind + QStringLiteral(".pdf"));
        const CommandRun run = report(kind, {"--from", "01.03.2026", "--to", "31.03.2026", "--pdf", pdf});
        QVERIFY2(run.exitCode == 0, qPrintable(run.err));
        QFile file(pdf);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.read(5) == "%PDF-");
    }

    void xmlReportParses()
    {
        const QString target = m_folder.filePath(QStringLiteral("2300012345-032026.xml"));
        const CommandRun run = report(QStringLiteral("xml"), {"--from", "01.03.2026", "--to", "31.03.2026", "--today",
                                                           "02.04.2026", "--out", target});
        QCOMPARE(run.exitCode, 0);
        QFile file(target);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.peek(3) == "\xEF\xBB\xBF");
        QXmlStreamReader xml(&file);
        QStringList prices;
        while (!xml.atEnd())
            if (xml.readNext() == QXmlStreamReader::StartElement) {
                if (xml.name() == u"report")
                    QCOMPARE(xml.attributes().value(QStringLiteral("reportingDate")), u"2026-4-2");
                if (xml.name() == u"service")
                    prices << xml.attributes().value(QStringLiteral("repPrice")).toString();
            }
        QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
        QCOMPARE(prices.size(), 9);
        QCOMPARE(prices.first(), QStringLiteral("17.99"));
    }

    // The claims check: one finding per line, exit 1 with findings and 0 for a clean period.
    void claimsCheck()
    {
        const QStringList march{"--from", "01.03.2026", "--to", "31.03.2026", "--today", "02.04.2026"};
        const CommandRun found = report(QStringLiteral("check"), march);
        QCOMPARE(found.exitCode, 1);
        const QStringList lines = found.out.split(u'\n', Qt::SkipEmptyParts);
        QStringList codes;
        for (const QString &line : lines) {
            QCOMPARE(line.count(u'\t'), 4);
            codes << line.section(u'\t', 0, 0);
        }
        QCOMPARE(codes.count(QStringLiteral("PACKAGE")), 2);
        for (const char *code : {"AGE-UNPAID", "MILK-ADULT", "EGN", "NO-BIRTH-DATE"})
            QVERIFY2(codes.contains(QString::fromUtf8(code)), code);
        QVERIFY2(lines.contains(QStringLiteral("PACKAGE\t") + m_adult +
                                QStringLiteral("\t02.03.2026\t000001\tДейност 4 за 2026 г. при пакет над 18 години: 2 дейности")),
                 qPrintable(found.out));
        const QString pdf = m_folder.filePath(QStringLiteral("check.pdf"));
        const CommandRun printed = report(QStringLiteral("check"), march + QStringList{"--pdf", pdf});
        QCOMPARE(printed.out, found.out);
        QVERIFY2(printed.err.contains(pdf), qPrintable(printed.err));
        QFile file(pdf);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.read(5) == "%PDF-");
        const CommandRun clean = report(QStringLiteral("check"), {"--from", "01.04.2026", "--to", "30.04.2026"});
        QCOMPARE(clean.exitCode, 0);
        QVERIFY(clean.out.isEmpty());
    }

    // The child born in 2021 has a number the program's own rule refuses: --egn-rule public
    // reads it for this run, the practice's setting stays, and a rule of no name is refused.
    void theRuleOfTheRun_data()
    {
        QTest::addColumn<QStringList>("rule");
        QTest::addColumn<bool>("childFound");
        QTest::addColumn<int>("code");
        QTest::newRow("the practice's") << QStringList{} << true << 1;
        QTest::newRow("system") << QStringList{"--egn-rule", "system"} << true << 1;
        QTest::newRow("public") << QStringList{"--egn-rule", "public"} << false << 1;
        QTest::newRow("no rule") << QStringList{"--egn-rule", "lax"} << false << 2;
    }
    void theRuleOfTheRun()
    {
        QFETCH(QStringList, rule);
        QFETCH(bool, childFound);
        QFETCH(int, code);
        const QStringList march{"--from", "01.03.2026", "--to", "31.03.2026", "--today", "02.04.2026"};
        const CommandRun found = report(QStringLiteral("check"), march + rule);
        QCOMPARE(found.exitCode, code);
        QCOMPARE(found.out.contains(QStringLiteral("EGN\t") + m_child), childFound);
        QCOMPARE(found.out.contains(QStringLiteral("EGN\t") + m_adult), false);
    }

    void refusals_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("said");
        QTest::newRow("31 February") << QStringList{"activity", "--from", "01.02.2026", "--to", "31.02.2026"} << 2
                                     << "31.02.2026";
        QTest::newRow("no period") << QStringList{"activity"} << 2 << "--from is required";
        QTest::newRow("unknown doctor") << QStringList{"activity", "--doctor", "999", "--from", "01.03.2026", "--to",
                                                       "31.03.2026"}
                                        << 1 << "999";
        QTest::newRow("check, unknown doctor: not a finding")
            << QStringList{"check", "--doctor", "999", "--from", "01.03.2026", "--to", "31.03.2026"} << 2 << "999";
        QTest::newRow("check, today no date")
            << QStringList{"check", "--from", "01.03.2026", "--to", "31.03.2026", "--today", "32.03.2026"} << 2
            << "--today";
        QTest::newRow("xml without --out") << QStringList{"xml", "--from", "01.03.2026", "--to", "31.03.2026"} << 2
                                           << "--out is required";
        QTest::newRow("no such report") << QStringList{"invoice"} << 2 << "unknown report";
        QTest::newRow("no doctor") << QStringList{"summary", "--from", "01.03.2026", "--to", "31.03.2026", "--doctor", ""}
                                   << 2 << "--doctor is required";
    }
    void refusals()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, code);
        QFETCH(QString, said);
        QStringList withDoctor = arguments;
        if (!withDoctor.contains(QStringLiteral("--doctor")))
            withDoctor << QStringLiteral("--doctor") << Doctor;
        const CommandRun run = runCommand<ReportCommand>(QStringLiteral("report"), withDoctor, m_folder.path());
        QCOMPARE(run.exitCode, code);
        QVERIFY2(run.err.contains(said), qPrintable(run.err));
        QVERIFY(run.out.isEmpty());
    }

    // The accounting form's lines and sums; booking a line moves the sums.
    void accountingBooksByLine()
    {
        const QStringList period{"--from", "01.03.2026", "--to", "31.03.2026"};
        const CommandRun listed = runCommand<AccountingCommand>(QStringLiteral("accounting"), period, m_folder.path());
        QCOMPARE(listed.exitCode, 0);
        QVERIFY2(listed.out.contains(QStringLiteral("Всичко\t161.91 лв.")), qPrintable(listed.out));
        QStringList unbookAll;
        for (const QString &line : listed.out.split(u'\n').mid(1, 9))
            unbookAll << QStringLiteral("--unbook") << line.section(u'\t', 0, 0);
        const QString firstId = unbookAll.value(1);
        QCOMPARE(runCommand<AccountingCommand>(QStringLiteral("accounting"), period + unbookAll, m_folder.path()).exitCode, 0);
        const CommandRun booked = runCommand<AccountingCommand>(QStringLiteral("accounting"),
                                                                period + QStringList{"--book", firstId}, m_folder.path());
        QCOMPARE(booked.exitCode, 0);
        QVERIFY2(booked.out.contains(QStringLiteral("Заведени\t17.99 лв.")), qPrintable(booked.out));
        QVERIFY2(booked.out.contains(QStringLiteral("Оставащи\t143.92 лв.")), qPrintable(booked.out));
        const CommandRun unknown = runCommand<AccountingCommand>(QStringLiteral("accounting"),
                                                                 period + QStringList{"--book", "999999"}, m_folder.path());
        QCOMPARE(unknown.exitCode, 1);
        QVERIFY(!unknown.err.isEmpty());
    }

private:
    CommandRun report(const QString &kind, const QStringList &arguments)
    {
        return runCommand<ReportCommand>(QStringLiteral("report"),
                                         QStringList{kind, QStringLiteral("--doctor"), Doctor} + arguments,
                                         m_folder.path());
    }

    QTemporaryDir m_folder;
    const QString m_adult = validEgn(QDate(1975, 4, 12));
    const QString m_child = validEgn(QDate(2021, 6, 1));
};

QTEST_MAIN(TestReportCommand)
#include "tst_ReportCommand.moc"
