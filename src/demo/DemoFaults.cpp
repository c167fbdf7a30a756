#include "demo/DemoFaults.h"

#include "demo/DemoPackage.h"
#include "demo/DemoPeople.h"
#include "demo/DemoServices.h"
#include "demo/DemoSheets.h"
#include "reports/claimscheck/AnnualPackage.h"
#include "store/Dates.h"
#include "store/Sql.h"
#include "treatment/Minutes.h"

#include <QSet>

#include <algorithm>
#include <functional>

using reports::AgeGroup;
using reports::ClaimRule;

namespace {

// A line of the month the faults go into.
struct MonthLine
{
    qint64 id = 0;
    QString EGN;
    QDate Data;
    QString KodHelp;
    QString ListID;
    int doctor = 0;
};

struct Typed
{
    const char *code;
    int field; // chart field of the tooth, 0 for none
};

class FaultMaker final
{
public:
    FaultMaker(DemoSheets &sheets, const QSqlDatabase &clinic, const DemoOptions &options,
               const QList<DemoPatient> &patients, const DemoPackage &package)
        : m_sheets(sheets)
        , m_clinic(clinic)
        , m_patients(patients)
        , m_package(package)
        , m_random(options.seed ^ 0x5eedfa17u) // its own, so that the rest of the practice is as without faults
        , m_today(options.today)
        , m_first(QDate(options.today.year(), options.today.month(), 1).addMonths(-1))
        , m_last(m_first.addMonths(1).addDays(-1))
    {
        for (QDate day = m_first; day <= m_last; day = day.addDays(1))
            if (day.dayOfWeek() <= 5)
                m_workdays << day;
        for (int p = 0; p < patients.size(); ++p)
            m_patientOf.insert(patients.at(p).egn, p);
        readMonth();
    }

    QList<DemoFault> make()
    {
        if (m_patients.isEmpty())
            return {};
        // First, while the month is as the practice left it.
        dayOverMinutes();
        secondExamination();
        overPackage();
        overEndodonticPackage();
        // 508 on a child's permanent tooth; on an adult's where the practice has no child.
        oneLineVisit({ClaimRule::MilkCodeOnPermanentTooth}, {"58", permanentField()}, {AgeGroup::UpTo18, std::nullopt});
        oneLineVisit({ClaimRule::MilkCodeOverEighteen}, {"32", permanentField()}, {AgeGroup::Over18});
        oneLineVisit({ClaimRule::NotPaidForAge}, {"33", permanentField()}, {AgeGroup::Over18});
        unknownCode();
        fillingWithoutTooth();
        lineWithout(ClaimRule::NoPrice, QStringLiteral("Cena"), 0);
        lineWithout(ClaimRule::NoMinutes, QStringLiteral("Times"), QVariant());
        sharedSheet();
        sheetOutOfSeries();
        numberTypedWrong();
        cardWithoutBirthDate();
        lineBeforeBirth();
        lineAfterToday();
        referralWithoutNumber();
        return m_faults;
    }

private:
    void readMonth()
    {
        QHash<QString, int> doctorOf;
        for (int d = 0; d < m_sheets.doctors().size(); ++d)
            doctorOf.insert(m_sheets.doctors().at(d).code, d);
        QSqlQuery lines = store::run(m_clinic,
                                     QStringLiteral("SELECT ID, EGN, Data, KodHelp, ListID, KodMedic FROM Help "
                                                    "WHERE Data >= ? AND Data <= ? ORDER BY ID"),
                                     {dates::toIso(m_first), dates::toIso(m_last)});
        while (lines.next()) {
            m_month << MonthLine{lines.value(0).toLongLong(),
                                 lines.value(1).toString(),
                                 dates::fromIso(lines.value(2).toString()).value_or(QDate()),
                                 lines.value(3).toString(),
                                 lines.value(4).toString(),
                                 doctorOf.value(lines.value(5).toString())};
            m_minutes[{m_month.last().doctor, m_month.last().Data}] += ActivityMinutes(m_month.last().KodHelp);
        }
    }

    // The busiest day of a doctor in the month by the fund's minutes, filled past the limit with
    // the visits of patients who have claimed nothing yet in the year, so that only the day is wrong.
    void dayOverMinutes()
    {
        if (m_minutes.isEmpty())
            return;
        auto busiest = m_minutes.cbegin();
        for (auto day = m_minutes.cbegin(); day != m_minutes.cend(); ++day)
            if (day.value() > busiest.value() || (day.value() == busiest.value() && day.key() < busiest.key()))
                busiest = day;
        const auto [doctor, day] = busiest.key();
        DemoFault fault{{ClaimRule::DayOverMinutes}, {}, day, m_sheets.doctors().at(doctor).code, 0};
        while (m_minutes.value({doctor, day}) <= MinutesOfDay) {
            const DemoPatient *patient = freshPatient(AgeGroup::Over18, doctor);
            if (!patient)
                return;
            fault.lines +=
                addVisit(patient->egn, doctor, day, {{"1", 0}, {"31-2", permanentField()}, {"31-2", permanentField()}});
            fault.EGN = patient->egn;
        }
        m_faults << fault;
    }

