#include "reports/claimscheck/ClaimsCheck.h"

#include "reports/claimscheck/ClaimsData.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <algorithm>

namespace reports {

Result<QList<ClaimFinding>> CheckClaims(const QSqlDatabase &clinic, const AnnualPackageTable &packages,
                                        const Period &period, const QString &medicCode, const QDate &today)
{
    using namespace claims;
    try {
        const ClaimsData data = ReadClaimsData(clinic, packages, period, medicCode, today);
        QList<ClaimFinding> findings;
        CheckYearRules(data, findings);
        CheckLineRules(data, findings);
        CheckSheetRules(data, findings);
        CheckPatientRules(data, findings);
        for (ClaimFinding &finding : findings)
            finding.name = data.cards.value(finding.EGN).name;
        std::sort(findings.begin(), findings.end(), FindingBefore);
        return Result<QList<ClaimFinding>>::success(findings);
    } catch (const store::SqlError &error) {
        return Result<QList<ClaimFinding>>::failure(error.message());
    }
}

Result<QList<ClaimFinding>> CheckClaims(const QSqlDatabase &clinic, const Period &period, const QString &medicCode,
                                        const QDate &today)
{
    const auto packages = AnnualPackageTable::load(store::paths().folder);
    if (!packages)
        return Result<QList<ClaimFinding>>::failure(packages.error());
    return CheckClaims(clinic, packages.value(), period, medicCode, today);
}

} // namespace reports
