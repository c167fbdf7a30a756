#pragma once

#include "store/Result.h"

#include <QSqlDatabase>

#include <functional>

namespace store {

using SchemaFiller = std::function<void(const QSqlDatabase &)>;

// Makes the database file `path` whole or not at all: it is built under a name of its own
// in the same folder, filled by `fill` in one transaction, and only then given its name,
// never in place of a file that has appeared there meanwhile. A failure deletes only the
// file this call made; a crash leaves a stray building file, never a half-made database.
Outcome createDatabaseFile(const QString &path, const SchemaFiller &fill);

// Runs `fill` and sets the schema version in one transaction.
void createSchema(const QSqlDatabase &db, const SchemaFiller &fill);

} // namespace store
