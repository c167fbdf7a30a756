#include "reports/ui/Schet.h"

#include "base/Dialogs.h"
#include "base/UnsavedTyping.h"
#include "base/ui/NamedButton.h"
#include "base/ui/WindowPlacement.h"
#include "store/Dates.h"
#include "store/Sql.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QStandardItemModel>
#include <QTableView>
#include <QVBoxLayout>

namespace {

enum Column { DateColumn, CodeColumn, ServiceColumn, PriceColumn, FlagColumn, EgnColumn, ColumnCount };

const QString UnsavedMark = QStringLiteral("Отметката на реда не е записана.");

// A price as the grid shows it: plain currency without the unit.
QString priceText(qint64 cents)
{
    return QStringLiteral("%1.%2").arg(cents / 100).arg(std::abs(cents % 100), 2, 10, QChar(u'0'));
}

QStandardItem *readOnly(const QString &text)
{
    auto *item = new QStandardItem(text);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    return item;
}

QLabel *valueLabel(int index, QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setObjectName(QStringLiteral("Label1_%1").arg(index));
    label->setFrameShape(QFrame::StyledPanel);
    label->setMinimumWidth(110);
    return label;
}

} // namespace

Schet *Schet::open(QWidget *parent, const reports::Period &period)
{
    if (Schet *form = openWindow()) {
        if (!form->tickChanged() || dialogs().question(dropTypingQuestion(UnsavedMark)))
            form->load(period);
        bringForward(form);
        return form;
    }
    Schet *form = adopt(new Schet(period, parent));
    form->setAttribute(Qt::WA_DeleteOnClose);
    keepOnScreen(form);
    form->show();
    return form;
}

Schet::Schet(const reports::Period &period, QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("Schet"));
    setWindowTitle(QStringLiteral("Осчетоводяване"));
    auto *side = new QVBoxLayout;
    side->addWidget(buildCurrentLine());
    side->addWidget(buildSums());
    side->addStretch();
    side->addWidget(buildButtons());
    auto *layout = new QHBoxLayout(this);
    layout->addWidget(buildLines(), 3);
    layout->addLayout(side, 1);
    load(period);
    resize(1000, 600);
}

QWidget *Schet::buildLines()
{
    auto *panel = new QWidget(this);
    auto *column = new QVBoxLayout(panel);
    column->setContentsMargins(0, 0, 0, 0);
    m_model = new QStandardItemModel(0, ColumnCount, this);
    m_model->setHorizontalHeaderLabels({QStringLiteral("Дата"), QStringLiteral("Код"), QStringLiteral("Услуга"),
                                        QStringLiteral("Цена"), QStringLiteral("Зав."), QStringLiteral("ЕГН")});
    m_grid = new QTableView(panel);
    m_grid->setObjectName(QStringLiteral("DBGrid1"));
    m_grid->setModel(m_model);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    // Fixed widths: measuring the contents of a long period's lines would take a while.
    const int widths[ColumnCount] = {90, 55, 0, 70, 45, 100};
    for (int column = 0; column < ColumnCount; ++column)
        m_grid->setColumnWidth(column, widths[column]);
    m_grid->horizontalHeader()->setSectionResizeMode(ServiceColumn, QHeaderView::Stretch);
    m_record = new QLabel(panel);
    m_record->setObjectName(QStringLiteral("Data1"));
    column->addWidget(m_grid, 1);
    column->addWidget(m_record);
    connect(m_grid->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex &current) { rowSelected(current.row()); });
    connect(m_model, &QStandardItemModel::itemChanged, this, &Schet::gridTicked);
    return panel;
}

QWidget *Schet::buildCurrentLine()
{
    auto *frame = new QGroupBox(this);
    auto *grid = new QGridLayout(frame);
    const QList<std::pair<int, QString>> shown{
        {0, QStringLiteral("Дата")}, {1, QStringLiteral("Услуга")}, {2, QStringLiteral("Цена")}};
    for (const auto &[index, caption] : shown) {
        m_values[index] = valueLabel(index, frame);
        m_values[index]->setWordWrap(true);
        grid->addWidget(new QLabel(caption, frame), index, 0);
        grid->addWidget(m_values[index], index, 1);
    }
    m_flag = new QCheckBox(QStringLiteral("Осчетоводяване"), frame);
    m_flag->setObjectName(QStringLiteral("chkFields"));
    grid->addWidget(m_flag, 3, 1);
    connect(m_flag, &QCheckBox::toggled, this, &Schet::boxTicked);
    return frame;
}

QWidget *Schet::buildSums()
{
    auto *frame = new QGroupBox(this);
    auto *grid = new QGridLayout(frame);
    const QList<std::pair<int, QString>> sums{
        {5, QStringLiteral("Всичко")}, {3, QStringLiteral("Заведени")}, {4, QStringLiteral("Оставащи")}};
    int row = 0;
    for (const auto &[index, caption] : sums) {
        m_values[index] = valueLabel(index, frame);
        m_values[index]->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        grid->addWidget(new QLabel(caption, frame), row, 0);
        grid->addWidget(m_values[index], row++, 1);
    }
    return frame;
}

