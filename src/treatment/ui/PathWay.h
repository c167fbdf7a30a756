#pragma once

#include "treatment/Referrals.h"

#include <QDialog>

class QPushButton;
class QTableView;
class ReferralGridModel;

// "Издадени направления": the referrals issued to the patient of the treatment window, three
// kinds in three grids. A save stamps the row with the patient and the window's present sheet.
class PathWay final : public QDialog
{
    Q_OBJECT
public:
    static PathWay *open(const QString &currentEgn, const QString &sheetNumber, QWidget *parent = nullptr);

private:
    struct Grid
    {
        ReferralGridModel *model;
        QTableView *view;
        QPushButton *save;
        QPushButton *remove;
    };

    PathWay(const QString &currentEgn, const QString &sheetNumber, QWidget *parent);
    QWidget *buildGrid(ReferralKind kind, const QString &name, const QString &suffix);
    void reload(Grid &grid);
    void focusGrid(int which);
    void save(int which);
    void remove(int which);
    void enableButtons(int which, bool enabled);

    QString m_egn;
    QString m_sheetNumber;
    QList<Grid> m_grids;
};
