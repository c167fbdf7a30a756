#pragma once

#include <QWidget>

class QLabel;
class QSqlQueryModel;
class QTableView;

// "Стоматологична помощ": every service line of one patient, read-only, shown beside the
// patient card while it is open for correction.
class ViewHelp final : public QWidget
{
    Q_OBJECT
public:
    explicit ViewHelp(const QString &egn, QWidget *parent = nullptr);

    // Opens the history of the patient with `egn`, not modal.
    static ViewHelp *open(const QString &egn, QWidget *parent = nullptr);

    int rowCount() const;

protected:
    // Placed beside the card, it is moved in where the card stands near the screen's edge.
    void showEvent(QShowEvent *event) override;

private:
    void showPosition(int row);

    QSqlQueryModel *m_model;
    QTableView *m_grid;
    QLabel *m_caption;
};
