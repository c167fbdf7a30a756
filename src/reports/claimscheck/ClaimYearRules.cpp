#include "reports/claimscheck/ClaimsData.h"

#include "store/Dates.h"

namespace reports::claims {
namespace {


// One patient's calendar year, walked in date order over the lines of every doctor; findings go
// only to the doctor's lines of the period.
class PatientYear final
{
public:
    PatientYear(const ClaimsData &data, const QHash<qint64, const ServiceLine *> &checked, QList<ClaimFinding> &findings,
                QHash<QPair<int, int>, ClaimFinding> &unknownPackages)
        : m_data(data), m_checked(checked), m_findings(findings), m_unknownPackages(unknownPackages)
    {
    }

    void visit(const YearLine &line)
    {
        const ServiceLine *own = m_checked.value(line.id);
        const std::optional<AgeGroup> group = AgeGroupOn(line.EGN, line.Data, m_data.egnRule);
        const AnnualPackage *package = group ? m_data.packages->find(line.Data.year(), *group) : nullptr;
        if (line.KodHelp == u"101")
            countExamination(line, own, package);
        if (group && IsPackageActivity(line.KodHelp, *group)) {
            if (!package)
                noteUnknownPackage(line.Data, *group, own);
            else
                countActivity(line, own, *package);
        }
    }

private:
    void countExamination(const YearLine &line, const ServiceLine *own, const AnnualPackage *package)
    {
        if (++m_examinations == 1)
            m_firstExamination = line;
        const int allowed = package ? package->examinations : 1;
        if (own && m_examinations > allowed)
            m_findings << LineFinding(ClaimRule::SecondExamination, *own,
                                      QStringLiteral("Преглед %1 за %2 г.; първият е от %3 (лекар %4)")
                                          .arg(m_examinations)
                                          .arg(line.Data.year())
                                          .arg(dates::toTyped(m_firstExamination.Data), m_firstExamination.KodMedic));
    }

    void countActivity(const YearLine &line, const ServiceLine *own, const AnnualPackage &package)
    {
        ++m_activities;
        if (own && m_activities > package.activities)
            m_findings << LineFinding(ClaimRule::OverPackage, *own,
                                      QStringLiteral("Дейност %1 за %2 г. при пакет %3 години: %4 дейности")
                                          .arg(m_activities)
                                          .arg(line.Data.year())
                                          .arg(AgeGroupText(package.group))
                                          .arg(package.activities));
        if (package.endodonticPermanent < 0 || !IsEndodonticCode(line.KodHelp) || !OnPermanentTooth(line.KodZab))
            return;
        ++m_endodontic;
        if (own && m_endodontic > package.endodonticPermanent)
            m_findings << LineFinding(ClaimRule::OverEndodonticPackage, *own,
                                      QStringLiteral("Ендодонтско лечение %1 на постоянен зъб за %2 г. при пакет %3 години: %4")
                                          .arg(m_endodontic)
                                          .arg(line.Data.year())
                                          .arg(AgeGroupText(package.group))
                                          .arg(package.endodonticPermanent));
    }

    // One warning per year and group, on the first of the doctor's lines it leaves unchecked.
    void noteUnknownPackage(const QDate &day, AgeGroup group, const ServiceLine *own)
    {
        const QPair<int, int> key{day.year(), int(group)};
        if (!own || m_unknownPackages.contains(key))
            return;
        m_unknownPackages.insert(
            key, ClaimFinding{ClaimRule::UnknownPackage, {}, {}, day, {},
                              QStringLiteral("Няма годишен пакет за %1 г., група %2 години, в %3: дейностите не са проверени")
                                  .arg(day.year())
                                  .arg(AgeGroupText(group), m_data.packages->source()),
                              0});
    }

    const ClaimsData &m_data;
    const QHash<qint64, const ServiceLine *> &m_checked;
    QList<ClaimFinding> &m_findings;
    QHash<QPair<int, int>, ClaimFinding> &m_unknownPackages;
    int m_examinations = 0;
    int m_activities = 0;
    int m_endodontic = 0;
    YearLine m_firstExamination;
};

} // namespace

void CheckYearRules(const ClaimsData &data, QList<ClaimFinding> &findings)
{
    QHash<qint64, const ServiceLine *> checked;
    for (const ServiceLine &line : data.lines)
        checked.insert(line.id, &line);
    QHash<QPair<int, int>, ClaimFinding> unknownPackages;
    // The year lines come by year, then patient, then date: a patient's year is one run of them.
    qsizetype first = 0;
    while (first < data.yearLines.size()) {
        const YearLine &head = data.yearLines.at(first);
        PatientYear year(data, checked, findings, unknownPackages);
        qsizetype next = first;
        for (; next < data.yearLines.size(); ++next) {
            const YearLine &line = data.yearLines.at(next);
            if (line.EGN != head.EGN || line.Data.year() != head.Data.year())
                break;
            year.visit(line);
        }
        first = next;
    }
    for (const ClaimFinding &warning : std::as_const(unknownPackages))
        findings << warning;
}

} // namespace reports::claims
