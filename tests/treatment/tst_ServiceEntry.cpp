// The save of a service line: the short-code table, price by age, the day's minutes, the cell
// the code stands in, the sheet number per doctor and year, and the rows that must not be written.
#include "Rows.h"
#include "TestPractice.h"

#include "base/RunState.h"
#include "treatment/ServiceEntry.h"
#include "treatment/SheetNumbers.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QDate Today(2026, 3, 15);
const QString Doctor = u"D1"_s;
const QString Adult = validEgn(QDate(1980, 5, 5));

ServiceLine typedLine(const QString &code, const QString &date = u"15.03.2026"_s)
{
    ServiceLine line;
    line.Data = date;
    line.KodHelp = code;
    return line;
}

Result<SavedService> save(const QString &egn, const ServiceLine &line, int column = KodHelpColumn,
                          const QString &sheet = u"000007"_s)
{
    return SaveServiceLine(store::clinicDb(), {egn, Doctor, sheet, Today}, line, column);
}

// The stored line as "KodMedic|ListID|ZK|Cena|Times|KodHelp|KodZab|Help|TextHelp|Data"; an
// empty text may be stored as Null.
QString storedRow(qint64 id)
{
    QStringList cells = rowsOf(store::clinicDb(),
                               u"SELECT KodMedic, ListID, ZK, Cena, Times, KodHelp, KodZab, Help, TextHelp, Data "
                               "FROM Help WHERE ID = ?"_s,
                               {id})
                            .value(0)
                            .split(u'|');
    std::replace(cells.begin(), cells.end(), u"NULL"_s, QString());
    return cells.join(u'|');
}

struct Line
{
    QString doctor;
    QDate date;
    QString listId;
};

} // namespace

Q_DECLARE_METATYPE(QList<Line>)