QWidget *Schet::buildButtons()
{
    auto *panel = new QWidget(this);
    auto *row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 0, 0, 0);
    m_update = namedButton(QStringLiteral("cmdUpdate"), QStringLiteral("Запиши"), panel,
                           QStringLiteral("Записва отметката на реда"));
    auto *close = namedButton(QStringLiteral("cmdClose"), QStringLiteral("Затвори"), panel,
                              QStringLiteral("Затваря прозореца"));
    row->addWidget(m_update);
    row->addWidget(close);
    connect(m_update, &QPushButton::clicked, this, &Schet::saveCurrent);
    connect(close, &QPushButton::clicked, this, &Schet::closeStoring);
    return panel;
}

// The sums are counted once here; from then on each save moves the booked sum.
void Schet::load(const reports::Period &period)
{
    for (QLabel *label : m_values)
        label->clear();
    m_record->clear();
    m_book = {};
    auto loaded = accounting::LoadBookPeriod(store::clinicDb(), period);
    if (!loaded)
        dialogs().information(loaded.error());
    else
        m_book = loaded.value();
    m_noData = m_book.lines.isEmpty();
    if (loaded && m_noData)
        dialogs().information(accounting::NoDataMessage);
    m_update->setEnabled(!m_noData);
    fillGrid();
    if (!m_noData)
        showSums();
}

void Schet::fillGrid()
{
    m_moving = true;
    m_current = -1;
    m_model->removeRows(0, m_model->rowCount());
    for (const accounting::BookLine &line : m_book.lines) {
        auto *flag = readOnly({});
        flag->setFlags(flag->flags() | Qt::ItemIsUserCheckable);
        flag->setCheckState(line.Schet ? Qt::Checked : Qt::Unchecked);
        m_model->appendRow({readOnly(dates::toTyped(line.Data)), readOnly(line.KodHelp), readOnly(line.TextHelp),
                            readOnly(priceText(line.cents)), flag, readOnly(line.EGN)});
    }
    m_moving = false;
    if (!m_noData)
        m_grid->setCurrentIndex(m_model->index(0, FlagColumn));
}

void Schet::showRow(int row)
{
    m_current = row;
    const accounting::BookLine &line = m_book.lines.at(row);
    m_values[0]->setText(dates::toTyped(line.Data));
    m_values[1]->setText(line.KodHelp + u' ' + line.TextHelp);
    m_values[2]->setText(priceText(line.cents));
    m_moving = true;
    m_flag->setChecked(shownFlag(row));
    m_moving = false;
    m_record->setText(QStringLiteral("Record: %1").arg(row + 1));
}

void Schet::showSums()
{
    m_values[5]->setText(accounting::LevaText(m_book.sums.totalCents));
    m_values[3]->setText(accounting::LevaText(m_book.sums.bookedCents));
    m_values[4]->setText(accounting::LevaText(m_book.sums.remainingCents()));
}

bool Schet::shownFlag(int row) const { return m_model->item(row, FlagColumn)->checkState() == Qt::Checked; }

bool Schet::tickChanged() const { return m_current >= 0 && shownFlag(m_current) != m_book.lines.at(m_current).Schet; }

void Schet::rowSelected(int row)
{
    if (m_moving || row < 0 || row == m_current)
        return;
    if (tickChanged() && !saveCurrent()) {
        // Stay on the line whose mark could not be stored.
        m_moving = true;
        m_grid->setCurrentIndex(m_model->index(m_current, FlagColumn));
        m_moving = false;
        return;
    }
    showRow(row);
}

void Schet::gridTicked(QStandardItem *item)
{
    if (m_moving || item->column() != FlagColumn || item->row() != m_current)
        return;
    m_moving = true;
    m_flag->setChecked(item->checkState() == Qt::Checked);
    m_moving = false;
}

void Schet::boxTicked(bool on)
{
    if (m_moving || m_current < 0)
        return;
    m_moving = true;
    m_model->item(m_current, FlagColumn)->setCheckState(on ? Qt::Checked : Qt::Unchecked);
    m_moving = false;
}

// Stores the mark of the current line and moves the booked sum by its price: up when the mark
// is on, down when it is off, even when it did not change.
bool Schet::saveCurrent()
{
    if (m_current < 0 || m_noData)
        return false;
    accounting::BookLine &line = m_book.lines[m_current];
    const bool flag = shownFlag(m_current);
    if (const Outcome saved = accounting::SaveBooking(store::clinicDb(), line.ID, flag); !saved) {
        dialogs().information(saved.error());
        return false;
    }
    line.Schet = flag;
    m_book.sums.countSave(line.cents, flag);
    showSums();
    return true;
}

// "Затвори" leaves the line as any move does: a changed mark is stored first.
void Schet::closeStoring()
{
    if (!tickChanged() || saveCurrent())
        accept();
}

// Escape and the close box never store: over a changed mark they ask first.
void Schet::reject()
{
    if (tickChanged() && !dialogs().question(dropTypingQuestion(UnsavedMark)))
        return;
    QDialog::reject();
}
