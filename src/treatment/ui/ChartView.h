#pragma once

#include "treatment/ChartPicture.h"

#include <QList>
#include <QWidget>

class MouthView;
class QLabel;

// The read-only chart of the treatment window: 32 cells (Label5) under and above the tooth
// numbers, the twenty milk-tooth numbers (Label1) that appear beside the cells they take over,
// and under them the drawn mouth, whose teeth can be clicked.
class ChartView final : public QWidget
{
    Q_OBJECT
public:
    explicit ChartView(QWidget *parent = nullptr);
    // The patient's fields; empty for a patient without a chart.
    void setFields(const ChartFields &fields);

signals:
    void toothClicked(int field);

private:
    QWidget *buildCells();
    void setPicture(const ChartPicture &picture);

    MouthView *m_mouth = nullptr;
    QList<QLabel *> m_cells; // upper row then lower row
    QList<QLabel *> m_milk;  // Z1..Z20
};
