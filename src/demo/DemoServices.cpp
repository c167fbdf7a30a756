#include "demo/DemoServices.h"

#include "demo/DemoDays.h"
#include "demo/DemoPackage.h"
#include "demo/DemoSheets.h"
#include "patients/ToothMap.h"
#include "treatment/FundPrice.h"
#include "treatment/Minutes.h"
#include "treatment/ShortCodes.h"

#include <algorithm>
#include <array>

namespace {

constexpr int MaxLinesOfVisit = 4; // an examination and up to three treatments
// A patient comes up to this many times in a calendar year; the package soon leaves nothing
// to claim on the later visits but a follow-up examination.
constexpr int MaxVisitsOfYear = 3;

struct PlannedVisit
{
    int day = 0; // index into DemoDays
    int patient = 0;
    int lines = 0;
    std::array<quint8, MaxLinesOfVisit> code{};  // index into shortCodeTable()
    std::array<quint8, MaxLinesOfVisit> field{}; // chart field of the tooth; 0 for none
};

quint8 codeIndex(const QString &typed)
{
    return quint8(matchShortCode(typed) - shortCodeTable().constData());
}

const ShortCode &codeAt(quint8 index) { return shortCodeTable().at(index); }

bool isMilkToothCode(const ShortCode &code) { return code.KodHelp == u"332" || code.KodHelp == u"508"; }

// Children lose the last milk teeth at about twelve; only they get the milk-tooth codes, well
// within the fund's "up to eighteen".
bool hasMilkTeeth(const DemoPatient &patient, const QDate &day) { return day < patient.born.addYears(12); }

QList<quint8> codeIndexes(const char *typedCodes)
{
    QList<quint8> indexes;
    for (const QString &typed : QString::fromLatin1(typedCodes).split(u' '))
        indexes << codeIndex(typed);
    return indexes;
}

// Fillings are the daily bread; root canals and extractions come less often.
const QList<quint8> &treatmentCodes(bool milkTeeth)
{
    static const QList<quint8> adult = codeIndexes("31-2 31-2 31-2 31 31 31-3 31-4 30-2 30 30-1 31-1 31-1 33 33-1 59 59-1 59-2 1-3");
    static const QList<quint8> child = codeIndexes("31-2 31-2 31 31-4 30-2 32 32 32-1 58 58 58-1 58-2 1-3");
    return milkTeeth ? child : adult;
}

QString toothText(int field)
{
    return field ? QString::number(toothmap::toothOf(field)) : QString();
}

class ServicePlanner final
{
public:
    ServicePlanner(QRandomGenerator &random, const DemoOptions &options, int doctors, const QList<DemoPatient> &patients,
                   const DemoPackage &package, const FundPriceTable &prices)
        : m_random(random)
        , m_patients(patients)
        , m_package(package)
        , m_prices(prices)
        , m_days(options.today.addYears(-options.years).addDays(1), options.today, doctors, MinutesOfDay)
    {
    }

    const DemoDays &days() const { return m_days; }

    QList<PlannedVisit> plan()
    {
        QList<PlannedVisit> visits;
        for (int p = 0; p < m_patients.size(); ++p)
            planPatient(p, visits);
        std::stable_sort(visits.begin(), visits.end(), [](const auto &a, const auto &b) { return a.day < b.day; });
        return visits;
    }

private:
    void planPatient(int p, QList<PlannedVisit> &visits)
    {
        DemoPackageYear counted;
        for (int from = m_days.firstOnOrAfter(m_patients.at(p).registered); from < m_days.count();) {
            const int end = m_days.firstOnOrAfter(QDate(m_days.day(from).year() + 1, 1, 1));
            planYear(p, from, end, counted, visits);
            from = end;
        }
    }

