// Sheet numbers per doctor and calendar year, and stored numbers that are not clean.
#include "TestPractice.h"

#include "store/Sql.h"
#include "treatment/SheetNumbers.h"

#include <QTest>

namespace {

struct Line
{
    QString doctor;
    QDate date;
    QString listId;
};

} // namespace

Q_DECLARE_METATYPE(QList<Line>)

class TestSheetNumbers final : public QObject
{
    Q_OBJECT
private slots:
    void next_data()
    {
        QTest::addColumn<QList<Line>>("lines");
        QTest::addColumn<QString>("expected");
        const QString me = QStringLiteral("D1");
        const QString other = QStringLiteral("D2");
        QTest::newRow("first sheet of all") << QList<Line>{} << "000001";
        QTest::newRow("after the largest") << QList<Line>{{me, {2026, 2, 1}, "000005"}, {me, {2026, 3, 1}, "000003"}}
                                           << "000006";
        QTest::newRow("earlier year does not count")
            << QList<Line>{{me, {2025, 12, 31}, "000099"}} << "000001";
        QTest::newRow("later year does not count") << QList<Line>{{me, {2027, 1, 1}, "000099"}} << "000001";
        QTest::newRow("first and last day of the year count")
            << QList<Line>{{me, {2026, 1, 1}, "000010"}, {me, {2026, 12, 31}, "000011"}} << "000012";
        QTest::newRow("other doctor's series is apart")
            << QList<Line>{{other, {2026, 3, 1}, "000050"}, {me, {2026, 3, 1}, "000002"}} << "000003";
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
    void next()
    {
        QFETCH(QList<Line>, lines);
        QFETCH(QString, expected);
        TestPractice practice(QDate(2026, 3, 15));
        for (const Line &line : lines)
            practice.addService(validEgn(QDate(1980, 1, 1)), line.date, QStringLiteral("301"), line.doctor, line.listId);
        const auto sheet = SheetNumber(store::clinicDb(), QStringLiteral("D1"), QDate(2026, 3, 15));
        QCOMPARE(sheet.ok(), !expected.isEmpty());
        if (sheet.ok())
            QCOMPARE(sheet.value(), expected);
        else // the message names the limit; no seventh digit, no wrap to a negative number
            QVERIFY2(sheet.error().contains(QStringLiteral("032767")), qPrintable(sheet.error()));
    }

    // The number a write stores under, decided inside its transaction.
    void taken_data()
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
    void taken()
    {
        QFETCH(QString, storedByOther);
        QFETCH(bool, alreadyTaken);
        QFETCH(QString, expected);
        TestPractice practice(QDate(2026, 3, 15));
        const QString mine = validEgn(QDate(1980, 1, 1));
        practice.addService(mine, QDate(2026, 3, 1), QStringLiteral("301"), QStringLiteral("D1"), QStringLiteral("000002"));
        if (!storedByOther.isEmpty())
            practice.addService(validEgn(QDate(1990, 1, 1)), QDate(2026, 3, 14), QStringLiteral("301"), QStringLiteral("D1"),
                                storedByOther);
        const OpeningSheet sheet{QStringLiteral("D1"), QStringLiteral("000003"), alreadyTaken};
        const auto number = TakeSheetNumber(store::clinicDb(), sheet, mine, QDate(2026, 3, 15));
        QCOMPARE(number.ok(), !expected.isEmpty());
        if (number.ok())
            QCOMPARE(number.value(), expected);
    }

    void aDoctorAtTheLimitHoldsUpNoOther()
    {
        TestPractice practice(QDate(2026, 3, 15));
        practice.addService(validEgn(QDate(1980, 1, 1)), QDate(2026, 3, 1), QStringLiteral("301"), QStringLiteral("D1"),
                            QStringLiteral("032767"));
        QVERIFY(!SheetNumber(store::clinicDb(), QStringLiteral("D1"), QDate(2026, 3, 15)).ok());
        QCOMPARE(SheetNumber(store::clinicDb(), QStringLiteral("D2"), QDate(2026, 3, 15)).value(), QStringLiteral("000001"));
    }
};

QTEST_GUILESS_MAIN(TestSheetNumbers)
#include "tst_SheetNumbers.moc"
