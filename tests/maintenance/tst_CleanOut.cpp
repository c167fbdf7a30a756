#include "TestPractice.h"

#include "maintenance/CleanOut.h"
#include "maintenance/ui/MaintenanceCommands.h"
#include "base/RunState.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QProcess>
#include <QTest>

// Keeping one doctor's patients: the others go with their services and charts, in one
// transaction; nothing else is touched.
namespace {

struct Counts
{
    int patients, services, charts, referrals;
    bool operator==(const Counts &) const = default;
};

Counts countAll(TestPractice &practice)
{
    return {practice.count(QStringLiteral("SELECT COUNT(*) FROM Pacients")),
            practice.count(QStringLiteral("SELECT COUNT(*) FROM Help")),
            practice.count(QStringLiteral("SELECT COUNT(*) FROM Dental")),
            practice.count(QStringLiteral("SELECT COUNT(*) FROM Path"))};
}

const QString Own = validEgn(QDate(1975, 1, 1));
const QString Other = validEgn(QDate(1980, 2, 3));
const QString Unkept = validEgn(QDate(1990, 4, 5));
const QString NoCode = validEgn(QDate(2001, 6, 7));

// Patients of doctor 1111, of 2222, with an empty LKod and with none at all; one service and one
// referral each.
void fill(TestPractice &practice)
{
    practice.addDoctor(QStringLiteral("Иван Петров"), QStringLiteral("1111"));
    practice.addDoctor(QStringLiteral("Мария Колева"), QStringLiteral("2222"));
    practice.addPatient(Own, QStringLiteral("Свой"), QStringLiteral("1111"));
    practice.addPatient(Other, QStringLiteral("Чужд"), QStringLiteral("2222"));
    practice.addPatient(Unkept, QStringLiteral("Празен код"), QStringLiteral(""));
    store::run(store::clinicDb(), QStringLiteral("INSERT INTO Pacients (EGN, Names) VALUES (?, 'Без код')"), {NoCode});
    for (const QString &egn : {Own, Other, Unkept, NoCode}) {
        practice.addService(egn, QDate(2026, 3, 1), QStringLiteral("101"), QStringLiteral("1111"));
        store::run(store::clinicDb(), QStringLiteral("INSERT INTO Path (EGN, ListID) VALUES (?, '000001')"), {egn});
    }
}

int run(const QStringList &arguments, QString *err = nullptr)
{
    QProcess process;
    process.start(qEnvironmentVariable("VELMORATA_BINARY"), arguments);
    process.waitForFinished(60000);
    if (err)
        *err = QString::fromUtf8(process.readAllStandardError());
    return process.exitCode();
}

} // namespace

