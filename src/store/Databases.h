#pragma once

#include <QSqlDatabase>

namespace store {

// The connections of a practice that the reports work on: the clinic, the reference data and
// the scratch tables of the report in progress.
struct Databases final
{
    QSqlDatabase clinic;
    QSqlDatabase data;
    QSqlDatabase scratch;
};

// The connections of the open store, for the screens and commands to hand to the logic.
Databases openedDatabases();

} // namespace store
