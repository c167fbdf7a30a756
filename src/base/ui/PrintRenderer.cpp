#include "base/ui/PrintRenderer.h"

#include "base/PrintOffsets.h"
#include "base/PrintOutput.h"
#include "base/ui/DrawingPainter.h"

#include <QDir>
#include <QFileInfo>
#include <QFontMetricsF>
#include <QPageLayout>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <QTextLayout>

#include <algorithm>

namespace print {
namespace {

constexpr double MmPerInch = 25.4;

// Millimetres of the form to pixels of the device.
class DeviceScale final
{
public:
    explicit DeviceScale(const QPaintDevice &device)
        : m_perMm(device.logicalDpiX() / MmPerInch)
        , m_perMmY(device.logicalDpiY() / MmPerInch)
    {
    }

    double x(double mm) const { return mm * m_perMm; }
    double y(double mm) const { return mm * m_perMmY; }
    QRectF rect(const QRectF &mm) const { return {x(mm.x()), y(mm.y()), x(mm.width()), y(mm.height())}; }
    QPointF point(const QPointF &mm) const { return {x(mm.x()), y(mm.y())}; }

private:
    double m_perMm;
    double m_perMmY;
};

QString withoutTrailingBlanks(QString text)
{
    while (text.endsWith(u' '))
        text.chop(1);
    return text;
}

QString cutToWidth(QString text, const QFontMetricsF &metrics, double width)
{
    text = withoutTrailingBlanks(text);
    while (!text.isEmpty() && metrics.horizontalAdvance(text) > width)
        text.chop(1);
    return withoutTrailingBlanks(text);
}

QStringList wrappedLines(const QString &text, const QFont &font, QPaintDevice &device, double width, int room)
{
    QTextLayout layout(text, font, &device);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    QStringList lines;
    layout.beginLayout();
    while (lines.size() < room) {
        QTextLine line = layout.createLine();
        if (!line.isValid())
            break;
        line.setLineWidth(width);
        lines << withoutTrailingBlanks(text.mid(line.textStart(), line.textLength()));
    }
    layout.endLayout();
    return lines;
}

QPen penOf(const PageItem &item, const DeviceScale &scale)
{
    QPen pen(Qt::black);
    pen.setWidthF(std::max(1.0, scale.x(item.penWidth)));
    return pen;
}

void drawText(QPainter &painter, const PageItem &item, const DeviceScale &scale)
{
    const QRectF area = scale.rect(item.rect);
    painter.setFont(fontOf(item));
    const QStringList lines = fittedLines(item, *painter.device());
    const double lineHeight = QFontMetricsF(painter.font(), painter.device()).lineSpacing();
    const double block = lineHeight * lines.size();
    double top = area.top();
    if (item.alignment & Qt::AlignVCenter)
        top += (area.height() - block) / 2.0;
    else if (item.alignment & Qt::AlignBottom)
        top += area.height() - block;
    const Qt::Alignment horizontal = item.alignment & Qt::AlignHorizontal_Mask;
    painter.save();
    painter.setClipRect(area); // a glyph wider than the whole box still stays inside it
    for (const QString &line : lines) {
        painter.drawText(QRectF(area.left(), top, area.width(), lineHeight), int(horizontal | Qt::AlignVCenter), line);
        top += lineHeight;
    }
    painter.restore();
}

void drawDigitBoxes(QPainter &painter, const PageItem &item, const DeviceScale &scale, bool withRuling)
{
    const QRectF area = scale.rect(item.rect);
    const double cellWidth = area.width() / std::max(1, item.cells);
    painter.setFont(fontOf(item));
    for (int cell = 0; cell < item.cells; ++cell) {
        const QRectF cellArea(area.left() + cell * cellWidth, area.top(), cellWidth, area.height());
        if (withRuling) {
            painter.setPen(penOf(item, scale));
            painter.drawRect(cellArea);
        }
        painter.setPen(Qt::black);
        painter.drawText(cellArea, Qt::AlignCenter, item.cellText(cell).trimmed());
    }
}

void drawItem(QPainter &painter, const PageItem &item, const DeviceScale &scale, const RenderOptions &options)
{
    if (item.ruling && !options.withRuling)
        return;
    switch (item.kind) {
    case ItemKind::Text:
        painter.setPen(Qt::black);
        drawText(painter, item, scale);
        break;
    case ItemKind::Line:
        painter.setPen(penOf(item, scale));
        painter.drawLine(scale.point(item.rect.topLeft()), scale.point(item.rect.bottomRight()));
        break;
    case ItemKind::Box:
        painter.setPen(penOf(item, scale));
        painter.drawRect(scale.rect(item.rect));
        break;
    case ItemKind::Frame:
        painter.setPen(penOf(item, scale));
        painter.drawRoundedRect(scale.rect(item.rect), scale.x(1.0), scale.y(1.0));
        break;
    case ItemKind::DigitBoxes:
        drawDigitBoxes(painter, item, scale, options.withRuling);
        break;
    case ItemKind::Picture:
        if (item.picture)
            drawing::paint(painter, *item.picture, scale.rect(item.rect), options.grey);
        break;
    }
}

QString unwritable(const QString &path)
{
    return QStringLiteral("Файлът „%1“ не може да бъде записан: папката му липсва или в нея не може да се пише. "
                          "Изберете друго място.")
        .arg(QDir::toNativeSeparators(path));
}

} // namespace

QFont fontOf(const PageItem &item)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPointSizeF(item.fontSize);
    font.setBold(item.bold);
    return font;
}

