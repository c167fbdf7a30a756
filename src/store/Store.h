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
    // Set when the file was checked whole a moment ago (a restore checks its copy before it
    // puts it in place): the start-up check would only read it all again.
    bool alreadyChecked = false;
    // Set by the work that needs a practice that is there already (the reports, the prints, the
    // upkeep): a folder without velmorata.db, a mistyped name most likely, is refused naming it,
    // and nothing is made there, not even the folder. Left unset, such a folder gets a new practice.
    bool practiceMustExist = false;
};

// Opens velmorata.db and data.db of the folder under ConnectMain and ConnectData for the
// whole run. Paths of no folder (an empty name) are refused. First the folder is made if need
// be (private to its owner) and its lock taken;
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
// Whether the tables of `db` are those of a clinic file this program can open (every clinic
// table there, the layout no newer than this program's): the same test the start-up makes.
// The message names the file as `shownAs` (by default the file's own path).
Outcome checkClinicTables(const QSqlDatabase &db, const QString &shownAs = {});

// Takes the folder's lock without opening any file, for work that must replace a clinic file
// which may not open at all (a restore over a damaged file). closeStore gives the lock back.
// Paths of no folder are refused.
StoreOpening lockFolder(const DataPaths &paths);
// Whether this process holds the lock of the folder opened last.
bool holdsFolder();
// Closes velmorata.db of the open store and keeps the folder's lock, so that the file can be
// replaced without another program starting on the folder in between.
void closeClinicFile();
// Opens velmorata.db of the locked folder again, with the checks of the start-up; the
// integrity check is left out for a file that was `alreadyChecked` whole.
Outcome reopenClinicFile(bool alreadyChecked = false);

} // namespace store
