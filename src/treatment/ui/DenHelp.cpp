#include "treatment/ui/DenHelp.h"

#include "base/ui/NamedButton.h"
#include "base/ui/PrintPreview.h"
#include "base/ui/WindowPlacement.h"

#include "base/Calendar.h"
#include "base/Captions.h"
#include "base/Dialogs.h"
#include "base/RunState.h"
#include "base/UnsavedTyping.h"
#include "diary/Diary.h"
#include "diary/ui/Grafic.h"
#include "patients/ToothMap.h"
#include "store/Sql.h"
#include "treatment/ChartPicture.h"
#include "treatment/PatientHeader.h"
#include "treatment/SheetNumbers.h"
#include "treatment/SheetPrint.h"
#include "treatment/TreatmentData.h"
#include "treatment/TreatmentDataPage.h"
#include "treatment/ui/ChartView.h"
#include "treatment/ui/PathWay.h"
#include "treatment/ui/ServiceGrid.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

// Label4 index -> field of Pacients; 1 and 3 are two views of the same field.
const QStringList NoteFields{QStringLiteral("ZabOld"), QStringLiteral("Osob"), QStringLiteral("ZabNaw"),
                             QStringLiteral("Osob"),   QStringLiteral("KrGr"), QStringLiteral("Ph"),
                             QStringLiteral("Nep")};

QLabel *valueLabel(const QString &name, QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setObjectName(name);
    label->setFrameShape(QFrame::StyledPanel);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    // A long address or note wraps instead of widening the window past a small screen.
    label->setWordWrap(true);
    label->setMinimumWidth(100);
    return label;
}

const QString UnsavedRow = QStringLiteral("Има незаписан ред на услуга.");
const QString UnsavedReferral = QStringLiteral("Има незаписано направление.");

// The one treatment window of the run.
QPointer<DenHelp> openWindow;

QGroupBox *legend(QWidget *parent)
{
    auto *box = new QGroupBox(QStringLiteral("Легенда"), parent);
    auto *lines = new QVBoxLayout(box);
    for (const QString &text : {QStringLiteral("кариес     пулпит гангрена корен обтулация"), QStringLiteral("- - - - -"),
                                QStringLiteral("С Р G  R  O"),
                                QStringLiteral("липсв.зъб коронка изк.зъб парадонтоза подвижност на зъбите"),
                                QStringLiteral("- - - - -"), QStringLiteral("E K X Pa I,II, III")}) {
        auto *line = new QLabel(text, box);
        line->setWordWrap(true);
        lines->addWidget(line);
    }
    return box;
}

} // namespace

DenHelp *DenHelp::open(const QString &egn, const QString &name, const QString &openMode, QWidget *parent)
{
    if (DenHelp *window = openWindow) {
        if (window->m_currentEgn != egn && window->mayDropTyping())
            window->load(egn, name, openMode);
        window->bringForward();
        return window;
    }
    auto *window = new DenHelp(parent);
    if (!window->load(egn, name, openMode)) {
        delete window;
        return nullptr;
    }
    openWindow = window;
    window->show();
    keepOnScreen(window);
    window->m_grid->setFocus();
    return window;
}

