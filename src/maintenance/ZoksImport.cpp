#include "maintenance/ZoksImport.h"

#include "base/Dialogs.h"
#include "maintenance/ZoksRecord.h"
#include "maintenance/ZoksSource.h"
#include "store/Sql.h"

#include <QDate>
#include <QSet>

namespace zoks {
namespace {

// Municipality and district are carried from one patient to the next: a row that names none
// keeps those of the row before, as the package's own exports rely on.
struct Carried final
{
    QString municipalityCode, districtCode, municipality, district;
};

struct Card final
{
    QString egn, name, birth, sex, registered, healthBook, prescriptionBook;
    QString postCode, settlement, address, phone, secondPhone;
    QString municipality, district, fundOffice, healthRegion;
};

QString refusedRow(const QString &path, int row, const QString &number, const QString &what)
{
    return QStringLiteral("Във файла %1 пациентът на ред %2 на таблицата patients (ЕГН %3) няма %4. "
                          "Нищо не е добавено: допълнете данните в ЗОКС и опитайте отново.")
        .arg(path)
        .arg(row + 1)
        .arg(number, what);
}

// The rows the package's own conversions would fail on are refused before anything is written.
Outcome checkRequiredFields(const SourceTable &rows, const QString &path)
{
    for (int row = 0; row < rows.rowCount(); ++row) {
        const QString number = jet::trimmedText(rows.value(row, patients::IDNUMBER));
        if (number.isEmpty())
            return Outcome::failure(refusedRow(path, row, number, QStringLiteral("ЕГН (IDNUMBER)")));
        if (jet::trimmedText(rows.value(row, patients::NAME1)).isEmpty())
            return Outcome::failure(refusedRow(path, row, number, QStringLiteral("име (NAME1)")));
        if (!rows.value(row, patients::BIRTHDATE).toDate().isValid())
            return Outcome::failure(refusedRow(path, row, number, QStringLiteral("дата на раждане (BIRTHDATE)")));
        if (!rows.value(row, patients::DATEREG).toDate().isValid())
            return Outcome::failure(refusedRow(path, row, number, QStringLiteral("дата на регистрация (DATEREG)")));
    }
    return Outcome::success();
}

Card personalData(const SourceTable &rows, int row)
{
    Card card;
    card.egn = rows.value(row, patients::IDNUMBER).toString();
    card.name = joinedName(rows.value(row, patients::NAME1), rows.value(row, patients::NAME2),
                           rows.value(row, patients::NAME3));
    card.sex = sexOf(rows.value(row, patients::POL));
    card.birth = rows.value(row, patients::BIRTHDATE).toDate().toString(Qt::ISODate);
    card.registered = rows.value(row, patients::DATEREG).toDate().toString(Qt::ISODate);
    card.healthBook = ifNotBlank(rows.value(row, patients::HIMNUMBER));
    card.prescriptionBook = ifNotBlank(rows.value(row, patients::RECBOOK));
    return card;
}

void takeAddress(const SourceTable &rows, int row, Card &card)
{
    card.postCode = rows.value(row, address::POSTCODE).toString();
    card.phone = ifNotBlank(rows.value(row, address::TELEFON));
    card.secondPhone = ifNotBlank(rows.value(row, address::FAX));
    card.address = joinedAddress({rows.value(row, address::STREET1), rows.value(row, address::STREET2),
                                  rows.value(row, address::NOMSTRT), rows.value(row, address::NOMBLOK),
                                  rows.value(row, address::VHOD), rows.value(row, address::ETAG),
                                  rows.value(row, address::APART)});
}

// The name of a code in s_code or st_code into `name`; false when the code has no row there.
bool lookUpName(const Lookup &names, const QString &code, QString &name)
{
    if (code.isEmpty())
        return true;
    const int row = names.find(code);
    if (row < 0)
        return false;
    if (const QString found = jet::trimmedText(names.table().value(row, names::NAME)); !found.isEmpty())
        name = found;
    return true;
}

// Fills the address and the settlement of the card; the reason when the source lacks a row.
QString placeOf(const Source &source, int row, Card &card, Carried &carried)
{
    const QString number = source.patients.value(row, patients::IDNUMBER).toString();
    const int addressRow = source.address.find(number);
    if (addressRow < 0)
        return QStringLiteral("няма адрес в таблицата address");
    takeAddress(source.address.table(), addressRow, card);
    const QString key = source.address.table().value(addressRow, address::TOWNVILLAG).toString();
    const int place = source.settlements.find(key);
    if (place < 0)
        return QStringLiteral("няма населено място %1 в таблицата eknm").arg(key);
    const SourceTable &eknm = source.settlements.table();
    Carried next = carried;
    card.fundOffice = eknm.value(place, eknm::DISTRICTCO).toString();
    card.healthRegion = eknm.value(place, eknm::HRCODE).toString();
    card.settlement = settlementName(eknm.value(place, eknm::KIND), eknm.value(place, eknm::TOWNVILLA2));
    if (const QString code = ifNotBlank(eknm.value(place, eknm::MUNICIPALI)); !code.isEmpty())
        next.municipalityCode = code;
    if (const QString code = ifNotBlank(eknm.value(place, eknm::DISTRICTCO)); !code.isEmpty())
        next.districtCode = code;
    if (!lookUpName(source.municipalities, next.municipalityCode, next.municipality))
        return QStringLiteral("няма община %1 в таблицата s_code").arg(next.municipalityCode);
    if (!lookUpName(source.districts, next.districtCode, next.district))
        return QStringLiteral("няма област %1 в таблицата st_code").arg(next.districtCode);
    carried = next;
    card.municipality = carried.municipality;
    card.district = carried.district;
    return {};
}

QSet<QString> numbersIn(const QSqlDatabase &clinic, const QString &table)
{
    QSet<QString> numbers;
    QSqlQuery query = store::run(clinic, QStringLiteral("SELECT EGN FROM %1").arg(table));
    while (query.next())
        numbers.insert(query.value(0).toString());
    return numbers;
}

// The running number of the cards: the greatest IDName but that of the first row, at least 1
// when there are cards at all. The first row never counted, and the numbers stay as they ran.
int startingCounter(const QSqlDatabase &clinic)
{
    if (store::scalar(clinic, QStringLiteral("SELECT COUNT(*) FROM Pacients")).toInt() == 0)
        return 0;
    const int greatest = store::scalar(clinic, QStringLiteral("SELECT MAX(IDName) FROM Pacients "
                                                              "WHERE ID > (SELECT MIN(ID) FROM Pacients)"))
                             .toInt();
    return std::max(1, greatest);
}

class Writer final
{
public:
    Writer(const QSqlDatabase &clinic, QString doctorCode)
        : m_clinic(clinic)
        , m_doctor(std::move(doctorCode))
        , m_patients(numbersIn(clinic, QStringLiteral("Pacients")))
        , m_charts(numbersIn(clinic, QStringLiteral("Dental")))
        , m_examined(numbersIn(clinic, QStringLiteral("Help")))
        , m_counter(startingCounter(clinic))
        , m_card(prepare(QStringLiteral(
              "INSERT INTO Pacients (EGN, Names, DataB, Pol, DataR, ZBook, RBook, PKod, Tawn, Adres, DTel, STel, "
              "Obsh, Obl, RZOK, ZR, LKod, IDName) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")))
        , m_chart(prepare(QStringLiteral("INSERT INTO Dental (EGN) VALUES (?)")))
        , m_examination(prepare(QStringLiteral(
              "INSERT INTO Help (EGN, Data, Help, KodHelp, ZK, KodMedic) VALUES (?, ?, ?, ?, ?, ?)")))
    {
    }

