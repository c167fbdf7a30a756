#include "demo/DemoPractice.h"

#include "admin/AccessCodes.h"
#include "admin/Doctors.h"
#include "admin/MedicUnit.h"
#include "demo/DemoPackage.h"
#include "demo/DemoPeople.h"
#include "demo/DemoRows.h"
#include "demo/DemoServices.h"
#include "demo/DemoSheets.h"
#include "patients/EgnRules.h"
#include "patients/ToothMap.h"
#include "store/Dates.h"
#include "store/Schema.h"
#include "store/Sql.h"
#include "store/Store.h"
#include "treatment/PatientHeader.h"

#include <QSet>

#include <algorithm>

namespace {

using demopeople::Person;

struct PostPlace
{
    QString PKod, Tawn, Obsh, Obl, ZK, ZdRn;
};

// A patient in memory, kept small: a practice may have two million.
struct PatientRow
{
    DemoPatient patient;
    QString firstName; // with its closing blank, as the diary holds it
};

QString digits(QRandomGenerator &random, int count)
{
    QString text;
    for (int i = 0; i < count; ++i)
        text += QChar(u'0' + random.bounded(10));
    return text;
}

QDate randomDay(QRandomGenerator &random, const QDate &from, const QDate &to)
{
    const qint64 span = std::max<qint64>(1, from.daysTo(to) + 1);
    return from.addDays(random.bounded(int(span)));
}

class DemoBuilder final
{
public:
    DemoBuilder(const DemoOptions &options, const QSqlDatabase &clinic, const QSqlDatabase &data)
        : m_options(options)
        , m_random(options.seed)
        , m_db(clinic)
        , m_data(data)
        , m_first(options.today.addYears(-options.years).addDays(1))
    {
    }

    Result<DemoSummary> build()
    {
        const auto packages = reports::AnnualPackageTable::load(m_options.folder);
        if (!packages)
            return Result<DemoSummary>::failure(packages.error());
        loadPlaces();
        store::Transaction transaction(m_db);
        // Inside the transaction, so that a second run cannot slip in between the look and the writes.
        if (holdsPeople())
            return Result<DemoSummary>::failure(
                QStringLiteral("Папката %1 вече съдържа лекари или пациенти; изберете празна папка.").arg(m_options.folder));
        addDoctors();
        addMedicUnit();
        addPatients();
        addServices(packages.value());
        addDiary();
        transaction.commit();
        m_summary.patients = int(m_patients.size());
        return Result<DemoSummary>::success(m_summary);
    }

private:
    void addServices(const reports::AnnualPackageTable &packages)
    {
        QList<DemoPatient> patients;
        patients.reserve(m_patients.size());
        for (const PatientRow &row : m_patients)
            patients << row.patient;
        const FundPriceTable prices = FundPriceTable::load(m_db);
        const DemoPackage package(packages, prices);
        DemoSheets sheets(m_db, m_random, m_options.today, m_summary.doctors, prices);
        addDemoServices(sheets, m_random, m_options, patients, package, prices);
        if (m_options.faults)
            m_summary.faults = addDemoFaults(sheets, m_db, m_options, patients, package);
        m_summary.serviceLines = sheets.lines();
    }

    bool holdsPeople() const
    {
        return store::scalar(m_db, QStringLiteral("SELECT (SELECT COUNT(*) FROM Medic) + (SELECT COUNT(*) FROM Pacients)")).toInt() > 0;
    }

    void loadPlaces()
    {
        QSqlQuery rows = store::run(m_data, QStringLiteral("SELECT PKod, Tawn, Obsh, Obl, ZK, ZdRn FROM PostCode ORDER BY ID"));
        while (rows.next())
            m_places << PostPlace{rows.value(0).toString(), rows.value(1).toString(), rows.value(2).toString(),
                                  rows.value(3).toString(), rows.value(4).toString(), rows.value(5).toString()};
        if (m_places.isEmpty())
            m_places << PostPlace{QStringLiteral("1000"), QStringLiteral("гр. София"), QStringLiteral("Столична"),
                                  QStringLiteral("София-град"), QStringLiteral("22"), QStringLiteral("01")};
    }

    // Names are the sign-in key and practice codes tell doctors apart: both are unique.
    void addDoctors()
    {
        DemoRows medic(m_db, QStringLiteral("Medic"), {QStringLiteral("Names"), QStringLiteral("EGN"),
                                                       QStringLiteral("KodMedic"), QStringLiteral("Password")});
        QSet<QString> taken;
        while (m_summary.doctors.size() < m_options.doctors) {
            const Person person = demopeople::makePerson(m_random, randomDay(m_random, QDate(1960, 1, 1), QDate(1995, 12, 31)));
            const DemoDoctor doctor{person.names, QStringLiteral("22") + digits(m_random, 8),
                                    digits(m_random, doctors::MinimumAccessCodeLength)};
            if (taken.contains(doctor.name) || taken.contains(doctor.code))
                continue;
            const QString fault = doctors::MedicAddCheck({doctor.name, person.egn, doctor.code, doctor.accessCode});
            if (!fault.isEmpty())
                throw store::SqlError(fault);
            taken << doctor.name << doctor.code;
            medic.add({doctor.name, person.egn, doctor.code, accesscodes::hashForStorage(doctor.accessCode)});
            m_summary.doctors << doctor;
        }
    }

