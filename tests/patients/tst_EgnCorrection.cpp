#include "patients/EgnCorrection.h"

#include "TestPractice.h"
#include "store/Sql.h"

#include <QTest>

using namespace egncorrection;

namespace {
const QString Doctor = QStringLiteral("0101");
}

class TestEgnCorrection final : public QObject
{
    Q_OBJECT
private slots:
    void movesOnePatientAcrossThreeTables()
    {
        TestPractice practice;
        const QString wrong = validEgn(QDate(1975, 1, 1));
        const QString right = validEgn(QDate(1975, 1, 2));
        const QString other = validEgn(QDate(1980, 1, 1));
        practice.addPatient(wrong, QStringLiteral("Иван Петров"), Doctor);
        practice.addPatient(other, QStringLiteral("Мария Петрова"), Doctor);
        for (int day = 1; day <= 3; ++day)
            practice.addService(wrong, QDate(2026, 3, day), QStringLiteral("101"), Doctor);
        practice.addService(other, QDate(2026, 3, 1), QStringLiteral("101"), Doctor);
        store::run(store::clinicDb(), QStringLiteral("INSERT INTO Path (EGN) VALUES (?)"), {wrong});

        const auto moved = moveEgn(QStringLiteral(" ") + wrong, right + QStringLiteral(" "));
        QVERIFY2(moved.ok(), qPrintable(moved.error()));
        QCOMPARE(moved->pacients, 1);
        QCOMPARE(moved->dental, 1);
        QCOMPARE(moved->help, 3);
        QCOMPARE(practice.count("SELECT COUNT(*) FROM Help WHERE EGN = '" + right + "'"), 3);
        QCOMPARE(practice.count("SELECT COUNT(*) FROM Help WHERE EGN = '" + other + "'"), 1);
        QCOMPARE(practice.count("SELECT COUNT(*) FROM Dental WHERE EGN = '" + right + "'"), 1);
        QCOMPARE(practice.count("SELECT COUNT(*) FROM Path WHERE EGN = '" + wrong + "'"), 1); // referrals keep it

        // A second run finds nothing under the old number.
        const auto again = moveEgn(wrong, right);
        QVERIFY(again.ok());
        QCOMPARE(again->pacients + again->dental + again->help, 0);
    }

    void patientWithoutChartRow()
    {
        TestPractice practice;
        const QString wrong = validEgn(QDate(1975, 1, 1));
        const QString right = validEgn(QDate(1975, 1, 2));
        practice.addPatient(wrong, QStringLiteral("Иван Петров"), Doctor);
        practice.addService(wrong, QDate(2026, 3, 1), QStringLiteral("101"), Doctor);
        store::run(store::clinicDb(), QStringLiteral("DELETE FROM Dental"));
        const auto moved = moveEgn(wrong, right);
        QVERIFY(moved.ok());
        QCOMPARE(moved->pacients, 1);
        QCOMPARE(moved->dental, 0);
        QCOMPARE(moved->help, 1);
    }

    void numberOfAnotherPatientIsRefused()
    {
        TestPractice practice;
        const QString wrong = validEgn(QDate(1975, 1, 1));
        const QString taken = validEgn(QDate(1980, 1, 1));
        practice.addPatient(wrong, QStringLiteral("Иван Петров"), Doctor);
        practice.addPatient(taken, QStringLiteral("Мария Петрова"), Doctor);
        practice.addService(wrong, QDate(2026, 3, 1), QStringLiteral("101"), Doctor);
        const auto moved = moveEgn(wrong, taken);
        QVERIFY(!moved.ok());
        QVERIFY(moved.error().contains(taken));
        QCOMPARE(practice.count("SELECT COUNT(*) FROM Pacients WHERE EGN = '" + wrong + "'"), 1);
        QCOMPARE(practice.count("SELECT COUNT(*) FROM Help WHERE EGN = '" + wrong + "'"), 1);
    }

    // A new number the card would refuse is refused here: the patient could not be opened under it.
    void numberTheCardRefusesIsRefused_data()
    {
        QTest::addColumn<QString>("newEgn");
        QTest::newRow("empty") << "";
        QTest::newRow("nine digits") << "750101124";
        QTest::newRow("bad month") << "7513011234";
        QTest::newRow("letters") << "75O1011234";
    }
    void numberTheCardRefusesIsRefused()
    {
        QFETCH(QString, newEgn);
        TestPractice practice;
        const QString wrong = validEgn(QDate(1975, 1, 1));
        practice.addPatient(wrong, QStringLiteral("Иван Петров"), Doctor);
        const auto moved = moveEgn(wrong, newEgn);
        QVERIFY(!moved.ok());
        QVERIFY(moved.error().endsWith(QStringLiteral("Номерът не е сменен.")));
        QCOMPARE(practice.count("SELECT COUNT(*) FROM Pacients WHERE EGN = '" + wrong + "'"), 1);
    }

    void sameNumberRewritesInPlace()
    {
        TestPractice practice;
        const QString egn = validEgn(QDate(1975, 1, 1));
        practice.addPatient(egn, QStringLiteral("Иван Петров"), Doctor);
        const auto moved = moveEgn(egn, egn);
        QVERIFY(moved.ok());
        QCOMPARE(moved->pacients, 1);
        QCOMPARE(practice.count("SELECT COUNT(*) FROM Pacients WHERE EGN = '" + egn + "'"), 1);
    }

    void failureInTheMiddleUndoesTheStart()
    {
        TestPractice practice;
        const QString wrong = validEgn(QDate(1975, 1, 1));
        practice.addPatient(wrong, QStringLiteral("Иван Петров"), Doctor);
        store::run(store::clinicDb(), QStringLiteral("DROP TABLE Help"));
        QVERIFY(!moveEgn(wrong, validEgn(QDate(1975, 1, 2))).ok());
        QCOMPARE(practice.count("SELECT COUNT(*) FROM Pacients WHERE EGN = '" + wrong + "'"), 1);
        QCOMPARE(practice.count("SELECT COUNT(*) FROM Dental WHERE EGN = '" + wrong + "'"), 1);
    }
};

QTEST_GUILESS_MAIN(TestEgnCorrection)
#include "tst_EgnCorrection.moc"
