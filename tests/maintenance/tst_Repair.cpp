#include "TestPractice.h"

#include "maintenance/Repair.h"
#include "maintenance/ui/MaintenanceCommands.h"
#include "patients/EgnMessages.h"
#include "patients/EgnRuleSetting.h"
#include "patients/EgnRules.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QProcess>
#include <QTest>

// The repair writes dates of birth only when every personal number is valid, and then all of them.
namespace {

QStringList birthDates()
{
    QStringList dates;
    QSqlQuery query = store::run(store::clinicDb(), QStringLiteral("SELECT EGN, DataB FROM Pacients ORDER BY EGN"));
    while (query.next())
        dates << query.value(0).toString() + u'=' + query.value(1).toString();
    return dates;
}

QString withCheckDigit(const QString &nine) { return nine + QString::number(EgnCheckDigit(nine)); }

void addPatients(TestPractice &practice, const QStringList &numbers)
{
    for (const QString &egn : numbers) {
        practice.addPatient(egn, QStringLiteral("Пациент"), QStringLiteral("1111"));
        store::run(store::clinicDb(), QStringLiteral("UPDATE Pacients SET DataB = '1900-01-01' WHERE EGN = ?"), {egn});
    }
}

} // namespace

class TestRepair final : public QObject
{
    Q_OBJECT
private slots:
    // Every date is written, of the 1900s and of the 2000s alike, as an ISO date (the reading of
    // a number's date is tried with the number's rules).
    void allValidRewritesEveryDate()
    {
        TestPractice practice;
        const QString older = validEgn(QDate(1960, 7, 8)), younger = withCheckDigit("054525123");
        addPatients(practice, {older, younger});
        maintenanceui::repairData();
        QCOMPARE(birthDates(), (QStringList{younger + QStringLiteral("=2005-05-25"), older + QStringLiteral("=1960-07-08")}));
        QCOMPARE(practice.dialogs().messages, QStringList{repair::Done});
    }

    // Each check that fails gives its message, all three for one number; no date is touched.
    void faultyNumbersAreToldAndNothingWritten_data()
    {
        QTest::addColumn<QString>("egn");
        QTest::addColumn<QStringList>("heads");
        using namespace egnmessages;
        QTest::newRow("day 32") << "7501321235" << QStringList{DateHead, CheckDigitHead};
        QTest::newRow("month 13") << "7513011234" << QStringList{MonthHead, CheckDigitHead};
        QTest::newRow("empty number") << "" << QStringList{MonthHead};
    }
    void faultyNumbersAreToldAndNothingWritten()
    {
        QFETCH(QString, egn);
        QFETCH(QStringList, heads);
        TestPractice practice;
        addPatients(practice, {validEgn(QDate(1960, 7, 8)), egn});
        const QStringList before = birthDates();
        maintenanceui::repairData();
        QStringList expected;
        for (const QString &head : heads)
            expected << egnmessages::withNumber(head, egn);
        QCOMPARE(practice.dialogs().messages, expected);
        QCOMPARE(birthDates(), before);
    }

    // A child born in 2015 and a man born in 1875: the program's rule refuses both numbers; by
    // the practice's public rule both are valid and their dates of birth are written.
    void thePracticesRuleReadsTheNumbers()
    {
        TestPractice practice;
        const QString child = validEgn(QDate(2015, 5, 12)), old = withCheckDigit("752101000");
        addPatients(practice, {child, old});
        maintenanceui::repairData();
        QCOMPARE(practice.dialogs().messages.size(), 2);
        QVERIFY(practice.dialogs().messages.first().startsWith(egnmessages::MonthHead));
        practice.dialogs().messages.clear();
        QVERIFY(egnrule::storeRule(store::clinicDb(), EgnRule::Public).ok());
        maintenanceui::repairData();
        QCOMPARE(practice.dialogs().messages, QStringList{repair::Done});
        QCOMPARE(birthDates(), (QStringList{child + QStringLiteral("=2015-05-12"), old + QStringLiteral("=1875-01-01")}));
    }

    void emptyPracticeEndsWithoutDialog()
    {
        TestPractice practice;
        maintenanceui::repairData();
        QVERIFY(practice.dialogs().messages.isEmpty());
        QCOMPARE(practice.dialogs().progressShown, 0);
    }

    void dryRunWritesNothing()
    {
        TestPractice practice;
        addPatients(practice, {validEgn(QDate(1960, 7, 8))});
        const QStringList before = birthDates();
        const auto report = repair::RepairDatabase(store::clinicDb(), repair::Mode::DryRun);
        QVERIFY(report);
        QCOMPARE(report->rewritten, 1);
        QCOMPARE(report->integrity, QStringLiteral("ok"));
        QCOMPARE(birthDates(), before);
    }

    void commandLine_data()
    {
        QTest::addColumn<QString>("second");
        QTest::addColumn<bool>("dryRun");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("lastLine");
        QTest::newRow("valid") << validEgn(QDate(2001, 2, 3)) << false << 0
                               << "Checked 2 patients: 0 faults in personal numbers; 2 dates of birth rewritten";
        QTest::newRow("valid, dry run") << validEgn(QDate(2001, 2, 3)) << true << 0
                                        << "Checked 2 patients: 0 faults in personal numbers; 2 dates of birth would be rewritten";
        QTest::newRow("faulty") << "7501121235" << false << 1
                                << "Checked 2 patients: 1 faults in personal numbers; no date of birth changed";
    }
    void commandLine()
    {
        QFETCH(QString, second);
        QFETCH(bool, dryRun);
        QFETCH(int, exitCode);
        QFETCH(QString, lastLine);
        TestPractice practice;
        addPatients(practice, {validEgn(QDate(1960, 7, 8)), second});
        const QStringList before = birthDates();
        QStringList arguments{QStringLiteral("repair"), QStringLiteral("--data-dir"), practice.folder()};
        if (dryRun)
            arguments << QStringLiteral("--dry-run");
        QProcess process;
        // While the folder is held, the command says so.
        process.start(qEnvironmentVariable("VELMORATA_BINARY"), arguments);
        QVERIFY(process.waitForFinished(60000));
        QCOMPARE(process.exitCode(), 1);
        QVERIFY(QString::fromUtf8(process.readAllStandardError()).contains(QStringLiteral("вече работи")));
        store::closeStore();
        process.start(qEnvironmentVariable("VELMORATA_BINARY"), arguments);
        QVERIFY(process.waitForFinished(60000));
        QCOMPARE(process.exitCode(), exitCode);
        const QStringList lines = QString::fromUtf8(process.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.last(), lastLine);
        QVERIFY(store::openStore(store::DataPaths::inFolder(practice.folder())));
        QCOMPARE(birthDates() == before, dryRun || exitCode != 0);
    }
};

QTEST_MAIN(TestRepair)
#include "tst_Repair.moc"
