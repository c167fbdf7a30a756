#pragma once

#include "treatment/ChartPicture.h"

#include <QList>
#include <QWidget>

class QLabel;

// The read-only chart of the treatment window: 32 cells (Label5) under and above the tooth
// numbers, and the twenty milk-tooth numbers (Label1) that appear beside the cells they take over.
class ChartView final : public QWidget
{
    Q_OBJECT
public:
    explicit ChartView(QWidget *parent = nullptr);
    void setPicture(const ChartPicture &picture);

private:
    QList<QLabel *> m_cells; // upper row then lower row
    QList<QLabel *> m_milk;  // Z1..Z20
};
