#pragma once

#include "store/Result.h"

#include <QFile>
#include <QString>

// What the backup and the restore share: the steps that make a file's new content durable and
// give it its name in one move, and what they say of a full disk.
namespace backupfiles {

// A new file beside `target` for content that takes the target's name only when it is whole.
// It is locked while this process holds it, so that a later run can tell a part a killed run
// left from one a live run still writes; a part that never took the target's name is removed.
class PartFile final
{
  public:
    explicit PartFile(const QString &target);
    ~PartFile();
    PartFile(const PartFile &) = delete;
    PartFile &operator=(const PartFile &) = delete;

    // False when the folder takes no new file.
    bool isOpen() const { return !m_path.isEmpty(); }
    const QString &path() const { return m_path; }
    // Appends the bytes of `source`.
    [[nodiscard]] bool copyFrom(QFile &source);
    // Makes the content durable and gives it the target's name in one step.
    [[nodiscard]] bool putInPlace();
    // Whether the last failed write found the disk full.
    bool diskWasFull() const { return m_diskFull; }

  private:
    QString m_target;
    QString m_path;
    int m_fd = -1;
    bool m_diskFull = false;
};

// Removes the parts beside `target` that runs killed while writing left: files of the name
// PartFile gives, owned by this user, that no live run holds locked.
void removeStaleParts(const QString &target);

// What the user is told when a write found no room left in `folder`.
QString diskFullMessage(const QString &folder);

// Flushes the file's content to the disk.
[[nodiscard]] bool syncFile(const QString &path);
// Gives `from` the name `to`, replacing a file of that name in one step, and makes the new
// name itself durable: a crash leaves either the old file under that name or the new one.
[[nodiscard]] bool replaceFile(const QString &from, const QString &to);
} // namespace backupfiles
