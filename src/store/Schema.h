#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace store {

// The version of the layout below, kept in PRAGMA user_version of each file. A file of an
// earlier version is brought up to this one when it is opened (Migration.h).
// 1: the system's tables; 2: the practice's settings (PracticeSettings).
inline constexpr int SchemaVersion = 2;

struct ColumnDef final
{
    QString name;
    QString type; // as declared: VARCHAR(n), TEXT, DATE (ISO text), REAL, SMALLINT, BOOLEAN (0/1)
};

struct TableDef final
{
    QString name;
    QList<ColumnDef> columns; // without the ID key that the clinic and reference tables get first
    bool withKey = true;

    QString createStatement() const;
    QStringList columnNames() const;
};

// velmorata.db: every clinic table, TempKarton included.
const QList<TableDef> &clinicTables();
// velmorata.db: the tables the program keeps beyond the system's own. They are not required
// of an archive or an old practice: opening a file makes them when they are missing.
const QList<TableDef> &practiceTables();
// data.db: PostCode and Mater; RazhNorm has one column per material and is made from its data.
const QList<TableDef> &referenceTables();
const TableDef *findTable(const QList<TableDef> &tables, const QString &name);

QStringList clinicIndexStatements();
QStringList referenceIndexStatements();

// The names of the chart fields Z1..Z52 and of the diary slots Ch0..Ch25.
QStringList chartFieldNames();
QStringList diarySlotNames();

} // namespace store
