#include "patients/ui/KorEGN.h"

#include "base/Dialogs.h"
#include "base/ui/WindowPlacement.h"
#include "patients/EgnCorrection.h"
#include "patients/ui/FocusLeaving.h"
#include "store/Sql.h"

#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

KorEGN::KorEGN(QWidget *parent)
    : QWidget(parent, Qt::Window)
    , m_old(new QLineEdit(this))
    , m_new(new QLineEdit(this))
    , m_ok(new QPushButton(QStringLiteral("Смени"), this))
    , m_cancel(new QPushButton(QStringLiteral("Отказ"), this))
{
    setObjectName(QStringLiteral("KorEGN"));
    setWindowTitle(QStringLiteral("Корекция на ЕГН"));
    m_old->setObjectName(QStringLiteral("Text1"));
    m_old->setToolTip(QStringLiteral("Старо ЕГН на пациента "));
    m_new->setObjectName(QStringLiteral("Text2"));
    m_new->setToolTip(QStringLiteral("Новото ЕГН на пациента"));
    m_ok->setObjectName(QStringLiteral("OKButton"));
    m_cancel->setObjectName(QStringLiteral("CancelButton"));
    m_cancel->setDefault(true);
    m_old->installEventFilter(this);
    m_new->installEventFilter(this);

    auto *layout = new QGridLayout(this);
    layout->addWidget(new QLabel(QStringLiteral("Старо ЕГН"), this), 0, 0);
    layout->addWidget(m_old, 1, 0);
    layout->addWidget(new QLabel(QStringLiteral("Ново ЕГН"), this), 0, 1);
    layout->addWidget(m_new, 1, 1);
    layout->addWidget(m_ok, 2, 0);
    layout->addWidget(m_cancel, 2, 1);

    connect(m_ok, &QPushButton::clicked, this, &KorEGN::change);
    connect(m_cancel, &QPushButton::clicked, this, &QWidget::close);
}

KorEGN *KorEGN::open(QWidget *parent)
{
    KorEGN *form = openOrMake([parent] {
        auto *made = new KorEGN(parent);
        made->setAttribute(Qt::WA_DeleteOnClose);
        return made;
    });
    bringForward(form);
    return form;
}

bool KorEGN::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_new && event->type() == QEvent::MouseButtonPress)
        m_new->clear();
    else if (isFocusLeaving(event) && egncorrection::lengthWrong(static_cast<QLineEdit *>(watched)->text()))
        dialogs().information(watched == m_old ? egncorrection::oldNumberWarning() : egncorrection::newNumberWarning());
    return QWidget::eventFilter(watched, event);
}

void KorEGN::change()
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    const auto moved = egncorrection::moveEgn(store::clinicDb(), m_old->text(), m_new->text());
    QGuiApplication::restoreOverrideCursor();
    // Success is silent; the inputs keep their text.
    if (!moved)
        dialogs().information(moved.error());
}
