#include "patients/ui/KartonAdd.h"

#include "base/Dialogs.h"
#include "base/RunState.h"
#include "base/UnsavedTyping.h"
#include "base/ui/WindowPlacement.h"
#include "patients/ui/ChartWidget.h"
#include "patients/ui/FocusLeaving.h"
#include "patients/ui/SeekName.h"
#include "patients/ui/ViewHelp.h"
#include "store/Sql.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

using namespace patientcard;

namespace {

const QString ModeNew = QStringLiteral("New");
const QString ModeEdit = QStringLiteral("Edit");
const QString ModeFailed = QStringLiteral(" ");

const QString Yellow = QStringLiteral("background: #ffff80;");
const QString White = QStringLiteral("background: white;");
const QString Blue = QStringLiteral(" color: blue;");

// One input of the personal data: its label, control, field of Pacients, most characters
// (0: no limit of its own), place in the tab order and whether it is one the fund needs.
struct PersonalInput final
{
    QString label;
    QString objectName;
    QString field;
    int limit;
    int tab;
    bool yellow;
};

const QList<PersonalInput> &personalInputs()
{
    static const QList<PersonalInput> inputs{
        {QStringLiteral("Имена"), QStringLiteral("Text2"), QStringLiteral("Names"), 0, 1, true},
        {QStringLiteral("Пощ.код"), QStringLiteral("Text6"), QStringLiteral("PKod"), 0, 2, true},
        {QStringLiteral("Ул."), QStringLiteral("Text14"), QStringLiteral("UL"), 0, 3, true},
        {QStringLiteral("Дата рег."), QStringLiteral("txtFields(14)"), QStringLiteral("DataR"), 15, 4, false},
        {QStringLiteral("Здр.кн."), QStringLiteral("Text12"), QStringLiteral("ZBook"), 0, 5, true},
        {QStringLiteral("дом.тел:"), QStringLiteral("txtFields(11)"), QStringLiteral("DTel"), 20, 6, false},
        {QStringLiteral("сл.тел:"), QStringLiteral("txtFields(12)"), QStringLiteral("STel"), 20, 7, false},
        {QStringLiteral("моб.тел:"), QStringLiteral("txtFields(13)"), QStringLiteral("MTel"), 20, 8, false},
        {QStringLiteral("Рец.кн."), QStringLiteral("txtFields(15)"), QStringLiteral("RBook"), 30, 9, false},
        {QStringLiteral("Пол"), QStringLiteral("txtFields(17)"), QStringLiteral("Pol"), 10, 10, false},
        {QStringLiteral("Кр.гр."), QStringLiteral("txtFields(18)"), QStringLiteral("KrGr"), 4, 11, false},
        {QStringLiteral("Ph"), QStringLiteral("txtFields(19)"), QStringLiteral("Ph"), 3, 12, false},
        {QStringLiteral("мест."), QStringLiteral("txtFields(0)"), QStringLiteral("Work"), 30, 93, false},
        {QStringLiteral("проф."), QStringLiteral("txtFields(1)"), QStringLiteral("Prof"), 15, 94, false},
        {QStringLiteral("Нас.място"), QStringLiteral("Text1"), QStringLiteral("Tawn"), 0, 98, true},
        {QStringLiteral("ЕГН"), QStringLiteral("Text3"), QStringLiteral("EGN"), 0, 99, true},
        {QStringLiteral("Общ."), QStringLiteral("Text7"), QStringLiteral("Obsh"), 0, 104, true},
        {QStringLiteral("Обл."), QStringLiteral("Text8"), QStringLiteral("Obl"), 0, 105, true},
        {QStringLiteral("ЕГН"), QStringLiteral("Text11"), QString(), 0, 110, true},
        {QStringLiteral("ап."), QStringLiteral("txtFields(2)"), QStringLiteral("AP"), 40, 152, false},
        {QStringLiteral("ет."), QStringLiteral("txtFields(3)"), QStringLiteral("ET"), 40, 153, false},
        {QStringLiteral("вх."), QStringLiteral("txtFields(4)"), QStringLiteral("VX"), 40, 154, false},
        {QStringLiteral("бл."), QStringLiteral("txtFields(5)"), QStringLiteral("BL"), 40, 155, false},
        {QStringLiteral("Кв."), QStringLiteral("Text13"), QStringLiteral("KV"), 0, 161, true},
        {QStringLiteral("ЗОК"), QStringLiteral("txtFields(6)"), QStringLiteral("RZOK"), 15, 162, true},
        {QStringLiteral("Здр.р-н"), QStringLiteral("txtFields(7)"), QStringLiteral("ZR"), 15, 164, true},
        {QStringLiteral("Нац."), QStringLiteral("txtFields(8)"), QStringLiteral("Country"), 15, 168, true},
        {QStringLiteral("Ст."), QStringLiteral("txtFields(9)"), QStringLiteral("Type"), 15, 169, true},
    };
    return inputs;
}

// How the personal data stand on the card, row by row (Text3 and Text11 share one spot).
const QList<QStringList> &personalRows()
{
    static const QList<QStringList> rows{
        {QStringLiteral("Text2"), QStringLiteral("Text3"), QStringLiteral("txtFields(17)")},
        {QStringLiteral("Text6"), QStringLiteral("Text1"), QStringLiteral("Text7"), QStringLiteral("Text8")},
        {QStringLiteral("Text13"), QStringLiteral("Text14"), QStringLiteral("txtFields(5)"), QStringLiteral("txtFields(4)"),
         QStringLiteral("txtFields(3)"), QStringLiteral("txtFields(2)")},
        {QStringLiteral("txtFields(6)"), QStringLiteral("txtFields(7)"), QStringLiteral("Text12"),
         QStringLiteral("txtFields(15)"), QStringLiteral("txtFields(8)"), QStringLiteral("txtFields(9)")},
        {QStringLiteral("txtFields(11)"), QStringLiteral("txtFields(12)"), QStringLiteral("txtFields(13)"),
         QStringLiteral("txtFields(14)")},
        {QStringLiteral("txtFields(0)"), QStringLiteral("txtFields(1)"), QStringLiteral("txtFields(18)"),
         QStringLiteral("txtFields(19)")},
    };
    return rows;
}

struct MedicalNote final
{
    QString label;
    QString objectName;
    QString field;
    QString colour;
};

const QList<MedicalNote> &medicalNotes()
{
    static const QList<MedicalNote> notes{
        {QStringLiteral("Непоносимост"), QStringLiteral("Text4"), QStringLiteral("Nep"), QStringLiteral("red")},
        {QStringLiteral("Особености"), QStringLiteral("Text5"), QStringLiteral("Osob"), QStringLiteral("green")},
        {QStringLiteral("Настоящи забол."), QStringLiteral("Text9"), QStringLiteral("ZabNaw"), QStringLiteral("green")},
        {QStringLiteral("Минали забол."), QStringLiteral("Text10"), QStringLiteral("ZabOld"), QStringLiteral("green")},
    };
    return notes;
}

const PersonalInput &personalInput(const QString &objectName)
{
    for (const PersonalInput &input : personalInputs())
        if (input.objectName == objectName)
            return input;
    Q_UNREACHABLE();
}

// The hourglass for the time a check or a save works.
class BusyPointer final
{
public:
    BusyPointer() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~BusyPointer() { QGuiApplication::restoreOverrideCursor(); }
    BusyPointer(const BusyPointer &) = delete;
    BusyPointer &operator=(const BusyPointer &) = delete;
};

} // namespace

