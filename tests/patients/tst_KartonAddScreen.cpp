#include "patients/EgnMessages.h"
#include "base/RunState.h"
#include "patients/EgnCorrection.h"
#include "patients/EgnRuleSetting.h"
#include "patients/ui/EgnRuleForm.h"
#include "patients/ui/KartonAdd.h"
#include "patients/ui/KorEGN.h"
#include "patients/ui/SeekName.h"
#include "patients/ui/ViewHelp.h"

#include "TestPractice.h"
#include "store/Sql.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>

namespace {

const QString Doctor = QStringLiteral("0101");
const QString StoredName = QStringLiteral("Иван Петров Иванов");
const QString Stored = validEgn(QDate(1975, 1, 1));

// Doctor 0101 signed in, with one patient of his: StoredName under Stored.
struct SignedIn
{
    SignedIn()
    {
        run().CurrentMedicCode = Doctor;
        practice.addPatient(Stored, StoredName, Doctor);
    }
    TestPractice practice;
    ScriptedDialogs &dialogs() { return practice.dialogs(); }
    int count(const QString &table, const QString &egn) const
    {
        return practice.count(u"SELECT COUNT(*) FROM %1 WHERE EGN = '%2'"_qs.arg(table, egn));
    }
};

QString storedText(const QString &field, const QString &egn)
{
    const QString sql = u"SELECT %1 FROM Pacients LEFT JOIN Dental USING (EGN) WHERE EGN = ?"_qs.arg(field);
    return store::scalar(store::clinicDb(), sql, {egn}).toString();
}

// The card as the user has it: shown, active, driven through its inputs.
class CardDriver final
{
public:
    // The card opens with the focus in the empty name input; leaving it warns about the names,
    // which the tests below are not about.
    CardDriver(KartonAdd *card, ScriptedDialogs &dialogs)
        : m_card(card)
    {
        m_card->show();
        m_card->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_card));
        QVERIFY(input(QStringLiteral("Text2"))->hasFocus());
        const bool noName = input(QStringLiteral("Text2"))->text().isEmpty();
        leave();
        QCOMPARE(dialogs.messages.size(), noName ? 1 : 0);
        dialogs.messages.clear();
    }

    QLineEdit *input(const QString &name) const { return m_card->findChild<QLineEdit *>(name); }
    QCheckBox *box(int number) const { return m_card->findChild<QCheckBox *>(QStringLiteral("Check%1").arg(number)); }
    QPushButton *button(const QString &name) const { return m_card->findChild<QPushButton *>(name); }
    void click(const QString &name) const { QTest::mouseClick(button(name), Qt::LeftButton); }

    // Types into an input and leaves it for the next one, as Tab would.
    void type(const QString &name, const QString &text) const
    {
        QLineEdit *edit = input(name);
        edit->setFocus(Qt::TabFocusReason);
        edit->selectAll();
        edit->insert(text);
        leave();
    }
    void leave() const { input(QStringLiteral("Text4"))->setFocus(Qt::TabFocusReason); }

    void enterNumber(const QString &egn) const
    {
        QTest::mouseClick(input(QStringLiteral("Text3")), Qt::LeftButton);
        QTest::keyClicks(input(QStringLiteral("Text11")), egn);
        leave();
    }

    // Focus into the box, click it, focus out of it.
    void switchBox(int number) const
    {
        box(number)->setFocus(Qt::TabFocusReason);
        box(number)->click();
        leave();
    }

private:
    KartonAdd *m_card;
};

} // namespace

class TestKartonAddScreen final : public QObject
{
    Q_OBJECT
private slots:
    // "Правило за ЕГН" shows the practice's rule, stores the one chosen, and "Затвори" leaves it.
    void theRuleFormStoresTheChoice()
    {
        TestPractice practice;
        {
            EgnRuleForm form;
            QVERIFY(form.findChild<QRadioButton *>(QStringLiteral("optSystem"))->isChecked());
            form.findChild<QRadioButton *>(QStringLiteral("optPublic"))->setChecked(true);
            QTest::mouseClick(form.findChild<QPushButton *>(QStringLiteral("cmdUpdate")), Qt::LeftButton);
            QCOMPARE(form.result(), int(QDialog::Accepted));
        }
        QCOMPARE(egnrule::storedRule(store::clinicDb()), EgnRule::Public);
        EgnRuleForm again;
        QVERIFY(again.findChild<QRadioButton *>(QStringLiteral("optPublic"))->isChecked());
        again.findChild<QRadioButton *>(QStringLiteral("optSystem"))->setChecked(true);
        QTest::mouseClick(again.findChild<QPushButton *>(QStringLiteral("cmdClose")), Qt::LeftButton);
        QCOMPARE(egnrule::storedRule(store::clinicDb()), EgnRule::Public);
    }

