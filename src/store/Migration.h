#pragma once

#include <QList>
#include <QSqlDatabase>

#include <functional>

namespace store {

// One step of a file's layout: step i takes a file of version i + 1 to version i + 2.
using MigrationStep = std::function<void(const QSqlDatabase &)>;

// Brings a file of an earlier version up to SchemaVersion: the steps it lacks and the new
// version are written in one transaction, so a failure leaves the file as it was. A file of
// this version is left untouched. Throws SqlError.
void migrateSchema(const QSqlDatabase &db, const QList<MigrationStep> &steps);

// The steps of velmorata.db and of data.db.
const QList<MigrationStep> &clinicMigrations();
const QList<MigrationStep> &referenceMigrations();

} // namespace store
