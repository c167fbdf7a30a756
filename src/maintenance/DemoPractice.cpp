#include "maintenance/DemoPractice.h"

#include "admin/AccessCodes.h"
#include "maintenance/DemoPeople.h"
#include "patients/EgnRules.h"
#include "patients/ToothMap.h"
#include "store/Dates.h"
#include "store/Schema.h"
#include "store/Sql.h"
#include "store/Store.h"
#include "treatment/FundPrice.h"
#include "treatment/ShortCodes.h"

#include <QSqlError>

#include <algorithm>

namespace {

using demopeople::Person;

struct PostPlace
{
    QString PKod, Tawn, Obsh, Obl, ZK, ZdRn;
};

struct DemoPatient
{
    Person person;
    int doctor;
    QDate registered;
};

struct Visit
{
    QDate date;
    int patient;
    bool exam;
};

// A prepared INSERT into the named columns, run once per row.
class Inserter final
{
public:
    Inserter(const QSqlDatabase &db, const QString &table, const QStringList &columns)
        : m_query(db)
    {
        const QString marks = QStringList(QList<QString>(columns.size(), QStringLiteral("?"))).join(u',');
        if (!m_query.prepare(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)").arg(table, columns.join(u','), marks)))
            throw store::SqlError(m_query.lastError().text());
    }

    void add(const QVariantList &values)
    {
        for (int i = 0; i < values.size(); ++i)
            m_query.bindValue(i, values.at(i));
        if (!m_query.exec())
            throw store::SqlError(m_query.lastError().text());
    }

private:
    QSqlQuery m_query;
};

QString digits(QRandomGenerator &random, int count)
{
    QString text;
    for (int i = 0; i < count; ++i)
        text += QChar(u'0' + random.bounded(10));
    return text;
}

QDate workingDayOnOrBefore(QDate date)
{
    while (date.dayOfWeek() > 5)
        date = date.addDays(-1);
    return date;
}

QDate randomDay(QRandomGenerator &random, const QDate &from, const QDate &to)
{
    const qint64 span = std::max<qint64>(1, from.daysTo(to) + 1);
    return from.addDays(random.bounded(int(span)));
}

class DemoBuilder final
{
public:
    explicit DemoBuilder(const DemoOptions &options)
        : m_options(options)
        , m_random(options.seed)
        , m_db(store::clinicDb())
        , m_first(options.today.addYears(-options.years).addDays(1))
    {
    }

    DemoSummary build()
    {
        loadPlaces();
        m_prices = FundPriceTable::load(m_db);
        store::Transaction transaction(m_db);
        addDoctors();
        addPatients();
        addServices();
        addDiary();
        transaction.commit();
        m_summary.patients = int(m_patients.size());
        return m_summary;
    }

private:
    void loadPlaces()
    {
        QSqlQuery rows = store::run(store::dataDb(), QStringLiteral("SELECT PKod, Tawn, Obsh, Obl, ZK, ZdRn FROM PostCode ORDER BY ID"));
        while (rows.next())
            m_places << PostPlace{rows.value(0).toString(), rows.value(1).toString(), rows.value(2).toString(),
                                  rows.value(3).toString(), rows.value(4).toString(), rows.value(5).toString()};
        if (m_places.isEmpty())
            m_places << PostPlace{QStringLiteral("1000"), QStringLiteral("гр. София"), QStringLiteral("Столична"),
                                  QStringLiteral("София-град"), QStringLiteral("22"), QStringLiteral("01")};
    }

    void addDoctors()
    {
        Inserter medic(m_db, QStringLiteral("Medic"), {QStringLiteral("Names"), QStringLiteral("EGN"),
                                                       QStringLiteral("KodMedic"), QStringLiteral("Password")});
        for (int i = 0; i < m_options.doctors; ++i) {
            const Person person = demopeople::makePerson(m_random, randomDay(m_random, QDate(1960, 1, 1), QDate(1995, 12, 31)));
            DemoDoctor doctor{person.names, QStringLiteral("22") + digits(m_random, 8),
                              QString::number(1000 + m_random.bounded(9000))};
            medic.add({doctor.name, person.egn, doctor.code, accesscodes::hashForStorage(doctor.accessCode)});
            m_summary.doctors << doctor;
        }
    }

    Person uniquePerson()
    {
        for (;;) {
            const QDate born = randomDay(m_random, QDate(1930, 1, 1), QDate(2009, 12, 31));
            Person person = demopeople::makePerson(m_random, born);
            if (!m_usedNumbers.contains(person.egn)) {
                m_usedNumbers.insert(person.egn);
                return person;
            }
        }
    }

