#pragma once

#include "treatment/Referrals.h"

#include <QDialog>

class QPushButton;
class QTableView;
class ReferralGridModel;

// "Издадени направления": the referrals issued to the patient of the treatment window, three
// kinds in three grids. A save stamps the row with the patient and the treatment window's sheet,
// taking its number when no line took it yet. Rows typed and not saved survive the save or
// delete of another row; closing over them asks first.
class PathWay final : public QDialog
{
    Q_OBJECT
public:
    // `sheet` is the treatment window's, which owns the referrals window and outlives it.
    static PathWay *open(const QString &currentEgn, OpeningSheet *sheet, QWidget *parent);

    bool hasUnsavedTyping() const;

public slots:
    void reject() override; // Escape closes, asking as the close box does

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    struct Grid
    {
        ReferralGridModel *model;
        QTableView *view;
        QPushButton *save;
        QPushButton *remove;
    };

    PathWay(const QString &currentEgn, OpeningSheet *sheet, QWidget *parent);
    QWidget *buildGrid(ReferralKind kind, const QString &name, const QString &suffix);
    void reload(Grid &grid);
    void focusGrid(int which);
    void save(int which);
    void remove(int which);
    void enableButtons(int which, bool enabled);

    QString m_egn;
    OpeningSheet *m_sheet;
    QList<Grid> m_grids;
};
