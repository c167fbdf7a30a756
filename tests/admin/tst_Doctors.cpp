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
using doctors::SignedInDoctor;

namespace {

const QString NameMissing = QStringLiteral("Моля, попълнете името на стоматолога!");
const QString CodeTooShort = QStringLiteral("Минималната дължина на паролата е повече от 6 символа!");

// The access codes of Medic in table order match these typed codes.
bool storedCodesAre(const QStringList &typed)
{
    QSqlQuery rows = store::run(store::clinicDb(), QStringLiteral("SELECT Password FROM Medic ORDER BY ID"));
    for (const QString &code : typed)
        if (!rows.next() || !doctors::sameCode(rows.value(0).toString(), code))
            return false;
    return !rows.next();
}

} // namespace

class tst_Doctors final : public QObject
{
    Q_OBJECT
private slots:
    void checksInOrder_data()
    {
        QTest::addColumn<QStringList>("fields");
        QTest::addColumn<QString>("message");
        QTest::newRow("all empty names the name") << QStringList{"", "", "", ""} << NameMissing;
        QTest::newRow("only the code given") << QStringList{"", "", "", "123456"} << NameMissing;
        QTest::newRow("number missing") << QStringList{"Иванов", "", "2200000001", "123456"}
                                        << "Моля, попълнете номера на стоматолога!";
        QTest::newRow("practice code missing") << QStringList{"Иванов", "7501010000", "", "123456"}
                                               << "Моля, попълнете кода на практиката на стоматолога!";
        QTest::newRow("access code missing") << QStringList{"Иванов", "7501010000", "2200000001", ""}
                                             << "Моля, попълнете паролата!";
        QTest::newRow("five characters") << QStringList{"Иванов", "7501010000", "2200000001", "12345"} << CodeTooShort;
        QTest::newRow("six characters pass") << QStringList{"Иванов", "7501010000", "2200000001", "123456"} << "";
        QTest::newRow("a blank name passes") << QStringList{" ", "7501010000", "2200000001", "123456"} << "";
        QTest::newRow("six blanks pass the length") << QStringList{"Иванов", "x", "y", "      "} << "";
    }
    void checksInOrder()
    {
        QFETCH(QStringList, fields);
        QTEST(doctors::MedicAddCheck(DoctorEntry{fields[0], fields[1], fields[2], fields[3]}), "message");
    }

    void storesTheCodeHashedAndNamesAsTyped()
    {
        TestPractice practice;
        const QString name = QStringLiteral("д-р О'Брайън \"Зъбчо\" ");
        QVERIFY(doctors::addDoctor(store::clinicDb(), DoctorEntry{name, u"7501010000"_qs, u"2200000001"_qs, u" 654321 "_qs}).ok());
        const QStringList row = practice.row(QStringLiteral("SELECT Names, EGN, KodMedic, Password FROM Medic"));
        QCOMPARE(row.mid(0, 3), (QStringList{name, "7501010000", "2200000001"}));
        QVERIFY(!row[3].contains(u"654321"_qs));
        QVERIFY(accesscodes::matches(row[3], u"654321"_qs));
        QVERIFY(!accesscodes::matches(row[3], u"654322"_qs));
        // A second doctor of one name, blanks around it not counting, would hide the first at sign-in.
        const Outcome twin = doctors::addDoctor(store::clinicDb(), DoctorEntry{u" "_qs + name, u"2"_qs, u"3"_qs, u"123456"_qs});
        QVERIFY(!twin.ok());
        QVERIFY(twin.error().contains(name.trimmed()));
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM Medic")), 1);
    }

    // Names in table order; of two equal trimmed names the later row is the one sign-in takes.
    void namesAndTheLookUpOfSignIn()
    {
        TestPractice practice;
        QCOMPARE(doctors::doctorNames(store::clinicDb()).value(), QStringList{});
        practice.addDoctor(QStringLiteral("Иванов"), QStringLiteral("1111111111"), QStringLiteral("first1"));
        practice.addDoctor(QStringLiteral("Анна"), QStringLiteral("2222222222"), QStringLiteral("other1"));
        practice.addDoctor(QStringLiteral(" Иванов "), QStringLiteral(" 3333333333 "), QStringLiteral("second"));
        store::run(store::clinicDb(), QStringLiteral("INSERT INTO Medic (Names) VALUES (NULL)"));
        QCOMPARE(doctors::doctorNames(store::clinicDb()).value(), (QStringList{"Иванов", "Анна", " Иванов ", ""}));
        QCOMPARE(doctors::doctorCount(store::clinicDb()).value(), 4);
        const auto found = doctors::lookUpDoctor(store::clinicDb(), QStringLiteral("Иванов "));
        QVERIFY(found.ok() && found.value().has_value());
        QCOMPARE(found.value()->kodMedic, QStringLiteral("3333333333"));
        QCOMPARE(found.value()->names, QStringLiteral("Иванов"));
        QVERIFY(doctors::sameCode(found.value()->accessCode, QStringLiteral("second")));
        QVERIFY(!doctors::sameCode(found.value()->accessCode, QStringLiteral("first1")));
        QVERIFY(!doctors::lookUpDoctor(store::clinicDb(), QStringLiteral("Георгиев")).value().has_value());
        const auto empty = doctors::lookUpDoctor(store::clinicDb(), QString()); // a row without values is found, not a fault
        QVERIFY(empty.ok() && empty.value().has_value());
        QVERIFY(empty.value()->accessCode.isEmpty() && empty.value()->kodMedic.isEmpty());
    }