    // The three adds are independent: a known patient without a chart or a line gets them.
    void add(const Card &card, Summary &summary)
    {
        using store::textOrNull;
        if (!m_patients.contains(card.egn)) {
            ++m_counter;
            exec(m_card, {textOrNull(card.egn), textOrNull(card.name), textOrNull(card.birth), textOrNull(card.sex),
                          textOrNull(card.registered), textOrNull(card.healthBook), textOrNull(card.prescriptionBook),
                          textOrNull(card.postCode), textOrNull(card.settlement), textOrNull(card.address),
                          textOrNull(card.phone), textOrNull(card.secondPhone), textOrNull(card.municipality),
                          textOrNull(card.district), textOrNull(card.fundOffice), textOrNull(card.healthRegion),
                          textOrNull(m_doctor), m_counter});
            m_patients.insert(card.egn);
            ++summary.patients;
        }
        if (!m_charts.contains(card.egn)) {
            exec(m_chart, {textOrNull(card.egn)});
            m_charts.insert(card.egn);
            ++summary.charts;
        }
        if (!m_examined.contains(card.egn)) {
            exec(m_examination, {textOrNull(card.egn), textOrNull(card.registered), QStringLiteral("Преглед"),
                                 QStringLiteral("101"), 1, textOrNull(m_doctor)});
            m_examined.insert(card.egn);
            ++summary.examinations;
        }
    }

private:
    QSqlQuery prepare(const QString &sql)
    {
        QSqlQuery query(m_clinic);
        if (!query.prepare(sql))
            throw store::SqlError(m_clinic, query.lastError(), sql);
        return query;
    }

