#pragma once

#include <QAbstractTableModel>
#include <QList>

// The rows a grid shows from the store, with the new row at the bottom: a row is written only by
// its save, and until then what was typed into it stays in the grid, marked as typed. The
// service grid and the referral grids are models of this kind; each says how its columns show
// and take a row.
template <typename Row>
class StoredRowsModel : public QAbstractTableModel
{
  public:
    using QAbstractTableModel::QAbstractTableModel;

    int rowCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : int(m_rows.size()) + 1;
    }
    bool isNewRow(int row) const { return row == m_rows.size(); }
    // A row typed into (the new row begun, or a stored row changed) and not saved.
    bool hasUnsavedTyping() const { return m_newBegun || m_typed.contains(true); }
    bool isTyped(int row) const { return isNewRow(row) ? m_newBegun : m_typed.value(row); }

  protected:
    // The rows as stored, none typed into.
    void resetRows(const QList<Row> &rows)
    {
        beginResetModel();
        m_rows = rows;
        m_typed = QList<bool>(rows.size(), false);
        m_new = {};
        m_newBegun = false;
        endResetModel();
    }

    const Row &shownRow(int row) const { return isNewRow(row) ? m_new : m_rows.at(row); }
    // A row to change without marking it typed.
    Row &rowAt(int row) { return isNewRow(row) ? m_new : m_rows[row]; }
    bool isStoredRow(int row) const { return row >= 0 && row < m_rows.size(); }

    // The row that typing changes, marked as typed: the new row is then begun.
    Row &typedRow(int row)
    {
        if (isNewRow(row)) {
            m_newBegun = true;
            return m_new;
        }
        m_typed[row] = true;
        return m_rows[row];
    }

    // The row after its save: stored, typing done; a saved new row is followed by a fresh one.
    void storeRow(int row, const Row &saved)
    {
        if (isNewRow(row)) {
            // The stored row comes in where the new row was, which moves down by one with the
            // cursor on it, and is then emptied for the next row.
            beginInsertRows({}, row, row);
            m_rows << saved;
            m_typed << false;
            endInsertRows();
            m_new = {};
            m_newBegun = false;
        } else if (isStoredRow(row)) {
            m_rows[row] = saved;
            m_typed[row] = false;
        }
        emit dataChanged(index(row, 0), index(row + 1, columnCount() - 1));
    }

    // Takes a row out of the grid: a stored row that was deleted, or the new row's typing.
    void dropRow(int row)
    {
        if (isNewRow(row)) {
            m_new = {};
            m_newBegun = false;
            emit dataChanged(index(row, 0), index(row, columnCount() - 1));
            return;
        }
        if (!isStoredRow(row))
            return;
        beginRemoveRows({}, row, row);
        m_rows.removeAt(row);
        m_typed.removeAt(row);
        endRemoveRows();
    }

  private:
    QList<Row> m_rows;
    QList<bool> m_typed;
    Row m_new;
    bool m_newBegun = false;
};
