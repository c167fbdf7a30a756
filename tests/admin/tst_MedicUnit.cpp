#include "EscapeAsks.h"
#include "TestPractice.h"

#include "admin/MedicUnit.h"
#include "admin/ui/MedicUnitForm.h"
#include "base/ui/WindowPlacement.h"
#include "maintenance/DemoPractice.h"
#include "patients/EgnRules.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QLabel>
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
    void aNewDatabaseHasOneEmptyRow()
    {
        TestPractice practice;
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM MedicUnit")), 1);
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM MedicUnit WHERE UserUIN IS NULL AND UserName IS NULL")), 1);
    }

    // Each box shows and stores its own field, under its own label.
    void boxesMapToTheirFields_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("label");
        QTest::newRow("first") << 0 << "UserBIC" << "BIC";
        QTest::newRow("registration") << 15 << "UserID" << "Регистрационен номер на леч. заведение";
        QTest::newRow("name") << 17 << "UserName" << "Име на леч.заведение";
        QTest::newRow("telephone") << 19 << "UserTel" << "тел:";
        QTest::newRow("UIN") << 21 << "UserUIN" << "УИН";
        QTest::newRow("quarter") << 26 << "UserKs" << "ж.к.";
        QTest::newRow("last") << 27 << "UserSIMP" << "СИМП";
    }

    void boxesMapToTheirFields()
    {
        QFETCH(int, index);
        QFETCH(QString, field);
        QFETCH(QString, label);
        TestPractice practice;
        store::run(store::clinicDb(), QStringLiteral("UPDATE MedicUnit SET %1 = ?").arg(field), {u"Д'Арси & <Ко>"_qs});
        MedicUnit form;
        QCOMPARE(form.findChild<QLabel *>(QStringLiteral("lblLabels_%1").arg(index))->text(), label);
        QCOMPARE(box(form, index)->text(), u"Д'Арси & <Ко>"_qs);
        box(form, index)->setText(u"нов"_qs);
        QTest::mouseClick(button(form, u"cmdUpdate"_qs), Qt::LeftButton);
        QCOMPARE(stored(field), u"нов"_qs);
    }

    void oneSavePerOpening()
    {
        TestPractice practice;
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
    }

    void anOlderFileWithoutTheRowGetsOneOnSave()
    {
        TestPractice practice;
        store::run(store::clinicDb(), QStringLiteral("DELETE FROM MedicUnit"));
        MedicUnit form;
        box(form, 21)->setText(u"2200004571"_qs);
        QTest::mouseClick(button(form, u"cmdUpdate"_qs), Qt::LeftButton);
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM MedicUnit")), 1);
        QCOMPARE(stored(u"UserUIN"_qs), u"2200004571"_qs);
    }

    void aFailedSaveSaysSoAndKeepsTheButton()
    {
        TestPractice practice;
        MedicUnit form;
        store::run(store::clinicDb(), QStringLiteral("DROP TABLE MedicUnit"));
        box(form, 17)->setText(u"Практика"_qs);
        QTest::mouseClick(button(form, u"cmdUpdate"_qs), Qt::LeftButton);
        QCOMPARE(practice.dialogs().messages.size(), 1);
        QVERIFY(button(form, u"cmdUpdate"_qs)->isEnabled());
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

    void fitsTheSmallestScreen()
    {
        TestPractice practice;
        MedicUnit form;
        QVERIFY(form.minimumSizeHint().width() <= SmallestScreen.width());
        QVERIFY(form.minimumSizeHint().height() <= SmallestScreen.height() - 60);
    }

    void theDemoPracticeHasAFilledRow()
    {
        QTemporaryDir folder;
        const auto made = generateDemoPractice({folder.path(), 1, 5, 1, 1, QDate(2026, 3, 15)});
        QVERIFY2(made.ok(), qPrintable(made.error()));
        const auto unit = medicunit::LoadMedicUnit(store::clinicDb());
        QVERIFY(unit.ok());
        const QString id = unit->at(medicunit::FieldNames().indexOf(u"UserID"_qs));
        QVERIFY2(id.size() == 10 && id.toLongLong() > 0 && id.at(0).isDigit(), qPrintable(id));
        QCOMPARE(unit->at(medicunit::FieldNames().indexOf(u"UserUIN"_qs)).size(), 10);
        QVERIFY(!EgnCheckDigitBad(unit->at(medicunit::FieldNames().indexOf(u"UserEGN"_qs))));
        QVERIFY(!unit->at(medicunit::FieldNames().indexOf(u"UserName"_qs)).isEmpty());
        QCOMPARE(store::scalar(store::clinicDb(), QStringLiteral("SELECT COUNT(*) FROM MedicUnit")).toInt(), 1);
        store::closeStore();
    }
};

QTEST_MAIN(MedicUnitTest)
#include "tst_MedicUnit.moc"
