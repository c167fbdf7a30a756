#pragma once

#include "base/ui/OneWindow.h"

#include <QWidget>

class QLineEdit;
class QPushButton;

// "Корекция на ЕГН": moves a patient from a mistyped number to the right one.
class KorEGN final : public QWidget, public OneWindow<KorEGN>
{
    Q_OBJECT
    friend class OneWindow<KorEGN>;

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
};
