// A child born in 2015, in a practice that works by the public rule of the personal number:
// registered on the card, treated, printed on the ambulatory sheet, reported in the XML report
// and checked before it, with the age read from the number at every step.
#include "TestPractice.h"

#include "base/RunState.h"
#include "base/Spread.h"
#include "patients/EgnRuleSetting.h"
#include "patients/PatientCard.h"
#include "reports/claimscheck/AnnualPackage.h"
#include "reports/claimscheck/ClaimsCheck.h"
#include "reports/forms/PrintedReports.h"
#include "reports/xml/StomatologyXml.h"
#include "store/Sql.h"
#include "treatment/ServiceEntry.h"
#include "treatment/SheetPrint.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString Doctor = u"2200000001"_s;
const QDate Today(2026, 3, 16);

reports::Period march() { return reports::CheckPeriod(u"01.03.2026"_s, u"31.03.2026"_s).period; }

} // namespace

class TestChildBornFrom2010 final : public QObject
{
    Q_OBJECT
private slots:
    void fromTheCardToTheClaimsCheck()
    {
        TestPractice practice(Today);
        practice.addDoctor(u"Иван Петров"_s, Doctor);
        store::run(store::clinicDb(), u"UPDATE MedicUnit SET UserUIN = ?, UserID = '2201234567'"_s, {Doctor});
        run().CurrentMedicCode = Doctor;
        QVERIFY(egnrule::storeRule(store::clinicDb(), EgnRule::Public).ok());
        const QString child = validEgn(QDate(2015, 5, 12));
        QCOMPARE(child.mid(2, 2), u"45"_s); // the 20yy code, refused by the system's rule
        QVERIFY(EgnMonthBad(child));

        // The card takes the number and stores the birth date it names.
        const auto entry = patientcard::checkEnteredEgn(store::clinicDb(), child);
        QVERIFY(entry.ok() && entry->messages.isEmpty());
        patientcard::CardData card;
        card.fields.insert(u"Names"_s, u"Ана Иванова Петрова"_s);
        QVERIFY(patientcard::saveNewCard(store::clinicDb(), card, child, {Doctor, std::nullopt, {}, {}}).ok());
        QCOMPARE(practice.row(u"SELECT DataB FROM Pacients WHERE EGN = ?"_s, {child}), QStringList{u"2015-05-12"_s});

        // A filling on a milk tooth, priced up to 18.
        ServiceLine line;
        line.Data = u"16.03.2026"_s;
        line.KodHelp = u"30-2"_s;
        line.KodZab = u"75"_s;
        const auto saved = SaveServiceLine(store::clinicDb(), {child, Doctor, u"000001"_s, Today}, line, KodHelpColumn);
        QVERIFY2(saved.ok(), qPrintable(saved.error()));
        QCOMPARE(saved->Cena, 25.13);
        QVERIFY(saved->toothWarning.isEmpty());

        // The sheet's birth cells: 12, May, 20, 15.
        print::Page sheet;
        QString pdfName;
        const auto printed = PrintSheet(store::clinicDb(), child, SheetMarks::Keep, [&](const print::PageDescription &form) {
            sheet = form.pages().first();
            pdfName = form.pdfFileName(Today);
            return Outcome::success();
        });
        QVERIFY2(printed.ok(), qPrintable(printed.error()));
        QCOMPARE(pdfName, u"Амбулаторен лист Ана Иванова Петрова 2026-03-16.pdf"_s);
        QCOMPARE(sheet.textAt(u"Label52"_s), u"1  2"_s);
        QCOMPARE(sheet.textAt(u"Label51"_s), SpreadWide(u"5"_s));
        QCOMPARE(sheet.textAt(u"Label53"_s), u"2  0"_s);
        QCOMPARE(sheet.textAt(u"Label54"_s), SpreadWide(u"15"_s));

        // The XML report carries the child with the birth date and the price.
        const auto xml = reports::BuildStomatologyXml(store::clinicDb(), march(), Doctor, Today);
        QVERIFY2(xml.ok(), qPrintable(xml.error()));
        const QString document = QString::fromUtf8(xml->document);
        QVERIFY(document.contains(u"birthDate=\"2015-05-12\""_s));
        QVERIFY(document.contains(child));
        QCOMPARE(xml->sheets, 1);

        // The fund summary counts the line among the children, and the check finds nothing.
        QVERIFY(reports::PrepareReport(store::openedDatabases(), reports::ReportKind::FundSummary).ok());
        QVERIFY(reports::BuildReport(store::openedDatabases(), reports::ReportKind::FundSummary, march(), Doctor).ok());
        const auto summary = reports::ReportLines(store::openedDatabases(), reports::ReportKind::FundSummary, march());
        QVERIFY(summary.ok());
        QCOMPARE(summary.value(), (QStringList{u"Под 18 години\t0\t\t1\t0\t0\t0\t0"_s, u"Над 18 години\t0\t\t0\t0\t0\t0\t0"_s}));
        const auto packages = reports::AnnualPackageTable::shipped();
        const auto findings = reports::CheckClaims(store::clinicDb(), packages.value(), march(), Doctor, Today);
        QVERIFY2(findings.ok(), qPrintable(findings.error()));
        QCOMPARE(findings->size(), 0);
    }

    // The same child in a practice of the system's rule: the check names the number's fault,
    // while the age rules still read the birth date the number carries.
    void theSystemsRuleFindsTheNumber()
    {
        TestPractice practice(Today);
        practice.addDoctor(u"Иван Петров"_s, Doctor);
        const QString child = validEgn(QDate(2015, 5, 12));
        practice.addPatient(child, u"Ана Иванова Петрова"_s, Doctor);
        practice.addService(child, QDate(2026, 3, 16), u"101"_s, Doctor);
        store::run(store::clinicDb(), u"UPDATE Help SET Cena = 6.44, Times = 15"_s);
        store::run(store::clinicDb(), u"UPDATE Pacients SET DataB = '2015-05-12'"_s);
        const auto packages = reports::AnnualPackageTable::shipped();
        for (const EgnRule rule : {EgnRule::System, EgnRule::Public}) {
            QVERIFY(egnrule::storeRule(store::clinicDb(), rule).ok());
            const auto findings = reports::CheckClaims(store::clinicDb(), packages.value(), march(), Doctor, Today);
            QVERIFY2(findings.ok(), qPrintable(findings.error()));
            QStringList codes;
            for (const reports::ClaimFinding &finding : findings.value())
                codes << reports::ClaimRuleOf(finding.rule).code;
            QCOMPARE(codes, rule == EgnRule::System ? QStringList{u"EGN"_s} : QStringList{});
        }
    }
};

QTEST_MAIN(TestChildBornFrom2010)
#include "tst_ChildBornFrom2010.moc"
