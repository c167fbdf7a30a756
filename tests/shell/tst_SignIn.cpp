#include "PlainBoxes.h"
#include "TestPractice.h"
#include "Typing.h"

#include "admin/AccessCodes.h"
#include "admin/Doctors.h"
#include "base/RunState.h"
#include "shell/ui/ChangePassword.h"
#include "shell/ui/Desktop.h"
#include "shell/ui/Password.h"
#include "store/DataPaths.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QComboBox>
#include <QFileInfo>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

doctors::SignedInDoctor signedIn() { return {run().CurrentMedicName, run().CurrentMedicCode}; }

const QString WrongCode = u"Проверете кода за достъп."_s;
const QString OldCodeWrong = u"Старата парола е сгрешена, опитайте отново!"_s;
const QString NotConfirmed = u"Новата парола не е потвърдена, опитайте отново!"_s;
const QString Changed = u"Новата парола е въведена в действие!"_s;

void chooseName(Password &form, int index)
{
    auto *names = form.findChild<QComboBox *>(u"Combo1"_s);
    names->setCurrentIndex(index);
    emit names->activated(index); // what a click on the list's line does
}

void typeCode(QWidget &form, const QString &field, const QString &code)
{
    typeText(form.findChild<QLineEdit *>(field), code);
}

void click(QWidget &form, const QString &button)
{
    QTest::mouseClick(form.findChild<QPushButton *>(button), Qt::LeftButton);
}

// Answers the modal windows of the start-up as a user would: each time a modal window is up,
// the step for its objectName runs (none: it is closed); the names met are recorded in order.
class ModalDriver final
{
public:
    using Step = std::function<void(QWidget *)>;
    explicit ModalDriver(std::map<QString, Step> steps)
        : m_steps(std::move(steps))
    {
        QObject::connect(&m_timer, &QTimer::timeout, [this] { poll(); });
        m_timer.start(20);
    }
    QStringList met;

private:
    void poll()
    {
        QWidget *modal = QApplication::activeModalWidget();
        if (!modal || modal == m_last)
            return;
        m_last = modal;
        met << modal->objectName();
        if (auto step = m_steps.find(modal->objectName()); step != m_steps.end())
            step->second(modal);
        else
            modal->close();
    }
    std::map<QString, Step> m_steps;
    QTimer m_timer;
    QPointer<QWidget> m_last;
};

void enterDoctor(QWidget *form)
{
    const QStringList typed{"Д-р Мария Петрова", "7501010000", "2200000009", "парола1"};
    for (int i = 0; i < 4; ++i)
        typeText(form->findChild<QLineEdit *>(u"txtFields%1"_s.arg(i + 1)), typed[i]);
    click(*form, u"cmdClose"_s);
}

void signInFirst(QWidget *form)
{
    QCOMPARE(form->findChild<QComboBox *>(u"Combo1"_s)->count(), 1);
    chooseName(*qobject_cast<Password *>(form), 0);
    typeCode(*form, u"txtField"_s, u"парола1"_s);
    click(*form, u"OKButton"_s);
}

} // namespace

class tst_SignIn final : public QObject
{
    Q_OBJECT
private slots:
    // The first start offers the doctors' form, then the sign-in; a doctor not entered (the
    // form closed by its close box, twice) ends the run; a stored doctor goes straight to sign-in.
    void firstRun_data()
    {
        QTest::addColumn<bool>("doctorStored");
        QTest::addColumn<bool>("doctorEntered");
        QTest::addColumn<QStringList>("met");
        QTest::newRow("first doctor offered") << false << true << QStringList{"MedicAdd", "Password"};
        QTest::newRow("no doctor entered") << false << false << QStringList{"MedicAdd", "MedicAdd"};
        QTest::newRow("a doctor stored") << true << false << QStringList{"Password"};
    }
    void firstRun()
    {
        QFETCH(bool, doctorStored);
        QFETCH(bool, doctorEntered);
        TestPractice practice;
        if (doctorStored)
            practice.addDoctor(u"Д-р Мария Петрова"_s, u"2200000009"_s, u"парола1"_s);
        std::map<QString, ModalDriver::Step> steps{{u"Password"_s, signInFirst}};
        if (doctorEntered)
            steps.insert({u"MedicAdd"_s, enterDoctor});
        ModalDriver driver(steps);
        QCOMPARE(signInAtStart(), doctorStored || doctorEntered);
        QTEST(driver.met, "met");
        QCOMPARE(practice.count(u"SELECT COUNT(*) FROM Medic"_s), doctorStored || doctorEntered ? 1 : 0);
        if (doctorEntered) {
            QCOMPARE(run().CurrentMedicName, u"Д-р Мария Петрова"_s);
            QCOMPARE(run().CurrentMedicCode, u"2200000009"_s);
        }
    }

