// The claim form: counting the lines into TempSpec, pricing the counts into the form's cells,
// the unit's boxes and the page that carries them.
#include "TestPractice.h"

#include "reports/forms/ClaimForm.h"
#include "reports/forms/ClaimFormCells.h"
#include "reports/forms/ClaimFormPage.h"
#include "store/Dates.h"
#include "store/Scratch.h"
#include "store/Sql.h"

#include <QSqlRecord>
#include <QTest>

using namespace reports;
using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(reports::SpecificationRow)

namespace {

const QString Doctor = u"D1"_s;
const QDate Born(2008, 3, 10); // 18 on 10.03.2026

Period march()
{
    const PeriodEntry entry = CheckPeriod(u"01.03.2026"_s, u"31.03.2026"_s);
    Q_ASSERT(entry.check == PeriodCheck::Accepted);
    return entry.period;
}

// The TempSpec row as "F10111=1 F30112=2", its columns that are not 0, in the layout's order.
QString writtenRow()
{
    QSqlQuery query = store::run(store::scratchDb(), u"SELECT * FROM TempSpec"_s);
    if (!query.next())
        return u"no row"_s;
    QStringList counted;
    const QSqlRecord record = query.record();
    for (int n = 0; n < record.count(); ++n)
        if (record.value(n).toInt() != 0)
            counted << record.fieldName(n) + u'=' + record.value(n).toString();
    return query.next() ? u"two rows"_s : counted.join(u' ');
}

Result<SkippedPatients> build(const Period &period = march())
{
    const Outcome made = store::CreateScratchTable(u"TempSpec"_s);
    Q_ASSERT(made.ok());
    return BuildSpecification(store::clinicDb(), store::scratchDb(), period, Doctor);
}

void addLines(const QString &egn, const QDate &date, const QString &code, int count)
{
    store::Transaction transaction(store::clinicDb());
    for (int n = 0; n < count; ++n)
        store::run(store::clinicDb(),
                   u"INSERT INTO Help (EGN, Data, KodHelp, KodMedic, ListID) VALUES (?,?,?,?,'000001')"_s,
                   {egn, dates::toIso(date), code, Doctor});
    transaction.commit();
}

QHash<QString, QString> byName(const QList<SpecificationCell> &cells)
{
    QHash<QString, QString> named;
    for (const SpecificationCell &cell : cells)
        named.insert(cell.name, cell.text);
    return named;
}

// "Label68=7 Label80=2": the texts the cells must show; "Label146=" a cell that must stay unset.
void compareCells(const QList<SpecificationCell> &cells, const QString &expected)
{
    const QHash<QString, QString> named = byName(cells);
    for (const QString &pair : expected.split(u' ', Qt::SkipEmptyParts)) {
        const QString name = pair.section(u'=', 0, 0);
        const QString text = pair.section(u'=', 1);
        if (text.isEmpty())
            QVERIFY2(!named.contains(name), qPrintable(name + u" is set to "_s + named.value(name)));
        else
            QCOMPARE(named.value(name, u"(unset)"_s), text);
    }
}


} // namespace

