#include "base/ui/PrintOffsetDialog.h"

#include "base/Dialogs.h"
#include "base/PrintOffsets.h"
#include "base/Settings.h"
#include "base/ui/WindowPlacement.h"

#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QPushButton>

namespace print {
namespace {

// A printer feeds a few millimetres off at most; more than two centimetres is a typing slip.
QDoubleSpinBox *millimetres(const QString &objectName, double value, QWidget *parent)
{
    auto *box = new QDoubleSpinBox(parent);
    box->setObjectName(objectName);
    box->setRange(-20.0, 20.0);
    box->setDecimals(1);
    box->setSingleStep(0.5);
    box->setSuffix(QStringLiteral(" мм"));
    box->setValue(value);
    return box;
}

} // namespace

PrintOffsetDialog::PrintOffsetDialog(const QString &formName, QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("PrintOffsetDialog"));
    setWindowTitle(QStringLiteral("Отместване на печата"));
    const QPointF current = offsetOf(formName);
    m_x = millimetres(QStringLiteral("txtOffsetX"), current.x(), this);
    m_y = millimetres(QStringLiteral("txtOffsetY"), current.y(), this);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setText(QStringLiteral("Запис"));
    buttons->button(QDialogButtonBox::Cancel)->setText(QStringLiteral("Отказ"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QFormLayout(this);
    layout->addRow(QStringLiteral("Надясно:"), m_x);
    layout->addRow(QStringLiteral("Надолу:"), m_y);
    layout->addRow(buttons);
    keepTitleWhole(this);
}

QPointF PrintOffsetDialog::offset() const { return {m_x->value(), m_y->value()}; }

bool PrintOffsetDialog::edit(const QString &formName, QWidget *parent)
{
    PrintOffsetDialog dialog(formName, parent);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    if (!setOffset(formName, dialog.offset())) {
        dialogs().information(QStringLiteral("Отместването не беше запазено: файлът на настройките не може да "
                                             "бъде записан.")
                              + u'\r' + Settings().fileName());
        return false;
    }
    return true;
}

} // namespace print
