#pragma once

#include "store/DataPaths.h"
#include "store/Result.h"

#include <QSqlDatabase>

namespace store {

// velmorata.db and data.db of a folder on one connection, for a write that must land in both
// files or in neither: the take-over of an old practice fills both, and a practice whose
// patients came over without its post codes and norms (or the reverse) is no practice.
//
// data.db is the main schema and velmorata.db is attached, so that a table made in the write
// (RazhNorm, made to the old practice's materials) goes into data.db while every other name
// finds its own file. The engine commits attached files as one only through its rollback
// journal, so both leave the write-ahead log while the connection is open and go back to it
// when it closes; a run killed in between leaves them in the journal, which the next opening
// of the store sets right. Both files must exist with their tables (openClinicFile,
// openDataFile) and the folder's lock be held.
class JointFiles final
{
public:
    explicit JointFiles(const DataPaths &paths);
    ~JointFiles();
    JointFiles(const JointFiles &) = delete;
    JointFiles &operator=(const JointFiles &) = delete;

    [[nodiscard]] Outcome open();
    QSqlDatabase db() const;

private:
    DataPaths m_paths;
    QString m_connection;
};

} // namespace store
