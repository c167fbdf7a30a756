#include "reports/claimscheck/ClaimsData.h"

#include "patients/EgnRules.h"
#include "store/Dates.h"
#include "treatment/ActivityCodes.h"

namespace reports::claims {
namespace {

bool IsMilkToothCode(const QString &code) { return code == u"332" || code == u"508"; }


bool Missing(const QVariant &value) { return value.isNull() || value.toDouble() == 0; }

class LineRules final
{
public:
    LineRules(const ClaimsData &data, QList<ClaimFinding> &findings)
        : m_data(data), m_findings(findings)
    {
    }

    void check(const ServiceLine &line)
    {
        checkDates(line);
        const QString &code = line.KodHelp;
        if (code.trimmed().isEmpty()) {
            add(ClaimRule::UnknownCode, line, QStringLiteral("Ред без код на дейност"));
            return;
        }
        const auto fund = m_data.fund.constFind(code);
        if (fund == m_data.fund.cend()) {
            add(ClaimRule::UnknownCode, line, QStringLiteral("Кодът „%1“ не е в цените на НЗОК").arg(code));
            return;
        }
        if (activities::IsToothBoundCode(code) && line.KodZab.trimmed().isEmpty())
            add(ClaimRule::NoTooth, line, QStringLiteral("%1 без код на зъб").arg(code));
        const std::optional<AgeGroup> group = AgeGroupOn(line.EGN, line.Data, m_data.egnRule);
        if (IsMilkToothCode(code))
            checkMilkCode(line, group);
        else if (group && price(*fund, *group) == 0)
            add(ClaimRule::NotPaidForAge, line,
                QStringLiteral("НЗОК не заплаща %1 на пациент %2 години").arg(code, AgeGroupText(*group)));
        const double expected = group ? price(*fund, *group) : std::max(fund->over, fund->upTo);
        if (expected > 0 && Missing(line.Cena))
            add(ClaimRule::NoPrice, line, QStringLiteral("%1 с цена 0 (НЗОК плаща %2 лв.)").arg(code).arg(expected, 0, 'f', 2));
        if (fund->minutes > 0 && Missing(line.Times))
            add(ClaimRule::NoMinutes, line, QStringLiteral("%1 без минути (по НЗОК %2 мин.)").arg(code).arg(fund->minutes));
    }

private:
    static double price(const FundRow &row, AgeGroup group) { return group == AgeGroup::Over18 ? row.over : row.upTo; }

    void checkDates(const ServiceLine &line)
    {
        if (line.Data > m_data.today)
            add(ClaimRule::FutureDate, line,
                QStringLiteral("Дата %1 е след днешната %2").arg(dates::toTyped(line.Data), dates::toTyped(m_data.today)));
        const auto born = EgnBirthDate(line.EGN, m_data.egnRule);
        if (born && line.Data < *born)
            add(ClaimRule::BeforeBirth, line,
                QStringLiteral("Дата %1 е преди раждането на %2").arg(dates::toTyped(line.Data), dates::toTyped(*born)));
    }

    void checkMilkCode(const ServiceLine &line, const std::optional<AgeGroup> &group)
    {
        if (OnPermanentTooth(line.KodZab))
            add(ClaimRule::MilkCodeOnPermanentTooth, line,
                QStringLiteral("%1 на постоянен зъб %2").arg(line.KodHelp, line.KodZab.trimmed()));
        if (group == AgeGroup::Over18)
            add(ClaimRule::MilkCodeOverEighteen, line,
                QStringLiteral("%1 след 18-ия рожден ден на пациента").arg(line.KodHelp));
    }

    void add(ClaimRule rule, const ServiceLine &line, const QString &text)
    {
        m_findings << LineFinding(rule, line, text);
    }

    const ClaimsData &m_data;
    QList<ClaimFinding> &m_findings;
};

} // namespace

void CheckLineRules(const ClaimsData &data, QList<ClaimFinding> &findings)
{
    LineRules rules(data, findings);
    for (const ServiceLine &line : data.lines)
        rules.check(line);
}

} // namespace reports::claims
