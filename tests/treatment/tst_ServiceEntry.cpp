// The save of a service line: price by age, the day's minutes, the cell the code stands in,
// and the rows that must not be written.
#include "TestPractice.h"

#include "base/RunState.h"
#include "store/Sql.h"
#include "treatment/ServiceEntry.h"

#include <QSqlQuery>
#include <QTest>

namespace {

const QDate Today(2026, 3, 15);
const QString Doctor = QStringLiteral("D1");

ServiceLine typedLine(const QString &code, const QString &date = QStringLiteral("15.03.2026"))
{
    ServiceLine line;
    line.Data = date;
    line.KodHelp = code;
    return line;
}

Result<SavedService> save(const QString &egn, const ServiceLine &line, int column = 5,
                          const QString &sheet = QStringLiteral("000007"))
{
    return SaveServiceLine(store::clinicDb(), {egn, Doctor, sheet, Today}, line, column);
}

QVariantList storedRow(qint64 id)
{
    QSqlQuery row = store::run(store::clinicDb(),
                               QStringLiteral("SELECT EGN, KodMedic, ListID, ZK, Cena, Times, KodHelp, KodZab, Help, Data "
                                              "FROM Help WHERE ID = ?"),
                               {id});
    QVariantList values;
    if (row.next())
        for (int i = 0; i < 10; ++i)
            values << row.value(i);
    return values;
}

} // namespace

class TestServiceEntry final : public QObject
{
    Q_OBJECT
private slots:
    void priceByAgeOnTheDayOfTheSave_data()
    {
        QTest::addColumn<QDate>("born");
        QTest::addColumn<QString>("serviceDate");
        QTest::addColumn<double>("price");
        // 301: CenaNad 21.13 past the 18th birthday, CenaDo 25.13 up to it (the boundary: tst_FundPrice).
        QTest::newRow("adult, old service date: today's age counts") << QDate(2000, 1, 1) << "01.01.2010" << 21.13;
        QTest::newRow("child, later service date: today's age counts") << QDate(2008, 3, 15) << "20.03.2026" << 25.13;
    }
    void priceByAgeOnTheDayOfTheSave()
    {
        QFETCH(QDate, born);
        QFETCH(QString, serviceDate);
        QFETCH(double, price);
        TestPractice practice(Today);
        const auto saved = save(validEgn(born), typedLine(QStringLiteral("30-2"), serviceDate));
        QVERIFY2(saved.ok(), qPrintable(saved.error()));
        QCOMPARE(saved->Cena, price);
        QCOMPARE(storedRow(saved->line.id).value(4).toDouble(), price);
    }

    void writesWhoWhatAndWhichSheet()
    {
        TestPractice practice(Today);
        const QString egn = validEgn(QDate(1980, 5, 5));
        const auto saved = save(egn, typedLine(QStringLiteral("1-3")), 5, QStringLiteral("000042"));
        QVERIFY(saved.ok());
        const QVariantList row = storedRow(saved->line.id);
        QCOMPARE(row.value(0).toString(), egn);
        QCOMPARE(row.value(1).toString(), Doctor);
        QCOMPARE(row.value(2).toString(), QStringLiteral("000042"));
        QCOMPARE(row.value(3).toInt(), 1);
        // 103 is priced and timed by the fund's row 101.
        QCOMPARE(row.value(4).toDouble(), 6.44);
        QCOMPARE(row.value(5).toInt(), 15);
        QCOMPARE(row.value(6).toString(), QStringLiteral("103"));
        QCOMPARE(row.value(9).toString(), QStringLiteral("2026-03-15"));
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
        QFETCH(int, label);
        QFETCH(int, recounted);
        TestPractice practice(Today);
        practice.addService(validEgn(QDate(1970, 1, 1)), Today, QStringLiteral("333"), QStringLiteral("D2"));
        run().MinutesLeft = 360;
        const auto saved = save(validEgn(QDate(1980, 5, 5)), typedLine(code, serviceDate));
        QVERIFY(saved.ok());
        QCOMPARE(int(saved->labelMinutes), label);
        QCOMPARE(int(saved->minutesLeft), recounted);
        QCOMPARE(int(run().MinutesLeft), recounted);
    }

    void codeInAnyColumn()
    {
        TestPractice practice(Today);
        ServiceLine line = typedLine(QStringLiteral("508"));
        line.KodZab = QStringLiteral(" 30 ");
        const auto saved = save(validEgn(QDate(1980, 5, 5)), line, 3);
        QVERIFY(saved.ok());
        QCOMPARE(saved->line.KodZab, QStringLiteral("301"));
        QCOMPARE(saved->line.KodHelp, QStringLiteral("508"));
        const QVariantList row = storedRow(saved->line.id);
        QCOMPARE(row.value(6).toString(), QStringLiteral("508"));
        QCOMPARE(row.value(7).toString(), QStringLiteral("301"));
        QCOMPARE(row.value(8).toString(), QStringLiteral("Caries profunda"));
        QCOMPARE(row.value(4).toDouble(), 21.13); // priced by the code typed, not by KodHelp
    }

    void printMark_data()
    {
        QTest::addColumn<std::optional<bool>>("mark");
        QTest::addColumn<int>("ZK");
        QTest::newRow("untouched") << std::optional<bool>() << 1;
        QTest::newRow("ticked") << std::optional<bool>(true) << 1;
        QTest::newRow("unticked") << std::optional<bool>(false) << 0;
    }
    void printMark()
    {
        QFETCH(std::optional<bool>, mark);
        QFETCH(int, ZK);
        TestPractice practice(Today);
        ServiceLine line = typedLine(QStringLiteral("30"));
        line.printMark = mark;
        const auto saved = save(validEgn(QDate(1980, 5, 5)), line);
        QVERIFY(saved.ok());
        QCOMPARE(storedRow(saved->line.id).value(3).toInt(), ZK);
    }