    // A second examination in the year, by the other doctor where there are two.
    void secondExamination()
    {
        const MonthLine *exam = someLine([](const MonthLine &line) { return line.KodHelp == u"101"; });
        if (!exam)
            return;
        const int other = (exam->doctor + 1) % int(m_sheets.doctors().size());
        const qsizetype next = m_workdays.indexOf(exam->Data) + 1;
        const QDate day = next < m_workdays.size() ? m_workdays.at(next) : exam->Data;
        record({ClaimRule::SecondExamination}, exam->EGN, day, other, addVisit(exam->EGN, other, day, {{"1", 0}}));
    }

    // One filling more than the adult package holds, in one visit; in a year the package table
    // does not know, the check warns of that instead.
    void overPackage()
    {
        const DemoPatient *patient = freshPatient(AgeGroup::Over18);
        if (!patient)
            return;
        const reports::AnnualPackage *package = m_package.find(m_first.year(), AgeGroup::Over18);
        QList<Typed> fillings;
        for (int n = package ? package->activities + 1 : 1; n > 0; --n)
            fillings << Typed{"31-2", permanentField()};
        const QDate day = dayWithRoom(patient->doctor, fillings);
        record({package ? ClaimRule::OverPackage : ClaimRule::UnknownPackage}, patient->egn, day, patient->doctor,
               addVisit(patient->egn, patient->doctor, day, fillings));
    }

    // One root treatment of a permanent tooth more than a child's package holds, one a visit.
    void overEndodonticPackage()
    {
        const reports::AnnualPackage *package = m_package.find(m_first.year(), AgeGroup::UpTo18);
        if (!package || package->endodonticPermanent < 0)
            return;
        const DemoPatient *child = freshPatient(AgeGroup::UpTo18);
        if (!child)
            return;
        QList<QDate> days;
        for (int n = 0; n <= package->endodonticPermanent; ++n)
            days << dayWithRoom(child->doctor, {{"33", 0}});
        std::sort(days.begin(), days.end());
        int lines = 0;
        for (const QDate &day : std::as_const(days))
            lines += addVisit(child->egn, child->doctor, day, {{"33", permanentField()}});
        record({ClaimRule::OverEndodonticPackage}, child->egn, days.last(), child->doctor, lines);
    }

    // A visit of one line that the fund refuses, of a patient of the first age group that has one
    // (nullopt: of any age).
    void oneLineVisit(const QList<ClaimRule> &rules, const Typed &line, const QList<std::optional<AgeGroup>> &groups)
    {
        const DemoPatient *patient = nullptr;
        for (qsizetype g = 0; g < groups.size() && !patient; ++g)
            patient = freshPatient(groups.at(g));
        if (!patient)
            return;
        const QDate day = dayWithRoom(patient->doctor, {line});
        record(rules, patient->egn, day, patient->doctor, addVisit(patient->egn, patient->doctor, day, {line}));
    }

    // A service of the practice's own price list written on a sheet to the fund.
    void unknownCode()
    {
        const MonthLine *line = someLine([](const MonthLine &) { return true; });
        if (!line)
            return;
        DemoLine own = m_sheets.fundLine(line->EGN, line->doctor, line->Data, *matchShortCode(QStringLiteral("31-2")),
                                         permanentField(), line->ListID);
        own.KodHelp = QStringLiteral("906");
        own.TextHelp = QStringLiteral("Фотополимер");
        own.Cena = 0;
        own.Times = 0;
        m_sheets.add(own);
        record({ClaimRule::UnknownCode}, line->EGN, line->Data, line->doctor, 1);
    }

    // A line of the fund's activities whose price or minutes were left out.
    // A filling stored with the tooth box left empty; a visit of its own where the month has
    // no filling to take it from.
    void fillingWithoutTooth()
    {
        const MonthLine *line = someLine([](const MonthLine &line) { return line.KodHelp == u"301"; });
        if (!line) {
            oneLineVisit({ClaimRule::NoTooth}, {"30-2", 0}, {std::nullopt});
            return;
        }
        store::run(m_clinic, QStringLiteral("UPDATE Help SET KodZab = NULL WHERE ID = ?"), {line->id});
        record({ClaimRule::NoTooth}, line->EGN, line->Data, line->doctor, 0);
    }

