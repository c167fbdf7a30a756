#include "store/Store.h"

#include "store/ReferenceData.h"
#include "store/Schema.h"
#include "store/Sql.h"

#include <QDir>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>

#include <functional>

namespace store {
namespace {

using Filler = std::function<void(const QSqlDatabase &)>;

DataPaths &openedPaths()
{
    static DataPaths opened;
    return opened;
}

QStringList existingTables(const QSqlDatabase &db)
{
    QStringList names;
    QSqlQuery query = run(db, QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table'"));
    while (query.next())
        names << query.value(0).toString().toLower();
    return names;
}

void createTables(const QSqlDatabase &db, const QList<TableDef> &tables, const QStringList &indexes)
{
    for (const TableDef &table : tables)
        run(db, table.createStatement());
    for (const QString &index : indexes)
        run(db, index);
}

void createSchema(const QSqlDatabase &db, const Filler &create)
{
    Transaction transaction(db);
    create(db);
    run(db, QStringLiteral("PRAGMA user_version = %1").arg(SchemaVersion));
    transaction.commit();
}

Outcome checkSchema(const QSqlDatabase &db, const QString &path, const QStringList &required,
                    const QStringList &present)
{
    const int version = scalar(db, QStringLiteral("PRAGMA user_version")).toInt();
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

Outcome openFile(const QString &path, const QString &connection, const QStringList &required, const Filler &create)
{
    const bool existed = QFileInfo::exists(path);
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
    db.setDatabaseName(path);
    if (!db.open())
        return Outcome::failure(QStringLiteral("Базата данни %1 не може да се отвори: %2").arg(path, db.lastError().text()));
    try {
        const QStringList present = existingTables(db);
        if (present.isEmpty()) {
            createSchema(db, create);
        } else if (auto checked = checkSchema(db, path, required, present); !checked) {
            db.close();
            return checked;
        }
        run(db, QStringLiteral("PRAGMA journal_mode = WAL"));
        run(db, QStringLiteral("PRAGMA synchronous = NORMAL"));
    } catch (const SqlError &error) {
        db.close();
        if (!existed)
            QFile::remove(path);
        const bool notDatabase = error.message().contains(QStringLiteral("not a database"));
        return Outcome::failure(notDatabase ? QStringLiteral("Файлът %1 не е база данни.").arg(path)
                                            : QStringLiteral("Базата данни %1: %2").arg(path, error.message()));
    }
    return Outcome::success();
}

} // namespace

Outcome openClinicFile(const QString &path, const QString &connection)
{
    return openFile(path, connection, namesOf(clinicTables()), [](const QSqlDatabase &db) {
        createTables(db, clinicTables(), clinicIndexStatements());
        loadClinicReferenceData(db);
    });
}

Outcome openDataFile(const QString &path, const QString &connection)
{
    // RazhNorm has one column per material, so it is made from its data, not from a fixed layout.
    const QStringList required = namesOf(referenceTables()) << QStringLiteral("RazhNorm");
    return openFile(path, connection, required, [](const QSqlDatabase &db) {
        createTables(db, referenceTables(), referenceIndexStatements());
        loadDataReferenceData(db);
    });
}

const DataPaths &paths() { return openedPaths(); }

Outcome openStore(const DataPaths &paths)
{
    openedPaths() = paths;
    if (!QDir().mkpath(paths.folder) || !QFileInfo(paths.folder).isWritable())
        return Outcome::failure(QStringLiteral("В папката с данните %1 не може да се записва.").arg(paths.folder));
    if (auto clinic = openClinicFile(paths.clinicDb, ConnectMain); !clinic)
        return clinic;
    if (auto data = openDataFile(paths.dataDb, ConnectData); !data) {
        closeStore();
        return data;
    }
    return Outcome::success();
}

void closeStore()
{
    for (const QString &name : {ConnectMain, ConnectData, ConnectTemp}) {
        if (!QSqlDatabase::contains(name))
            continue;
        QSqlDatabase::database(name, false).close();
        QSqlDatabase::removeDatabase(name);
    }
}

} // namespace store
