#include "PlainBoxes.h"
#include "TestPractice.h"
#include "Typing.h"

#include "admin/AccessCodes.h"
#include "admin/Doctors.h"
#include "base/RunState.h"
#include "shell/ui/ChangePassword.h"
#include "shell/ui/Password.h"
#include "store/Sql.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace {

doctors::SignedInDoctor signedIn() { return {run().CurrentMedicName, run().CurrentMedicCode}; }

const QString WrongCode = QStringLiteral("Проверете кода за достъп.");
const QString OldCodeWrong = QStringLiteral("Старата парола е сгрешена, опитайте отново!");
const QString NotConfirmed = QStringLiteral("Новата парола не е потвърдена, опитайте отново!");
const QString Changed = QStringLiteral("Новата парола е въведена в действие!");

void chooseName(Password &form, int index)
{
    auto *names = form.findChild<QComboBox *>(QStringLiteral("Combo1"));
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

} // namespace

class tst_SignIn final : public QObject
{
    Q_OBJECT
private slots:
    void outcomes_data()
    {
        QTest::addColumn<int>("chosen"); // -1: no name chosen
        QTest::addColumn<QString>("typedName");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("button");
        QTest::addColumn<bool>("signedIn");
        QTest::addColumn<QString>("message");
        const QString ok = QStringLiteral("OKButton");
        QTest::newRow("name chosen, code right") << 0 << "" << "secret1" << ok << true << "";
        QTest::newRow("blanks around the typed code") << 0 << "" << "  secret1 " << ok << true << "";
        QTest::newRow("name chosen, code wrong") << 0 << "" << "secret2" << ok << false << WrongCode;
        QTest::newRow("name chosen, code empty") << 0 << "" << "" << ok << false << WrongCode;
        QTest::newRow("no name, code empty: silent end") << -1 << "" << "" << ok << false << "";
        QTest::newRow("no name, code typed") << -1 << "" << "secret1" << ok << false << WrongCode;
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
        practice.addDoctor(QStringLiteral("Иванов"), QStringLiteral("1111111111"), QStringLiteral("secret1"));
        practice.addDoctor(QStringLiteral("Петров"), QStringLiteral("2222222222"), QString());
        run().CurrentMedicCode = QStringLiteral("before");

        Password form;
        form.show();
        if (chosen >= 0)
            chooseName(form, chosen);
        if (!typedName.isEmpty())
            typeText(form.findChild<QComboBox *>(QStringLiteral("Combo1"))->lineEdit(), typedName);
        typeCode(form, QStringLiteral("txtField"), typed);
        auto *field = form.findChild<QLineEdit *>(QStringLiteral("txtField"));
        QCOMPARE(field->displayText(), QString(typed.size(), u'*'));
        if (button.isEmpty())
            QTest::keyClick(field, Qt::Key_Return);
        else
            click(form, button);

        QVERIFY(!form.isVisible());
        QCOMPARE(!form.endsRun(), signedIn);
        QCOMPARE(practice.dialogs().messages, message.isEmpty() ? QStringList{} : QStringList{message});
        if (signedIn) {
            QCOMPARE(run().CurrentMedicCode, QStringLiteral("1111111111"));
            QCOMPARE(run().CurrentMedicName, QStringLiteral("Иванов"));
        }
        if (!message.isEmpty())
            QVERIFY(run().CurrentMedicCode.isEmpty());
    }

    void namesInTableOrderNothingChosen()
    {
        TestPractice practice;
        practice.addDoctor(QStringLiteral("Яков О'Нийл"), QStringLiteral("1"));
        practice.addDoctor(QStringLiteral("Анна"), QStringLiteral("2"));
        Password form;
        auto *names = form.findChild<QComboBox *>(QStringLiteral("Combo1"));
        QCOMPARE(names->count(), 2);
        QCOMPARE(names->itemText(0), QStringLiteral("Яков О'Нийл"));
        QCOMPARE(names->itemText(1), QStringLiteral("Анна"));
        QCOMPARE(names->currentIndex(), -1);
    }

    void laterOfEqualNamesSignsIn()
    {
        TestPractice practice;
        practice.addDoctor(QStringLiteral("Иванов"), QStringLiteral("1111111111"), QStringLiteral("first1"));
        practice.addDoctor(QStringLiteral("Иванов"), QStringLiteral("3333333333"), QStringLiteral("later1"));
        for (const QString &code : {QStringLiteral("first1"), QStringLiteral("later1")}) {
            Password form;
            form.show();
            chooseName(form, 0); // the first line of the list; the later row still wins
            typeCode(form, QStringLiteral("txtField"), code);
            click(form, QStringLiteral("OKButton"));
            const bool later = code == QStringLiteral("later1");
            QCOMPARE(form.endsRun(), !later);
            if (later)
                QCOMPARE(run().CurrentMedicCode, QStringLiteral("3333333333"));
        }
    }

