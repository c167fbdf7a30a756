#include "TestPractice.h"

#include "reports/forms/ActivityReport.h"
#include "reports/forms/ActivityReportPage.h"
#include "store/Dates.h"
#include "store/Scratch.h"
#include "store/Sql.h"

#include <QTest>

using namespace reports;

namespace {

const QString Doctor = QStringLiteral("2200000001");
const QString OtherDoctor = QStringLiteral("2200000002");

// The patients of the cases, by letter. X's number names no birth date (month 21).
const QHash<QString, QString> &egns()
{
    static const QHash<QString, QString> numbers{
        {QStringLiteral("A"), validEgn(QDate(1980, 5, 10))},
        {QStringLiteral("B"), validEgn(QDate(2005, 12, 31))},
        {QStringLiteral("C"), validEgn(QDate(1994, 1, 1), false)},
        {QStringLiteral("X"), QStringLiteral("9921101234")},
        {QStringLiteral("Z"), QStringLiteral("7501000000")},
    };
    return numbers;
}

Period periodOf(const QString &from, const QString &to)
{
    const PeriodEntry entry = CheckPeriod(from, to);
    if (entry.check != PeriodCheck::Accepted)
        qFatal("bad test period %s-%s", qPrintable(from), qPrintable(to));
    return entry.period;
}

const Period March = periodOf(QStringLiteral("01.03.2012"), QStringLiteral("31.03.2012"));

void addPatients(TestPractice &practice)
{
    for (auto it = egns().cbegin(); it != egns().cend(); ++it)
        practice.addPatient(it.value(), QStringLiteral("Пациент ") + it.key(), Doctor);
}

// "A 05.03.2012 301" adds a line of the doctor; a fourth word names another doctor's line.
void addLines(TestPractice &practice, const QStringList &lines)
{
    for (const QString &spec : lines) {
        const QStringList parts = spec.split(u' ');
        practice.addService(egns().value(parts[0]), *dates::fromTyped(parts[1]), parts[2],
                            parts.size() > 3 ? OtherDoctor : Doctor);
    }
}

// Each row of TempWork as "date|name|patient letter|Godini|KodHelp|Time", in the table's order.
QStringList workRows()
{
    QSqlQuery query = store::run(store::scratchDb(),
                                 QStringLiteral("SELECT Data, Name1, EGN, Godini, KodHelp, Time FROM TempWork"));
    QStringList rows;
    while (query.next())
        rows << QStringList{dates::isoToTyped(query.value(0).toString()), query.value(1).toString(),
                            egns().key(query.value(2).toString()), query.value(3).toString(),
                            query.value(4).toString(), query.value(5).toString()}
                    .join(u'|');
    return rows;
}

Result<SkippedPatients> build(const Period &period = March)
{
    return BuildActivityReport(store::clinicDb(), store::scratchDb(), period, Doctor);
}

} // namespace

