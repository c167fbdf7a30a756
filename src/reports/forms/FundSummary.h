#pragma once

#include "reports/Period.h"
#include "reports/PeriodLines.h"
#include "store/Result.h"

#include <QSqlDatabase>
#include <QString>

// "Справка за ЗОК": a doctor's service lines of a period counted by code group and by the two
// age groups of the fund, into the two rows of TempZOKC.
namespace reports {

// The two groups, the first column of TempZOKC, in the order the rows are written.
inline const QString UnderEighteenGroup = QStringLiteral("Под 18 години");
inline const QString OverEighteenGroup = QStringLiteral("Над 18 години");

// Fills TempZOKC (made by the caller) in one transaction of `scratch`: always the two rows,
// zeros for an empty period. Each line counts once, in its patient's age group on the day of
// the line (the 18th birthday still under 18), in Kod_101, Kod_301 (the 24 filling codes),
// Kod_332, Kod_333, Kod_508 or Kod_509 by its exact code; any other code, 103 among them,
// counts nowhere, and Kod_103 stays NULL. A count past 32767 fails with a message naming the
// period and leaves the table empty. Lines whose EGN names no birth date are left out and
// returned. Shows ProgDialog and ends with DoneMessage.
Result<SkippedPatients> BuildFundSummary(const QSqlDatabase &clinic, const QSqlDatabase &scratch,
                                         const Period &period, const QString &medicCode);

} // namespace reports
