#include "diary/ui/Grafic.h"

#include "base/ui/NamedButton.h"

#include "base/Calendar.h"
#include "base/Dialogs.h"
#include "base/RunState.h"
#include "base/UnsavedTyping.h"
#include "base/ui/WindowPlacement.h"
#include "store/Dates.h"
#include "store/Sql.h"

#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int SlotsPerColumn = 13;

} // namespace

void Grafic::open(QWidget *parent) { execOnce(parent); }

Grafic::Grafic(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("Grafic"));
    setWindowTitle(QStringLiteral("График за прегледите на д-р ") + run().CurrentMedicName);
    auto *layout = new QVBoxLayout(this);
    auto *dateRow = new QHBoxLayout;
    m_date = new QLineEdit(this);
    m_date->setObjectName(QStringLiteral("txtData"));
    m_date->setMaximumWidth(110);
    m_weekday = new QLabel(this);
    m_weekday->setObjectName(QStringLiteral("lblLabels_2"));
    m_weekday->setMinimumWidth(100);
    dateRow->addWidget(new QLabel(QStringLiteral("Дата:"), this));
    dateRow->addWidget(m_date);
    dateRow->addWidget(m_weekday);
    dateRow->addStretch();
    layout->addLayout(dateRow);
    layout->addWidget(buildSlots());
    layout->addWidget(buildNavigator());
    layout->addWidget(buildButtons());
    connect(m_date, &QLineEdit::textChanged, this, &Grafic::showWeekday);
    reload(0); // the doctor's earliest page, not today's
}

QWidget *Grafic::buildSlots()
{
    auto *frame = new QGroupBox(QStringLiteral("Час на посещение"), this);
    auto *grid = new QGridLayout(frame);
    for (int slot = 0; slot < DiarySlotCount; ++slot) {
        auto *box = new QLineEdit(frame);
        box->setObjectName(QStringLiteral("Text1_%1").arg(slot));
        box->installEventFilter(this);
        m_slots << box;
        const int column = (slot / SlotsPerColumn) * 2;
        grid->addWidget(new QLabel(DiarySlotTime(slot), frame), slot % SlotsPerColumn, column, Qt::AlignRight);
        grid->addWidget(box, slot % SlotsPerColumn, column + 1);
    }
    return frame;
}

QWidget *Grafic::buildNavigator()
{
    auto *bar = new QWidget(this);
    bar->setObjectName(QStringLiteral("Data1"));
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    const QList<std::pair<QString, QString>> moves{{QStringLiteral("Data1First"), QStringLiteral("|◀")},
                                                   {QStringLiteral("Data1Previous"), QStringLiteral("◀")},
                                                   {QStringLiteral("Data1Next"), QStringLiteral("▶")},
                                                   {QStringLiteral("Data1Last"), QStringLiteral("▶|")}};
    QList<QPushButton *> pushes;
    for (const auto &[name, caption] : moves)
        pushes << namedButton(name, caption, bar);
    auto *caption = new QLabel(QStringLiteral("Придвижване по датите"), bar);
    caption->setAlignment(Qt::AlignCenter);
    row->addWidget(pushes[0]);
    row->addWidget(pushes[1]);
    row->addWidget(caption, 1);
    row->addWidget(pushes[2]);
    row->addWidget(pushes[3]);
    connect(pushes[0], &QPushButton::clicked, this, [this] { moveTo(0); });
    connect(pushes[1], &QPushButton::clicked, this, [this] { moveTo(std::max(0, m_position - 1)); });
    connect(pushes[2], &QPushButton::clicked, this,
            [this] { moveTo(std::min(int(m_pages.size()) - 1, m_position + 1)); });
    connect(pushes[3], &QPushButton::clicked, this, [this] { moveTo(int(m_pages.size()) - 1); });
    return bar;
}

QWidget *Grafic::buildButtons()
{
    auto *bar = new QWidget(this);
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    auto *add = namedButton(QStringLiteral("cmdAdd"), QStringLiteral("Добави"), bar);
    auto *remove = namedButton(QStringLiteral("cmdDelete"), QStringLiteral("Изтрий"), bar);
    auto *refresh = namedButton(QStringLiteral("cmdRefresh"), QStringLiteral("Обнови"), bar);
    auto *update = namedButton(QStringLiteral("cmdUpdate"), QStringLiteral("Запиши"), bar);
    auto *close = namedButton(QStringLiteral("cmdClose"), QStringLiteral("Затвори"), bar);
    for (QPushButton *push : {add, remove, refresh, update, close})
        row->addWidget(push);
    connect(add, &QPushButton::clicked, this, &Grafic::addPage);
    connect(remove, &QPushButton::clicked, this, &Grafic::deletePage);
    // A refresh reads the pages anew and stands on the first, as at the opening; typing not saved is dropped.
    connect(refresh, &QPushButton::clicked, this, [this] { reload(0); });
    connect(update, &QPushButton::clicked, this, &Grafic::savePage);
    connect(close, &QPushButton::clicked, this, &Grafic::closeStoring);
    return bar;
}

void Grafic::reload(int position)
{
    const auto pages = LoadDiary(store::clinicDb(), run().CurrentMedicCode);
    if (!pages) {
        dialogs().information(pages.error());
        return;
    }
    m_pages = pages.value();
    m_position = m_pages.isEmpty() ? -1 : std::clamp(position, 0, int(m_pages.size()) - 1);
    showPage();
}