class TestSpecification final : public QObject
{
    Q_OBJECT
private slots:
    void counting_data()
    {
        QTest::addColumn<QStringList>("codes");
        QTest::addColumn<QDate>("day");
        QTest::addColumn<QString>("row");
        const QDate birthday(2026, 3, 10);
        const QDate after(2026, 3, 11);
        QTest::newRow("on the 18th birthday: up to 18") << QStringList{"101", "103"} << birthday << "F10111=1 F10311=1";
        QTest::newRow("a day after: over 18") << QStringList{"101", "103"} << after << "F10112=1 F10312=1";
        QTest::newRow("fillings in both alphabets, up to 18")
            << QStringList{"301", "301A", "304Б", "302В", "303B"} << birthday << "F30111=5";
        QTest::newRow("fillings over 18") << QStringList{"304", "302А"} << after << "F30112=2";
        QTest::newRow("not fillings") << QStringList{"305", "301C", "301 ", "3011"} << birthday << "";
        QTest::newRow("extractions and pulps up to 18")
            << QStringList{"508", "509", "332", "333", "333"} << birthday << "F33211=1 F33311=2 F50811=1 F50911=1";
        QTest::newRow("over 18: 509 claimed, 332 333 508 counted nowhere")
            << QStringList{"509", "332", "333", "508"} << after << "F50912=1";
        QTest::newRow("codes the form has no place for") << QStringList{"102", "999", ""} << after << "";
    }
    void counting()
    {
        QFETCH(QStringList, codes);
        QFETCH(QDate, day);
        TestPractice practice;
        const QString egn = validEgn(Born);
        for (const QString &code : codes)
            practice.addService(egn, day, code, Doctor);
        practice.addService(egn, day, u"101"_s, u"D2"_s);     // another doctor's
        practice.addService(egn, QDate(2026, 4, 1), u"101"_s, Doctor);    // after the period
        const auto built = build();
        QVERIFY2(built.ok(), qPrintable(built.error()));
        QVERIFY(built->isEmpty());
        QTEST(writtenRow(), "row");
        QCOMPARE(practice.dialogs().messages, QStringList{DoneMessage});
        QCOMPARE(practice.dialogs().progressShown, 1);
    }

    void emptyPeriodWritesZeros()
    {
        TestPractice practice;
        const auto built = build();
        QVERIFY2(built.ok(), qPrintable(built.error()));
        QCOMPARE(writtenRow(), QString());
        QCOMPARE(practice.dialogs().progressShown, 0);
        QCOMPARE(practice.dialogs().messages, QStringList{DoneMessage});
    }

    void numberWithoutBirthDateIsSkipped()
    {
        TestPractice practice;
        const QString noDate = u"0800000000"_s; // day 00
        const QString other = validEgn(Born);
        practice.addService(noDate, QDate(2026, 3, 2), u"101"_s, Doctor);
        practice.addService(noDate, QDate(2026, 3, 3), u"301"_s, Doctor);
        practice.addService(other, QDate(2026, 3, 3), u"301"_s, Doctor);
        const auto built = build();
        QVERIFY2(built.ok(), qPrintable(built.error()));
        QCOMPARE(built->egns(), QStringList{noDate});
        QCOMPARE(writtenRow(), u"F30111=1"_s);
    }

    void sixteenBitCounter_data()
    {
        QTest::addColumn<int>("lines");
        QTest::addColumn<bool>("fits");
        QTest::newRow("32767 fits") << 32767 << true;
        QTest::newRow("32768 does not") << 32768 << false;
    }
    void sixteenBitCounter()
    {
        QFETCH(int, lines);
        QFETCH(bool, fits);
        TestPractice practice;
        addLines(validEgn(QDate(2015, 6, 1)), QDate(2026, 3, 20), u"509"_s, lines);
        // Unclaimed lines over 18 do not make the claim fail.
        addLines(validEgn(QDate(1980, 1, 1)), QDate(2026, 3, 20), u"332"_s, 32768);
        const auto built = build();
        QCOMPARE(built.ok(), fits);
        if (fits) {
            QCOMPARE(writtenRow(), u"F50911=32767"_s);
            return;
        }
        QCOMPARE(built.error(), CounterOverflowMessage(u"дейностите с код 50911"_s, march()));
        QCOMPARE(writtenRow(), u"no row"_s);
        QVERIFY(practice.dialogs().messages.isEmpty());
    }

    void amountFormat_data()
    {
        QTest::addColumn<double>("amount");
        QTest::addColumn<QString>("text");
        QTest::newRow("4 x 6.44") << 4 * 6.44 << "25.76";
        QTest::newRow("10 x 21.13: no forced zero") << 10 * 21.13 << "211.3";
        QTest::newRow("whole: a bare point") << 6.0 << "6.";
        QTest::newRow("under 1: no leading zero") << 0.5 << ".5";
        QTest::newRow("zero") << 0.0 << ".";
        QTest::newRow("7 x 6.44") << 7 * 6.44 << "45.08";
        QTest::newRow("a decimal half rounds up, whatever the binary value") << 1.005 << "1.01";
        QTest::newRow("32767 x 68.93") << 32767 * 68.93 << "2258629.31";
    }
    void amountFormat()
    {
        QFETCH(double, amount);
        QTEST(FormatAmount(amount), "text");
    }