    // The visits of one calendar year, days [from, end) of it, in the order of their days, so
    // that the package is counted as the fund counts it.
    void planYear(int p, int from, int end, DemoPackageYear &counted, QList<PlannedVisit> &visits)
    {
        const DemoPatient &patient = m_patients.at(p);
        QList<int> picks(m_random.bounded(MaxVisitsOfYear + 1));
        for (int &pick : picks)
            pick = from + m_random.bounded(end - from);
        std::sort(picks.begin(), picks.end());
        int next = from;
        for (const int pick : picks) {
            if (std::max(pick, next) >= end)
                break;
            const QDate planned = m_days.day(std::max(pick, next));
            DemoPackageYear trial = counted;
            PlannedVisit visit = makeVisit(patient, planned, trial);
            if (visit.lines == 0)
                continue;
            const int booked = m_days.book(patient.doctor, std::max(pick, next), minutesOf(visit, patient, planned));
            if (booked < 0)
                continue; // the doctor's days around it are full
            // A visit moved to a later day is counted again on that day: the age group may have changed.
            visit = keepPaid(visit, patient, m_days.day(booked), counted);
            if (visit.lines == 0)
                continue;
            visit.day = booked;
            visit.patient = p;
            visits << visit;
            next = booked + 1;
        }
    }

    // An examination when the year has none yet, and one to three treatments, of what the fund pays.
    PlannedVisit makeVisit(const DemoPatient &patient, const QDate &date, DemoPackageYear &counted)
    {
        PlannedVisit candidate;
        candidate.code[candidate.lines++] = codeIndex(QStringLiteral("1"));
        const QList<quint8> &codes = treatmentCodes(hasMilkTeeth(patient, date));
        for (int n = 1 + m_random.bounded(3); n > 0; --n) {
            const quint8 code = codes.at(m_random.bounded(int(codes.size())));
            candidate.field[candidate.lines] = quint8(toothField(codeAt(code)));
            candidate.code[candidate.lines++] = code;
        }
        return keepPaid(candidate, patient, date, counted);
    }

    // The lines of the visit that the fund pays on `date`, counted into the patient's year.
    PlannedVisit keepPaid(const PlannedVisit &visit, const DemoPatient &patient, const QDate &date,
                          DemoPackageYear &counted) const
    {
        PlannedVisit kept;
        for (int i = 0; i < visit.lines; ++i) {
            if (!m_package.take(counted, patient.egn, date, codeAt(visit.code[i]).KodHelp, toothText(visit.field[i])))
                continue;
            kept.field[kept.lines] = visit.field[i];
            kept.code[kept.lines++] = visit.code[i];
        }
        return kept;
    }

    int toothField(const ShortCode &code)
    {
        if (code.KodHelp == u"101" || code.KodHelp == u"103")
            return 0;
        if (isMilkToothCode(code))
            return 1 + m_random.bounded(20); // Z1..Z20
        return 21 + m_random.bounded(32);    // Z21..Z52
    }

    // What a visit takes of the doctor's day: per line the larger of the fund's minutes and what
    // the count of the minutes left takes for it.
    int minutesOf(const PlannedVisit &visit, const DemoPatient &patient, const QDate &date) const
    {
        int minutes = 0;
        for (int i = 0; i < visit.lines; ++i) {
            const ShortCode &code = codeAt(visit.code[i]);
            const auto priced = m_prices.priceFor(code.fundKey, patient.egn, date);
            minutes += std::max(DayBudgetMinutes(code.KodHelp), priced ? int(priced->minutes) : 0);
        }
        return minutes;
    }

    QRandomGenerator &m_random;
    const QList<DemoPatient> &m_patients;
    const DemoPackage &m_package;
    const FundPriceTable &m_prices;
    DemoDays m_days;
};

} // namespace

void addDemoServices(DemoSheets &sheets, QRandomGenerator &random, const DemoOptions &options,
                     const QList<DemoPatient> &patients, const DemoPackage &package, const FundPriceTable &prices)
{
    ServicePlanner planner(random, options, int(sheets.doctors().size()), patients, package, prices);
    for (const PlannedVisit &visit : planner.plan()) {
        const DemoPatient &patient = patients.at(visit.patient);
        const QDate date = planner.days().day(visit.day);
        const QString listId = sheets.takeSheet(patient.doctor, date);
        for (int i = 0; i < visit.lines; ++i)
            sheets.add(sheets.fundLine(patient.egn, patient.doctor, date, codeAt(visit.code[i]), visit.field[i], listId));
        sheets.addSomeReferral(patient.egn, date, listId);
    }
}