KartonAdd::KartonAdd(const QString &mode, const QString &foundName, const QString &foundEgn, QWidget *parent)
    : QWidget(parent, Qt::Window)
{
    setObjectName(QStringLiteral("KartonAdd"));
    setMode(mode);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(buildPersonalData());
    layout->addWidget(buildMedicalData());
    layout->addWidget(buildButtons());
    chainTabOrder();
    load(foundName, foundEgn);
}

KartonAdd::KartonAdd(const QString &foundName, const QString &foundEgn, QWidget *parent)
    : KartonAdd(run().CardMode, foundName, foundEgn, parent)
{
}

KartonAdd::~KartonAdd() { closeHistory(); }

KartonAdd *KartonAdd::openNew(QWidget *parent) { return open(ModeNew, {}, {}, parent); }

KartonAdd *KartonAdd::openForCorrection(const QString &foundName, const QString &foundEgn, QWidget *parent)
{
    return open(ModeEdit, foundName, foundEgn, parent);
}

KartonAdd *KartonAdd::openCard() { return openWindow(); }

KartonAdd *KartonAdd::open(const QString &mode, const QString &foundName, const QString &foundEgn, QWidget *parent)
{
    if (KartonAdd *current = openWindow(); current && !current->givesWayTo(mode, foundEgn)) {
        bringForward(current);
        return nullptr;
    }
    auto *card = adopt(new KartonAdd(mode, foundName, foundEgn, parent));
    card->setAttribute(Qt::WA_DeleteOnClose);
    card->show();
    keepOnScreen(card);
    if (card->m_history) {
        card->m_history->show();
        placeBeside(card->m_history, card);
    }
    return card;
}

