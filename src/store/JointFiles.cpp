#include "store/JointFiles.h"

#include "store/Sql.h"

#include <QUuid>

namespace store {

JointFiles::JointFiles(const DataPaths &paths)
    : m_paths(paths)
    , m_connection(QStringLiteral("joint-") + QUuid::createUuid().toString(QUuid::WithoutBraces))
{
}

JointFiles::~JointFiles()
{
    {
        QSqlDatabase db = QSqlDatabase::database(m_connection, false);
        // Back to the log; should this fail, the next opening of the store sets it all the same.
        if (db.isOpen()) {
            QSqlQuery(db).exec(QStringLiteral("PRAGMA clinic.journal_mode = WAL"));
            QSqlQuery(db).exec(QStringLiteral("PRAGMA main.journal_mode = WAL"));
        }
        db.close();
    }
    QSqlDatabase::removeDatabase(m_connection);
}

Outcome JointFiles::open()
{
    QSqlDatabase db = addConnection(m_paths.dataDb, m_connection);
    if (!db.open())
        return Outcome::failure(SqlError(db, db.lastError()).message());
    try {
        run(db, QStringLiteral("ATTACH DATABASE ? AS clinic"), {m_paths.clinicDb});
        // The engine answers with the mode it is in; one that stayed in the log would commit
        // the two files apart.
        for (const char *schema : {"main", "clinic"})
            if (scalar(db, QStringLiteral("PRAGMA %1.journal_mode = DELETE").arg(schema)).toString() != u"delete")
                throw SqlError(QStringLiteral("Файловете %1 и %2 не могат да се запишат заедно: друга програма "
                                              "работи с тях. Затворете я и опитайте отново.")
                                   .arg(m_paths.clinicDb, m_paths.dataDb));
        run(db, QStringLiteral("PRAGMA main.synchronous = FULL"));
        run(db, QStringLiteral("PRAGMA clinic.synchronous = FULL"));
    } catch (const SqlError &error) {
        db.close();
        return Outcome::failure(error.message());
    }
    return Outcome::success();
}

QSqlDatabase JointFiles::db() const { return QSqlDatabase::database(m_connection, false); }

} // namespace store
