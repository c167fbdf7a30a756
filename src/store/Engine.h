#pragma once

#include <QSqlDatabase>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <initializer_list>

// What differs between the database engines the program can run on. Screens, rules and
// builders run the same portable SQL on every engine and get the same rows in the same order;
// the few things that cannot be said portably are the verbs of this class, and nothing outside
// the store knows which engine answers them. The program runs on one engine, chosen at start.
namespace store {

class Engine
{
  public:
    virtual ~Engine() = default;

    // A connection under `name` to the database at `where`, with the settings every connection
    // of the program has (a second writer waits some seconds for the first, not failing at once).
    virtual QSqlDatabase connect(const QString &where, const QString &name) const = 0;
    // The settings an opened database of the program works under (its journal, its cache).
    virtual void tune(const QSqlDatabase &db) const = 0;
    // The statement that opens a writing transaction and takes the write lock at once, so that
    // what the transaction reads to decide its writes cannot change before it commits.
    virtual QString beginWrite() const = 0;
    // Runs an INSERT (positional "?" values) and gives the new row's key.
    virtual qint64 insertReturningKey(const QSqlDatabase &db, const QString &insert,
                                      const QVariantList &values) const = 0;
    // The names of the database's tables, in lower case.
    virtual QStringList tableNames(const QSqlDatabase &db) const = 0;
    // The version of the program's layout a database carries; 0 for none.
    virtual int schemaVersion(const QSqlDatabase &db) const = 0;
    virtual void setSchemaVersion(const QSqlDatabase &db, int version) const = 0;
    // The start-up's quick check of the database: "ok", or the first fault found.
    virtual QString quickCheck(const QSqlDatabase &db) const = 0;
    // The whole check, every index entry of every row: "ok", or the first fault found.
    virtual QString fullCheck(const QSqlDatabase &db) const = 0;
};

// The engine of this run.
const Engine &engine();

} // namespace store