    void addPatients()
    {
        QStringList columns{QStringLiteral("EGN"), QStringLiteral("Names"), QStringLiteral("DataB"),
                            QStringLiteral("DataR"), QStringLiteral("Pol"), QStringLiteral("Country"),
                            QStringLiteral("RZOK"), QStringLiteral("ZR"), QStringLiteral("PKod"),
                            QStringLiteral("Tawn"), QStringLiteral("Obsh"), QStringLiteral("Obl"),
                            QStringLiteral("UL"), QStringLiteral("MTel"), QStringLiteral("ZBook"),
                            QStringLiteral("LKod"), QStringLiteral("IDName")};
        Inserter pacients(m_db, QStringLiteral("Pacients"), columns);
        Inserter dental(m_db, QStringLiteral("Dental"), QStringList{QStringLiteral("EGN")} + store::chartFieldNames());
        for (int i = 0; i < m_options.patients; ++i) {
            DemoPatient patient{uniquePerson(), m_random.bounded(std::max(1, m_options.doctors)),
                                randomDay(m_random, m_first, m_options.today)};
            const PostPlace &place = m_places.at(m_random.bounded(int(m_places.size())));
            const QString street = QStringLiteral("ул. %1 №%2").arg(demopeople::streetName(m_random)).arg(1 + m_random.bounded(120));
            pacients.add({patient.person.egn, patient.person.names,
                          dates::toIso(*EgnBirthDate(patient.person.egn)), dates::toIso(patient.registered),
                          patient.person.male ? QStringLiteral("М") : QStringLiteral("Ж"), QStringLiteral("BG"),
                          place.ZK, place.ZdRn, place.PKod, place.Tawn, place.Obsh, place.Obl, street,
                          QStringLiteral("08") + digits(m_random, 8), digits(m_random, 8),
                          m_summary.doctors.value(patient.doctor).code, i + 1});
            dental.add(chartRow(patient.person.egn));
            m_patients << patient;
        }
    }

    QVariantList chartRow(const QString &egn)
    {
        static const QStringList findings{QStringLiteral("C"), QStringLiteral("O"), QStringLiteral("O"),
                                          QStringLiteral("E"), QStringLiteral("K"), QStringLiteral("X"),
                                          QStringLiteral("R"), QStringLiteral("P"), QStringLiteral("G"),
                                          QStringLiteral("Pa")};
        QVariantList row{egn};
        for (int field = 1; field <= toothmap::FieldCount; ++field) {
            const bool milk = toothmap::position(field).milk;
            if (!milk && m_random.bounded(4) == 0)
                row << findings.at(m_random.bounded(int(findings.size())));
            else
                row << QVariant(QMetaType(QMetaType::QString));
        }
        return row;
    }

    QList<Visit> planVisits()
    {
        QList<Visit> visits;
        for (int p = 0; p < m_patients.size(); ++p) {
            const int count = m_random.bounded(3 * m_options.years + 1);
            QList<QDate> days;
            for (int v = 0; v < count; ++v)
                days << workingDayOnOrBefore(randomDay(m_random, m_patients[p].registered, m_options.today));
            std::sort(days.begin(), days.end());
            int examYear = 0;
            for (const QDate &day : days) {
                visits << Visit{day, p, day.year() != examYear};
                examYear = day.year();
            }
        }
        std::stable_sort(visits.begin(), visits.end(), [](const Visit &a, const Visit &b) { return a.date < b.date; });
        return visits;
    }

    const ShortCode &treatmentCode()
    {
        // Fillings are the daily bread; root canals and extractions come less often.
        static const QStringList weighted = QStringLiteral(
            "31-2 31-2 31-2 31 31 31-3 31-4 30-2 30 30-1 31-1 31-1 32 33 32-1 33-1 58 58-1 58-2 59 59-1 59-2 1-3")
                                                .split(u' ');
        return *matchShortCode(weighted.at(m_random.bounded(int(weighted.size()))));
    }

    void addServices()
    {
        Inserter help(m_db, QStringLiteral("Help"),
                      {QStringLiteral("EGN"), QStringLiteral("Data"), QStringLiteral("Help"), QStringLiteral("KodZab"),
                       QStringLiteral("TextHelp"), QStringLiteral("KodHelp"), QStringLiteral("ZK"),
                       QStringLiteral("ListID"), QStringLiteral("KodMedic"), QStringLiteral("Cena"),
                       QStringLiteral("Times"), QStringLiteral("Schet")});
        QHash<QPair<int, int>, int> sheets; // (doctor, year) -> last sheet number
        for (const Visit &visit : planVisits()) {
            const DemoPatient &patient = m_patients.at(visit.patient);
            const QString listId = QStringLiteral("%1").arg(++sheets[{patient.doctor, visit.date.year()}], 6, 10, QChar(u'0'));
            QList<const ShortCode *> codes;
            if (visit.exam)
                codes << matchShortCode(QStringLiteral("1"));
            for (int n = 1 + m_random.bounded(3); n > 0; --n)
                codes << &treatmentCode();
            for (const ShortCode *code : codes)
                addLine(help, patient, visit.date, *code, listId);
            addReferrals(patient, visit.date, listId);
        }
    }

