#include "reports/RuledList.h"

using namespace print;

namespace reports::ruledlist {

QRectF CellRect(const Column &column, double top, double height)
{
    return QRectF(column.x + 0.8, top, column.width - 1.6, height);
}

QList<PageItem> Heads(std::span<const Column> columns)
{
    QList<PageItem> heads{line(QStringLiteral("HeadTop"), {Left, 0}, {Left + Width, 0}, 0.4)};
    for (const Column &column : columns) {
        PageItem head = caption(QStringLiteral("Head%1").arg(QLatin1String(column.name)), CellRect(column, 0.5, 5.5),
                                QString::fromUtf8(column.head), 8.5);
        head.bold = true;
        head.alignment = column.alignment | Qt::AlignVCenter;
        heads << head;
    }
    heads << line(QStringLiteral("HeadBottom"), {Left, 6.5}, {Left + Width, 6.5}, 0.4);
    return heads;
}

} // namespace reports::ruledlist