    void codeNumberOfTheSignedInDoctor_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<int>("nIDMedic");
        QTest::newRow("small number") << "004321" << 4321;
        QTest::newRow("letters") << "abcdef" << 0;
        // Six digits is what the doctor form asks for: no warning at each sign-in about them.
        QTest::newRow("six digits above 32767") << "123456" << 0;
        QTest::newRow("forty digits") << QString(40, u'7') << 0;
    }

    void codeNumberOfTheSignedInDoctor()
    {
        QFETCH(QString, code);
        QFETCH(int, nIDMedic);
        TestPractice practice;
        practice.addDoctor(QStringLiteral("Иванов"), QStringLiteral("1111111111"), code);
        run().nIDMedic = 99;
        Password form;
        form.show();
        chooseName(form, 0);
        typeCode(form, QStringLiteral("txtField"), code);
        click(form, QStringLiteral("OKButton"));
        QVERIFY(!form.endsRun());
        QCOMPARE(int(run().nIDMedic), nIDMedic);
        QCOMPARE(practice.dialogs().messages.size(), 0);
    }

    void changePasswordMessages()
    {
        TestPractice practice;
        // Stored with a blank behind the name, which sign-in trims away.
        practice.addDoctor(QStringLiteral("Д-р О'Брайън "), QStringLiteral("1"), QStringLiteral("old111"));
        run().CurrentMedicName = QStringLiteral("Д-р О'Брайън");
        run().CurrentMedicCode = QStringLiteral("1");
        ChangePassword form;
        form.show();
        QCOMPARE(form.windowTitle(), QStringLiteral("Смяна на паролата"));
        typeCode(form, QStringLiteral("txtConfurm"), QStringLiteral("12"));
        QCOMPARE(form.findChild<QLineEdit *>(QStringLiteral("txtConfurm"))->displayText(), QStringLiteral("**"));
        auto attempt = [&](const QString &old, const QString &fresh, const QString &confirm) {
            for (const QString name : {"txtPasswordOld", "txtPasswordNew", "txtConfurm"})
                form.findChild<QLineEdit *>(name)->clear();
            typeCode(form, QStringLiteral("txtPasswordOld"), old);
            typeCode(form, QStringLiteral("txtPasswordNew"), fresh);
            typeCode(form, QStringLiteral("txtConfurm"), confirm);
            const QList<PlainBox> boxes = plainBoxesShownBy([&] { click(form, QStringLiteral("cmdChange")); });
            // Each message is a plain box of its own title, never the "Информация" dialog.
            if (boxes.size() != 1 || boxes.first().title != QStringLiteral("Смяна на кода за достъп")
                || boxes.first().icon != QMessageBox::NoIcon)
                return QStringLiteral("not one plain box titled for the change");
            return boxes.first().text;
        };
        QCOMPARE(attempt("old112", "new111", "new111"), OldCodeWrong);
        QCOMPARE(attempt("", "", ""), OldCodeWrong);
        QCOMPARE(attempt(" old111", "new111", "new112"), NotConfirmed);
        QVERIFY(form.isVisible());
        QVERIFY(doctors::sameCode(doctors::keptCode(signedIn()).value(), QStringLiteral("old111")));
        QCOMPARE(attempt("old111 ", "new111", " new111 "), Changed);
        QVERIFY(!form.isVisible());
        QVERIFY(practice.dialogs().messages.isEmpty());
        QVERIFY(doctors::sameCode(doctors::keptCode(signedIn()).value(), QStringLiteral("new111")));
    }

    // The form is only hidden between openings: its code to compare with stays the one it read
    // first, so a second change in the run needs the old code.
    void changePasswordKeepsTheFirstCode()
    {
        TestPractice practice;
        practice.addDoctor(QStringLiteral("Иванов"), QStringLiteral("1"), QStringLiteral("first1"));
        run().CurrentMedicName = QStringLiteral("Иванов");
        run().CurrentMedicCode = QStringLiteral("1");
        ChangePassword form;
        auto change = [&](const QString &old, const QString &fresh) {
            form.show();
            const bool emptied = form.findChild<QLineEdit *>(QStringLiteral("txtPasswordOld"))->text().isEmpty();
            typeCode(form, QStringLiteral("txtPasswordOld"), old);
            typeCode(form, QStringLiteral("txtPasswordNew"), fresh);
            typeCode(form, QStringLiteral("txtConfurm"), fresh);
            const QList<PlainBox> boxes = plainBoxesShownBy([&] { click(form, QStringLiteral("cmdChange")); });
            form.hide();
            return emptied && boxes.size() == 1 ? boxes.first().text : QString();
        };
        QCOMPARE(change(QStringLiteral("first1"), QStringLiteral("second")), Changed);
        QCOMPARE(change(QStringLiteral("second"), QStringLiteral("third1")), OldCodeWrong);
        QCOMPARE(change(QStringLiteral("first1"), QStringLiteral("third1")), Changed);
        QVERIFY(doctors::sameCode(doctors::keptCode(signedIn()).value(), QStringLiteral("third1")));
    }
};

QTEST_MAIN(tst_SignIn)
#include "tst_SignIn.moc"