    void lineWithout(ClaimRule rule, const QString &column, const QVariant &value)
    {
        const MonthLine *line =
            someLine([](const MonthLine &line) { return line.KodHelp == u"301" || line.KodHelp == u"101"; });
        if (!line)
            return;
        store::run(m_clinic, QStringLiteral("UPDATE Help SET %1 = ? WHERE ID = ?").arg(column), {value, line->id});
        record({rule}, line->EGN, line->Data, line->doctor, 0);
    }

    // A line of another patient of the doctor written on a patient's sheet.
    void sharedSheet()
    {
        const MonthLine *line = someLine([](const MonthLine &) { return true; });
        if (!line)
            return;
        const DemoPatient *other = somePatient(std::nullopt, [&](const DemoPatient &patient) {
            return patient.doctor == line->doctor && patient.egn != line->EGN;
        });
        if (!other)
            return;
        m_sheets.add(m_sheets.fundLine(other->egn, line->doctor, line->Data, *matchShortCode(QStringLiteral("1-3")), 0,
                                       line->ListID));
        record({ClaimRule::SharedSheet}, other->egn, line->Data, line->doctor, 1);
    }

    // A sheet numbered 000000: the series starts at 000001, and the next number is not disturbed.
    void sheetOutOfSeries()
    {
        const DemoPatient *patient = somePatient(std::nullopt);
        if (!patient)
            return;
        const QDate day = someDay();
        m_sheets.add(m_sheets.fundLine(patient->egn, patient->doctor, day, *matchShortCode(QStringLiteral("1-3")), 0,
                                       QStringLiteral("000000")));
        record({ClaimRule::SheetOutOfSeries}, patient->egn, day, patient->doctor, 1);
    }

    // A visit written under the patient's number with its last digit mistyped: no card has it.
    void numberTypedWrong()
    {
        const DemoPatient *patient = somePatient(std::nullopt);
        if (!patient)
            return;
        const QDate day = someDay();
        QString egn = patient->egn;
        egn[9] = QChar(u'0' + (egn.at(9).digitValue() + 1) % 10);
        record({ClaimRule::EgnFault, ClaimRule::NoCard}, egn, day, patient->doctor,
               addVisit(egn, patient->doctor, day, {{"1-3", 0}}));
    }

    void cardWithoutBirthDate()
    {
        const MonthLine *line = someLine([](const MonthLine &) { return true; });
        if (!line)
            return;
        store::run(m_clinic, QStringLiteral("UPDATE Pacients SET DataB = NULL WHERE EGN = ?"), {line->EGN});
        record({ClaimRule::NoBirthDate}, line->EGN, line->Data, line->doctor, 0);
    }

    // A visit under a number whose holder was born days later: typed wrong, so no card has it.
    void lineBeforeBirth()
    {
        const QDate day = someDay();
        QString egn;
        do
            egn = demopeople::makeEgn(m_random, day.addDays(1 + m_random.bounded(20)), m_random.bounded(2) == 0);
        while (m_patientOf.contains(egn));
        const int doctor = m_random.bounded(int(m_sheets.doctors().size()));
        record({ClaimRule::BeforeBirth, ClaimRule::NoCard}, egn, day, doctor, addVisit(egn, doctor, day, {{"1-3", 0}}));
    }

    // A visit entered ahead, on the next working day after today.
    void lineAfterToday()
    {
        QDate day = m_today.addDays(1);
        while (day.dayOfWeek() > 5)
            day = day.addDays(1);
        const DemoPatient *patient = somePatient(std::nullopt);
        if (patient)
            record({ClaimRule::FutureDate}, patient->egn, day, patient->doctor,
                   addVisit(patient->egn, patient->doctor, day, {{"1-3", 0}}));
    }

    void referralWithoutNumber()
    {
        const MonthLine *line = someLine([](const MonthLine &) { return true; });
        if (!line)
            return;
        m_sheets.addReferral(line->EGN, line->Data, line->ListID, QStringLiteral(""));
        record({ClaimRule::IncompleteReferral}, line->EGN, line->Data, line->doctor, 0);
    }

    // A new sheet of the doctor with the lines at the fund's prices; the number of lines.
    int addVisit(const QString &egn, int doctor, const QDate &day, const QList<Typed> &lines)
    {
        const QString listId = m_sheets.takeSheet(doctor, day);
        for (const Typed &typed : lines) {
            const DemoLine line = m_sheets.fundLine(egn, doctor, day, *matchShortCode(QString::fromLatin1(typed.code)),
                                                    typed.field, listId);
            m_sheets.add(line);
            m_minutes[{doctor, day}] += ActivityMinutes(line.KodHelp);
        }
        return int(lines.size());
    }