    void totalFormat_data()
    {
        QTest::addColumn<float>("total");
        QTest::addColumn<QString>("text");
        QTest::newRow("zero") << 0.0f << ".";
        QTest::newRow("small") << float(25.76 + 211.3) << "237.06";
        QTest::newRow("a float keeps seven digits") << float(32767 * 21.13) << "692366.7";
    }
    void totalFormat()
    {
        QFETCH(float, total);
        QTEST(FormatTotal(total), "text");
    }

    void boxes_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<int>("boxes");
        QTest::addColumn<QStringList>("characters");
        QTest::newRow("fills the boxes") << "1234567890" << 10 << QString("1234567890").split(QString(), Qt::SkipEmptyParts);
        QTest::newRow("eight into nine: the last one twice")
            << "12345678" << 9 << QStringList{"1", "2", "3", "4", "5", "6", "7", "8", "8"};
        QTest::newRow("one character: first and last box")
            << "7" << 9 << QStringList{"7", "", "", "", "", "", "", "", "7"};
        QTest::newRow("too long: the last box takes the last")
            << "ABCDEFGHIJK" << 10 << QStringList{"A", "B", "C", "D", "E", "F", "G", "H", "I", "K"};
        QTest::newRow("empty") << "" << 9 << QStringList(9, QString());
    }
    void boxes()
    {
        QFETCH(QString, value);
        QFETCH(int, boxes);
        QTEST(BoxCharacters(value, boxes), "characters");
    }

    void tableCells_data()
    {
        QTest::addColumn<SpecificationRow>("row");
        QTest::addColumn<QString>("cells");
        SpecificationRow pregnantOnly;
        pregnantOnly.F10312 = 3;
        pregnantOnly.F10311 = 4;
        QTest::newRow("pregnancy examinations without 101 are not paid")
            << pregnantOnly << "Label68=0 Label80=0 Label69=0 Label110=0 Label116=0 Label111=0 Label99=. Label153=.";
        SpecificationRow withPregnant;
        withPregnant.F10112 = 5;
        withPregnant.F10312 = 2;
        QTest::newRow("5 and 2 are paid together")
            << withPregnant << "Label68=7 Label80=2 Label69=45.08 Label99=45.08 Label159=45.08";
        SpecificationRow noPregnant;
        noPregnant.F10111 = 4;
        QTest::newRow("101 alone: the 103 cell shows 0") << noPregnant << "Label110=4 Label116=0 Label111=25.76";
        SpecificationRow rows;
        rows.F30112 = 10;
        rows.F50912 = 1;
        rows.F30111 = 2;
        rows.F50811 = 3;
        rows.F50911 = 1;
        rows.F33211 = 1;
        rows.F33311 = 2;
        QTest::newRow("every other row at its price")
            << rows
            << "Label86=10 Label87=211.3 Label92=1 Label93=21.13 Label99=232.43 Label122=2 Label123=50.26 "
               "Label128=3 Label129=35.94 Label134=1 Label135=25.13 Label140=1 Label141=21.92 Label146=2 "
               "Label144= Label147=137.86 Label153=271.11 Label159=503.54";
        QTest::newRow("nothing done: 0 everywhere, totals through the format, 33311's zero beside its cell")
            << SpecificationRow{} << "Label68=0 Label69=0 Label80=0 Label86=0 Label87=0 Label92=0 Label93=0 "
                                     "Label110=0 Label111=0 Label116=0 Label122=0 Label123=0 Label128=0 Label129=0 "
                                     "Label134=0 Label135=0 Label140=0 Label141=0 Label144=0 Label146= Label147=0 "
                                     "Label99=. Label153=. Label159=.";
        SpecificationRow large;
        large.F30112 = 32767;
        large.F33311 = 32767;
        QTest::newRow("totals in single precision")
            << large << "Label87=692366.71 Label99=692366.7 Label147=2258629.31 Label153=2258629. Label159=2950996.";
    }
    void tableCells()
    {
        QFETCH(SpecificationRow, row);
        QFETCH(QString, cells);
        compareCells(SpecificationCells(row, {}, march()), cells);
    }

    void unitCellsFromTheFirstRow()
    {
        TestPractice practice;
        store::run(store::clinicDb(), u"DELETE FROM MedicUnit"_s); // a new file has an empty row
        store::run(store::clinicDb(),
                   QStringLiteral("INSERT INTO MedicUnit (UserID, UserName, UserEGN, UserUIN, UserMOL, UserCity, UserUl, "
                                  "UserUlID, UserKs, UserBl, UserVx, UserBank, UserIBAN) "
                                  "VALUES ('2201131234', 'Д-р О''Брайън & Ко', '7501010010', '22000123', 'Иван Петров', "
                                  "'София', 'Витоша', '12', NULL, '', '  ', 'ОББ', NULL)"));
        store::run(store::clinicDb(), u"INSERT INTO MedicUnit (UserName) VALUES ('Втори ред')"_s);
        QVERIFY(build().ok());
        const auto cells = LoadSpecificationCells(store::clinicDb(), store::scratchDb(), march());
        QVERIFY2(cells.ok(), qPrintable(cells.error()));
        compareCells(cells.value(),
                     "Label45=2 Label195=2 Label203=4 Label7=7 Label212=0 Label52=2 Label219=3 Label220=3 "
                     "Label25=София Label26=Витоша Label28=12 Label16=ОББ "
                     "Label10= Label8= Label20= Label13= Label68=0");
        const QHash<QString, QString> named = byName(cells.value());
        QCOMPARE(named.value("Label9"), u"Д-р О'Брайън & Ко"_s);
        QCOMPARE(named.value("Label54"), u"Иван Петров"_s);
        QCOMPARE(named.value("Label34"), u"  "_s); // blanks are a value, as stored
        QCOMPARE(named.value("Label42"), u"01.03.2026 г."_s);
        QCOMPARE(named.value("Label50"), u"31.03.2026 г."_s);
    }

    void practiceWithoutUnitRow()
    {
        TestPractice practice;
        practice.addService(validEgn(Born), QDate(2026, 3, 12), u"101"_s, Doctor);
        QVERIFY(build().ok());
        const auto cells = LoadSpecificationCells(store::clinicDb(), store::scratchDb(), march());
        QVERIFY2(cells.ok(), qPrintable(cells.error()));
        compareCells(cells.value(), "Label45= Label9= Label7= Label52= Label54= Label68=1 Label69=6.44");
    }

    void pageCarriesEveryCell()
    {
        SpecificationRow row;
        row.F10112 = 5;
        row.F10312 = 2;
        UnitFields unit{{"UserUIN", "22000123"}, {"UserName", "Практика"}, {"UserKs", "Младост"}};
        const QList<SpecificationCell> cells = SpecificationCells(row, unit, march());
        const print::PageDescription form = SpecificationPage(cells);
        QCOMPARE(form.formName, u"rptSpec"_s);
        QCOMPARE(form.size, print::A4);
        const QList<print::Page> pages = form.pages();
        QCOMPARE(pages.size(), 1);
        for (const SpecificationCell &cell : cells)
            QCOMPARE(pages.first().textAt(cell.name), cell.text);
        QVERIFY(pages.first().has("Label146")); // the count cell keeps its place, empty
        // The form's heading keeps its Latin "o", as the fund's form has it.
        QVERIFY(std::any_of(pages.first().items.cbegin(), pages.first().items.cend(), [](const print::PageItem &item) {
            return item.text == QString::fromUtf8("Дентални дейности за лица д") + u'o' + u" 18 години"_s;
        }));
        QSet<QString> names;
        for (const print::PageItem &item : pages.first().items) {
            QVERIFY2(!names.contains(item.name), qPrintable(item.name));
            names.insert(item.name);
            QVERIFY2(QRectF(0, 0, 210, 297).contains(item.rect), qPrintable(item.name));
        }
    }
};

QTEST_MAIN(TestSpecification)
#include "tst_ClaimForm.moc"
