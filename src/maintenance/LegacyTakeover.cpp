#include "maintenance/LegacyTakeover.h"

#include "store/DataPaths.h"
#include "store/InstanceLock.h"
#include "store/JointFiles.h"
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

void writeTables(const QSqlDatabase &db, const Plan &plan)
{
    for (const TableRows &table : plan.tables) {
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

// Both files get their tables first, then one transaction over the two writes them: a run cut
// anywhere leaves the folder as it was or the practice whole. The check that the folder holds
// no practice stands inside that transaction.
Outcome writePlan(const Plan &plan, const store::DataPaths &paths)
{
    Outcome made = store::openClinicFile(paths.clinicDb, TargetClinic);
    if (made)
        made = store::openDataFile(paths.dataDb, TargetData);
    closeTarget();
    if (!made)
        return made;
    store::JointFiles files(paths);
    if (auto opened = files.open(); !opened)
        return opened;
    try {
        store::Transaction write(files.db());
        if (holdsPractice(files.db()))
            return Outcome::failure(holdsPracticeMessage(paths.folder));
        writeTables(files.db(), plan);
        write.commit();
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
    const Outcome written = writePlan(plan.value(), store::DataPaths::inFolder(dataFolder));
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
        // Opened for writing though it only reads: the last connection of a read-only opening
        // cannot fold the write-ahead log away and would leave it beside the file.
        QSqlDatabase clinic = store::addConnection(clinicFile, TargetClinic);
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