    void emptyClinicFileIsNewOnlyWhenTheUserSaysSo_data()
    {
        QTest::addColumn<bool>("answer");
        QTest::newRow("НЕ: left as it is") << false;
        QTest::newRow("ДА: a new practice") << true;
    }
    void emptyClinicFileIsNewOnlyWhenTheUserSaysSo()
    {
        QFETCH(bool, answer);
        QTemporaryDir folder;
        const auto paths = store::DataPaths::inFolder(folder.path());
        QFile empty(paths.clinicDb);
        QVERIFY(empty.open(QIODevice::WriteOnly));
        empty.close();
        ScriptedDialogs answers;
        answers.answers.push_back(answer);
        setDialogPort(&answers);
        const Outcome opened = openDataFolder(paths);
        setDialogPort(nullptr);
        QCOMPARE(answers.questions.size(), 1);
        QVERIFY(answers.questions.first().contains(paths.clinicDb));
        QCOMPARE(opened.ok(), answer);
        if (answer) {
            QCOMPARE(store::scalar(store::clinicDb(), u"SELECT COUNT(*) FROM CenyZK"_s).toInt(), 9);
            store::closeStore();
        } else {
            QVERIFY2(opened.error().contains(paths.clinicDb), qPrintable(opened.error()));
            QCOMPARE(QFileInfo(paths.clinicDb).size(), 0);
        }
    }

    void outcomes_data()
    {
        QTest::addColumn<int>("chosen"); // -1: no name chosen
        QTest::addColumn<QString>("typedName");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("button");
        QTest::addColumn<bool>("signedIn");
        QTest::addColumn<QString>("message");
        const QString ok = u"OKButton"_s;
        QTest::newRow("name chosen, code right") << 0 << "" << "secret1" << ok << true << "";
        QTest::newRow("blanks around the typed code") << 0 << "" << "  secret1 " << ok << true << "";
        QTest::newRow("name chosen, code wrong") << 0 << "" << "secret2" << ok << false << WrongCode;
        QTest::newRow("name chosen, code empty") << 0 << "" << "" << ok << false << WrongCode;
        QTest::newRow("no name, code empty: silent end") << -1 << "" << "" << ok << false << "";
        QTest::newRow("empty stored code, code empty: silent end") << 1 << "" << "" << ok << false << "";
        QTest::newRow("empty stored code, code typed") << 1 << "" << "x" << ok << false << WrongCode;
        QTest::newRow("name typed, not chosen") << -1 << "Иванов" << "secret1" << ok << false << WrongCode;
        QTest::newRow("cancel with the right code") << 0 << "" << "secret1" << "CancelButton" << false << "";
        // Typing the code makes "Вход" the default button.
        QTest::newRow("Enter after typing the code") << 0 << "" << "secret1" << "" << true << "";
    }

    void outcomes()
    {
        QFETCH(int, chosen);
        QFETCH(QString, typedName);
        QFETCH(QString, typed);
        QFETCH(QString, button);
        QFETCH(bool, signedIn);
        QFETCH(QString, message);
        TestPractice practice;
        practice.addDoctor(u"Иванов"_s, u"1111111111"_s, u"secret1"_s);
        practice.addDoctor(u"Петров"_s, u"2222222222"_s, QString());
        run().CurrentMedicCode = u"before"_s;

        Password form;
        form.show();
        if (chosen >= 0)
            chooseName(form, chosen);
        if (!typedName.isEmpty())
            typeText(form.findChild<QComboBox *>(u"Combo1"_s)->lineEdit(), typedName);
        typeCode(form, u"txtField"_s, typed);
        auto *field = form.findChild<QLineEdit *>(u"txtField"_s);
        QCOMPARE(field->displayText(), QString(typed.size(), u'*'));
        if (button.isEmpty())
            QTest::keyClick(field, Qt::Key_Return);
        else
            click(form, button);

        QVERIFY(!form.isVisible());
        QCOMPARE(!form.endsRun(), signedIn);
        QCOMPARE(practice.dialogs().messages, message.isEmpty() ? QStringList{} : QStringList{message});
        if (signedIn) {
            QCOMPARE(run().CurrentMedicCode, u"1111111111"_s);
            QCOMPARE(run().CurrentMedicName, u"Иванов"_s);
        }
        if (!message.isEmpty())
            QVERIFY(run().CurrentMedicCode.isEmpty());
    }

