#include "reports/xml/StomatologyXml.h"

#include "base/Dialogs.h"
#include "base/RunState.h"
#include "patients/ToothMap.h"
#include "reports/PeriodLines.h"
#include "reports/xml/StomatologyXmlRows.h"
#include "reports/xml/XmlLines.h"
#include "reports/xml/XmlValues.h"
#include "store/Dates.h"
#include "store/Sql.h"

#include <QSysInfo>

#include <algorithm>
#include <memory>

namespace reports {
namespace {

using namespace Qt::Literals::StringLiterals;

const QString WritingMessage = u"Изчакайте!\rСъставям XML отчета..."_s;
// The bar is moved every so many sheets; each move repaints the dialog.
constexpr int SheetsPerStep = 256;

QString notMade(const QString &reason, const QString &remedy)
{
    return u"XML отчетът не е създаден: "_s + reason + u"\r"_s + remedy;
}

QString patientNamed(const QString &egn, const XmlPatient &patient)
{
    const QString name = TrimBlanks(patient.Names);
    return name.isEmpty() ? u"пациента с ЕГН "_s + egn : name + u" (ЕГН "_s + egn + u')';
}

QString noCardMessage(const XmlSheet &sheet)
{
    return notMade(u"пациентът с ЕГН %1 от амбулаторен лист № %2 няма картон."_s.arg(sheet.EGN, sheet.ListID),
                   u"Въведете картона на пациента или поправете ЕГН чрез „Корекция ЕГН“ и пуснете отчета отново."_s);
}

QString serviceNamed(const XmlService &service, const QString &egn, const XmlPatient &patient)
{
    return u"дейност %1 от %2 на %3 в амбулаторен лист № %4"_s.arg(
        TrimBlanks(service.KodHelp), dates::isoToTyped(service.Data), patientNamed(egn, patient), service.ListID);
}

class DocumentWriter final
{
public:
    explicit DocumentWriter(const XmlPeriodRows &rows)
        : m_rows(rows)
    {
    }

    void header(const Period &period, const QDate &today);
    // The block of one sheet; the failure names the patient and the sheet.
    Outcome sheet(const XmlSheet &sheet);
    QByteArray finish();

private:
    void patientLine(const XmlSheet &sheet, const XmlPatient &patient);
    void diseases(const XmlPatient &patient);
    void teeth(const QString &egn);
    Outcome services(const QString &egn, const XmlPatient &patient);
    void pathway(const QString &key);
    void investigation(const QString &key);
    void specialists(const QString &key);

