#pragma once

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QString>
#include <QVariant>

#include <initializer_list>
#include <stdexcept>

// Thin helpers over QtSql for the logic of every subsystem: a statement either works or
// throws SqlError, which the routine's edge turns into a message for the user.
namespace store {

// The connection names under which the three files are open for the whole run.
inline const QString ConnectMain = QStringLiteral("ConnectMain");
inline const QString ConnectData = QStringLiteral("ConnectData");
inline const QString ConnectTemp = QStringLiteral("ConnectTemp");

QSqlDatabase clinicDb();
QSqlDatabase dataDb();

// Adds a connection to one SQLite file with the settings every connection of the program has:
// a second writer waits some seconds for the first instead of failing at once.
QSqlDatabase addConnection(const QString &path, const QString &connection);

// A failed statement. message() is what the person at the screen reads: in Bulgarian, naming
// the database file and what to do. The engine's own text and the statement are kept apart
// (engineText()) and written to velmorata.log when the error is made, never shown.
class SqlError final : public std::runtime_error
{
public:
    SqlError(const QSqlDatabase &db, const QSqlError &error, const QString &sql = {});
    // A statement of `db` that failed: its error and its text.
    SqlError(const QSqlDatabase &db, const QSqlQuery &failed);
    // A fault the program found itself, already worded for the user.
    explicit SqlError(const QString &message);

    QString message() const { return QString::fromUtf8(what()); }
    QString engineText() const { return m_engineText; }
    // The engine's primary result code (SQLITE_READONLY is 8, ...); 0 for the program's own faults.
    int code() const { return m_code; }

private:
    QString m_engineText;
    int m_code = 0;
};

// Prepares `sql` on `db`, binds the values in order (positional "?"), runs it.
QSqlQuery run(const QSqlDatabase &db, const QString &sql, std::initializer_list<QVariant> values = {});
// Runs an INSERT as run() does and gives the new row's key, the same way on every engine.
qint64 insertReturningKey(const QSqlDatabase &db, const QString &insert, const QVariantList &values);
// The first column of the first row, or an invalid QVariant when there is no row.
QVariant scalar(const QSqlDatabase &db, const QString &sql, std::initializer_list<QVariant> values = {});

// A transaction that rolls back unless committed; nothing half-done stays in the file. Every
// transaction of the program writes, so it takes the write lock at its start (BEGIN IMMEDIATE):
// what it reads to decide its writes cannot be changed by another writer before it commits.
class Transaction final
{
public:
    explicit Transaction(QSqlDatabase db);
    ~Transaction();
    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;
    void commit();

private:
    QSqlDatabase m_db;
    bool m_open = false;
};

// An empty text goes into the store as NULL, as the system writes only fields that have a value.
QVariant textOrNull(const QString &value);

} // namespace store
