#include "TestPractice.h"

#include "patients/EgnRules.h"
#include "reports/claimscheck/ClaimsCheck.h"
#include "store/Dates.h"
#include "store/Sql.h"
#include "treatment/FundPrice.h"

#include <QDir>
#include <QFile>
#include <QTest>

namespace {

const QString Doctor = QStringLiteral("D1");
const QString Other = QStringLiteral("D2");
const QDate Today(2026, 3, 15);
const QDate Adult(1980, 5, 10);
const QDate Child(2009, 6, 1); // the numbers of later births cannot enter
const QDate Eighteen(2007, 6, 15); // the eighteenth birthday falls on 15.06.2025

// A line as the treatment window stores it: the fund's price and minutes by the age on the day,
// unless the test gives them ("null" for none).
struct Line final
{
    QString egn;
    QDate date;
    QString code;
    QString tooth;
    QString sheet = QStringLiteral("000001");
    QString doctor = Doctor;
    QString price = {};   // empty: the fund's
    QString minutes = {}; // empty: the fund's
};

QVariant given(const QString &value, const QVariant &fund)
{
    if (value.isEmpty())
        return fund;
    return value == u"null" ? QVariant(QMetaType(QMetaType::Double)) : QVariant(value.toDouble());
}

void addLine(const Line &line)
{
    const auto fund = fundPriceFor(store::clinicDb(), line.code, line.egn, line.date);
    const FundPrice priced = fund ? fund.value() : FundPrice{};
    store::run(store::clinicDb(),
               QStringLiteral("INSERT INTO Help (EGN, Data, KodHelp, KodZab, ListID, KodMedic, Cena, Times, ZK) "
                              "VALUES (?,?,?,?,?,?,?,?,1)"),
               {line.egn, dates::toIso(line.date), line.code, store::textOrNull(line.tooth), line.sheet, line.doctor,
                given(line.price, priced.storedPrice()), given(line.minutes, int(priced.minutes))});
}

// A card with its birth date, as a card saved by the program has it.
QString addPatient(const QDate &born, bool male = true)
{
    const QString egn = validEgn(born, male);
    store::run(store::clinicDb(), QStringLiteral("INSERT INTO Pacients (EGN, Names, DataB, LKod) VALUES (?,?,?,?)"),
               {egn, QStringLiteral("Пациент ") + egn, dates::toIso(born), Doctor});
    return egn;
}

reports::Period period(const QDate &from, const QDate &to)
{
    return reports::CheckPeriod(dates::toTyped(from), dates::toTyped(to)).period;
}

QList<reports::ClaimFinding> check(const reports::Period &within)
{
    const auto packages = reports::AnnualPackageTable::shipped();
    const auto findings = reports::CheckClaims(store::clinicDb(), packages.value(), within, Doctor, Today);
    if (!findings)
        qWarning() << findings.error();
    return findings ? findings.value() : QList<reports::ClaimFinding>{};
}

// "CODE@DD.MM.YYYY" for each finding, in list order.
QStringList codesAndDates(const QList<reports::ClaimFinding> &findings)
{
    QStringList found;
    for (const reports::ClaimFinding &finding : findings)
        found << reports::ClaimRuleOf(finding.rule).code + u'@' + dates::toTyped(finding.date);
    return found;
}

QStringList codes(const QList<reports::ClaimFinding> &findings)
{
    QStringList found;
    for (const reports::ClaimFinding &finding : findings)
        found << reports::ClaimRuleOf(finding.rule).code;
    return found;
}

const QString PackageHeader = QStringLiteral("FromYear,ToYear,AgeGroup,Examinations,Activities,EndodonticPermanent,Contract\n");

} // namespace

