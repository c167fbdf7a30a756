#pragma once

#include <QDialog>
#include <QPointF>

class QDoubleSpinBox;

namespace print {

// The offset of one form on the printer, in millimetres: right and down are positive.
class PrintOffsetDialog final : public QDialog
{
    Q_OBJECT

public:
    PrintOffsetDialog(const QString &formName, QWidget *parent = nullptr);

    QPointF offset() const;

    // Shows the dialog for the form and keeps what was chosen; true when the offset changed.
    static bool edit(const QString &formName, QWidget *parent);

private:
    QDoubleSpinBox *m_x = nullptr;
    QDoubleSpinBox *m_y = nullptr;
};

} // namespace print
