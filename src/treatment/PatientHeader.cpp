#include "treatment/PatientHeader.h"

#include "store/Sql.h"

#include <QSqlRecord>

namespace {

QString field(const PatientFields &patient, const QString &name) { return patient.value(name).toString(); }

} // namespace

QString PatientCaption(const PatientFields &patient)
{
    return QStringLiteral("Картон на ") + field(patient, QStringLiteral("Names")) + QStringLiteral(" с ЕГН ")
        + field(patient, QStringLiteral("EGN")) + QStringLiteral("  ЗОК №") + field(patient, QStringLiteral("ZBook"));
}

QString PatientAddress(const PatientFields &patient)
{
    static const QList<std::pair<QString, QString>> parts{
        {QStringLiteral("KV"), QStringLiteral(", ")},     {QStringLiteral("UL"), QStringLiteral(", ")},
        {QStringLiteral("BL"), QStringLiteral(", бл.")},  {QStringLiteral("VX"), QStringLiteral(", вх.")},
        {QStringLiteral("ET"), QStringLiteral(", ет.")},  {QStringLiteral("AP"), QStringLiteral(", ап.")},
    };
    QString address = field(patient, QStringLiteral("Tawn"));
    for (const auto &[name, prefix] : parts) {
        const QString value = field(patient, name);
        if (!value.trimmed().isEmpty())
            address += prefix + value;
    }
    return address;
}

QString PatientTelephone(const PatientFields &patient)
{
    // Unlike the address, these look at the stored length: a lone blank still counts as a number.
    const QString areaCode = field(patient, QStringLiteral("TKod"));
    const QString prefix = areaCode.isEmpty() ? QString() : areaCode + u'/';
    QString telephone;
    if (const QString home = field(patient, QStringLiteral("DTel")); !home.isEmpty())
        telephone = QStringLiteral("дом.") + prefix + home;
    if (const QString work = field(patient, QStringLiteral("STel")); !work.isEmpty())
        telephone += QStringLiteral(", сл.") + prefix + work;
    if (const QString mobile = field(patient, QStringLiteral("MTel")); !mobile.isEmpty())
        telephone += QStringLiteral(", моб.") + mobile;
    return telephone;
}

QString FirstName(const QString &name)
{
    const qsizetype blank = name.indexOf(u' ');
    return blank < 0 ? QString() : name.left(blank + 1);
}

Result<PatientHeader> LoadPatientHeader(const QSqlDatabase &clinic, const QString &egn)
{
    PatientHeader header;
    try {
        QSqlQuery row = store::run(clinic, QStringLiteral("SELECT * FROM Pacients WHERE EGN = ? ORDER BY ID"), {egn});
        if (row.next()) {
            const QSqlRecord record = row.record();
            for (int i = 0; i < record.count(); ++i)
                header.fields.insert(record.fieldName(i), record.value(i));
            header.found = true;
            header.caption = PatientCaption(header.fields);
            header.address = PatientAddress(header.fields);
            header.telephone = PatientTelephone(header.fields);
        }
    } catch (const store::SqlError &error) {
        // The treatment window's own words for a header it cannot read, then why.
        return Result<PatientHeader>::failure(
            QStringLiteral("Няма избрани имена!\rДанните на пациента не могат да се прочетат: ") + error.message());
    }
    return Result<PatientHeader>::success(header);
}