// The same card asked for again stays as it is; another patient's card, or a new one over a
// correction, takes its place once the typing on it is given up.
bool KartonAdd::givesWayTo(const QString &mode, const QString &foundEgn)
{
    const bool sameCard = mode == ModeNew ? m_mode == ModeNew : (m_mode != ModeNew && foundEgn == m_cardEgn);
    if (sameCard)
        return false;
    if (hasUnsavedTyping() && !dialogs().question(dropTypingQuestion(QStringLiteral("Картонът има незаписани промени."))))
        return false;
    m_typingGivenUp = true;
    m_replaced = true;
    close();
    return true;
}

void KartonAdd::setMode(const QString &mode)
{
    m_mode = mode;
    run().CardMode = mode;
}

void KartonAdd::markStored() { m_stored = cardFromInputs(); }

bool KartonAdd::hasUnsavedTyping() const
{
    const CardData shown = cardFromInputs();
    return shown.fields != m_stored.fields || shown.chart != m_stored.chart || !m_egnEntry->text().isEmpty();
}

QLineEdit *KartonAdd::makeInput(const QString &objectName, const QString &field, int limit, const QString &style)
{
    auto *input = new QLineEdit(this);
    input->setObjectName(objectName);
    if (limit > 0)
        input->setMaxLength(limit);
    input->setStyleSheet(style);
    input->installEventFilter(this);
    if (!field.isEmpty())
        m_inputsByField.insert(field, input);
    return input;
}

QGroupBox *KartonAdd::buildPersonalData()
{
    auto *frame = new QGroupBox(QStringLiteral("Лични данни"), this);
    auto *rows = new QVBoxLayout(frame);
    QHash<QString, QLineEdit *> byName;
    for (const PersonalInput &input : personalInputs()) {
        const bool blue = input.objectName == QStringLiteral("Text3") || input.objectName == QStringLiteral("Text6") ||
                          input.objectName == QStringLiteral("Text11");
        QLineEdit *edit = makeInput(input.objectName, input.field, input.limit,
                                    (input.yellow ? Yellow : White) + (blue ? Blue : QString()));
        byName.insert(input.objectName, edit);
        if (input.objectName.startsWith(QStringLiteral("txtFields")))
            m_txtFields << edit;
    }
    m_names = byName.value(QStringLiteral("Text2"));
    m_postCode = byName.value(QStringLiteral("Text6"));
    m_healthBook = byName.value(QStringLiteral("Text12"));
    m_quarter = byName.value(QStringLiteral("Text13"));
    m_street = byName.value(QStringLiteral("Text14"));
    m_storedEgn = byName.value(QStringLiteral("Text3"));
    m_egnEntry = byName.value(QStringLiteral("Text11"));
    m_storedEgn->setReadOnly(true);
    m_storedEgn->setToolTip(QStringLiteral("ЕГН"));
    m_egnEntry->hide();
    m_egnEntry->setEnabled(false);
    connect(m_egnEntry, &QLineEdit::textChanged, this, [this] { m_close->setEnabled(true); });

    for (const QStringList &names : personalRows()) {
        auto *row = new QHBoxLayout;
        for (const QString &name : names) {
            auto *label = new QLabel(personalInput(name).label, frame);
            row->addWidget(label);
            row->addWidget(byName.value(name), name == QStringLiteral("Text2") ? 4 : 1);
            if (name == QStringLiteral("Text3"))
                row->addWidget(m_egnEntry, 1);
        }
        rows->addLayout(row);
    }
    // Tab order by the places the inputs were given.
    QList<PersonalInput> ordered = personalInputs();
    std::sort(ordered.begin(), ordered.end(), [](const auto &a, const auto &b) { return a.tab < b.tab; });
    for (const PersonalInput &input : ordered)
        m_tabOrder << byName.value(input.objectName);
    return frame;
}

