#include "shell/ui/TimeDay.h"

#include "base/RunState.h"
#include "base/ui/WindowPlacement.h"

#include <QEvent>
#include <QLabel>
#include <QVBoxLayout>

TimeDay::TimeDay(QWidget *parent)
    : QWidget(parent, Qt::Tool)
{
    setObjectName(QStringLiteral("TimeDay"));
    setWindowTitle(QStringLiteral("Време"));
    setFocusPolicy(Qt::StrongFocus);
    m_label = new QLabel(QStringLiteral("000"), this);
    m_label->setObjectName(QStringLiteral("Label1"));
    m_label->setAlignment(Qt::AlignCenter);
    QFont big = m_label->font();
    big.setPointSize(big.pointSize() + 10);
    big.setBold(true);
    m_label->setFont(big);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_label);
    resize(140, 80);
    keepTitleWhole(this);
}

void TimeDay::refresh() { m_label->setText(QString::number(run().MinutesLeft)); }

void TimeDay::showEvent(QShowEvent *event)
{
    refresh();
    QWidget::showEvent(event);
}

void TimeDay::focusInEvent(QFocusEvent *event)
{
    refresh();
    QWidget::focusInEvent(event);
}

bool TimeDay::event(QEvent *event)
{
    if (event->type() == QEvent::WindowActivate)
        refresh();
    return QWidget::event(event);
}
