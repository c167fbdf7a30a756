#include "maintenance/CleanOut.h"

#include "base/Dialogs.h"
#include "store/Sql.h"
#include "store/Store.h"

namespace cleanout {
namespace {

const QString OthersPatients = QStringLiteral("SELECT EGN FROM Pacients WHERE LKod <> ?");

// The services and charts go first, by the numbers of the patients still there to name them.
int deleteByPatient(const QSqlDatabase &db, const QString &table, const QString &code)
{
    return store::run(db, QStringLiteral("DELETE FROM %1 WHERE EGN IN (%2)").arg(table, OthersPatients), {code})
        .numRowsAffected();
}

} // namespace

Result<CleanOutReport> CleanDatabase(const QSqlDatabase &db, const QString &medicCode)
{
    // An empty code must compare as an empty text: bound as NULL it would match nobody.
    const QString code = medicCode.isNull() ? QStringLiteral("") : medicCode;
    CleanOutReport report;
    try {
        store::Transaction transaction(db);
        const int rows = store::scalar(db, QStringLiteral("SELECT COUNT(*) FROM Pacients WHERE LKod <> ?"), {code}).toInt();
        if (rows == 0)
            return Result<CleanOutReport>::success(report);
        auto bar = dialogs().progress(QStringLiteral("Подреждам данните..."), 3);
        report.serviceLines = deleteByPatient(db, QStringLiteral("Help"), code);
        bar->setValue(1);
        report.charts = deleteByPatient(db, QStringLiteral("Dental"), code);
        bar->setValue(2);
        report.patients = store::run(db, QStringLiteral("DELETE FROM Pacients WHERE LKod <> ?"), {code}).numRowsAffected();
        bar->setValue(3);
        transaction.commit();
    } catch (const store::SqlError &error) {
        return Result<CleanOutReport>::failure(error.message());
    }
    return Result<CleanOutReport>::success(report);
}

Result<QString> doctorWithCode(const QSqlDatabase &clinic, const QString &medicCode)
{
    try {
        const QVariant names = store::scalar(clinic, QStringLiteral("SELECT Names FROM Medic WHERE KodMedic = ?"),
                                             {medicCode});
        return Result<QString>::success(names.isValid() ? names.toString() : QString());
    } catch (const store::SqlError &error) {
        return Result<QString>::failure(error.message());
    }
}

QString question(const QString &medicName)
{
    return QStringLiteral("Ще бъдат изтрити всички пациенти, които не са на д-р %1, с техните дейности и зъбни "
                          "статуси. Това не може да се върне освен от архив. Продължавате ли?")
        .arg(medicName);
}

} // namespace cleanout
