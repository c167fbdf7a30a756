#include "reports/forms/FundSummaryPage.h"

#include "reports/forms/ActivityReportPage.h"
#include "store/Sql.h"

using namespace print;

namespace reports {
namespace {

constexpr double Left = 25.0;
constexpr double GroupWidth = 40.0;
constexpr double CodeWidth = 20.0;
constexpr int CodeColumns = 6;
constexpr double HeadRow = 7.0;
constexpr double RowHeight = 9.0;

double codeX(int column) { return Left + GroupWidth + column * CodeWidth; }

// A ruled cell with its text centred in it.
void cell(QList<PageItem> &items, const QString &name, const QRectF &rect, const QString &value, bool fixed)
{
    items << box(name + QStringLiteral("Box"), rect);
    PageItem inside = text(name, rect.adjusted(1.0, 0.5, -1.0, -0.5), value, 10.0, Qt::AlignCenter);
    inside.ruling = fixed;
    inside.bold = fixed;
    items << inside;
}

QList<PageItem> columnHeads()
{
    QList<PageItem> heads;
    cell(heads, QStringLiteral("HeadGroup"), QRectF(Left, 0, GroupWidth, 2 * HeadRow), QStringLiteral("Група"), true);
    cell(heads, QStringLiteral("HeadCode"), QRectF(codeX(0), 0, CodeColumns * CodeWidth, HeadRow), QStringLiteral("Код"),
         true);
    const QStringList codes{QStringLiteral("101"), QStringLiteral("301"), QStringLiteral("332"),
                            QStringLiteral("333"), QStringLiteral("508"), QStringLiteral("509")};
    for (int column = 0; column < CodeColumns; ++column)
        cell(heads, QStringLiteral("Head") + codes[column], QRectF(codeX(column), HeadRow, CodeWidth, HeadRow),
             codes[column], true);
    return heads;
}

QList<PageItem> detailRow(const QSqlQuery &query)
{
    QList<PageItem> row;
    cell(row, QStringLiteral("Text1"), QRectF(Left, 0, GroupWidth, RowHeight), query.value(0).toString(), false);
    for (int column = 0; column < CodeColumns; ++column)
        cell(row, QStringLiteral("Text%1").arg(column + 2), QRectF(codeX(column), 0, CodeWidth, RowHeight),
             query.value(column + 1).toString(), false);
    return row;
}

} // namespace

PageDescription ZokcPage(const QSqlDatabase &scratch, const Period &period, const QString &medicName)
{
    PageDescription form(QStringLiteral("rprZOKC"), A4);
    form.title = QStringLiteral("Справка за ЗОК");
    AddReportHeading(form, QStringLiteral("на проведените стоматологични манипулации по години"), period, medicName);
    form.band.top = 48.0;
    form.band.bottom = form.size.height() - 14.0;
    form.band.headerHeight = 2 * HeadRow;
    form.band.header = columnHeads();
    form.band.rowHeight = RowHeight;
    QSqlQuery query = store::run(
        scratch, QStringLiteral("SELECT Godini, Kod_101, Kod_301, Kod_332, Kod_333, Kod_508, Kod_509 FROM TempZOKC"));
    while (query.next())
        form.band.rows << detailRow(query);
    return form;
}

} // namespace reports
