#include "base/PrintOutput.h"

namespace print {
namespace {

PdfWriter &installed()
{
    static PdfWriter writer;
    return writer;
}

} // namespace

void setPdfWriter(PdfWriter writer) { installed() = std::move(writer); }

Outcome writeFormPdf(const PageDescription &form, const QString &path)
{
    if (!installed())
        return Outcome::failure(QStringLiteral("Печатът в PDF не е достъпен в тази програма."));
    return installed()(form, path);
}

} // namespace print
