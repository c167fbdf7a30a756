#include "reports/claimscheck/ClaimRules.h"

#include "store/Dates.h"

namespace reports {

const QList<ClaimRuleInfo> &ClaimRules()
{
    static const QList<ClaimRuleInfo> rules{
        {ClaimRule::SecondExamination, QStringLiteral("EXAM"), QStringLiteral("Повече от един преглед (101) в годината")},
        {ClaimRule::OverPackage, QStringLiteral("PACKAGE"), QStringLiteral("Дейности над годишния пакет")},
        {ClaimRule::OverEndodonticPackage, QStringLiteral("PACKAGE-ENDO"),
         QStringLiteral("Ендодонтски лечения на постоянни зъби над пакета")},
        {ClaimRule::UnknownPackage, QStringLiteral("PACKAGE-UNKNOWN"), QStringLiteral("Неизвестен годишен пакет")},
        {ClaimRule::MilkCodeOnPermanentTooth, QStringLiteral("MILK-PERMANENT"),
         QStringLiteral("332 или 508 (временни зъби) на постоянен зъб")},
        {ClaimRule::MilkCodeOverEighteen, QStringLiteral("MILK-ADULT"),
         QStringLiteral("332 или 508 (временни зъби) при пациент над 18 години")},
        {ClaimRule::NoTooth, QStringLiteral("NO-TOOTH"), QStringLiteral("Дейност по зъб без код на зъб")},
        {ClaimRule::NotPaidForAge, QStringLiteral("AGE-UNPAID"),
         QStringLiteral("Дейност, която НЗОК не заплаща за възрастта на пациента")},
        {ClaimRule::UnknownCode, QStringLiteral("UNKNOWN-CODE"), QStringLiteral("Код, който не е код на НЗОК")},
        {ClaimRule::NoPrice, QStringLiteral("NO-PRICE"), QStringLiteral("Ред с цена 0")},
        {ClaimRule::NoMinutes, QStringLiteral("NO-MINUTES"), QStringLiteral("Ред без минути")},
        {ClaimRule::SharedSheet, QStringLiteral("SHEET-SHARED"),
         QStringLiteral("Един амбулаторен лист на двама пациенти")},
        {ClaimRule::SheetOutOfSeries, QStringLiteral("SHEET-SERIES"),
         QStringLiteral("Номер на амбулаторен лист извън поредицата на лекаря")},
        {ClaimRule::EgnFault, QStringLiteral("EGN"), QStringLiteral("Грешно ЕГН")},
        {ClaimRule::NoBirthDate, QStringLiteral("NO-BIRTH-DATE"), QStringLiteral("Пациент без дата на раждане")},
        {ClaimRule::NoCard, QStringLiteral("NO-CARD"), QStringLiteral("Ред на пациент без картон")},
        {ClaimRule::BeforeBirth, QStringLiteral("BEFORE-BIRTH"), QStringLiteral("Ред с дата преди раждането")},
        {ClaimRule::FutureDate, QStringLiteral("FUTURE-DATE"), QStringLiteral("Ред с бъдеща дата")},
        {ClaimRule::IncompleteReferral, QStringLiteral("REFERRAL"), QStringLiteral("Направление без номер или дата")},
        {ClaimRule::DayOverMinutes, QStringLiteral("DAY-MINUTES"), QStringLiteral("Минути за деня над 360")},
    };
    return rules;
}

const ClaimRuleInfo &ClaimRuleOf(ClaimRule rule) { return ClaimRules().at(int(rule)); }

bool FindingBefore(const ClaimFinding &a, const ClaimFinding &b)
{
    if (a.rule != b.rule)
        return int(a.rule) < int(b.rule);
    if (a.EGN != b.EGN)
        return a.EGN < b.EGN;
    if (a.date != b.date)
        return a.date < b.date;
    if (a.lineId != b.lineId)
        return a.lineId < b.lineId;
    return a.text < b.text;
}

QStringList FindingFields(const ClaimFinding &finding)
{
    return {ClaimRuleOf(finding.rule).code, finding.EGN, finding.date.isValid() ? dates::toTyped(finding.date) : QString(),
            finding.ListID, finding.text};
}

QString FindingsQuestion(int findings)
{
    return QStringLiteral("Проверката на периода намери %1 забележки по редовете за НЗОК.\r"
                          "Да ги покажа ли, преди да запиша отчета?")
        .arg(findings);
}

} // namespace reports