    void codeNumber_data()
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
    void codeNumber()
    {
        QFETCH(QString, code);
        QTEST(int(doctors::accessCodeNumber(code)), "number");
    }

    // The change works on the row sign-in took: the later of equal trimmed names, with its code.
    void changeCodeTouchesTheSignedInRow()
    {
        TestPractice practice;
        practice.addDoctor(QStringLiteral("Иванов"), QStringLiteral("1"), QStringLiteral("first1"));
        practice.addDoctor(QStringLiteral("Иванов "), QStringLiteral("2"), QStringLiteral("second"));
        const SignedInDoctor later{QStringLiteral("Иванов"), QStringLiteral("2")};
        QVERIFY(doctors::sameCode(doctors::keptCode(store::clinicDb(), later).value(), QStringLiteral("second")));
        QVERIFY(doctors::changeCode(store::clinicDb(), later, QStringLiteral("новата1")).ok());
        QVERIFY(storedCodesAre({u"first1"_qs, u"новата1"_qs}));
        QVERIFY(doctors::sameCode(doctors::keptCode(store::clinicDb(), {u"Иванов"_qs, u"1"_qs}).value(), QStringLiteral("first1")));
        // A doctor no row holds changes nothing, and says so; an apostrophe matches nothing by accident.
        for (const SignedInDoctor &nobody :
             {SignedInDoctor{u"Петров"_qs, u"2"_qs}, SignedInDoctor{u"x' OR '1'='1"_qs, u"1"_qs}}) {
            const Outcome changed = doctors::changeCode(store::clinicDb(), nobody, QStringLiteral("zzzzzz"));
            QVERIFY(!changed.ok());
            QVERIFY(changed.error().startsWith(QStringLiteral("Паролата не е сменена: ")));
        }
        QVERIFY(storedCodesAre({u"first1"_qs, u"новата1"_qs}));
    }

    void aFailingStoreIsTold()
    {
        TestPractice practice;
        store::run(store::clinicDb(), QStringLiteral("DROP TABLE Medic"));
        const Outcome added = doctors::addDoctor(store::clinicDb(), DoctorEntry{u"Иванов"_qs, u"1"_qs, u"2"_qs, u"123456"_qs});
        QVERIFY(added.error().startsWith(QStringLiteral("Лекарят не е записан: ")));
        const Outcome changed = doctors::changeCode(store::clinicDb(), {u"Иванов"_qs, u"1"_qs}, QStringLiteral("654321"));
        QVERIFY(changed.error().startsWith(QStringLiteral("Паролата не е сменена: ")));
        QVERIFY(!added.ok() && !changed.ok());
    }

    // "Изход" saves a complete record and closes; the close box stores nothing and says nothing.
    void medicAddSavesOnlyACompleteRecord_data()
    {
        QTest::addColumn<QStringList>("typed");
        QTest::addColumn<bool>("closeBox");
        QTest::addColumn<QString>("message");
        const QStringList complete{"Д-р Иванова", "7501010000", "2200000001", "123456"};
        QTest::newRow("complete") << complete << false << "";
        QTest::newRow("password too short") << QStringList{"Д-р Иванова", "7501010000", "2200000001", "12345"} << false
                                            << CodeTooShort;
        QTest::newRow("the close box") << complete << true << "";
    }
    void medicAddSavesOnlyACompleteRecord()
    {
        QFETCH(QStringList, typed);
        QFETCH(bool, closeBox);
        QFETCH(QString, message);
        TestPractice practice;
        MedicAdd form;
        form.show();
        for (int i = 0; i < 4; ++i)
            typeText(form.findChild<QLineEdit *>(QStringLiteral("txtFields%1").arg(i + 1)), typed[i]);
        if (closeBox)
            QVERIFY(form.close());
        else
            QTest::mouseClick(form.findChild<QPushButton *>(QStringLiteral("cmdClose")), Qt::LeftButton);
        const bool saved = message.isEmpty() && !closeBox;
        QCOMPARE(practice.dialogs().messages, message.isEmpty() ? QStringList{} : QStringList{message});
        QCOMPARE(form.isVisible(), !saved && !closeBox);
        QCOMPARE(form.doctorAdded(), saved);
        QCOMPARE(doctors::doctorNames(store::clinicDb()).value(), saved ? QStringList{typed[0]} : QStringList{});
    }
};

QTEST_MAIN(tst_Doctors)
#include "tst_Doctors.moc"
