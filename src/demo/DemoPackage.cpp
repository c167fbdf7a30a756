#include "demo/DemoPackage.h"

#include "reports/claimscheck/AnnualPackage.h"

using reports::AgeGroup;
using reports::AnnualPackage;

DemoPackage::DemoPackage(const reports::AnnualPackageTable &packages, const FundPriceTable &prices)
    : m_packages(packages)
    , m_prices(prices)
{
}

const AnnualPackage *DemoPackage::find(int year, AgeGroup group) const
{
    return m_packages.find(year, group);
}

bool DemoPackage::take(DemoPackageYear &year, const QString &egn, const QDate &day, const QString &code,
                       const QString &kodZab) const
{
    if (year.year != day.year())
        year = DemoPackageYear{day.year()};
    if (!paidForAge(egn, day, code))
        return false;
    const std::optional<AgeGroup> group = reports::AgeGroupOn(egn, day, EgnRule::System);
    if (!group)
        return true; // a number without a birth date is not judged by age
    const AnnualPackage *package = m_packages.find(day.year(), *group);
    if (code == u"101") {
        if (year.examinations >= (package ? package->examinations : 1))
            return false;
        ++year.examinations;
        return true;
    }
    if (!reports::IsPackageActivity(code, *group))
        return true;
    if (!package || year.activities >= package->activities)
        return false;
    const bool endodontic = package->endodonticPermanent >= 0 && reports::IsEndodonticCode(code) &&
                            reports::OnPermanentTooth(kodZab);
    if (endodontic && year.endodontic >= package->endodonticPermanent)
        return false;
    ++year.activities;
    year.endodontic += endodontic ? 1 : 0;
    return true;
}

// The fund's row of the code itself, by the age on the day: a code it does not know, or prices 0
// for the group, is not paid.
bool DemoPackage::paidForAge(const QString &egn, const QDate &day, const QString &code) const
{
    const auto priced = m_prices.priceFor(code, egn, day);
    return priced && priced->price > 0;
}
