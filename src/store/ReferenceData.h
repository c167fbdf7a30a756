#pragma once

#include "store/Csv.h"
#include "store/Result.h"

#include <QSqlDatabase>
#include <QSqlQuery>

namespace store {

// The rows a new clinic file starts with: CenyZK (the fund's prices and minutes) and Ceny.
// Throws SqlError; the caller runs it inside the creating transaction.
void loadClinicReferenceData(const QSqlDatabase &clinic);
// The rows of a new data.db: PostCode, Mater and RazhNorm (whose columns follow Mater).
void loadDataReferenceData(const QSqlDatabase &data);
// RazhNorm has one REAL column per material (M1, M2, ...), as many as its source has.
void createRazhNorm(const QSqlDatabase &data, const QStringList &materialColumns);

// Inserts rows given as the fields of a CSV header into `table`, one prepared statement for
// all. Throws SqlError, naming the source and line, when a header names no column or a number
// is not a number. With `idIsLine` each row's ID is the line of the file it came from.
class CsvRowInserter final
{
public:
    CsvRowInserter(const QSqlDatabase &db, const QString &table, const QStringList &header, const QString &source,
                   bool idIsLine = false);
    void add(const QStringList &fields, int line);

private:
    QSqlDatabase m_db;
    QSqlQuery m_insert;
    QString m_source;
    bool m_idIsLine;
    QStringList m_names;
    QList<bool> m_numeric;
};

// Inserts the rows of `csv` into `table`, matching header names to columns. Throws SqlError,
// naming the source and line, when a header names no column or a number is not a number.
void insertCsvRows(const QSqlDatabase &db, const QString &table, const CsvTable &csv, const QString &source);

// Replaces the whole PostCode table by the rows of a CSV file (the official list of a
// practice's choosing). Columns by header: PKod, Tawn, Obsh, Obl, ZK, ZdRn; others are ignored.
// The file is read as a stream and strictly (see CsvReader): a file not in UTF-8, with no rows,
// with a repeated or empty post code is refused naming the line. Nothing changes unless every
// line is good. Gives the number of rows loaded.
Result<int> importPostCodes(const QSqlDatabase &data, const QString &csvPath);

} // namespace store
