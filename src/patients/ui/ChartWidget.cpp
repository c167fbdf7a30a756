#include "patients/ui/ChartWidget.h"

#include "patients/ToothMap.h"
#include "patients/ui/FocusLeaving.h"
#include "patients/ui/MouthView.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace {

// The tooth numbers over the upper row and under the lower row, as the card has always printed them.
const QString UpperCaption =
    QStringLiteral("18     17      16      15      14     13      12      11        21     22      23      24     25      26      27     28");
const QString LowerCaption =
    QStringLiteral("48     47     46      45      44      43      42     41        31      32     33      34     35      36      37      38");

const QStringList LegendLines{
    QStringLiteral("1 8 9 4 2 3"),
    QStringLiteral("- - - - - -"),
    QStringLiteral("кариес     пулпит гангрена корен обтулация липсв.зъб"),
    QStringLiteral("5 6 0 7 01 02 03"),
    QStringLiteral("- - - - - - -"),
    QStringLiteral("коронка  изк.зъб парадонтоза фрактура             I ст.подвижост   II ст.подвижност III ст.подвижност"),
};

} // namespace

ChartWidget::ChartWidget(QWidget *parent)
    : QWidget(parent)
{
    for (int field = 1; field <= toothmap::FieldCount; ++field)
        m_inputs << makeInput(field);
    auto *jaws = new QGridLayout;
    jaws->setHorizontalSpacing(3);
    jaws->setVerticalSpacing(2);
    buildJaw(jaws, true, 0);
    buildJaw(jaws, false, 3);
    auto *fields = new QVBoxLayout;
    fields->addLayout(jaws);
    fields->addWidget(buildLegend());
    fields->addStretch();
    m_mouth = new MouthView(this);
    m_mouth->setObjectName(QStringLiteral("Mouth"));
    connect(m_mouth, &MouthView::toothClicked, this, &ChartWidget::focusTooth);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(fields);
    layout->addWidget(m_mouth, 1);
    redraw();
}

QLineEdit *ChartWidget::makeInput(int field)
{
    auto *input = new QLineEdit(this);
    input->setObjectName(toothmap::fieldName(field));
    input->setAlignment(Qt::AlignCenter);
    input->setMinimumWidth(34);
    const bool milk = toothmap::position(field).milk;
    input->setStyleSheet(milk ? QStringLiteral("background: #c0c0c0; color: red;")
                              : QStringLiteral("background: #c0c0c0; color: black;"));
    input->setToolTip(QString::number(toothmap::toothOf(field)));
    input->installEventFilter(this);
    connect(input, &QLineEdit::textEdited, this, [this, field](const QString &text) {
        m_chart.setText(field, text);
        redrawMouth();
    });
    return input;
}

QWidget *ChartWidget::makeBox(int box)
{
    auto *cell = new QWidget(this);
    auto *row = new QHBoxLayout(cell);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(1);
    auto *check = new QCheckBox(cell);
    check->setObjectName(QStringLiteral("Check%1").arg(box));
    check->installEventFilter(this);
    connect(check, &QCheckBox::toggled, this, [this, box](bool on) {
        if (m_redrawing)
            return;
        m_chart.setBoxOn(box, on);
        redrawMouth();
    });
    auto *milkNumber = new QLabel(QString::number(toothmap::toothOf(toothmap::milkFieldOfBox(box))), cell);
    milkNumber->setObjectName(QStringLiteral("Label2_%1").arg(box));
    QFont small = milkNumber->font();
    small.setPointSizeF(small.pointSizeF() * 0.8);
    milkNumber->setFont(small);
    milkNumber->setStyleSheet(QStringLiteral("color: red;"));
    row->addWidget(check);
    row->addWidget(milkNumber);
    m_boxes << check;
    return cell;
}

void ChartWidget::buildJaw(QGridLayout *grid, bool upper, int firstRow)
{
    // Upper jaw: boxes, numbers, inputs; lower jaw: inputs, numbers, boxes.
    const int boxRow = upper ? firstRow : firstRow + 2;
    const int numberRow = firstRow + 1;
    const int inputRow = upper ? firstRow + 2 : firstRow;
    const QStringList numbers = (upper ? UpperCaption : LowerCaption).split(u' ', Qt::SkipEmptyParts);
    for (int column = 0; column < numbers.size(); ++column) {
        auto *number = new QLabel(numbers.at(column), this);
        number->setAlignment(Qt::AlignCenter);
        grid->addWidget(number, numberRow, column);
    }
    const int firstBox = upper ? 1 : 11;
    for (int box = firstBox; box < firstBox + 10; ++box)
        grid->addWidget(makeBox(box), boxRow, toothmap::columnOf(toothmap::permanentFieldOfBox(box)), Qt::AlignCenter);
    for (int field = 1; field <= toothmap::FieldCount; ++field)
        if (toothmap::position(field).upper == upper)
            grid->addWidget(m_inputs.at(field - 1), inputRow, toothmap::columnOf(field));
}

