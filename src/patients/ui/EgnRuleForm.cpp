#include "patients/ui/EgnRuleForm.h"

#include "base/Dialogs.h"
#include "base/ui/NamedButton.h"
#include "base/ui/WindowPlacement.h"
#include "patients/EgnRuleSetting.h"
#include "store/Sql.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

void EgnRuleForm::open(QWidget *parent) { execOnce(parent); }

EgnRuleForm::EgnRuleForm(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("EgnRuleForm"));
    setWindowTitle(QStringLiteral("Правило за ЕГН"));
    m_system = new QRadioButton(QStringLiteral("Правилото на програмата: родени от 1910 до 2009 г."), this);
    m_system->setObjectName(QStringLiteral("optSystem"));
    m_public = new QRadioButton(QStringLiteral("Общото правило за ЕГН: и родени от 2010 г. и през 19 век"), this);
    m_public->setObjectName(QStringLiteral("optPublic"));
    auto *note = new QLabel(QStringLiteral("Правилото важи за всички работни места на практиката: за картона, "
                                           "цените по възраст, печата, отчетите и проверката преди отчета."),
                            this);
    note->setWordWrap(true);
    auto *save = namedButton(QStringLiteral("cmdUpdate"), QStringLiteral("Запиши"), this, QStringLiteral("Записва правилото"));
    auto *close = namedButton(QStringLiteral("cmdClose"), QStringLiteral("Затвори"), this, QStringLiteral("Затваря прозореца"));
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(save);
    buttons->addWidget(close);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_system);
    layout->addWidget(m_public);
    layout->addWidget(note);
    layout->addLayout(buttons);
    connect(save, &QPushButton::clicked, this, &EgnRuleForm::save);
    connect(close, &QPushButton::clicked, this, &EgnRuleForm::reject);
    try {
        (egnrule::storedRule(store::clinicDb()) == EgnRule::Public ? m_public : m_system)->setChecked(true);
    } catch (const store::SqlError &error) {
        dialogs().information(error.message());
        save->setEnabled(false); // a setting that could not be read is not written over blind
    }
}

void EgnRuleForm::save()
{
    const EgnRule rule = m_public->isChecked() ? EgnRule::Public : EgnRule::System;
    if (const Outcome saved = egnrule::storeRule(store::clinicDb(), rule); !saved) {
        dialogs().information(saved.error());
        return;
    }
    accept();
}
