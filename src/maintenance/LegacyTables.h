#pragma once

#include "store/Result.h"

#include <QList>
#include <QStringList>
#include <QVariant>

// What the take-over of an old practice would bring from the earlier Windows edition's
// velmorata.mdb and data.mdb, read and converted but not yet written: each table with its rows
// in this program's columns (dates as ISO text, Yes/No as 0/1, access codes hashed), and what
// was refused or looks wrong, for the person to read before the practice starts on it.
namespace legacy {

struct TableRows final
{
    QString name;        // as this program names it
    bool inDataFile = false; // PostCode, Mater, RazhNorm go into data.db
    QStringList columns;
    QList<QVariantList> rows;
    int refused = 0;
};

struct Plan final
{
    QList<TableRows> tables;
    QStringList duplicates;    // rows refused because their key came before
    QStringList brokenNumbers; // taken, but the number fails the rules: to be corrected
    QStringList notes;         // tables or fields the old files lack

    int taken() const;
    int refused() const;
};

// Reads velmorata.mdb and data.mdb of `folder`. Files that are missing, damaged, or have no
// patients' table are refused with a message naming the file.
Result<Plan> readOldPractice(const QString &folder);

// "Взети: N реда, отказани: M ..." with the lists below it, one line each.
QStringList reportLines(const Plan &plan);

} // namespace legacy