QWidget *ChartWidget::buildLegend()
{
    auto *legend = new QWidget(this);
    auto *layout = new QVBoxLayout(legend);
    layout->setContentsMargins(0, 4, 0, 0);
    layout->setSpacing(0);
    auto *heading = new QLabel(QStringLiteral("Легенда"), legend);
    QFont bold = heading->font();
    bold.setBold(true);
    heading->setFont(bold);
    layout->addWidget(heading);
    // The two blocks one under the other, to leave the width beside them to the drawn mouth.
    auto *blocks = new QVBoxLayout;
    blocks->setSpacing(6);
    for (int block = 0; block < 2; ++block) {
        auto *lines = new QVBoxLayout;
        lines->setSpacing(0);
        for (int line = 0; line < 3; ++line) {
            auto *label = new QLabel(LegendLines.at(block * 3 + line), legend);
            label->setObjectName(QStringLiteral("Legend%1").arg(block * 3 + line + 1));
            lines->addWidget(label);
        }
        blocks->addLayout(lines);
    }
    blocks->addStretch();
    layout->addLayout(blocks);
    return legend;
}

void ChartWidget::setTexts(const QStringList &texts)
{
    m_chart.setTexts(texts);
    redraw();
}

void ChartWidget::ResetChartBoxes()
{
    m_chart.ResetChartBoxes();
    redraw();
}

void ChartWidget::comeToFront()
{
    m_chart.comeToFront();
    redraw();
}

void ChartWidget::personalInputLeft()
{
    m_chart.inputLeft(0);
    redraw();
}

QList<QWidget *> ChartWidget::tabOrder() const
{
    QList<QWidget *> order;
    for (const QList<int> *row : {&toothmap::upperRow(), &toothmap::lowerRow()})
        for (int permanent : *row) {
            const int twin = toothmap::position(permanent).twinField;
            if (twin > 0)
                order << m_inputs.at(twin - 1);
            order << m_inputs.at(permanent - 1);
        }
    return order;
}

bool ChartWidget::eventFilter(QObject *watched, QEvent *event)
{
    if (m_redrawing)
        return QWidget::eventFilter(watched, event);
    if (auto *input = qobject_cast<QLineEdit *>(watched); input && isFocusLeaving(event)) {
        const int field = int(m_inputs.indexOf(input)) + 1;
        m_chart.setText(field, input->text());
        m_chart.inputLeft(field);
        redraw();
    } else if (auto *box = qobject_cast<QCheckBox *>(watched)) {
        const int number = int(m_boxes.indexOf(box)) + 1;
        if (isFocusArriving(event)) {
            m_chart.boxFocusIn(number);
        } else if (isFocusLeaving(event)) {
            m_chart.boxFocusOut(number);
            redraw();
        }
    }
    return QWidget::eventFilter(watched, event);
}

void ChartWidget::redraw()
{
    m_redrawing = true;
    for (int field = 1; field <= toothmap::FieldCount; ++field) {
        QLineEdit *input = m_inputs.at(field - 1);
        if (input->text() != m_chart.text(field))
            input->setText(m_chart.text(field));
        // Show before hiding the twin, so that the focus never has to leave the place.
        if (m_chart.isShown(field)) {
            input->setEnabled(true);
            input->setVisible(true);
        }
    }
    for (int field = 1; field <= toothmap::FieldCount; ++field)
        if (!m_chart.isShown(field)) {
            m_inputs.at(field - 1)->setVisible(false);
            m_inputs.at(field - 1)->setEnabled(false);
        }
    for (int box = 1; box <= toothmap::BoxCount; ++box)
        m_boxes.at(box - 1)->setChecked(m_chart.boxOn(box));
    m_redrawing = false;
    redrawMouth();
}

void ChartWidget::redrawMouth()
{
    mouth::MilkPlaces milk{};
    for (int box = 1; box <= toothmap::BoxCount; ++box)
        milk[box - 1] = m_chart.boxOn(box);
    m_mouth->setPicture(mouth::drawMouth(m_chart.texts(), milk));
}

// Only one input of a place can be reached: a click on either tooth of it lands in that one.
void ChartWidget::focusTooth(int field)
{
    const int twin = toothmap::position(field).twinField;
    const int shown = m_chart.isShown(field) || twin == 0 ? field : twin;
    m_inputs.at(shown - 1)->setFocus(Qt::MouseFocusReason);
}
