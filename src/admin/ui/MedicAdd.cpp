#include "admin/ui/MedicAdd.h"

#include "admin/Doctors.h"
#include "base/Dialogs.h"
#include "store/Sql.h"

#include <QApplication>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

MedicAdd::MedicAdd(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("MedicAdd"));
    setWindowTitle(QStringLiteral("Лекари"));

    auto *doctor = new QGroupBox(QStringLiteral("Данни на лекаря"), this);
    auto *doctorForm = new QFormLayout(doctor);
    doctorForm->addRow(QStringLiteral("Имена"), addField(1, 40));
    doctorForm->addRow(QStringLiteral("Номер"), addField(2, 10));
    doctorForm->addRow(QStringLiteral("Код практика"), addField(3, 10));
    auto *password = new QGroupBox(QStringLiteral("Парола"), this);
    auto *passwordForm = new QFormLayout(password);
    passwordForm->addRow(QStringLiteral("Код за достъп"), addField(4, 10));
    m_fields[1]->setMinimumWidth(280);

    auto *close = new QPushButton(QStringLiteral("Затвори"), this);
    close->setObjectName(QStringLiteral("cmdClose"));
    close->setAutoDefault(false);
    connect(close, &QPushButton::clicked, this, &MedicAdd::closeAndSave);

    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(close);
    auto *column = new QVBoxLayout(this);
    column->addWidget(doctor);
    column->addWidget(password);
    column->addLayout(buttons);
}

QLineEdit *MedicAdd::addField(int index, int maxLength)
{
    auto *field = new QLineEdit(this);
    field->setObjectName(QStringLiteral("txtFields%1").arg(index));
    field->setMaxLength(maxLength);
    m_fields[index] = field;
    return field;
}

void MedicAdd::closeAndSave()
{
    const doctors::DoctorEntry entry{m_fields[1]->text(), m_fields[2]->text(), m_fields[3]->text(),
                                     m_fields[4]->text()};
    if (const QString failed = doctors::MedicAddCheck(entry); !failed.isEmpty()) {
        QApplication::beep();
        dialogs().information(failed);
        return;
    }
    if (const auto added = doctors::addDoctor(store::clinicDb(), entry); !added) {
        dialogs().information(added.error());
        return;
    }
    m_added = true;
    accept();
}
