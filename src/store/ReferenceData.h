#pragma once

#include "store/Csv.h"
#include "store/Result.h"

#include <QSqlDatabase>

namespace store {

// The rows a new clinic file starts with: CenyZK (the fund's prices and minutes) and Ceny.
// Throws SqlError; the caller runs it inside the creating transaction.
void loadClinicReferenceData(const QSqlDatabase &clinic);
// The rows of a new data.db: PostCode, Mater and RazhNorm (whose columns follow Mater).
void loadDataReferenceData(const QSqlDatabase &data);

// Inserts the rows of `csv` into `table`, matching header names to columns. Throws SqlError,
// naming the source and line, when a header names no column or a number is not a number.
void insertCsvRows(const QSqlDatabase &db, const QString &table, const CsvTable &csv, const QString &source);

// Replaces the whole PostCode table by the rows of a CSV file (the official list of a
// practice's choosing). Columns by header: PKod, Tawn, Obsh, Obl, ZK, ZdRn; others are ignored.
// Nothing changes unless every line is good. Gives the number of rows loaded.
Result<int> importPostCodes(const QSqlDatabase &data, const QString &csvPath);

} // namespace store