    void registersNewPatientWithChart()
    {
        SignedIn signedIn;
        run().CardMode = QStringLiteral("New");
        KartonAdd card;
        QSignalSpy treatment(&card, &KartonAdd::openTreatment);
        CardDriver driver(&card, signedIn.dialogs());
        QCOMPARE(card.windowTitle(), QStringLiteral("Картон - Нов"));
        QVERIFY(!driver.button("cmdDelete")->isEnabled());
        QVERIFY(!driver.button("cmdClose")->isEnabled());

        // Tab reaches the stored number's box, and typing there starts an entry as a click does.
        const QString egn = validEgn(QDate(1985, 7, 20), false);
        driver.input("Text1")->setFocus(Qt::TabFocusReason);
        QTest::keyClick(driver.input("Text1"), Qt::Key_Tab);
        QVERIFY(driver.input("Text3")->hasFocus());
        QTest::keyClicks(driver.input("Text3"), egn.left(1));
        QVERIFY(driver.input("Text11")->hasFocus());
        QTest::keyClicks(driver.input("Text11"), egn.mid(1));
        driver.leave();
        QVERIFY(driver.input("Text11")->isHidden());
        QCOMPARE(driver.input("Text3")->text(), egn);
        QCOMPARE(driver.input("txtFields(17)")->text(), QStringLiteral("Ж"));
        QVERIFY(driver.button("cmdClose")->isEnabled());
        QVERIFY(!driver.button("cmdAdd")->isEnabled());

        driver.type("Text2", QStringLiteral("Мария Д'Арк Петрова"));
        driver.type("Text6", QStringLiteral("1000"));
        QCOMPARE(driver.input("Text1")->text(), QStringLiteral("гр. София"));
        driver.type("txtFields(6)", QStringLiteral("99")); // overwritten by the post code's office at the save
        driver.type("Text14", QStringLiteral("Витоша !5"));
        QCOMPARE(driver.input("Text14")->text(), QStringLiteral("ул. Витоша №5"));
        driver.type("txtFields(14)", QStringLiteral("01.03.2026"));
        driver.type("Z24", QStringLiteral("1"));
        QCOMPARE(driver.input("Z24")->text(), QStringLiteral("C"));
        driver.type("Z25", QStringLiteral("00")); // turns place 2 to milk
        QVERIFY(driver.box(2)->isChecked());
        QVERIFY(driver.input("Z25")->isHidden());
        QVERIFY(!driver.input("Z2")->isHidden());
        driver.type("Z21", QStringLiteral("p"));

        driver.click("cmdUpdate");
        QVERIFY2(signedIn.dialogs().messages.isEmpty(), qPrintable(signedIn.dialogs().messages.join('|')));
        QVERIFY(!driver.button("cmdUpdate")->isEnabled());
        QCOMPARE(signedIn.practice.row("SELECT Names, LKod, RZOK, Pol, UL, Z24, Z2, Z25, Z21 FROM Pacients "
                                       "JOIN Dental USING (EGN) WHERE EGN = ?", {egn}),
                 (QStringList{"Мария Д'Арк Петрова", Doctor, "22", "Ж", "ул. Витоша №5", "C", "*", "", "P"}));

        driver.click("cmdClose");
        QCOMPARE(treatment.size(), 1);
        QCOMPARE(treatment.at(0).at(0).toString(), egn);
        QCOMPARE(treatment.at(0).at(1).toString(), QStringLiteral("Мария Д'Арк Петрова"));
        QVERIFY(!card.isVisible());
    }

