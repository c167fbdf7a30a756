#include "TestPractice.h"
#include "Typing.h"

#include "admin/AccessCodes.h"
#include "admin/Doctors.h"
#include "admin/ui/MedicAdd.h"
#include "store/Sql.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using doctors::DoctorEntry;

class tst_Doctors final : public QObject
{
    Q_OBJECT
private slots:
    void checksInOrder_data();
    void checksInOrder();
    void storesTheCodeHashedAndNamesAsTyped();
    void namesInTableOrder();
    void laterOfTwoEqualNamesWins();
    void lookUpSurvivesEmptyRows();
    void codeNumber_data();
    void codeNumber();
    void changeCodeTouchesTheSignedInRow();
    void aSecondDoctorOfOneNameIsRefused();
    void aFailingStoreIsTold();
    void medicAddSavesOnlyACompleteRecord_data();
    void medicAddSavesOnlyACompleteRecord();
    void medicAddCloseBoxStoresNothing();
};

void tst_Doctors::checksInOrder_data()
{
    QTest::addColumn<QStringList>("fields");
    QTest::addColumn<QString>("message");
    const QString name = QStringLiteral("Моля, попълнете името на стоматолога!");
    QTest::newRow("all empty names the name") << QStringList{"", "", "", ""} << name;
    QTest::newRow("only the code given") << QStringList{"", "", "", "123456"} << name;
    QTest::newRow("number missing") << QStringList{"Иванов", "", "2200000001", "123456"}
                                    << "Моля, попълнете номера на стоматолога!";
    QTest::newRow("practice code missing") << QStringList{"Иванов", "7501010000", "", "123456"}
                                           << "Моля, попълнете кода на практиката на стоматолога!";
    QTest::newRow("access code missing") << QStringList{"Иванов", "7501010000", "2200000001", ""}
                                         << "Моля, попълнете паролата!";
    QTest::newRow("five characters") << QStringList{"Иванов", "7501010000", "2200000001", "12345"}
                                     << "Минималната дължина на паролата е повече от 6 символа!";
    QTest::newRow("six characters pass") << QStringList{"Иванов", "7501010000", "2200000001", "123456"} << "";
    QTest::newRow("a blank name passes") << QStringList{" ", "7501010000", "2200000001", "123456"} << "";
    QTest::newRow("six blanks pass the length") << QStringList{"Иванов", "x", "y", "      "} << "";
}

void tst_Doctors::checksInOrder()
{
    QFETCH(QStringList, fields);
    QFETCH(QString, message);
    QCOMPARE(doctors::MedicAddCheck(DoctorEntry{fields[0], fields[1], fields[2], fields[3]}), message);
}

void tst_Doctors::storesTheCodeHashedAndNamesAsTyped()
{
    TestPractice practice;
    const QString name = QStringLiteral("д-р О'Брайън \"Зъбчо\" ");
    QVERIFY(doctors::addDoctor(DoctorEntry{name, QStringLiteral("7501010000"), QStringLiteral("2200000001"),
                                           QStringLiteral(" 654321 ")})
                .ok());
    QSqlQuery row = store::run(store::clinicDb(), QStringLiteral("SELECT Names, EGN, KodMedic, Password FROM Medic"));
    QVERIFY(row.next());
    QCOMPARE(row.value(0).toString(), name);
    QCOMPARE(row.value(1).toString(), QStringLiteral("7501010000"));
    QCOMPARE(row.value(2).toString(), QStringLiteral("2200000001"));
    const QString stored = row.value(3).toString();
    QVERIFY(!stored.contains(QStringLiteral("654321")));
    QVERIFY(accesscodes::matches(stored, QStringLiteral("654321")));
    QVERIFY(!accesscodes::matches(stored, QStringLiteral("654322")));
}

