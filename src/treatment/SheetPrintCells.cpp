#include "treatment/SheetPrintCells.h"

#include "base/Spread.h"
#include "patients/ChartCodes.h"
#include "patients/ToothMap.h"
#include "store/TextReading.h"

namespace {

QString field(const PatientFields &patient, const char *name)
{
    return patient.value(QString::fromLatin1(name)).toString();
}

QString twoApart(const QString &value) { return value.mid(0, 1) + u' ' + value.mid(1, 1); }

// A cell written only when the field holds something; the field's raw text is the caption.
void setIfSet(QHash<QString, QString> &cells, const QString &label, const QString &value, const QString &shown)
{
    if (!text::isBlank(value))
        cells.insert(label, shown);
}

} // namespace

BirthCells SheetBirthCells(const QString &egn, EgnRule rule)
{
    BirthCells cells{egn.mid(4, 1) + QStringLiteral("  ") + egn.mid(5, 1), DesignMonth, DesignCentury,
                     SpreadWide(egn.left(2))};
    const qint64 m = text::numberAt(egn, 3, 2);
    if (m >= 1 && m <= 12) {
        cells.century = QStringLiteral("1  9");
        cells.month = SpreadWide(egn.mid(2, 2));
    } else if (m >= 21 && m <= 32) {
        cells.century = QStringLiteral("1  8");
        // Only 21 and 22 give a month: the bound stands as the sheet always had it.
        if (m <= 22 || rule == EgnRule::Public)
            cells.month = SpreadWide(QString::number(m - 20));
    } else if (m >= 41 && m <= 52) {
        cells.century = QStringLiteral("2  0");
        cells.month = SpreadWide(QString::number(m - 40));
    }
    return cells;
}

QHash<QString, QString> SheetHeaderCells(const SheetData &sheet)
{
    const PatientFields &p = sheet.patient;
    QHash<QString, QString> cells{
        {QStringLiteral("Label1"), SpreadNarrow(sheet.egn)},
        {QStringLiteral("Label2"), twoApart(field(p, "RZOK"))},
        {QStringLiteral("Label3"), twoApart(field(p, "ZR"))},
        {QStringLiteral("Label6"), SpreadNarrow(sheet.doctor.KodMedic)},
        {QStringLiteral("Label4"), field(p, "Names")},
        {QStringLiteral("Label8"), QStringLiteral("д-р ") + sheet.doctor.Names},
        {QStringLiteral("Label7"), SpreadNarrow(sheet.doctor.EGN)},
    };
    const BirthCells birth = SheetBirthCells(sheet.egn, sheet.egnRule);
    cells.insert(QStringLiteral("Label52"), birth.day);
    cells.insert(QStringLiteral("Label51"), birth.month);
    cells.insert(QStringLiteral("Label53"), birth.century);
    cells.insert(QStringLiteral("Label54"), birth.year);
    const struct
    {
        const char *label;
        const char *name;
    } plain[] = {{"Label50", "Tawn"}, {"Label5", "UL"},      {"Label13", "KV"},     {"Label14", "BL"},
                 {"Label15", "VX"},   {"Label16", "ET"},     {"Label17", "AP"},     {"Label10", "Nep"},
                 {"Label11", "ZabOld"}, {"Label12", "ZabNaw"}};
    for (const auto &cell : plain)
        setIfSet(cells, QString::fromLatin1(cell.label), field(p, cell.name), field(p, cell.name));
    setIfSet(cells, QStringLiteral("Label9"), field(p, "ZBook"), SpreadNarrow(field(p, "ZBook")));
    return cells;
}

QString chartCellName(int permanentField) { return QStringLiteral("Label%1").arg(permanentField - 3); }

QList<ChartCell> SheetChartCells(const QStringList &dental)
{
    const auto z = [&dental](int number) { return dental.value(number - 1); };
    QList<ChartCell> cells;
    for (int permanent = 21; permanent <= toothmap::FieldCount; ++permanent) {
        ChartCell cell;
        const toothmap::Position &place = toothmap::position(permanent);
        cell.milkField = place.box ? toothmap::milkFieldOfBox(place.box) : 0;
        if (!text::isBlank(z(permanent))) {
            cell.text = z(permanent); // the milk field is not looked at
        } else if (cell.milkField && !text::isBlank(z(cell.milkField))) {
            cell.milkFrame = true;
            const QString milk = z(cell.milkField);
            cell.text = milk.trimmed() == chartcodes::MilkMark ? QStringLiteral(" ") : milk;
        }
        cells << cell;
    }
    return cells;
}
