#include "diary/DiaryPrintPage.h"

namespace diaryprint {
namespace {

constexpr int RowsPerColumn = RowCount / 2;
constexpr double RowHeight = 9.0;
constexpr double ColumnX[2] = {12.0, 108.0};
constexpr double TimeWidth = 18.0;
constexpr double NameWidth = 72.0;

print::PageItem heading(const QString &name, double y, const QString &value, double size)
{
    print::PageItem item = print::text(name, QRectF(10, y, 190, size / 2.0 + 2.0), value, size, Qt::AlignCenter);
    item.bold = size > 12.0;
    return item;
}

QList<print::PageItem> columnHeads()
{
    QList<print::PageItem> heads;
    for (int column = 0; column < 2; ++column) {
        const double x = ColumnX[column];
        heads << print::caption(QStringLiteral("lblHour%1").arg(column), QRectF(x, 0, TimeWidth, 6), QStringLiteral("Час"),
                                10.0);
        heads << print::caption(QStringLiteral("lblName%1").arg(column), QRectF(x + TimeWidth, 0, NameWidth, 6),
                                QStringLiteral("Име на пациента"), 10.0);
        heads << print::line(QStringLiteral("lblLine%1").arg(column), {x, 6.5}, {x + TimeWidth + NameWidth, 6.5});
    }
    return heads;
}

QList<print::PageItem> pageRows(const QList<Row> &rows)
{
    QList<print::PageItem> items;
    for (int row = 0; row < rows.size(); ++row) {
        const double x = ColumnX[row / RowsPerColumn];
        const double y = (row % RowsPerColumn) * RowHeight;
        items << print::text(QStringLiteral("lblTime%1").arg(row), QRectF(x, y, TimeWidth, RowHeight - 1),
                             rows.at(row).label, 10.0);
        items.last().ruling = true;
        items << print::text(QStringLiteral("txtSlot%1").arg(row), QRectF(x + TimeWidth, y, NameWidth, RowHeight - 1),
                             rows.at(row).text, 10.0);
        items << print::line(QStringLiteral("lnSlot%1").arg(row), {x, y + RowHeight - 0.5},
                             {x + TimeWidth + NameWidth, y + RowHeight - 0.5});
    }
    return items;
}

} // namespace

print::PageDescription DiaryPage(const DiaryPrint &diary)
{
    print::PageDescription form(QStringLiteral("rprGrafic"), print::A4);
    form.title = QStringLiteral("График");
    form.whose = diary.doctorLine;
    form.items << heading(QStringLiteral("Label1"), 12, QStringLiteral("График"), 18.0)
               << heading(QStringLiteral("Label2"), 24, QStringLiteral("за посещенията на"), 11.0)
               << heading(QStringLiteral("Label3"), 32, diary.dateHeading, 11.0)
               << heading(QStringLiteral("Label4"), 40, diary.doctorLine, 11.0);
    form.items[0].ruling = form.items[1].ruling = true;
    form.band.top = 52.0;
    form.band.bottom = form.size.height() - 14.0;
    form.band.headerHeight = 9.0;
    form.band.header = columnHeads();
    form.band.rowHeight = RowsPerColumn * RowHeight + 6.0;
    for (const QList<Row> &page : diary.pages)
        form.band.rows << pageRows(page);
    return form;
}

} // namespace diaryprint
