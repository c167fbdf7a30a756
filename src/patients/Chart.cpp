#include "patients/Chart.h"

#include "patients/ChartCodes.h"
#include "patients/ToothMap.h"

Chart::Chart()
    : m_texts(toothmap::FieldCount, QString())
{
    ResetChartBoxes();
}

void Chart::setTexts(const QStringList &texts)
{
    for (int field = 1; field <= toothmap::FieldCount; ++field)
        m_texts[field - 1] = texts.value(field - 1);
}

void Chart::ShowToothField(int show, int hide)
{
    m_shown[hide - 1] = false;
    m_shown[show - 1] = true;
}

void Chart::MoveToothEntry(int target, int source)
{
    setText(target, text(source));
    setText(source, QString());
    ShowToothField(target, source);
}

void Chart::ResetChartBoxes()
{
    for (int field = 1; field <= toothmap::FieldCount; ++field)
        m_shown[field - 1] = !toothmap::position(field).milk;
    for (int box = 1; box <= toothmap::BoxCount; ++box) {
        m_boxes[box - 1] = false;
        ShowToothField(toothmap::permanentFieldOfBox(box), toothmap::milkFieldOfBox(box));
    }
}

void Chart::comeToFront()
{
    // A place with an empty milk field keeps its box and inputs as they are.
    for (int box = 1; box <= toothmap::BoxCount; ++box) {
        const int milk = toothmap::milkFieldOfBox(box);
        if (text(milk).trimmed().isEmpty())
            continue;
        m_boxes[box - 1] = true;
        ShowToothField(milk, toothmap::permanentFieldOfBox(box));
    }
}

void Chart::boxFocusIn(int box) { m_lastBoxState = boxOn(box) ? 1 : 0; }

void Chart::boxFocusOut(int box)
{
    const int milk = toothmap::milkFieldOfBox(box);
    const int permanent = toothmap::permanentFieldOfBox(box);
    if (boxOn(box) && m_lastBoxState == 0)
        MoveToothEntry(milk, permanent);
    else if (!boxOn(box) && m_lastBoxState == 1)
        MoveToothEntry(permanent, milk);
}

void Chart::inputLeft(int field)
{
    if (field > 0)
        setText(field, text(field).toUpper());
    // A "*" anywhere in the chart turns the place just left to milk when it has a box: the
    // rule looks at the whole chart but acts on the input that was left.
    const bool leftBoxedPermanent = field > 0 && !toothmap::position(field).milk && toothmap::position(field).box > 0;
    for (int walked = 1; walked <= toothmap::FieldCount; ++walked) {
        const QString typed = text(walked);
        setText(walked, chartcodes::translate(typed));
        const bool milkMark = typed == QStringLiteral("00") || typed == chartcodes::MilkMark;
        if (milkMark && leftBoxedPermanent) {
            const int box = toothmap::position(field).box;
            boxFocusIn(box);
            setBoxOn(box, true);
            boxFocusOut(box);
        }
    }
}
