#pragma once

#include "reports/Period.h"
#include "reports/claimscheck/AnnualPackage.h"
#include "reports/claimscheck/ClaimRules.h"
#include "store/Result.h"

#include <QDate>
#include <QSqlDatabase>

// The check of a doctor's claims of a period before the report goes to the fund: every line of
// the doctor dated in the period against every rule, the patient's whole calendar years (with
// every doctor of the practice) where a rule counts by the year. Reads only; nothing changes.
namespace reports {

// The findings in list order (FindingBefore); empty when the period is clean. A failure of the
// store is a message.
Result<QList<ClaimFinding>> CheckClaims(const QSqlDatabase &clinic, const AnnualPackageTable &packages,
                                        const Period &period, const QString &medicCode, const QDate &today);

// The same on the open store, with the package table of its data folder.
Result<QList<ClaimFinding>> CheckClaims(const QSqlDatabase &clinic, const Period &period, const QString &medicCode,
                                        const QDate &today);

} // namespace reports
