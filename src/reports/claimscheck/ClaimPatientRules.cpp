#include "reports/claimscheck/ClaimsData.h"

#include "patients/EgnMessages.h"
#include "patients/EgnRules.h"

namespace reports::claims {
namespace {

// The faults of a number by the rules a card applies, all of them, as one text.
QString EgnFaults(const QString &egn, EgnRule rule)
{
    if (EgnNotTenDigits(egn))
        return egnmessages::InvalidLength;
    QStringList faults;
    if (EgnDateBad(egn, rule))
        faults << egnmessages::DateHead;
    if (EgnMonthBad(egn, rule))
        faults << egnmessages::MonthHead;
    if (EgnCheckDigitBad(egn))
        faults << egnmessages::CheckDigitHead;
    for (QString &fault : faults)
        fault = fault.trimmed().chopped(1); // "Грешна дата в ЕГН: " without the colon
    return faults.join(QStringLiteral("; "));
}

} // namespace

void CheckPatientRules(const ClaimsData &data, QList<ClaimFinding> &findings)
{
    QSet<QString> seen;
    for (const ServiceLine &line : data.lines) {
        if (seen.contains(line.EGN))
            continue;
        seen.insert(line.EGN);
        if (const QString faults = EgnFaults(line.EGN, data.egnRule); !faults.isEmpty())
            findings << LineFinding(ClaimRule::EgnFault, line, faults);
        const auto card = data.cards.constFind(line.EGN);
        if (card == data.cards.cend())
            findings << LineFinding(ClaimRule::NoCard, line, QStringLiteral("Няма картон с това ЕГН"));
        if (!EgnBirthDate(line.EGN, data.egnRule))
            findings << LineFinding(ClaimRule::NoBirthDate, line,
                                    QStringLiteral("ЕГН не съдържа дата на раждане: правилата по възраст не са проверени"));
        else if (card != data.cards.cend() && !card->hasBirthDate)
            findings << LineFinding(ClaimRule::NoBirthDate, line,
                                    QStringLiteral("Картонът няма дата на раждане (попълва се от „Поправяне на БД“)"));
    }
}

} // namespace reports::claims
