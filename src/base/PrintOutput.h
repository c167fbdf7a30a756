#pragma once

#include "base/Page.h"
#include "store/Result.h"

#include <functional>

// How logic without screens (the command line, the month-end work) gets a form onto a PDF
// file. Drawing needs the GUI library, so the renderer installs itself here when the program
// starts one of those runs (print::installPdfWriter() in base/ui/PrintRenderer.h); until then
// writing a PDF fails with a message.
namespace print {

using PdfWriter = std::function<Outcome(const PageDescription &form, const QString &path)>;

void setPdfWriter(PdfWriter writer);
// Writes the form with its offset, whole or not at all.
Outcome writeFormPdf(const PageDescription &form, const QString &path);

} // namespace print
