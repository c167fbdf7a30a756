#include "maintenance/BackupFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace backupfiles {
namespace {

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

} // namespace backupfiles