// The check of a doctor's claims: each rule on both sides of its boundary.
class TestClaimsCheck final : public QObject
{
    Q_OBJECT
private slots:
    void oneLine_data()
    {
        QTest::addColumn<QDate>("born");
        QTest::addColumn<QDate>("date");
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("tooth");
        QTest::addColumn<QString>("sheet");
        QTest::addColumn<QString>("price");
        QTest::addColumn<QString>("minutes");
        QTest::addColumn<QStringList>("expected");
        const QDate day(2025, 10, 6);
        const QString s1 = QStringLiteral("000001");
        QTest::newRow("clean filling") << Adult << day << "301" << "36" << s1 << "" << "" << QStringList{};
        QTest::newRow("332 on a milk tooth") << Child << day << "332" << "75" << s1 << "" << "" << QStringList{};
        QTest::newRow("332 on a permanent tooth") << Child << day << "332" << "36" << s1 << "" << "" << QStringList{"MILK-PERMANENT"};
        QTest::newRow("508 on the 18th birthday") << Eighteen << QDate(2025, 6, 15) << "508" << "75" << s1 << "" << ""
                                                  << QStringList{};
        QTest::newRow("508 the day after") << Eighteen << QDate(2025, 6, 16) << "508" << "75" << s1 << "" << ""
                                           << QStringList{"MILK-ADULT"};
        QTest::newRow("333 up to 18") << Eighteen << QDate(2025, 6, 15) << "333" << "36" << s1 << "" << "" << QStringList{};
        QTest::newRow("333 over 18") << Eighteen << QDate(2025, 6, 16) << "333" << "36" << s1 << "" << ""
                                     << QStringList{"AGE-UNPAID"};
        QTest::newRow("code not the fund's") << Adult << day << "302" << "36" << s1 << "" << "" << QStringList{"UNKNOWN-CODE"};
        QTest::newRow("no code") << Adult << day << "" << "" << s1 << "" << "" << QStringList{"UNKNOWN-CODE"};
        QTest::newRow("filling without a tooth") << Adult << day << "301" << "" << s1 << "" << "" << QStringList{"NO-TOOTH"};
        QTest::newRow("filling with a blank tooth") << Adult << day << "301А" << "  " << s1 << "" << "" << QStringList{"NO-TOOTH"};
        QTest::newRow("extraction without a tooth") << Adult << day << "509" << "" << s1 << "" << "" << QStringList{"NO-TOOTH"};
        QTest::newRow("332 without a tooth") << Child << day << "332" << "" << s1 << "" << "" << QStringList{"NO-TOOTH"};
        QTest::newRow("examination needs no tooth") << Adult << day << "101" << "" << s1 << "" << "" << QStringList{};
        QTest::newRow("price 0") << Adult << day << "301" << "36" << s1 << "0" << "" << QStringList{"NO-PRICE"};
        QTest::newRow("price missing") << Adult << day << "101" << "" << s1 << "null" << "" << QStringList{"NO-PRICE"};
        QTest::newRow("no minutes") << Adult << day << "301" << "36" << s1 << "" << "null" << QStringList{"NO-MINUTES"};
        QTest::newRow("103 takes no minutes") << Adult << day << "103" << "" << s1 << "" << "0" << QStringList{};
        QTest::newRow("dated today") << Adult << Today << "301" << "36" << s1 << "" << "" << QStringList{};
        QTest::newRow("dated tomorrow") << Adult << Today.addDays(1) << "301" << "36" << s1 << "" << ""
                                        << QStringList{"FUTURE-DATE"};
        QTest::newRow("on the day of birth") << QDate(2005, 3, 1) << QDate(2005, 3, 1) << "101" << "" << s1 << "" << ""
                                             << QStringList{};
        QTest::newRow("before the birth") << QDate(2005, 3, 1) << QDate(2005, 2, 28) << "101" << "" << s1 << "" << ""
                                          << QStringList{"BEFORE-BIRTH"};
        QTest::newRow("last sheet of a year") << Adult << day << "301" << "36" << "032767" << "" << "" << QStringList{};
        QTest::newRow("sheet past the series") << Adult << day << "301" << "36" << "032768" << "" << ""
                                               << QStringList{"SHEET-SERIES"};
        QTest::newRow("sheet 000000") << Adult << day << "301" << "36" << "000000" << "" << "" << QStringList{"SHEET-SERIES"};
        QTest::newRow("sheet of five digits") << Adult << day << "301" << "36" << "12345" << "" << ""
                                              << QStringList{"SHEET-SERIES"};
        QTest::newRow("no sheet") << Adult << day << "301" << "36" << "" << "" << "" << QStringList{"SHEET-SERIES"};
    }

