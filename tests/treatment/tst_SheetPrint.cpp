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
#include "treatment/ui/DenHelp.h"

#include <QPointer>
#include <QPushButton>

#include <QFile>
#include <QTest>

namespace {

const QString Doctor = QStringLiteral("2200000001");

print::Page firstPage(const SheetData &sheet) { return KartonPage(sheet).pages().first(); }

Outcome accept(const print::PageDescription &) { return Outcome::success(); }

QStringList emptyChart() { return QStringList(52, QString()); }

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
        const QString designMonth = DesignMonth;
        QTest::newRow("1975, May") << "7505101234" << "1  9" << SpreadWide(QStringLiteral("05"));
        QTest::newRow("1899, m 21") << "9921101234" << "1  8" << SpreadWide(QStringLiteral("1"));
        QTest::newRow("1899, m 22") << "9922101234" << "1  8" << SpreadWide(QStringLiteral("2"));
        QTest::newRow("m 23: century only") << "9923101234" << "1  8" << designMonth;
        QTest::newRow("m 25: the design month stays") << "9925101234" << "1  8" << designMonth;
        QTest::newRow("m 32") << "9932101234" << "1  8" << designMonth;
        QTest::newRow("2005, May: single digit") << "0545101234" << "2  0" << QStringLiteral("5") + QString(18, u' ');
        QTest::newRow("2005, October: two digits apart")
            << "0550101234" << "2  0" << QStringLiteral("1  0") + QString(16, u' ');
        QTest::newRow("m 52") << "0552101234" << "2  0" << SpreadWide(QStringLiteral("12"));
        QTest::newRow("m 33: nothing set") << "0533101234" << "1  9" << designMonth;
        QTest::newRow("m 53: nothing set") << "0553101234" << "1  9" << designMonth;
        QTest::newRow("m 00: nothing set") << "0500101234" << "1  9" << designMonth;
        QTest::newRow("letters: nothing set") << "05AB101234" << "1  9" << designMonth;
    }
    void birthCellsFollowTheMonthCode()
    {
        QFETCH(QString, egn);
        QFETCH(QString, century);
        QFETCH(QString, month);
        SheetData sheet;
        sheet.egn = egn;
        const print::Page page = firstPage(sheet);
        QCOMPARE(page.textAt(QStringLiteral("Label53")), century);
        QCOMPARE(page.textAt(QStringLiteral("Label51")), month);
        QCOMPARE(page.textAt(QStringLiteral("Label52")), egn.mid(4, 1) + QStringLiteral("  ") + egn.mid(5, 1));
        QCOMPARE(page.textAt(QStringLiteral("Label54")), SpreadWide(egn.left(2)));
    }

    void headerCells()
    {
        SheetData sheet;
        sheet.egn = QStringLiteral("7505101234");
        const QString longName = QStringLiteral("Д'Арк \"Жана\" ") + QString(242, u'Я');
        sheet.patient = {{QStringLiteral("Names"), longName},    {QStringLiteral("RZOK"), QStringLiteral("22")},
                         {QStringLiteral("ZR"), QStringLiteral("07")}, {QStringLiteral("Tawn"), QStringLiteral(" София ")},
                         {QStringLiteral("UL"), QStringLiteral("   ")}, {QStringLiteral("ZBook"), QStringLiteral("123")},
                         {QStringLiteral("AP"), QStringLiteral("12")}};
        sheet.doctor = {QStringLiteral("Иван Иванов"), QStringLiteral("6001011234"), Doctor};
        const print::Page page = firstPage(sheet);
        QCOMPARE(page.textAt(QStringLiteral("Label4")), longName);
        QCOMPARE(page.textAt(QStringLiteral("Label1")), QStringLiteral("7 5 0 5 1 0 1 2 3 4"));
        QCOMPARE(page.textAt(QStringLiteral("Label2")), QStringLiteral("2 2"));
        QCOMPARE(page.textAt(QStringLiteral("Label3")), QStringLiteral("0 7"));
        QCOMPARE(page.textAt(QStringLiteral("Label6")), SpreadNarrow(Doctor));
        QCOMPARE(page.textAt(QStringLiteral("Label8")), QStringLiteral("д-р Иван Иванов"));
        QCOMPARE(page.textAt(QStringLiteral("Label7")), QStringLiteral("6 0 0 1 0 1 1 2 3 4"));
        QCOMPARE(page.textAt(QStringLiteral("Label50")), QStringLiteral(" София ")); // the raw text
        QCOMPARE(page.textAt(QStringLiteral("Label5")), QString());                 // blank: not set
        QCOMPARE(page.textAt(QStringLiteral("Label9")), SpreadNarrow(QStringLiteral("123")));
        QCOMPARE(page.textAt(QStringLiteral("Label17")), QStringLiteral("12"));
        QCOMPARE(page.textAt(QStringLiteral("Label10")), QString());
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
        QFETCH(QString, permanentValue);
        QFETCH(int, milk);
        QFETCH(QString, milkValue);
        QFETCH(QString, shown);
        QFETCH(bool, framed);
        SheetData sheet;
        sheet.egn = QStringLiteral("7505101234");
        sheet.hasExam = true;
        sheet.dental = emptyChart();
        (*sheet.dental)[permanent - 1] = permanentValue;
        if (milk)
            (*sheet.dental)[milk - 1] = milkValue;
        const print::Page page = firstPage(sheet);
        QCOMPARE(page.textAt(QStringLiteral("Label%1").arg(permanent - 3)), shown);
        if (milk) {
            QCOMPARE(page.has(QStringLiteral("Shape%1").arg(milk)), framed);
            QCOMPARE(page.has(QStringLiteral("Shape%1").arg(100 + milk)), framed);
        }
        int frames = 0;
        for (const print::PageItem &item : page.items)
            frames += item.kind == print::ItemKind::Frame ? 1 : 0;
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
        QFETCH(QString, stored);
        QFETCH(bool, warned);
        bool cut = false;
        QCOMPARE(SheetActivityCode(code, &cut), stored);
        QCOMPARE(cut, warned);
    }

    void printTakesTheMarksOffInTheSameTransaction()
    {
        TestPractice practice;
        practice.addDoctor(QStringLiteral("Първа Докторова"), Doctor);
        practice.addDoctor(QStringLiteral("Втори Доктор"), QStringLiteral("2200000002"));
        const QString egn = validEgn(QDate(1980, 4, 2));
        practice.addPatient(egn, QStringLiteral("Мария О'Нийл"), Doctor);
        practice.addService(egn, QDate(2026, 3, 2), QStringLiteral("101"), Doctor);
        practice.addService(egn, QDate(2026, 3, 2), QStringLiteral("301А"), Doctor);
        practice.addService(egn, QDate(2026, 3, 1), QStringLiteral("508"), Doctor);
        store::run(store::clinicDb(), QStringLiteral("UPDATE Help SET ZK = 0 WHERE KodHelp = '508'"));
        store::run(store::clinicDb(), QStringLiteral("UPDATE Help SET KodZab = 'K02.1' WHERE KodHelp = '101'"));
        store::run(store::clinicDb(), QStringLiteral("UPDATE Dental SET Z1 = '*' WHERE EGN = ?"), {egn});

        print::PageDescription printed;
        const auto done = PrintSheet(store::clinicDb(), egn, SheetMarks::Change, [&](const print::PageDescription &sheet) {
            printed = sheet;
            return Outcome::success();
        });
        QVERIFY2(done, qPrintable(done.error()));
        QVERIFY(done->hasExam);
        QCOMPARE(done->lines, 2);
        QCOMPARE(done->shortenedCodes, 1);
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM Help WHERE ZK = 0 AND Schet = 1")), 2);
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM Help WHERE KodHelp = '508' AND Schet IS NULL")), 1);
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM TempKarton")), 2);
        const print::Page page = printed.pages().first();
        QCOMPARE(page.textAt(QStringLiteral("Label8")), QStringLiteral("д-р Първа Докторова"));
        QCOMPARE(page.textAt(QStringLiteral("Label4")), QStringLiteral("Мария О'Нийл"));
        QCOMPARE(page.textAt(print::rowItemName(QStringLiteral("Text1"), 0)), QStringLiteral("02.03.2026"));
        QCOMPARE(page.textAt(print::rowItemName(QStringLiteral("Text3"), 0)), QStringLiteral("K  0  2  .  1"));
        QCOMPARE(page.textAt(print::rowItemName(QStringLiteral("Text4"), 0)), QStringLiteral("1  0  1"));
        QCOMPARE(page.textAt(print::rowItemName(QStringLiteral("Text4"), 1)), QStringLiteral("3  0  1"));
        QVERIFY(page.has(QStringLiteral("Shape1")));

        // A second press finds nothing marked: an empty list under the patient's header, no chart.
        const auto again = PrintSheet(store::clinicDb(), egn, SheetMarks::Change, [&](const print::PageDescription &sheet) {
            printed = sheet;
            return Outcome::success();
        });
        QVERIFY(again);
        QCOMPARE(again->lines, 0);
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM TempKarton")), 0);
        const print::Page second = printed.pages().first();
        QCOMPARE(second.textAt(QStringLiteral("Label4")), QStringLiteral("Мария О'Нийл"));
        QVERIFY(!second.has(print::rowItemName(QStringLiteral("Text1"), 0)));
        QVERIFY(!second.has(QStringLiteral("Shape1")));
    }

    void sheetWithoutExaminationHasNoChart()
    {
        TestPractice practice;
        practice.addDoctor(QStringLiteral("Д"), Doctor);
        const QString egn = validEgn(QDate(2005, 5, 20));
        practice.addPatient(egn, QStringLiteral("Петър"), Doctor);
        practice.addService(egn, QDate(2026, 3, 2), QStringLiteral("301"), Doctor);
        store::run(store::clinicDb(), QStringLiteral("UPDATE Dental SET Z1 = '*', Z21 = 'E' WHERE EGN = ?"), {egn});
        print::PageDescription printed;
        const auto done = PrintSheet(store::clinicDb(), egn, SheetMarks::Change, [&](const print::PageDescription &sheet) {
            printed = sheet;
            return Outcome::success();
        });
        QVERIFY(done && !done->hasExam);
        const print::Page page = printed.pages().first();
        QCOMPARE(page.textAt(QStringLiteral("Label18")), QString());
        QVERIFY(!page.has(QStringLiteral("Shape1")));
        QCOMPARE(page.textAt(QStringLiteral("Label53")), QStringLiteral("2  0"));
    }

    void failedOrKeptPrintLeavesTheMarks_data()
    {
        QTest::addColumn<bool>("outputFails");
        QTest::addColumn<bool>("keepMarks");
        QTest::newRow("output fails") << true << false;
        QTest::newRow("marks kept") << false << true;
    }
    void failedOrKeptPrintLeavesTheMarks()
    {
        QFETCH(bool, outputFails);
        QFETCH(bool, keepMarks);
        TestPractice practice;
        practice.addDoctor(QStringLiteral("Д"), Doctor);
        const QString egn = validEgn(QDate(1990, 1, 1));
        practice.addPatient(egn, QStringLiteral("Петър"), Doctor);
        practice.addService(egn, QDate(2026, 3, 2), QStringLiteral("301"), Doctor);
        store::run(store::clinicDb(), QStringLiteral("INSERT INTO TempKarton (Help) VALUES ('от преди')"));
        const auto done = PrintSheet(store::clinicDb(), egn, keepMarks ? SheetMarks::Keep : SheetMarks::Change,
                                     [&](const print::PageDescription &) {
                                         return outputFails ? Outcome::failure(QStringLiteral("няма хартия"))
                                                            : Outcome::success();
                                     });
        QCOMPARE(bool(done), !outputFails);
        if (outputFails) {
            QVERIFY(done.error().contains(QStringLiteral("няма хартия")));
            QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM TempKarton WHERE Help = 'от преди'")), 1);
        }
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM Help WHERE ZK = 1 AND Schet IS NULL")), 1);
    }

    void missingPatientOrDoctorIsAMessage()
    {
        TestPractice practice;
        const QString egn = validEgn(QDate(1990, 1, 1));
        practice.addPatient(egn, QStringLiteral("Петър"), Doctor);
        practice.addService(egn, QDate(2026, 3, 2), QStringLiteral("301"), Doctor);
        const auto noDoctor = PrintSheet(store::clinicDb(), egn, SheetMarks::Change, accept);
        QVERIFY(!noDoctor);
        practice.addDoctor(QStringLiteral("Д"), Doctor);
        const auto noPatient = PrintSheet(store::clinicDb(), QStringLiteral("0000000000"), SheetMarks::Change, accept);
        QVERIFY(!noPatient);
        QVERIFY(noPatient.error().contains(QStringLiteral("0000000000")));
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM Help WHERE ZK = 1")), 1);
    }

    void printButtonShowsTheSheetAndClosingItClosesTheWindow()
    {
        TestPractice practice;
        practice.addDoctor(QStringLiteral("Д"), Doctor);
        run().CurrentMedicCode = Doctor;
        const QString egn = validEgn(QDate(1990, 1, 1));
        practice.addPatient(egn, QStringLiteral("Петър Петров"), Doctor);
        practice.addService(egn, QDate(2026, 3, 2), QStringLiteral("3012"), Doctor);
        QPointer<DenHelp> window = DenHelp::open(egn, QStringLiteral("Петър Петров"), QStringLiteral("Edit"));
        QVERIFY(window);
        auto *button = window->findChild<QPushButton *>(QStringLiteral("cmdPrint"));
        QVERIFY(button && button->isEnabled());
        button->click();
        QCOMPARE(practice.dialogs().messages, QStringList{LongCodeWarning});
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM Help WHERE ZK = 0 AND Schet = 1")), 1);
        auto *preview = window->findChild<print::PrintPreview *>(QStringLiteral("rprKarton"));
        QVERIFY(preview && preview->isVisible());
        preview->close();
        QTRY_VERIFY(!window || !window->isVisible());
    }

    void commandWritesThePdfOrChangesNothing_data()
    {
        QTest::addColumn<QString>("egnKind");
        QTest::addColumn<QString>("pdfPlace");
        QTest::addColumn<bool>("keepMarks");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<int>("stillMarked");
        QTest::newRow("printed") << "known" << "folder" << false << 0 << 0;
        QTest::newRow("printed, marks kept") << "known" << "folder" << true << 0 << 1;
        QTest::newRow("unknown EGN") << "unknown" << "folder" << false << 1 << 1;
        QTest::newRow("folder missing") << "known" << "missing" << false << 1 << 1;
    }
    void commandWritesThePdfOrChangesNothing()
    {
        QFETCH(QString, egnKind);
        QFETCH(QString, pdfPlace);
        QFETCH(bool, keepMarks);
        QFETCH(int, exitCode);
        QFETCH(int, stillMarked);
        QTemporaryDir out;
        const QString egn = validEgn(QDate(1990, 1, 1));
        {
            TestPractice practice;
            practice.addDoctor(QStringLiteral("Д"), Doctor);
            practice.addPatient(egn, QStringLiteral("Петър"), Doctor);
            practice.addService(egn, QDate(2026, 3, 2), QStringLiteral("3010"), Doctor);
            QVERIFY(practice.copyFilesTo(out.path()));
        }
        const QString pdf = pdfPlace == QStringLiteral("folder") ? out.filePath(QStringLiteral("sheet.pdf"))
                                                                  : out.filePath(QStringLiteral("nowhere/sheet.pdf"));
        QStringList arguments{QStringLiteral("print"), QStringLiteral("sheet"), QStringLiteral("--data-dir"), out.path(),
                              QStringLiteral("--egn"), egnKind == QStringLiteral("known") ? egn : QStringLiteral("1111111111"),
                              QStringLiteral("--pdf"), pdf};
        if (keepMarks)
            arguments << QStringLiteral("--keep-marks");
        QString outText, errText;
        QTextStream outStream(&outText), errStream(&errText);
        PrintCommand command;
        QCOMPARE(command.execute(arguments, outStream, errStream), exitCode);
        errStream.flush();
        QCOMPARE(QFile::exists(pdf), exitCode == 0);
        QCOMPARE(errText.contains(QStringLiteral("Кода е по-голям от 3 символа!")), exitCode == 0);
        if (exitCode)
            QVERIFY(!errText.trimmed().isEmpty());
        QVERIFY(store::openClinicFile(out.filePath(QStringLiteral("velmorata.db")), QStringLiteral("check")));
        {
            const QSqlDatabase check = QSqlDatabase::database(QStringLiteral("check"));
            QCOMPARE(store::scalar(check, QStringLiteral("SELECT COUNT(*) FROM Help WHERE ZK = 1")).toInt(), stillMarked);
            QSqlDatabase::database(QStringLiteral("check")).close();
        }
        QSqlDatabase::removeDatabase(QStringLiteral("check"));
    }
};

QTEST_MAIN(tst_SheetPrint)
#include "tst_SheetPrint.moc"
