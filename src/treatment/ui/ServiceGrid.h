#pragma once

#include "base/ui/StoredRowsModel.h"
#include "base/ui/TypingTableView.h"
#include "treatment/ServiceEntry.h"

#include <QDate>

// The patient's service lines for the grid of the treatment window, with the new row at the
// bottom. A row is written only by the save; typing into a row (or "Поправи") puts it into
// edit mode, and only a row in edit mode is saved.
class ServiceGridModel final : public StoredRowsModel<ServiceLine>
{
    Q_OBJECT
public:
    explicit ServiceGridModel(QObject *parent = nullptr);

    void setLines(const QList<ServiceLine> &lines) { resetRows(lines); }
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    // A row begun or put into correction and not saved yet is in edit mode.
    bool isEditing(int row) const { return isTyped(row); }
    ServiceLine line(int row) const { return isNewRow(row) || isStoredRow(row) ? shownRow(row) : ServiceLine{}; }
    void setEditing(int row);
    void setPrintMark(int row, bool marked);
    // The row after a successful save: stored, out of edit mode.
    void storeLine(int row, const ServiceLine &saved);
    // Drops the row from the grid (deleted, or the new row discarded).
    void dropLine(int row);
    // The date a begun row starts with.
    void setNewRowDate(const QDate &date) { m_newRowDate = date; }

signals:
    void rowBegun(); // the user started typing into the new row

private:
    QDate m_newRowDate;
};

// DBGrid1: Enter saves, also while a cell is being edited; "(" (character 40) acts as the
// beginning of a new row does.
class ServiceGridView final : public TypingTableView
{
    Q_OBJECT
public:
    explicit ServiceGridView(QWidget *parent = nullptr);

signals:
    void enterPressed();
    void newRowKey();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint) override;
};