    // An invented practice, so that the reports to the fund carry a believable head: the
    // registration number begins with the region's code (22, Sofia city).
    void addMedicUnit()
    {
        const QHash<QString, QString> unit{
            {QStringLiteral("UserName"), QStringLiteral("АИПСМП-ДП „Бяла усмивка“ ЕООД")},
            {QStringLiteral("UserID"), QStringLiteral("2201130457")},
            {QStringLiteral("UserType"), QStringLiteral("11")},
            {QStringLiteral("UserBULSTAT"), QStringLiteral("131452789")},
            {QStringLiteral("UserContract"), QStringLiteral("22/0457")},
            {QStringLiteral("UserUIN"), QStringLiteral("2200004571")},
            {QStringLiteral("UserSIMP"), QStringLiteral("64")},
            {QStringLiteral("UserMOL"), QStringLiteral("Елена Петрова Маринова")},
            {QStringLiteral("UserEGN"), QStringLiteral("7203154421")},
            {QStringLiteral("UserBank"), QStringLiteral("Примерна търговска банка АД")},
            {QStringLiteral("UserIBAN"), QStringLiteral("BG18PRIM92301012345678")},
            {QStringLiteral("UserBIC"), QStringLiteral("PRIMBGSF")},
            {QStringLiteral("UserCountry"), QStringLiteral("BG")},
            {QStringLiteral("UserCap"), QStringLiteral("София-град")},
            {QStringLiteral("UserObMiniCap"), QStringLiteral("Столична")},
            {QStringLiteral("UserCity"), QStringLiteral("гр. София")},
            {QStringLiteral("UserCityID"), QStringLiteral("1000")},
            {QStringLiteral("UserKs"), QStringLiteral("Лозенец")},
            {QStringLiteral("UserUl"), QStringLiteral("Кокиче")},
            {QStringLiteral("UserUlID"), QStringLiteral("12")},
            {QStringLiteral("UserVx"), QStringLiteral("А")},
            {QStringLiteral("UserEt"), QStringLiteral("1")},
            {QStringLiteral("UserTel"), QStringLiteral("02 963 41 27")},
            {QStringLiteral("UserGSM"), QStringLiteral("0888 412 736")},
            {QStringLiteral("UserEmail"), QStringLiteral("priemna@byala-usmivka.example")},
        };
        QStringList values;
        for (const QString &field : medicunit::FieldNames())
            values << unit.value(field);
        medicunit::WriteMedicUnit(m_db, values);
    }

    Person uniquePerson(QDate &born)
    {
        const QDate lastBirth = std::min(QDate(2009, 12, 31), m_options.today);
        for (;;) {
            born = randomDay(m_random, QDate(1930, 1, 1), lastBirth);
            Person person = demopeople::makePerson(m_random, born);
            if (!m_usedNumbers.contains(person.egn.toLongLong())) {
                m_usedNumbers.insert(person.egn.toLongLong());
                return person;
            }
        }
    }

    void addPatients()
    {
        const QStringList columns{QStringLiteral("EGN"), QStringLiteral("Names"), QStringLiteral("DataB"),
                                  QStringLiteral("DataR"), QStringLiteral("Pol"), QStringLiteral("Country"),
                                  QStringLiteral("RZOK"), QStringLiteral("ZR"), QStringLiteral("PKod"),
                                  QStringLiteral("Tawn"), QStringLiteral("Obsh"), QStringLiteral("Obl"),
                                  QStringLiteral("UL"), QStringLiteral("MTel"), QStringLiteral("ZBook"),
                                  QStringLiteral("LKod")};
        DemoRows pacients(m_db, QStringLiteral("Pacients"), columns);
        DemoRows dental(m_db, QStringLiteral("Dental"), QStringList{QStringLiteral("EGN")} + store::chartFieldNames());
        m_patients.reserve(m_options.patients);
        for (int i = 0; i < m_options.patients; ++i) {
            QDate born;
            const Person person = uniquePerson(born);
            const DemoPatient patient{person.egn, born, randomDay(m_random, std::max(m_first, born), m_options.today),
                                      m_random.bounded(m_options.doctors)};
            const PostPlace &place = m_places.at(m_random.bounded(int(m_places.size())));
            const QString street = QStringLiteral("ул. %1 №%2").arg(demopeople::streetName(m_random)).arg(1 + m_random.bounded(120));
            pacients.add({person.egn, person.names, dates::toIso(born), dates::toIso(patient.registered),
                          person.male ? QStringLiteral("М") : QStringLiteral("Ж"), QStringLiteral("BG"), place.ZK,
                          place.ZdRn, place.PKod, place.Tawn, place.Obsh, place.Obl, street,
                          QStringLiteral("08") + digits(m_random, 8), digits(m_random, 8),
                          m_summary.doctors.at(patient.doctor).code});
            dental.add(chartRow(person.egn, born.addYears(12) > m_options.today));
            m_patients << PatientRow{patient, FirstName(person.names)};
        }
    }

