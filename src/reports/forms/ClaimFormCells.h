#pragma once

#include "reports/Period.h"
#include "reports/forms/ClaimForm.h"
#include "store/Result.h"

#include <QHash>
#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>

// What the claim form "Спецификация" (rptSpec) writes into its cells: the medical unit's data,
// the period, and for each activity its count and its amount at the fund's fixed price.
namespace reports {

// One written cell of the form, by the form's own control name.
struct SpecificationCell final
{
    QString name;
    QString text;
    bool operator==(const SpecificationCell &) const = default;
};

// One activity row of the claim: the code and text the form prints, the fixed price (also its
// caption), the counter of TempSpec it claims and the cells its figures go to.
struct ClaimRow final
{
    const char *code;
    const char *text;
    int SpecificationRow::*column;
    double price;
    const char *priceCaption;
    const char *countCell;
    const char *sumCell;       // nullptr: the pregnancy row has no amount of its own
    const char *zeroCountCell; // where "0" goes when nothing was done; only 33311 differs
};

// A section of the table: "I" over 18, "II" up to 18. Its first row is the examination 101,
// its second the pregnancy examinations 103 among them.
struct ClaimSection final
{
    const char *mark;
    const char *title;
    QList<ClaimRow> rows;
    const char *totalText;
    const char *totalCell;
};

const QList<ClaimSection> &ClaimSections();
inline const QString GrandTotalText = QStringLiteral("Общо ( I +II ):");
inline const QString GrandTotalCell = QStringLiteral("Label159");

// A field of the unit printed one character per box: the first box and then the boxes numbered
// from `nextCell` on.
struct BoxField final
{
    const char *field;
    const char *firstCell;
    int nextCell;
    int boxes;

    QStringList cellNames() const;
};
inline constexpr BoxField UnitIdBoxes{"UserID", "Label45", 195, 10};
inline constexpr BoxField UnitEgnBoxes{"UserEGN", "Label7", 204, 10};
inline constexpr BoxField UnitUinBoxes{"UserUIN", "Label52", 213, 9};

// The first row of MedicUnit by field name; a Null field and a practice without the row give
// empty texts.
using UnitFields = QHash<QString, QString>;
Result<UnitFields> ReadSpecificationUnit(const QSqlDatabase &clinic);

// A field laid into `boxes` boxes: character by character from the first, with the field's last
// character always in the last box, so a field one shorter shows it twice and a longer one
// loses the characters before it. Empty boxes are empty texts.
QStringList BoxCharacters(const QString &value, int boxes);

// The number format "####.##" of the form: at most two decimals, no forced zeros, no leading
// zero and always the point: 25.76, 211.3, 6., .5, and "." for nothing. A row's amount is a
// double (the engine keeps 15 significant digits of it), the totals are single precision
// (7 significant digits).
QString FormatAmount(double amount);
QString FormatTotal(float total);

// Every cell that carries a value, in the form's order: the unit's boxes and fields, the
// period, then the table row by row with the section totals and the grand total.
QList<SpecificationCell> SpecificationCells(const SpecificationRow &row, const UnitFields &unit, const Period &period);

// The cells of the report that BuildSpecification has just counted into `scratch`.
Result<QList<SpecificationCell>> LoadSpecificationCells(const QSqlDatabase &clinic, const QSqlDatabase &scratch,
                                                        const Period &period);

} // namespace reports
