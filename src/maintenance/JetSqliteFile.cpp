#include "maintenance/JetSqliteFile.h"

#include "store/EngineFile.h"

#include <QDate>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

namespace jet {
namespace {

class SqliteTables final : public TableSource
{
public:
    explicit SqliteTables(QString path)
        : m_path(std::move(path))
        , m_connection(m_path, store::SideConnection::Mode::ReadOnly)
    {
        if (m_connection.open())
            m_tables = m_connection.db().tables();
    }

    bool opened() const { return m_connection.db().isOpen(); }
    QString path() const override { return m_path; }
    QStringList tables() const override { return m_tables; }
    Result<Table> read(const QString &name) override;

private:
    QString m_path;
    store::SideConnection m_connection;
    QStringList m_tables;
};

// SQLite keeps a date as whatever was written; ISO text is taken as a date.
QVariant valueOf(const QVariant &stored)
{
    if (stored.isNull())
        return {};
    if (stored.typeId() == QMetaType::QString) {
        const QString text = stored.toString();
        if (text.size() >= 10 && text.at(4) == u'-' && text.at(7) == u'-')
            if (const QDate date = QDate::fromString(text.left(10), Qt::ISODate); date.isValid())
                return date;
    }
    return stored;
}

Result<Table> SqliteTables::read(const QString &name)
{
    const int found = indexOfName(m_tables, name);
    if (found < 0)
        return Result<Table>::failure(QStringLiteral("Във файла %1 липсва таблицата %2.").arg(m_path, name));
    QSqlQuery query(m_connection.db());
    query.setForwardOnly(true);
    if (!query.exec(QStringLiteral("SELECT * FROM \"%1\"").arg(m_tables.at(found))))
        return Result<Table>::failure(
            QStringLiteral("Таблицата %1 във файла %2 не може да се прочете.").arg(name, m_path));
    Table table;
    table.name = m_tables.at(found);
    const QSqlRecord record = query.record();
    for (int c = 0; c < record.count(); ++c)
        table.columns << record.fieldName(c);
    while (query.next()) {
        QVariantList row;
        for (int c = 0; c < record.count(); ++c)
            row << valueOf(query.value(c));
        table.rows << row;
    }
    if (query.lastError().isValid())
        return Result<Table>::failure(
            QStringLiteral("Таблицата %1 във файла %2 не може да се прочете.").arg(name, m_path));
    return Result<Table>::success(std::move(table));
}

} // namespace

Result<std::unique_ptr<TableSource>> openSqliteTables(const QString &path)
{
    auto source = std::make_unique<SqliteTables>(path);
    if (!source->opened())
        return Result<std::unique_ptr<TableSource>>::failure(
            QStringLiteral("Файлът %1 не може да се отвори като база данни.").arg(path));
    return Result<std::unique_ptr<TableSource>>::success(std::move(source));
}

} // namespace jet
