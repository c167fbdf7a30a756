#include "maintenance/BackupFiles.h"

#include "store/Sql.h"

#include <QAtomicInteger>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

#include <sqlite3.h>

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace backupfiles {
namespace {

QString nextConnectionName()
{
    static QAtomicInteger<int> counter;
    return QStringLiteral("velmorata-side-%1").arg(counter.fetchAndAddRelaxed(1));
}

bool syncPath(const QString &path, int flags)
{
    const int fd = ::open(QFile::encodeName(path).constData(), flags | O_CLOEXEC);
    if (fd < 0)
        return false;
    const bool synced = ::fsync(fd) == 0;
    ::close(fd);
    return synced;
}

} // namespace

SideConnection::SideConnection(const QString &path, Mode mode)
    : m_name(nextConnectionName())
{
    QSqlDatabase db = store::addConnection(path, m_name);
    if (mode == Mode::ReadOnly)
        db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=5000;QSQLITE_OPEN_READONLY"));
}

SideConnection::~SideConnection()
{
    QSqlDatabase::database(m_name, false).close();
    QSqlDatabase::removeDatabase(m_name);
}

Outcome SideConnection::open()
{
    QSqlDatabase connection = db();
    if (!connection.open())
        return Outcome::failure(store::SqlError(connection, connection.lastError()).message());
    return Outcome::success();
}

QSqlDatabase SideConnection::db() const { return QSqlDatabase::database(m_name, false); }

EngineFile::EngineFile(const QString &path, Mode mode)
    : m_size(QFileInfo(path).size())
{
    const int flags = mode == Mode::ReadOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
    m_opened = sqlite3_open_v2(QFile::encodeName(path).constData(), &m_handle, flags | SQLITE_OPEN_NOMUTEX, nullptr)
        == SQLITE_OK;
    if (m_handle)
        sqlite3_busy_timeout(m_handle, 5000);
}

EngineFile::~EngineFile() { sqlite3_close_v2(m_handle); }

QString EngineFile::errorText() const
{
    return m_handle ? QString::fromUtf8(sqlite3_errmsg(m_handle)) : QStringLiteral("out of memory");
}

bool EngineFile::exec(const QString &sql)
{
    return isOpen() && sqlite3_exec(m_handle, sql.toUtf8().constData(), nullptr, nullptr, nullptr) == SQLITE_OK;
}

std::optional<qint64> EngineFile::integer(const QString &sql)
{
    sqlite3_stmt *statement = nullptr;
    if (!isOpen() || sqlite3_prepare_v2(m_handle, sql.toUtf8().constData(), -1, &statement, nullptr) != SQLITE_OK)
        return std::nullopt;
    std::optional<qint64> value;
    if (sqlite3_step(statement) == SQLITE_ROW)
        value = sqlite3_column_int64(statement, 0);
    sqlite3_finalize(statement);
    return value;
}

bool EngineFile::readWholeFileFast()
{
    constexpr int cacheKiB = 64 * 1024;
    return exec(QStringLiteral("PRAGMA mmap_size = %1; PRAGMA cache_size = -%2").arg(m_size).arg(cacheKiB));
}

QString reserveSiblingName(const QString &target)
{
    QTemporaryFile file(target + QStringLiteral(".part-XXXXXX"));
    file.setAutoRemove(false);
    if (!file.open())
        return {};
    return file.fileName();
}

bool syncFile(const QString &path) { return syncPath(path, O_RDONLY); }

bool replaceFile(const QString &from, const QString &to)
{
    if (std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0)
        return false;
    return syncPath(QFileInfo(to).absolutePath(), O_RDONLY | O_DIRECTORY);
}

QString integrityVerdict(const QSqlDatabase &db)
{
    try {
        // The check visits every index entry of every row: with the file mapped and a cache
        // that holds the indexes it takes about half the time of the default cache.
        store::run(db, QStringLiteral("PRAGMA mmap_size = 1073741824"));
        store::run(db, QStringLiteral("PRAGMA cache_size = -262144"));
        return store::scalar(db, QStringLiteral("PRAGMA integrity_check(1)")).toString();
    } catch (const store::SqlError &error) {
        return error.engineText();
    }
}

bool leaveWriteAheadLog(const QSqlDatabase &db)
{
    try {
        return store::scalar(db, QStringLiteral("PRAGMA journal_mode = DELETE")).toString().compare(
                   QStringLiteral("delete"), Qt::CaseInsensitive)
            == 0;
    } catch (const store::SqlError &) {
        return false; // another program still reads the file: the caller says so
    }
}

} // namespace backupfiles