    // Leaving an input only warns; a card saved without a number is refused. The close box, like
    // "Затвори", gives up typing only on the user's word, and says nothing about a half-typed number.
    void checksOnLeavingInputsOnlyWarn()
    {
        SignedIn signedIn;
        KartonAdd card(QStringLiteral("New"), {}, {}, nullptr);
        CardDriver driver(&card, signedIn.dialogs());
        driver.type("Text2", QStringLiteral("Мария"));
        driver.type("Text2", QStringLiteral("Мария "));
        driver.type("Text6", QStringLiteral("0000"));
        driver.type("Text12", QStringLiteral("1234567"));
        QCOMPARE(signedIn.dialogs().messages,
                 QStringList({QStringLiteral("Въведете трите имена на пациента!"),
                              u"Няма данни за населеното място \rили за пощенски код е сгрешен!"_qs,
                              QStringLiteral("Номера на здравната книжка е невалиден!")}));
        driver.click("cmdUpdate");
        QCOMPARE(signedIn.dialogs().messages.size(), 4);
        QCOMPARE(signedIn.practice.count("SELECT COUNT(*) FROM Pacients"), 1);

        QTest::mouseClick(driver.input("Text3"), Qt::LeftButton);
        QTest::keyClicks(driver.input("Text11"), QStringLiteral("7501"));
        QVERIFY(driver.input("Text11")->hasFocus());
        signedIn.dialogs().answers = {false, true};
        QVERIFY(!card.close());
        QCOMPARE(signedIn.dialogs().questions.size(), 1);
        QVERIFY(signedIn.dialogs().questions.first().endsWith(QStringLiteral("Да се откажа ли от въведеното?")));
        QCOMPARE(driver.input("Text2")->text(), QStringLiteral("Мария "));
        QVERIFY(card.close());
        QCOMPARE(signedIn.dialogs().messages.size(), 4);
        QCOMPARE(signedIn.practice.count("SELECT COUNT(*) FROM Pacients"), 1);
    }

    // A mistyped number keeps the card open with what was typed, for the number to be put right.
    void ninedigitNumberKeepsTheCardOpen()
    {
        SignedIn signedIn;
        KartonAdd card(QStringLiteral("New"), {}, {}, nullptr);
        CardDriver driver(&card, signedIn.dialogs());
        driver.type("Text2", QStringLiteral("Мария Иванова Петрова"));
        driver.enterNumber(QStringLiteral("750101124"));
        QCOMPARE(signedIn.dialogs().messages, QStringList{egnmessages::InvalidLength});
        QCOMPARE(card.mode(), QStringLiteral(" "));
        QVERIFY(card.isVisible());
        QCOMPARE(driver.input("Text2")->text(), QStringLiteral("Мария Иванова Петрова"));
        QCOMPARE(driver.input("Text11")->text(), QStringLiteral("750101124"));
        const QString egn = validEgn(QDate(1975, 1, 2));
        driver.input("Text11")->setFocus(Qt::TabFocusReason);
        driver.input("Text11")->selectAll();
        QTest::keyClicks(driver.input("Text11"), egn);
        driver.leave();
        QCOMPARE(card.mode(), QStringLiteral("New"));
        driver.click("cmdUpdate");
        QCOMPARE(storedText("Names", egn), QStringLiteral("Мария Иванова Петрова"));
    }

    // One card: the registration command twice gives one card; a correction over a new card with
    // typing asks first, and each card saves and deletes in its own mode whatever the run holds.
    void oneCardWithItsOwnMode()
    {
        SignedIn signedIn;
        QWidget main;
        KartonAdd *fresh = KartonAdd::openNew(&main);
        QCOMPARE(fresh->parentWidget(), &main);
        QCOMPARE(KartonAdd::openNew(&main), nullptr); // brought forward
        QCOMPARE(KartonAdd::openCard(), fresh);
        CardDriver driver(fresh, signedIn.dialogs());
        const QString egn = validEgn(QDate(1990, 2, 3));
        driver.enterNumber(egn);
        driver.type("Text2", QStringLiteral("Нов Пациент Петров"));

        signedIn.dialogs().answers = {false};
        QCOMPARE(KartonAdd::openForCorrection(QStringLiteral("Иван"), Stored, &main), nullptr);
        QCOMPARE(signedIn.dialogs().questions.size(), 1);
        run().CardMode = QStringLiteral("Edit"); // as another window might leave it
        driver.click("cmdUpdate");
        QCOMPARE(storedText("Names", egn), QStringLiteral("Нов Пациент Петров"));

        driver.type("Text4", QStringLiteral("typed"));
        signedIn.dialogs().answers = {true};
        KartonAdd *correction = KartonAdd::openForCorrection(QStringLiteral("Иван"), Stored, &main);
        QVERIFY(correction && correction != fresh);
        QCOMPARE(run().CardMode, QStringLiteral("Edit"));
        QTRY_COMPARE(KartonAdd::openCard(), correction);
        signedIn.dialogs().answers = {true};
        QTest::mouseClick(correction->findChild<QPushButton *>("cmdDelete"), Qt::LeftButton);
        QCOMPARE(signedIn.count("Pacients", Stored), 0);
    }

