#include "store/NewDatabaseFile.h"

#include "store/Engine.h"
#include "store/Schema.h"
#include "store/Sql.h"

#include <QFile>
#include <QTemporaryFile>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace store {
namespace {

const QString BuildingConnection = QStringLiteral("velmorata-building");

// Gives `from` the name `to` unless `to` exists. Where the file system cannot rename without
// replacing, a hard link does the same.
bool nameWithoutReplacing(const QString &from, const QString &to)
{
    const QByteArray source = QFile::encodeName(from);
    const QByteArray target = QFile::encodeName(to);
    if (::renameat2(AT_FDCWD, source.constData(), AT_FDCWD, target.constData(), RENAME_NOREPLACE) == 0)
        return true;
    if (errno != EINVAL && errno != ENOSYS)
        return false;
    return ::link(source.constData(), target.constData()) == 0 && ::unlink(source.constData()) == 0;
}

Outcome cannotCreate(const QString &path)
{
    return Outcome::failure(
        QStringLiteral("Файлът %1 не може да се създаде. Проверете правата за запис на папката и свободното място.")
            .arg(path));
}

Outcome fillFile(const QString &path, const SchemaFiller &fill)
{
    Outcome filled = Outcome::success();
    {
        QSqlDatabase db = addConnection(path, BuildingConnection);
        if (!db.open()) {
            filled = Outcome::failure(SqlError(db, db.lastError()).message());
        } else {
            try {
                createSchema(db, fill);
            } catch (const SqlError &error) {
                filled = Outcome::failure(error.message());
            }
            db.close();
        }
    }
    QSqlDatabase::removeDatabase(BuildingConnection);
    return filled;
}

} // namespace

void createSchema(const QSqlDatabase &db, const SchemaFiller &fill)
{
    Transaction transaction(db);
    fill(db);
    engine().setSchemaVersion(db, SchemaVersion);
    transaction.commit();
}

Outcome createDatabaseFile(const QString &path, const SchemaFiller &fill)
{
    QTemporaryFile building(path + QStringLiteral(".building-XXXXXX"));
    building.setAutoRemove(false);
    if (!building.open())
        return cannotCreate(path);
    building.close();
    const QString made = building.fileName();
    Outcome filled = fillFile(made, fill);
    if (filled && !nameWithoutReplacing(made, path) && !QFile::exists(path))
        filled = cannotCreate(path);
    // Only the building file is ever removed: it is this call's own. When another program
    // named its file first, that file is the one opened afterwards.
    QFile::remove(made);
    return filled;
}

} // namespace store