    void correctionRederivesEverything()
    {
        TestPractice practice(Today);
        const QString egn = validEgn(QDate(1980, 5, 5));
        auto first = save(egn, typedLine(QStringLiteral("30")), 5, QStringLiteral("000001"));
        QVERIFY(first.ok());
        // Saved again standing on the stored 301: no short code, so the texts and the price go.
        const auto again = save(egn, first->line, 5, QStringLiteral("000002"));
        QVERIFY(again.ok());
        QCOMPARE(again->line.id, first->line.id);
        const QVariantList row = storedRow(first->line.id);
        QCOMPARE(row.value(2).toString(), QStringLiteral("000002"));
        QCOMPARE(row.value(4).toDouble(), 0.0);
        QCOMPARE(row.value(8).toString(), QString());
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM Help")), 1);
    }

    void refusedRowsWriteNothing_data()
    {
        QTest::addColumn<QString>("egn");
        QTest::addColumn<QString>("date");
        QTest::addColumn<QString>("messagePart");
        const QString adult = validEgn(QDate(1980, 5, 5));
        QTest::newRow("no date") << adult << "" << "няма дата";
        QTest::newRow("blank date") << adult << "   " << "няма дата";
        QTest::newRow("31 February") << adult << "31.02.2026" << "31.02.2026";
        QTest::newRow("not a date") << adult << "вчера" << "вчера";
        QTest::newRow("number names no birth date, price by age") << "8000001234" << "15.03.2026" << "Корекция ЕГН";
    }
    void refusedRowsWriteNothing()
    {
        QFETCH(QString, egn);
        QFETCH(QString, date);
        QFETCH(QString, messagePart);
        TestPractice practice(Today);
        run().MinutesLeft = 360;
        const auto saved = save(egn, typedLine(QStringLiteral("30-2"), date));
        QVERIFY(!saved.ok());
        QVERIFY2(saved.error().contains(messagePart), qPrintable(saved.error()));
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM Help")), 0);
        QCOMPARE(int(run().MinutesLeft), 360);
    }

    void lineDeletedMeanwhileIsNotRecreated()
    {
        TestPractice practice(Today);
        const QString egn = validEgn(QDate(1980, 5, 5));
        auto first = save(egn, typedLine(QStringLiteral("30")));
        QVERIFY(first.ok());
        QVERIFY(DeleteServiceLine(store::clinicDb(), first->line.id).ok());
        ServiceLine line = first->line;
        line.KodHelp = QStringLiteral("58");
        const auto refused = save(egn, line);
        QVERIFY(!refused.ok());
        QVERIFY2(refused.error().startsWith(QStringLiteral("Не можете да променяте записа!\r")), qPrintable(refused.error()));
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM Help")), 0);
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
        const QString egn = born.isValid() ? validEgn(born) : QStringLiteral("8000001234");
        const ServiceContext context{egn, Doctor, QStringLiteral("000001"), Today};
        const auto question = UnpaidLineQuestion(store::clinicDb(), context, typedLine(code), column);
        QVERIFY2(question.ok(), qPrintable(question.error()));
        QCOMPARE(question->isEmpty(), questionPart.isEmpty());
        QVERIFY2(question->contains(questionPart), qPrintable(question.value()));
    }

    // Two patients whose lines are stored in turn on sheets not taken yet get two numbers, the
    // second decided at its save although both expected the same.
    void sheetTakenAtTheSave()
    {
        TestPractice practice(Today);
        const ServiceContext first{validEgn(QDate(1980, 5, 5)), Doctor, QStringLiteral("000001"), Today, false};
        ServiceContext second = first;
        second.egn = validEgn(QDate(1990, 5, 5));
        const auto a = SaveServiceLine(store::clinicDb(), first, typedLine(QStringLiteral("30")), 5);
        const auto b = SaveServiceLine(store::clinicDb(), second, typedLine(QStringLiteral("30")), 5);
        QVERIFY(a.ok() && b.ok());
        QCOMPARE(storedRow(a->line.id).value(2).toString(), QStringLiteral("000001"));
        QCOMPARE(storedRow(b->line.id).value(2).toString(), QStringLiteral("000002"));
        QCOMPARE(b->line.ListID, QStringLiteral("000002"));
    }

    void linesInGridOrder()
    {
        TestPractice practice(Today);
        const QString egn = validEgn(QDate(1980, 5, 5));
        practice.addService(egn, QDate(2026, 3, 1), QStringLiteral("509"), Doctor);
        practice.addService(egn, QDate(2025, 3, 1), QStringLiteral("301"), Doctor);
        practice.addService(egn, QDate(2026, 3, 1), QStringLiteral("101"), QStringLiteral("D2"));
        practice.addService(validEgn(QDate(1990, 1, 1)), QDate(2026, 3, 1), QStringLiteral("101"), Doctor);
        const auto lines = LoadServiceLines(store::clinicDb(), egn);
        QVERIFY(lines.ok());
        QStringList shown;
        for (const ServiceLine &line : lines.value())
            shown << line.Data + u' ' + line.KodHelp;
        QCOMPARE(shown, (QStringList{"01.03.2025 301", "01.03.2026 101", "01.03.2026 509"}));
    }
};

QTEST_GUILESS_MAIN(TestServiceEntry)
#include "tst_ServiceEntry.moc"
