#include "maintenance/DemoServices.h"

#include "maintenance/DemoDays.h"
#include "maintenance/DemoRows.h"
#include "patients/ToothMap.h"
#include "store/Dates.h"
#include "treatment/FundPrice.h"
#include "treatment/Minutes.h"
#include "treatment/SheetNumbers.h"
#include "treatment/ShortCodes.h"

#include <algorithm>
#include <array>

namespace {

constexpr int MaxLinesOfVisit = 4; // an examination and up to three treatments

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

class ServicePlanner final
{
public:
    ServicePlanner(QRandomGenerator &random, const DemoOptions &options, int doctors,
                   const QList<DemoPatient> &patients, const FundPriceTable &prices)
        : m_random(random)
        , m_options(options)
        , m_patients(patients)
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
        const DemoPatient &patient = m_patients.at(p);
        const int from = m_days.firstOnOrAfter(patient.registered);
        if (from >= m_days.count())
            return;
        QList<int> picks(m_random.bounded(3 * m_options.years + 1));
        for (int &pick : picks)
            pick = from + m_random.bounded(m_days.count() - from);
        std::sort(picks.begin(), picks.end());
        int examYear = 0;
        for (const int pick : picks) {
            const QDate date = m_days.day(pick);
            PlannedVisit visit = makeVisit(patient, date, date.year() != examYear);
            visit.day = m_days.book(patient.doctor, pick, minutesOf(visit, patient, date));
            visit.patient = p;
            if (visit.day < 0)
                continue; // the doctor's days around it are full
            if (codeAt(visit.code[0]).KodHelp == u"101")
                examYear = date.year();
            visits << visit;
        }
    }

    PlannedVisit makeVisit(const DemoPatient &patient, const QDate &date, bool exam)
    {
        PlannedVisit visit;
        if (exam)
            visit.code[visit.lines++] = codeIndex(QStringLiteral("1"));
        const QList<quint8> &codes = treatmentCodes(hasMilkTeeth(patient, date));
        for (int n = 1 + m_random.bounded(3); n > 0; --n) {
            const quint8 code = codes.at(m_random.bounded(int(codes.size())));
            visit.field[visit.lines] = quint8(toothField(codeAt(code)));
            visit.code[visit.lines++] = code;
        }
        return visit;
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
    const DemoOptions &m_options;
    const QList<DemoPatient> &m_patients;
    const FundPriceTable &m_prices;
    DemoDays m_days;
};

class ServiceWriter final
{
public:
    ServiceWriter(const QSqlDatabase &clinic, QRandomGenerator &random, const DemoOptions &options,
                  const QList<DemoDoctor> &doctors, const FundPriceTable &prices)
        : m_clinic(clinic)
        , m_random(random)
        , m_doctors(doctors)
        , m_prices(prices)
        , m_monthStart(options.today.year(), options.today.month(), 1)
        , m_help(clinic, QStringLiteral("Help"),
                 {QStringLiteral("EGN"), QStringLiteral("Data"), QStringLiteral("Help"), QStringLiteral("KodZab"),
                  QStringLiteral("TextHelp"), QStringLiteral("KodHelp"), QStringLiteral("ZK"), QStringLiteral("ListID"),
                  QStringLiteral("KodMedic"), QStringLiteral("Cena"), QStringLiteral("Times"), QStringLiteral("Schet")})
    {
    }

    // One sheet per visit, numbered per doctor and year in the order of the days.
    void write(const PlannedVisit &visit, const DemoPatient &patient, const QDate &date)
    {
        const QString listId = sheetNumberText(++m_sheets[{patient.doctor, date.year()}]);
        for (int i = 0; i < visit.lines; ++i)
            addLine(patient, date, codeAt(visit.code[i]), visit.field[i], listId);
        addReferral(patient, date, listId);
    }

    qint64 lines() const { return m_lines; }

private:
    void addLine(const DemoPatient &patient, const QDate &date, const ShortCode &code, int field, const QString &listId)
    {
        const auto price = m_prices.priceFor(code.fundKey, patient.egn, date);
        const FundPrice priced = price ? price.value() : FundPrice{};
        // The print of the ambulatory sheet clears ZK and sets Schet; a line of this month is
        // still as the entry left it, waiting for the print.
        const bool printed = date < m_monthStart;
        m_help.add({patient.egn, dates::toIso(date), code.Help,
                    field ? QVariant(QString::number(toothmap::toothOf(field))) : QVariant(QMetaType(QMetaType::QString)),
                    store::textOrNull(code.TextHelp), code.KodHelp, printed ? 0 : 1, listId,
                    m_doctors.at(patient.doctor).code, priced.storedPrice(), int(priced.minutes), printed ? 1 : 0});
        ++m_lines;
    }

    void addReferral(const DemoPatient &patient, const QDate &date, const QString &listId)
    {
        const int roll = m_random.bounded(100);
        const QString day = dates::toIso(date);
        if (roll < 3)
            store::run(m_clinic, QStringLiteral("INSERT INTO Path (EGN, ListID, Data, Nomer, SIMP, BCD) VALUES (?,?,?,?,?,?)"),
                       {patient.egn, listId, day, number(), QStringLiteral("64"), QStringLiteral("1")});
        else if (roll < 5)
            store::run(m_clinic, QStringLiteral("INSERT INTO Invest (EGN, ListID, Data, Nomer, Kod1, Kod2) VALUES (?,?,?,?,?,?)"),
                       {patient.egn, listId, day, number(), QStringLiteral("10.11"), QVariant()});
        else if (roll < 7)
            store::run(m_clinic, QStringLiteral("INSERT INTO Spec (EGN, ListID, Data, SISP1, SISP2) VALUES (?,?,?,?,?)"),
                       {patient.egn, listId, day, QStringLiteral("62"), QVariant()});
    }

    QString number() { return QStringLiteral("%1").arg(m_random.bounded(1000000), 6, 10, QChar(u'0')); }

    QSqlDatabase m_clinic;
    QRandomGenerator &m_random;
    const QList<DemoDoctor> &m_doctors;
    const FundPriceTable &m_prices;
    QDate m_monthStart;
    DemoRows m_help;
    QHash<QPair<int, int>, int> m_sheets; // (doctor, year) -> last sheet number
    qint64 m_lines = 0;
};

} // namespace

qint64 addDemoServices(const QSqlDatabase &clinic, QRandomGenerator &random, const DemoOptions &options,
                       const QList<DemoDoctor> &doctors, const QList<DemoPatient> &patients)
{
    const FundPriceTable prices = FundPriceTable::load(clinic);
    ServicePlanner planner(random, options, int(doctors.size()), patients, prices);
    const QList<PlannedVisit> visits = planner.plan();
    ServiceWriter writer(clinic, random, options, doctors, prices);
    for (const PlannedVisit &visit : visits)
        writer.write(visit, patients.at(visit.patient), planner.days().day(visit.day));
    return writer.lines();
}
