#include "reports/forms/ClaimForm.h"

#include "base/Dialogs.h"
#include "patients/EgnRuleSetting.h"
#include "reports/ActivityCodes.h"
#include "store/Sql.h"

#include <QStringList>

#include <limits>
#include <memory>
#include <optional>

namespace reports {
namespace {

// The columns of TempSpec in the order the layout creates them.
struct Column final
{
    const char *name;
    int SpecificationRow::*counter;
};

const Column columns[] = {
    {"F10112", &SpecificationRow::F10112}, {"F10312", &SpecificationRow::F10312},
    {"F30112", &SpecificationRow::F30112}, {"F50912", &SpecificationRow::F50912},
    {"F10111", &SpecificationRow::F10111}, {"F10311", &SpecificationRow::F10311},
    {"F30111", &SpecificationRow::F30111}, {"F33211", &SpecificationRow::F33211},
    {"F33311", &SpecificationRow::F33311}, {"F50811", &SpecificationRow::F50811},
    {"F50911", &SpecificationRow::F50911},
};

// The bar moves every so many lines: the real dialog repaints on each move.
constexpr int BarStep = 500;

QString columnList(const QString &separator, const QString &eachAs = {})
{
    QStringList parts;
    for (const Column &column : columns)
        parts << (eachAs.isEmpty() ? QString::fromLatin1(column.name) : eachAs);
    return parts.join(separator);
}

// A TempSpec column holds a 16-bit signed number; a period that counts past it cannot be
// claimed on this form. The message names the code as the form prints it.
std::optional<QString> overflowOf(const SpecificationRow &row, const Period &period)
{
    for (const Column &column : columns)
        if (row.*column.counter > std::numeric_limits<qint16>::max())
            return CounterOverflowMessage(
                QStringLiteral("дейностите с код %1").arg(QString::fromLatin1(column.name).mid(1)), period);
    return std::nullopt;
}

struct Counting final
{
    EgnRule rule = EgnRule::System;
    SpecificationRow row;
    SkippedPatients skipped;
};

void countLine(const ServiceLine &line, Counting &counting)
{
    // Every code the form claims needs the age group; ask for it only then, so that a number
    // without a birth date is reported only where it kept a line out of the claim.
    if (!SpecificationCounter(line.KodHelp, false))
        return;
    const std::optional<bool> over = EgnOverEighteen(line.EGN, line.Data, counting.rule);
    if (!over) {
        counting.skipped.add(line.EGN);
        return;
    }
    if (auto counter = SpecificationCounter(line.KodHelp, *over))
        ++(counting.row.*counter);
}

Counting countLines(const QSqlDatabase &clinic, const Period &period, const QString &medicCode)
{
    const LineFilter filter{period, medicCode, LineOrder::ByDateThenCode};
    const int rows = CountLines(clinic, filter);
    std::unique_ptr<ProgressPort> bar;
    if (rows > 0)
        bar = dialogs().progress(CountingMessage, rows);
    Counting counting;
    counting.rule = egnrule::practiceRule(clinic);
    int seen = 0;
    WalkLines(clinic, filter, [&](const ServiceLine &line) {
        if (bar && ++seen % BarStep == 0)
            bar->setValue(seen);
        countLine(line, counting);
    });
    if (bar)
        bar->setValue(rows);
    return counting;
}

void writeRow(const QSqlDatabase &scratch, const SpecificationRow &row)
{
    store::Transaction transaction(scratch);
    store::run(scratch, QStringLiteral("DELETE FROM TempSpec"));
    QSqlQuery insert(scratch);
    const QString sql = QStringLiteral("INSERT INTO TempSpec (%1) VALUES (%2)")
                            .arg(columnList(QStringLiteral(", ")), columnList(QStringLiteral(", "), QStringLiteral("?")));
    if (!insert.prepare(sql))
        throw store::SqlError(scratch, insert);
    for (const Column &column : columns)
        insert.addBindValue(row.*column.counter);
    if (!insert.exec())
        throw store::SqlError(scratch, insert);
    transaction.commit();
}

} // namespace

int SpecificationRow::*SpecificationCounter(const QString &kodHelp, bool overEighteen)
{
    using R = SpecificationRow;
    if (kodHelp == QLatin1String("101"))
        return overEighteen ? &R::F10112 : &R::F10111;
    if (kodHelp == QLatin1String("103"))
        return overEighteen ? &R::F10312 : &R::F10311;
    if (IsFillingCode(kodHelp))
        return overEighteen ? &R::F30112 : &R::F30111;
    if (kodHelp == QLatin1String("509"))
        return overEighteen ? &R::F50912 : &R::F50911;
    // The form has no place for these over 18: they are not claimed.
    if (overEighteen)
        return nullptr;
    if (kodHelp == QLatin1String("332"))
        return &R::F33211;
    if (kodHelp == QLatin1String("333"))
        return &R::F33311;
    if (kodHelp == QLatin1String("508"))
        return &R::F50811;
    return nullptr;
}

Result<SkippedPatients> BuildSpecification(const QSqlDatabase &clinic, const QSqlDatabase &scratch,
                                           const Period &period, const QString &medicCode)
{
    try {
        const Counting counting = countLines(clinic, period, medicCode);
        if (const auto overflow = overflowOf(counting.row, period))
            return Result<SkippedPatients>::failure(*overflow);
        writeRow(scratch, counting.row);
        dialogs().information(DoneMessage);
        return Result<SkippedPatients>::success(counting.skipped);
    } catch (const store::SqlError &error) {
        return Result<SkippedPatients>::failure(error.message());
    }
}

Result<SpecificationRow> ReadSpecificationRow(const QSqlDatabase &scratch)
{
    try {
        QSqlQuery query = store::run(scratch, QStringLiteral("SELECT %1 FROM TempSpec").arg(columnList(QStringLiteral(", "))));
        if (!query.next())
            return Result<SpecificationRow>::failure(
                QStringLiteral("Спецификацията няма преброени дейности. Изберете периода отново."));
        SpecificationRow row;
        int at = 0;
        for (const Column &column : columns)
            row.*column.counter = query.value(at++).toInt();
        return Result<SpecificationRow>::success(row);
    } catch (const store::SqlError &error) {
        return Result<SpecificationRow>::failure(error.message());
    }
}

} // namespace reports