void tst_Doctors::namesInTableOrder()
{
    TestPractice practice;
    QCOMPARE(doctors::doctorNames().value(), QStringList{});
    practice.addDoctor(QStringLiteral("Яков"), QStringLiteral("1"));
    practice.addDoctor(QStringLiteral("Анна"), QStringLiteral("2"));
    practice.addDoctor(QStringLiteral("Мария"), QStringLiteral("3"));
    QCOMPARE(doctors::doctorNames().value(), (QStringList{"Яков", "Анна", "Мария"}));
    QCOMPARE(doctors::doctorCount().value(), 3);
}

void tst_Doctors::laterOfTwoEqualNamesWins()
{
    TestPractice practice;
    practice.addDoctor(QStringLiteral("Иванов"), QStringLiteral("1111111111"), QStringLiteral("first1"));
    practice.addDoctor(QStringLiteral("Петров"), QStringLiteral("2222222222"), QStringLiteral("other1"));
    practice.addDoctor(QStringLiteral(" Иванов "), QStringLiteral(" 3333333333 "), QStringLiteral("second"));
    const auto found = doctors::lookUpDoctor(QStringLiteral("Иванов "));
    QVERIFY(found.ok() && found.value().has_value());
    QCOMPARE(found.value()->kodMedic, QStringLiteral("3333333333"));
    QCOMPARE(found.value()->names, QStringLiteral("Иванов"));
    QVERIFY(doctors::sameCode(found.value()->accessCode, QStringLiteral("second")));
    QVERIFY(!doctors::sameCode(found.value()->accessCode, QStringLiteral("first1")));
    QVERIFY(!doctors::lookUpDoctor(QStringLiteral("Георгиев")).value().has_value());
}

void tst_Doctors::lookUpSurvivesEmptyRows()
{
    TestPractice practice;
    store::run(store::clinicDb(), QStringLiteral("INSERT INTO Medic (Names) VALUES (NULL)"));
    QCOMPARE(doctors::doctorNames().value(), QStringList{QString()});
    const auto found = doctors::lookUpDoctor(QString());
    QVERIFY(found.ok() && found.value().has_value());
    QVERIFY(found.value()->accessCode.isEmpty());
    QVERIFY(found.value()->kodMedic.isEmpty());
}

void tst_Doctors::codeNumber_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<int>("number");
    QTest::newRow("six digits do not fit") << "123456" << 0;
    QTest::newRow("the largest") << "32767" << 32767;
    QTest::newRow("one above") << "32768" << 0;
    QTest::newRow("forty digits") << QString(40, u'9') << 0;
    QTest::newRow("blanks around") << "  77  " << 77;
    QTest::newRow("digits then letters") << "12ab34" << 12;
    QTest::newRow("empty") << "" << 0;
}

void tst_Doctors::codeNumber()
{
    QFETCH(QString, code);
    QFETCH(int, number);
    QCOMPARE(int(doctors::accessCodeNumber(code)), number);
}

// The change works on the row sign-in took: the later of equal trimmed names, with its code.
void tst_Doctors::changeCodeTouchesTheSignedInRow()
{
    TestPractice practice;
    practice.addDoctor(QStringLiteral("Иванов"), QStringLiteral("1"), QStringLiteral("first1"));
    practice.addDoctor(QStringLiteral("Иванов "), QStringLiteral("2"), QStringLiteral("second"));
    const doctors::SignedInDoctor later{QStringLiteral("Иванов"), QStringLiteral("2")};
    QVERIFY(doctors::sameCode(doctors::keptCode(later).value(), QStringLiteral("second")));
    QVERIFY(doctors::changeCode(later, QStringLiteral("новата1")).ok());
    QSqlQuery rows = store::run(store::clinicDb(), QStringLiteral("SELECT Password FROM Medic ORDER BY ID"));
    QVERIFY(rows.next());
    QVERIFY(doctors::sameCode(rows.value(0).toString(), QStringLiteral("first1")));
    QVERIFY(rows.next());
    QVERIFY(doctors::sameCode(rows.value(0).toString(), QStringLiteral("новата1")));
    // A doctor no row holds changes nothing, and says so; an apostrophe matches nothing by accident.
    for (const doctors::SignedInDoctor &nobody : {doctors::SignedInDoctor{QStringLiteral("Петров"), QStringLiteral("2")},
                                                  doctors::SignedInDoctor{QStringLiteral("x' OR '1'='1"), QStringLiteral("1")}}) {
        const Outcome changed = doctors::changeCode(nobody, QStringLiteral("zzzzzz"));
        QVERIFY(!changed.ok());
        QVERIFY(changed.error().startsWith(QStringLiteral("Паролата не е сменена: ")));
    }
    QVERIFY(doctors::sameCode(doctors::keptCode({QStringLiteral("Иванов"), QStringLiteral("1")}).value(),
                              QStringLiteral("first1")));
}