    void oneLine()
    {
        QFETCH(QDate, born);
        QFETCH(QDate, date);
        QFETCH(QString, code);
        QFETCH(QString, tooth);
        QFETCH(QString, sheet);
        QFETCH(QString, price);
        QFETCH(QString, minutes);
        QFETCH(QStringList, expected);
        TestPractice practice(Today);
        addLine({addPatient(born), date, code, tooth, sheet, Doctor, price, minutes});
        QCOMPARE(codes(check(period(QDate(2000, 1, 1), QDate(2026, 12, 31)))), expected);
    }

    // What is wrong with the patient is said once, on the first line of the period.
    void patientFaults_data()
    {
        QTest::addColumn<QString>("egn");
        QTest::addColumn<int>("card"); // 0 none, 1 with the birth date, 2 without
        QTest::addColumn<QStringList>("expected");
        const QString good = validEgn(Adult);
        const QString badDigit = good.left(9) + QString::number((good.right(1).toInt() + 1) % 10);
        const QString noDate = QStringLiteral("880000123") + QString::number(EgnCheckDigit(QStringLiteral("880000123")));
        QTest::newRow("good") << good << 1 << QStringList{};
        QTest::newRow("check digit") << badDigit << 1 << QStringList{"EGN"};
        QTest::newRow("nine characters") << good.left(9) << 1 << QStringList{"EGN"};
        QTest::newRow("letter O for a zero")
            << QString(good).replace(2, 1, u'O') << 1 << QStringList{"EGN", "NO-BIRTH-DATE"};
        QTest::newRow("no card") << good << 0 << QStringList{"NO-CARD"};
        QTest::newRow("card without the date") << good << 2 << QStringList{"NO-BIRTH-DATE"};
        QTest::newRow("number naming no day") << noDate << 1 << QStringList{"NO-BIRTH-DATE"};
    }

    void patientFaults()
    {
        QFETCH(QString, egn);
        QFETCH(int, card);
        QFETCH(QStringList, expected);
        TestPractice practice(Today);
        if (card)
            store::run(store::clinicDb(), QStringLiteral("INSERT INTO Pacients (EGN, Names, DataB) VALUES (?,?,?)"),
                       {egn, QStringLiteral("Пациент"), card == 1 ? QVariant(dates::toIso(Adult)) : QVariant()});
        addLine({egn, QDate(2025, 10, 1), QStringLiteral("101"), {}, QStringLiteral("000001"), Doctor,
                 QStringLiteral("6.44"), QStringLiteral("15")});
        addLine({egn, QDate(2025, 10, 2), QStringLiteral("103"), {}, QStringLiteral("000002"), Doctor,
                 QStringLiteral("6.44"), QStringLiteral("0")});
        const auto findings = check(period(QDate(2025, 10, 1), QDate(2025, 10, 31)));
        QStringList expectedWithDate;
        for (const QString &code : expected)
            expectedWithDate << code + QStringLiteral("@01.10.2025");
        QCOMPARE(codesAndDates(findings), expectedWithDate);
    }

