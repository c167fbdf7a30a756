#include "reports/forms/ClaimFormCells.h"

#include "store/Sql.h"

#include <cmath>

namespace reports {
namespace {

using R = SpecificationRow;

// The unit's fields that the form writes as they stand, in the form's order, up to the period.
const struct
{
    const char *cell;
    const char *field;
} unitCells[] = {
    {"Label9", "UserName"}, {"Label13", "UserCap"},   {"Label14", "UserObMiniCap"}, {"Label25", "UserCity"},
    {"Label26", "UserUl"},  {"Label28", "UserUlID"},  {"Label10", "UserKs"},        {"Label8", "UserBl"},
    {"Label34", "UserVx"},  {"Label32", "UserEt"},    {"Label30", "UserAp"},        {"Label16", "UserBank"},
    {"Label18", "UserBIC"}, {"Label20", "UserIBAN"},  {"Label22", "UserBULSTAT"},
};

const char *const ExamOver18 = "Обстоен преглед за установяване на орален статус и изготвяне на амбулаторен лист - в т.ч. "
                               "допълнителен за бременни";
const char *const ExamUpTo18 = "Обстоен профилактичен преглед за установяване на орален статус и изготвяне на амбулаторен "
                               "лист - в т.ч. допълнителен за бременни";
const char *const Pregnant = "- от тях допълнителен за бременни";
const char *const Filling = "Обтурация с амалгама или химически композит";

class CellList final
{
public:
    void add(const char *name, const QString &text) { add(QString::fromLatin1(name), text); }
    void add(const QString &name, const QString &text)
    {
        // A cell the form leaves as designed carries nothing to list.
        if (!text.isEmpty())
            m_cells << SpecificationCell{name, text};
    }
    void addBoxes(const BoxField &boxes, const UnitFields &unit)
    {
        const QStringList names = boxes.cellNames();
        const QStringList characters = BoxCharacters(unit.value(QString::fromLatin1(boxes.field)), boxes.boxes);
        for (int n = 0; n < boxes.boxes; ++n)
            add(names.at(n), characters.at(n));
    }
    QList<SpecificationCell> cells() const { return m_cells; }

private:
    QList<SpecificationCell> m_cells;
};

// The unit's fields the form shows, under the names this program gives them whatever the case
// of the stored columns.
QStringList fieldsOnTheForm()
{
    QStringList fields{QString::fromLatin1(UnitIdBoxes.field), QString::fromLatin1(UnitEgnBoxes.field),
                       QString::fromLatin1(UnitUinBoxes.field), QStringLiteral("UserMOL")};
    for (const auto &cell : unitCells)
        fields << QString::fromLatin1(cell.field);
    return fields;
}

void addUnitHead(CellList &cells, const UnitFields &unit, const Period &period)
{
    cells.addBoxes(UnitIdBoxes, unit);
    for (const auto &cell : unitCells)
        cells.add(cell.cell, unit.value(QString::fromLatin1(cell.field)));
    cells.add("Label42", period.PeriodFromText + QStringLiteral(" г."));
    cells.add("Label50", period.PeriodToText + QStringLiteral(" г."));
    cells.addBoxes(UnitEgnBoxes, unit);
    cells.addBoxes(UnitUinBoxes, unit);
    cells.add("Label54", unit.value(QStringLiteral("UserMOL")));
}

// The running total is single precision: each amount is added in double and the sum kept as a
// float, so a large claim carries the rounding of a float.
void addToTotal(float &total, double amount) { total = float(double(total) + amount); }

// The examinations: 101 and the pregnancy examinations 103 are paid together, and only when
// there is any 101 at all; pregnancy examinations alone are not paid.
void addExamRows(CellList &cells, const ClaimRow &exam, const ClaimRow &pregnant, const R &row, float &total)
{
    const int exams = row.*exam.column;
    if (exams == 0) {
        cells.add(exam.countCell, QStringLiteral("0"));
        cells.add(pregnant.countCell, QStringLiteral("0"));
        cells.add(exam.sumCell, QStringLiteral("0"));
        return;
    }
    const int paid = exams + row.*pregnant.column;
    const double amount = paid * exam.price;
    addToTotal(total, amount);
    cells.add(exam.countCell, QString::number(paid));
    cells.add(pregnant.countCell, QString::number(row.*pregnant.column));
    cells.add(exam.sumCell, FormatAmount(amount));
}

void addActivityRow(CellList &cells, const ClaimRow &claim, const R &row, float &total)
{
    const int count = row.*claim.column;
    if (count == 0) {
        cells.add(claim.zeroCountCell, QStringLiteral("0"));
        cells.add(claim.sumCell, QStringLiteral("0"));
        return;
    }
    const double amount = count * claim.price;
    addToTotal(total, amount);
    cells.add(claim.countCell, QString::number(count));
    cells.add(claim.sumCell, FormatAmount(amount));
}

float addSection(CellList &cells, const ClaimSection &section, const R &row)
{
    float total = 0.0f;
    addExamRows(cells, section.rows.at(0), section.rows.at(1), row, total);
    for (qsizetype n = 2; n < section.rows.size(); ++n)
        addActivityRow(cells, section.rows.at(n), row, total);
    cells.add(section.totalCell, FormatTotal(total));
    return total;
}

qint64 powerOfTen(int exponent)
{
    qint64 power = 1;
    while (exponent-- > 0)
        power *= 10;
    return power;
}

// `value` as the engine formats it: its `significant` digits, then rounded to whole cents, half
// away from zero, on those decimal digits rather than on the binary value.
qint64 centsOf(double value, int significant)
{
    const QString scientific = QString::number(std::fabs(value), 'e', significant - 1); // "2.576000e+01"
    const qsizetype e = scientific.indexOf(u'e');
    const qint64 digits = scientific.left(e).remove(u'.').toLongLong();
    const int lastDigitPower = scientific.mid(e + 1).toInt() - (significant - 1);
    if (lastDigitPower >= -2)
        return digits * powerOfTen(lastDigitPower + 2);
    const int dropped = -2 - lastDigitPower;
    if (dropped > 18)
        return 0;
    const qint64 unit = powerOfTen(dropped);
    return digits / unit + (digits % unit * 2 >= unit ? 1 : 0);
}

QString formatCents(qint64 cents, bool negative)
{
    const qint64 whole = cents / 100;
    const int fraction = int(cents % 100);
    QString text = negative && cents != 0 ? QStringLiteral("-") : QString();
    if (whole != 0)
        text += QString::number(whole);
    text += u'.';
    if (fraction % 10 != 0)
        text += QStringLiteral("%1").arg(fraction, 2, 10, QLatin1Char('0'));
    else if (fraction != 0)
        text += QString::number(fraction / 10);
    return text;
}

} // namespace

QStringList BoxField::cellNames() const
{
    QStringList names{QString::fromLatin1(firstCell)};
    for (int n = 1; n < boxes; ++n)
        names << QStringLiteral("Label%1").arg(nextCell + n - 1);
    return names;
}

const QList<ClaimSection> &ClaimSections()
{
    static const QList<ClaimSection> sections{
        {"I",
         "Дентални дейности за лица над 18 години",
         {
             {"10112", ExamOver18, &R::F10112, 6.44, "6.44", "Label68", "Label69", "Label68"},
             {"10312", Pregnant, &R::F10312, 6.44, "6.44", "Label80", nullptr, "Label80"},
             {"30112", Filling, &R::F30112, 21.13, "21.13", "Label86", "Label87", "Label86"},
             {"50912", "Екстракция на зъб, включително анестезия", &R::F50912, 21.13, "21.13", "Label92", "Label93",
              "Label92"},
         },
         "Общо по I ( 1 + 2 + 3 ):",
         "Label99"},
        {"II",
         // The "o" of "дo" is a Latin letter on the fund's form.
         "Дентални дейности за лица дo 18 години",
         {
             {"10111", ExamUpTo18, &R::F10111, 6.44, "6.44", "Label110", "Label111", "Label110"},
             {"10311", Pregnant, &R::F10311, 6.44, "6.44", "Label116", nullptr, "Label116"},
             {"30111", Filling, &R::F30111, 25.13, "25.13", "Label122", "Label123", "Label122"},
             {"50811", "Екстракция на временен зъб, включително анестезия", &R::F50811, 11.98, "11.98", "Label128",
              "Label129", "Label128"},
             {"50911", "Екстракция на постоянен зъб, включително анестезия", &R::F50911, 25.13, "25.13", "Label134",
              "Label135", "Label134"},
             {"33211",
              "Лечение на пулпит или периодонтит на временен зъб ( включва всички дейности, без обтурация )",
              &R::F33211, 21.92, "21.92", "Label140", "Label141", "Label140"},
             // The form writes this row's zero beside the count cell, whose designed caption stays.
             {"33311",
              "Лечение на пулпит или периодонтит на постоянен зъб ( включва всички дейности, без обтурация )",
              &R::F33311, 68.93, "68.93", "Label146", "Label147", "Label144"},
         },
         "Общо по II ( 1 + 2 + 3 + 4 + 5 + 6 ):",
         "Label153"},
    };
    return sections;
}

Result<UnitFields> ReadSpecificationUnit(const QSqlDatabase &clinic)
{
    try {
        const QStringList fields = fieldsOnTheForm();
        QSqlQuery query = store::run(
            clinic, QStringLiteral("SELECT %1 FROM MedicUnit ORDER BY ID").arg(fields.join(QStringLiteral(", "))));
        UnitFields unit;
        if (query.next())
            for (int n = 0; n < fields.size(); ++n)
                unit.insert(fields.at(n), query.isNull(n) ? QString() : query.value(n).toString());
        return Result<UnitFields>::success(unit);
    } catch (const store::SqlError &error) {
        return Result<UnitFields>::failure(error.message());
    }
}

QStringList BoxCharacters(const QString &value, int boxes)
{
    QStringList characters;
    for (int n = 0; n < boxes; ++n)
        characters << value.mid(n, 1);
    if (!value.isEmpty() && boxes > 0)
        characters.last() = value.right(1);
    return characters;
}

QString FormatAmount(double amount) { return formatCents(centsOf(amount, 15), amount < 0); }

QString FormatTotal(float total) { return formatCents(centsOf(total, 7), total < 0); }

QList<SpecificationCell> SpecificationCells(const SpecificationRow &row, const UnitFields &unit, const Period &period)
{
    CellList cells;
    addUnitHead(cells, unit, period);
    float totals[2] = {0.0f, 0.0f};
    for (int n = 0; n < 2; ++n)
        totals[n] = addSection(cells, ClaimSections().at(n), row);
    const float grandTotal = totals[0] + totals[1];
    cells.add(GrandTotalCell, FormatTotal(grandTotal));
    return cells.cells();
}

Result<QList<SpecificationCell>> LoadSpecificationCells(const QSqlDatabase &clinic, const QSqlDatabase &scratch,
                                                        const Period &period)
{
    const auto row = ReadSpecificationRow(scratch);
    if (!row)
        return Result<QList<SpecificationCell>>::failure(row.error());
    const auto unit = ReadSpecificationUnit(clinic);
    if (!unit)
        return Result<QList<SpecificationCell>>::failure(unit.error());
    return Result<QList<SpecificationCell>>::success(SpecificationCells(row.value(), unit.value(), period));
}

} // namespace reports