    void record(const QList<ClaimRule> &rules, const QString &egn, const QDate &day, int doctor, int lines)
    {
        m_faults << DemoFault{rules, egn, day, m_sheets.doctors().at(doctor).code, lines};
    }

    QDate someDay() { return m_workdays.at(m_random.bounded(int(m_workdays.size()))); }
    int permanentField() { return 21 + m_random.bounded(32); } // Z21..Z52

    // A line of the month not yet used by a fault, from a place chosen at random.
    const MonthLine *someLine(const std::function<bool(const MonthLine &)> &fits)
    {
        if (m_month.isEmpty())
            return nullptr;
        const int start = m_random.bounded(int(m_month.size()));
        for (int i = 0; i < m_month.size(); ++i) {
            const MonthLine &line = m_month.at((start + i) % m_month.size());
            if (!m_usedLines.contains(line.id) && m_patientOf.contains(line.EGN) && fits(line)) {
                m_usedLines.insert(line.id);
                return &line;
            }
        }
        return nullptr;
    }

    // A patient registered by the month, of the age group all through it when one is asked for.
    const DemoPatient *somePatient(std::optional<AgeGroup> group,
                                   const std::function<bool(const DemoPatient &)> &fits = {})
    {
        const int start = m_random.bounded(int(m_patients.size()));
        for (int i = 0; i < m_patients.size(); ++i) {
            const DemoPatient &patient = m_patients.at((start + i) % m_patients.size());
            if (patient.registered <= m_first &&
                (!group || (groupOn(patient, m_first) == group && groupOn(patient, m_last) == group)) &&
                (!fits || fits(patient)))
                return &patient;
        }
        return nullptr;
    }

    static std::optional<AgeGroup> groupOn(const DemoPatient &patient, const QDate &day)
    {
        return reports::AgeGroupOn(patient.egn, day, EgnRule::System);
    }

    // Preferably a patient (of the doctor, where one is named) with no line in the year yet and
    // no fault so far, so that each fault shows by itself; else any.
    const DemoPatient *freshPatient(std::optional<AgeGroup> group, int doctor = -1)
    {
        const QString first = dates::toIso(QDate(m_first.year(), 1, 1));
        const QString last = dates::toIso(QDate(m_first.year(), 12, 31));
        const auto ofDoctor = [doctor](const DemoPatient &patient) { return doctor < 0 || patient.doctor == doctor; };
        const DemoPatient *patient = somePatient(group, [&](const DemoPatient &candidate) {
            return ofDoctor(candidate) && !m_usedPatients.contains(candidate.egn) &&
                   store::scalar(m_clinic,
                                 QStringLiteral("SELECT COUNT(*) FROM Help WHERE EGN = ? AND Data >= ? AND Data <= ?"),
                                 {candidate.egn, first, last})
                           .toInt() == 0;
        });
        if (!patient)
            patient = somePatient(group, ofDoctor);
        if (patient)
            m_usedPatients.insert(patient->egn);
        return patient;
    }

    // A working day of the month on which the doctor's day holds the lines within its minutes.
    QDate dayWithRoom(int doctor, const QList<Typed> &lines)
    {
        int minutes = 0;
        for (const Typed &typed : lines)
            minutes += ActivityMinutes(matchShortCode(QString::fromLatin1(typed.code))->KodHelp);
        const int start = m_random.bounded(int(m_workdays.size()));
        for (int i = 0; i < m_workdays.size(); ++i) {
            const QDate &day = m_workdays.at((start + i) % m_workdays.size());
            if (m_minutes.value({doctor, day}) + minutes <= MinutesOfDay)
                return day;
        }
        return m_workdays.at(start);
    }

    DemoSheets &m_sheets;
    QSqlDatabase m_clinic;
    const QList<DemoPatient> &m_patients;
    const DemoPackage &m_package;
    QRandomGenerator m_random;
    QDate m_today;
    QDate m_first; // the month of the faults
    QDate m_last;
    QList<QDate> m_workdays;
    QList<MonthLine> m_month;
    QHash<QPair<int, QDate>, int> m_minutes; // the fund's minutes of each doctor's days of the month
    QHash<QString, int> m_patientOf;
    QSet<qint64> m_usedLines;
    QSet<QString> m_usedPatients;
    QList<DemoFault> m_faults;
};

} // namespace

QList<DemoFault> addDemoFaults(DemoSheets &sheets, const QSqlDatabase &clinic, const DemoOptions &options,
                               const QList<DemoPatient> &patients, const DemoPackage &package)
{
    return FaultMaker(sheets, clinic, options, patients, package).make();
}
