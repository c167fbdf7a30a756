#include "shell/ui/SharedDialogs.h"

#include "base/Calendar.h"
#include "base/Dialogs.h"
#include "store/Dates.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace {

// The picture on the left, the message beside it, the buttons below.
QVBoxLayout *messageLayout(QDialog *dialog, const QString &message, QStyle::StandardPixmap icon)
{
    auto *picture = new QLabel(dialog);
    picture->setObjectName(QStringLiteral("Image1"));
    picture->setPixmap(dialog->style()->standardIcon(icon).pixmap(32, 32));
    auto *label = new QLabel(displayText(message), dialog);
    label->setObjectName(QStringLiteral("Label1"));
    label->setWordWrap(true);
    label->setMinimumWidth(280);
    auto *row = new QHBoxLayout;
    row->addWidget(picture, 0, Qt::AlignTop);
    row->addWidget(label, 1);
    auto *column = new QVBoxLayout(dialog);
    column->addLayout(row);
    return column;
}

QPushButton *addButton(QDialog *dialog, QBoxLayout *buttons, const QString &name, const QString &caption)
{
    auto *button = new QPushButton(caption, dialog);
    button->setObjectName(name);
    buttons->addWidget(button);
    return button;
}

QHBoxLayout *buttonRow(QVBoxLayout *column)
{
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    column->addLayout(buttons);
    return buttons;
}

} // namespace

InfDialog::InfDialog(const QString &message, QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(QStringLiteral("Информация"));
    auto *buttons = buttonRow(messageLayout(this, message, QStyle::SP_MessageBoxInformation));
    QPushButton *ok = addButton(this, buttons, QStringLiteral("OKButton"), QStringLiteral("Затвори"));
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
}

void InfDialog::showEvent(QShowEvent *event)
{
    QApplication::beep();
    QDialog::showEvent(event);
}

QuesDialog::QuesDialog(const QString &message, QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(QStringLiteral("Въпрос"));
    auto *buttons = buttonRow(messageLayout(this, message, QStyle::SP_MessageBoxQuestion));
    QPushButton *yes = addButton(this, buttons, QStringLiteral("OKButton"), QStringLiteral("ДА"));
    QPushButton *no = addButton(this, buttons, QStringLiteral("CancelButton"), QStringLiteral("НЕ"));
    yes->setDefault(true);
    connect(yes, &QPushButton::clicked, this, &QDialog::accept);
    connect(no, &QPushButton::clicked, this, &QDialog::reject);
}

ExitDialog::ExitDialog(QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(QStringLiteral("Изход от програмата"));
    auto *buttons = buttonRow(messageLayout(this, QStringLiteral("Излизате ли от програмата?"), QStyle::SP_MessageBoxQuestion));
    QPushButton *yes = addButton(this, buttons, QStringLiteral("OKButton"), QStringLiteral("ДА"));
    QPushButton *no = addButton(this, buttons, QStringLiteral("CancelButton"), QStringLiteral("НЕ"));
    yes->setDefault(true);
    connect(yes, &QPushButton::clicked, this, &QDialog::accept);
    connect(no, &QPushButton::clicked, this, &QDialog::reject);
}

ProgDialog::ProgDialog(const QString &message, int rows, QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(QStringLiteral("Обработка"));
    auto *column = messageLayout(this, message, QStyle::SP_MessageBoxInformation);
    m_bar = new QProgressBar(this);
    m_bar->setObjectName(QStringLiteral("ProgBar"));
    m_bar->setRange(1, std::max(1, rows));
    m_bar->setValue(1);
    column->addWidget(m_bar);
    m_ok = addButton(this, buttonRow(column), QStringLiteral("OKButton"), QStringLiteral("Затвори"));
    m_ok->setEnabled(false);
    connect(m_ok, &QPushButton::clicked, this, [this] {
        m_stop = 1;
        QApplication::restoreOverrideCursor();
        close();
    });
}

void ProgDialog::setValue(int value)
{
    m_bar->setValue(std::min(value, m_bar->maximum()));
    // The walk runs on the user's thread: let the window paint and the button be pressed.
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void ProgDialog::allowStop(bool allowed) { m_ok->setEnabled(allowed); }

ChoiceDialog::ChoiceDialog(QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(QStringLiteral("Изберете"));
    auto *column = new QVBoxLayout(this);
    auto *label = new QLabel(QStringLiteral("Дата на графика (ДД.ММ.ГГГГ):"), this);
    label->setObjectName(QStringLiteral("Label1"));
    column->addWidget(label);
    m_text = new QLineEdit(this);
    m_text->setObjectName(QStringLiteral("Text1"));
    column->addWidget(m_text);
    auto *buttons = buttonRow(column);
    m_ok = addButton(this, buttons, QStringLiteral("OKButton"), QStringLiteral("Избор"));
    QPushButton *cancelButton = addButton(this, buttons, QStringLiteral("CancelButton"), QStringLiteral("Отказ"));
    m_ok->setAutoDefault(false);
    cancelButton->setAutoDefault(false);
    connect(m_text, &QLineEdit::textEdited, this, [this] { m_ok->setDefault(true); });
    connect(m_ok, &QPushButton::clicked, this, &ChoiceDialog::choose);
    connect(cancelButton, &QPushButton::clicked, this, &ChoiceDialog::cancel);
}

void ChoiceDialog::choose()
{
    const QString typed = m_text->text().trimmed();
    if (typed.isEmpty()) {
        dialogs().information(QStringLiteral("Няма въведена дата за графика"));
        m_choice = false;
        return;
    }
    const auto date = dates::fromTyped(typed);
    if (!date) {
        dialogs().information(QStringLiteral("Невалидна дата: ") + typed + QChar(13)
                              + QStringLiteral("Въведете датата като ДД.ММ.ГГГГ."));
        m_choice = false;
        return;
    }
    m_date = *date;
    m_choice = true;
    accept();
}

void ChoiceDialog::cancel()
{
    dialogs().information(QStringLiteral("Няма въведена дата за графика"));
    m_choice = false;
    m_date = calendar::today().addDays(1);
    reject();
}
