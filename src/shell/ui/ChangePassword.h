#pragma once

#include "admin/Doctors.h"

#include <QDialog>

class QLineEdit;

// "Смяна на паролата": the signed-in doctor changes the own access code. The code to compare
// the old one with is read once, when the form is made; the main window keeps the form and
// only hides it, so a second change in the same run is made with the code valid at the first
// opening.
class ChangePassword final : public QDialog
{
    Q_OBJECT
public:
    explicit ChangePassword(QWidget *parent = nullptr);

protected:
    void showEvent(QShowEvent *event) override;

private:
    static doctors::SignedInDoctor signedInDoctor();
    QLineEdit *addCodeField(const QString &name);
    void change();
    // The form's own messages: a plain box titled "Смяна на кода за достъп".
    void tell(const QString &message);

    QLineEdit *m_old;
    QLineEdit *m_new;
    QLineEdit *m_confirm;
    QString m_keptCode;
};
