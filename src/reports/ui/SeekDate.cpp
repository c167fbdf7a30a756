#include "reports/ui/SeekDate.h"

#include "base/Dialogs.h"
#include "base/RunState.h"
#include "base/ui/NamedButton.h"
#include "base/ui/WindowPlacement.h"
#include "reports/ui/ReportWindows.h"

#include <QCloseEvent>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace {

QLineEdit *dateBox(const QString &name, QWidget *parent)
{
    auto *box = new QLineEdit(parent);
    box->setObjectName(name);
    box->setMaxLength(10);
    return box;
}

} // namespace

SeekDate::SeekDate(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("SeekDate"));
    setWindowTitle(QStringLiteral("Период..."));
    setAttribute(Qt::WA_DeleteOnClose);
    // The frame's hint says ММ/ДД/ГГ while the label and the check want ДД.ММ.ГГГГ; practices
    // know the dialog this way, and the check is what counts.
    auto *frame = new QGroupBox(QStringLiteral("Избор на начална и крайна дата ( ММ/ДД/ГГ )"), this);
    auto *grid = new QGridLayout(frame);
    m_from = dateBox(QStringLiteral("Text1_0"), frame);
    m_to = dateBox(QStringLiteral("Text1_1"), frame);
    grid->addWidget(new QLabel(QStringLiteral("От"), frame), 0, 0);
    grid->addWidget(m_from, 0, 1);
    grid->addWidget(new QLabel(QStringLiteral("До"), frame), 1, 0);
    grid->addWidget(m_to, 1, 1);
    grid->addWidget(new QLabel(QStringLiteral("Формат на дата: ДД.ММ.ГГГГ"), frame), 2, 0, 1, 2);
    m_ok = namedButton(QStringLiteral("OKButton"), QStringLiteral("Търси"), this, QStringLiteral("Стартира търсенето"));
    auto *cancelButton = namedButton(QStringLiteral("CancelButton"), QStringLiteral("Отказ"), this,
                                     QStringLiteral("затваря прозореца"));
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_ok);
    buttons->addWidget(cancelButton);
    auto *column = new QVBoxLayout(this);
    column->addWidget(frame);
    column->addLayout(buttons);
    for (QLineEdit *box : {m_from, m_to})
        box->installEventFilter(this);
    connect(m_ok, &QPushButton::clicked, this, &SeekDate::search);
    connect(cancelButton, &QPushButton::clicked, this, &SeekDate::cancel);
}

SeekDate *SeekDate::show(QWidget *parent, Purpose purpose)
{
    SeekDate *dialog = openOrMake([parent] { return new SeekDate(parent); });
    dialog->m_purpose = purpose;
    bringForward(dialog);
    dialog->m_from->setFocus();
    return dialog;
}

SeekDate *SeekDate::open(QWidget *parent, reports::ReportKind kind)
{
    SeekDate *dialog = show(parent, Purpose::Report);
    dialog->m_kind = kind;
    run().ReportKind = reports::ReportKindText(kind);
    return dialog;
}

SeekDate *SeekDate::openForAccounting(QWidget *parent) { return show(parent, Purpose::Accounting); }

SeekDate *SeekDate::openForClaimsCheck(QWidget *parent) { return show(parent, Purpose::ClaimsCheck); }

// A date box taking the focus makes "Търси" the button Enter presses.
bool SeekDate::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn)
        m_ok->setDefault(true);
    return QDialog::eventFilter(watched, event);
}

void SeekDate::search()
{
    const reports::PeriodEntry entry = reports::CheckPeriod(m_from->text(), m_to->text());
    if (entry.check == reports::PeriodCheck::Incomplete)
        return;
    if (entry.check != reports::PeriodCheck::Accepted) {
        dialogs().information(entry.message);
        return;
    }
    m_period = entry.period;
    switch (m_purpose) {
    case Purpose::Accounting:
        reportsui::openAccounting(this);
        break;
    case Purpose::ClaimsCheck:
        reportsui::openClaimsCheck(this);
        break;
    case Purpose::Report:
        reportsui::runReport(this);
        break;
    }
}

void SeekDate::cancel()
{
    dialogs().information(QStringLiteral("Няма избран период!"));
    close();
}

void SeekDate::reject() { cancel(); }

// The close box closes without the message of "Отказ": two dates are all it holds.
void SeekDate::closeEvent(QCloseEvent *event) { event->accept(); }