    void storedNumberShowsThatPatient()
    {
        SignedIn signedIn;
        store::run(store::clinicDb(), QStringLiteral("UPDATE Pacients SET Pol = 'Ж'"));
        store::run(store::clinicDb(), QStringLiteral("UPDATE Dental SET Z3 = 'P', Z26 = 'K'"));
        run().CardMode = QStringLiteral("New");
        KartonAdd card;
        CardDriver driver(&card, signedIn.dialogs());
        driver.enterNumber(Stored);
        QCOMPARE(signedIn.dialogs().messages.value(0), u"Имате пациент с това ЕГН!\rЩе покажа данните."_qs);
        QCOMPARE(card.windowTitle(), QStringLiteral("Картон - Корекция"));
        QCOMPARE(run().CardMode, QStringLiteral("Edit"));
        QCOMPARE(driver.input("Text2")->text(), StoredName);
        QCOMPARE(driver.input("txtFields(17)")->text(), QStringLiteral("М")); // sex from the number
        QVERIFY(!driver.button("cmdDelete")->isEnabled());
        QVERIFY(driver.box(3)->isChecked());
        QCOMPARE(driver.input("Z3")->text(), QStringLiteral("P"));
        QVERIFY(driver.input("Z26")->isHidden());

        driver.click("cmdUpdate");
        QCOMPARE(signedIn.practice.count("SELECT COUNT(*) FROM Pacients"), 1);
        QCOMPARE(storedText("Pol", Stored), QStringLiteral("М"));
        QCOMPARE(storedText("Z26", Stored), QStringLiteral("K")); // unseen, kept
        QVERIFY(driver.button("cmdClose")->isEnabled());
    }

    void correctionWithHistoryAndMissingChartRow()
    {
        SignedIn signedIn;
        signedIn.practice.addService(Stored, QDate(2026, 3, 2), QStringLiteral("301"), Doctor);
        signedIn.practice.addService(Stored, QDate(2026, 3, 1), QStringLiteral("101"), Doctor);
        store::run(store::clinicDb(), QStringLiteral("DELETE FROM Dental"));
        run().CardMode = QStringLiteral("Edit");
        KartonAdd card(StoredName + QString(10, u' '), Stored);
        CardDriver driver(&card, signedIn.dialogs());
        QCOMPARE(card.windowTitle(), QStringLiteral("Картон - Корекция"));
        QVERIFY(!driver.button("cmdAdd")->isEnabled());
        QVERIFY(card.history());
        QCOMPARE(card.history()->rowCount(), 2);
        // By date: the service of the first comes first, and the caption counts from 1.
        const auto *grid = card.history()->findChild<QTableView *>(QStringLiteral("DBGrid1"));
        QCOMPARE(grid->model()->index(0, 0).data().toString(), QStringLiteral("01.03.2026"));
        QCOMPARE(card.history()->findChild<QLabel *>(QStringLiteral("Data3"))->text(), QStringLiteral("Запис №: 1"));

        driver.type("Z28", QStringLiteral("5"));
        driver.switchBox(5); // the crown follows the tooth into the milk field
        QCOMPARE(driver.input("Z5")->text(), QStringLiteral("K"));
        driver.click("cmdUpdate");
        QCOMPARE(storedText("Z5", Stored), QStringLiteral("K"));
        QCOMPARE(storedText("Z28", Stored), QString());
        QCOMPARE(signedIn.practice.count("SELECT COUNT(*) FROM Dental"), 1);

        driver.type("Text4", QStringLiteral("пеницилин")); // given up on the user's word, not stored
        signedIn.dialogs().answers = {true};
        driver.click("cmdClose");
        QCOMPARE(signedIn.dialogs().questions.size(), 1);
        QVERIFY(storedText("Nep", Stored).isEmpty());
        QTRY_VERIFY(!card.history());
    }

    // The delete asks first; one that fails keeps the card, its history and every row.
    void deleteAsksFirst()
    {
        SignedIn signedIn;
        signedIn.practice.addService(Stored, QDate(2026, 3, 2), QStringLiteral("301"), Doctor);
        run().CardMode = QStringLiteral("Edit");
        KartonAdd card(QStringLiteral("Иван"), Stored);
        CardDriver driver(&card, signedIn.dialogs());
        const auto rows = [&] { return signedIn.count("Pacients", Stored) + signedIn.count("Dental", Stored)
                                       + signedIn.count("Help", Stored); };
        signedIn.dialogs().answers = {false, true, true};
        driver.click("cmdDelete");
        QCOMPARE(rows(), 3);
        QVERIFY(card.isVisible());

        store::run(store::clinicDb(),
                   QStringLiteral("CREATE TRIGGER KeepHelp BEFORE DELETE ON Help BEGIN SELECT RAISE(ABORT, 'kept'); END"));
        driver.click("cmdDelete");
        QCOMPARE(signedIn.dialogs().messages.size(), 1);
        QCOMPARE(rows(), 3);
        QVERIFY(card.isVisible());
        QVERIFY(card.history());

        store::run(store::clinicDb(), QStringLiteral("DROP TRIGGER KeepHelp"));
        driver.click("cmdDelete");
        QCOMPARE(signedIn.dialogs().questions.value(1), u"Изтривате пациент от БД!\rДа продължа ли?"_qs);
        QCOMPARE(signedIn.dialogs().questionTitles.value(1), QStringLiteral("ВНИМАНИЕ!"));
        QCOMPARE(rows(), 0);
        QVERIFY(!card.isVisible());
    }

