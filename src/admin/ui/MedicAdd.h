#pragma once

#include <QDialog>

class QLineEdit;

// "Лекари": enters one new doctor. "Затвори" is the only button, and closing is saving: it
// lets the user out only with a complete record. Closing by the window's own close box
// stores nothing.
class MedicAdd final : public QDialog
{
    Q_OBJECT
public:
    explicit MedicAdd(QWidget *parent = nullptr);
    bool doctorAdded() const { return m_added; }

private:
    QLineEdit *addField(int index, int maxLength);
    void closeAndSave();

    QLineEdit *m_fields[5] = {}; // txtFields 1..4, as the form numbers them
    bool m_added = false;
};
