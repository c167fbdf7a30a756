#pragma once

#include "store/Sql.h"

#include <QSqlQuery>
#include <QSqlRecord>
#include <QStringList>

// Every row a query gives, its values joined by '|' and a NULL written "NULL": a whole stored
// row is compared at once, and a test's expectation reads as the table does.
inline QStringList rowsOf(const QSqlDatabase &db, const QString &sql, std::initializer_list<QVariant> values = {})
{
    QSqlQuery query = store::run(db, sql, values);
    QStringList rows;
    while (query.next()) {
        QStringList cells;
        for (int i = 0; i < query.record().count(); ++i)
            cells << (query.isNull(i) ? QStringLiteral("NULL") : query.value(i).toString());
        rows << cells.join(u'|');
    }
    return rows;
}
