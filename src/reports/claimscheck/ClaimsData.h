#pragma once

#include "patients/EgnRules.h"
#include "reports/PeriodLines.h"
#include "reports/claimscheck/AnnualPackage.h"
#include "reports/claimscheck/ClaimRules.h"

#include <QHash>
#include <QList>
#include <QSet>

#include <optional>

// What the claims check reads, once, before its rules run over it; and the rules, by what they
// look at. Internal to the check.
namespace reports::claims {

// A line of any doctor in the calendar years of the period, of a patient the period concerns.
struct YearLine final
{
    qint64 id = 0;
    QString EGN;
    QDate Data;
    QString KodHelp;
    QString KodZab;
    QString KodMedic;
};

struct Card final
{
    QString name;
    bool hasBirthDate = false; // Pacients.DataB
};

struct FundRow final
{
    int minutes = 0;
    double over = 0; // CenaNad
    double upTo = 0; // CenaDo
};

struct Referral final
{
    QString kind; // how the person at the screen knows it
    QString EGN;
    QString ListID;
    std::optional<QDate> date;
    std::optional<QString> number; // nullopt for the kind that has none (to a specialist)
};

// Whose sheet is whose: the patients that carry each of the doctor's sheet numbers in a year.
struct SheetHolder final
{
    int year = 0;
    QString ListID;
    QString EGN;
};

struct ClaimsData final
{
    Period period;
    QString medicCode;
    QDate today;
    const AnnualPackageTable *packages = nullptr;
    EgnRule egnRule = EgnRule::System; // the practice's, by which ages and birth dates are read
    QList<ServiceLine> lines;      // the doctor's lines of the period, by date, then as stored
    QList<YearLine> yearLines;     // the patients' lines of the period's calendar years, by EGN, date, ID
    QList<SheetHolder> sheets;     // the doctor's sheets of the period's calendar years
    QHash<QString, Card> cards;    // by EGN
    QHash<QString, FundRow> fund;  // CenyZK by Kod
    QList<Referral> referrals;     // of the patients of the period
};

// Reads it all set-wise: a handful of queries for the whole period. Throws store::SqlError.
ClaimsData ReadClaimsData(const QSqlDatabase &clinic, const AnnualPackageTable &packages, const Period &period,
                          const QString &medicCode, const QDate &today);

// The rules, each group appending its findings (names are filled in afterwards).
void CheckLineRules(const ClaimsData &data, QList<ClaimFinding> &findings);    // codes, prices, dates, teeth
void CheckYearRules(const ClaimsData &data, QList<ClaimFinding> &findings);    // examinations and the package
void CheckSheetRules(const ClaimsData &data, QList<ClaimFinding> &findings);   // sheets, referrals, the day
void CheckPatientRules(const ClaimsData &data, QList<ClaimFinding> &findings); // number, card, birth date

// A finding about one line of the period.
ClaimFinding LineFinding(ClaimRule rule, const ServiceLine &line, const QString &text);

} // namespace reports::claims
