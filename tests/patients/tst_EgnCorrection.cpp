#include "patients/EgnCorrection.h"

#include "TestPractice.h"
#include "store/Sql.h"

#include <QTest>

using namespace egncorrection;

namespace {

const QString Doctor = QStringLiteral("0101");
const QString Wrong = validEgn(QDate(1975, 1, 1));
const QString Right = validEgn(QDate(1975, 1, 2));
const QString Other = validEgn(QDate(1980, 1, 1));

// The rows each table holds under a number.
QList<int> rowsUnder(const TestPractice &practice, const QString &egn)
{
    QList<int> counts;
    for (const char *table : {"Pacients", "Dental", "Help", "Path"})
        counts << practice.count(QStringLiteral("SELECT COUNT(*) FROM %1 WHERE EGN = '%2'").arg(table, egn));
    return counts;
}

// The patient under the wrong number with three services and a referral; another with one service.
void twoPatients(TestPractice &practice)
{
    practice.addPatient(Wrong, QStringLiteral("Иван Петров"), Doctor);
    practice.addPatient(Other, QStringLiteral("Мария Петрова"), Doctor);
    for (int day = 1; day <= 3; ++day)
        practice.addService(Wrong, QDate(2026, 3, day), QStringLiteral("101"), Doctor);
    practice.addService(Other, QDate(2026, 3, 1), QStringLiteral("101"), Doctor);
    store::run(store::clinicDb(), QStringLiteral("INSERT INTO Path (EGN) VALUES (?)"), {Wrong});
}

} // namespace

class TestEgnCorrection final : public QObject
{
    Q_OBJECT
private slots:
    void movesOnePatientAcrossThreeTables()
    {
        TestPractice practice;
        twoPatients(practice);
        const auto moved = moveEgn(store::clinicDb(), u" "_qs + Wrong, Right + u" "_qs);
        QVERIFY2(moved.ok(), qPrintable(moved.error()));
        QCOMPARE(QList<int>({moved->pacients, moved->dental, moved->help}), QList<int>({1, 1, 3}));
        QCOMPARE(rowsUnder(practice, Right), QList<int>({1, 1, 3, 0}));
        QCOMPARE(rowsUnder(practice, Wrong), QList<int>({0, 0, 0, 1})); // referrals keep it
        QCOMPARE(rowsUnder(practice, Other), QList<int>({1, 1, 1, 0}));

        const auto again = moveEgn(store::clinicDb(), Wrong, Right); // nothing is left under the old number
        QVERIFY(again.ok());
        QCOMPARE(again->pacients + again->dental + again->help, 0);
        QVERIFY(moveEgn(store::clinicDb(), Right, Right).ok()); // the same number rewrites in place
        QCOMPARE(rowsUnder(practice, Right), QList<int>({1, 1, 3, 0}));
    }

    void patientWithoutChartRow()
    {
        TestPractice practice;
        practice.addPatient(Wrong, QStringLiteral("Иван Петров"), Doctor);
        practice.addService(Wrong, QDate(2026, 3, 1), QStringLiteral("101"), Doctor);
        store::run(store::clinicDb(), QStringLiteral("DELETE FROM Dental"));
        const auto moved = moveEgn(store::clinicDb(), Wrong, Right);
        QVERIFY(moved.ok());
        QCOMPARE(QList<int>({moved->pacients, moved->dental, moved->help}), QList<int>({1, 0, 1}));
    }

    // A number of another patient, or one the card would refuse (the patient could not be opened
    // under it), changes nothing.
    void refusedNumbersChangeNothing_data()
    {
        QTest::addColumn<QString>("newEgn");
        QTest::addColumn<QString>("named");
        QTest::newRow("another patient's") << Other << Other;
        QTest::newRow("empty") << "" << "";
        QTest::newRow("nine digits") << "750101124" << "";
        QTest::newRow("bad month") << "7513011234" << "7513011234";
        QTest::newRow("letters") << "75O1011234" << "75O1011234";
    }
    void refusedNumbersChangeNothing()
    {
        QFETCH(QString, newEgn);
        QFETCH(QString, named);
        TestPractice practice;
        twoPatients(practice);
        const auto moved = moveEgn(store::clinicDb(), Wrong, newEgn);
        QVERIFY(!moved.ok());
        QVERIFY2(moved.error().contains(named) && moved.error().endsWith(u"Номерът не е сменен."_qs),
                 qPrintable(moved.error()));
        QCOMPARE(rowsUnder(practice, Wrong), QList<int>({1, 1, 3, 1}));
    }

    void failureInTheMiddleUndoesTheStart()
    {
        TestPractice practice;
        practice.addPatient(Wrong, QStringLiteral("Иван Петров"), Doctor);
        store::run(store::clinicDb(), QStringLiteral("DROP TABLE Help"));
        QVERIFY(!moveEgn(store::clinicDb(), Wrong, Right).ok());
        QCOMPARE(practice.count("SELECT COUNT(*) FROM Pacients WHERE EGN = '" + Wrong + "'"), 1);
        QCOMPARE(practice.count("SELECT COUNT(*) FROM Dental WHERE EGN = '" + Wrong + "'"), 1);
    }
};

QTEST_GUILESS_MAIN(TestEgnCorrection)
#include "tst_EgnCorrection.moc"