    void korEgnWarnsRefusesAndMovesSilently()
    {
        SignedIn signedIn;
        const QString right = validEgn(QDate(1975, 1, 2));
        const QString taken = validEgn(QDate(1980, 1, 1));
        signedIn.practice.addPatient(taken, QStringLiteral("Мария Петрова"), Doctor);
        signedIn.practice.addService(Stored, QDate(2026, 3, 1), QStringLiteral("101"), Doctor);
        const QStringList &messages = signedIn.dialogs().messages;
        KorEGN form;
        form.show();
        form.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        auto *oldNumber = form.findChild<QLineEdit *>(QStringLiteral("Text1"));
        auto *newNumber = form.findChild<QLineEdit *>(QStringLiteral("Text2"));
        auto *ok = form.findChild<QPushButton *>(QStringLiteral("OKButton"));
        oldNumber->setFocus(Qt::TabFocusReason);
        newNumber->setFocus(Qt::TabFocusReason); // the old number left empty
        QCOMPARE(messages, QStringList{egncorrection::oldNumberWarning()});

        oldNumber->setText(Stored);
        newNumber->setText(taken);
        QTest::mouseClick(ok, Qt::LeftButton);
        QCOMPARE(messages.size(), 2);
        QVERIFY(messages.last().contains(taken));
        QCOMPARE(signedIn.count("Help", Stored), 1);

        QTest::mouseClick(newNumber, Qt::LeftButton); // a click empties the box for the new number
        QVERIFY(newNumber->text().isEmpty());
        QTest::keyClicks(newNumber, right);
        QTest::mouseClick(ok, Qt::LeftButton);
        QCOMPARE(messages.size(), 2); // success says nothing
        QCOMPARE(signedIn.count("Pacients", right) + signedIn.count("Help", right), 2);
        QVERIFY(form.isVisible());
        QCOMPARE(oldNumber->text(), Stored);
    }

    // The search finds the doctor's own patients and hands the one chosen on, emptying the list
    // so that no stale row opens a second patient; the correction opens the card, which takes
    // the search window with it.
    void searchHandsTheChoiceOn()
    {
        SignedIn signedIn;
        signedIn.practice.addPatient(validEgn(QDate(1976, 1, 1)), QStringLiteral("Иван Стоянов"), u"0202"_qs);
        QPointer<SeekName> search = SeekName::openFor(1);
        search->findChild<QLineEdit *>("Text1")->setText(QStringLiteral("иван"));
        QTest::mouseClick(search->findChild<QPushButton *>("OKButton"), Qt::LeftButton);
        QCOMPARE(signedIn.dialogs().messages, QStringList{QStringLiteral("Завърших търсенето на имената!")});
        auto *list = search->findChild<QComboBox *>("Combo1");
        QCOMPARE(list->count(), 1);
        QSignalSpy chosen(search.data(), &SeekName::patientChosen);
        search->choose(list->itemText(0));
        QCOMPARE(chosen.value(0), (QVariantList{1, StoredName + QString(10, u' '), Stored}));
        QCOMPARE(list->count(), 0);
        KartonAdd *card = KartonAdd::openForCorrection(search->FoundName(), search->FoundEGN());
        QCOMPARE(card->CardEGN(), Stored);
        QCOMPARE(card->findChild<QLineEdit *>("Text2")->text(), StoredName);
        card->close();
        QTRY_VERIFY(!search);
    }

    void emptySearchAndEmptyList()
    {
        SignedIn signedIn;
        run().CurrentMedicCode = QStringLiteral("0202"); // a doctor without patients
        SeekName search;
        search.show();
        search.search();
        QCOMPARE(signedIn.dialogs().messages.value(0), u"Няма записани пациенти в БД!\r Прекъсвам търсенето!"_qs);
        QTest::mouseClick(search.findChild<QComboBox *>("Combo1"), Qt::LeftButton);
        QCOMPARE(signedIn.dialogs().messages.value(1), QStringLiteral("Няма избрани имена!"));
    }
};

QTEST_MAIN(TestKartonAddScreen)
#include "tst_KartonAddScreen.moc"
