#include "patients/ui/SeekDati.h"

#include "base/Dialogs.h"
#include "base/ui/NamedButton.h"
#include "base/ui/WindowPlacement.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace {

// The input that has the focus stands white, the others grey.
const QColor FocusColour(0xFF, 0xFF, 0xFF);
const QColor RestColour(0xC0, 0xC0, 0xC0);

void paint(QWidget *input, const QColor &colour)
{
    QPalette palette = input->palette();
    palette.setColor(QPalette::Base, colour);
    input->setPalette(palette);
}

QLineEdit *dateBox(const QString &name, QWidget *parent)
{
    auto *box = new QLineEdit(parent);
    box->setObjectName(name);
    paint(box, RestColour);
    return box;
}

} // namespace

SeekDati::SeekDati(QWidget *parent)
    : QWidget(parent, Qt::Window)
{
    setObjectName(QStringLiteral("SeekDati"));
    setWindowTitle(QStringLiteral("Условия за търсене"));
    setAttribute(Qt::WA_DeleteOnClose);
    auto *column = new QVBoxLayout(this);
    column->addWidget(buildDates());
    column->addWidget(buildCombos(QStringLiteral("Адресни данни"), QStringLiteral("Избор по адресни данни"),
                                  QStringLiteral("Combo2"), QStringLiteral("Нас.място"), QStringLiteral("Combo3"),
                                  QStringLiteral("Адрес")));
    column->addWidget(buildCombos(QStringLiteral("Непоносимост"), QStringLiteral("Избор по медицински данни"),
                                  QStringLiteral("Combo4"), QStringLiteral("Кр.гр."), QStringLiteral("Combo5"),
                                  QStringLiteral("Непонос.")));
    auto *buttons = new QHBoxLayout;
    m_seek = namedButton(QStringLiteral("SeekButton"), QStringLiteral("Търси"), this);
    m_cancel = namedButton(QStringLiteral("CancelButton"), QStringLiteral("Отказ"), this);
    buttons->addWidget(m_seek);
    buttons->addWidget(m_cancel);
    column->addLayout(buttons);
    connect(m_seek, &QPushButton::clicked, this, &SeekDati::seek);
    connect(m_cancel, &QPushButton::clicked, this, &SeekDati::cancel);
    watchCombo(findChild<QComboBox *>(QStringLiteral("Combo2")), &m_settlement);
    watchCombo(findChild<QComboBox *>(QStringLiteral("Combo3")), &m_address);
    watchCombo(findChild<QComboBox *>(QStringLiteral("Combo4")), &m_bloodGroup);
    watchCombo(findChild<QComboBox *>(QStringLiteral("Combo5")), &m_allergy);
}

SeekDati *SeekDati::open(QWidget *parent)
{
    SeekDati *form = openOrMake([parent] { return new SeekDati(parent); });
    bringForward(form);
    return form;
}

QWidget *SeekDati::buildDates()
{
    auto *frame = new QGroupBox(QStringLiteral("Дати"), this);
    frame->setToolTip(QStringLiteral("Избор на начална и крайна дата ( ММ/ДД/ГГ )"));
    auto *grid = new QGridLayout(frame);
    const QStringList captions{QStringLiteral("Родени"), QStringLiteral("Регистрирани"),
                               QStringLiteral("Посетили кабинета")};
    for (int row = 0; row < 3; ++row) {
        const QString name = QStringLiteral("Text%1_").arg(row + 1);
        m_rows[row] = {dateBox(name + u'0', frame), dateBox(name + u'1', frame)};
        grid->addWidget(new QLabel(captions.at(row), frame), row, 0);
        grid->addWidget(m_rows[row].from, row, 1);
        grid->addWidget(m_rows[row].to, row, 2);
        m_rows[row].from->installEventFilter(this);
        m_rows[row].to->installEventFilter(this);
    }
    grid->addWidget(new QLabel(QStringLiteral("Формат на датите: ДД.ММ.ГГГГ"), frame), 3, 0, 1, 3);
    return frame;
}

QWidget *SeekDati::buildCombos(const QString &frameCaption, const QString &tip, const QString &firstName,
                               const QString &firstLabel, const QString &secondName, const QString &secondLabel)
{
    auto *frame = new QGroupBox(frameCaption, this);
    frame->setToolTip(tip);
    auto *grid = new QGridLayout(frame);
    int column = 0;
    for (const auto &[name, label] : {std::pair{firstName, firstLabel}, std::pair{secondName, secondLabel}}) {
        auto *combo = new QComboBox(frame);
        combo->setObjectName(name);
        combo->setEditable(true);
        paint(combo, RestColour);
        grid->addWidget(new QLabel(label, frame), 0, column++);
        grid->addWidget(combo, 0, column++);
    }
    return frame;
}

void SeekDati::watchCombo(QComboBox *combo, QString *value)
{
    combo->installEventFilter(this);
    combo->view()->installEventFilter(this);
    connect(combo, &QComboBox::editTextChanged, this, [this, value](const QString &typed) {
        *value = typed.trimmed().toUpper();
        m_seek->setDefault(true);
    });
    connect(combo, &QComboBox::textActivated, this,
            [value](const QString &chosen) { *value = chosen.trimmed().toUpper(); });
}

int SeekDati::rowOf(QObject *box) const
{
    for (int row = 0; row < 3; ++row)
        if (box == m_rows[row].from || box == m_rows[row].to)
            return row;
    return -1;
}

// Only one row is ever filled by hand: entering a row empties the other two.
void SeekDati::dateRowEntered(int row)
{
    paint(m_rows[row].from, FocusColour);
    paint(m_rows[row].to, FocusColour);
    for (int other = 0; other < 3; ++other)
        if (other != row) {
            m_rows[other].from->clear();
            m_rows[other].to->clear();
        }
}

bool SeekDati::eventFilter(QObject *watched, QEvent *event)
{
    const int row = rowOf(watched);
    auto *combo = qobject_cast<QComboBox *>(watched);
    if (!combo && watched->parent() && watched->parent()->parent())
        combo = qobject_cast<QComboBox *>(watched->parent()->parent()); // the drop-down's list
    if (event->type() == QEvent::FocusIn && row >= 0)
        dateRowEntered(row);
    else if (event->type() == QEvent::FocusOut && row >= 0)
        paint(static_cast<QWidget *>(watched), RestColour);
    else if (combo && (event->type() == QEvent::FocusIn || event->type() == QEvent::Show))
        paint(combo, FocusColour);
    else if (combo && watched == combo && event->type() == QEvent::FocusOut)
        paint(combo, RestColour);
    if (combo && combo->objectName() == u"Combo3" && event->type() == QEvent::MouseButtonPress)
        m_address = QStringLiteral("москва");
    return QWidget::eventFilter(watched, event);
}

void SeekDati::seek()
{
    bool listed = false;
    for (int row = 0; row < 3; ++row) {
        const auto check = datelists::CheckDateRow(datelists::ListKind(row + 1), m_rows[row].from->text(),
                                                   m_rows[row].to->text());
        if (!check.message.isEmpty())
            dialogs().information(check.message);
        if (check.request) {
            emit listRequested(*check.request);
            listed = true;
        }
    }
    if (listed)
        close();
}

void SeekDati::cancel()
{
    dialogs().information(datelists::NoLimitsMessage());
    close();
}
