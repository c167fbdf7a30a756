#pragma once

#include <QPointer>
#include <QWidget>

class QLineEdit;
class QPushButton;

// "Корекция на ЕГН": moves a patient from a mistyped number to the right one.
class KorEGN final : public QWidget
{
    Q_OBJECT
public:
    explicit KorEGN(QWidget *parent = nullptr);

    // Shows the one correction window, made on first use.
    static KorEGN *open(QWidget *parent = nullptr);

public slots:
    void change();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QLineEdit *m_old;
    QLineEdit *m_new;
    QPushButton *m_ok;
    QPushButton *m_cancel;
    static QPointer<KorEGN> s_open;
};
