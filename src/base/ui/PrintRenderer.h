#pragma once

// Draws page descriptions (base/Page.h) onto anything that takes pages: a QPrinter for paper,
// the print preview, a QPdfWriter. Sizes are the description's millimetres; texts are set in
// DejaVu Sans, which has the Cyrillic letters, and never leave their boxes.
//
//     const auto written = print::writePdf(form, QStringLiteral("/tmp/sheet.pdf"),
//                                          {print::offsetOf(form.formName), true});
//     if (!written) show(written.error());

#include "base/Page.h"
#include "store/Result.h"

#include <QFont>
#include <QPointF>
#include <QStringList>

class QPagedPaintDevice;
class QPaintDevice;

namespace print {

struct RenderOptions final
{
    QPointF offsetMm;       // the form's printer offset (base/PrintOffsets.h)
    bool withRuling = true; // false on the fund's pre-printed paper: the data alone
    bool grey = false;      // pictures in the greys of a black-and-white printer
};

// One sheet of the device per page. The device takes the form's paper size, margins of none.
Outcome render(const PageDescription &form, QPagedPaintDevice &device, const RenderOptions &options = {});
Outcome render(const QList<Page> &pages, const QSizeF &sizeMm, QPagedPaintDevice &device,
               const RenderOptions &options = {});
// The form as a PDF file, written whole under a temporary name and then renamed, or not at all.
Outcome writePdf(const PageDescription &form, const QString &path, const RenderOptions &options = {});

// Makes writeFormPdf() of base/PrintOutput.h draw through this renderer, with each form's
// offset and its ruling.
void installPdfWriter();

QFont fontOf(const PageItem &item);
// The lines a text item is drawn in on `device`: broken at word ends (a word too long for the
// box anywhere) when the item wraps, else one line cut at the box's width, and no more lines
// than the box's height holds. Trailing blanks are dropped.
QStringList fittedLines(const PageItem &item, QPaintDevice &device);

} // namespace print
