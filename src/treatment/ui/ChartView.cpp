#include "treatment/ui/ChartView.h"

#include "patients/ToothMap.h"
#include "patients/ui/MouthView.h"

#include <QGridLayout>
#include <QVBoxLayout>
#include <QLabel>

namespace {

const QString UpperCaption = QStringLiteral(
    "18     17    16     15    14    13     12    11       21   22     23     24    25    26     27    28");
const QString LowerCaption = QStringLiteral(
    "48    47    46     45    44    43     42    41       31    32    33     34    35    36     37    38");

QLabel *cellLabel(int index, QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setObjectName(QStringLiteral("Label5_%1").arg(index));
    label->setFrameShape(QFrame::Box);
    label->setAlignment(Qt::AlignCenter);
    label->setMinimumSize(26, 22);
    return label;
}

} // namespace

ChartView::ChartView(QWidget *parent)
    : QWidget(parent)
{
    m_mouth = new MouthView(this);
    m_mouth->setObjectName(QStringLiteral("Mouth"));
    connect(m_mouth, &MouthView::toothClicked, this, &ChartView::toothClicked);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(buildCells());
    layout->addWidget(m_mouth, 1);
}

QWidget *ChartView::buildCells()
{
    auto *cells = new QWidget(this);
    auto *grid = new QGridLayout(cells);
    grid->setSpacing(2);
    grid->setContentsMargins(0, 0, 0, 0);
    auto *upper = new QLabel(UpperCaption, cells);
    auto *lower = new QLabel(LowerCaption, cells);
    grid->addWidget(upper, 0, 0, 1, 16);
    grid->addWidget(lower, 5, 0, 1, 16);
    for (int i = 0; i < 32; ++i) {
        m_cells << cellLabel(i, cells);
        grid->addWidget(m_cells.last(), i < 16 ? 2 : 3, i % 16);
    }
    // A milk number stands beside the cell it can take over: above the upper row, below the lower.
    const QList<int> &upperRow = toothmap::upperRow();
    const QList<int> &lowerRow = toothmap::lowerRow();
    for (int field = 1; field <= toothmap::BoxCount; ++field) {
        const toothmap::Position &milk = toothmap::position(field);
        auto *label = new QLabel(QString::number(milk.tooth), cells);
        label->setObjectName(QStringLiteral("Label1_%1").arg(field - 1));
        label->setAlignment(Qt::AlignCenter);
        label->setStyleSheet(QStringLiteral("color: #a05000;"));
        label->hide();
        m_milk << label;
        const bool up = upperRow.contains(milk.twinField);
        grid->addWidget(label, up ? 1 : 4, int((up ? upperRow : lowerRow).indexOf(milk.twinField)));
    }
    return cells;
}

void ChartView::setFields(const ChartFields &fields)
{
    setPicture(BuildChartPicture(fields));
    QStringList texts;
    for (int field = 1; field <= toothmap::FieldCount; ++field)
        texts << fields.value(toothmap::fieldName(field));
    m_mouth->setPicture(mouth::drawMouth(texts));
}

void ChartView::setPicture(const ChartPicture &picture)
{
    for (int i = 0; i < 16; ++i) {
        m_cells[i]->setText(picture.upper.value(i));
        m_cells[16 + i]->setText(picture.lower.value(i));
    }
    for (int i = 0; i < m_milk.size(); ++i)
        m_milk[i]->setVisible(picture.milkShown.value(i));
}
