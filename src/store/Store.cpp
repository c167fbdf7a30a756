#include "store/Store.h"

#include "store/Engine.h"
#include "store/InstanceLock.h"
#include "store/Log.h"
#include "store/Migration.h"
#include "store/NewDatabaseFile.h"
#include "store/PrivateFolder.h"
#include "store/ReferenceData.h"
#include "store/Scratch.h"
#include "store/Schema.h"
#include "store/Sql.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlQuery>

#include <memory>
#include <unistd.h>

namespace store {
namespace {

DataPaths &openedPaths()
{
    static DataPaths opened;
    return opened;
}

std::unique_ptr<InstanceLock> &heldLock()
{
    static std::unique_ptr<InstanceLock> lock;
    return lock;
}

QStringList existingTables(const QSqlDatabase &db) { return engine().tableNames(db); }

void createTables(const QSqlDatabase &db, const QList<TableDef> &tables, const QStringList &indexes)
{
    for (const TableDef &table : tables)
        run(db, table.createStatement());
    for (const QString &index : indexes)
        run(db, index);
}

Outcome checkSchema(const QSqlDatabase &db, const QString &path, const QStringList &required,
                    const QStringList &present)
{
    if (present.isEmpty())
        return Outcome::failure(QStringLiteral("Файлът %1 не съдържа данни на програмата.").arg(path));
    const int version = engine().schemaVersion(db);
    if (version > SchemaVersion)
        return Outcome::failure(
            QStringLiteral("Базата данни %1 е от по-нова версия на програмата (%2).").arg(path).arg(version));
    QStringList missing;
    for (const QString &table : required)
        if (!present.contains(table.toLower()))
            missing << table;
    if (!missing.isEmpty())
        return Outcome::failure(QStringLiteral("Базата данни %1 е повредена: липсват таблиците %2.")
                                    .arg(path, missing.join(QStringLiteral(", "))));
    return Outcome::success();
}

QStringList namesOf(const QList<TableDef> &tables)
{
    QStringList names;
    for (const TableDef &table : tables)
        names << table.name;
    return names;
}

// A file that is there but empty is set up in place only when the caller says so (openStore
// asks first about the clinic file); a missing one is made whole beside it.
Outcome openFile(const QString &path, const QString &connection, const QStringList &required,
                 const QList<MigrationStep> &migrations, const SchemaFiller &create)
{
    if (!QFileInfo::exists(path))
        if (auto made = createDatabaseFile(path, create); !made)
            return made;
    QSqlDatabase db = addConnection(path, connection);
    if (!db.open())
        return Outcome::failure(SqlError(db, db.lastError()).message());
    try {
        const QStringList present = existingTables(db);
        if (present.isEmpty()) {
            createSchema(db, create);
        } else if (auto checked = checkSchema(db, path, required, present); !checked) {
            db.close();
            return checked;
        } else {
            migrateSchema(db, migrations);
        }
        engine().tune(db);
    } catch (const SqlError &error) {
        db.close();
        return Outcome::failure(error.message());
    }
    return Outcome::success();
}

StoreOpening takeFolder(const QString &folder)
{
    if (!QDir().mkpath(folder))
        return StoreOpening::refused(QStringLiteral("Папката с данните %1 не може да се създаде. "
                                                    "Проверете пътя и правата за запис и опитайте отново.")
                                         .arg(folder));
    auto lock = std::make_unique<InstanceLock>(folder);
    const InstanceLock::Taking taking = ::access(QFile::encodeName(folder).constData(), W_OK) == 0
        ? lock->take()
        : InstanceLock::Taking::FolderNotWritable;
    if (taking == InstanceLock::Taking::HeldByAnother)
        return StoreOpening::refused(QStringLiteral("Програмата вече работи с папката с данни %1.").arg(folder));
    if (taking == InstanceLock::Taking::FolderNotWritable)
        return StoreOpening::refused(QStringLiteral("В папката с данните %1 не може да се записва. "
                                                    "Проверете правата за запис на папката и опитайте отново.")
                                         .arg(folder));
    heldLock() = std::move(lock);
    if (const QString tightened = tightenFolder(folder); !tightened.isEmpty())
        notice(folder, tightened);
    return StoreOpening::success();
}

bool isEmptyFile(const QString &path)
{
    const QFileInfo file(path);
    return file.exists() && file.isFile() && file.size() == 0;
}

StoreOpening refusedWithoutPractice(const DataPaths &paths)
{
    return StoreOpening::refused(QStringLiteral("В папката %1 няма данни на практика (файлът velmorata.db липсва). "
                                                "Проверете името на папката с данните и опитайте отново.")
                                     .arg(paths.folder));
}

StoreOpening openClinic(const DataPaths &paths, const OpenOptions &options)
{
    if (options.practiceMustExist && !QFileInfo::exists(paths.clinicDb))
        return refusedWithoutPractice(paths);
    if (isEmptyFile(paths.clinicDb) && !options.emptyClinicFileIsNew)
        return StoreOpening::emptyClinicFile(
            QStringLiteral("Файлът %1 е празен (0 байта): така изглежда неуспешно копиране или възстановяване "
                           "на данните. Възстановете последния архив; ако наистина започвате нова практика, "
                           "изтрийте файла и стартирайте програмата отново.")
                .arg(paths.clinicDb));
    if (auto clinic = openClinicFile(paths.clinicDb, ConnectMain); !clinic)
        return StoreOpening::refused(clinic.error());
    if (auto checked = options.alreadyChecked ? Outcome::success() : checkClinicFile(clinicDb()); !checked)
        return StoreOpening::refused(checked.error());
    return StoreOpening::success();
}

void closeConnection(const QString &name)
{
    if (!QSqlDatabase::contains(name))
        return;
    QSqlDatabase::database(name, false).close();
    QSqlDatabase::removeDatabase(name);
}

StoreOpening openFiles(const DataPaths &paths, const OpenOptions &options)
{
    if (auto clinic = openClinic(paths, options); !clinic)
        return clinic;
    if (auto data = openDataFile(paths.dataDb, ConnectData); !data)
        return StoreOpening::refused(data.error());
    return StoreOpening::success();
}

} // namespace

Outcome openClinicFile(const QString &path, const QString &connection)
{
    return openFile(path, connection, namesOf(clinicTables()), clinicMigrations(), [](const QSqlDatabase &db) {
        createTables(db, clinicTables(), clinicIndexStatements());
        createTables(db, practiceTables(), {});
        loadClinicReferenceData(db);
        // The practice's own data is one row that the unit's form edits: a new file has it, empty.
        run(db, QStringLiteral("INSERT INTO MedicUnit DEFAULT VALUES"));
    });
}

Outcome openDataFile(const QString &path, const QString &connection)
{
    // RazhNorm has one column per material, so it is made from its data, not from a fixed layout.
    const QStringList required = namesOf(referenceTables()) << QStringLiteral("RazhNorm");
    return openFile(path, connection, required, referenceMigrations(), [](const QSqlDatabase &db) {
        createTables(db, referenceTables(), referenceIndexStatements());
        loadDataReferenceData(db);
    });
}

Outcome checkClinicTables(const QSqlDatabase &db, const QString &shownAs)
{
    try {
        return checkSchema(db, shownAs.isEmpty() ? db.databaseName() : shownAs, namesOf(clinicTables()),
                           existingTables(db));
    } catch (const SqlError &error) {
        return Outcome::failure(error.message());
    }
}

Outcome checkClinicFile(const QSqlDatabase &db)
{
    const QString file = db.databaseName();
    try {
        const QString verdict = engine().quickCheck(db);
        if (verdict == QStringLiteral("ok"))
            return Outcome::success();
        writeLog(QFileInfo(file).absolutePath(), file + QStringLiteral(": quick_check: ") + verdict);
    } catch (const SqlError &error) {
        return Outcome::failure(error.message());
    }
    return Outcome::failure(QStringLiteral("Проверката на целостта на файла %1 откри повреда. Не работете с този файл: "
                                           "затворете програмата и възстановете последния архив на данните.")
                                .arg(file));
}

const DataPaths &paths() { return openedPaths(); }

StoreOpening lockFolder(const DataPaths &paths)
{
    closeStore();
    if (paths.folder.isEmpty())
        return StoreOpening::refused(QStringLiteral("Не е дадено името на папката с данните."));
    makeNewFilesPrivate();
    openedPaths() = paths;
    return takeFolder(paths.folder);
}

StoreOpening openStore(const DataPaths &paths, const OpenOptions &options)
{
    // Checked before the folder is taken as well, since taking it makes the folder and the lock.
    if (options.practiceMustExist && !paths.folder.isEmpty() && !QFileInfo::exists(paths.clinicDb))
        return refusedWithoutPractice(paths);
    if (auto taken = lockFolder(paths); !taken)
        return taken;
    auto opened = openFiles(paths, options);
    if (!opened)
        closeStore();
    return opened;
}

bool holdsFolder() { return heldLock() != nullptr; }

void closeClinicFile() { closeConnection(ConnectMain); }

Outcome reopenClinicFile(bool alreadyChecked)
{
    if (!holdsFolder())
        return Outcome::failure(QStringLiteral("Папката с данните %1 не е заета от тази програма.")
                                    .arg(openedPaths().folder));
    closeClinicFile();
    OpenOptions options;
    options.alreadyChecked = alreadyChecked;
    auto opened = openClinic(openedPaths(), options);
    if (!opened) {
        closeClinicFile();
        return Outcome::failure(opened.error());
    }
    return Outcome::success();
}

void closeStore()
{
    DeleteScratchFileOfThisRun();
    for (const QString &name : {ConnectMain, ConnectData, ConnectTemp})
        closeConnection(name);
    heldLock().reset();
}

} // namespace store