QGroupBox *KartonAdd::buildMedicalData()
{
    auto *frame = new QGroupBox(QStringLiteral("Медицински данни"), this);
    auto *layout = new QVBoxLayout(frame);
    auto *notes = new QGridLayout;
    int place = 0;
    for (const MedicalNote &note : medicalNotes()) {
        QLineEdit *edit = makeInput(note.objectName, note.field, 0, White + QStringLiteral(" color: %1;").arg(note.colour));
        notes->addWidget(new QLabel(note.label, frame), place / 2, (place % 2) * 2);
        notes->addWidget(edit, place / 2, (place % 2) * 2 + 1);
        m_tabOrder << edit;
        ++place;
    }
    layout->addLayout(notes);
    m_chart = new ChartWidget(frame);
    m_chart->setObjectName(QStringLiteral("Chart"));
    layout->addWidget(m_chart);
    m_tabOrder << m_chart->tabOrder();
    return frame;
}

QWidget *KartonAdd::buildButtons()
{
    auto *buttons = new QWidget(this);
    auto *row = new QHBoxLayout(buttons);
    row->setContentsMargins(0, 0, 0, 0);
    const auto button = [&](const QString &name, const QString &caption) {
        auto *push = new QPushButton(caption, buttons);
        push->setObjectName(name);
        row->addWidget(push);
        m_tabOrder << push;
        return push;
    };
    m_add = button(QStringLiteral("cmdAdd"), QStringLiteral("Добави"));
    m_delete = button(QStringLiteral("cmdDelete"), QStringLiteral("Изтрий"));
    m_update = button(QStringLiteral("cmdUpdate"), QStringLiteral("Запиши"));
    m_close = button(QStringLiteral("cmdClose"), QStringLiteral("Затвори"));
    connect(m_add, &QPushButton::clicked, this, [this] { startNewRecord(true); });
    connect(m_delete, &QPushButton::clicked, this, &KartonAdd::deleteCard);
    connect(m_update, &QPushButton::clicked, this, &KartonAdd::saveCard);
    connect(m_close, &QPushButton::clicked, this, &KartonAdd::closeCard);
    return buttons;
}

void KartonAdd::chainTabOrder()
{
    for (int i = 1; i < m_tabOrder.size(); ++i)
        setTabOrder(m_tabOrder.at(i - 1), m_tabOrder.at(i));
}

void KartonAdd::load(const QString &foundName, const QString &foundEgn)
{
    if (m_mode != ModeNew) {
        m_cardName = foundName;
        m_cardEgn = foundEgn;
        setWindowTitle(QStringLiteral("Картон - Корекция"));
        m_add->setEnabled(false);
        const auto stored = loadPatient(store::clinicDb(), foundEgn);
        if (!stored)
            dialogs().information(stored.error());
        else if (stored.value())
            showCard(*stored.value());
        m_history = new ViewHelp(m_cardEgn, this); // a window of its own that goes with the card
        m_history->setAttribute(Qt::WA_DeleteOnClose);
    } else {
        setWindowTitle(QStringLiteral("Картон - Нов"));
        m_delete->setEnabled(false);
    }
    m_update->setEnabled(true);
    m_close->setEnabled(false);
    markStored();
}

void KartonAdd::showCard(const CardData &card)
{
    m_card = card;
    for (auto it = m_inputsByField.cbegin(); it != m_inputsByField.cend(); ++it)
        it.value()->setText(card.fields.value(it.key()));
    m_chart->setTexts(card.chart);
    // The stored milk teeth come up at once, not only when the window is next activated.
    m_chart->comeToFront();
}

CardData KartonAdd::cardFromInputs() const
{
    CardData card = m_card;
    for (auto it = m_inputsByField.cbegin(); it != m_inputsByField.cend(); ++it)
        card.fields.insert(it.key(), it.value()->text());
    card.chart = m_chart->texts();
    return card;
}

