#include "EscapeAsks.h"
#include "TestPractice.h"

#include "admin/MedicUnit.h"
#include "admin/ui/MedicUnitForm.h"
#include "demo/DemoPractice.h"
#include "patients/EgnRules.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace {

QLineEdit *box(const QWidget &form, int index)
{
    return form.findChild<QLineEdit *>(QStringLiteral("txtFields_%1").arg(index));
}

QPushButton *button(const QWidget &form, const QString &name) { return form.findChild<QPushButton *>(name); }

QString stored(const QString &field)
{
    return store::scalar(store::clinicDb(), QStringLiteral("SELECT %1 FROM MedicUnit").arg(field)).toString();
}

} // namespace

class MedicUnitTest final : public QObject
{
    Q_OBJECT

private slots:
    // Each box shows and stores its own field; a value is stored as typed.
    void boxesMapToTheirFields_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("field");
        QTest::newRow("first") << 0 << "UserBIC";
        QTest::newRow("registration") << 15 << "UserID";
        QTest::newRow("name") << 17 << "UserName";
        QTest::newRow("UIN") << 21 << "UserUIN";
        QTest::newRow("last") << 27 << "UserSIMP";
    }
    void boxesMapToTheirFields()
    {
        QFETCH(int, index);
        QFETCH(QString, field);
        TestPractice practice;
        store::run(store::clinicDb(), QStringLiteral("UPDATE MedicUnit SET %1 = ?").arg(field), {u"Д'Арси & <Ко>"_qs});
        MedicUnit form;
        QCOMPARE(box(form, index)->text(), u"Д'Арси & <Ко>"_qs);
        box(form, index)->setText(u"нов"_qs);
        QTest::mouseClick(button(form, u"cmdUpdate"_qs), Qt::LeftButton);
        QCOMPARE(stored(field), u"нов"_qs);
    }

    // A new database has the one row, empty; the form saves once per opening.
    void oneSavePerOpening()
    {
        TestPractice practice;
        QCOMPARE(practice.count(u"SELECT COUNT(*) FROM MedicUnit WHERE UserUIN IS NULL AND UserName IS NULL"_qs), 1);
        MedicUnit form;
        form.show();
        box(form, 21)->setText(QString()); // no check of its own: an empty UIN is stored
        box(form, 17)->setText(u"Практика"_qs);
        QTest::mouseClick(button(form, u"cmdUpdate"_qs), Qt::LeftButton);
        QCOMPARE(stored(u"UserName"_qs), u"Практика"_qs);
        QVERIFY(!button(form, u"cmdUpdate"_qs)->isEnabled());
        QTest::mouseClick(button(form, u"cmdClose"_qs), Qt::LeftButton);
        QVERIFY(!form.isVisible());
        QVERIFY(practice.dialogs().questions.isEmpty());
        MedicUnit again;
        QVERIFY(button(again, u"cmdUpdate"_qs)->isEnabled());
        QCOMPARE(box(again, 17)->text(), u"Практика"_qs);
        QCOMPARE(practice.count(u"SELECT COUNT(*) FROM MedicUnit"_qs), 1);
    }

    // An older file without the row gets one on save; a save that fails says so and keeps the button.
    void missingRowOrTable()
    {
        TestPractice practice;
        store::run(store::clinicDb(), QStringLiteral("DELETE FROM MedicUnit"));
        MedicUnit form;
        box(form, 21)->setText(u"2200004571"_qs);
        QTest::mouseClick(button(form, u"cmdUpdate"_qs), Qt::LeftButton);
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM MedicUnit")), 1);
        QCOMPARE(stored(u"UserUIN"_qs), u"2200004571"_qs);
        MedicUnit broken;
        store::run(store::clinicDb(), QStringLiteral("DROP TABLE MedicUnit"));
        QTest::mouseClick(button(broken, u"cmdUpdate"_qs), Qt::LeftButton);
        QCOMPARE(practice.dialogs().messages.size(), 1);
        QVERIFY(button(broken, u"cmdUpdate"_qs)->isEnabled());
    }

    void typingIsGivenUpOnlyAfterAQuestion()
    {
        TestPractice practice;
        MedicUnit form;
        form.show();
        box(form, 2)->setText(u"Банка"_qs);
        QVERIFY(escapeAsksBeforeClosing(form, practice.dialogs()));
        QCOMPARE(stored(u"UserBank"_qs), QString());
    }

    void theDemoPracticeHasAFilledRow()
    {
        QTemporaryDir folder;
        const auto made = generateDemoPractice({folder.path(), 1, 5, 1, 1, QDate(2026, 3, 15)});
        QVERIFY2(made.ok(), qPrintable(made.error()));
        const auto unit = medicunit::LoadMedicUnit(store::clinicDb());
        QVERIFY(unit.ok());
        const auto value = [&unit](const QString &field) { return unit->at(medicunit::FieldNames().indexOf(field)); };
        const QString id = value(u"UserID"_qs);
        QVERIFY2(id.size() == 10 && id.toLongLong() > 0 && id.at(0).isDigit(), qPrintable(id));
        QCOMPARE(value(u"UserUIN"_qs).size(), 10);
        QVERIFY(!EgnCheckDigitBad(value(u"UserEGN"_qs)));
        QVERIFY(!value(u"UserName"_qs).isEmpty());
        QCOMPARE(store::scalar(store::clinicDb(), QStringLiteral("SELECT COUNT(*) FROM MedicUnit")).toInt(), 1);
        store::closeStore();
    }
};

QTEST_MAIN(MedicUnitTest)
#include "tst_MedicUnit.moc"
