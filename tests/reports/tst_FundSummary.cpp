#include "TestPractice.h"

#include "reports/forms/FundSummary.h"
#include "reports/forms/FundSummaryPage.h"
#include "store/Dates.h"
#include "store/Scratch.h"
#include "store/Sql.h"

#include <QTest>

using namespace reports;

namespace {

const QString Doctor = QStringLiteral("2200000001");
const QString OtherDoctor = QStringLiteral("2200000002");
// Eighteen on 15.03.2012.
const QString Teen = validEgn(QDate(1994, 3, 15));
const QString Adult = validEgn(QDate(1970, 6, 1));
const QString Child = validEgn(QDate(2005, 1, 20));
const QString NoBirthDate = QStringLiteral("9925101234");

Period periodOf(const QString &from, const QString &to)
{
    const PeriodEntry entry = CheckPeriod(from, to);
    if (entry.check != PeriodCheck::Accepted)
        qFatal("bad test period %s-%s", qPrintable(from), qPrintable(to));
    return entry.period;
}

const Period March = periodOf(QStringLiteral("01.03.2012"), QStringLiteral("31.03.2012"));

struct Line final
{
    QString egn;
    QDate date;
    QString code;
    QString doctor = Doctor;
};

// The two rows of TempZOKC as "Godini|Kod_101|Kod_103|Kod_301|Kod_332|Kod_333|Kod_508|Kod_509",
// a NULL as "NULL".
QStringList zokcRows()
{
    QSqlQuery query = store::run(store::scratchDb(), QStringLiteral("SELECT * FROM TempZOKC"));
    QStringList rows;
    while (query.next()) {
        QStringList cells;
        for (int n = 0; n < 8; ++n)
            cells << (query.value(n).isNull() ? QStringLiteral("NULL") : query.value(n).toString());
        rows << cells.join(u'|');
    }
    return rows;
}

Result<SkippedPatients> build(const Period &period = March)
{
    return BuildFundSummary(store::clinicDb(), store::scratchDb(), period, Doctor);
}

} // namespace

Q_DECLARE_METATYPE(QList<Line>)

