#pragma once

#include "base/Page.h"
#include "reports/Period.h"
#include "reports/claimscheck/ClaimRules.h"

#include <QList>
#include <QString>

// The printed list of the claims check ("chkClaims"), on A4: the report's heading with the
// period and the doctor, then the findings grouped by rule, each group under its title and its
// number of findings, each finding a row: Text1 date, Text2 EGN, Text3 name, Text4 sheet, Text6
// the rule's code, Text5 text (read by print::rowItemName(name, k)); a group's title row holds Group1. A clean period
// prints one row saying so.
namespace reports {

print::PageDescription ClaimsCheckPage(const QList<ClaimFinding> &findings, const Period &period,
                                       const QString &medicName);

// "Проверка на отчета към НЗОК: N забележки" / "...: няма забележки".
QString FindingsSummary(int findings);

} // namespace reports