void Grafic::showPage()
{
    const bool any = m_position >= 0;
    const DiaryPage page = any ? m_pages.at(m_position) : DiaryPage{};
    // With no page at all the weekday keeps what it showed.
    const QString weekday = m_weekday->text();
    m_date->setText(page.Data);
    for (int slot = 0; slot < DiarySlotCount; ++slot)
        m_slots[slot]->setText(page.slotTexts.value(slot));
    if (!any)
        m_weekday->setText(weekday);
}

void Grafic::showWeekday()
{
    if (m_position < 0)
        return;
    const auto date = dates::fromTyped(m_date->text().trimmed());
    m_weekday->setText(date ? WeekdayName(*date) : QString());
}

DiaryPage Grafic::pageOnScreen() const
{
    DiaryPage page = m_position >= 0 ? m_pages.at(m_position) : DiaryPage{};
    page.Data = m_date->text();
    page.slotTexts.clear();
    for (const QLineEdit *box : m_slots)
        page.slotTexts << box->text();
    return page;
}

bool Grafic::typedWithoutPage() const
{
    return m_position < 0 && std::any_of(m_slots.cbegin(), m_slots.cend(), [](const QLineEdit *box) {
               return !box->text().isEmpty();
           });
}

bool Grafic::pageChanged() const
{
    if (m_position < 0)
        return typedWithoutPage();
    const DiaryPage shown = pageOnScreen();
    const DiaryPage &stored = m_pages.at(m_position);
    for (int slot = 0; slot < DiarySlotCount; ++slot)
        if (shown.slotTexts.value(slot) != stored.slotTexts.value(slot))
            return true;
    return shown.Data != stored.Data;
}

// As with any page being left: what was typed on it is stored first.
bool Grafic::commitChanges()
{
    if (m_position < 0 || !pageChanged())
        return true;
    const DiaryPage page = pageOnScreen();
    if (const Outcome saved = SaveDiaryPage(store::clinicDb(), page); !saved) {
        dialogs().information(saved.error());
        return false;
    }
    m_pages[m_position] = page;
    return true;
}

void Grafic::moveTo(int position)
{
    if (position < 0 || position == m_position || !commitChanges())
        return;
    m_position = position;
    showPage();
}

// On an empty diary what was typed into the slots is the new page's; elsewhere the page shown is
// stored before the new one comes.
void Grafic::addPage()
{
    if (!commitChanges())
        return;
    const bool keepTyping = typedWithoutPage();
    const auto added = AddDiaryPage(store::clinicDb(), run().CurrentMedicCode, calendar::today());
    if (!added) {
        dialogs().information(added.error());
        return;
    }
    m_pages << added.value();
    m_position = int(m_pages.size()) - 1; // the last record, which is the new page
    if (keepTyping) {
        m_date->setText(added->Data);
        commitChanges();
        return;
    }
    showPage();
}

void Grafic::savePage()
{
    if (m_position < 0)
        return;
    const qint64 id = m_pages.at(m_position).id;
    if (!commitChanges())
        return;
    // The saved page stays current wherever its date now sorts.
    reload(0);
    for (int i = 0; i < m_pages.size(); ++i)
        if (m_pages.at(i).id == id)
            m_position = i;
    showPage();
}

void Grafic::deletePage()
{
    if (m_position < 0)
        return;
    if (const Outcome deleted = DeleteDiaryPage(store::clinicDb(), m_pages.at(m_position).id); !deleted) {
        dialogs().information(deleted.error());
        return;
    }
    m_pages.removeAt(m_position);
    m_position = m_pages.isEmpty() ? -1 : std::min(m_position, int(m_pages.size()) - 1);
    showPage();
}

// "Затвори" leaves the page as any move does: what was typed is stored first, and a page that
// cannot be stored keeps the window open with the message.
void Grafic::closeStoring()
{
    if (commitChanges())
        accept();
}

// Escape and the close box never store: over typing they ask before it is given up.
void Grafic::reject()
{
    if (pageChanged() && !dialogs().question(dropTypingQuestion(QStringLiteral("Има незаписани промени в графика."))))
        return;
    QDialog::reject();
}

void Grafic::book(int slot)
{
    if (!BookingActive())
        return;
    if (m_position < 0) {
        dialogs().information(QStringLiteral("Няма страница в графика, на която да се запише часът.") + QChar(13) +
                              QStringLiteral("Добавете страница с \"Добави\" и изберете часа отново."));
        return;
    }
    const QString firstName = scheduleLink().FirstName;
    if (!dialogs().question(BookingQuestion(firstName)))
        return;
    const auto booked = BookSlot(store::clinicDb(), pageOnScreen(), slot, firstName);
    if (!booked) {
        dialogs().information(booked.error());
        return;
    }
    m_pages[m_position] = booked.value();
    m_slots[slot]->setText(firstName);
}

bool Grafic::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonPress) {
        const int slot = int(m_slots.indexOf(qobject_cast<QLineEdit *>(watched)));
        if (slot >= 0)
            book(slot);
    }
    return QDialog::eventFilter(watched, event);
}