class TestCleanOut final : public QObject
{
    Q_OBJECT
private slots:
    void keepsOnlyTheDoctorsPatients_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QStringList>("left");
        QTest::addColumn<int>("servicesLeft");
        QTest::newRow("doctor 1111") << "1111" << QStringList{Own, NoCode} << 2;
        // Nobody signed in: every patient with a code goes, the empty code being one of them.
        QTest::newRow("empty code") << "" << QStringList{Unkept, NoCode} << 2;
        QTest::newRow("null code") << QString() << QStringList{Unkept, NoCode} << 2;
    }
    void keepsOnlyTheDoctorsPatients()
    {
        QFETCH(QString, code);
        QFETCH(QStringList, left);
        QFETCH(int, servicesLeft);
        TestPractice practice;
        fill(practice);
        const auto cleaned = cleanout::CleanDatabase(store::clinicDb(), code);
        QVERIFY2(cleaned, qPrintable(cleaned.error()));
        QStringList kept;
        QSqlQuery query = store::run(store::clinicDb(), QStringLiteral("SELECT EGN FROM Pacients ORDER BY EGN"));
        while (query.next())
            kept << query.value(0).toString();
        left.sort();
        QCOMPARE(kept, left);
        QCOMPARE(cleaned->patients, 4 - int(left.size()));
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM Help")), servicesLeft);
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM Dental")), 3 - cleaned->patients);
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM Path")), 4); // referrals stay
    }

    void nothingToDeleteShowsNoProgress()
    {
        TestPractice practice;
        practice.addPatient(Own, QStringLiteral("Свой"), QStringLiteral("1111"));
        const auto cleaned = cleanout::CleanDatabase(store::clinicDb(), QStringLiteral("1111"));
        QVERIFY(cleaned);
        QCOMPARE(cleaned->patients, 0);
        QCOMPARE(practice.dialogs().progressShown, 0);
    }

    void failureMidwayLeavesEverything()
    {
        TestPractice practice;
        fill(practice);
        const Counts before = countAll(practice);
        // A patient whose delete the file refuses: the services and charts already deleted come back.
        store::run(store::clinicDb(), QStringLiteral("CREATE TRIGGER keep BEFORE DELETE ON Pacients "
                                                     "BEGIN SELECT RAISE(ABORT, 'kept'); END"));
        const auto cleaned = cleanout::CleanDatabase(store::clinicDb(), QStringLiteral("1111"));
        QVERIFY(!cleaned);
        QVERIFY(!cleaned.error().isEmpty());
        QCOMPARE(countAll(practice), before);
    }

    void menuCommandAsksFirst_data()
    {
        QTest::addColumn<bool>("answer");
        QTest::addColumn<int>("patientsLeft");
        QTest::newRow("НЕ") << false << 4;
        QTest::newRow("ДА") << true << 2;
    }
    void menuCommandAsksFirst()
    {
        QFETCH(bool, answer);
        QFETCH(int, patientsLeft);
        TestPractice practice;
        fill(practice);
        run().CurrentMedicCode = QStringLiteral("1111");
        run().CurrentMedicName = QStringLiteral("Иван Петров");
        practice.dialogs().answers.push_back(answer);
        maintenanceui::cleanOutData();
        QCOMPARE(practice.dialogs().questions, QStringList{cleanout::question(QStringLiteral("Иван Петров"))});
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM Pacients")), patientsLeft);
    }

    void commandLineRefuses_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<int>("exitCode");
        QTest::newRow("no --yes") << QStringList{"--doctor", "1111"} << 2;
        QTest::newRow("no doctor") << QStringList{"--yes"} << 2;
        QTest::newRow("unknown doctor") << QStringList{"--doctor", "9999", "--yes"} << 1;
    }
    void commandLineRefuses()
    {
        QFETCH(QStringList, options);
        QFETCH(int, exitCode);
        QString folder;
        Counts before;
        {
            TestPractice practice;
            fill(practice);
            before = countAll(practice);
            folder = practice.folder() + QStringLiteral("/copy");
            QVERIFY(QDir().mkpath(folder));
            QVERIFY(QFile::copy(store::paths().clinicDb, folder + QStringLiteral("/velmorata.db")));
            QVERIFY(QFile::copy(store::paths().dataDb, folder + QStringLiteral("/data.db")));
            QString err;
            QCOMPARE(run(QStringList{"clean-out", "--data-dir", folder} + options, &err), exitCode);
            QVERIFY(!err.isEmpty());
            // While a program holds the folder the command says so and changes nothing.
            QCOMPARE(run({"clean-out", "--data-dir", practice.folder(), "--doctor", "1111", "--yes"}, &err), 1);
            QVERIFY2(err.contains(QStringLiteral("вече работи")), qPrintable(err));
            QCOMPARE(countAll(practice), before);
        }
    }

    void commandLineCleansOut()
    {
        TestPractice practice;
        fill(practice);
        const QString folder = practice.folder();
        store::closeStore();
        QString err;
        QCOMPARE(run({"clean-out", "--data-dir", folder, "--doctor", "1111", "--yes"}, &err), 0);
        QVERIFY(store::openStore(store::DataPaths::inFolder(folder)));
        QCOMPARE(countAll(practice), (Counts{2, 2, 1, 4}));
    }
};

QTEST_MAIN(TestCleanOut)
#include "tst_CleanOut.moc"