    // The rules that count by the calendar year: each line's date and the rule it breaks, for
    // one patient; lines of the other doctor count, but only this doctor's lines of the period
    // carry findings.
    void yearRules_data()
    {
        QTest::addColumn<QDate>("born");
        QTest::addColumn<QStringList>("lines"); // "DD.MM.YYYY CODE TOOTH [D2]"
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("one examination a year") << Adult << QStringList{"31.12.2025 101", "01.01.2026 101"} << QStringList{};
        QTest::newRow("the second 101") << Adult << QStringList{"10.01.2026 101", "11.02.2026 101"}
                                        << QStringList{"EXAM@11.02.2026"};
        QTest::newRow("the first by another doctor") << Adult << QStringList{"10.01.2026 101 - D2", "11.02.2026 101"}
                                                     << QStringList{"EXAM@11.02.2026"};
        QTest::newRow("the second by another doctor") << Adult << QStringList{"10.01.2026 101", "11.02.2026 101 - D2"}
                                                      << QStringList{};
        QTest::newRow("two activities over 18") << Adult << QStringList{"10.01.2026 301 36", "11.01.2026 509 46"}
                                                << QStringList{};
        QTest::newRow("the third over 18") << Adult << QStringList{"10.01.2026 301 36", "11.01.2026 509 46", "12.01.2026 301А 11"}
                                           << QStringList{"PACKAGE@12.01.2026"};
        QTest::newRow("over the new year")
            << Adult << QStringList{"30.12.2025 301 36", "31.12.2025 301 37", "01.01.2026 301 38", "02.01.2026 301 35"}
            << QStringList{};
        QTest::newRow("four up to 18") << Child << QStringList{"10.01.2026 301 36", "11.01.2026 332 75", "12.01.2026 508 74", "13.01.2026 333 46"}
                                       << QStringList{};
        QTest::newRow("the fifth up to 18")
            << Child << QStringList{"10.01.2026 301 36", "11.01.2026 332 75", "12.01.2026 508 74", "13.01.2026 333 46", "14.01.2026 301 37"}
            << QStringList{"PACKAGE@14.01.2026"};
        QTest::newRow("two root treatments of permanent teeth") << Child << QStringList{"10.01.2026 333 36", "11.01.2026 333 46"}
                                                                << QStringList{};
        QTest::newRow("the third")
            << Child << QStringList{"10.01.2026 333 36", "11.01.2026 333 46", "12.01.2026 333 16"}
            << QStringList{"PACKAGE-ENDO@12.01.2026"};
        QTest::newRow("milk teeth do not count as permanent")
            << Child << QStringList{"10.01.2026 332 75", "11.01.2026 332 74", "12.01.2026 332 85"} << QStringList{};
        QTest::newRow("turning 18 within the year")
            << Eighteen << QStringList{"10.01.2025 301 36", "11.01.2025 301 37", "15.06.2025 301 38", "16.06.2025 301 35"}
            << QStringList{"PACKAGE@16.06.2025"};
    }

    void yearRules()
    {
        QFETCH(QDate, born);
        QFETCH(QStringList, lines);
        QFETCH(QStringList, expected);
        TestPractice practice(Today);
        const QString egn = addPatient(born);
        int sheet = 0;
        for (const QString &text : lines) {
            const QStringList parts = text.split(u' ');
            const QString tooth = parts.value(2) == u"-" ? QString() : parts.value(2);
            addLine({egn, *dates::fromTyped(parts.at(0)), parts.at(1), tooth,
                     QString::number(++sheet).rightJustified(6, u'0'), parts.value(3, Doctor)});
        }
        QStringList found;
        for (const QString &finding : codesAndDates(check(period(QDate(2025, 1, 1), QDate(2026, 3, 15)))))
            if (!finding.startsWith(u"MILK-ADULT") && !finding.startsWith(u"AGE-UNPAID"))
                found << finding;
        QCOMPARE(found, expected);
    }

    // A year without a row in the table is said once, not guessed.
    void unknownPackage()
    {
        TestPractice practice(Today);
        const QString egn = addPatient(Adult);
        for (int day = 1; day <= 4; ++day)
            addLine({egn, QDate(2025, 10, day), QStringLiteral("301"), QStringLiteral("36"), QStringLiteral("000001")});
        const auto table = reports::AnnualPackageTable::parse(PackageHeader + "2026,2026,над 18,1,2,,Н\n", "t.csv");
        QVERIFY(table);
        const auto findings = reports::CheckClaims(store::clinicDb(), table.value(),
                                                   period(QDate(2025, 1, 1), QDate(2025, 12, 31)), Doctor, Today);
        QVERIFY(findings);
        QCOMPARE(codesAndDates(findings.value()), QStringList{"PACKAGE-UNKNOWN@01.10.2025"});
        QVERIFY(findings->first().text.contains(u"2025"));
    }

    // A sheet number is the doctor's for one patient in one year.
    void sharedSheet_data()
    {
        QTest::addColumn<QDate>("secondDay");
        QTest::addColumn<QString>("secondDoctor");
        QTest::addColumn<int>("expected");
        QTest::newRow("same year, same doctor") << QDate(2025, 12, 31) << Doctor << 2;
        QTest::newRow("next year") << QDate(2026, 1, 1) << Doctor << 0;
        QTest::newRow("another doctor") << QDate(2025, 12, 31) << Other << 0;
    }