    void exec(QSqlQuery &query, std::initializer_list<QVariant> values)
    {
        int place = 0;
        for (const QVariant &value : values)
            query.bindValue(place++, value);
        if (!query.exec())
            throw store::SqlError(m_clinic, query);
    }

    QSqlDatabase m_clinic;
    QString m_doctor;
    QSet<QString> m_patients, m_charts, m_examined;
    int m_counter;
    QSqlQuery m_card, m_chart, m_examination;
};

QString stoppedMessage()
{
    return QStringLiteral("Добавянето от ЗОКС е прекъснато. Нищо не е добавено.");
}

} // namespace

QString summaryText(const Summary &summary)
{
    return QStringLiteral("Прочетени пациенти: %1; добавени пациенти: %2, зъбни статуси: %3, прегледи: %4; "
                          "пропуснати: %5.")
        .arg(summary.sourceRows)
        .arg(summary.patients)
        .arg(summary.charts)
        .arg(summary.examinations)
        .arg(summary.skipped.size());
}

Result<Summary> ImportFromZoks(const QSqlDatabase &clinic, const QString &sourcePath, const QString &doctorCode)
{
    auto source = readSource(sourcePath);
    if (!source)
        return Result<Summary>::failure(source.error());
    const SourceTable &rows = source->patients;
    if (auto checked = checkRequiredFields(rows, sourcePath); !checked)
        return Result<Summary>::failure(checked.error());
    Summary summary;
    summary.sourceRows = rows.rowCount();
    try {
        store::Transaction transaction(clinic);
        Writer writer(clinic, doctorCode);
        auto progress = dialogs().progress(QStringLiteral("Добавям нови пациенти от ЗОКС"), rows.rowCount());
        Carried carried;
        for (int row = 0; row < rows.rowCount(); ++row) {
            progress->setValue(row + 1);
            if (progress->stopped())
                return Result<Summary>::failure(stoppedMessage());
            Card card = personalData(rows, row);
            if (const QString missing = placeOf(source.value(), row, card, carried); !missing.isEmpty()) {
                summary.skipped << QStringLiteral("%1 (%2): %3").arg(card.name, card.egn, missing);
                continue;
            }
            writer.add(card, summary);
        }
        transaction.commit();
    } catch (const store::SqlError &error) {
        return Result<Summary>::failure(error.message());
    }
    return Result<Summary>::success(std::move(summary));
}

} // namespace zoks
