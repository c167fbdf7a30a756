#include "admin/ui/Cenoraz.h"

#include "base/ui/NamedButton.h"

#include "base/Dialogs.h"
#include "base/UnsavedTyping.h"
#include "base/ui/TypingTableView.h"
#include "base/ui/WindowPlacement.h"
#include "store/Sql.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableView>
#include <QVBoxLayout>

void Cenoraz::open(QWidget *parent) { execOnce(parent); }

Cenoraz::Cenoraz(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("Cenoraz"));
    setWindowTitle(QStringLiteral("Ценоразпис"));
    m_model = new QStandardItemModel(0, 3, this);
    m_model->setHorizontalHeaderLabels({QStringLiteral("Код"), QStringLiteral("Вид манулация"), QStringLiteral("Цена")});
    m_list = new TypingTableView(this);
    m_list->setObjectName(QStringLiteral("DBGrid1"));
    m_list->setModel(m_model);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    m_record = new QLabel(this);
    m_record->setObjectName(QStringLiteral("Data1"));
    auto *left = new QVBoxLayout;
    left->addWidget(m_list, 1);
    left->addWidget(m_record);
    auto *right = new QVBoxLayout;
    right->addWidget(buildForm());
    right->addStretch();
    right->addWidget(buildButtons());
    auto *layout = new QHBoxLayout(this);
    layout->addLayout(left, 3);
    layout->addLayout(right, 2);
    connect(m_list->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex &current) { rowSelected(current.row()); });
    connect(m_name, &QLineEdit::editingFinished, this, &Cenoraz::nameLeft);
    reload(0);
    resize(820, 520);
}

QWidget *Cenoraz::buildForm()
{
    auto *form = new QWidget(this);
    auto *fields = new QFormLayout(form);
    m_code = new QLabel(form);
    m_code->setObjectName(QStringLiteral("Label2"));
    m_codeBox = new QLineEdit(form);
    m_codeBox->setObjectName(QStringLiteral("Text1_0"));
    m_codeBox->setEnabled(false);
    m_name = new QLineEdit(form);
    m_name->setObjectName(QStringLiteral("Text2"));
    m_price = new QLineEdit(form);
    m_price->setObjectName(QStringLiteral("Text1_1"));
    m_fullName = new QLabel(form);
    m_fullName->setObjectName(QStringLiteral("Label1_4"));
    m_fullName->setWordWrap(true);
    m_fullName->setFrameShape(QFrame::StyledPanel);
    fields->addRow(QStringLiteral("Код"), m_code);
    fields->addRow(QString(), m_codeBox);
    fields->addRow(QStringLiteral("Манипулация"), m_name);
    fields->addRow(QStringLiteral("Цена"), m_price);
    fields->addRow(QStringLiteral("Пълно име"), m_fullName);
    return form;
}

QWidget *Cenoraz::buildButtons()
{
    auto *bar = new QWidget(this);
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    auto *add = namedButton(QStringLiteral("cmdAdd"), QStringLiteral("Добави"), bar, QStringLiteral("Добавя празен ред в ценоразписа"));
    auto *remove = namedButton(QStringLiteral("cmdDelete"), QStringLiteral("Изтрий"), bar, QStringLiteral("Изтрива ред от ценоразписа"));
    auto *update = namedButton(QStringLiteral("cmdUpdate"), QStringLiteral("Запиши"), bar, QStringLiteral("Записва промените в ценоразписа"));
    auto *close = namedButton(QStringLiteral("cmdClose"), QStringLiteral("Затвори"), bar, QStringLiteral("Затваря прозореца"));
    // The list's rows come with the database: adding and removing stay off.
    add->setEnabled(false);
    remove->setEnabled(false);
    for (QPushButton *push : {add, remove, update, close})
        row->addWidget(push);
    connect(update, &QPushButton::clicked, this, &Cenoraz::save);
    connect(close, &QPushButton::clicked, this, &Cenoraz::closeStoring);
    return bar;
}

void Cenoraz::reload(int row)
{
    const auto rows = LoadPriceList(store::clinicDb());
    if (!rows) {
        dialogs().information(rows.error());
        return;
    }
    m_rows = rows.value();
    m_moving = true;
    m_model->removeRows(0, m_model->rowCount());
    for (const PriceRow &price : m_rows)
        m_model->appendRow({new QStandardItem(price.KodHelp), new QStandardItem(price.TextHelp),
                            new QStandardItem(price.CenaHelp)});
    m_current = -1;
    m_moving = false;
    if (!m_rows.isEmpty())
        m_list->setCurrentIndex(m_model->index(std::clamp(row, 0, int(m_rows.size()) - 1), 0));
}

void Cenoraz::showRow(int row)
{
    m_current = row;
    const PriceRow price = m_rows.value(row);
    m_code->setText(price.KodHelp);
    m_codeBox->setText(price.KodHelp);
    m_name->setText(price.TextHelp);
    m_price->setText(price.CenaHelp);
    m_fullName->setText(price.FullHelp);
    m_record->setText(QStringLiteral("Запис: %1").arg(row + 1));
}

bool Cenoraz::rowChanged() const
{
    if (m_current < 0)
        return false;
    const PriceRow &stored = m_rows.at(m_current);
    return m_name->text() != stored.TextHelp || m_price->text() != stored.CenaHelp;
}

// As with any row being left: a corrected name or price is stored first.
bool Cenoraz::commitChanges()
{
    if (!rowChanged())
        return true;
    PriceRow price = m_rows.at(m_current);
    price.TextHelp = TrimmedPriceName(m_name->text());
    price.CenaHelp = m_price->text();
    if (const Outcome saved = SavePriceRow(store::clinicDb(), price); !saved) {
        dialogs().information(saved.error());
        return false;
    }
    m_rows[m_current] = price;
    m_model->item(m_current, 1)->setText(price.TextHelp);
    m_model->item(m_current, 2)->setText(price.CenaHelp);
    return true;
}

void Cenoraz::rowSelected(int row)
{
    if (m_moving || row == m_current)
        return;
    if (!commitChanges()) {
        // Stay on the row whose correction could not be stored.
        m_moving = true;
        m_list->setCurrentIndex(m_model->index(m_current, 0));
        m_moving = false;
        return;
    }
    showRow(row);
}

// "Затвори" leaves the row as any move does: a corrected name or price is stored first, and one
// that cannot be stored keeps the list open with the message.
void Cenoraz::closeStoring()
{
    nameLeft();
    if (commitChanges())
        accept();
}

// Escape and the close box never store: over a correction they ask before it is given up.
void Cenoraz::reject()
{
    if (rowChanged() && !dialogs().question(dropTypingQuestion(QStringLiteral("Поправката на реда не е записана."))))
        return;
    QDialog::reject();
}

void Cenoraz::nameLeft() { m_name->setText(TrimmedPriceName(m_name->text())); }

void Cenoraz::save()
{
    if (m_current < 0)
        return;
    nameLeft();
    if (commitChanges())
        showRow(m_current); // the row just saved stays current
}
