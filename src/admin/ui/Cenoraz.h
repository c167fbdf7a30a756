#pragma once

#include "admin/PriceList.h"
#include "base/ui/OneWindow.h"

#include <QDialog>

class QLabel;
class QLineEdit;
class QStandardItemModel;
class QTableView;

// "Ценоразпис": the practice's own price list. The rows come with the database; the name and
// the price of a row can be corrected, nothing can be added or removed.
class Cenoraz final : public QDialog, public OneWindow<Cenoraz>
{
    Q_OBJECT
    friend class OneWindow<Cenoraz>;

public:
    // Shows the list modally over the main window and returns when it is closed; while it is
    // open a second call only brings it forward.
    static void open(QWidget *parent = nullptr);

    explicit Cenoraz(QWidget *parent = nullptr);

    void reject() override;

private:
    QWidget *buildForm();
    QWidget *buildButtons();
    void reload(int row);
    void showRow(int row);
    bool rowChanged() const;
    bool commitChanges();
    void rowSelected(int row);
    void nameLeft();
    void save();
    void closeStoring();

    QList<PriceRow> m_rows;
    int m_current = -1;
    QStandardItemModel *m_model = nullptr;
    QTableView *m_list = nullptr;
    QLabel *m_code = nullptr;
    QLineEdit *m_codeBox = nullptr;
    QLineEdit *m_name = nullptr;
    QLineEdit *m_price = nullptr;
    QLabel *m_fullName = nullptr;
    QLabel *m_record = nullptr;
    bool m_moving = false;
};
