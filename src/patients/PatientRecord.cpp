#include "patients/PatientRecord.h"

#include "patients/ToothMap.h"
#include "store/Dates.h"
#include "store/Schema.h"
#include "store/Sql.h"
#include "store/TextReading.h"

#include <QSqlRecord>

namespace patientrecord {
namespace {

const QChar CarriageReturn(13);

// A field and the mark that goes before it when the field has a value.
struct Piece final
{
    const char16_t *mark;
    const char16_t *field;
};

QString joinPieces(const PatientRow &patient, std::initializer_list<Piece> pieces)
{
    QString joined;
    for (const Piece &piece : pieces) {
        const QString value = patient.value(QString::fromUtf16(piece.field));
        if (!text::isBlank(value))
            joined += QString::fromUtf16(piece.mark) + value;
    }
    return joined;
}

QString valueUnlessBlank(const PatientRow &patient, const QString &field)
{
    const QString value = patient.value(field);
    return text::isBlank(value) ? QString() : value;
}

PatientRow readRow(QSqlQuery &row)
{
    PatientRow values;
    const QSqlRecord record = row.record();
    for (int i = 0; i < record.count(); ++i)
        values.insert(record.fieldName(i), record.value(i).toString());
    return values;
}

QList<ServiceLine> readServices(const QSqlDatabase &clinic, const QString &egn)
{
    QSqlQuery rows = store::run(clinic,
                                QStringLiteral("SELECT Data, Help, TextHelp, KodHelp, KodZab, Vid FROM Help "
                                               "WHERE EGN = ? ORDER BY Data, KodHelp, ID"),
                                {egn});
    QList<ServiceLine> services;
    while (rows.next())
        services << ServiceLine{dates::isoToTyped(rows.value(0).toString()), rows.value(1).toString(),
                                rows.value(2).toString(), rows.value(3).toString(), rows.value(4).toString(),
                                rows.value(5).toString()};
    return services;
}

QList<ChartCell> cells(const QStringList &chart, int firstField, int lastField)
{
    QList<ChartCell> row;
    for (int field = firstField; field <= lastField; ++field) {
        const QString code = chart.value(field - 1);
        row << ChartCell{toothmap::toothOf(field), text::isBlank(code) ? QString() : code};
    }
    return row;
}

} // namespace

QString PrintedAddress(const PatientRow &patient, bool breakAfterRegion)
{
    QString address = joinPieces(patient, {{u"", u"PKod"}, {u" ", u"Tawn"}, {u", общ.", u"Obsh"}, {u", обл.", u"Obl"}});
    if (breakAfterRegion)
        address += CarriageReturn;
    return address
           + joinPieces(patient, {{u"", u"KV"}, {u"", u"UL"}, {u", бл.", u"BL"}, {u", вх.", u"VX"}, {u", ет.", u"ET"},
                                  {u", ап.", u"AP"}});
}

QString PrintedTelephones(const PatientRow &patient)
{
    return joinPieces(patient, {{u"код ", u"TKod"}, {u"  дом.: ", u"DTel"}, {u"  сл.: ", u"STel"},
                                {u"  моб.: ", u"MTel"}, {u"  факс: ", u"Fax"}});
}

QString PrintedWork(const PatientRow &patient) { return joinPieces(patient, {{u"", u"Prof"}, {u" в ", u"Work"}}); }

QString RegisteredCaption(const QString &pol)
{
    return pol.trimmed().startsWith(u'Ж') ? QStringLiteral("Регистрирана на:") : QStringLiteral("Регистриран на:");
}

PersonalTexts BuildPersonalTexts(const PatientRow &patient, bool breakAddressAfterRegion)
{
    PersonalTexts texts;
    texts.names = QStringLiteral("на ") + patient.value(QStringLiteral("Names")) + QStringLiteral("    ЕГН ")
                  + patient.value(QStringLiteral("EGN"));
    texts.patientNames = patient.value(QStringLiteral("Names"));
    texts.address = PrintedAddress(patient, breakAddressAfterRegion);
    texts.telephones = PrintedTelephones(patient);
    texts.work = PrintedWork(patient);
    texts.Pol = valueUnlessBlank(patient, QStringLiteral("Pol"));
    texts.registeredCaption = RegisteredCaption(patient.value(QStringLiteral("Pol")));
    texts.DataR = dates::isoToTyped(valueUnlessBlank(patient, QStringLiteral("DataR")));
    texts.KrGr = valueUnlessBlank(patient, QStringLiteral("KrGr"));
    texts.Ph = valueUnlessBlank(patient, QStringLiteral("Ph"));
    texts.ZBook = valueUnlessBlank(patient, QStringLiteral("ZBook"));
    texts.RBook = valueUnlessBlank(patient, QStringLiteral("RBook"));
    texts.Nep = valueUnlessBlank(patient, QStringLiteral("Nep"));
    texts.Osob = valueUnlessBlank(patient, QStringLiteral("Osob"));
    return texts;
}

Result<PatientPrintSource> LoadPatientPrintSource(const QSqlDatabase &clinic, const QString &egn)
{
    PatientPrintSource source;
    try {
        QSqlQuery patient = store::run(clinic, QStringLiteral("SELECT * FROM Pacients WHERE EGN = ? ORDER BY ID"), {egn});
        if (!patient.next())
            return Result<PatientPrintSource>::failure(QStringLiteral("Няма пациент с ЕГН ") + egn + u'.');
        source.patient = readRow(patient);
        const QStringList names = store::chartFieldNames();
        QSqlQuery chart = store::run(
            clinic, QStringLiteral("SELECT %1 FROM Dental WHERE EGN = ? ORDER BY ID").arg(names.join(u',')), {egn});
        if (chart.next()) {
            source.hasChart = true;
            for (int i = 0; i < names.size(); ++i)
                source.chart[i] = chart.value(i).toString();
        }
        source.services = readServices(clinic, egn);
    } catch (const store::SqlError &error) {
        return Result<PatientPrintSource>::failure(QStringLiteral("Данните на пациента с ЕГН ") + egn
                                                   + QStringLiteral(" не могат да се прочетат: ") + error.message());
    }
    return Result<PatientPrintSource>::success(source);
}

RecordChart BuildRecordChart(const QStringList &chart)
{
    return {cells(chart, 21, 36), cells(chart, 1, 10), cells(chart, 11, 20), cells(chart, 37, 52), chart};
}

PatientRecord BuildPatientRecord(const PatientPrintSource &source)
{
    return {BuildPersonalTexts(source.patient, true), BuildRecordChart(source.chart), source.services};
}

Result<PatientRecord> LoadPatientRecord(const QSqlDatabase &clinic, const QString &egn)
{
    const auto source = LoadPatientPrintSource(clinic, egn);
    if (!source)
        return Result<PatientRecord>::failure(source.error());
    return Result<PatientRecord>::success(BuildPatientRecord(source.value()));
}

QString RecordLegend()
{
    return QStringLiteral("C-кариес P-пулпит g-гангрена r-корен O-обтурация e-липсв.зъб K-коронка X-изк.зъб "
                          "Pa-парадонт. 1,2,3-ст.подвиж.");
}

} // namespace patientrecord