    // A child's places with a box hold milk teeth ("*" or a caries); an older patient has
    // findings on permanent teeth only.
    QVariantList chartRow(const QString &egn, bool child)
    {
        static const QStringList findings{QStringLiteral("C"), QStringLiteral("O"), QStringLiteral("O"),
                                          QStringLiteral("E"), QStringLiteral("K"), QStringLiteral("X"),
                                          QStringLiteral("R"), QStringLiteral("P"), QStringLiteral("G"),
                                          QStringLiteral("Pa")};
        QVariantList row{egn};
        for (const toothmap::Position &position : toothmap::positions()) {
            QVariant value(QMetaType(QMetaType::QString));
            if (child && position.milk)
                value = m_random.bounded(6) == 0 ? QStringLiteral("C") : QStringLiteral("*");
            else if (!child && !position.milk && m_random.bounded(4) == 0)
                value = findings.at(m_random.bounded(int(findings.size())));
            row << value;
        }
        return row;
    }

    // Two weeks back and forward, a third of the slots booked with the first names of the
    // doctor's own patients, as the booking writes them.
    void addDiary()
    {
        const QStringList slotNames = store::diarySlotNames();
        DemoRows grafic(m_db, QStringLiteral("Grafic"), QStringList{QStringLiteral("KodMedic"), QStringLiteral("Data")} + slotNames);
        QList<QList<int>> patientsOf(m_options.doctors);
        for (int p = 0; p < m_patients.size(); ++p)
            patientsOf[m_patients.at(p).patient.doctor] << p;
        for (int d = 0; d < m_options.doctors; ++d) {
            if (patientsOf.at(d).isEmpty())
                continue;
            for (QDate day = m_options.today.addDays(-14); day <= m_options.today.addDays(14); day = day.addDays(1)) {
                if (day.dayOfWeek() > 5)
                    continue;
                QVariantList row{m_summary.doctors.at(d).code, dates::toIso(day)};
                for (int slot = 0; slot < slotNames.size(); ++slot)
                    row << (m_random.bounded(10) < 3
                                ? QVariant(m_patients.at(patientsOf[d].at(m_random.bounded(int(patientsOf[d].size())))).firstName)
                                : QVariant(QMetaType(QMetaType::QString)));
                grafic.add(row);
            }
        }
    }

    DemoOptions m_options;
    QRandomGenerator m_random;
    QSqlDatabase m_db;
    QSqlDatabase m_data;
    QDate m_first;
    QList<PostPlace> m_places;
    QList<PatientRow> m_patients;
    QSet<qint64> m_usedNumbers;
    DemoSummary m_summary;
};

QString outOfBounds(const char *option, qint64 value, qint64 lowest, qint64 highest)
{
    if (value >= lowest && value <= highest)
        return {};
    return QStringLiteral("%1 трябва да е цяло число от %2 до %3.").arg(QLatin1String(option)).arg(lowest).arg(highest);
}

} // namespace

QString demoOptionsFault(const DemoOptions &options)
{
    for (const QString &fault : {outOfBounds("--doctors", options.doctors, 1, DemoOptions::MaxDoctors),
                                 outOfBounds("--patients", options.patients, 0, DemoOptions::MaxPatients),
                                 outOfBounds("--years", options.years, 1, DemoOptions::MaxYears)})
        if (!fault.isEmpty())
            return fault;
    if (!options.today.isValid() || options.today.year() < DemoOptions::FirstYear || options.today.year() > DemoOptions::LastYear)
        return QStringLiteral("--today трябва да е дата от годините %1 до %2.").arg(DemoOptions::FirstYear).arg(DemoOptions::LastYear);
    return {};
}

Result<DemoSummary> generateDemoPractice(const DemoOptions &options)
{
    if (const QString fault = demoOptionsFault(options); !fault.isEmpty())
        return Result<DemoSummary>::failure(fault);
    if (auto opened = store::openStore(store::DataPaths::inFolder(options.folder)); !opened)
        return Result<DemoSummary>::failure(opened.error());
    try {
        return DemoBuilder(options, store::clinicDb(), store::dataDb()).build();
    } catch (const store::SqlError &error) {
        return Result<DemoSummary>::failure(error.message());
    }
}
