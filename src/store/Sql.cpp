#include "store/Sql.h"

#include <QSqlError>

namespace store {

QSqlDatabase clinicDb() { return QSqlDatabase::database(ConnectMain, false); }
QSqlDatabase dataDb() { return QSqlDatabase::database(ConnectData, false); }

SqlError::SqlError(const QString &message)
    : std::runtime_error(message.toStdString())
{
}

QSqlQuery run(const QSqlDatabase &db, const QString &sql, std::initializer_list<QVariant> values)
{
    QSqlQuery query(db);
    query.setForwardOnly(true);
    if (!query.prepare(sql))
        throw SqlError(query.lastError().text() + QStringLiteral(" [") + sql + u']');
    for (const QVariant &value : values)
        query.addBindValue(value);
    if (!query.exec())
        throw SqlError(query.lastError().text() + QStringLiteral(" [") + sql + u']');
    return query;
}

QVariant scalar(const QSqlDatabase &db, const QString &sql, std::initializer_list<QVariant> values)
{
    QSqlQuery query = run(db, sql, values);
    return query.next() ? query.value(0) : QVariant();
}

Transaction::Transaction(QSqlDatabase db)
    : m_db(std::move(db))
{
    if (!m_db.transaction())
        throw SqlError(m_db.lastError().text());
    m_open = true;
}

Transaction::~Transaction()
{
    if (m_open)
        m_db.rollback();
}

void Transaction::commit()
{
    if (!m_db.commit())
        throw SqlError(m_db.lastError().text());
    m_open = false;
}

QVariant textOrNull(const QString &value)
{
    return value.trimmed().isEmpty() ? QVariant(QMetaType(QMetaType::QString)) : QVariant(value);
}

} // namespace store
