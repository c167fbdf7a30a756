#include "maintenance/BackupFiles.h"

#include "store/Sql.h"

#include <QAtomicInteger>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <sqlite3.h>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace backupfiles {
namespace {

QString nextConnectionName()
{
    static QAtomicInteger<int> counter;
    return QStringLiteral("velmorata-side-%1").arg(counter.fetchAndAddRelaxed(1));
}

constexpr char PartSuffix[] = ".part-";

bool syncPath(const QString &path, int flags)
{
    const int fd = ::open(QFile::encodeName(path).constData(), flags | O_CLOEXEC);
    if (fd < 0)
        return false;
    const bool synced = ::fsync(fd) == 0;
    ::close(fd);
    return synced;
}

// A part is removed only while this run holds its lock: a live run keeps the lock of the part it
// writes until the part has its name or is gone.
void removeIfUnused(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    const int fd = ::open(name.constData(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0)
        return;
    struct stat status
    {
    };
    if (::fstat(fd, &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == ::geteuid() &&
        ::flock(fd, LOCK_EX | LOCK_NB) == 0)
        ::unlink(name.constData());
    ::close(fd);
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

QSqlDatabase SideConnection::db() const
{
    return QSqlDatabase::database(m_name, false);
}

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

EngineFile::~EngineFile()
{
    sqlite3_close_v2(m_handle);
}

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

namespace {

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

} // namespace

std::optional<qint64> EngineFile::integer(const QString &sql)
{
    if (!isOpen())
        return std::nullopt;
    return firstValue(m_handle, sql, [](sqlite3_stmt *row) { return qint64(sqlite3_column_int64(row, 0)); });
}

std::optional<QString> EngineFile::text(const QString &sql)
{
    if (!isOpen())
        return std::nullopt;
    return firstValue(m_handle, sql, [](sqlite3_stmt *row) {
        return QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(row, 0)));
    });
}

bool EngineFile::readWholeFileFast()
{
    constexpr int cacheKiB = 64 * 1024;
    return exec(QStringLiteral("PRAGMA mmap_size = %1; PRAGMA cache_size = -%2").arg(m_size).arg(cacheKiB));
}

PartFile::PartFile(const QString &target)
    : m_target(target)
{
    QByteArray name = QFile::encodeName(target) + PartSuffix + "XXXXXX";
    m_fd = ::mkostemp(name.data(), O_CLOEXEC);
    if (m_fd < 0)
        return;
    m_path = QFile::decodeName(name);
    if (::flock(m_fd, LOCK_EX | LOCK_NB) != 0)
        qWarning("no lock on %s", name.constData()); // only a later run's clean-up would miss it
}

PartFile::~PartFile()
{
    if (m_fd < 0)
        return;
    if (!m_path.isEmpty())
        ::unlink(QFile::encodeName(m_path).constData()); // still locked: no other run takes it meanwhile
    ::close(m_fd);
}

bool PartFile::copyFrom(QFile &source)
{
    QByteArray chunk(1 << 20, Qt::Uninitialized);
    for (;;) {
        const qint64 got = source.read(chunk.data(), chunk.size());
        if (got <= 0)
            return got == 0;
        for (qint64 done = 0; done < got;) {
            const ssize_t wrote = ::write(m_fd, chunk.constData() + done, size_t(got - done));
            if (wrote < 0 && errno == EINTR)
                continue;
            if (wrote <= 0) {
                m_diskFull = errno == ENOSPC || errno == EDQUOT;
                return false;
            }
            done += wrote;
        }
    }
}

bool PartFile::putInPlace()
{
    if (!isOpen() || ::fsync(m_fd) != 0)
        return false;
    const bool replaced = replaceFile(m_path, m_target);
    // A folder that fails only its sync still holds the part under the target's name: saying
    // otherwise would report a replaced file as the old one.
    if (!replaced && QFileInfo::exists(m_path))
        return false;
    m_path.clear();
    return true;
}

void removeStaleParts(const QString &target)
{
    const QFileInfo info(target);
    const QRegularExpression ours(QRegularExpression::anchoredPattern(
        QRegularExpression::escape(info.fileName() + QLatin1String(PartSuffix)) + QStringLiteral("[A-Za-z0-9]{6}")));
    const QStringList names = QDir(info.absolutePath()).entryList(QDir::Files | QDir::Hidden | QDir::System);
    for (const QString &name : names)
        if (ours.match(name).hasMatch())
            removeIfUnused(info.absolutePath() + u'/' + name);
}

QString diskFullMessage(const QString &folder)
{
    return QStringLiteral("Дискът е пълен: в папката %1 няма свободно място. Освободете място на диска "
                          "и опитайте отново.")
        .arg(QDir::toNativeSeparators(folder));
}

bool syncFile(const QString &path)
{
    return syncPath(path, O_RDONLY);
}

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
        return store::scalar(db, QStringLiteral("PRAGMA journal_mode = DELETE"))
                   .toString()
                   .compare(QStringLiteral("delete"), Qt::CaseInsensitive) == 0;
    } catch (const store::SqlError &) {
        return false; // another program still reads the file: the caller says so
    }
}

} // namespace backupfiles
