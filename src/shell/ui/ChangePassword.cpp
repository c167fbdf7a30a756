#include "shell/ui/ChangePassword.h"

#include "shell/ui/CodeField.h"

#include "admin/Doctors.h"
#include "base/Dialogs.h"
#include "base/RunState.h"
#include "shell/ui/PlainMessage.h"
#include "store/Sql.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

ChangePassword::ChangePassword(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("ChangePassword"));
    setWindowTitle(QStringLiteral("Смяна на паролата"));
    auto *form = new QFormLayout;
    form->addRow(QStringLiteral("Стара парола"), m_old = addCodeField(QStringLiteral("txtPasswordOld")));
    form->addRow(QStringLiteral("Нова парола"), m_new = addCodeField(QStringLiteral("txtPasswordNew")));
    form->addRow(QStringLiteral("Повтори новата парола:"), m_confirm = addCodeField(QStringLiteral("txtConfurm")));

    auto *changeButton = new QPushButton(QStringLiteral("Смени"), this);
    changeButton->setObjectName(QStringLiteral("cmdChange"));
    changeButton->setDefault(true);
    auto *cancelButton = new QPushButton(QStringLiteral("Отказ"), this);
    cancelButton->setObjectName(QStringLiteral("cmdCancel"));
    cancelButton->setAutoDefault(false);
    connect(changeButton, &QPushButton::clicked, this, &ChangePassword::change);
    connect(cancelButton, &QPushButton::clicked, this, &QDialog::reject);

    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(changeButton);
    buttons->addWidget(cancelButton);
    auto *column = new QVBoxLayout(this);
    column->addLayout(form);
    column->addLayout(buttons);

    const auto kept = doctors::keptCode(store::clinicDb(), signedInDoctor());
    if (kept)
        m_keptCode = kept.value();
    else
        dialogs().information(kept.error());
}

doctors::SignedInDoctor ChangePassword::signedInDoctor()
{
    return {run().CurrentMedicName, run().CurrentMedicCode};
}

QLineEdit *ChangePassword::addCodeField(const QString &name)
{
    auto *field = new QLineEdit(this);
    field->setObjectName(name);
    hideAsStars(field);
    field->setMinimumWidth(160);
    return field;
}

void ChangePassword::showEvent(QShowEvent *event)
{
    m_old->clear();
    m_new->clear();
    m_confirm->clear();
    QDialog::showEvent(event);
}

void ChangePassword::tell(const QString &message)
{
    plainMessage(this, QStringLiteral("Смяна на кода за достъп"), message);
}

void ChangePassword::change()
{
    // An empty old code is never right: no doctor signs in without one.
    if (m_old->text().trimmed().isEmpty() || !doctors::sameCode(m_keptCode, m_old->text())) {
        tell(QStringLiteral("Старата парола е сгрешена, опитайте отново!"));
        return;
    }
    if (m_new->text().trimmed() != m_confirm->text().trimmed()) {
        tell(QStringLiteral("Новата парола не е потвърдена, опитайте отново!"));
        return;
    }
    if (const auto changed = doctors::changeCode(store::clinicDb(), signedInDoctor(), m_new->text()); !changed) {
        dialogs().information(changed.error());
        return;
    }
    tell(QStringLiteral("Новата парола е въведена в действие!"));
    accept();
}