QStringList fittedLines(const PageItem &item, QPaintDevice &device)
{
    const DeviceScale scale(device);
    const QFont font = fontOf(item);
    const QFontMetricsF metrics(font, &device);
    const double width = scale.x(item.rect.width());
    const int room = std::max(1, int(scale.y(item.rect.height()) / metrics.lineSpacing()));
    if (!item.wrap || room == 1)
        return {cutToWidth(item.text.section(u'\n', 0, 0), metrics, width)};
    return wrappedLines(item.text, font, device, width, room);
}

Outcome render(const QList<Page> &pages, const QSizeF &sizeMm, QPagedPaintDevice &device, const RenderOptions &options)
{
    QPageLayout layout(QPageSize(sizeMm, QPageSize::Millimeter), QPageLayout::Portrait, QMarginsF());
    layout.setMode(QPageLayout::FullPageMode);
    device.setPageLayout(layout);
    QPainter painter;
    if (!painter.begin(&device))
        return Outcome::failure(QStringLiteral("Печатът не може да започне: принтерът или файлът не е достъпен."));
    const DeviceScale scale(device);
    for (int n = 0; n < pages.size(); ++n) {
        if (n > 0)
            device.newPage();
        for (const PageItem &item : pages.at(n).shifted(options.offsetMm).items)
            drawItem(painter, item, scale, options);
    }
    painter.end();
    return Outcome::success();
}

Outcome render(const PageDescription &form, QPagedPaintDevice &device, const RenderOptions &options)
{
    return render(form.pages(), form.size, device, options);
}

Outcome writePdf(const PageDescription &form, const QString &path, const RenderOptions &options)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return Outcome::failure(unwritable(path));
    {
        QPdfWriter writer(&file);
        writer.setResolution(300);
        writer.setTitle(form.formName);
        writer.setCreator(QStringLiteral("Velmorata"));
        const Outcome drawn = render(form, writer, options);
        if (!drawn) {
            file.cancelWriting();
            return drawn;
        }
    }
    if (!file.commit())
        return Outcome::failure(unwritable(path));
    return Outcome::success();
}

void installPdfWriter()
{
    setPdfWriter([](const PageDescription &form, const QString &path) {
        return writePdf(form, path, {offsetOf(form.formName), true});
    });
}

} // namespace print
