#pragma once

#include "store/Result.h"

#include <QSqlDatabase>
#include <QString>

#include <optional>

struct sqlite3;

// The database files of the backup, the restore and the repair, reached beside the store's own
// connections: a QtSql connection of their own, or the engine's own handle for what QtSql has
// no word for (the online copy of a live database, checks on threads of their own).
namespace store {

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

// How an online copy of one file into another ended.
enum class CopyEnd { Done, CopyDiskFull, CopyNotWritten, SourceNotRead };

class EngineFile final
{
  public:
    enum class Mode { ReadOnly, ReadWrite };
    EngineFile(const QString &path, Mode mode);
    ~EngineFile();
    EngineFile(const EngineFile &) = delete;
    EngineFile &operator=(const EngineFile &) = delete;

    bool isOpen() const { return m_handle != nullptr && m_opened; }
    const QString &path() const { return m_path; }
    // The engine's own words about the last failure, for the log.
    QString errorText() const;
    // Whether the last failure was a write that found no room on the disk.
    bool diskWasFull() const;
    // The first column of the first row of `sql` as a number; nothing when the statement fails.
    std::optional<qint64> integer(const QString &sql);
    // Maps the whole file into memory and gives the page cache room: the checks read every page.
    [[nodiscard]] bool readWholeFileFast();

    // A read transaction: what is read until the file closes is one state of the database.
    [[nodiscard]] bool beginReading();
    // Copies every page of `source`, in its read transaction, over this file. The copy keeps no
    // journal and is not synced: it is a new file, synced once whole by its caller. The engine's
    // own words of a failure to read are in `engineText`.
    CopyEnd copyPagesOf(EngineFile &source, QString &engineText);
    // The start-up's quick check: "ok" or the first fault found, or the engine's failure.
    QString quickCheckVerdict();
    // Leaves the write-ahead log for the rollback journal, folding the log into the file.
    [[nodiscard]] bool leaveWriteAheadLog();

  private:
    [[nodiscard]] bool exec(const QString &sql);

    QString m_path;
    sqlite3 *m_handle = nullptr;
    bool m_opened = false;
    qint64 m_size = 0;
};

// The full integrity check of a database: "ok" or the first fault found.
QString integrityVerdict(const QSqlDatabase &db);
// Leaves the write-ahead log: the file then stands whole on its own, as a copy must.
[[nodiscard]] bool leaveWriteAheadLog(const QSqlDatabase &db);

// Whether the database takes a write: a write that begins and is rolled back. The engine refuses
// it on a file it would open read-only, whatever the reason, and on a disk without room.
enum class WriteProbe { Taken, Refused, DiskFull };
WriteProbe probeWrite(const QSqlDatabase &db);

// A copy made page by page keeps its source's mark of the write-ahead log in its header; set
// back to the rollback journal, the file is one file that opens anywhere, also read-only.
[[nodiscard]] bool markWithoutWriteAheadLog(const QString &path);

} // namespace store