DenHelp::DenHelp(QWidget *parent)
    : QDialog(parent, Qt::Window)
{
    setObjectName(QStringLiteral("DenHelp"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("Картон"));
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(buildPatientFrame());
    layout->addWidget(buildServiceFrame(), 1);
    resize(1180, 720);
}

void DenHelp::bringForward()
{
    showNormal();
    raise();
    activateWindow();
}

QWidget *DenHelp::buildPatientFrame()
{
    auto *frame = new QGroupBox(QStringLiteral("Данни за пациента"), this);
    auto *notes = new QGridLayout;
    for (int i = 0; i < NoteFields.size(); ++i)
        m_notes << valueLabel(QStringLiteral("Label4_%1").arg(i), frame);
    const QList<std::pair<QString, int>> placed{{QStringLiteral("Настоящи заболявания"), 2},
                                                {QStringLiteral("Минали заболявания"), 0},
                                                {QStringLiteral("Алергия"), 6},
                                                {QStringLiteral("Особености"), 3},
                                                {QStringLiteral("Кр.гр."), 4},
                                                {QStringLiteral("Ph"), 5},
                                                {QStringLiteral("Особености"), 1}};
    for (int i = 0; i < placed.size(); ++i) {
        notes->addWidget(new QLabel(placed[i].first, frame), i % 4, (i / 4) * 2);
        notes->addWidget(m_notes[placed[i].second], i % 4, (i / 4) * 2 + 1);
    }
    m_address = valueLabel(QStringLiteral("Label2_2"), frame);
    m_telephone = valueLabel(QStringLiteral("Label2_4"), frame);
    notes->addWidget(new QLabel(QStringLiteral("Адрес:"), frame), 4, 0);
    notes->addWidget(m_address, 4, 1, 1, 3);
    notes->addWidget(new QLabel(QStringLiteral("Тел:"), frame), 5, 0);
    notes->addWidget(m_telephone, 5, 1, 1, 3);
    m_patientRecord = new QLabel(frame);
    m_patientRecord->setObjectName(QStringLiteral("Data1"));
    notes->addWidget(m_patientRecord, 6, 0, 1, 2);

    m_chart = new ChartView(frame);
    m_chart->setObjectName(QStringLiteral("Chart"));
    connect(m_chart, &ChartView::toothClicked, this, &DenHelp::toothPointed);
    m_minutes = new QLabel(frame);
    m_minutes->setObjectName(QStringLiteral("Label6"));
    QFont bold = m_minutes->font();
    bold.setBold(true);
    m_minutes->setFont(bold);
    auto *chartColumn = new QVBoxLayout;
    chartColumn->addWidget(m_chart, 1);
    chartColumn->addWidget(m_minutes);
    auto *row = new QHBoxLayout(frame);
    row->addLayout(notes, 3);
    row->addLayout(chartColumn, 4);
    row->addWidget(legend(frame), 2);
    return frame;
}

QWidget *DenHelp::buildServiceFrame()
{
    auto *frame = new QGroupBox(QStringLiteral("Столатологична помощ"), this);
    m_model = new ServiceGridModel(this);
    m_grid = new ServiceGridView(frame);
    m_grid->setModel(m_model);
    const QList<int> widths{60, 90, 220, 70, 160, 80, 70, 90};
    for (int i = 0; i < widths.size(); ++i)
        m_grid->setColumnWidth(i, widths[i]);
    m_serviceRecord = new QLabel(frame);
    m_serviceRecord->setObjectName(QStringLiteral("Data3"));
    m_check = new QCheckBox(QStringLiteral("Печат за РЗОК"), frame);
    m_check->setObjectName(QStringLiteral("Check1"));
    auto *under = new QHBoxLayout;
    under->addWidget(m_serviceRecord);
    under->addStretch();
    under->addWidget(m_check);
    auto *layout = new QVBoxLayout(frame);
    layout->addWidget(m_grid, 1);
    layout->addLayout(under);
    layout->addWidget(buildButtons());

    connect(m_model, &ServiceGridModel::rowBegun, this, &DenHelp::beginNewRow);
    connect(m_grid, &ServiceGridView::newRowKey, this, &DenHelp::beginNewRow);
    connect(m_grid, &ServiceGridView::enterPressed, this, &DenHelp::saveCurrentRow);
    connect(m_grid, &QAbstractItemView::pressed, this, [this] { m_delete->setEnabled(true); });
    connect(m_grid->selectionModel(), &QItemSelectionModel::currentChanged, this, &DenHelp::currentRowChanged);
    connect(m_check, &QCheckBox::clicked, this, &DenHelp::printMarkToggled);
    return frame;
}

QWidget *DenHelp::buildButtons()
{
    auto *bar = new QWidget(this);
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    m_update = namedButton(QStringLiteral("cmdUpdate"), QStringLiteral("Запиши"), bar);
    auto *edit = namedButton(QStringLiteral("cmdEdit"), QStringLiteral("Поправи"), bar);
    m_delete = namedButton(QStringLiteral("cmdDelete"), QStringLiteral("Изтрий"), bar);
    auto *print = namedButton(QStringLiteral("cmdPrint"), QStringLiteral("Печат"), bar);
    auto *printData = namedButton(QStringLiteral("cmdPrintData"), QStringLiteral("Печат данни..."), bar);
    auto *schedule = namedButton(QStringLiteral("cmdGrafic"), QStringLiteral("Преглед..."), bar);
    auto *referrals = namedButton(QStringLiteral("cmdParh"), QStringLiteral("Направления"), bar);
    m_close = namedButton(QStringLiteral("cmdClose"), QStringLiteral("Затвори"), bar);
    for (QPushButton *push : {m_update, edit, m_delete, print, printData, schedule, referrals, m_close})
        row->addWidget(push);
    connect(m_update, &QPushButton::clicked, this, &DenHelp::saveCurrentRow);
    connect(edit, &QPushButton::clicked, this, &DenHelp::editCurrentRow);
    connect(m_delete, &QPushButton::clicked, this, &DenHelp::deleteCurrentRow);
    connect(schedule, &QPushButton::clicked, this, &DenHelp::openSchedule);
    connect(referrals, &QPushButton::clicked, this, &DenHelp::openReferrals);
    connect(print, &QPushButton::clicked, this, &DenHelp::printSheet);
    connect(printData, &QPushButton::clicked, this, &DenHelp::printTreatmentData);
    connect(m_close, &QPushButton::clicked, this, &DenHelp::close);
    return bar;
}

bool DenHelp::load(const QString &egn, const QString &name, const QString &openMode)
{
    const QSqlDatabase clinic = store::clinicDb();
    // What can refuse the patient comes first, so that a refusal leaves the window as it was.
    const auto lines = LoadServiceLines(clinic, egn);
    if (!lines) {
        dialogs().information(lines.error());
        return false;
    }
    const auto sheet = ::SheetNumber(clinic, run().CurrentMedicCode, calendar::today());
    if (!sheet) {
        dialogs().information(sheet.error());
        return false;
    }
    delete m_referrals; // the referrals of the patient before, their typing given up already
    m_patientEgn = egn;
    m_patientName = name.trimmed();
    m_openMode = openMode;
    m_currentEgn = egn;
    m_firstName = ::FirstName(m_patientName);
    m_sheet = {run().CurrentMedicCode, sheet.value(), false};
    scheduleLink().FirstName = m_firstName;
    showHeader();
    showChart();
    m_model->setLines(lines.value());
    m_model->setNewRowDate(calendar::today());
    showMinutes(run().MinutesLeft);
    m_update->setEnabled(false);
    m_delete->setEnabled(false);
    m_close->setDefault(true);
    m_grid->setCurrentIndex(m_model->index(m_model->rowCount() - 1, KodHelpColumn));
    currentRowChanged();
    return true;
}

void DenHelp::showHeader()
{
    const auto header = LoadPatientHeader(store::clinicDb(), m_currentEgn);
    if (!header) {
        dialogs().information(header.error());
        return;
    }
    m_patientRecord->setText(recordCaption(0));
    setWindowTitle(header->found ? header->caption : QStringLiteral("Картон"));
    m_address->setText(header->address);
    m_telephone->setText(header->telephone);
    for (int i = 0; i < NoteFields.size(); ++i)
        m_notes[i]->setText(header->fields.value(NoteFields[i]).toString());
}

// A patient with no Dental row keeps an empty chart; a chart that cannot be read is said so.
void DenHelp::showChart()
{
    const auto chart = LoadChart(store::clinicDb(), m_currentEgn);
    if (!chart)
        dialogs().information(QStringLiteral("Зъбният статус на пациента не може да се покаже.") + QChar(13)
                              + chart.error());
    m_chart->setFields(chart && chart.value() ? *chart.value() : ChartFields{});
}

// A tooth pointed at on the drawn chart is typed into "Код зъб" of the row being typed or
// corrected (the new row when none is), and the cursor stays there; nothing is stored.
void DenHelp::toothPointed(int field)
{
    const QModelIndex current = m_grid->currentIndex();
    const int row = current.isValid() && m_model->isEditing(current.row()) ? current.row() : m_model->rowCount() - 1;
    const QModelIndex cell = m_model->index(row, KodZabColumn);
    m_model->setData(cell, QString::number(toothmap::toothOf(field)), Qt::EditRole);
    m_grid->setCurrentIndex(cell);
    m_grid->setFocus(Qt::MouseFocusReason);
}

QString DenHelp::unsavedTyping() const
{
    QStringList what;
    if (m_model->hasUnsavedTyping())
        what << UnsavedRow;
    if (m_referrals && m_referrals->hasUnsavedTyping())
        what << UnsavedReferral;
    return what.join(QChar(13));
}

bool DenHelp::mayDropTyping()
{
    const QString what = unsavedTyping();
    return what.isEmpty() || dialogs().question(dropTypingQuestion(what));
}

void DenHelp::showMinutes(int minutes) { m_minutes->setText(QStringLiteral("Остават: %1 мин.").arg(minutes)); }

QString DenHelp::ScheduleLink() const { return scheduleLink().ScheduleLink; }

void DenHelp::beginNewRow()
{
    m_update->setEnabled(true);
    m_close->setDefault(false);
}

void DenHelp::saveCurrentRow()
{
    const QModelIndex current = m_grid->currentIndex();
    // Only a row being typed or corrected is written; Enter on a stored row changes nothing.
    if (!current.isValid() || !m_model->isEditing(current.row()))
        return;
    const ServiceContext context{m_currentEgn, run().CurrentMedicCode, m_sheet.number, calendar::today(), m_sheet.taken};
    const ServiceLine typed = m_model->line(current.row());
    if (!unpaidLineConfirmed(context, typed, current.column()))
        return;
    const auto saved = SaveServiceLine(store::clinicDb(), context, typed, current.column());
    if (!saved) {
        dialogs().information(saved.error());
        return;
    }
    m_sheet.number = saved->line.ListID;
    m_sheet.taken = true;
    m_model->storeLine(current.row(), saved->line);
    showMinutes(saved->labelMinutes);
    m_update->setEnabled(false);
    m_close->setDefault(true);
    currentRowChanged();
    for (const QString &warning : {saved->toothWarning, saved->minutesWarning})
        if (!warning.isEmpty())
            dialogs().information(warning);
}

// A line the fund will not pay is stored only when the doctor says so; НЕ leaves the row typed.
bool DenHelp::unpaidLineConfirmed(const ServiceContext &context, const ServiceLine &line, int column)
{
    const auto question = UnpaidLineQuestion(store::clinicDb(), context, line, column);
    if (!question) {
        dialogs().information(question.error());
        return false;
    }
    return question->isEmpty() || dialogs().question(question.value());
}

void DenHelp::editCurrentRow()
{
    m_update->setEnabled(true);
    m_model->setEditing(m_grid->currentIndex().row());
}

void DenHelp::deleteCurrentRow()
{
    const QModelIndex current = m_grid->currentIndex();
    if (!current.isValid())
        return;
    const ServiceLine line = m_model->line(current.row());
    if (line.id != 0) {
        if (const Outcome deleted = DeleteServiceLine(store::clinicDb(), line.id); !deleted) {
            dialogs().information(deleted.error());
            return;
        }
    }
    m_model->dropLine(current.row());
    m_grid->setCurrentIndex(m_model->index(std::min(current.row(), m_model->rowCount() - 1), current.column()));
    currentRowChanged();
}

void DenHelp::currentRowChanged()
{
    const int row = m_grid->currentIndex().row();
    m_serviceRecord->setText(recordCaption(m_model->isNewRow(row) ? -1 : row));
    const ServiceLine line = m_model->line(row);
    m_check->setChecked(line.printMark.value_or(line.ZK));
}

void DenHelp::printMarkToggled(bool marked) { m_model->setPrintMark(m_grid->currentIndex().row(), marked); }

void DenHelp::openSchedule()
{
    scheduleLink().ScheduleLink = QStringLiteral("1");
    scheduleLink().FirstName = m_firstName;
    Grafic::open(this);
}

void DenHelp::openReferrals()
{
    if (!m_referrals)
        m_referrals = PathWay::open(m_currentEgn, &m_sheet, this);
    m_referrals->show();
    m_referrals->raise();
    m_referrals->activateWindow();
}

// The sheet takes the lines as stored: typing not yet stored is asked about first, since the
// grid is read afresh after the print.
void DenHelp::printSheet()
{
    if (!mayDropTyping())
        return;
    print::PageDescription sheet;
    const auto printed = PrintSheet(store::clinicDb(), m_currentEgn, SheetMarks::Change,
                                    [&sheet](const print::PageDescription &made) {
                                        sheet = made;
                                        return Outcome::success();
                                    });
    if (!printed) {
        dialogs().information(printed.error());
        return;
    }
    for (int n = 0; n < printed->shortenedCodes; ++n)
        dialogs().information(LongCodeWarning);
    if (const auto lines = LoadServiceLines(store::clinicDb(), m_currentEgn)) {
        m_model->setLines(lines.value());
        currentRowChanged();
    }
    // Closing the sheet closes the treatment window with it.
    auto *preview = print::PrintPreview::showForm(sheet, this);
    connect(preview, &QDialog::finished, this, &DenHelp::close);
}

// The treatment data print reads what is stored; it changes nothing, so typing may stay.
void DenHelp::printTreatmentData()
{
    const auto data = treatmentdata::LoadTreatmentData(store::clinicDb(), m_currentEgn);
    if (!data) {
        dialogs().information(data.error());
        return;
    }
    print::PrintPreview::showForm(treatmentdata::TreatmentDataPage(data.value()), this);
}

void DenHelp::reject()
{
    if (!m_model->hasUnsavedTyping() || !dialogs().question(dropTypingQuestion(UnsavedRow)))
        return;
    const auto lines = LoadServiceLines(store::clinicDb(), m_currentEgn);
    if (!lines) {
        dialogs().information(lines.error());
        return;
    }
    const int row = m_grid->currentIndex().row();
    m_model->setLines(lines.value());
    m_grid->setCurrentIndex(m_model->index(std::min(row, m_model->rowCount() - 1), KodHelpColumn));
    m_update->setEnabled(false);
    m_close->setDefault(true);
    currentRowChanged();
}

void DenHelp::closeEvent(QCloseEvent *event)
{
    if (!mayDropTyping()) {
        event->ignore();
        return;
    }
    delete m_referrals; // its typing was given up with the question
    if (openWindow == this)
        openWindow = nullptr; // deleted only later; the next call opens a new window
    emit closed(m_openMode);
    // Not QDialog::closeEvent: that would run reject(), which is Escape's here.
    event->accept();
}
