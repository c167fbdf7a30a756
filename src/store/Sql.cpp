#include "store/Sql.h"

#include "store/Engine.h"
#include "store/EngineErrors.h"
#include "store/Log.h"

#include <QFileInfo>

namespace store {

QSqlDatabase clinicDb() { return QSqlDatabase::database(ConnectMain, false); }
QSqlDatabase dataDb() { return QSqlDatabase::database(ConnectData, false); }

QSqlDatabase addConnection(const QString &path, const QString &connection)
{
    return engine().connect(path, connection);
}

namespace {

QString engineTextOf(const QSqlError &error, const QString &sql)
{
    return sql.isEmpty() ? error.text() : error.text() + QStringLiteral(" [") + sql + u']';
}

int primaryCode(const QSqlError &error)
{
    bool ok = false;
    const int code = error.nativeErrorCode().toInt(&ok);
    return ok ? (code & 0xff) : -1;
}

} // namespace

SqlError::SqlError(const QSqlDatabase &db, const QSqlError &error, const QString &sql)
    : std::runtime_error(describeEngineError(db.databaseName(), primaryCode(error)).toStdString())
    , m_engineText(engineTextOf(error, sql))
    , m_code(primaryCode(error))
{
    // The log lies next to the file: every file of the program is in the data folder.
    const QFileInfo file(db.databaseName());
    if (file.isAbsolute())
        writeLog(file.absolutePath(), file.filePath() + QStringLiteral(": ") + m_engineText);
}

SqlError::SqlError(const QSqlDatabase &db, const QSqlQuery &failed)
    : SqlError(db, failed.lastError(), failed.lastQuery())
{
}

SqlError::SqlError(const QString &message)
    : std::runtime_error(message.toStdString())
{
}

QSqlQuery run(const QSqlDatabase &db, const QString &sql, std::initializer_list<QVariant> values)
{
    QSqlQuery query(db);
    query.setForwardOnly(true);
    if (!query.prepare(sql))
        throw SqlError(db, query.lastError(), sql);
    for (const QVariant &value : values)
        query.addBindValue(value);
    if (!query.exec())
        throw SqlError(db, query.lastError(), sql);
    return query;
}

qint64 insertReturningKey(const QSqlDatabase &db, const QString &insert, const QVariantList &values)
{
    return engine().insertReturningKey(db, insert, values);
}

QVariant scalar(const QSqlDatabase &db, const QString &sql, std::initializer_list<QVariant> values)
{
    QSqlQuery query = run(db, sql, values);
    return query.next() ? query.value(0) : QVariant();
}

Transaction::Transaction(QSqlDatabase db)
    : m_db(std::move(db))
{
    run(m_db, engine().beginWrite());
    m_open = true;
}

Transaction::~Transaction()
{
    if (m_open)
        QSqlQuery(m_db).exec(QStringLiteral("ROLLBACK"));
}

void Transaction::commit()
{
    run(m_db, QStringLiteral("COMMIT"));
    m_open = false;
}

QVariant textOrNull(const QString &value)
{
    return value.trimmed().isEmpty() ? QVariant(QMetaType(QMetaType::QString)) : QVariant(value);
}

} // namespace store
