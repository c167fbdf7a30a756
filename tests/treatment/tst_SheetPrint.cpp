// The prints of the treatment window: the ambulatory sheet (its cells, the marks it takes off
// in one transaction, the button and the command) and the treatment data print.
#include "CommandRun.h"
#include "TestPractice.h"

#include "base/RunState.h"
#include "base/Spread.h"
#include "base/ui/PrintPreview.h"
#include "base/ui/PrintRenderer.h"
#include "shell/cli/PrintCommand.h"
#include "store/Sql.h"
#include "store/Store.h"
#include "treatment/SheetPrint.h"
#include "treatment/SheetPrintPage.h"
#include "treatment/TreatmentData.h"
#include "treatment/TreatmentDataPage.h"
#include "treatment/ui/DenHelp.h"

#include <QFile>
#include <QPointer>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace treatmentdata;

namespace {

const QString Doctor = u"2200000001"_s;

print::Page firstPage(const SheetData &sheet) { return KartonPage(sheet).pages().first(); }

// A patient with one line marked for the fund; the doctor is added unless the test wants him missing.
QString patientWithLine(TestPractice &practice, const QString &code = u"301"_s, bool withDoctor = true)
{
    if (withDoctor)
        practice.addDoctor(u"Д"_s, Doctor);
    const QString egn = validEgn(QDate(1990, 1, 1));
    practice.addPatient(egn, u"Петър"_s, Doctor);
    practice.addService(egn, QDate(2026, 3, 2), code, Doctor);
    return egn;
}

// The sheet of `egn` printed, its first page kept; `failure` makes the output fail with that text.
Result<SheetPrinted> printSheet(const QString &egn, print::Page *page = nullptr, SheetMarks marks = SheetMarks::Change,
                                const QString &failure = {})
{
    return PrintSheet(store::clinicDb(), egn, marks, [&](const print::PageDescription &sheet) {
        if (page)
            *page = sheet.pages().first();
        return failure.isEmpty() ? Outcome::success() : Outcome::failure(failure);
    });
}

} // namespace

