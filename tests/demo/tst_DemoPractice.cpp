#include "admin/Doctors.h"
#include "demo/DemoPractice.h"
#include "patients/EgnRules.h"
#include "patients/ToothMap.h"
#include "reports/claimscheck/ClaimsCheck.h"
#include "store/Dates.h"
#include "store/Schema.h"
#include "store/Sql.h"
#include "store/Store.h"
#include "treatment/Minutes.h"
#include "treatment/PatientHeader.h"
#include "treatment/SheetNumbers.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTemporaryDir>
#include <QTest>

namespace {

QList<QVariantList> rows(const QString &sql)
{
    QList<QVariantList> result;
    QSqlQuery query = store::run(store::clinicDb(), sql);
    while (query.next()) {
        QVariantList row;
        for (int i = 0; i < query.record().count(); ++i)
            row << query.value(i);
        result << row;
    }
    return result;
}

int count(const QString &sql) { return store::scalar(store::clinicDb(), sql).toInt(); }

// The codes of the rules the claims check finds for every doctor of the open practice between
// the two days.
QSet<QString> foundRules(const QDate &from, const QDate &to, const QDate &today)
{
    QSet<QString> codes;
    const reports::Period period = reports::CheckPeriod(dates::toTyped(from), dates::toTyped(to)).period;
    for (const QVariantList &doctor : rows(QStringLiteral("SELECT KodMedic FROM Medic"))) {
        const auto findings = reports::CheckClaims(store::clinicDb(), period, doctor.at(0).toString(), today);
        if (!findings)
            qFatal("%s", qPrintable(findings.error()));
        for (const reports::ClaimFinding &finding : findings.value())
            codes << reports::ClaimRuleOf(finding.rule).code;
    }
    return codes;
}

} // namespace

class TestDemoPractice final : public QObject
{
    Q_OBJECT
private slots:
    // The invented practice must look as if the program's own screens had made it.
    void followsTheProgramsRules_data()
    {
        QTest::addColumn<int>("doctors");
        QTest::addColumn<int>("patients");
        QTest::addColumn<int>("years");
        QTest::addColumn<QDate>("today");
        QTest::newRow("usual practice") << 2 << 400 << 3 << QDate(2026, 11, 20);
        QTest::newRow("children with milk teeth") << 2 << 600 << 2 << QDate(2015, 3, 16);
        QTest::newRow("one doctor, far too many patients") << 1 << 6000 << 1 << QDate(2026, 11, 20);
        // The package table ends with 2030: the later years' claims are examinations alone.
        QTest::newRow("years past the package table") << 2 << 300 << 3 << QDate(2032, 2, 10);
    }
    void followsTheProgramsRules()
    {
        QFETCH(int, doctors);
        QFETCH(int, patients);
        QFETCH(int, years);
        QFETCH(QDate, today);
        QTemporaryDir folder;
        DemoOptions options{folder.path(), doctors, patients, years, 3, today};
        const auto made = generateDemoPractice(options);
        QVERIFY2(made.ok(), qPrintable(made.error()));
        checkPeople(made.value());
        checkLines(today);
        checkSheets(today);
        checkDays(today);
        checkPrices();
        checkDiary();
        // A practice under contract: the check finds nothing in any doctor's claims of its whole span.
        QCOMPARE(foundRules(today.addYears(-years).addDays(1), today, today), QSet<QString>());
        store::closeStore();
    }

    // The faults asked for are a handful whatever the practice's size, on top of the same
    // practice, and the check finds each of them and nothing else.
    void faultsAreFoundByTheCheck_data()
    {
        QTest::addColumn<int>("doctors");
        QTest::addColumn<int>("patients");
        QTest::addColumn<QDate>("today");
        QTest::addColumn<QStringList>("notShown");
        QTest::newRow("two doctors, children") << 2 << 500 << QDate(2026, 11, 20) << QStringList{"PACKAGE-UNKNOWN"};
        QTest::newRow("one doctor, a January") << 1 << 300 << QDate(2026, 2, 3) << QStringList{"PACKAGE-UNKNOWN"};
        QTest::newRow("no child, no package") << 2 << 300 << QDate(2031, 5, 12) << QStringList{"PACKAGE", "PACKAGE-ENDO"};
    }
    void faultsAreFoundByTheCheck()
    {
        QFETCH(int, doctors);
        QFETCH(int, patients);
        QFETCH(QDate, today);
        QFETCH(QStringList, notShown);
        QTemporaryDir clean, faulty;
        const auto plain = generateDemoPractice({clean.path(), doctors, patients, 1, 9, today});
        store::closeStore();
        const auto made = generateDemoPractice({faulty.path(), doctors, patients, 1, 9, today, true});
        QVERIFY2(plain.ok() && made.ok(), qPrintable(plain.ok() ? made.error() : plain.error()));
        QSet<QString> meant;
        int faultLines = 0;
        for (const DemoFault &fault : made->faults) {
            for (const reports::ClaimRule rule : fault.rules)
                meant << reports::ClaimRuleOf(rule).code;
            faultLines += fault.lines;
        }
        QSet<QString> expected;
        for (const reports::ClaimRuleInfo &rule : reports::ClaimRules())
            if (!notShown.contains(rule.code))
                expected << rule.code;
        QCOMPARE(meant, expected);
        QVERIFY2(made->faults.size() <= reports::ClaimRules().size() && faultLines < 40, qPrintable(QString::number(faultLines)));
        QCOMPARE(made->patients, plain->patients);
        QCOMPARE(made->serviceLines, plain->serviceLines + faultLines);
        QCOMPARE(count(QStringLiteral("SELECT COUNT(*) FROM Help")), made->serviceLines);
        // The month before today's holds them, and a line after today the month after it.
        const QDate month = QDate(today.year(), today.month(), 1).addMonths(-1);
        QCOMPARE(foundRules(month, today.addMonths(1), today), meant);
        store::closeStore();
    }

