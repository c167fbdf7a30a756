#include "patients/DateListsPage.h"

namespace datelists {
namespace {

constexpr double RowHeight = 6.0;

QList<print::PageItem> heading(const DateList &list)
{
    QList<print::PageItem> items;
    items << print::text(QStringLiteral("Label1"), QRectF(10, 10, 190, 9), QStringLiteral("Справка"), 14.0,
                         Qt::AlignCenter);
    items.last().bold = true;
    items.last().ruling = true;
    if (list.forPatients)
        items << print::caption(QStringLiteral("Label9"), QRectF(22, 22, 28, 6), QStringLiteral("за пациентите"), 10.0);
    items << print::text(QStringLiteral("Label2"), QRectF(50, 22, 42, 6), list.kindWording, 10.0, Qt::AlignRight | Qt::AlignVCenter)
          << print::text(QStringLiteral("Label4"), QRectF(94, 22, 24, 6), list.fromText, 10.0)
          << print::caption(QStringLiteral("Label3"), QRectF(119, 22, 7, 6), QStringLiteral("до"), 10.0)
          << print::text(QStringLiteral("Label5"), QRectF(127, 22, 24, 6), list.toText, 10.0);
    return items;
}

} // namespace

print::PageDescription DateListPage(const DateList &list)
{
    print::PageDescription form(list.forPatients ? QStringLiteral("rprDataR") : QStringLiteral("rprDataP"), print::A4);
    form.title = QStringLiteral("Списък");
    form.items = heading(list);
    form.band.top = 34.0;
    form.band.bottom = form.size.height() - 14.0;
    form.band.headerHeight = 8.0;
    form.band.header << print::caption(QStringLiteral("Label7"), QRectF(15, 0, 30, 6), QStringLiteral("ЕГН"), 10.0)
                     << print::caption(QStringLiteral("Label8"), QRectF(48, 0, 110, 6),
                                       QStringLiteral("Име,презиме и фамилия"), 10.0)
                     << print::caption(QStringLiteral("Label6"), QRectF(160, 0, 40, 6), list.dateHeading, 10.0)
                     << print::line(QStringLiteral("Line1"), {10, 7}, {200, 7});
    form.band.rowHeight = RowHeight;
    for (const ListRow &row : list.rows)
        form.band.rows << QList<print::PageItem>{print::text(QStringLiteral("Text1"), QRectF(15, 0, 30, RowHeight), row.EGN),
                                                 print::text(QStringLiteral("Text2"), QRectF(48, 0, 110, RowHeight), row.Names),
                                                 print::text(QStringLiteral("Text3"), QRectF(160, 0, 40, RowHeight), row.date)};
    return form;
}

} // namespace datelists
