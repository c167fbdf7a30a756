#include "base/Page.h"

#include <algorithm>
#include <cmath>

namespace print {

QString PageItem::cellText(int cell) const
{
    const int at = cell * (gap + 1);
    return at < text.size() ? text.mid(at, 1) : QStringLiteral(" ");
}

PageItem text(const QString &name, const QRectF &rect, const QString &value, double fontSize, Qt::Alignment alignment)
{
    PageItem item;
    item.name = name;
    item.rect = rect;
    item.text = value;
    item.fontSize = fontSize;
    item.alignment = alignment;
    return item;
}

PageItem caption(const QString &name, const QRectF &rect, const QString &value, double fontSize)
{
    PageItem item = text(name, rect, value, fontSize, Qt::AlignLeft | Qt::AlignTop);
    item.wrap = true;
    item.ruling = true;
    return item;
}

PageItem wrapped(const QString &name, const QRectF &rect, const QString &value, double fontSize)
{
    PageItem item = text(name, rect, value, fontSize, Qt::AlignLeft | Qt::AlignTop);
    item.wrap = true;
    return item;
}

PageItem line(const QString &name, const QPointF &from, const QPointF &to, double penWidth)
{
    PageItem item;
    item.name = name;
    item.kind = ItemKind::Line;
    item.rect = QRectF(from, to);
    item.penWidth = penWidth;
    item.ruling = true;
    return item;
}

PageItem box(const QString &name, const QRectF &rect, double penWidth)
{
    PageItem item;
    item.name = name;
    item.kind = ItemKind::Box;
    item.rect = rect;
    item.penWidth = penWidth;
    item.ruling = true;
    return item;
}

PageItem frame(const QString &name, const QRectF &rect, double penWidth)
{
    PageItem item = box(name, rect, penWidth);
    item.kind = ItemKind::Frame;
    item.ruling = false; // a frame says something about the data
    return item;
}

PageItem digitBoxes(const QString &name, const QRectF &rect, const QString &value, int gap, int cells)
{
    PageItem item = text(name, rect, value, 9.0, Qt::AlignCenter);
    item.kind = ItemKind::DigitBoxes;
    item.gap = gap;
    item.cells = cells;
    return item;
}

PageItem picture(const QString &name, const QRectF &rect, drawing::Drawing value)
{
    PageItem item;
    item.name = name;
    item.kind = ItemKind::Picture;
    item.rect = rect;
    item.picture = std::make_shared<const drawing::Drawing>(std::move(value));
    return item;
}

const PageItem *Page::item(const QString &name) const
{
    for (const PageItem &candidate : items)
        if (candidate.name == name)
            return &candidate;
    return nullptr;
}

QString Page::textAt(const QString &name) const
{
    const PageItem *found = item(name);
    return found ? found->text : QString();
}

Page Page::shifted(const QPointF &offset) const
{
    Page moved = *this;
    for (PageItem &each : moved.items)
        each.rect.translate(offset);
    return moved;
}

int DetailBand::rowsPerPage() const
{
    if (rowHeight <= 0.0)
        return 0;
    return int(std::floor((bottom - top - headerHeight) / rowHeight + 1e-9));
}

QString rowItemName(const QString &name, int row) { return QStringLiteral("%1.%2").arg(name).arg(row); }

PageDescription::PageDescription(QString name, QSizeF pageSize)
    : formName(std::move(name))
    , size(pageSize)
{
}

namespace {

void placeAt(QList<PageItem> &target, const QList<PageItem> &source, double top, int row = -1)
{
    for (PageItem item : source) {
        item.rect.translate(0.0, top);
        if (row >= 0)
            item.name = rowItemName(item.name, row);
        target << item;
    }
}

PageItem pageNumber(const QSizeF &size, int number, int count)
{
    return text(PageNumberItem, QRectF(0.0, size.height() - 10.0, size.width(), 5.0),
                QStringLiteral("Стр. %1 от %2").arg(number).arg(count), 8.0, Qt::AlignCenter);
}

} // namespace

QString PageDescription::pdfFileName(const QDate &day) const
{
    if (title.isEmpty())
        return formName + QStringLiteral(".pdf");
    QStringList parts{title};
    if (!whose.trimmed().isEmpty())
        parts << whose.simplified();
    parts << day.toString(Qt::ISODate);
    QString name = parts.join(u' ');
    static const QString unfit = QStringLiteral("/\\:*?\"<>|");
    for (QChar &c : name)
        if (unfit.contains(c) || c.unicode() < 0x20)
            c = u'_';
    return name + QStringLiteral(".pdf");
}

QList<Page> PageDescription::pages() const
{
    QList<Page> sheets;
    int next = 0;
    do {
        Page page;
        const bool first = sheets.isEmpty();
        const double shiftUp = (!first && headOnFirstPageOnly) ? band.top - continuationTop : 0.0;
        if (first || !headOnFirstPageOnly)
            page.items = items;
        placeAt(page.items, band.header, band.top - shiftUp);
        const int extra = band.rowHeight > 0.0 ? int(std::floor(shiftUp / band.rowHeight + 1e-9)) : 0;
        const int fit = std::max(1, band.rowsPerPage() + extra);
        double rowTop = band.top - shiftUp + band.headerHeight;
        for (int n = 0; n < fit && next < band.rows.size(); ++n, ++next, rowTop += band.rowHeight)
            placeAt(page.items, band.rows.at(next), rowTop, next);
        sheets << page;
    } while (next < band.rows.size());
    if (sheets.size() > 1)
        for (int n = 0; n < sheets.size(); ++n)
            sheets[n].items << pageNumber(size, n + 1, int(sheets.size()));
    return sheets;
}

} // namespace print
