#include "store/Engine.h"

#include "store/Sql.h"

#include <QSqlQuery>

namespace store {
namespace {

// SQLite: a data folder of files, one writer at a time, the write-ahead log.
class SqliteEngine final : public Engine
{
  public:
    QSqlDatabase connect(const QString &where, const QString &name) const override
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        db.setDatabaseName(where);
        db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=5000"));
        return db;
    }

    void tune(const QSqlDatabase &db) const override
    {
        run(db, QStringLiteral("PRAGMA journal_mode = WAL"));
        run(db, QStringLiteral("PRAGMA synchronous = NORMAL"));
        // The reports and the check read years of lines scattered over the file: mapped pages
        // and a larger cache spare a system call for every page read.
        run(db, QStringLiteral("PRAGMA mmap_size = 1073741824"));
        run(db, QStringLiteral("PRAGMA cache_size = -32768"));
    }

    QString beginWrite() const override { return QStringLiteral("BEGIN IMMEDIATE"); }

    qint64 insertReturningKey(const QSqlDatabase &db, const QString &insert,
                              const QVariantList &values) const override
    {
        QSqlQuery query(db);
        if (!query.prepare(insert))
            throw SqlError(db, query.lastError(), insert);
        for (const QVariant &value : values)
            query.addBindValue(value);
        if (!query.exec())
            throw SqlError(db, query);
        return query.lastInsertId().toLongLong();
    }

    QStringList tableNames(const QSqlDatabase &db) const override
    {
        QStringList names;
        QSqlQuery query = run(db, QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table'"));
        while (query.next())
            names << query.value(0).toString().toLower();
        return names;
    }

    int schemaVersion(const QSqlDatabase &db) const override
    {
        return scalar(db, QStringLiteral("PRAGMA user_version")).toInt();
    }

    void setSchemaVersion(const QSqlDatabase &db, int version) const override
    {
        run(db, QStringLiteral("PRAGMA user_version = %1").arg(version));
    }

    QString quickCheck(const QSqlDatabase &db) const override
    {
        return scalar(db, QStringLiteral("PRAGMA quick_check(1)")).toString();
    }

    QString fullCheck(const QSqlDatabase &db) const override
    {
        // The check visits every index entry of every row: with the file mapped and a cache
        // that holds the indexes it takes about half the time of the default cache.
        run(db, QStringLiteral("PRAGMA mmap_size = 1073741824"));
        run(db, QStringLiteral("PRAGMA cache_size = -262144"));
        return scalar(db, QStringLiteral("PRAGMA integrity_check(1)")).toString();
    }
};

} // namespace

const Engine &engine()
{
    static const SqliteEngine sqlite;
    return sqlite;
}

} // namespace store
