#pragma once

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>

// The rules by which a doctor's claims of a period are checked before they go to the fund: what
// the fund would refuse or question. Each rule has a code for scripts and a short title.
namespace reports {

enum class ClaimRule {
    SecondExamination,
    OverPackage,
    OverEndodonticPackage,
    UnknownPackage,
    MilkCodeOnPermanentTooth,
    MilkCodeOverEighteen,
    NoTooth,
    NotPaidForAge,
    UnknownCode,
    NoPrice,
    NoMinutes,
    SharedSheet,
    SheetOutOfSeries,
    EgnFault,
    NoBirthDate,
    NoCard,
    BeforeBirth,
    FutureDate,
    IncompleteReferral,
    DayOverMinutes,
};

struct ClaimRuleInfo final
{
    ClaimRule rule;
    QString code;  // "EXAM", "PACKAGE", ...
    QString title; // the heading of the rule's findings
};

// Every rule, in the order the findings are listed.
const QList<ClaimRuleInfo> &ClaimRules();
const ClaimRuleInfo &ClaimRuleOf(ClaimRule rule);

// One thing the fund would refuse or question, tied to the line, sheet or patient it concerns.
struct ClaimFinding final
{
    ClaimRule rule = ClaimRule::SecondExamination;
    QString EGN;    // empty for a finding of the whole period (an unknown package)
    QString name;   // the patient's name from the card; empty without one
    QDate date;     // the line's, the referral's or the day's date
    QString ListID; // the ambulatory sheet; empty where none is concerned
    QString text;
    qint64 lineId = 0; // the service line concerned, 0 for none
};

// The order of the list: by rule, then patient, then date, then line.
bool FindingBefore(const ClaimFinding &a, const ClaimFinding &b);

// One finding as the fields of a line for scripts: rule code, EGN, date DD.MM.YYYY, sheet, text.
QStringList FindingFields(const ClaimFinding &finding);

// What the XML report's period dialog says before it writes the report.
QString FindingsQuestion(int findings);

} // namespace reports
