#include "treatment/ui/ServiceGrid.h"

#include "patients/ServiceColumns.h"
#include "store/Dates.h"

#include <QHeaderView>
#include <QKeyEvent>

ServiceGridModel::ServiceGridModel(QObject *parent)
    : StoredRowsModel<ServiceLine>(parent)
{
}

int ServiceGridModel::columnCount(const QModelIndex &parent) const { return parent.isValid() ? 0 : ServiceColumnCount; }

QVariant ServiceGridModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const ServiceLine shown = line(index.row());
    if (index.column() == ZkColumn) {
        if (role == Qt::CheckStateRole && !isNewRow(index.row()))
            return shown.printMark.value_or(shown.ZK) ? Qt::Checked : Qt::Unchecked;
        return {};
    }
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        return shown.cell(index.column());
    return {};
}

bool ServiceGridModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!index.isValid() || role != Qt::EditRole || index.column() == ZkColumn)
        return false;
    const int row = index.row();
    const bool begins = isNewRow(row) && !isTyped(row);
    ServiceLine &typed = typedRow(row);
    if (begins) {
        if (m_newRowDate.isValid())
            typed.Data = dates::toTyped(m_newRowDate);
        emit rowBegun();
    }
    typed.setCell(index.column(), value.toString());
    emit dataChanged(this->index(row, 0), this->index(row, ServiceColumnCount - 1));
    emit headerDataChanged(Qt::Vertical, row, row);
    return true;
}

Qt::ItemFlags ServiceGridModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    const Qt::ItemFlags base = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    return index.column() == ZkColumn ? base : base | Qt::ItemIsEditable;
}

QVariant ServiceGridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole)
        return {};
    if (orientation == Qt::Horizontal)
        return treatmentGridColumns().value(section).caption;
    if (isNewRow(section))
        return QStringLiteral("*");
    return isEditing(section) ? QStringLiteral("✎") : QString();
}

void ServiceGridModel::setEditing(int row)
{
    if (!isStoredRow(row))
        return;
    (void)typedRow(row);
    emit headerDataChanged(Qt::Vertical, row, row);
}

void ServiceGridModel::setPrintMark(int row, bool marked)
{
    if (!isNewRow(row) && !isStoredRow(row))
        return;
    rowAt(row).printMark = marked;
    if (isNewRow(row))
        return;
    setEditing(row);
    emit dataChanged(index(row, ZkColumn), index(row, ZkColumn));
}

void ServiceGridModel::storeLine(int row, const ServiceLine &saved)
{
    storeRow(row, saved); // a stored new row takes the place of the new row, a fresh one follows
    emit headerDataChanged(Qt::Vertical, row, row + 1);
}

void ServiceGridModel::dropLine(int row)
{
    const bool newRow = isNewRow(row);
    dropRow(row);
    if (newRow)
        emit headerDataChanged(Qt::Vertical, row, row);
}

ServiceGridView::ServiceGridView(QWidget *parent)
    : TypingTableView(parent)
{
    setObjectName(QStringLiteral("DBGrid1"));
    setSelectionBehavior(QAbstractItemView::SelectItems);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::AnyKeyPressed | QAbstractItemView::DoubleClicked
                    | QAbstractItemView::EditKeyPressed);
    setTabKeyNavigation(true);
    // Two header lines: the captions wrap.
    horizontalHeader()->setDefaultAlignment(Qt::Alignment(Qt::AlignCenter | Qt::TextWordWrap));
    horizontalHeader()->setMinimumHeight(2 * fontMetrics().height() + 8);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
}

void ServiceGridView::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        // While a cell is edited the delegate commits it first and closeEditor() saves.
        if (state() != QAbstractItemView::EditingState)
            emit enterPressed();
        event->accept();
        return;
    }
    if (event->text() == u"(")
        emit newRowKey();
    QTableView::keyPressEvent(event);
}

void ServiceGridView::closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint)
{
    TypingTableView::closeEditor(editor, hint);
    // The delegate ends an edit with this hint only for Enter: the cell is committed, now save.
    if (hint == QAbstractItemDelegate::SubmitModelCache)
        emit enterPressed();
}
