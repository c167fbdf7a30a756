#pragma once

#include <QSqlDatabase>
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

class SqlError final : public std::runtime_error
{
public:
    explicit SqlError(const QString &message);
    QString message() const { return QString::fromUtf8(what()); }
};

// Prepares `sql` on `db`, binds the values in order (positional "?"), runs it.
QSqlQuery run(const QSqlDatabase &db, const QString &sql, std::initializer_list<QVariant> values = {});
// The first column of the first row, or an invalid QVariant when there is no row.
QVariant scalar(const QSqlDatabase &db, const QString &sql, std::initializer_list<QVariant> values = {});

// A transaction that rolls back unless committed; nothing half-done stays in the file.
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
