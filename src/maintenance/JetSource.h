#pragma once

#include "store/Result.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>

// The tables of a database that comes from outside: the other package's patient file, or an
// old practice's files of the earlier Windows edition. They are Jet (.mdb) files, or SQLite
// files with the same tables. Each table is read whole, in its stored order, with a Null field
// kept as an invalid QVariant, a date as QDate, a Yes/No as bool, a number as qlonglong or
// double and a text as QString.
namespace jet {

struct Table final
{
    QString name;
    QStringList columns;
    QList<QVariantList> rows;

    // The place of a column, whatever the case of its name; -1 when the table has none.
    int column(const QString &name) const;
};

class TableSource
{
public:
    virtual ~TableSource() = default;
    virtual QString path() const = 0;
    virtual QStringList tables() const = 0;
    // The whole table; a table the file lacks or cannot give is a message naming file and table.
    virtual Result<Table> read(const QString &table) = 0;
    // The database password a Jet 3 file's header holds; empty when there is none.
    virtual QString storedPassword() const { return {}; }

    bool hasTable(const QString &table) const;
};

// The place of a name in a list, whatever its case; -1 when it is not there.
int indexOfName(const QStringList &names, const QString &name);

// Opens a Jet file or an SQLite file, told apart by the first bytes. A missing file, a file
// of neither kind, or a damaged one is a message naming the file.
Result<std::unique_ptr<TableSource>> openTableSource(const QString &path);

// A field read as text, trimmed; Null and blanks give an empty text. Dates come as ISO text.
QString trimmedText(const QVariant &value);

} // namespace jet
