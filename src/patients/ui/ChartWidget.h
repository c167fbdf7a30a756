#pragma once

#include "patients/Chart.h"

#include <QList>
#include <QWidget>

class MouthView;
class QCheckBox;
class QLineEdit;

// The chart half of the patient card: two jaws of tooth inputs, the milk input lying over its
// permanent twin, the twenty boxes with their milk numbers, the tooth numbers and the legend,
// and beside them the drawn mouth. The inputs show a Chart; every rule runs there and the
// widgets are redrawn from it. The drawing follows every keystroke; a click on a drawn tooth
// puts the cursor into the input its place shows.
class ChartWidget final : public QWidget
{
    Q_OBJECT
public:
    explicit ChartWidget(QWidget *parent = nullptr);

    QStringList texts() const { return m_chart.texts(); }
    void setTexts(const QStringList &texts);
    void ResetChartBoxes();
    void comeToFront();
    // An input of the personal data was left: the entry codes of the chart are translated.
    void personalInputLeft();
    // The chart inputs in tab order (upper row, then lower row), for the card's tab chain.
    QList<QWidget *> tabOrder() const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void buildJaw(class QGridLayout *grid, bool upper, int firstRow);
    QWidget *buildLegend();
    QLineEdit *makeInput(int field);
    QWidget *makeBox(int box);
    void redraw();
    void redrawMouth();
    void focusTooth(int field);

    Chart m_chart;
    QList<QLineEdit *> m_inputs;   // index field-1
    QList<QCheckBox *> m_boxes;    // index box-1
    MouthView *m_mouth = nullptr;
    bool m_redrawing = false;
};
