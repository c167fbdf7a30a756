#pragma once

#include "maintenance/JetSource.h"

namespace jet {

// A Jet 3 or Jet 4 (.mdb) file read through libmdb. Jet 3 keeps texts in the code page of
// the Windows that wrote them; the files this program meets come from Bulgarian Windows, so
// Windows-1251 is taken unless MDB_JET3_CHARSET names another.
//
// A Jet 3 database password (data.mdb of the earlier edition has one) is no encryption: the
// engine of that time checked it when opening, and the pages are stored plain. libmdb does not
// ask for it and reads the file as any other; storedPassword() gives what the header holds.
Result<std::unique_ptr<TableSource>> openJetFile(const QString &path);

// The database password held in a Jet 3 file's header (empty when there is none).
QString storedPassword(const TableSource &jetFile);

} // namespace jet