    // The flag reaches the generator from the command line, whose summary counts and lists the
    // faults; a month's check of a listed doctor finds something.
    void commandLineMakesTheFaults()
    {
        QTemporaryDir folder;
        const QString binary = qEnvironmentVariable("VELMORATA_BINARY");
        QProcess demo;
        demo.start(binary, {"demo", "--data-dir", folder.path(), "--patients", "300", "--today", "20.11.2026", "--faults"});
        QVERIFY(demo.waitForFinished(120000));
        QCOMPARE(demo.exitCode(), 0);
        const QStringList out = QString::fromUtf8(demo.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
        const qsizetype head = out.indexOf(QRegularExpression(QStringLiteral("^Faults made on purpose: \\d+$")));
        QVERIFY2(head >= 0, qPrintable(out.join(u'\n')));
        const qsizetype listed = out.size() - head - 1;
        QVERIFY(listed >= 15);
        QCOMPARE(out.at(head).section(u' ', -1).toInt(), listed);
        QProcess check;
        check.start(binary, {"report", "check", "--data-dir", folder.path(), "--doctor", out.last().section(u'\t', 3),
                             "--from", "01.10.2026", "--to", "31.10.2026", "--today", "20.11.2026"});
        QVERIFY(check.waitForFinished(120000));
        QCOMPARE(check.exitCode(), 1);
    }

    void boundsAreRefused_data()
    {
        QTest::addColumn<int>("doctors");
        QTest::addColumn<int>("patients");
        QTest::addColumn<int>("years");
        QTest::addColumn<QDate>("today");
        QTest::addColumn<QString>("named");
        QTest::newRow("no years") << 2 << 10 << 0 << QDate(2026, 1, 5) << "--years";
        QTest::newRow("a billion years") << 2 << 10 << 1000000000 << QDate(2026, 1, 5) << "--years";
        QTest::newRow("thirty-one years") << 2 << 10 << 31 << QDate(2026, 1, 5) << "--years";
        QTest::newRow("no doctor") << 0 << 10 << 3 << QDate(2026, 1, 5) << "--doctors";
        QTest::newRow("too many patients") << 2 << 2000001 << 3 << QDate(2026, 1, 5) << "--patients";
        QTest::newRow("negative patients") << 2 << -1 << 3 << QDate(2026, 1, 5) << "--patients";
        QTest::newRow("today before 2000") << 2 << 10 << 3 << QDate(1999, 12, 31) << "--today";
    }
    void boundsAreRefused()
    {
        QFETCH(int, doctors);
        QFETCH(int, patients);
        QFETCH(int, years);
        QFETCH(QDate, today);
        QFETCH(QString, named);
        QTemporaryDir folder;
        const auto made = generateDemoPractice({folder.path(), doctors, patients, years, 1, today});
        QVERIFY(!made.ok());
        QVERIFY2(made.error().contains(named), qPrintable(made.error()));
        QVERIFY(!QFile::exists(folder.filePath(QStringLiteral("velmorata.db")))); // refused before anything is made
    }

private:
    void checkPeople(const DemoSummary &summary)
    {
        for (const DemoDoctor &doctor : summary.doctors) {
            QCOMPARE(doctor.accessCode.size(), doctors::MinimumAccessCodeLength);
            const auto found = doctors::lookUpDoctor(store::clinicDb(), doctor.name);
            QVERIFY(found.ok() && found.value().has_value());
            QVERIFY(doctors::sameCode(found.value()->accessCode, doctor.accessCode));
        }
        for (const QVariantList &row : rows(QStringLiteral("SELECT EGN, DataB, DataR FROM Pacients UNION ALL SELECT EGN, NULL, NULL FROM Medic"))) {
            const QString egn = row.at(0).toString();
            QVERIFY2(egn.size() == 10 && !EgnDateBad(egn) && !EgnMonthBad(egn) && !EgnCheckDigitBad(egn), qPrintable(egn));
            if (!row.at(1).isNull()) {
                QCOMPARE(dates::fromIso(row.at(1).toString()), EgnBirthDate(egn));
                QVERIFY(dates::fromIso(row.at(2).toString()) >= EgnBirthDate(egn));
            }
        }
    }

    void checkLines(const QDate &today)
    {
        const QDate monthStart(today.year(), today.month(), 1);
        int milkLines = 0;
        for (const QVariantList &row : rows(QStringLiteral("SELECT EGN, Data, KodHelp, KodZab, ZK, Schet FROM Help"))) {
            const auto date = dates::fromIso(row.at(1).toString());
            QVERIFY2(date && *date <= today, qPrintable(row.at(1).toString()));
            // A print clears ZK and sets Schet; this month's lines wait for theirs.
            const bool printed = *date < monthStart;
            QCOMPARE(row.at(4).toInt(), printed ? 0 : 1);
            QCOMPARE(row.at(5).toInt(), printed ? 1 : 0);
            const QString code = row.at(2).toString();
            if (code != u"332" && code != u"508")
                continue;
            ++milkLines;
            QVERIFY2(toothmap::position(fieldOfTooth(row.at(3).toInt())).milk, qPrintable(row.at(3).toString()));
            QCOMPARE(EgnOverEighteen(row.at(0).toString(), *date), std::optional<bool>(false));
        }
        if (today.year() < 2020) // children born up to 2009 still have milk teeth
            QVERIFY(milkLines > 0);
    }

    static int fieldOfTooth(int tooth)
    {
        for (const toothmap::Position &position : toothmap::positions())
            if (position.tooth == tooth)
                return position.field;
        return 0;
    }

    // Every doctor's sheets of a year run from 000001 without gaps, and the treatment window
    // can still hand out the next one.
    void checkSheets(const QDate &today)
    {
        QCOMPARE(count(QStringLiteral("SELECT COUNT(*) FROM (SELECT KodMedic FROM Help GROUP BY KodMedic, substr(Data, 1, 4) "
                                      "HAVING MIN(ListID) <> '000001' OR CAST(MAX(ListID) AS INTEGER) <> COUNT(DISTINCT ListID))")),
                 0);
        for (const QVariantList &row : rows(QStringLiteral("SELECT KodMedic FROM Medic"))) {
            const auto next = SheetNumber(store::clinicDb(), row.at(0).toString(), today);
            QVERIFY2(next.ok(), qPrintable(next.error()));
        }
    }

    // No doctor's day beyond the minutes of a day, and today leaves room to work.
    void checkDays(const QDate &today)
    {
        int busiest = 0;
        QString day;
        int minutes = 0;
        for (const QVariantList &row : rows(QStringLiteral("SELECT KodMedic, Data, KodHelp, Times FROM Help ORDER BY KodMedic, Data"))) {
            const QString key = row.at(0).toString() + row.at(1).toString();
            minutes = (key == day ? minutes : 0) + std::max(DayBudgetMinutes(row.at(2).toString()), row.at(3).toInt());
            day = key;
            busiest = std::max(busiest, minutes);
        }
        QVERIFY2(busiest <= MinutesOfDay, qPrintable(QString::number(busiest)));
        const auto left = MinutesLeftOn(store::clinicDb(), today);
        QVERIFY(left.ok());
        QVERIFY2(left.value() >= 0 && left.value() < MinutesOfDay, qPrintable(QString::number(left.value())));
    }

    // Every line has the fund's minutes and one of the fund's prices for its code; 103 is timed
    // and priced by the fund's row 101.
    void checkPrices()
    {
        QCOMPARE(count(QStringLiteral("SELECT COUNT(*) FROM Help WHERE KodHelp = '301' AND Cena NOT IN (21.13, 25.13)")), 0);
        QCOMPARE(count(QStringLiteral("SELECT COUNT(*) FROM Help h JOIN CenyZK z ON z.Kod = h.KodHelp "
                                      "WHERE h.KodHelp <> '103' AND h.Times <> z.Times")),
                 0);
        QCOMPARE(count(QStringLiteral("SELECT COUNT(*) FROM Help WHERE KodHelp = '103' AND (Times <> 15 OR Cena <> 6.44)")), 0);
    }

    // Booked slots hold the first name with its closing blank, of one of the doctor's patients.
    void checkDiary()
    {
        const QStringList slotNames = store::diarySlotNames();
        const auto pages = rows(QStringLiteral("SELECT KodMedic, %1 FROM Grafic").arg(slotNames.join(u',')));
        QVERIFY(!pages.isEmpty());
        for (const QVariantList &page : pages) {
            for (int slot = 1; slot < page.size(); ++slot) {
                const QString name = page.at(slot).toString();
                if (name.isEmpty())
                    continue;
                QVERIFY2(name.endsWith(u' ') && name.count(u' ') == 1, qPrintable(name));
                QVERIFY(count(QStringLiteral("SELECT COUNT(*) FROM Pacients WHERE LKod = '%1' AND Names LIKE '%2%'")
                                  .arg(page.at(0).toString(), name)) > 0);
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestDemoPractice)
#include "tst_DemoPractice.moc"