class TestServiceEntry final : public QObject
{
    Q_OBJECT
private slots:
    // The whole short-code table, saved for an adult and a child: what reaches the store.
    void shortCodes_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("KodHelp");
        QTest::addColumn<QString>("fundKey");
        QTest::addColumn<QString>("TextHelp");
        QTest::addColumn<QString>("Help");
        // Letter for letter, with "Обт.амлгама" against "Обт.амалгама" and the Latin M of 332's
        // "Mед.лечение" against the Cyrillic one of 333: later work compares these texts.
        const QList<QStringList> rows{
            {"1", "101", "101", "", "Преглед"},
            {"1-3", "103", "101", "", "Преглед"},
            {"30", "301", "301", "Обт.амлгама", "Caries profunda"},
            {"31", "301", "301", "Обт.хим.композ.", "Caries profunda"},
            {"30-2", "301", "301", "Обт.амлгама", "Caries media"},
            {"31-2", "301", "301", "Обт.хим.композ.", "Caries media"},
            {"30-3", "301", "301", "Обт.амлгама", "Caries secunda"},
            {"31-3", "301", "301", "Обт.хим.композ.", "Caries secunda"},
            {"30-4", "301", "301", "Обт.амлгама", "Caries superf."},
            {"31-4", "301", "301", "Обт.хим.композ.", "Caries superf."},
            {"32", "332", "332", "M\u0435д.лечение", "Pulpitis chr.ulcerosa"},
            {"33", "333", "333", "Мед.лечение", "Pulpitis chr.ulcerosa"},
            {"32-1", "332", "332", "M\u0435д.лечение", "Gangr.complicata"},
            {"33-1", "301", "301", "Обт.хим.композ.", "Gangr.complicata"},
            {"58-1", "508", "508", "Екстракция", "DL-Luxacio"},
            {"58-2", "508", "508", "Екстракция", "Radis relicva"},
            {"58", "508", "508", "Екстракция", "R.gangr."},
            {"59", "509", "509", "Екстракция", "R.gangr."},
            {"59-1", "509", "509", "Екстракция", "Periodontitis chr.execerbata"},
            {"31-1", "301", "301", "Обт.хим.композ.", "Pulpitis chr.ulcerosa"},
            {"30-1", "301", "301", "Обт.амалгама", "Pulpitis chr.ulcerosa"},
            {"59-2", "509", "509", "Екстракция", "Causa protetica"},
            {"59-3", "509", "509", "Екстракция", "Causa ortodontica"},
            {"59-4", "509", "509", "Екстракция", "Parodontosis dentitis"},
            // Blanks around a code are trimmed away; anything else is no short code.
            {" 30-2 ", "301", "301", "Обт.амлгама", "Caries media"},
            {"301", "301", "", "", ""},
            {"30 -2", "30 -2", "", "", ""},
            {"   ", "", "", "", ""},
            {"30-5", "30-5", "", "", ""},
        };
        for (const QStringList &row : rows)
            QTest::newRow(qPrintable(u'[' + row[0] + u']')) << row[0] << row[1] << row[2] << row[3] << row[4];
    }
    void shortCodes()
    {
        QFETCH(QString, typed);
        QFETCH(QString, KodHelp);
        QFETCH(QString, fundKey);
        QFETCH(QString, TextHelp);
        QFETCH(QString, Help);
        TestPractice practice(Today);
        for (const bool adult : {true, false}) {
            const auto saved = save(validEgn(adult ? QDate(1980, 6, 1) : QDate(2012, 6, 1)), typedLine(typed));
            QVERIFY2(saved.ok(), qPrintable(saved.error()));
            // Every short code has its fund row, and the line takes that row's price for the age.
            const QStringList fund = rowsOf(store::clinicDb(),
                                            u"SELECT ROUND(%1, 2), Times FROM CenyZK WHERE Kod = ?"_s.arg(
                                                adult ? u"CenaNad"_s : u"CenaDo"_s),
                                            {fundKey})
                                         .value(0, u"0|0"_s)
                                         .split(u'|');
            QVERIFY2(fundKey.isEmpty() || fund[1].toInt() > 0, qPrintable(fundKey));
            const QStringList row = storedRow(saved->line.id).split(u'|');
            QCOMPARE(row.mid(5, 1) + row.mid(7, 2), (QStringList{KodHelp.trimmed(), Help, TextHelp}));
            QCOMPARE(row[3].toDouble(), fund[0].toDouble());
            QCOMPARE(row[4], fund[1]);
        }
    }

    // Who, what and which sheet: the price by the patient's age on the day of the save, not of
    // the service; the code typed in any cell; the print mark.
    void storedLine_data()
    {
        QTest::addColumn<QDate>("born");
        QTest::addColumn<QString>("date");
        QTest::addColumn<int>("column");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<int>("printMark"); // -1 untouched
        QTest::addColumn<QString>("row");
        // 301: CenaNad 21.13 past the 18th birthday, CenaDo 25.13 up to it (the boundary: tst_FundRules).
        QTest::newRow("adult, old service date: today's age counts")
            << QDate(2000, 1, 1) << "01.01.2010" << 5 << "30-2" << -1
            << "D1|000007|1|21.13|26|301||Caries media|Обт.амлгама|2010-01-01";
        QTest::newRow("child, later service date: today's age counts")
            << QDate(2008, 3, 15) << "20.03.2026" << 5 << "30-2" << -1
            << "D1|000007|1|25.13|26|301||Caries media|Обт.амлгама|2026-03-20";
        QTest::newRow("103 is priced and timed by the fund's row 101")
            << QDate(1980, 5, 5) << "15.03.2026" << 5 << "1-3" << -1 << "D1|000007|1|6.44|15|103||Преглед||2026-03-15";
        // The tooth cell holds " 30 " and KodHelp 508: priced by the code typed, not by KodHelp.
        QTest::newRow("short code in the tooth cell")
            << QDate(1980, 5, 5) << "15.03.2026" << 3 << " 30 " << -1
            << "D1|000007|1|21.13|26|508|301|Caries profunda|Обт.амлгама|2026-03-15";
        QTest::newRow("print mark ticked") << QDate(1980, 5, 5) << "15.03.2026" << 5 << "30" << 1
                                           << "D1|000007|1|21.13|26|301||Caries profunda|Обт.амлгама|2026-03-15";
        QTest::newRow("print mark unticked") << QDate(1980, 5, 5) << "15.03.2026" << 5 << "30" << 0
                                             << "D1|000007|0|21.13|26|301||Caries profunda|Обт.амлгама|2026-03-15";
    }
    void storedLine()
    {
        QFETCH(QDate, born);
        QFETCH(QString, date);
        QFETCH(int, column);
        QFETCH(QString, typed);
        QFETCH(int, printMark);
        TestPractice practice(Today);
        ServiceLine line = typedLine(column == KodHelpColumn ? typed : u"508"_s, date);
        if (column != KodHelpColumn)
            line.setCell(column, typed);
        if (printMark >= 0)
            line.printMark = printMark == 1;
        const QString egn = validEgn(born);
        const auto saved = save(egn, line, column);
        QVERIFY2(saved.ok(), qPrintable(saved.error()));
        QTEST(storedRow(saved->line.id), "row");
        QCOMPARE(practice.row(u"SELECT EGN FROM Help"_s), QStringList{egn});
    }

    void minutesLoweredThenRecounted_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("serviceDate");
        QTest::addColumn<int>("label");
        QTest::addColumn<int>("recounted");
        // Before each save MinutesLeft stands at a stale 360 and the day already holds one 333 of another doctor.
        QTest::newRow("301 today") << "30-2" << "15.03.2026" << 334 << 360 - 141 - 26;
        QTest::newRow("301 for another day") << "30-2" << "14.03.2026" << 334 << 360 - 141;
        QTest::newRow("103 takes 101's minutes, the day's count nothing") << "1-3" << "15.03.2026" << 345 << 360 - 141;
        QTest::newRow("no short code") << "301" << "15.03.2026" << 360 << 360 - 141 - 26; // the cell keeps 301, which counts
    }
    void minutesLoweredThenRecounted()
    {
        QFETCH(QString, code);
        QFETCH(QString, serviceDate);
        QFETCH(int, recounted);
        TestPractice practice(Today);
        practice.addService(validEgn(QDate(1970, 1, 1)), Today, u"333"_s, u"D2"_s);
        run().MinutesLeft = 360;
        const auto saved = save(Adult, typedLine(code, serviceDate));
        QVERIFY(saved.ok());
        QTEST(int(saved->labelMinutes), "label");
        QCOMPARE(int(saved->minutesLeft), recounted);
        QCOMPARE(int(run().MinutesLeft), recounted);
    }

    // Saved again standing on the stored 301: no short code, so the texts and the price go; a
    // line deleted meanwhile is not made again.
    void savedAgain()
    {
        TestPractice practice(Today);
        const auto first = save(Adult, typedLine(u"30"_s), KodHelpColumn, u"000001"_s);
        QVERIFY(first.ok());
        const auto again = save(Adult, first->line, KodHelpColumn, u"000002"_s);
        QVERIFY(again.ok());
        QCOMPARE(again->line.id, first->line.id);
        QCOMPARE(storedRow(first->line.id), u"D1|000002|1|0|0|301||||2026-03-15"_s);
        QVERIFY(DeleteServiceLine(store::clinicDb(), first->line.id).ok());
        ServiceLine line = first->line;
        line.KodHelp = u"58"_s;
        const auto refused = save(Adult, line);
        QVERIFY(!refused.ok());
        QVERIFY2(refused.error().startsWith(u"Не можете да променяте записа!\r"_s), qPrintable(refused.error()));
        QCOMPARE(practice.count(u"SELECT COUNT(*) FROM Help"_s), 0);
    }

    void refusedRowsWriteNothing_data()
    {
        QTest::addColumn<QString>("egn");
        QTest::addColumn<QString>("date");
        QTest::addColumn<QString>("messagePart");
        QTest::newRow("no date") << Adult << "" << "няма дата";
        QTest::newRow("blank date") << Adult << "   " << "няма дата";
        QTest::newRow("31 February") << Adult << "31.02.2026" << "31.02.2026";
        QTest::newRow("not a date") << Adult << "вчера" << "вчера";
        QTest::newRow("number names no birth date, price by age") << "8000001234" << "15.03.2026" << "Корекция ЕГН";
    }
    void refusedRowsWriteNothing()
    {
        QFETCH(QString, egn);
        QFETCH(QString, date);
        QFETCH(QString, messagePart);
        TestPractice practice(Today);
        run().MinutesLeft = 360;
        const auto saved = save(egn, typedLine(u"30-2"_s, date));
        QVERIFY(!saved.ok());
        QVERIFY2(saved.error().contains(messagePart), qPrintable(saved.error()));
        QCOMPARE(practice.count(u"SELECT COUNT(*) FROM Help"_s), 0);
        QCOMPARE(int(run().MinutesLeft), 360);
    }

    // A filling typed with the tooth box empty is stored as typed, with a warning that names it;
    // an examination needs no tooth, and a filling with one gets no warning.
    void activityOnAToothWithoutOne_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("tooth");
        QTest::addColumn<QString>("warned");
        QTest::newRow("30-2 without a tooth") << "30-2" << "" << "301";
        QTest::newRow("30-2 with a blank") << "30-2" << " " << "301";
        QTest::newRow("extraction without a tooth") << "59" << "" << "509";
        QTest::newRow("30-2 on 36") << "30-2" << "36" << "";
        QTest::newRow("examination") << "1" << "" << "";
    }
    void activityOnAToothWithoutOne()
    {
        QFETCH(QString, typed);
        QFETCH(QString, tooth);
        QFETCH(QString, warned);
        TestPractice practice(Today);
        run().MinutesLeft = 360;
        ServiceLine line = typedLine(typed);
        line.KodZab = tooth;
        const auto saved = save(validEgn(QDate(1980, 6, 1)), line);
        QVERIFY2(saved.ok(), qPrintable(saved.error()));
        QCOMPARE(practice.count(u"SELECT COUNT(*) FROM Help"_s), 1);
        QCOMPARE(saved->toothWarning.isEmpty(), warned.isEmpty());
        if (!warned.isEmpty())
            QVERIFY2(saved->toothWarning.contains(u"Дейност "_s + warned + u" е записана без код на зъб"_s),
                     qPrintable(saved->toothWarning));
    }

    void unpaidLineQuestion_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<int>("column");
        QTest::addColumn<QDate>("born");
        QTest::addColumn<QString>("questionPart"); // empty: no question
        const QDate adult(1980, 5, 5);
        QTest::newRow("short code, paid") << "30" << 5 << adult << "";
        QTest::newRow("101 without a birth date is paid alike") << "1" << 5 << QDate() << "";
        QTest::newRow("short code the fund pays 0 for an adult") << "33" << 5 << adult << "РЗОК не заплаща дейност 333";
        QTest::newRow("fund code typed as it is") << "301" << 5 << adult << "\"301\" е код на РЗОК";
        QTest::newRow("unknown code") << "10-1" << 5 << adult << "нито кратък код, нито код на РЗОК";
        QTest::newRow("Enter in the date cell over a short code") << "1" << 1 << adult << "не е разгърнат";
    }
    void unpaidLineQuestion()
    {
        QFETCH(QString, code);
        QFETCH(int, column);
        QFETCH(QDate, born);
        QFETCH(QString, questionPart);
        TestPractice practice(Today);
        const QString egn = born.isValid() ? validEgn(born) : u"8000001234"_s;
        const auto question =
            UnpaidLineQuestion(store::clinicDb(), {egn, Doctor, u"000001"_s, Today}, typedLine(code), column);
        QVERIFY2(question.ok(), qPrintable(question.error()));
        QCOMPARE(question->isEmpty(), questionPart.isEmpty());
        QVERIFY2(question->contains(questionPart), qPrintable(question.value()));
    }

    void linesInGridOrder()
    {
        TestPractice practice(Today);
        practice.addService(Adult, QDate(2026, 3, 1), u"509"_s, Doctor);
        practice.addService(Adult, QDate(2025, 3, 1), u"301"_s, Doctor);
        practice.addService(Adult, QDate(2026, 3, 1), u"101"_s, u"D2"_s);
        practice.addService(validEgn(QDate(1990, 1, 1)), QDate(2026, 3, 1), u"101"_s, Doctor);
        const auto lines = LoadServiceLines(store::clinicDb(), Adult);
        QVERIFY(lines.ok());
        QStringList shown;
        for (const ServiceLine &line : lines.value())
            shown << line.Data + u' ' + line.KodHelp;
        QCOMPARE(shown, (QStringList{"01.03.2025 301", "01.03.2026 101", "01.03.2026 509"}));
    }

    // Sheet numbers run per doctor and calendar year; stored numbers may not be clean.
    void nextSheetNumber_data()
    {
        QTest::addColumn<QList<Line>>("lines");
        QTest::addColumn<QString>("expected");
        const QString me = Doctor;
        const QString other = u"D2"_s;
        QTest::newRow("first sheet of all") << QList<Line>{} << "000001";
        QTest::newRow("after the largest") << QList<Line>{{me, {2026, 2, 1}, "000005"}, {me, {2026, 3, 1}, "000003"}}
                                           << "000006";
        QTest::newRow("earlier year does not count") << QList<Line>{{me, {2025, 12, 31}, "000099"}} << "000001";
        QTest::newRow("later year does not count") << QList<Line>{{me, {2027, 1, 1}, "000099"}} << "000001";
        QTest::newRow("first and last day of the year count")
            << QList<Line>{{me, {2026, 1, 1}, "000010"}, {me, {2026, 12, 31}, "000011"}} << "000012";
        QTest::newRow("other doctor's series is apart")
            << QList<Line>{{other, {2026, 3, 1}, "000050"}, {me, {2026, 3, 1}, "000002"}} << "000003";
        QTest::newRow("a doctor at the limit holds up no other") << QList<Line>{{other, {2026, 3, 1}, "032767"}}
                                                                 << "000001";
        QTest::newRow("malformed number reads its leading digits")
            << QList<Line>{{me, {2026, 3, 1}, "12a"}, {me, {2026, 3, 1}, "000007"}} << "000013";
        QTest::newRow("letters above the series do not restart it")
            << QList<Line>{{me, {2026, 3, 1}, "abc"}, {me, {2026, 3, 1}, "000007"}} << "000008";
        QList<Line> strays(70, Line{me, {2026, 3, 1}, "9x"});
        strays << Line{me, {2026, 3, 2}, "000007"};
        QTest::newRow("more stray numbers above the series than the first look reads") << strays << "000010";
        QTest::newRow("no number at all") << QList<Line>{{me, {2026, 3, 1}, ""}} << "000001";
        QTest::newRow("the last number there is") << QList<Line>{{me, {2026, 3, 1}, "32766"}} << "032767";
        QTest::newRow("none after the last") << QList<Line>{{me, {2026, 3, 1}, "032767"}} << "";
        QTest::newRow("none beyond 16 bits") << QList<Line>{{me, {2026, 3, 1}, "040000"}} << "";
    }
    void nextSheetNumber()
    {
        QFETCH(QList<Line>, lines);
        QFETCH(QString, expected);
        TestPractice practice(Today);
        for (const Line &line : lines)
            practice.addService(validEgn(QDate(1980, 1, 1)), line.date, u"301"_s, line.doctor, line.listId);
        const auto sheet = SheetNumber(store::clinicDb(), Doctor, Today);
        QCOMPARE(sheet.ok(), !expected.isEmpty());
        if (sheet.ok())
            QCOMPARE(sheet.value(), expected);
        else // the message names the limit; no seventh digit, no wrap to a negative number
            QVERIFY2(sheet.error().contains(u"032767"_s), qPrintable(sheet.error()));
    }

    // The number a write stores under, decided inside its transaction.
    void takenSheetNumber_data()
    {
        QTest::addColumn<QString>("storedByOther"); // a line of another patient, stored meanwhile
        QTest::addColumn<bool>("alreadyTaken");
        QTest::addColumn<QString>("expected");
        QTest::newRow("expected number still free") << "" << false << "000003";
        QTest::newRow("expected number given to another patient meanwhile") << "000003" << false << "000004";
        QTest::newRow("taken number stays") << "000002" << true << "000003";
        QTest::newRow("taken number now on another patient's line") << "000003" << true << "000004";
        QTest::newRow("no number after the last") << "032767" << false << "";
    }
    void takenSheetNumber()
    {
        QFETCH(QString, storedByOther);
        QFETCH(bool, alreadyTaken);
        QFETCH(QString, expected);
        TestPractice practice(Today);
        const QString mine = validEgn(QDate(1980, 1, 1));
        practice.addService(mine, QDate(2026, 3, 1), u"301"_s, Doctor, u"000002"_s);
        if (!storedByOther.isEmpty())
            practice.addService(validEgn(QDate(1990, 1, 1)), QDate(2026, 3, 14), u"301"_s, Doctor, storedByOther);
        const auto number = TakeSheetNumber(store::clinicDb(), {Doctor, u"000003"_s, alreadyTaken}, mine, Today);
        QCOMPARE(number.ok(), !expected.isEmpty());
        if (number.ok())
            QCOMPARE(number.value(), expected);
    }
};

QTEST_GUILESS_MAIN(TestServiceEntry)
#include "tst_ServiceEntry.moc"
