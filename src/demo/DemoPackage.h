#pragma once

#include "reports/claimscheck/AnnualPackage.h"
#include "treatment/FundPrice.h"

#include <QDate>
#include <QString>

// One patient's calendar year as the fund counts it: the examinations and the activities of its
// annual package so far, over the lines of every doctor.
struct DemoPackageYear final
{
    int year = 0;
    int examinations = 0;
    int activities = 0;
    int endodontic = 0; // root treatments of permanent teeth
};

// What the fund pays, so that the invented practice claims nothing the fund would refuse: no
// activity priced 0 for the patient's age group on the day, and per calendar year no more
// examinations and activities than the annual package of the age group on the line's day. It
// counts as the claims check does, by the check's own definitions, so a demo practice checks
// clean. A year the package table does not know gets its examination and no package activity:
// the table is not guessed.
class DemoPackage final
{
public:
    DemoPackage(const reports::AnnualPackageTable &packages, const FundPriceTable &prices);

    // Whether the fund pays the line of `code` on the tooth `kodZab` (FDI, empty for none) on
    // `day`, the patient's year counted so far; when it does, the line is counted into `year`.
    // Lines must come in the order of their days.
    bool take(DemoPackageYear &year, const QString &egn, const QDate &day, const QString &code,
              const QString &kodZab) const;

    // The package of the year and age group, or nullptr when the table has none.
    const reports::AnnualPackage *find(int year, reports::AgeGroup group) const;

private:
    bool paidForAge(const QString &egn, const QDate &day, const QString &code) const;

    const reports::AnnualPackageTable &m_packages;
    const FundPriceTable &m_prices;
};
