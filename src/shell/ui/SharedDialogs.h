#pragma once

#include <QDate>
#include <QDialog>

class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;

// The small dialogs that serve the whole program. Each is built with the captions and object
// names of the system, so that tests find their parts by name.

// "Информация": a message and "Затвори"; beeps when it opens.
class InfDialog final : public QDialog
{
    Q_OBJECT
public:
    explicit InfDialog(const QString &message, QWidget *parent = nullptr);

protected:
    void showEvent(QShowEvent *event) override;
};

// "Въпрос": "ДА" gives nKod 1, "НЕ" gives 0.
class QuesDialog final : public QDialog
{
    Q_OBJECT
public:
    explicit QuesDialog(const QString &message, QWidget *parent = nullptr);
    int nKod() const { return result() == QDialog::Accepted ? 1 : 0; }
};

// "Изход от програмата": "Излизате ли от програмата?"
class ExitDialog final : public QDialog
{
    Q_OBJECT
public:
    explicit ExitDialog(QWidget *parent = nullptr);
};

// "Обработка": a bar that the calling routine moves; "Затвори" sets nStop.
class ProgDialog final : public QDialog
{
    Q_OBJECT
public:
    ProgDialog(const QString &message, int rows, QWidget *parent = nullptr);
    void setValue(int value);
    int nStop() const { return m_stop; }
    void allowStop(bool allowed);

private:
    QProgressBar *m_bar;
    QPushButton *m_ok;
    int m_stop = 0;
};

// "Изберете": the date for which the schedule is to be printed.
class ChoiceDialog final : public QDialog
{
    Q_OBJECT
public:
    explicit ChoiceDialog(QWidget *parent = nullptr);
    bool lChoice() const { return m_choice; }
    QDate dData() const { return m_date; }

private:
    void choose();
    void cancel();

    QLineEdit *m_text;
    QPushButton *m_ok;
    bool m_choice = false;
    QDate m_date;
};
