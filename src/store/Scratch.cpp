#include "store/Scratch.h"

#include "store/Schema.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QFile>

namespace store {
namespace {

QList<ColumnDef> smallints(const QStringList &names)
{
    QList<ColumnDef> columns;
    for (const QString &name : names)
        columns << ColumnDef{name, QStringLiteral("SMALLINT")};
    return columns;
}

// Kol is single precision: the builders add it up in float, so the sums carry float rounding.
const QList<TableDef> &layouts()
{
    static const QList<TableDef> tables{
        {QStringLiteral("TempMater"),
         {{QStringLiteral("Kod"), QStringLiteral("VARCHAR(3)")},
          {QStringLiteral("Name"), QStringLiteral("VARCHAR(30)")},
          {QStringLiteral("Kol"), QStringLiteral("FLOAT")},
          {QStringLiteral("Ed"), QStringLiteral("VARCHAR(3)")}},
         false},
        {QStringLiteral("TempWork"),
         {{QStringLiteral("Data"), QStringLiteral("DATE")},
          {QStringLiteral("Name1"), QStringLiteral("VARCHAR(50)")},
          {QStringLiteral("EGN"), QStringLiteral("VARCHAR(10)")},
          {QStringLiteral("Godini"), QStringLiteral("VARCHAR(3)")},
          {QStringLiteral("KodHelp"), QStringLiteral("VARCHAR(25)")},
          {QStringLiteral("Time"), QStringLiteral("SMALLINT")}},
         false},
        {QStringLiteral("TempZOKC"),
         QList<ColumnDef>{{QStringLiteral("Godini"), QStringLiteral("VARCHAR(14)")}}
             + smallints({QStringLiteral("Kod_101"), QStringLiteral("Kod_103"), QStringLiteral("Kod_301"),
                          QStringLiteral("Kod_332"), QStringLiteral("Kod_333"), QStringLiteral("Kod_508"),
                          QStringLiteral("Kod_509")}),
         false},
        {QStringLiteral("TempSpec"),
         smallints({QStringLiteral("F10112"), QStringLiteral("F10312"), QStringLiteral("F30112"),
                    QStringLiteral("F50912"), QStringLiteral("F10111"), QStringLiteral("F10311"),
                    QStringLiteral("F30111"), QStringLiteral("F33211"), QStringLiteral("F33311"),
                    QStringLiteral("F50811"), QStringLiteral("F50911")}),
         false},
    };
    return tables;
}

const TableDef *layout(const QString &tableName)
{
    for (const TableDef &table : layouts())
        if (table.name == tableName)
            return &table;
    return nullptr;
}

} // namespace

namespace {

bool &madeByThisRun()
{
    static bool made = false;
    return made;
}

} // namespace

QSqlDatabase scratchDb() { return QSqlDatabase::database(ConnectTemp, false); }

QStringList scratchColumns(const QString &tableName)
{
    const TableDef *table = layout(tableName);
    return table ? table->columnNames() : QStringList();
}

void DeleteScratchFile()
{
    if (QSqlDatabase::contains(ConnectTemp)) {
        QSqlDatabase::database(ConnectTemp, false).close();
        QSqlDatabase::removeDatabase(ConnectTemp);
    }
    QFile::remove(paths().scratchDb);
    madeByThisRun() = false;
}

void DeleteScratchFileOfThisRun()
{
    if (madeByThisRun())
        DeleteScratchFile();
}

Outcome CreateScratchTable(const QString &tableName)
{
    const TableDef *table = layout(tableName);
    if (!table)
        return Outcome::failure(QStringLiteral("Няма работна таблица %1.").arg(tableName));
    DeleteScratchFile();
    if (QFile::exists(paths().scratchDb))
        return Outcome::failure(QStringLiteral("Файлът %1 не може да се изтрие.").arg(paths().scratchDb));
    QSqlDatabase db = addConnection(paths().scratchDb, ConnectTemp);
    madeByThisRun() = true;
    if (!db.open())
        return Outcome::failure(SqlError(db, db.lastError()).message());
    try {
        run(db, table->createStatement());
    } catch (const SqlError &error) {
        DeleteScratchFile();
        return Outcome::failure(error.message());
    }
    return Outcome::success();
}

Outcome EmptyScratchTable(const QString &tableName)
{
    if (!layout(tableName))
        return Outcome::failure(QStringLiteral("Няма работна таблица %1.").arg(tableName));
    try {
        run(scratchDb(), QStringLiteral("DELETE FROM %1").arg(tableName));
    } catch (const SqlError &error) {
        return Outcome::failure(error.message());
    }
    return Outcome::success();
}

} // namespace store
