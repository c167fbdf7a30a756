#pragma once

#include "maintenance/JetSource.h"

namespace jet {

// An SQLite file holding the tables a Jet file would: read-only, under a connection of its own.
Result<std::unique_ptr<TableSource>> openSqliteTables(const QString &path);

} // namespace jet