    void sharedSheet()
    {
        QFETCH(QDate, secondDay);
        QFETCH(QString, secondDoctor);
        QFETCH(int, expected);
        TestPractice practice(Today);
        addLine({addPatient(Adult), QDate(2025, 3, 2), QStringLiteral("101"), {}, QStringLiteral("000007")});
        addLine({addPatient(Adult, false), secondDay, QStringLiteral("101"), {}, QStringLiteral("000007"), secondDoctor});
        // The first patient's month alone: the clash with a later line of the year is still found.
        const auto findings = check(period(QDate(2025, 1, 1), QDate(2026, 12, 31)));
        QCOMPARE(codes(findings).count(QStringLiteral("SHEET-SHARED")), expected);
        const auto march = check(period(QDate(2025, 3, 1), QDate(2025, 3, 31)));
        QCOMPARE(codes(march).count(QStringLiteral("SHEET-SHARED")), expected / 2);
    }

    void referrals_data()
    {
        QTest::addColumn<QString>("sql");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("complete") << "INSERT INTO Path (EGN, ListID, Data, Nomer) VALUES (?, '000001', '2025-10-06', '123')"
                                  << QStringList{};
        QTest::newRow("no number") << "INSERT INTO Path (EGN, ListID, Data, Nomer) VALUES (?, '000001', '2025-10-06', ' ')"
                                   << QStringList{"REFERRAL@06.10.2025"};
        QTest::newRow("no date") << "INSERT INTO Invest (EGN, ListID, Data, Nomer) VALUES (?, '000001', NULL, '5')"
                                 << QStringList{"REFERRAL@06.10.2025"};
        QTest::newRow("to a specialist, dated") << "INSERT INTO Spec (EGN, ListID, Data) VALUES (?, '000001', '2025-10-06')"
                                                << QStringList{};
        QTest::newRow("to a specialist, undated") << "INSERT INTO Spec (EGN, ListID, Data) VALUES (?, '000001', NULL)"
                                                  << QStringList{"REFERRAL@06.10.2025"};
        QTest::newRow("on a sheet of no line of the period")
            << "INSERT INTO Path (EGN, ListID, Data, Nomer) VALUES (?, '000009', '2025-10-06', NULL)" << QStringList{};
    }

    void referrals()
    {
        QFETCH(QString, sql);
        QFETCH(QStringList, expected);
        TestPractice practice(Today);
        const QString egn = addPatient(Adult);
        addLine({egn, QDate(2025, 10, 6), QStringLiteral("101"), {}, QStringLiteral("000001")});
        store::run(store::clinicDb(), sql, {egn});
        QCOMPARE(codesAndDates(check(period(QDate(2025, 10, 1), QDate(2025, 10, 31)))), expected);
    }

    // 360 minutes of the fund's table a day: twenty-four examinations fill it, the twenty-fifth
    // passes it and is named once, whatever follows.
    void dayMinutes_data()
    {
        QTest::addColumn<int>("examinations");
        QTest::addColumn<int>("expected");
        QTest::newRow("360") << 24 << 0;
        QTest::newRow("375") << 25 << 1;
        QTest::newRow("420") << 28 << 1;
    }

    void dayMinutes()
    {
        QFETCH(int, examinations);
        QFETCH(int, expected);
        TestPractice practice(Today);
        for (int n = 0; n < examinations; ++n)
            addLine({addPatient(Adult.addDays(n)), QDate(2025, 10, 6), QStringLiteral("101"), {},
                     QString::number(n + 1).rightJustified(6, u'0')});
        const auto findings = check(period(QDate(2025, 10, 6), QDate(2025, 10, 6)));
        QCOMPARE(codes(findings).count(QStringLiteral("DAY-MINUTES")), expected);
        QCOMPARE(findings.size(), expected);
        if (expected)
            QVERIFY2(findings.first().text.contains(QString::number(examinations * 15)), qPrintable(findings.first().text));
    }

