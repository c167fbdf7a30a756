#include "store/EngineFile.h"

#include "store/Engine.h"
#include "store/Sql.h"

#include <QAtomicInteger>
#include <QFile>
#include <QFileInfo>

#include <sqlite3.h>

#include <cerrno>

namespace store {
namespace {

QString nextConnectionName()
{
    static QAtomicInteger<int> counter;
    return QStringLiteral("velmorata-side-%1").arg(counter.fetchAndAddRelaxed(1));
}

template <typename Read>
auto firstValue(sqlite3 *handle, const QString &sql, Read read) -> std::optional<decltype(read(nullptr))>
{
    sqlite3_stmt *statement = nullptr;
    if (sqlite3_prepare_v2(handle, sql.toUtf8().constData(), -1, &statement, nullptr) != SQLITE_OK)
        return std::nullopt;
    std::optional<decltype(read(nullptr))> value;
    if (sqlite3_step(statement) == SQLITE_ROW)
        value = read(statement);
    sqlite3_finalize(statement);
    return value;
}

bool failedWriting(int code)
{
    return code == SQLITE_IOERR || code == SQLITE_READONLY || code == SQLITE_CANTOPEN;
}

} // namespace

SideConnection::SideConnection(const QString &path, Mode mode)
    : m_name(nextConnectionName())
{
    QSqlDatabase db = addConnection(path, m_name);
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
        return Outcome::failure(SqlError(connection, connection.lastError()).message());
    return Outcome::success();
}

QSqlDatabase SideConnection::db() const { return QSqlDatabase::database(m_name, false); }

EngineFile::EngineFile(const QString &path, Mode mode)
    : m_path(path)
    , m_size(QFileInfo(path).size())
{
    const int flags = mode == Mode::ReadOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
    m_opened = sqlite3_open_v2(QFile::encodeName(path).constData(), &m_handle, flags | SQLITE_OPEN_NOMUTEX, nullptr) ==
               SQLITE_OK;
    if (m_handle)
        sqlite3_busy_timeout(m_handle, 5000);
}

EngineFile::~EngineFile() { sqlite3_close_v2(m_handle); }

QString EngineFile::errorText() const
{
    return m_handle ? QString::fromUtf8(sqlite3_errmsg(m_handle)) : QStringLiteral("out of memory");
}

bool EngineFile::diskWasFull() const
{
    if (!m_handle)
        return false;
    const int osError = sqlite3_system_errno(m_handle);
    return (sqlite3_errcode(m_handle) & 0xff) == SQLITE_FULL || osError == ENOSPC || osError == EDQUOT;
}

bool EngineFile::exec(const QString &sql)
{
    return isOpen() && sqlite3_exec(m_handle, sql.toUtf8().constData(), nullptr, nullptr, nullptr) == SQLITE_OK;
}

std::optional<qint64> EngineFile::integer(const QString &sql)
{
    if (!isOpen())
        return std::nullopt;
    return firstValue(m_handle, sql, [](sqlite3_stmt *row) { return qint64(sqlite3_column_int64(row, 0)); });
}

bool EngineFile::readWholeFileFast()
{
    constexpr int cacheKiB = 64 * 1024;
    return exec(QStringLiteral("PRAGMA mmap_size = %1; PRAGMA cache_size = -%2").arg(m_size).arg(cacheKiB));
}

bool EngineFile::beginReading() { return exec(QStringLiteral("BEGIN")); }

CopyEnd EngineFile::copyPagesOf(EngineFile &source, QString &engineText)
{
    if (!exec(QStringLiteral("PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF")))
        return CopyEnd::CopyNotWritten;
    sqlite3_backup *backup = sqlite3_backup_init(m_handle, "main", source.m_handle, "main");
    if (!backup)
        return CopyEnd::CopyNotWritten;
    const int stepped = sqlite3_backup_step(backup, -1);
    sqlite3_backup_finish(backup);
    if (stepped == SQLITE_DONE)
        return CopyEnd::Done;
    if ((stepped & 0xff) == SQLITE_FULL || diskWasFull())
        return CopyEnd::CopyDiskFull;
    if (failedWriting(stepped & 0xff))
        return CopyEnd::CopyNotWritten;
    engineText = QString::fromUtf8(sqlite3_errstr(stepped)) + u' ' + source.errorText();
    return CopyEnd::SourceNotRead;
}

QString EngineFile::quickCheckVerdict()
{
    const auto checked = readWholeFileFast()
        ? firstValue(m_handle, QStringLiteral("PRAGMA quick_check(1)"),
                     [](sqlite3_stmt *row) {
                         return QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(row, 0)));
                     })
        : std::nullopt;
    return checked.value_or(errorText());
}

bool EngineFile::leaveWriteAheadLog() { return exec(QStringLiteral("PRAGMA journal_mode = DELETE")); }

QString integrityVerdict(const QSqlDatabase &db)
{
    try {
        return engine().fullCheck(db);
    } catch (const SqlError &error) {
        return error.engineText();
    }
}

bool leaveWriteAheadLog(const QSqlDatabase &db)
{
    try {
        return scalar(db, QStringLiteral("PRAGMA journal_mode = DELETE"))
                   .toString()
                   .compare(QStringLiteral("delete"), Qt::CaseInsensitive) == 0;
    } catch (const SqlError &) {
        return false; // another program still reads the file: the caller says so
    }
}

WriteProbe probeWrite(const QSqlDatabase &db)
{
    try {
        run(db, QStringLiteral("BEGIN IMMEDIATE"));
        run(db, QStringLiteral("CREATE TABLE velmorata_write_probe (x)"));
        run(db, QStringLiteral("ROLLBACK"));
        return WriteProbe::Taken;
    } catch (const SqlError &error) {
        QSqlQuery(db).exec(QStringLiteral("ROLLBACK"));
        return (error.code() & 0xff) == SQLITE_FULL ? WriteProbe::DiskFull : WriteProbe::Refused;
    }
}

bool markWithoutWriteAheadLog(const QString &path)
{
    constexpr qint64 versionBytes = 18; // the file format's write and read versions: 1 rollback, 2 log
    QFile file(path);
    return file.open(QIODevice::ReadWrite) && file.seek(versionBytes) && file.write("\x01\x01", 2) == 2;
}

} // namespace store