    void addLine(Inserter &help, const DemoPatient &patient, const QDate &date, const ShortCode &code,
                 const QString &listId)
    {
        const auto price = m_prices.priceFor(code.fundKey, patient.person.egn, date);
        const FundPrice priced = price.ok() ? price.value() : FundPrice{};
        const bool thisMonth = date.year() == m_options.today.year() && date.month() == m_options.today.month();
        const QString tooth = code.KodHelp == u"101" || code.KodHelp == u"103"
            ? QString()
            : QString::number(toothmap::toothOf(21 + m_random.bounded(32)));
        help.add({patient.person.egn, dates::toIso(date), code.Help, store::textOrNull(tooth),
                  store::textOrNull(code.TextHelp), code.KodHelp, thisMonth ? 1 : 0, listId,
                  m_summary.doctors.value(patient.doctor).code, priced.storedPrice(), int(priced.minutes), 0});
        ++m_summary.serviceLines;
    }

    void addReferrals(const DemoPatient &patient, const QDate &date, const QString &listId)
    {
        const int roll = m_random.bounded(100);
        const QString egn = patient.person.egn;
        if (roll < 3)
            run(QStringLiteral("INSERT INTO Path (EGN, ListID, Data, Nomer, SIMP, BCD) VALUES (?,?,?,?,?,?)"),
                {egn, listId, dates::toIso(date), digits(m_random, 6), QStringLiteral("64"), QStringLiteral("1")});
        else if (roll < 5)
            run(QStringLiteral("INSERT INTO Invest (EGN, ListID, Data, Nomer, Kod1, Kod2) VALUES (?,?,?,?,?,?)"),
                {egn, listId, dates::toIso(date), digits(m_random, 6), QStringLiteral("10.11"), QVariant()});
        else if (roll < 7)
            run(QStringLiteral("INSERT INTO Spec (EGN, ListID, Data, SISP1, SISP2) VALUES (?,?,?,?,?)"),
                {egn, listId, dates::toIso(date), QStringLiteral("62"), QVariant()});
    }

    void run(const QString &sql, std::initializer_list<QVariant> values) { store::run(m_db, sql, values); }

    void addDiary()
    {
        const QStringList slotNames = store::diarySlotNames();
        Inserter grafic(m_db, QStringLiteral("Grafic"), QStringList{QStringLiteral("KodMedic"), QStringLiteral("Data")} + slotNames);
        if (m_patients.isEmpty())
            return;
        for (const DemoDoctor &doctor : m_summary.doctors) {
            for (QDate day = m_options.today.addDays(-14); day <= m_options.today.addDays(14); day = day.addDays(1)) {
                if (day.dayOfWeek() > 5)
                    continue;
                QVariantList row{doctor.code, dates::toIso(day)};
                for (int slot = 0; slot < slotNames.size(); ++slot)
                    row << (m_random.bounded(10) < 3
                                ? QVariant(m_patients.at(m_random.bounded(int(m_patients.size()))).person.firstName)
                                : QVariant(QMetaType(QMetaType::QString)));
                grafic.add(row);
            }
        }
    }

    DemoOptions m_options;
    QRandomGenerator m_random;
    QSqlDatabase m_db;
    QDate m_first;
    QList<PostPlace> m_places;
    QList<DemoPatient> m_patients;
    QSet<QString> m_usedNumbers;
    FundPriceTable m_prices;
    DemoSummary m_summary;
};

} // namespace

Result<DemoSummary> generateDemoPractice(const DemoOptions &options)
{
    if (auto opened = store::openStore(store::DataPaths::inFolder(options.folder)); !opened)
        return Result<DemoSummary>::failure(opened.error());
    try {
        const int people = store::scalar(store::clinicDb(), QStringLiteral("SELECT (SELECT COUNT(*) FROM Medic) + (SELECT COUNT(*) FROM Pacients)")).toInt();
        if (people > 0)
            return Result<DemoSummary>::failure(
                QStringLiteral("Папката %1 вече съдържа лекари или пациенти; изберете празна папка.").arg(options.folder));
        return Result<DemoSummary>::success(DemoBuilder(options).build());
    } catch (const store::SqlError &error) {
        return Result<DemoSummary>::failure(error.message());
    }
}
