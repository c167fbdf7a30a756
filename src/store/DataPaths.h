#pragma once

#include <QString>

namespace store {

// Where the three database files of a practice live.
struct DataPaths final
{
    QString folder;
    QString clinicDb;  // velmorata.db: the clinic tables
    QString dataDb;    // data.db: the reference tables PostCode, Mater, RazhNorm
    QString scratchDb; // temp.db: the scratch table of the report in progress

    static DataPaths inFolder(const QString &folder);
    // The per-user application data folder, used when no --data-dir is given.
    static QString defaultFolder();
};

} // namespace store
