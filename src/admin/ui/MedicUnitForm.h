#pragma once

#include "base/ui/OneWindow.h"

#include <QDialog>
#include <QStringList>

class QLineEdit;
class QPushButton;

// "Данни за леченото заведение": the practice's legal and contact data, the one row of
// MedicUnit. One save for each opening: "Запиши" stays disabled after it until the form is
// opened anew. Nothing typed is checked, nor lost unasked.
class MedicUnit final : public QDialog, public OneWindow<MedicUnit>
{
    Q_OBJECT
    friend class OneWindow<MedicUnit>;

public:
    // Shows the form modally and returns when it is closed; while it is open a second call only
    // brings it forward.
    static void open(QWidget *parent = nullptr);

    explicit MedicUnit(QWidget *parent = nullptr);

    void reject() override;

private:
    QWidget *buildFrame(const QList<int> &fields, int columns);
    QWidget *buildButtons();
    QStringList typedValues() const;
    void save();

    QList<QLineEdit *> m_fields; // txtFields by index
    QStringList m_stored;
    QPushButton *m_update = nullptr;
};