bool KartonAdd::event(QEvent *event)
{
    if (event->type() == QEvent::WindowActivate && m_chart)
        m_chart->comeToFront();
    return QWidget::event(event);
}

// Typing into the stored number starts an entry as a click does, so that the number can be
// given from the keyboard alone.
static bool startsNumberTyping(const QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto *key = static_cast<const QKeyEvent *>(event);
    return !key->text().isEmpty() && key->text().at(0).isPrint() &&
           !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
}

bool KartonAdd::eventFilter(QObject *watched, QEvent *event)
{
    auto *input = qobject_cast<QLineEdit *>(watched);
    if (input == m_storedEgn && event->type() == QEvent::MouseButtonPress) {
        beginNumberEntry();
    } else if (input == m_storedEgn && startsNumberTyping(event)) {
        beginNumberEntry();
        m_egnEntry->insert(static_cast<QKeyEvent *>(event)->text());
        return true;
    }
    else if (input && isFocusLeaving(event) && !m_closing) {
        inputLeft(input);
    }
    return QWidget::eventFilter(watched, event);
}

void KartonAdd::inputLeft(QLineEdit *input)
{
    if (input == m_egnEntry) {
        numberEntryLeft();
    } else if (input == m_names) {
        if (namesIncomplete(input->text()))
            dialogs().information(namesIncompleteMessage());
    } else if (input == m_postCode) {
        postCodeLeft();
    } else if (input == m_healthBook) {
        if (healthBookInvalid(input->text()))
            dialogs().information(healthBookMessage());
    } else if (input == m_quarter) {
        input->setText(quarterWithPrefix(input->text()));
    } else if (input == m_street) {
        input->setText(streetWithPrefix(input->text()));
    } else if (m_txtFields.contains(input)) {
        input->setText(input->text().toUpper());
        m_chart->personalInputLeft();
    }
}

void KartonAdd::postCodeLeft()
{
    const auto found = findPostCode(store::dataDb(), m_postCode->text());
    if (!found) {
        dialogs().information(found.error());
        return;
    }
    if (!found.value()) {
        dialogs().information(postCodeUnknownMessage());
        return;
    }
    const PostPlace &place = *found.value();
    m_inputsByField.value(QStringLiteral("Tawn"))->setText(place.tawn);
    m_inputsByField.value(QStringLiteral("Obsh"))->setText(place.obsh);
    m_inputsByField.value(QStringLiteral("Obl"))->setText(place.obl);
    m_inputsByField.value(QStringLiteral("RZOK"))->setText(place.zk);
    m_inputsByField.value(QStringLiteral("ZR"))->setText(place.zdRn);
    m_postRzok = place.zk;
    m_postZr = place.zdRn;
}

void KartonAdd::beginNumberEntry()
{
    m_egnEntry->setEnabled(true);
    m_egnEntry->show();
    m_storedEgn->hide();
    m_egnEntry->setFocus(Qt::MouseFocusReason);
}

void KartonAdd::numberEntryLeft()
{
    // Hiding the box below moves the focus again; the check runs once per leaving.
    if (m_checkingNumber)
        return;
    m_checkingNumber = true;
    const auto checked = [this] {
        BusyPointer busy;
        return checkEnteredEgn(store::clinicDb(), m_egnEntry->text());
    }();
    if (!checked)
        dialogs().information(checked.error());
    else if (checked->verdict == EgnVerdict::Failed)
        failedNumber(checked.value());
    else if (checked->verdict == EgnVerdict::ExistingPatient)
        switchToStoredPatient(checked.value());
    else {
        setMode(ModeNew);
        startNewRecord(m_card.pacientRowId != 0);
        m_chart->ResetChartBoxes();
        finishNumberEntry(checked.value());
    }
    m_checkingNumber = false;
}

// The card stays open with the number as typed, so that it can be put right and nothing else
// typed is lost.
void KartonAdd::failedNumber(const EgnEntry &entry)
{
    setMode(ModeFailed);
    for (const QString &message : entry.messages)
        dialogs().information(message);
}

