#include "admin/ui/MedicUnitForm.h"

#include "admin/MedicUnit.h"
#include "base/Dialogs.h"
#include "base/UnsavedTyping.h"
#include "base/ui/NamedButton.h"
#include "base/ui/WindowPlacement.h"
#include "store/Sql.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace {

// The boxes of each frame by their index: the practice and its address, its bank, and its
// manager, contract and contacts.
const QList<int> IdentityFields{17, 15, 20, 27, 5, 18, 6, 7, 26, 22, 23, 3, 25, 12, 1};
const QList<int> BankFields{4, 2, 14, 0};
const QList<int> ManagerFields{16, 10, 8, 21, 9, 19, 13, 11, 24};

} // namespace

void MedicUnit::open(QWidget *parent) { execOnce(parent); }

MedicUnit::MedicUnit(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("MedicUnit"));
    setWindowTitle(QStringLiteral("Данни за леченото заведение"));
    for (int i = 0; i < medicunit::FieldCount; ++i) {
        auto *box = new QLineEdit(this);
        box->setObjectName(QStringLiteral("txtFields_%1").arg(i));
        m_fields << box;
    }
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(buildFrame(IdentityFields, 2));
    auto *lower = new QHBoxLayout;
    lower->addWidget(buildFrame(BankFields, 1), 2);
    lower->addWidget(buildFrame(ManagerFields, 2), 3);
    layout->addLayout(lower);
    layout->addWidget(buildButtons());
    const auto loaded = medicunit::LoadMedicUnit(store::clinicDb());
    m_stored = loaded ? loaded.value() : QStringList(medicunit::FieldCount);
    for (int i = 0; i < medicunit::FieldCount; ++i)
        m_fields.at(i)->setText(m_stored.at(i));
    if (!loaded) {
        dialogs().information(loaded.error());
        m_update->setEnabled(false); // a row that could not be read is not written over blind
    }
    resize(900, 470);
}

QWidget *MedicUnit::buildFrame(const QList<int> &fields, int columns)
{
    auto *frame = new QGroupBox(this);
    auto *grid = new QGridLayout(frame);
    const int rows = int((fields.size() + columns - 1) / columns);
    for (int n = 0; n < fields.size(); ++n) {
        const int index = fields.at(n);
        auto *label = new QLabel(medicunit::FieldLabels().at(index), frame);
        label->setObjectName(QStringLiteral("lblLabels_%1").arg(index));
        label->setBuddy(m_fields.at(index));
        grid->addWidget(label, n % rows, (n / rows) * 2, Qt::AlignRight);
        grid->addWidget(m_fields.at(index), n % rows, (n / rows) * 2 + 1);
    }
    return frame;
}

QWidget *MedicUnit::buildButtons()
{
    auto *panel = new QWidget(this);
    auto *row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 0, 0, 0);
    m_update = namedButton(QStringLiteral("cmdUpdate"), QStringLiteral("Запиши"), panel, QStringLiteral("Записва данните"));
    auto *close = namedButton(QStringLiteral("cmdClose"), QStringLiteral("Затвори"), panel, QStringLiteral("Затваря прозореца"));
    row->addStretch();
    row->addWidget(m_update);
    row->addWidget(close);
    connect(m_update, &QPushButton::clicked, this, &MedicUnit::save);
    connect(close, &QPushButton::clicked, this, &MedicUnit::reject);
    return panel;
}

QStringList MedicUnit::typedValues() const
{
    QStringList values;
    for (const QLineEdit *box : m_fields)
        values << box->text();
    return values;
}

void MedicUnit::save()
{
    const QStringList values = typedValues();
    if (const Outcome saved = medicunit::SaveMedicUnit(store::clinicDb(), values); !saved) {
        dialogs().information(saved.error());
        return;
    }
    m_stored = values;
    m_update->setEnabled(false);
}

// "Затвори", Escape and the close box: typing not stored is given up only after a question.
void MedicUnit::reject()
{
    if (typedValues() != m_stored
        && !dialogs().question(dropTypingQuestion(QStringLiteral("Данните на лечебното заведение не са записани."))))
        return;
    QDialog::reject();
}
