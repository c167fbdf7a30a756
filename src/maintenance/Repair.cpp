#include "maintenance/Repair.h"

#include "base/Dialogs.h"
#include "patients/EgnMessages.h"
#include "patients/EgnRuleSetting.h"
#include "store/Dates.h"
#include "store/EngineFile.h"
#include "store/Log.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QFileInfo>

namespace repair {
namespace {

struct Patient final
{
    qint64 id = 0;
    QString egn;
};

QList<Patient> patientsByNumber(const QSqlDatabase &db)
{
    QList<Patient> patients;
    QSqlQuery query = store::run(db, QStringLiteral("SELECT ID, EGN FROM Pacients ORDER BY EGN"));
    while (query.next())
        patients.append({query.value(0).toLongLong(), query.value(1).toString()});
    return patients;
}

// All three checks run on every number, so one number can bring three messages.
void checkNumber(const QString &egn, EgnRule rule, QStringList &faults)
{
    using namespace egnmessages;
    if (EgnDateBad(egn, rule))
        faults << withNumber(DateHead, egn);
    if (EgnMonthBad(egn, rule))
        faults << withNumber(MonthHead, egn);
    if (EgnCheckDigitBad(egn))
        faults << withNumber(CheckDigitHead, egn);
}

QStringList checkNumbers(const QList<Patient> &patients, EgnRule rule)
{
    QStringList faults;
    auto bar = dialogs().progress(QStringLiteral("Проверка на ЕГН-тата..."), int(patients.size()));
    for (qsizetype row = 0; row < patients.size(); ++row) {
        bar->setValue(int(row + 1));
        checkNumber(patients.at(row).egn, rule, faults);
    }
    return faults;
}

// Dates are stored as ISO text; a number that names no day leaves the date empty.
QVariant birthDateOf(const QString &egn, EgnRule rule)
{
    const auto born = EgnBirthDate(egn, rule);
    return born ? QVariant(dates::toIso(*born)) : QVariant(QMetaType(QMetaType::QString));
}

void rewriteBirthDates(const QSqlDatabase &db, const QList<Patient> &patients, EgnRule rule)
{
    store::Transaction transaction(db);
    auto bar = dialogs().progress(QStringLiteral("Проверка на имената..."), int(patients.size()));
    QSqlQuery update(db);
    if (!update.prepare(QStringLiteral("UPDATE Pacients SET DataB = ? WHERE ID = ?")))
        throw store::SqlError(db, update);
    for (qsizetype row = 0; row < patients.size(); ++row) {
        bar->setValue(int(row + 1));
        update.addBindValue(birthDateOf(patients.at(row).egn, rule));
        update.addBindValue(patients.at(row).id);
        if (!update.exec())
            throw store::SqlError(db, update);
    }
    transaction.commit();
}

} // namespace

Result<RepairReport> RepairDatabase(const QSqlDatabase &db, Mode mode)
{
    RepairReport report;
    report.integrity = store::integrityVerdict(db);
    if (report.fileDamaged()) {
        store::writeLog(QFileInfo(db.databaseName()).absolutePath(),
                        db.databaseName() + QStringLiteral(": integrity_check: ") + report.integrity);
        return Result<RepairReport>::success(report);
    }
    try {
        const QList<Patient> patients = patientsByNumber(db);
        report.patients = int(patients.size());
        if (patients.isEmpty())
            return Result<RepairReport>::success(report);
        const EgnRule rule = egnrule::practiceRule(db);
        report.faults = checkNumbers(patients, rule);
        if (!report.faults.isEmpty())
            return Result<RepairReport>::success(report);
        if (mode == Mode::Write)
            rewriteBirthDates(db, patients, rule);
        report.rewritten = report.patients;
    } catch (const store::SqlError &error) {
        return Result<RepairReport>::failure(error.message());
    }
    return Result<RepairReport>::success(report);
}

QString damagedFileMessage()
{
    return QStringLiteral("Проверката на целостта на файла %1 откри повреда, затова нищо не е поправяно. "
                          "Не работете с този файл: затворете програмата и възстановете последния архив на данните.")
        .arg(store::paths().clinicDb);
}

} // namespace repair
