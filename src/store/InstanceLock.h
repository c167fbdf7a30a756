#pragma once

#include <QLockFile>
#include <QString>

#include <memory>

namespace store {

// One program per data folder: a lock file in the folder, held for the whole run. A lock
// left behind by a program that died is taken over.
class InstanceLock final
{
public:
    explicit InstanceLock(const QString &folder);
    [[nodiscard]] bool acquire();

private:
    std::unique_ptr<QLockFile> m_lock;
};

} // namespace store