class tst_SheetPrint final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { print::installPdfWriter(); }

    void birthCellsFollowTheMonthCode_data()
    {
        QTest::addColumn<QString>("egn");
        QTest::addColumn<QString>("century");
        QTest::addColumn<QString>("month");
        QTest::newRow("1975, May") << "7505101234" << "1  9" << SpreadWide(u"05"_s);
        QTest::newRow("1899, m 21") << "9921101234" << "1  8" << SpreadWide(u"1"_s);
        QTest::newRow("1899, m 22") << "9922101234" << "1  8" << SpreadWide(u"2"_s);
        QTest::newRow("m 23: century only") << "9923101234" << "1  8" << DesignMonth;
        QTest::newRow("m 25: the design month stays") << "9925101234" << "1  8" << DesignMonth;
        QTest::newRow("m 32") << "9932101234" << "1  8" << DesignMonth;
        QTest::newRow("2005, May: single digit") << "0545101234" << "2  0" << u"5"_s + QString(18, u' ');
        QTest::newRow("2005, October: two digits apart") << "0550101234" << "2  0" << u"1  0"_s + QString(16, u' ');
        QTest::newRow("m 52") << "0552101234" << "2  0" << SpreadWide(u"12"_s);
        QTest::newRow("m 33: nothing set") << "0533101234" << "1  9" << DesignMonth;
        QTest::newRow("m 53: nothing set") << "0553101234" << "1  9" << DesignMonth;
        QTest::newRow("m 00: nothing set") << "0500101234" << "1  9" << DesignMonth;
        QTest::newRow("letters: nothing set") << "05AB101234" << "1  9" << DesignMonth;
    }
    void birthCellsFollowTheMonthCode()
    {
        QFETCH(QString, egn);
        SheetData sheet;
        sheet.egn = egn;
        const print::Page page = firstPage(sheet);
        QTEST(page.textAt(u"Label53"_s), "century");
        QTEST(page.textAt(u"Label51"_s), "month");
        QCOMPARE(page.textAt(u"Label52"_s), egn.mid(4, 1) + u"  "_s + egn.mid(5, 1));
        QCOMPARE(page.textAt(u"Label54"_s), SpreadWide(egn.left(2)));
    }

    // By the public rule the 1800s code prints its month for every month, beyond the bound of 22.
    void birthCellsByThePublicRule()
    {
        SheetData sheet;
        sheet.egn = u"9925101234"_s;
        sheet.egnRule = EgnRule::Public;
        const print::Page page = firstPage(sheet);
        QCOMPARE(page.textAt(u"Label53"_s), u"1  8"_s);
        QCOMPARE(page.textAt(u"Label51"_s), SpreadWide(u"5"_s));
    }

    void headerCells()
    {
        SheetData sheet;
        sheet.egn = u"7505101234"_s;
        const QString longName = u"Д'Арк \"Жана\" "_s + QString(242, u'Я');
        sheet.patient = {{u"Names"_s, longName}, {u"RZOK"_s, u"22"_s},       {u"ZR"_s, u"07"_s}, {u"Tawn"_s, u" София "_s},
                         {u"UL"_s, u"   "_s},    {u"ZBook"_s, u"123"_s},     {u"AP"_s, u"12"_s}};
        sheet.doctor = {u"Иван Иванов"_s, u"6001011234"_s, Doctor};
        const print::Page page = firstPage(sheet);
        // Blanks are no value (Label5, Label10), but a value keeps its own blanks (Label50).
        const QList<std::pair<QString, QString>> cells{
            {u"Label4"_s, longName},       {u"Label1"_s, u"7 5 0 5 1 0 1 2 3 4"_s}, {u"Label2"_s, u"2 2"_s},
            {u"Label3"_s, u"0 7"_s},       {u"Label6"_s, SpreadNarrow(Doctor)},    {u"Label8"_s, u"д-р Иван Иванов"_s},
            {u"Label7"_s, u"6 0 0 1 0 1 1 2 3 4"_s}, {u"Label50"_s, u" София "_s}, {u"Label5"_s, QString()},
            {u"Label9"_s, SpreadNarrow(u"123"_s)},   {u"Label17"_s, u"12"_s},      {u"Label10"_s, QString()}};
        for (const auto &[name, text] : cells)
            QCOMPARE(page.textAt(name), text);
    }

    void chartCellsAndMilkFrames_data()
    {
        QTest::addColumn<int>("permanent");
        QTest::addColumn<QString>("permanentValue");
        QTest::addColumn<int>("milk");
        QTest::addColumn<QString>("milkValue");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<bool>("framed");
        QTest::newRow("milk * with empty permanent: blank, framed") << 24 << "" << 1 << "*" << " " << true;
        QTest::newRow("milk finding shows framed") << 49 << " " << 20 << "C" << "C" << true;
        QTest::newRow("permanent wins, milk not looked at") << 33 << "O" << 10 << "C" << "O" << false;
        QTest::newRow("lower jaw pair") << 40 << "" << 11 << " П " << " П " << true;
        QTest::newRow("molar without a milk twin") << 21 << "E" << 0 << "" << "E" << false;
        QTest::newRow("last molar") << 52 << "K" << 0 << "" << "K" << false;
        QTest::newRow("nothing") << 30 << "" << 7 << "" << "" << false;
    }
    void chartCellsAndMilkFrames()
    {
        QFETCH(int, permanent);
        QFETCH(int, milk);
        QFETCH(bool, framed);
        SheetData sheet;
        sheet.egn = u"7505101234"_s;
        sheet.hasExam = true;
        sheet.dental = QStringList(52, QString());
        QFETCH(QString, permanentValue);
        (*sheet.dental)[permanent - 1] = permanentValue;
        QFETCH(QString, milkValue);
        if (milk)
            (*sheet.dental)[milk - 1] = milkValue;
        const print::Page page = firstPage(sheet);
        QTEST(page.textAt(u"Label%1"_s.arg(permanent - 3)), "shown");
        if (milk) {
            QCOMPARE(page.has(u"Shape%1"_s.arg(milk)), framed);
            QCOMPARE(page.has(u"Shape%1"_s.arg(100 + milk)), framed);
        }
        const auto frames = std::count_if(page.items.cbegin(), page.items.cend(),
                                          [](const print::PageItem &item) { return item.kind == print::ItemKind::Frame; });
        QCOMPARE(frames, framed ? 2 : 0);
    }

    void activityCodeFitsThreeBoxes_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("stored");
        QTest::addColumn<bool>("warned");
        QTest::newRow("three") << "101" << "1  0  1" << false;
        QTest::newRow("one, blanks around") << " 5 " << "5" << false;
        QTest::newRow("Cyrillic variant of four") << "301А" << "3  0  1" << true;
        QTest::newRow("empty takes the warning") << "" << "" << true;
        QTest::newRow("blanks only") << "   " << "" << true;
    }
    void activityCodeFitsThreeBoxes()
    {
        QFETCH(QString, code);
        bool cut = false;
        QTEST(SheetActivityCode(code, &cut), "stored");
        QTEST(cut, "warned");
    }

    void printTakesTheMarksOffInTheSameTransaction()
    {
        TestPractice practice;
        practice.addDoctor(u"Първа Докторова"_s, Doctor);
        practice.addDoctor(u"Втори Доктор"_s, u"2200000002"_s);
        const QString egn = validEgn(QDate(1980, 4, 2));
        practice.addPatient(egn, u"Мария О'Нийл"_s, Doctor);
        practice.addService(egn, QDate(2026, 3, 2), u"101"_s, Doctor);
        practice.addService(egn, QDate(2026, 3, 2), u"301А"_s, Doctor);
        practice.addService(egn, QDate(2026, 3, 1), u"508"_s, Doctor);
        store::run(store::clinicDb(), u"UPDATE Help SET ZK = 0 WHERE KodHelp = '508'"_s);
        store::run(store::clinicDb(), u"UPDATE Help SET KodZab = 'K02.1' WHERE KodHelp = '101'"_s);
        store::run(store::clinicDb(), u"UPDATE Dental SET Z1 = '*', Z21 = 'E' WHERE EGN = ?"_s, {egn});
        print::Page page;
        const auto done = printSheet(egn, &page);
        QVERIFY2(done, qPrintable(done.error()));
        QVERIFY(done->hasExam);
        QCOMPARE(done->lines, 2);
        QCOMPARE(done->shortenedCodes, 1);
        QCOMPARE(practice.count(u"SELECT COUNT(*) FROM Help WHERE ZK = 0 AND Schet = 1"_s), 2);
        QCOMPARE(practice.count(u"SELECT COUNT(*) FROM Help WHERE KodHelp = '508' AND Schet IS NULL"_s), 1);
        QCOMPARE(practice.count(u"SELECT COUNT(*) FROM TempKarton"_s), 2);
        QCOMPARE(page.textAt(u"Label8"_s), u"д-р Първа Докторова"_s); // the first doctor, on every sheet
        QCOMPARE(page.textAt(u"Label4"_s), u"Мария О'Нийл"_s);
        QStringList cells;
        for (const auto &[name, row] : {std::pair{"Text1", 0}, {"Text3", 0}, {"Text4", 0}, {"Text4", 1}})
            cells << page.textAt(print::rowItemName(QString::fromLatin1(name), row));
        QCOMPARE(cells, (QStringList{"02.03.2026", "K  0  2  .  1", "1  0  1", "3  0  1"}));
        QVERIFY(page.has(u"Shape1"_s));
        QCOMPARE(page.textAt(u"Label18"_s), u"E"_s);

        // A second press finds nothing marked, no examination among it: an empty list under the
        // patient's header, and no chart.
        const auto again = printSheet(egn, &page);
        QVERIFY(again);
        QCOMPARE(again->lines, 0);
        QCOMPARE(practice.count(u"SELECT COUNT(*) FROM TempKarton"_s), 0);
        QCOMPARE(page.textAt(u"Label4"_s), u"Мария О'Нийл"_s);
        QVERIFY(!page.has(print::rowItemName(u"Text1"_s, 0)));
        QVERIFY(!page.has(u"Shape1"_s));
        QCOMPARE(page.textAt(u"Label18"_s), QString());
    }

    // A sheet that did not come out, a print that keeps the marks, a missing doctor or patient:
    // the line keeps its mark, and TempKarton what it held.
    void marksStayWhereNoSheetCameOut_data()
    {
        QTest::addColumn<QString>("failure");
        QTest::addColumn<int>("marks");
        QTest::addColumn<bool>("withDoctor");
        QTest::addColumn<QString>("egn"); // empty: the patient's
        QTest::addColumn<QString>("message"); // empty: printed
        QTest::newRow("output fails") << "няма хартия" << int(SheetMarks::Change) << true << "" << "няма хартия";
        QTest::newRow("marks kept") << "" << int(SheetMarks::Keep) << true << "" << "";
        QTest::newRow("no doctor") << "" << int(SheetMarks::Change) << false << "" << "";
        QTest::newRow("no patient") << "" << int(SheetMarks::Change) << true << "0000000000" << "0000000000";
    }
    void marksStayWhereNoSheetCameOut()
    {
        QFETCH(QString, failure);
        QFETCH(int, marks);
        QFETCH(bool, withDoctor);
        QFETCH(QString, egn);
        QFETCH(QString, message);
        TestPractice practice;
        const QString patient = patientWithLine(practice, u"301"_s, withDoctor);
        store::run(store::clinicDb(), u"INSERT INTO TempKarton (Help) VALUES ('от преди')"_s);
        const auto done = printSheet(egn.isEmpty() ? patient : egn, nullptr, SheetMarks(marks), failure);
        QCOMPARE(bool(done), withDoctor && message.isEmpty());
        if (!done)
            QVERIFY2(done.error().contains(message), qPrintable(done.error()));
        if (!failure.isEmpty())
            QCOMPARE(practice.count(u"SELECT COUNT(*) FROM TempKarton WHERE Help = 'от преди'"_s), 1);
        QCOMPARE(practice.count(u"SELECT COUNT(*) FROM Help WHERE ZK = 1 AND Schet IS NULL"_s), 1);
    }

    void printButtonShowsTheSheetAndClosingItClosesTheWindow()
    {
        TestPractice practice;
        run().CurrentMedicCode = Doctor;
        const QString egn = patientWithLine(practice, u"3012"_s);
        QPointer<DenHelp> window = DenHelp::open(egn, u"Петър"_s, u"Edit"_s);
        QVERIFY(window);
        auto *button = window->findChild<QPushButton *>(u"cmdPrint"_s);
        QVERIFY(button && button->isEnabled());
        button->click();
        QCOMPARE(practice.dialogs().messages, QStringList{LongCodeWarning});
        QCOMPARE(practice.count(u"SELECT COUNT(*) FROM Help WHERE ZK = 0 AND Schet = 1"_s), 1);
        auto *preview = window->findChild<print::PrintPreview *>(u"rprKarton"_s);
        QVERIFY(preview && preview->isVisible());
        preview->close();
        QTRY_VERIFY(!window || !window->isVisible());
    }

    void commandWritesThePdfOrChangesNothing_data()
    {
        QTest::addColumn<bool>("knownEgn");
        QTest::addColumn<QString>("pdfName");
        QTest::addColumn<bool>("keepMarks");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<int>("stillMarked");
        QTest::newRow("printed") << true << "sheet.pdf" << false << 0 << 0;
        QTest::newRow("printed, marks kept") << true << "sheet.pdf" << true << 0 << 1;
        QTest::newRow("unknown EGN") << false << "sheet.pdf" << false << 1 << 1;
        QTest::newRow("folder missing") << true << "nowhere/sheet.pdf" << false << 1 << 1;
    }
    void commandWritesThePdfOrChangesNothing()
    {
        QFETCH(bool, knownEgn);
        QFETCH(QString, pdfName);
        QFETCH(bool, keepMarks);
        QFETCH(int, exitCode);
        QTemporaryDir out;
        QString egn;
        {
            TestPractice practice;
            egn = patientWithLine(practice, u"3010"_s);
            QVERIFY(practice.copyFilesTo(out.path()));
        }
        const QString pdf = out.filePath(pdfName);
        QStringList arguments{u"print"_s, u"sheet"_s, u"--data-dir"_s, out.path(), u"--egn"_s,
                              knownEgn ? egn : u"1111111111"_s, u"--pdf"_s, pdf};
        if (keepMarks)
            arguments << u"--keep-marks"_s;
        PrintCommand command;
        const CommandRun run = runCommand(command, arguments);
        QCOMPARE(run.exitCode, exitCode);
        QCOMPARE(QFile::exists(pdf), exitCode == 0);
        QCOMPARE(run.err.contains(u"Кода е по-голям от 3 символа!"_s), exitCode == 0);
        QVERIFY(exitCode == 0 || !run.err.trimmed().isEmpty());
        QVERIFY(store::openClinicFile(out.filePath(u"velmorata.db"_s), u"check"_s));
        QTEST(store::scalar(QSqlDatabase::database(u"check"_s), u"SELECT COUNT(*) FROM Help WHERE ZK = 1"_s).toInt(),
              "stillMarked");
        QSqlDatabase::database(u"check"_s).close();
        QSqlDatabase::removeDatabase(u"check"_s);
    }

    // The treatment data print: a milk tooth takes its permanent twin's cell, its number framed.
    void dataChartCells_data()
    {
        QTest::addColumn<QStringList>("chart");
        QTest::addColumn<int>("at"); // the cell's position: 0..15 upper row, 16..31 lower, left to right
        QTest::addColumn<int>("place");
        QTest::addColumn<QString>("number");
        QTest::addColumn<bool>("framed");
        QTest::addColumn<QString>("code");
        const QStringList chart(52, QString());
        QTest::newRow("empty chart shows the place's number") << chart << 3 << 15 << "15" << false << "";
        QTest::newRow("the upper row starts at 18") << chart << 0 << 18 << "18" << false << "";
        QTest::newRow("the lower row ends at 38") << chart << 31 << 38 << "38" << false << "";
        QStringList milk = chart;
        milk[0] = u"*"_s;  // Z1: 55 at the place of 15
        milk[10] = u"C"_s; // Z11: 85 at the place of 45
        QTest::newRow("milk star") << milk << 3 << 15 << "55" << true << "*";
        QTest::newRow("milk code, lower jaw") << milk << 19 << 45 << "85" << true << "C";
        QStringList both = milk;
        both[23] = u"P"_s; // Z24: 15
        QTest::newRow("both filled: the permanent code, the milk frame") << both << 3 << 15 << "55" << true << "P";
        QStringList blankMilk = chart;
        blankMilk[5] = u"  "_s; // Z6: 61 blank
        blankMilk[33] = u"K"_s; // Z34: 26, a molar
        QTest::newRow("a blank milk field frames nothing") << blankMilk << 8 << 21 << "21" << false << "";
        QTest::newRow("molar") << blankMilk << 13 << 26 << "26" << false << "K";
    }
    void dataChartCells()
    {
        QFETCH(QStringList, chart);
        QFETCH(int, at);
        const DataChart built = BuildDataChart(chart);
        QCOMPARE(built.upper.size(), 16);
        QCOMPARE(built.lower.size(), 16);
        const DataChartCell cell = (built.upper + built.lower).at(at);
        QTEST(cell.place, "place");
        QTEST(cell.number, "number");
        QTEST(cell.framed, "framed");
        QTEST(cell.code, "code");
    }

    // The page is wired to the chart: the milk number at its twin's place, framed.
    void dataPageFramesMilkNumbers()
    {
        QStringList chart(52, QString());
        chart[0] = u"*"_s;
        TreatmentData data{patientrecord::BuildPersonalTexts({}, false), BuildDataChart(chart), {}};
        const print::Page page = TreatmentDataPage(data).pages().first();
        QCOMPARE((QStringList{page.textAt(u"z_15"_s), page.textAt(u"s_15"_s), page.textAt(u"z_14"_s)}),
                 (QStringList{"55", "*", "14"}));
        QVERIFY(page.has(u"frame_15"_s) && !page.has(u"frame_14"_s));
    }

    void dataOfAStoredPatient()
    {
        TestPractice practice;
        const QString egn = validEgn(QDate(2012, 7, 1), false); // month code 47
        practice.addPatient(egn, u"Ана"_s, u"D1"_s);
        store::run(store::clinicDb(), u"UPDATE Pacients SET Tawn = 'Бургас', UL = 'ул. \"Бор\"' WHERE EGN = ?"_s, {egn});
        store::run(store::clinicDb(),
                   u"INSERT INTO Help (EGN, Data, KodHelp, Vid, KodMedic) VALUES (?, '2026-01-05', '101', 'П', 'D1')"_s,
                   {egn});
        const auto data = LoadTreatmentData(store::clinicDb(), egn);
        QVERIFY2(data.ok(), qPrintable(data.error()));
        QCOMPARE(data->personal.address, u" Бургасул. \"Бор\""_s);
        QCOMPARE(data->personal.names, u"на Ана    ЕГН "_s + egn);
        QCOMPARE(data->services.size(), 1);
        QCOMPARE(data->services.first().Vid, u"П"_s);
        QCOMPARE(data->services.first().Data, u"05.01.2026"_s);
        QVERIFY(!LoadTreatmentData(store::clinicDb(), u"9999999999"_s).ok());
    }
};

QTEST_MAIN(tst_SheetPrint)
#include "tst_SheetPrint.moc"