    const XmlPeriodRows &m_rows;
    XmlLines m_out;
};

void DocumentWriter::header(const Period &period, const QDate &today)
{
    const XmlUnit &unit = m_rows.unit;
    const QString schemaNamespace = u"http://"_s + QSysInfo::machineHostName();
    m_out.plain("<?xml version=\"1.0\" encoding=\"UTF-8\"?>"_L1);
    m_out.open("report"_L1)
        .attribute("medicalUnit"_L1, TrimBlanks(unit.UserName))
        .attribute("bulstat"_L1, TrimBlanks(unit.UserBULSTAT))
        .attribute("RHCCode"_L1, TrimBlanks(unit.UserID))
        .attribute("contractNo"_L1, TrimBlanks(unit.UserContract))
        .attribute("odpCode"_L1, unit.present ? u"00"_s : QString())
        .attribute("physPersonalProfCode"_L1, TrimBlanks(unit.UserUIN))
        .attribute("insuranceHouse"_L1, TrimBlanks(unit.UserID).left(2))
        .attribute("reportingDate"_L1, UnpaddedDate(today))
        .attribute("startFrom"_L1, YearMonthDayOfQueryForm(period.PeriodFromQuery))
        .attribute("endTo"_L1, YearMonthDayOfQueryForm(period.PeriodToQuery))
        .attribute("stomType"_L1, u"0"_s)
        .attribute("xsi:schemaLocation"_L1, schemaNamespace + u" ImportStomatologyReport.xsd"_s)
        .attribute("xmlns"_L1, schemaNamespace)
        .attribute("xmlns:xsi"_L1, u"http://www.w3.org/2001/XMLSchema-instance"_s)
        .end();
    m_out.plain("<dentalCareServices>"_L1);
}

QByteArray DocumentWriter::finish()
{
    m_out.plain("</dentalCareServices>"_L1);
    m_out.plain("</report>"_L1);
    return m_out.take();
}

Outcome DocumentWriter::sheet(const XmlSheet &sheet)
{
    const auto patient = m_rows.patients.constFind(sheet.EGN);
    if (patient == m_rows.patients.cend())
        return Outcome::failure(noCardMessage(sheet));
    patientLine(sheet, *patient);
    diseases(*patient);
    teeth(sheet.EGN);
    if (Outcome written = services(sheet.EGN, *patient); !written)
        return written;
    const QString key = SheetKey(sheet.EGN, sheet.ListID);
    pathway(key);
    investigation(key);
    specialists(key);
    m_out.plain("</dentalCareService>"_L1);
    return Outcome::success();
}

void DocumentWriter::patientLine(const XmlSheet &sheet, const XmlPatient &patient)
{
    const PersonName name = SplitPersonName(patient.Names);
    m_out.open("dentalCareService"_L1)
        .attribute("personType"_L1, patient.Type)
        .attribute("personIdentifier"_L1, patient.EGN)
        .attribute("countryCode"_L1, patient.Country)
        .attribute("RHIFCode"_L1, patient.RZOK)
        .attribute("healthRegionCode"_L1, patient.ZR)
        .attribute("birthDate"_L1, YearMonthDayOfTyped(dates::isoToTyped(patient.DataB)))
        .attribute("personFirstName"_L1, name.first)
        .attribute("personMiddleName"_L1, name.middle)
        .attribute("personLastName"_L1, name.last)
        .attribute("specificationType"_L1, QString())
        .attribute("ambulatorySheetNo"_L1, TrimBlanks(sheet.ListID))
        .attribute("HIRBNo"_L1, patient.ZBook)
        .attribute("unfavorableCondition"_L1, u"0"_s)
        .end();
}

void DocumentWriter::diseases(const XmlPatient &patient)
{
    m_out.plain("<allergies>"_L1);
    m_out.open("allergy"_L1).attribute("allergyName"_L1, patient.Nep).endEmpty();
    m_out.plain("</allergies>"_L1);
    m_out.plain("<pastDiseases>"_L1);
    m_out.open("pastDisease"_L1).attribute("name"_L1, patient.ZabOld).endEmpty();
    m_out.plain("</pastDiseases>"_L1);
    m_out.plain("<currentDiseases>"_L1);
    m_out.open("currentDisease"_L1).attribute("name"_L1, patient.ZabNaw).endEmpty();
    m_out.plain("</currentDiseases>"_L1);
}

// A milk position that holds only the "*" of a tooth without finding is not sent; on a
// permanent position the same "*" goes out as the tooth's status.
bool charted(const toothmap::Position &position, const QString &value)
{
    const QString code = TrimBlanks(value);
    return !code.isEmpty() && !(position.milk && code == u"*"_s);
}

void DocumentWriter::teeth(const QString &egn)
{
    m_out.plain("<teeth>"_L1);
    const auto chart = m_rows.charts.constFind(egn);
    if (chart != m_rows.charts.cend()) {
        for (const toothmap::Position &position : toothmap::positions()) {
            const QString &value = chart->at(position.field - 1);
            if (!charted(position, value))
                continue;
            m_out.open("tooth"_L1).attribute("toothCode"_L1, QString::number(position.tooth)).end();
            m_out.plain("<toothStatuses>"_L1);
            m_out.open("toothStatus"_L1).attribute("toothStatusCode"_L1, value).endEmpty();
            m_out.plain("</toothStatuses>"_L1);
            m_out.plain("</tooth>"_L1);
        }
    }
    m_out.plain("</teeth>"_L1);
}

// Every line of the patient with this doctor in the period, under each of the patient's sheets:
// the fund has always received the services of the period per patient, not per sheet.
Outcome DocumentWriter::services(const QString &egn, const XmlPatient &patient)
{
    m_out.plain("<services>"_L1);
    for (const XmlService &service : m_rows.services.value(egn)) {
        bool isNumber = false;
        const double cena = service.Cena.toDouble(&isNumber);
        if (service.Cena.isNull() || !isNumber)
            return Outcome::failure(notMade(serviceNamed(service, egn, patient) + u" няма цена."_s,
                                            u"Въведете цената на дейността и пуснете отчета отново."_s));
        const std::optional<QString> price = RepPrice(cena);
        if (!price)
            return Outcome::failure(notMade(
                u"цената %1 на %2 не се побира в отчета: тя трябва да е от 0 до 32767 лв."_s.arg(
                    service.Cena.toString(), serviceNamed(service, egn, patient)),
                u"Поправете цената на дейността и пуснете отчета отново."_s));
        m_out.open("service"_L1)
            .attribute("date"_L1, YearMonthDayOfTyped(dates::isoToTyped(service.Data)))
            .attribute("diagnosis"_L1, TrimBlanks(service.Help))
            .attribute("toothCode"_L1, TrimBlanks(service.KodZab))
            .attribute("activityCode"_L1, TrimBlanks(service.KodHelp))
            .attribute("repPrice"_L1, *price)
            .attribute("numberOfMinutes"_L1, TrimBlanks(service.Times))
            .endEmpty();
    }
    m_out.plain("</services>"_L1);
    return Outcome::success();
}

QString referralDate(const QString &stored) { return UnpaddedDate(dates::fromIso(stored)); }

void DocumentWriter::pathway(const QString &key)
{
    const XmlPathRow row = m_rows.paths.value(key);
    const bool present = m_rows.paths.contains(key);
    m_out.plain("<prescMedicalPathways>"_L1);
    m_out.open("prescMedicalPathway"_L1)
        .attribute("pathwayNo"_L1, TrimBlanks(row.Nomer))
        .attribute("date"_L1, present ? referralDate(row.Data) : QString())
        .attribute("ODPCode"_L1, TrimBlanks(row.SIMP))
        .attribute("HSACode"_L1, TrimBlanks(row.BCD))
        .endEmpty();
    m_out.plain("</prescMedicalPathways>"_L1);
}

// Only the empty form carries ODPCode and HSACode: the fund's format has it so.
void DocumentWriter::investigation(const QString &key)
{
    m_out.plain("<prescMDAs>"_L1);
    const auto row = m_rows.investigations.constFind(key);
    if (row == m_rows.investigations.cend()) {
        m_out.open("prescMDA"_L1)
            .attribute("pathwayNo"_L1, {})
            .attribute("date"_L1, {})
            .attribute("ODPCode"_L1, {})
            .attribute("HSACode"_L1, {})
            .end();
        m_out.plain("<codes>"_L1);
        m_out.open("code"_L1).attribute("name"_L1, {}).endEmpty();
    } else {
        m_out.open("prescMDA"_L1)
            .attribute("pathwayNo"_L1, TrimBlanks(row->Nomer))
            .attribute("date"_L1, referralDate(row->Data))
            .end();
        m_out.plain("<codes>"_L1);
        m_out.open("code"_L1).attribute("name"_L1, InvestigationCodeName(row->Kod1)).endEmpty();
        if (!TrimBlanks(row->Kod2).isEmpty())
            m_out.open("code"_L1).attribute("name"_L1, InvestigationCodeName(row->Kod2)).endEmpty();
    }
    m_out.plain("</codes>"_L1);
    m_out.plain("</prescMDA>"_L1);
    m_out.plain("</prescMDAs>"_L1);
}

void DocumentWriter::specialists(const QString &key)
{
    m_out.plain("<prescSpecialists>"_L1);
    const QList<XmlSpecRow> rows = m_rows.specialists.value(key);
    if (rows.isEmpty())
        m_out.open("prescSpecialist"_L1).attribute("SODPCode"_L1, {}).attribute("date"_L1, {}).endEmpty();
    for (const XmlSpecRow &row : rows) {
        m_out.open("prescSpecialist"_L1).attribute("SODPCode"_L1, TrimBlanks(row.SISP1));
        if (!TrimBlanks(row.SISP2).isEmpty())
            m_out.attribute("SODPCodeSecond"_L1, TrimBlanks(row.SISP2));
        m_out.attribute("date"_L1, referralDate(row.Data)).endEmpty();
    }
    m_out.plain("</prescSpecialists>"_L1);
}

Result<QByteArray> writeDocument(const XmlPeriodRows &rows, const Period &period, const QDate &today)
{
    DocumentWriter writer(rows);
    writer.header(period, today);
    std::unique_ptr<ProgressPort> progress;
    if (!rows.sheets.isEmpty())
        progress = dialogs().progress(WritingMessage, std::max<int>(rows.sheets.size(), 2));
    for (int i = 0; i < rows.sheets.size(); ++i) {
        if (i % SheetsPerStep == 0)
            progress->setValue(i + 1);
        if (Outcome written = writer.sheet(rows.sheets.at(i)); !written)
            return Result<QByteArray>::failure(written.error());
    }
    if (progress)
        progress->setValue(rows.sheets.size());
    return Result<QByteArray>::success(writer.finish());
}

} // namespace

Result<XmlReport> BuildStomatologyXml(const QSqlDatabase &clinic, const Period &period, const QString &medicCode,
                                      const QDate &today)
{
    XmlPeriodRows rows;
    try {
        rows = ReadXmlPeriodRows(clinic, period, medicCode);
    } catch (const store::SqlError &error) {
        return Result<XmlReport>::failure(error.message());
    }
    Result<QByteArray> document = writeDocument(rows, period, today);
    if (!document)
        return Result<XmlReport>::failure(document.error());
    if (rows.unit.present)
        run().ExportUin = TrimBlanks(rows.unit.UserUIN);
    dialogs().information(DoneMessage);
    return Result<XmlReport>::success({std::move(document.value()), run().ExportUin, int(rows.sheets.size())});
}

QString SuggestedXmlFileName(const QString &exportUin, const Period &period)
{
    return exportUin + u'-' + period.PeriodFromText.mid(3, 2) + period.PeriodFromText.right(4) + u".xml"_s;
}

} // namespace reports
