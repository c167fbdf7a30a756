#include "treatment/ui/ServiceGrid.h"

#include "patients/ServiceColumns.h"
#include "store/Dates.h"

#include <QHeaderView>
#include <QKeyEvent>

ServiceGridModel::ServiceGridModel(QObject *parent)
    : QAbstractTableModel(parent)
{
}

void ServiceGridModel::setLines(const QList<ServiceLine> &lines)
{
    beginResetModel();
    m_lines = lines;
    m_editing = QList<bool>(lines.size(), false);
    m_newLine = {};
    m_newBegun = false;
    endResetModel();
}

int ServiceGridModel::rowCount(const QModelIndex &parent) const { return parent.isValid() ? 0 : int(m_lines.size()) + 1; }

int ServiceGridModel::columnCount(const QModelIndex &parent) const { return parent.isValid() ? 0 : ServiceColumnCount; }

ServiceLine ServiceGridModel::line(int row) const { return isNewRow(row) ? m_newLine : m_lines.value(row); }

bool ServiceGridModel::isEditing(int row) const { return isNewRow(row) ? m_newBegun : m_editing.value(row); }

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
    if (isNewRow(row)) {
        if (!m_newBegun) {
            m_newBegun = true;
            if (m_newRowDate.isValid())
                m_newLine.Data = dates::toTyped(m_newRowDate);
            emit rowBegun();
        }
        m_newLine.setCell(index.column(), value.toString());
    } else {
        m_lines[row].setCell(index.column(), value.toString());
        m_editing[row] = true;
    }
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
    if (isNewRow(row) || row < 0 || row >= m_lines.size())
        return;
    m_editing[row] = true;
    emit headerDataChanged(Qt::Vertical, row, row);
}

void ServiceGridModel::setPrintMark(int row, bool marked)
{
    if (isNewRow(row)) {
        m_newLine.printMark = marked;
        return;
    }
    if (row < 0 || row >= m_lines.size())
        return;
    m_lines[row].printMark = marked;
    setEditing(row);
    emit dataChanged(index(row, ZkColumn), index(row, ZkColumn));
}

void ServiceGridModel::storeLine(int row, const ServiceLine &saved)
{
    if (isNewRow(row)) {
        beginInsertRows({}, row, row); // the stored row takes the place of the new row, a fresh one follows
        m_lines << saved;
        m_editing << false;
        m_newLine = {};
        m_newBegun = false;
        endInsertRows();
    } else {
        m_lines[row] = saved;
        m_editing[row] = false;
    }
    emit dataChanged(index(row, 0), index(row + 1, ServiceColumnCount - 1));
    emit headerDataChanged(Qt::Vertical, row, row + 1);
}

void ServiceGridModel::dropRow(int row)
{
    if (isNewRow(row)) {
        m_newLine = {};
        m_newBegun = false;
        emit dataChanged(index(row, 0), index(row, ServiceColumnCount - 1));
        emit headerDataChanged(Qt::Vertical, row, row);
        return;
    }
    beginRemoveRows({}, row, row);
    m_lines.removeAt(row);
    m_editing.removeAt(row);
    endRemoveRows();
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
