#pragma once

#include <QDialog>

class QComboBox;
class QLineEdit;
class QPushButton;

// "Код за достъп": the doctor chooses a name and types the access code. There is no second
// attempt: a wrong code ends the run after its message, and so does "Отказ".
class Password final : public QDialog
{
    Q_OBJECT
public:
    explicit Password(QWidget *parent = nullptr);

    // The whole sign-in at start: with no doctor in Medic it offers MedicAdd once and fails
    // (the run has to be started again); otherwise it shows this dialog. True when a doctor
    // signed in, with CurrentMedicCode, CurrentMedicName and nIDMedic set.
    static bool signIn();

    // lKod: a doctor was chosen and the right code typed when the form closed.
    bool lKod() const { return m_lKod; }
    // Whether the run is to end: no doctor signed in, a wrong code, or "Отказ".
    bool endsRun() const { return m_endRun || !m_lKod; }

public slots:
    void done(int result) override;

private:
    void loadNames();
    void chooseName(int index);
    void enter();
    void cancel();
    void readCodeNumber();

    QComboBox *m_names;
    QLineEdit *m_code;
    QPushButton *m_ok;
    QString m_sPassWord; // the stored code of the chosen doctor, empty until a name is chosen
    QString m_sName;
    bool m_lKod = false;
    bool m_endRun = false;
};