    // The findings come by rule, then patient, then date; a reversed or empty period finds nothing.
    void orderAndEmptyPeriods()
    {
        TestPractice practice(Today);
        const QString adult = addPatient(Adult);
        const QString child = addPatient(Child);
        addLine({child, QDate(2025, 10, 7), QStringLiteral("302"), QStringLiteral("36"), QStringLiteral("000002")});
        addLine({adult, QDate(2025, 10, 6), QStringLiteral("302"), QStringLiteral("36"), QStringLiteral("000001")});
        addLine({adult, QDate(2025, 10, 8), QStringLiteral("332"), QStringLiteral("36"), QStringLiteral("000003")});
        const auto findings = check(period(QDate(2025, 10, 1), QDate(2025, 10, 31)));
        QCOMPARE(codesAndDates(findings),
                 (QStringList{"MILK-PERMANENT@08.10.2025", "MILK-ADULT@08.10.2025",
                              adult < child ? "UNKNOWN-CODE@06.10.2025" : "UNKNOWN-CODE@07.10.2025",
                              adult < child ? "UNKNOWN-CODE@07.10.2025" : "UNKNOWN-CODE@06.10.2025"}));
        QCOMPARE(findings.first().name, QStringLiteral("Пациент ") + adult);
        QVERIFY(check(period(QDate(2025, 10, 31), QDate(2025, 10, 1))).isEmpty());
        QVERIFY(check(period(QDate(2025, 11, 1), QDate(2025, 11, 30))).isEmpty());
    }

    void packageTable_data()
    {
        QTest::addColumn<QString>("rows");
        QTest::addColumn<QString>("fault"); // empty: accepted
        QTest::newRow("good") << "2020,2025,до 18,1,4,2,Н\n2020,2025,над 18,1,2,,Н\n" << "";
        QTest::newRow("one year") << "2026,2026,над 18,1,2,,Н\n" << "";
        QTest::newRow("overlapping years") << "2020,2025,над 18,1,2,,Н\n2025,2026,над 18,1,3,,Н\n" << "ред 3";
        QTest::newRow("years reversed") << "2026,2020,над 18,1,2,,Н\n" << "ред 2";
        QTest::newRow("unknown group") << "2020,2025,над 17,1,2,,Н\n" << "ред 2";
        QTest::newRow("a count that is no number") << "2020,2025,до 18,1,четири,2,Н\n" << "ред 2";
        QTest::newRow("no rows") << "" << "няма редове";
    }

    void packageTable()
    {
        QFETCH(QString, rows);
        QFETCH(QString, fault);
        const auto table = reports::AnnualPackageTable::parse(PackageHeader + rows, QStringLiteral("p.csv"));
        QCOMPARE(table.ok(), fault.isEmpty());
        if (!table)
            QVERIFY2(table.error().contains(fault) && table.error().contains(u"p.csv"), qPrintable(table.error()));
    }

    // The shipped table covers the years of the fund's prices; the practice's own file in the
    // data folder replaces it, and a broken one is refused by its name rather than ignored.
    void packageFileOfThePractice()
    {
        const auto shipped = reports::AnnualPackageTable::shipped();
        QVERIFY(shipped);
        const reports::AnnualPackage *child = shipped->find(2026, reports::AgeGroup::UpTo18);
        QVERIFY(child);
        QCOMPARE((QList<int>{child->examinations, child->activities, child->endodonticPermanent}), (QList<int>{1, 4, 2}));
        QCOMPARE(shipped->find(2026, reports::AgeGroup::Over18)->activities, 2);
        QTemporaryDir folder;
        QFile own(QDir(folder.path()).filePath(reports::AnnualPackageTable::FileName));
        QVERIFY(own.open(QIODevice::WriteOnly));
        own.write((PackageHeader + "2026,2026,над 18,1,3,,Нов НРД\n").toUtf8());
        own.close();
        const auto practices = reports::AnnualPackageTable::load(folder.path());
        QVERIFY(practices);
        QCOMPARE(practices->find(2026, reports::AgeGroup::Over18)->activities, 3);
        QVERIFY(!practices->find(2025, reports::AgeGroup::Over18));
        QVERIFY(own.open(QIODevice::WriteOnly | QIODevice::Truncate));
        own.write("FromYear,ToYear\n2026,2026\n");
        own.close();
        const auto broken = reports::AnnualPackageTable::load(folder.path());
        QVERIFY(!broken);
        QVERIFY2(broken.error().contains(reports::AnnualPackageTable::FileName), qPrintable(broken.error()));
    }
};

QTEST_GUILESS_MAIN(TestClaimsCheck)
#include "tst_ClaimsCheck.moc"