class tst_ActivityReport final : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_practice = std::make_unique<TestPractice>();
        addPatients(*m_practice);
        QVERIFY(store::CreateScratchTable(QStringLiteral("TempWork")).ok());
    }
    void cleanup() { m_practice.reset(); }

    void onePatientOneRow_data()
    {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QStringList>("rows");
        QTest::addColumn<QStringList>("skipped");
        QTest::newRow("an empty period: no rows, no progress bar") << QStringList{} << QStringList{} << QStringList{};
        QTest::newRow("three days: the first day, three codes, summed minutes")
            << QStringList{"A 10.03.2012 509", "A 03.03.2012 101", "A 05.03.2012 301"}
            << QStringList{"03.03.2012|Пациент A|A|32|101,301,509|63"} << QStringList();
        QTest::newRow("the same code twice counts twice")
            << QStringList{"A 03.03.2012 333", "A 04.03.2012 333"} << QStringList{"03.03.2012|Пациент A|A|32|333,333|282"} << QStringList();
        QTest::newRow("an unknown code stands in the list with 0 minutes")
            << QStringList{"A 03.03.2012 999", "A 03.03.2012 101"} << QStringList{"03.03.2012|Пациент A|A|32|101,999|15"} << QStringList();
        QTest::newRow("seven codes are not cut")
            << QStringList{"A 01.03.2012 101", "A 02.03.2012 301", "A 03.03.2012 302", "A 04.03.2012 303",
                           "A 05.03.2012 304", "A 06.03.2012 508", "A 07.03.2012 509"}
            << QStringList{"01.03.2012|Пациент A|A|32|101,301,302,303,304,508,509|158"} << QStringList();
        QTest::newRow("Godini is a difference of years, not an age")
            << QStringList{"B 01.03.2012 101"} << QStringList{"01.03.2012|Пациент B|B|7|101|15"} << QStringList();
        QTest::newRow("order of first lines: date, code, then as stored")
            << QStringList{"C 03.03.2012 301", "B 02.03.2012 509", "A 02.03.2012 509", "C 02.03.2012 332",
                           "A 01.03.2012 999"}
            << QStringList{"01.03.2012|Пациент A|A|32|999,509|22", "02.03.2012|Пациент C|C|18|332,301|65",
                           "02.03.2012|Пациент B|B|7|509|22"} << QStringList();
        QTest::newRow("other doctors and other days stay out")
            << QStringList{"A 29.02.2012 101", "A 01.04.2012 101", "A 05.03.2012 101 other", "A 31.03.2012 508"}
            << QStringList{"31.03.2012|Пациент A|A|32|508|17"} << QStringList();
        QTest::newRow("a number without a birth date is left out")
            << QStringList{"X 01.03.2012 101", "A 02.03.2012 101", "Z 03.03.2012 101"}
            << QStringList{"02.03.2012|Пациент A|A|32|101|15"} << QStringList{"X", "Z"};
    }
    void onePatientOneRow()
    {
        QFETCH(QStringList, lines);
        QFETCH(QStringList, rows);
        addLines(*m_practice, lines);
        const auto built = build();
        QVERIFY2(built.ok(), qPrintable(built.error()));
        QCOMPARE(workRows(), rows);
        QCOMPARE(m_practice->dialogs().messages, QStringList{DoneMessage});
        QCOMPARE(m_practice->dialogs().progressShown, lines.isEmpty() ? 0 : 1);
        QFETCH(QStringList, skipped);
        QStringList numbers;
        for (const QString &letter : skipped)
            numbers << egns().value(letter);
        QCOMPARE(built->egns(), numbers);
    }

    void patientWithoutCardFailsNamingNumberAndSheet()
    {
        const QString stray = validEgn(QDate(1970, 2, 2));
        addLines(*m_practice, {"A 01.03.2012 101"});
        m_practice->addService(stray, QDate(2012, 3, 2), QStringLiteral("101"), Doctor, QStringLiteral("000042"));
        const auto built = build();
        QVERIFY(!built.ok());
        QVERIFY(built.error().contains(stray));
        QVERIFY(built.error().contains(QStringLiteral("000042")));
        QVERIFY(workRows().isEmpty());
        QVERIFY(m_practice->dialogs().messages.isEmpty());
    }

    void minutesPastTheCounterFailNamingThePeriod()
    {
        // 233 lines of 141 minutes make 32853, past the 16-bit column.
        store::Transaction transaction(store::clinicDb());
        for (int n = 0; n < 233; ++n)
            addLines(*m_practice, {"A 05.03.2012 333"});
        transaction.commit();
        const auto built = build();
        QVERIFY(!built.ok());
        QCOMPARE(built.error(),
                 CounterOverflowMessage(QStringLiteral("минутите на пациента с ЕГН %1").arg(egns()["A"]), March));
        QVERIFY(workRows().isEmpty());
    }

    void pageCells()
    {
        addLines(*m_practice, {"A 01.03.2012 101", "A 01.03.2012 301", "B 01.03.2012 509"});
        QVERIFY(build(March).ok());
        const print::PageDescription form = WorkPage(store::scratchDb(), March, QStringLiteral("Иванов"));
        QCOMPARE(form.formName, QStringLiteral("rprWork"));
        const QList<print::Page> pages = form.pages();
        QCOMPARE(pages.size(), 1);
        const print::Page &page = pages.first();
        QStringList first{page.textAt(QStringLiteral("Label12")), page.textAt(QStringLiteral("Label9"))};
        for (const char *cell : {"Text1", "Text2", "Text3", "Text4", "Text5", "Text6"})
            first << page.textAt(print::rowItemName(QString::fromLatin1(cell), 0));
        QCOMPARE(first, (QStringList{"от 01.03.2012 до 31.03.2012", "от д-р Иванов", "01.03.2012", "Пациент A", "41",
                                     egns()["A"], "32", "101,301"}));
        QCOMPARE(page.textAt(print::rowItemName(QStringLiteral("Text4"), 1)), egns()["B"]);
        QCOMPARE(page.textAt(print::rowItemName(QStringLiteral("Function1"), 2)), QStringLiteral("63"));
        QCOMPARE(page.textAt(print::rowItemName(QStringLiteral("Label7"), 3)),
                 QStringLiteral("Общ брой амбулаторни листи: 2"));
    }

    void rowsRunOverPagesWithTheFooterAtTheEnd()
    {
        store::Transaction transaction(store::clinicDb());
        for (int n = 0; n < 60; ++n) {
            const QString egn = validEgn(QDate(1960, 1, 1).addDays(n));
            m_practice->addPatient(egn, QStringLiteral("Пациент %1").arg(n), Doctor);
            m_practice->addService(egn, QDate(2012, 3, 1), QStringLiteral("101"), Doctor);
        }
        transaction.commit();
        QVERIFY(build().ok());
        const QList<print::Page> pages = WorkPage(store::scratchDb(), March, QStringLiteral("Иванов")).pages();
        QCOMPARE(pages.size(), 2);
        for (const print::Page &page : pages)
            QCOMPARE(page.textAt(QStringLiteral("HeadText6")), QStringLiteral("Дейности"));
        QVERIFY(pages.first().has(print::rowItemName(QStringLiteral("Text2"), 0)));
        QCOMPARE(pages.last().textAt(print::rowItemName(QStringLiteral("Text2"), 59)), QStringLiteral("Пациент 59"));
        QCOMPARE(pages.last().textAt(print::rowItemName(QStringLiteral("Function1"), 60)), QStringLiteral("900"));
        QCOMPARE(pages.last().textAt(print::PageNumberItem), QStringLiteral("Стр. 2 от 2"));
    }

private:
    std::unique_ptr<TestPractice> m_practice;
};

QTEST_GUILESS_MAIN(tst_ActivityReport)
#include "tst_ActivityReport.moc"
