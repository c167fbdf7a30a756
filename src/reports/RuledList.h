#pragma once

#include "base/Page.h"

#include <QList>
#include <QRectF>

#include <span>

// The ruled list of an A4 report: columns under a heading row, one text row after another, as
// the activity report and the check's list print them.
namespace reports::ruledlist {

inline constexpr double Left = 15.0;
inline constexpr double Width = 180.0;
inline constexpr double RowHeight = 6.0;

struct Column final
{
    const char *name; // the item name of the column's cell in each row: "Text1", ...
    const char *head;
    double x;
    double width;
    Qt::Alignment alignment = Qt::AlignLeft;
};

// The cell of a column in a row, `top` and `height` within the row.
QRectF CellRect(const Column &column, double top, double height);
// The heading row: a rule above, the column heads ("Head" + the column's name) in bold, a rule below.
QList<print::PageItem> Heads(std::span<const Column> columns);

} // namespace reports::ruledlist
