#pragma once

#include "store/Result.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace store {

// A table read from a CSV file: the header names and the rows, each as long as the header.
struct CsvTable final
{
    QStringList header;
    QList<QStringList> rows;
    QList<int> lineNumbers; // the line of the file each row began on, for messages

    int column(const QString &name) const; // by header name, case-insensitive; -1 if absent
};

// Reads UTF-8 text with a header line; fields are separated by commas or, when the header
// holds no comma but a semicolon, by semicolons; quoted fields may hold separators, doubled
// quotes and line breaks. A row with another number of fields than the header, or an
// unterminated quote, is a failure naming `sourceName` and the line.
Result<CsvTable> parseCsv(const QString &content, const QString &sourceName);
Result<CsvTable> readCsvFile(const QString &path);

} // namespace store