void KartonAdd::switchToStoredPatient(const EgnEntry &entry)
{
    for (const QString &message : entry.messages)
        dialogs().information(message);
    setMode(ModeEdit);
    setWindowTitle(QStringLiteral("Картон - Корекция"));
    m_cardName = entry.existingName;
    m_cardEgn = entry.shownEgn;
    const auto stored = loadPatient(store::clinicDb(), entry.shownEgn);
    if (!stored)
        dialogs().information(stored.error());
    else if (stored.value())
        showCard(*stored.value());
    finishNumberEntry(entry);
    markStored();
}

void KartonAdd::finishNumberEntry(const EgnEntry &entry)
{
    if (entry.verdict == EgnVerdict::NewPatient)
        for (const QString &message : entry.messages)
            dialogs().information(message);
    m_storedEgn->show();
    m_storedEgn->setText(entry.shownEgn);
    m_inputsByField.value(QStringLiteral("Pol"))->setText(entry.sex);
    m_egnEntry->clear();
    m_egnEntry->setEnabled(false);
    m_egnEntry->hide();
    m_add->setEnabled(false);
}

void KartonAdd::startNewRecord(bool discardTyped)
{
    // A fresh card keeps what was typed before the number: it already is the new record.
    if (discardTyped) {
        for (QLineEdit *input : std::as_const(m_inputsByField))
            input->clear();
        m_chart->setTexts({});
    }
    m_card = CardData{};
    m_update->setEnabled(true);
}

void KartonAdd::saveCard()
{
    const CardData card = cardFromInputs();
    if (m_mode == ModeNew)
        saveNewCard(card);
    else
        saveChanges(card);
}

void KartonAdd::saveNewCard(const CardData &card)
{
    // The doctor's access code is never kept in clear, so the card leaves IDName empty.
    const NewCardStamp stamp{run().CurrentMedicCode, std::nullopt, m_postRzok, m_postZr};
    const QString egn = m_storedEgn->text();
    const auto saved = [&] {
        BusyPointer busy;
        return patientcard::saveNewCard(store::clinicDb(), card, egn, stamp);
    }();
    if (!saved) {
        dialogs().information(saved.error());
        return;
    }
    m_cardEgn = egn;
    m_cardName = m_names->text().trimmed();
    m_savedNewEgn = egn;
    m_savedNewName = m_cardName;
    showCard(saved.value());
    markStored();
    m_update->setEnabled(false);
}

void KartonAdd::saveChanges(const CardData &card)
{
    const auto saved = [&] {
        BusyPointer busy;
        return saveCardChanges(store::clinicDb(), card, m_cardEgn);
    }();
    if (!saved) {
        dialogs().information(saved.error());
        return;
    }
    m_card = saved.value();
    markStored();
    setMode(ModeEdit);
    m_update->setEnabled(false);
    m_close->setEnabled(true);
}

void KartonAdd::deleteCard()
{
    if (!dialogs().question(deleteQuestion(), QStringLiteral("ВНИМАНИЕ!")) || m_mode == ModeNew || m_card.pacientRowId == 0)
        return;
    // The service lines go with the patient shown, who after a number switched the card is no
    // longer the one first found by name.
    const auto deleted = [&] {
        BusyPointer busy;
        return deletePatient(store::clinicDb(), m_card, m_cardEgn);
    }();
    if (!deleted) {
        // Nothing was deleted: the card and its history stay for the user to go on.
        dialogs().information(deleted.error());
        return;
    }
    m_typingGivenUp = true; // the patient is gone
    closeHistory();
    close();
}

void KartonAdd::closeCard()
{
    const bool toTreatment = m_mode == ModeNew && !m_savedNewEgn.isEmpty();
    if (close() && toTreatment)
        emit openTreatment(m_savedNewEgn, m_savedNewName);
}

// However the card is closed, typing that was not saved is given up only on the user's word.
// No check runs on a closing card.
void KartonAdd::closeEvent(QCloseEvent *event)
{
    if (!m_typingGivenUp && hasUnsavedTyping() &&
        !dialogs().question(dropTypingQuestion(QStringLiteral("Картонът има незаписани промени.")))) {
        event->ignore();
        return;
    }
    m_closing = true;
    if (!m_replaced)
        SeekName::closeOpen();
    if (m_mode != ModeNew)
        closeHistory();
    QWidget::closeEvent(event);
}

void KartonAdd::closeHistory()
{
    if (m_history)
        m_history->close();
}

ViewHelp *KartonAdd::history() const { return m_history; }
