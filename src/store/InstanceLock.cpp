#include "store/InstanceLock.h"

#include <QDir>
#include <QFile>
#include <QSysInfo>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace store {

InstanceLock::InstanceLock(const QString &folder)
    : m_path(QDir(folder).absoluteFilePath(QStringLiteral("velmorata.lock")))
{
}

InstanceLock::~InstanceLock() { release(); }

InstanceLock::Taking InstanceLock::take()
{
    if (m_fd >= 0)
        return Taking::Taken;
    const QByteArray name = QFile::encodeName(m_path);
    const int fd = ::open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (fd < 0)
        return Taking::FolderNotWritable;
    if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
        ::close(fd);
        return Taking::HeldByAnother;
    }
    m_fd = fd;
    // Only information for a person: a failed write leaves the lock held all the same.
    QFile holder;
    if (holder.open(fd, QIODevice::WriteOnly, QFileDevice::DontCloseHandle) && holder.resize(0))
        holder.write(QByteArray::number(qint64(::getpid())) + '\n' + QSysInfo::machineHostName().toUtf8() + '\n');
    return Taking::Taken;
}

void InstanceLock::release()
{
    if (m_fd < 0)
        return;
    // The file stays: removing it while another program waits on it would let two hold it.
    ::close(m_fd);
    m_fd = -1;
}

} // namespace store
