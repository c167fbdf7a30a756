#pragma once

#include "store/Result.h"

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
    // The engine's own words about the last failure, for the log.
    QString errorText() const;
    // Runs statements that return no rows.
    [[nodiscard]] bool exec(const QString &sql);
    // The first column of the first row of `sql` as a number; nothing when the statement fails.
    std::optional<qint64> integer(const QString &sql);
    // Maps the whole file into memory and gives the page cache room: the checks read every page.
    [[nodiscard]] bool readWholeFileFast();

private:
    sqlite3 *m_handle = nullptr;
    bool m_opened = false;
    qint64 m_size = 0;
};

// A new empty file beside `target` with a name of its own, for content that takes the target's
// name only when it is whole; empty when the folder takes no new file.
QString reserveSiblingName(const QString &target);
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