void tst_Doctors::aSecondDoctorOfOneNameIsRefused()
{
    TestPractice practice;
    practice.addDoctor(QStringLiteral("Иванов "), QStringLiteral("1"));
    const Outcome added = doctors::addDoctor(
        DoctorEntry{QStringLiteral(" Иванов"), QStringLiteral("2"), QStringLiteral("3"), QStringLiteral("123456")});
    QVERIFY(!added.ok());
    QVERIFY(added.error().contains(QStringLiteral("Иванов")));
    QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM Medic")), 1);
}

void tst_Doctors::aFailingStoreIsTold()
{
    TestPractice practice;
    store::run(store::clinicDb(), QStringLiteral("DROP TABLE Medic"));
    const Outcome added = doctors::addDoctor(
        DoctorEntry{QStringLiteral("Иванов"), QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("123456")});
    QVERIFY(!added.ok());
    QVERIFY(added.error().startsWith(QStringLiteral("Лекарят не е записан: ")));
    const Outcome changed = doctors::changeCode({QStringLiteral("Иванов"), QStringLiteral("1")}, QStringLiteral("654321"));
    QVERIFY(!changed.ok());
    QVERIFY(changed.error().startsWith(QStringLiteral("Паролата не е сменена: ")));
}

void tst_Doctors::medicAddSavesOnlyACompleteRecord_data()
{
    QTest::addColumn<QStringList>("typed");
    QTest::addColumn<QString>("message");
    QTest::newRow("complete") << QStringList{"Д-р Иванова", "7501010000", "2200000001", "123456"} << "";
    QTest::newRow("password too short") << QStringList{"Д-р Иванова", "7501010000", "2200000001", "12345"}
                                        << "Минималната дължина на паролата е повече от 6 символа!";
    QTest::newRow("nothing typed") << QStringList{"", "", "", ""} << "Моля, попълнете името на стоматолога!";
}

void tst_Doctors::medicAddSavesOnlyACompleteRecord()
{
    QFETCH(QStringList, typed);
    QFETCH(QString, message);
    TestPractice practice;
    MedicAdd form;
    form.show();
    for (int i = 0; i < 4; ++i)
        typeText(form.findChild<QLineEdit *>(QStringLiteral("txtFields%1").arg(i + 1)), typed[i]);
    QTest::mouseClick(form.findChild<QPushButton *>(QStringLiteral("cmdClose")), Qt::LeftButton);
    const bool saved = message.isEmpty();
    QCOMPARE(practice.dialogs().messages, saved ? QStringList{} : QStringList{message});
    QCOMPARE(form.isVisible(), !saved);
    QCOMPARE(form.doctorAdded(), saved);
    QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM Medic")), saved ? 1 : 0);
    if (saved)
        QCOMPARE(doctors::doctorNames().value(), QStringList{typed[0]});
}

void tst_Doctors::medicAddCloseBoxStoresNothing()
{
    TestPractice practice;
    MedicAdd form;
    form.show();
    typeText(form.findChild<QLineEdit *>(QStringLiteral("txtFields1")), QStringLiteral("Иванов"));
    typeText(form.findChild<QLineEdit *>(QStringLiteral("txtFields4")), QStringLiteral("123"));
    QVERIFY(form.close());
    QVERIFY(!form.doctorAdded());
    QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM Medic")), 0);
    QVERIFY(practice.dialogs().messages.isEmpty());
}

QTEST_MAIN(tst_Doctors)
#include "tst_Doctors.moc"
