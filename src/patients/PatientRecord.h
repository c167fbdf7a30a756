#pragma once

#include "store/Result.h"

#include <QHash>
#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>

// What the printed card of a patient ("Стоматологичен картон") shows, as plain texts: the
// personal data, the chart and the services. The treatment data print shows the same personal
// data and services with a chart of its own, so both build on the pieces here.
namespace patientrecord {

using PatientRow = QHash<QString, QString>; // field of Pacients -> its text as stored

// The address: PKod; " " Tawn; ", общ." Obsh; ", обл." Obl; [line break]; KV; UL; ", бл." BL;
// ", вх." VX; ", ет." ET; ", ап." AP, each piece only when the field is not blank. The record
// breaks the line after the region, always; the treatment data print runs on.
QString PrintedAddress(const PatientRow &patient, bool breakAfterRegion);
// "код " TKod, "  дом.: " DTel, "  сл.: " STel, "  моб.: " MTel, "  факс: " Fax.
QString PrintedTelephones(const PatientRow &patient);
// Prof, then " в " Work.
QString PrintedWork(const PatientRow &patient);
// "Регистрирана на:" when the trimmed Pol starts with "Ж", else "Регистриран на:".
QString RegisteredCaption(const QString &pol);

// The filled labels of the page header. Each value is the field as stored; a blank field
// prints as an empty text.
struct PersonalTexts final
{
    QString names; // "на <Names>    ЕГН <EGN>"
    QString patientNames; // Names as stored: whose a PDF of the print is
    QString address;
    QString telephones;
    QString work;
    QString Pol;
    QString registeredCaption;
    QString DataR; // DD.MM.YYYY
    QString KrGr;
    QString Ph;
    QString ZBook;
    QString RBook;
    QString Nep;
    QString Osob;
};
PersonalTexts BuildPersonalTexts(const PatientRow &patient, bool breakAddressAfterRegion);

// One line of Help as the prints show it; Data as DD.MM.YYYY.
struct ServiceLine final
{
    QString Data;
    QString Help;
    QString TextHelp;
    QString KodHelp;
    QString KodZab;
    QString Vid;
};

// What the store holds for one patient's prints. A patient without a Dental row has 52 empty
// chart texts and hasChart false; the rest still prints.
struct PatientPrintSource final
{
    PatientRow patient;
    QStringList chart = QStringList(52, QString()); // Z1..Z52
    bool hasChart = false;
    QList<ServiceLine> services; // by Data, then KodHelp
};

// The patient's first Pacients and Dental rows and all the services; an unknown number is refused.
Result<PatientPrintSource> LoadPatientPrintSource(const QSqlDatabase &clinic, const QString &egn);

// A chart cell of the record: the tooth number printed at it and the field's text.
struct ChartCell final
{
    int tooth = 0;
    QString code;
};

// The record shows all 52 fields side by side: the permanent upper row (18..11 21..28), the milk
// rows (55..51 61..65, 85..81 71..75) and the permanent lower row (48..41 31..38).
struct RecordChart final
{
    QList<ChartCell> permanentUpper; // Z21..Z36
    QList<ChartCell> milkUpper;      // Z1..Z10
    QList<ChartCell> milkLower;      // Z11..Z20
    QList<ChartCell> permanentLower; // Z37..Z52
    QStringList fields;              // Z1..Z52 as stored, for the drawn chart
};
RecordChart BuildRecordChart(const QStringList &chart);

struct PatientRecord final
{
    PersonalTexts personal;
    RecordChart chart;
    QList<ServiceLine> services;
};
PatientRecord BuildPatientRecord(const PatientPrintSource &source);
Result<PatientRecord> LoadPatientRecord(const QSqlDatabase &clinic, const QString &egn);

// The legend printed under the chart, shorter than the card's and kept as the form has it.
QString RecordLegend();

} // namespace patientrecord
