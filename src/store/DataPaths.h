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

    // The files of the named folder. A name that is empty or blank names no folder (taken as it
    // stands it would be the current one): the paths stay empty and the store refuses them.
    static DataPaths inFolder(const QString &folder);
    // The per-user application data folder, used when no --data-dir is given.
    static QString defaultFolder();
    // Whether a name given for the data folder names none: empty or only blanks.
    static bool namesNoFolder(const QString &folder);
};

} // namespace store
