#include "reports/forms/ActivityReportPage.h"

#include "reports/RuledList.h"
#include "store/Dates.h"
#include "store/Sql.h"

#include <array>

using namespace print;

namespace reports {
namespace {

using ruledlist::Column;
using ruledlist::Left;
using ruledlist::RowHeight;
using ruledlist::Width;

// In the order of the row: Text1 to Text6.
const std::array<Column, 6> Columns{{
    {"Text1", "Дата", Left, 20, Qt::AlignLeft},
    {"Text2", "Име на пациента", Left + 20, 55, Qt::AlignLeft},
    {"Text3", "Време", Left + 75, 14, Qt::AlignRight},
    {"Text4", "ЕГН", Left + 89, 22, Qt::AlignLeft},
    {"Text5", "Год.", Left + 111, 10, Qt::AlignHCenter},
    {"Text6", "Дейности", Left + 121, 59, Qt::AlignLeft},
}};

PageItem centred(const QString &name, double y, const QString &value, double size, bool bold = false)
{
    PageItem item = text(name, QRectF(Left, y, Width, size / 2.0 + 2.0), value, size, Qt::AlignCenter);
    item.bold = bold;
    return item;
}

// A text too long for its cell gets a smaller font and two or three lines, so that a long
// name or a year's list of codes still shows whole.
PageItem fittingCell(const Column &column, const QString &value)
{
    const double lineCapacity = (column.width - 1.6) / 1.8; // characters of the row's 8.5 pt
    const double size = value.size() <= lineCapacity ? 8.5 : value.size() <= 2.6 * lineCapacity ? 6.0 : 4.5;
    PageItem item = wrapped(QString::fromLatin1(column.name), ruledlist::CellRect(column, 0.2, RowHeight - 0.4), value, size);
    item.alignment = column.alignment | Qt::AlignVCenter;
    return item;
}

QList<PageItem> detailRow(const std::array<QString, 6> &values)
{
    QList<PageItem> row;
    for (int n = 0; n < 6; ++n) {
        const bool mayBeLong = n == 1 || n == 5; // the name and the codes
        row << (mayBeLong ? fittingCell(Columns[n], values[n])
                          : text(QString::fromLatin1(Columns[n].name), ruledlist::CellRect(Columns[n], 0.2, RowHeight - 0.4),
                                 values[n], 8.5, Columns[n].alignment | Qt::AlignVCenter));
    }
    row << line(QStringLiteral("RowLine"), {Left, RowHeight}, {Left + Width, RowHeight}, 0.1);
    return row;
}

QList<QList<PageItem>> footerRows(qint64 minutes, int patients)
{
    const Column &time = Columns[2];
    PageItem sum = text(QStringLiteral("Function1"), ruledlist::CellRect(time, 0.5, RowHeight - 0.5), QString::number(minutes), 8.5,
                        Qt::AlignRight | Qt::AlignVCenter);
    sum.bold = true;
    PageItem label = caption(QStringLiteral("FooterCaption"), QRectF(Left, 0.5, time.x - Left - 2.0, RowHeight - 0.5),
                             QStringLiteral("Общо време на дейностите към ЗОК"), 9.0);
    label.alignment = Qt::AlignRight | Qt::AlignVCenter;
    const QList<PageItem> total{line(QStringLiteral("FooterTop"), {Left, 0}, {Left + Width, 0}, 0.4), label, sum};
    const QList<PageItem> count{text(QStringLiteral("Label7"), QRectF(Left, 0.5, 120, RowHeight - 0.5),
                                     QStringLiteral("Общ брой амбулаторни листи: ") + QString::number(patients), 9.0)};
    return {total, count};
}

} // namespace

void AddReportHeading(PageDescription &form, const QString &subtitle, const Period &period, const QString &medicName)
{
    form.whose = medicName;
    form.items << centred(QStringLiteral("Title"), 12, QStringLiteral("Справка"), 16.0, true)
               << centred(QStringLiteral("Subtitle"), 21, subtitle, 11.0)
               << centred(QStringLiteral("Label12"), 28, period.caption(), 11.0)
               << centred(QStringLiteral("Label9"), 34, DoctorCaption(medicName), 11.0);
    form.items[form.items.size() - 4].ruling = true;
    form.items[form.items.size() - 3].ruling = true;
}

PageDescription WorkPage(const QSqlDatabase &scratch, const Period &period, const QString &medicName)
{
    PageDescription form(QStringLiteral("rprWork"), A4);
    form.title = QStringLiteral("Дейности към ЗОК");
    AddReportHeading(form, QStringLiteral("на проведените стоматологични манипулации"), period, medicName);
    form.band.top = 44.0;
    form.band.bottom = form.size.height() - 14.0;
    form.band.headerHeight = 8.0;
    form.band.header = ruledlist::Heads(Columns);
    form.band.rowHeight = RowHeight;
    // The rows in the table's own order, as the builder wrote them.
    QSqlQuery query = store::run(scratch, QStringLiteral("SELECT Data, Name1, Time, EGN, Godini, KodHelp FROM TempWork"));
    qint64 minutes = 0;
    while (query.next()) {
        minutes += query.value(2).toInt();
        form.band.rows << detailRow({dates::isoToTyped(query.value(0).toString()), query.value(1).toString(),
                                     query.value(2).toString(), query.value(3).toString(), query.value(4).toString(),
                                     query.value(5).toString()});
    }
    const int patients = int(form.band.rows.size());
    form.band.rows << footerRows(minutes, patients);
    return form;
}

} // namespace reports
