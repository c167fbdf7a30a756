#include "store/Migration.h"

#include "store/Engine.h"
#include "store/Schema.h"
#include "store/Sql.h"

namespace store {
namespace {

void createPracticeTables(const QSqlDatabase &db)
{
    for (const TableDef &table : practiceTables())
        run(db, table.createStatement());
}

void nothingToChange(const QSqlDatabase &) {}

} // namespace

void migrateSchema(const QSqlDatabase &db, const QList<MigrationStep> &steps)
{
    Q_ASSERT(steps.size() == SchemaVersion - 1);
    const int version = engine().schemaVersion(db);
    if (version >= SchemaVersion)
        return;
    Transaction transaction(db);
    // A file of the system's own days carries no version (0): its layout is that of version 1.
    for (int step = std::max(version, 1) - 1; step < steps.size(); ++step)
        steps.at(step)(db);
    engine().setSchemaVersion(db, SchemaVersion);
    transaction.commit();
}

const QList<MigrationStep> &clinicMigrations()
{
    static const QList<MigrationStep> steps{createPracticeTables};
    return steps;
}

const QList<MigrationStep> &referenceMigrations()
{
    static const QList<MigrationStep> steps{nothingToChange};
    return steps;
}

} // namespace store
