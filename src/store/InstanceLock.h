#pragma once

#include <QString>

namespace store {

// One program per data folder: velmorata.lock in the folder, held from the opening of the
// store to its closing. The hold is an advisory lock of the kernel on the open file, which
// the kernel drops when the process ends however it ends; so a lock file left by a power cut
// (empty), by another computer or by a program that died is simply taken over. The pid and
// host written into the file are for a person looking, never for the decision.
class InstanceLock final
{
public:
    enum class Taking { Taken, HeldByAnother, FolderNotWritable };

    explicit InstanceLock(const QString &folder);
    ~InstanceLock();
    InstanceLock(const InstanceLock &) = delete;
    InstanceLock &operator=(const InstanceLock &) = delete;

    [[nodiscard]] Taking take();
    // Kept for the callers that only ask yes or no.
    [[nodiscard]] bool acquire() { return take() == Taking::Taken; }
    void release();
    QString filePath() const { return m_path; }

private:
    QString m_path;
    int m_fd = -1;
};

} // namespace store