    // The list holds the names in table order with none chosen. Of two equal names the later row
    // signs in, whichever line is chosen, and its code gives the number kept for the run.
    void laterOfEqualNamesSignsInWithItsCodeNumber()
    {
        TestPractice practice;
        practice.addDoctor(u"Иванов"_s, u"1111111111"_s, u"first1"_s);
        practice.addDoctor(u"Анна"_s, u"2222222222"_s, u"other1"_s);
        practice.addDoctor(u"Иванов"_s, u"3333333333"_s, u"004321"_s);
        Password form;
        form.show();
        auto *names = form.findChild<QComboBox *>(u"Combo1"_s);
        QCOMPARE((QStringList{names->itemText(0), names->itemText(1), names->itemText(2)}),
                 (QStringList{u"Иванов"_s, u"Анна"_s, u"Иванов"_s}));
        QCOMPARE(names->currentIndex(), -1);
        chooseName(form, 0);
        typeCode(form, u"txtField"_s, u"004321"_s);
        click(form, u"OKButton"_s);
        QVERIFY(!form.endsRun());
        QCOMPARE(run().CurrentMedicCode, u"3333333333"_s);
        QCOMPARE(int(run().nIDMedic), 4321);
        QVERIFY(practice.dialogs().messages.isEmpty());
    }

    // Each message is a plain box of its own title, never the "Информация" dialog. The form is
    // only hidden between openings: its code to compare with stays the one it read first, so a
    // second change in the run needs the old code.
    void changePassword()
    {
        TestPractice practice;
        // Stored with a blank behind the name, which sign-in trims away.
        practice.addDoctor(u"Д-р О'Брайън "_s, u"1"_s, u"old111"_s);
        run().CurrentMedicName = u"Д-р О'Брайън"_s;
        run().CurrentMedicCode = u"1"_s;
        ChangePassword form;
        form.show();
        QCOMPARE(form.windowTitle(), u"Смяна на паролата"_s);
        typeCode(form, u"txtConfurm"_s, u"12"_s);
        QCOMPARE(form.findChild<QLineEdit *>(u"txtConfurm"_s)->displayText(), u"**"_s);
        auto attempt = [&](const QString &old, const QString &fresh, const QString &confirm) {
            if (!form.isVisible())
                form.show();
            for (const QString name : {"txtPasswordOld", "txtPasswordNew", "txtConfurm"})
                form.findChild<QLineEdit *>(name)->clear();
            typeCode(form, u"txtPasswordOld"_s, old);
            typeCode(form, u"txtPasswordNew"_s, fresh);
            typeCode(form, u"txtConfurm"_s, confirm);
            const QList<PlainBox> boxes = plainBoxesShownBy([&] { click(form, u"cmdChange"_s); });
            if (boxes.size() != 1 || boxes.first().title != u"Смяна на кода за достъп"_s ||
                boxes.first().icon != QMessageBox::NoIcon)
                return u"not one plain box titled for the change"_s;
            return boxes.first().text;
        };
        QCOMPARE(attempt(u"old112"_s, u"new111"_s, u"new111"_s), OldCodeWrong);
        QCOMPARE(attempt(QString(), QString(), QString()), OldCodeWrong);
        QCOMPARE(attempt(u" old111"_s, u"new111"_s, u"new112"_s), NotConfirmed);
        QVERIFY(form.isVisible());
        QVERIFY(doctors::sameCode(doctors::keptCode(store::clinicDb(), signedIn()).value(), u"old111"_s));
        QCOMPARE(attempt(u"old111 "_s, u"new111"_s, u" new111 "_s), Changed);
        QVERIFY(!form.isVisible());
        QVERIFY(practice.dialogs().messages.isEmpty());
        QVERIFY(doctors::sameCode(doctors::keptCode(store::clinicDb(), signedIn()).value(), u"new111"_s));
        form.show();
        QVERIFY(form.findChild<QLineEdit *>(u"txtPasswordOld"_s)->text().isEmpty());
        QCOMPARE(attempt(u"new111"_s, u"third1"_s, u"third1"_s), OldCodeWrong);
        QCOMPARE(attempt(u"old111"_s, u"third1"_s, u"third1"_s), Changed);
        QVERIFY(doctors::sameCode(doctors::keptCode(store::clinicDb(), signedIn()).value(), u"third1"_s));
    }
};

QTEST_MAIN(tst_SignIn)
#include "tst_SignIn.moc"
