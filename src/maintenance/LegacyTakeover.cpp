#include "maintenance/LegacyTakeover.h"

#include "store/DataPaths.h"
#include "store/InstanceLock.h"
#include "store/PrivateFolder.h"
#include "store/ReferenceData.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlQuery>

namespace legacy {
namespace {

const QString TargetClinic = QStringLiteral("TakeOverClinic");
const QString TargetData = QStringLiteral("TakeOverData");

bool holdsPractice(const QSqlDatabase &clinic)
{
    for (const char *table : {"Pacients", "Help", "Medic"})
        if (store::scalar(clinic, QStringLiteral("SELECT COUNT(*) FROM %1").arg(QString::fromLatin1(table))).toInt() > 0)
            return true;
    return false;
}

QString holdsPracticeMessage(const QString &folder)
{
    return QStringLiteral("Папката с данни %1 вече съдържа практика (пациенти, дейности или лекари). "
                          "Изберете нова, празна папка за пренасянето.")
        .arg(folder);
}

void insertRows(const QSqlDatabase &db, const TableRows &table)
{
    QStringList marks;
    for (int i = 0; i < table.columns.size(); ++i)
        marks << QStringLiteral("?");
    const QString sql = QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                            .arg(table.name, table.columns.join(QStringLiteral(", ")), marks.join(QStringLiteral(", ")));
    QSqlQuery insert(db);
    if (!insert.prepare(sql))
        throw store::SqlError(db, insert.lastError(), sql);
    for (const QVariantList &row : table.rows) {
        for (int i = 0; i < row.size(); ++i)
            insert.bindValue(i, row.at(i));
        if (!insert.exec())
            throw store::SqlError(db, insert);
    }
}

// RazhNorm has the old practice's number of material columns.
void remakeNorms(const QSqlDatabase &data, const TableRows &norms)
{
    store::run(data, QStringLiteral("DROP TABLE RazhNorm"));
    store::createRazhNorm(data, norms.columns.mid(1));
}

void writeTables(const QSqlDatabase &db, const Plan &plan, bool dataFile)
{
    for (const TableRows &table : plan.tables) {
        if (table.inDataFile != dataFile)
            continue;
        if (table.name == u"RazhNorm")
            remakeNorms(db, table);
        else
            store::run(db, QStringLiteral("DELETE FROM %1").arg(table.name));
        insertRows(db, table);
    }
}

void closeTarget()
{
    for (const QString &name : {TargetClinic, TargetData}) {
        if (!QSqlDatabase::contains(name))
            continue;
        QSqlDatabase::database(name, false).close();
        QSqlDatabase::removeDatabase(name);
    }
}

// The clinic's transaction is taken first and held: the check that the folder is empty and the
// write stand under one lock. data.db is written in between; were the run cut there, the clinic
// is still empty and the take-over can simply be run again.
Outcome writePlan(const Plan &plan, const store::DataPaths &paths)
{
    try {
        const QSqlDatabase clinic = QSqlDatabase::database(TargetClinic, false);
        const QSqlDatabase data = QSqlDatabase::database(TargetData, false);
        store::Transaction clinicWrite(clinic);
        if (holdsPractice(clinic))
            return Outcome::failure(holdsPracticeMessage(paths.folder));
        {
            store::Transaction dataWrite(data);
            writeTables(data, plan, true);
            dataWrite.commit();
        }
        writeTables(clinic, plan, false);
        clinicWrite.commit();
    } catch (const store::SqlError &error) {
        return Outcome::failure(error.message());
    }
    return Outcome::success();
}

Outcome takeFolder(store::InstanceLock &lock, const QString &folder)
{
    switch (lock.take()) {
    case store::InstanceLock::Taking::Taken:
        return Outcome::success();
    case store::InstanceLock::Taking::HeldByAnother:
        return Outcome::failure(QStringLiteral("Програмата вече работи с папката с данни %1.").arg(folder));
    case store::InstanceLock::Taking::FolderNotWritable:
        break;
    }
    return Outcome::failure(QStringLiteral("В папката с данните %1 не може да се записва. "
                                           "Проверете правата за запис на папката и опитайте отново.")
                                .arg(folder));
}

} // namespace

Result<Plan> takeOverOldPractice(const QString &fromFolder, const QString &dataFolder)
{
    auto plan = readOldPractice(fromFolder);
    if (!plan)
        return plan;
    store::makeNewFilesPrivate();
    if (!QDir().mkpath(dataFolder))
        return Result<Plan>::failure(QStringLiteral("Папката с данните %1 не може да се създаде.").arg(dataFolder));
    store::InstanceLock lock(dataFolder);
    if (auto taken = takeFolder(lock, dataFolder); !taken)
        return Result<Plan>::failure(taken.error());
    const store::DataPaths paths = store::DataPaths::inFolder(dataFolder);
    Outcome written = store::openClinicFile(paths.clinicDb, TargetClinic);
    if (written)
        written = store::openDataFile(paths.dataDb, TargetData);
    if (written)
        written = writePlan(plan.value(), paths);
    closeTarget();
    if (!written)
        return Result<Plan>::failure(written.error());
    return plan;
}

Result<Plan> tryTakeOver(const QString &fromFolder, const QString &dataFolder)
{
    auto plan = readOldPractice(fromFolder);
    const QString clinicFile = store::DataPaths::inFolder(dataFolder).clinicDb;
    if (!plan || !QFileInfo(clinicFile).isFile())
        return plan;
    bool occupied = false;
    {
        QSqlDatabase clinic = store::addConnection(clinicFile, TargetClinic);
        clinic.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
        try {
            occupied = clinic.open() && holdsPractice(clinic);
        } catch (const store::SqlError &) {
            occupied = true; // a file that cannot be read is no empty folder either
        }
    }
    closeTarget();
    if (occupied)
        return Result<Plan>::failure(holdsPracticeMessage(dataFolder));
    return plan;
}

} // namespace legacy
