#include "shell/ui/Password.h"

#include "shell/ui/CodeField.h"

#include "base/ui/NamedButton.h"

#include "admin/Doctors.h"
#include "admin/ui/MedicAdd.h"
#include "base/Dialogs.h"
#include "base/RunState.h"
#include "store/Sql.h"

#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

QGroupBox *framed(const QString &caption, QWidget *inside, QWidget *parent)
{
    auto *frame = new QGroupBox(caption, parent);
    auto *layout = new QVBoxLayout(frame);
    layout->addWidget(inside);
    return frame;
}

} // namespace

Password::Password(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("Password"));
    setWindowTitle(QStringLiteral("Код за достъп"));
    m_names = new QComboBox(this);
    m_names->setObjectName(QStringLiteral("Combo1"));
    m_names->setEditable(true); // can be typed in, but only a choice from the list looks the doctor up
    m_names->setInsertPolicy(QComboBox::NoInsert);
    m_names->setToolTip(QStringLiteral("Изберете име на лекар"));
    m_names->setMinimumWidth(300);
    m_code = new QLineEdit(this);
    m_code->setObjectName(QStringLiteral("txtField"));
    hideAsStars(m_code);
    m_code->setToolTip(QStringLiteral("Въведете съответната парола на лекаря"));
    m_ok = namedButton(QStringLiteral("OKButton"), QStringLiteral("Вход"), this);
    QPushButton *cancelButton = namedButton(QStringLiteral("CancelButton"), QStringLiteral("Отказ"), this);

    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_ok);
    buttons->addWidget(cancelButton);
    auto *column = new QVBoxLayout(this);
    column->addWidget(framed(QStringLiteral("Имена"), m_names, this));
    column->addWidget(framed(QStringLiteral("Код за достъп"), m_code, this));
    column->addLayout(buttons);

    connect(m_names, &QComboBox::activated, this, &Password::chooseName);
    connect(m_code, &QLineEdit::textChanged, this, [this] { m_ok->setDefault(true); });
    connect(m_ok, &QPushButton::clicked, this, &Password::enter);
    connect(cancelButton, &QPushButton::clicked, this, &Password::cancel);
    loadNames();
}

bool Password::signIn()
{
    const auto count = doctors::doctorCount(store::clinicDb());
    if (!count) {
        dialogs().information(count.error());
        return false;
    }
    if (count.value() == 0) {
        // A first run that got here without a doctor has to be started again.
        MedicAdd medicAdd;
        medicAdd.exec();
        return false;
    }
    Password password;
    password.exec();
    return !password.endsRun();
}

void Password::loadNames()
{
    m_sPassWord.clear();
    m_names->clear();
    const auto names = doctors::doctorNames(store::clinicDb());
    if (!names) {
        dialogs().information(names.error());
        return;
    }
    m_names->addItems(names.value());
    m_names->setCurrentIndex(-1);
}

void Password::chooseName(int index)
{
    m_sName = m_names->itemText(index);
    const auto found = doctors::lookUpDoctor(store::clinicDb(), m_sName);
    if (!found) {
        dialogs().information(found.error());
        return;
    }
    if (!found.value())
        return;
    const doctors::SignInRecord &doctor = *found.value();
    m_sPassWord = doctor.accessCode;
    run().CurrentMedicCode = doctor.kodMedic;
    run().CurrentMedicName = doctor.names;
}

void Password::enter()
{
    if (doctors::sameCode(m_sPassWord, m_code->text())) {
        accept();
        return;
    }
    run().CurrentMedicCode.clear();
    dialogs().information(QStringLiteral("Проверете кода за достъп."));
    m_endRun = true;
    reject();
}

void Password::cancel()
{
    m_endRun = true;
    reject();
}

// Closing the form by any way judges the code once more: only a chosen doctor's non-empty
// code, typed right, signs in.
void Password::done(int result)
{
    m_lKod = !m_sPassWord.trimmed().isEmpty() && doctors::sameCode(m_sPassWord, m_code->text());
    if (m_lKod && !m_endRun)
        readCodeNumber();
    QDialog::done(result);
}

void Password::readCodeNumber()
{
    run().nIDMedic = doctors::accessCodeNumber(m_code->text());
}
