#pragma once

#include "store/Sql.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>
#include <QVariantList>

// A prepared INSERT into the named columns of the demo practice, run once per row.
class DemoRows final
{
public:
    DemoRows(const QSqlDatabase &db, const QString &table, const QStringList &columns)
        : m_db(db)
        , m_query(db)
    {
        const QString marks = QStringList(QList<QString>(columns.size(), QStringLiteral("?"))).join(u',');
        if (!m_query.prepare(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)").arg(table, columns.join(u','), marks)))
            throw store::SqlError(m_db, m_query);
    }

    void add(const QVariantList &values)
    {
        for (int i = 0; i < values.size(); ++i)
            m_query.bindValue(i, values.at(i));
        if (!m_query.exec())
            throw store::SqlError(m_db, m_query);
    }

private:
    QSqlDatabase m_db;
    QSqlQuery m_query;
};
