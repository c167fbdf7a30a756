#include "store/InstanceLock.h"

#include <QDir>

namespace store {

InstanceLock::InstanceLock(const QString &folder)
    : m_lock(std::make_unique<QLockFile>(QDir(folder).absoluteFilePath(QStringLiteral("velmorata.lock"))))
{
    m_lock->setStaleLockTime(0);
}

bool InstanceLock::acquire() { return m_lock->tryLock(0); }

} // namespace store
