#pragma once

#include "store/Result.h"

#include <QSqlDatabase>
#include <QString>
#include <QStringList>

// The practice's own legal and contact data: the single row of MedicUnit, from which the
// specification and the XML report draw.
namespace medicunit {

inline constexpr int FieldCount = 28;

// The fields in the order of the form's boxes txtFields(0..27), and the label of each box.
const QStringList &FieldNames();
const QStringList &FieldLabels();

// The 28 values of the row, in the order of FieldNames(); all empty when the file has no row.
Result<QStringList> LoadMedicUnit(const QSqlDatabase &clinic);
// Stores the 28 values in the row, or in a new one when an older file has none. Nothing is
// checked: an empty value is stored as empty. Throws store::SqlError; the caller holds the
// transaction.
void WriteMedicUnit(const QSqlDatabase &clinic, const QStringList &values);
// WriteMedicUnit in a transaction of its own.
Outcome SaveMedicUnit(const QSqlDatabase &clinic, const QStringList &values);

} // namespace medicunit
