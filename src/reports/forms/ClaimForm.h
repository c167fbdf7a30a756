#pragma once

#include "reports/Period.h"
#include "reports/PeriodLines.h"
#include "store/Result.h"

#include <QSqlDatabase>
#include <QString>

// "Спецификация": the practice's claim to the fund for a period. The builder counts the
// doctor's service lines of the period by activity and age group into the one row of TempSpec;
// the claim form (SpecificationCells.h, SpecificationPage.h) prices and prints that row.
namespace reports {

// The one row of TempSpec. A column is "F", the activity code, 1, and the age group: 2 over 18,
// 1 up to 18 (the 18th birthday itself still counts as up to 18).
struct SpecificationRow final
{
    int F10112 = 0;
    int F10312 = 0;
    int F30112 = 0;
    int F50912 = 0;
    int F10111 = 0;
    int F10311 = 0;
    int F30111 = 0;
    int F33211 = 0;
    int F33311 = 0;
    int F50811 = 0;
    int F50911 = 0;
};

// The counter a service line adds 1 to, or nullptr when the claim has no place for it: any code
// but 101, 103, the fillings, 332, 333, 508 and 509, and 332, 333, 508 over 18.
int SpecificationRow::*SpecificationCounter(const QString &kodHelp, bool overEighteen);

// Counts the lines of `medicCode` in the period and writes the one row of TempSpec (made by
// store::CreateScratchTable) in one transaction of `scratch`, also for an empty period. Lines
// whose EGN names no birth date are left out and returned. A failure writes nothing and is
// returned as the message for the user.
Result<SkippedPatients> BuildSpecification(const QSqlDatabase &clinic, const QSqlDatabase &scratch,
                                           const Period &period, const QString &medicCode);

// The row that BuildSpecification wrote.
Result<SpecificationRow> ReadSpecificationRow(const QSqlDatabase &scratch);

} // namespace reports
