#pragma once

#include <QWidget>

class QLabel;

// "Време": the minutes left of today's working day. It has no timer: it shows the value it
// read when it was last shown, activated or given the focus.
class TimeDay final : public QWidget
{
    Q_OBJECT
public:
    explicit TimeDay(QWidget *parent = nullptr);
    void refresh();

protected:
    void showEvent(QShowEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    bool event(QEvent *event) override;

private:
    QLabel *m_label;
};
