#pragma once

#include "store/Result.h"

#include <QFile>
#include <QSqlDatabase>
#include <QString>

#include <optional>

struct sqlite3;

// What the backup and the restore share: a connection of their own to a database file, kept
// apart from the store's, and the steps that make a file's new content durable and give it its
// name in one move.
namespace backupfiles {

// A connection to one file under a name of its own, closed and removed when it goes.
class SideConnection final
{
  public:
    enum class Mode { ReadOnly, ReadWrite };
    SideConnection(const QString &path, Mode mode);
    ~SideConnection();
    SideConnection(const SideConnection &) = delete;
    SideConnection &operator=(const SideConnection &) = delete;

    // The open connection, or a message naming the file when it could not be opened.
    [[nodiscard]] Outcome open();
    QSqlDatabase db() const;

  private:
    QString m_name;
};

// A connection of the engine's own to one file, for what QtSql has no word for (the online
// backup) and for checks that run on threads of their own, where a QtSql connection may not go.
class EngineFile final
{
  public:
    enum class Mode { ReadOnly, ReadWrite };
    EngineFile(const QString &path, Mode mode);
    ~EngineFile();
    EngineFile(const EngineFile &) = delete;
    EngineFile &operator=(const EngineFile &) = delete;

    bool isOpen() const { return m_handle != nullptr && m_opened; }
    sqlite3 *handle() const { return m_handle; }
    const QString &path() const { return m_path; }
    // The engine's own words about the last failure, for the log.
    QString errorText() const;
    // Whether the last failure was a write that found no room on the disk.
    bool diskWasFull() const;
    // Runs statements that return no rows.
    [[nodiscard]] bool exec(const QString &sql);
    // The first column of the first row of `sql` as a number; nothing when the statement fails.
    std::optional<qint64> integer(const QString &sql);
    // The same as text: the verdict of a check, for instance.
    std::optional<QString> text(const QString &sql);
    // Maps the whole file into memory and gives the page cache room: the checks read every page.
    [[nodiscard]] bool readWholeFileFast();

  private:
    QString m_path;
    sqlite3 *m_handle = nullptr;
    bool m_opened = false;
    qint64 m_size = 0;
};

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
// The full PRAGMA integrity_check of a database: "ok" or the first fault found.
QString integrityVerdict(const QSqlDatabase &db);
// Leaves the write-ahead log: the file then stands whole on its own, as a copy must.
[[nodiscard]] bool leaveWriteAheadLog(const QSqlDatabase &db);

} // namespace backupfiles
