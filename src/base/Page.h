#pragma once

// A printed form as plain data: what stands where on each sheet of paper, in millimetres from
// the top-left corner of the page. Nothing here paints; the renderer (base/ui/PrintRenderer.h)
// draws a description onto a printer or a PDF, and tests read it as it is.
//
// Building a form:
//
//     print::PageDescription form(QStringLiteral("rprKarton"), print::A4);
//     form.items << print::text(QStringLiteral("Label4"), {20, 30, 90, 6}, names);
//     form.items << print::digitBoxes(QStringLiteral("Label1"), {120, 12, 60, 6}, SpreadNarrow(egn), 1);
//     form.band.top = 120;       // the detail band: header, then rows, down to band.bottom
//     form.band.bottom = 280;
//     form.band.header << print::text(QStringLiteral("Head1"), {10, 0, 30, 6}, QStringLiteral("Дата"));
//     form.band.headerHeight = 6;
//     form.band.rowHeight = 6;
//     form.band.rows << QList<print::PageItem>{print::text(QStringLiteral("Text1"), {10, 0, 30, 6}, date)};
//     const QList<print::Page> pages = form.pages();
//     pages.first().textAt(QStringLiteral("Label4"));          // the patient's names
//     pages.first().textAt(print::rowItemName(QStringLiteral("Text1"), 0)); // first row's date
//
// Every item carries a name, unique on its page, so that a test can find it. Items of the
// form's own ruling (lines, boxes, printed captions) are marked `ruling`: on the fund's
// pre-printed paper only the data is printed.

#include "base/Drawing.h"

#include <QDate>
#include <QList>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <memory>

namespace print {

inline constexpr QSizeF A4{210.0, 297.0};
inline constexpr QSizeF A5{148.0, 210.0};

enum class ItemKind {
    Text,       // `text` inside `rect`: wrapped (when `wrap`) or cut at the box's edges
    Line,       // from rect.topLeft() to rect.bottomRight()
    Box,        // a ruled cell of the form
    Frame,      // a heavier outline drawn around something (a milk tooth on the chart)
    DigitBoxes, // `cells` ruled cells side by side with `text` laid one character per cell
    Picture,    // `picture` scaled whole into `rect`
};

struct PageItem final
{
    QString name;
    ItemKind kind = ItemKind::Text;
    QRectF rect; // mm
    QString text;
    double fontSize = 9.0; // points
    bool bold = false;
    Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter;
    bool wrap = false;
    // DigitBoxes: the number of cells, and the blanks between two characters of `text` (the gap
    // of SpreadNarrow is 1, of SpreadWide 2): character k of the cells is text[k * (gap + 1)].
    int cells = 0;
    int gap = 0;
    double penWidth = 0.25; // mm, for lines, boxes and frames
    bool ruling = false;    // part of the blank form rather than of the data
    std::shared_ptr<const drawing::Drawing> picture; // Picture

    // The characters of a DigitBoxes item, one per cell (a blank for an empty cell).
    QString cellText(int cell) const;
};

// Builders for the common items.
PageItem text(const QString &name, const QRectF &rect, const QString &value, double fontSize = 9.0,
              Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter);
PageItem caption(const QString &name, const QRectF &rect, const QString &value, double fontSize = 7.0);
PageItem wrapped(const QString &name, const QRectF &rect, const QString &value, double fontSize = 9.0);
PageItem line(const QString &name, const QPointF &from, const QPointF &to, double penWidth = 0.25);
PageItem box(const QString &name, const QRectF &rect, double penWidth = 0.25);
PageItem frame(const QString &name, const QRectF &rect, double penWidth = 0.5);
PageItem digitBoxes(const QString &name, const QRectF &rect, const QString &value, int gap, int cells = 10);
PageItem picture(const QString &name, const QRectF &rect, drawing::Drawing value);

// One printed sheet.
class Page final
{
public:
    QList<PageItem> items;

    const PageItem *item(const QString &name) const; // nullptr when the page has no such item
    bool has(const QString &name) const { return item(name) != nullptr; }
    QString textAt(const QString &name) const;        // empty when the page has no such item
    // The same page moved by `offset` mm, as a printer that feeds a little off needs it.
    Page shifted(const QPointF &offset) const;
};

// The rows of a list that runs over as many pages as it needs, with its header on each.
struct DetailBand final
{
    double top = 0.0;    // mm from the top of the page: where the header starts
    double bottom = 0.0; // mm: no row reaches below this line
    double headerHeight = 0.0;
    QList<PageItem> header; // placed relative to `top`, repeated on every page
    double rowHeight = 6.0;
    QList<QList<PageItem>> rows; // each placed relative to its row's top

    int rowsPerPage() const;
};

// The name an item of detail row `row` (counted from 0 over the whole list) has on its page.
QString rowItemName(const QString &name, int row);
// The name of the page number that a form of more than one page carries on each page.
inline const QString PageNumberItem = QStringLiteral("PageNumber");

class PageDescription final
{
public:
    PageDescription() = default;
    PageDescription(QString formName, QSizeF size);

    QString formName; // the report's name; it also keys the form's printer offset
    // What a PDF of it is offered as: the form as the practice calls it ("Амбулаторен лист")
    // and whose it is (the patient, the doctor); empty where the form's name is all there is.
    QString title;
    QString whose;
    QSizeF size = A4; // mm
    QList<PageItem> items; // on every page
    DetailBand band;
    // Only the first page carries the items, and the band starts on later pages at
    // `continuationTop` (a form whose head is printed once). False: the items repeat.
    bool headOnFirstPageOnly = false;
    double continuationTop = 15.0;

    // The sheets of paper, at least one: the items, the band's header and as many rows as fit,
    // and "Стр. n от m" at the foot when there is more than one.
    QList<Page> pages() const;
    // "<title> <whose> <YYYY-MM-DD>.pdf" for a print made on `day`, or "<formName>.pdf" without
    // a title; characters that a file name cannot hold on the practice's computers become "_".
    QString pdfFileName(const QDate &day) const;
};

} // namespace print
