#pragma once

#include "base/ui/OneWindow.h"
#include "reports/Period.h"
#include "reports/forms/Accounting.h"

#include <QDialog>

class QCheckBox;
class QLabel;
class QPushButton;
class QStandardItem;
class QStandardItemModel;
class QTableView;

// "Осчетоводяване": the lines of a period, of every doctor, marked booked one by one, with the
// running totals in leva of what is booked and what remains. Only the mark can be changed.
// Leaving a line with a changed mark stores it as "Запиши" does; Escape and the close box ask.
class Schet final : public QDialog, public OneWindow<Schet>
{
    Q_OBJECT
    friend class OneWindow<Schet>;

public:
    // Shows the form for the period, not modally. While it is open a second call loads the new
    // period into it (asking first when a changed mark is not stored) and brings it forward.
    static Schet *open(QWidget *parent, const reports::Period &period);

    explicit Schet(const reports::Period &period, QWidget *parent = nullptr);

    void reject() override;

private:
    QWidget *buildLines();
    QWidget *buildCurrentLine();
    QWidget *buildSums();
    QWidget *buildButtons();
    void load(const reports::Period &period);
    void fillGrid();
    void showRow(int row);
    void showSums();
    void rowSelected(int row);
    void gridTicked(QStandardItem *item);
    void boxTicked(bool on);
    bool shownFlag(int row) const;
    bool tickChanged() const;
    bool saveCurrent();
    void closeStoring();

    accounting::BookPeriod m_book;
    int m_current = -1;
    bool m_noData = false;
    bool m_moving = false;
    QStandardItemModel *m_model = nullptr;
    QTableView *m_grid = nullptr;
    QLabel *m_values[6] = {}; // Label1 by index
    QCheckBox *m_flag = nullptr;
    QLabel *m_record = nullptr;
    QPushButton *m_update = nullptr;
};
