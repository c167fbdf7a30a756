#pragma once

#include "store/DataPaths.h"
#include "store/Result.h"

#include <QSqlDatabase>

namespace store {

// How the opening of a data folder ended: open, refused with a message naming the file or the
// folder and what to do, or stopped at an empty clinic file, about which only the person at
// the screen can decide (a restore or a copy gone wrong looks exactly like it).
class [[nodiscard]] StoreOpening final
{
public:
    static StoreOpening success() { return StoreOpening(true, false, {}); }
    static StoreOpening refused(QString message) { return StoreOpening(false, false, std::move(message)); }
    static StoreOpening emptyClinicFile(QString message) { return StoreOpening(false, true, std::move(message)); }

    bool ok() const { return m_ok; }
    explicit operator bool() const { return m_ok; }
    const QString &error() const { return m_error; }
    bool stoppedAtEmptyClinicFile() const { return m_emptyClinicFile; }

private:
    StoreOpening(bool ok, bool emptyClinicFile, QString error)
        : m_ok(ok)
        , m_emptyClinicFile(emptyClinicFile)
        , m_error(std::move(error))
    {
    }

    bool m_ok;
    bool m_emptyClinicFile;
    QString m_error;
};

struct OpenOptions final
{
    // Set only after the person at the screen agreed to start a new practice in an empty
    // velmorata.db; the command line never sets it.
    bool emptyClinicFileIsNew = false;
};

// Opens velmorata.db and data.db of the folder under ConnectMain and ConnectData for the
// whole run. First the folder is made if need be (private to its owner) and its lock taken;
// a second program on the folder is refused. A missing file is created whole with its schema
// and reference rows, or not at all; a file that is no database of this program, lacks
// tables, or fails the integrity check is refused with a message naming the file. Nothing
// made by someone else is deleted.
StoreOpening openStore(const DataPaths &paths, const OpenOptions &options = {});
// Closes the files and gives the folder's lock back.
void closeStore();
// The paths of the store opened last.
const DataPaths &paths();

// Opens (creating if missing) one file under the given connection name; used by openStore
// and by the tools that build a practice elsewhere (demo, benchmarks).
Outcome openClinicFile(const QString &path, const QString &connection);
Outcome openDataFile(const QString &path, const QString &connection);
// PRAGMA quick_check of the clinic file: a failure names the file and says what to do.
Outcome checkClinicFile(const QSqlDatabase &db);

} // namespace store
