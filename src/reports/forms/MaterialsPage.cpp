#include "reports/forms/MaterialsPage.h"

#include "store/Sql.h"

#include <QSqlQuery>

#include <cmath>

namespace reports {
namespace {

constexpr double NameX = 25.0;
constexpr double NameWidth = 110.0;
constexpr double KolWidth = 30.0;
constexpr double EdWidth = 20.0;
constexpr double KolX = NameX + NameWidth;
constexpr double EdX = KolX + KolWidth;
constexpr double RowHeight = 7.0;

print::PageItem centred(const QString &name, double y, const QString &value, double size, bool bold = false)
{
    print::PageItem item = print::text(name, QRectF(10, y, 190, size / 2.0 + 2.5), value, size, Qt::AlignCenter);
    item.bold = bold;
    return item;
}

print::PageItem fixed(print::PageItem item)
{
    item.ruling = true;
    return item;
}

QList<print::PageItem> heading(const Period &period, const QString &medicName)
{
    const Qt::Alignment right = Qt::AlignRight | Qt::AlignVCenter;
    return {fixed(centred(QStringLiteral("Label1"), 14, QStringLiteral("Справка"), 18.0, true)),
            fixed(centred(QStringLiteral("Label2"), 25, QStringLiteral("за изразходваните материали"), 12.0)),
            fixed(print::text(QStringLiteral("Label4"), QRectF(40, 34, 48, 7), QStringLiteral("за времето от"), 11.0, right)),
            print::text(QStringLiteral("Label3"), QRectF(90, 34, 26, 7), period.PeriodFromText, 11.0),
            fixed(print::text(QStringLiteral("Label5"), QRectF(116, 34, 8, 7), QStringLiteral("до"), 11.0, Qt::AlignCenter)),
            print::text(QStringLiteral("Label9"), QRectF(126, 34, 26, 7), period.PeriodToText, 11.0),
            centred(QStringLiteral("Label6"), 43, DoctorCaption(medicName), 11.0)};
}

QList<print::PageItem> columnHeads()
{
    QList<print::PageItem> heads{
        print::box(QStringLiteral("boxHeadName"), QRectF(NameX, 0, NameWidth, 8), 0.4),
        print::box(QStringLiteral("boxHeadKol"), QRectF(KolX, 0, KolWidth, 8), 0.4),
        print::box(QStringLiteral("boxHeadEd"), QRectF(EdX, 0, EdWidth, 8), 0.4),
        fixed(print::text(QStringLiteral("Label7"), QRectF(NameX + 2, 0, NameWidth - 4, 8), QStringLiteral("Име на материала"),
                          10.0)),
        fixed(print::text(QStringLiteral("Label8"), QRectF(KolX, 0, KolWidth - 2, 8), QStringLiteral("Кол."), 10.0,
                          Qt::AlignRight | Qt::AlignVCenter)),
    };
    heads[3].bold = heads[4].bold = true;
    return heads;
}

QList<print::PageItem> materialRow(const MaterialUse &material)
{
    return {print::box(QStringLiteral("boxName"), QRectF(NameX, 0, NameWidth, RowHeight)),
            print::box(QStringLiteral("boxKol"), QRectF(KolX, 0, KolWidth, RowHeight)),
            print::box(QStringLiteral("boxEd"), QRectF(EdX, 0, EdWidth, RowHeight)),
            print::text(QStringLiteral("Text2"), QRectF(NameX + 2, 0, NameWidth - 4, RowHeight), material.Name, 10.0),
            print::text(QStringLiteral("Text1"), QRectF(KolX, 0, KolWidth - 2, RowHeight),
                        MaterialQuantityText(material.Kol), 10.0, Qt::AlignRight | Qt::AlignVCenter),
            print::text(QStringLiteral("Text3"), QRectF(EdX, 0, EdWidth, RowHeight), material.Ed, 10.0, Qt::AlignCenter)};
}

} // namespace

Result<QList<MaterialUse>> ReadMaterialsReport(const QSqlDatabase &scratch)
{
    QList<MaterialUse> rows;
    try {
        QSqlQuery query = store::run(scratch, QStringLiteral("SELECT Name, Kol, Ed FROM TempMater WHERE Kol > 0"));
        while (query.next())
            rows << MaterialUse{query.value(0).toString(), query.value(1).toDouble(), query.value(2).toString()};
    } catch (const store::SqlError &error) {
        return Result<QList<MaterialUse>>::failure(error.message());
    }
    return Result<QList<MaterialUse>>::success(rows);
}

QString MaterialQuantityText(double kol)
{
    const double whole = std::round(kol);
    QString digits = QString::number(std::fabs(whole), 'f', 0);
    for (qsizetype at = digits.size() - 3; at > 0; at -= 3)
        digits.insert(at, u' ');
    return (whole < 0 ? QStringLiteral("-") : QString()) + digits;
}

print::PageDescription MaterialsPage(const QList<MaterialUse> &rows, const Period &period, const QString &medicName)
{
    print::PageDescription form(QStringLiteral("rprMat"), print::A4);
    form.title = QStringLiteral("Разходи");
    form.whose = medicName;
    form.items << heading(period, medicName);
    form.band.top = 56.0;
    form.band.bottom = form.size.height() - 15.0;
    form.band.headerHeight = 8.0;
    form.band.header = columnHeads();
    form.band.rowHeight = RowHeight;
    for (const MaterialUse &material : rows)
        form.band.rows << materialRow(material);
    return form;
}

Result<print::PageDescription> MaterialsForm(const QSqlDatabase &scratch, const Period &period, const QString &medicName)
{
    const auto rows = ReadMaterialsReport(scratch);
    if (!rows)
        return Result<print::PageDescription>::failure(rows.error());
    return Result<print::PageDescription>::success(MaterialsPage(rows.value(), period, medicName));
}

} // namespace reports