class tst_FundSummary final : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_practice = std::make_unique<TestPractice>();
        QVERIFY(store::CreateScratchTable(QStringLiteral("TempZOKC")).ok());
    }
    void cleanup() { m_practice.reset(); }

    void counts_data()
    {
        QTest::addColumn<QList<Line>>("lines");
        QTest::addColumn<QString>("under");
        QTest::addColumn<QString>("over");
        const QDate birthday(2012, 3, 15);
        QTest::newRow("empty period: two rows of zeros")
            << QList<Line>{} << "Под 18 години|0|NULL|0|0|0|0|0" << "Над 18 години|0|NULL|0|0|0|0|0";
        QTest::newRow("the 18th birthday is still under 18, the day after over")
            << QList<Line>{{Teen, birthday, "101"}, {Teen, birthday.addDays(1), "101"}, {Teen, birthday.addDays(-1), "509"}}
            << "Под 18 години|1|NULL|0|0|0|0|1" << "Над 18 години|1|NULL|0|0|0|0|0";
        QTest::newRow("both alphabets of the fillings in one cell")
            << QList<Line>{{Adult, birthday, "301"}, {Adult, birthday, "301A"}, {Adult, birthday, "304Б"},
                           {Adult, birthday, "302B"}, {Child, birthday, "303В"}}
            << "Под 18 години|0|NULL|1|0|0|0|0" << "Над 18 години|0|NULL|4|0|0|0|0";
        QTest::newRow("103 and unknown codes count nowhere")
            << QList<Line>{{Adult, birthday, "103"}, {Child, birthday, "103"}, {Adult, birthday, "305"},
                           {Adult, birthday, "301Г"}, {Adult, birthday, " 101"}}
            << "Под 18 години|0|NULL|0|0|0|0|0" << "Над 18 години|0|NULL|0|0|0|0|0";
        QTest::newRow("each code its column, over 18 too")
            << QList<Line>{{Child, birthday, "332"}, {Child, birthday, "333"}, {Child, birthday, "508"},
                           {Child, birthday, "508"}, {Adult, birthday, "332"}, {Adult, birthday, "333"},
                           {Adult, birthday, "508"}, {Adult, birthday, "509"}}
            << "Под 18 години|0|NULL|0|1|1|2|0" << "Над 18 години|0|NULL|0|1|1|1|1";
        QTest::newRow("other doctors and days outside stay out")
            << QList<Line>{{Adult, QDate(2012, 2, 29), "101"}, {Adult, QDate(2012, 4, 1), "101"},
                           {Adult, birthday, "101", OtherDoctor}, {Adult, QDate(2012, 3, 31), "101"}}
            << "Под 18 години|0|NULL|0|0|0|0|0" << "Над 18 години|1|NULL|0|0|0|0|0";
        QTest::newRow("a number without a birth date is left out")
            << QList<Line>{{NoBirthDate, birthday, "101"}, {Adult, birthday, "101"}}
            << "Под 18 години|0|NULL|0|0|0|0|0" << "Над 18 години|1|NULL|0|0|0|0|0";
    }
    void counts()
    {
        QFETCH(QList<Line>, lines);
        QFETCH(QString, under);
        QFETCH(QString, over);
        for (const Line &line : lines)
            m_practice->addService(line.egn, line.date, line.code, line.doctor);
        const auto built = build();
        QVERIFY2(built.ok(), qPrintable(built.error()));
        QCOMPARE(zokcRows(), (QStringList{under, over}));
        QCOMPARE(m_practice->dialogs().messages, QStringList{DoneMessage});
        const bool leftOut = !lines.isEmpty() && lines.first().egn == NoBirthDate;
        QCOMPARE(built->egns(), leftOut ? QStringList{NoBirthDate} : QStringList());
    }

    void countPastTheCounterFailsNamingThePeriod()
    {
        store::Transaction transaction(store::clinicDb());
        for (int n = 0; n <= 32767; ++n)
            m_practice->addService(Child, QDate(2012, 3, 1 + n % 28), QStringLiteral("508"), Doctor);
        m_practice->addService(Adult, QDate(2012, 3, 1), QStringLiteral("508"), Doctor);
        transaction.commit();
        const auto built = build();
        QVERIFY(!built.ok());
        QCOMPARE(built.error(), CounterOverflowMessage(QStringLiteral("дейностите с код 508 в група „Под 18 години“"), March));
        QVERIFY(built.error().contains(March.caption()));
        QVERIFY(zokcRows().isEmpty());
    }

    void pageCells()
    {
        for (const char *code : {"101", "301", "301", "332", "333", "508", "509", "509"})
            m_practice->addService(Child, QDate(2012, 3, 1), QString::fromLatin1(code), Doctor);
        m_practice->addService(Adult, QDate(2012, 3, 1), QStringLiteral("509"), Doctor);
        QVERIFY(build().ok());
        const print::PageDescription form = ZokcPage(store::scratchDb(), March, QStringLiteral("Петрова"));
        QCOMPARE(form.formName, QStringLiteral("rprZOKC"));
        const QList<print::Page> pages = form.pages();
        QCOMPARE(pages.size(), 1);
        const print::Page &page = pages.first();
        QCOMPARE(page.textAt(QStringLiteral("Label12")), QStringLiteral("от 01.03.2012 до 31.03.2012"));
        QCOMPARE(page.textAt(QStringLiteral("Label9")), QStringLiteral("от д-р Петрова"));
        const QStringList expected[2] = {{"Под 18 години", "1", "2", "1", "1", "1", "2"},
                                         {"Над 18 години", "0", "0", "0", "0", "0", "1"}};
        for (int row = 0; row < 2; ++row)
            for (int cell = 0; cell < 7; ++cell)
                QCOMPARE(page.textAt(print::rowItemName(QStringLiteral("Text%1").arg(cell + 1), row)), expected[row][cell]);
    }

private:
    std::unique_ptr<TestPractice> m_practice;
};

QTEST_GUILESS_MAIN(tst_FundSummary)
#include "tst_FundSummary.moc"
