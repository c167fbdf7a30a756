#pragma once

#include "maintenance/JetSource.h"

namespace jet {

// A Jet 3 or Jet 4 (.mdb) file read through libmdb in this very process. Jet 3 keeps texts in
// the code page of the Windows that wrote them; the files this program meets come from
// Bulgarian Windows, so Windows-1251 is taken unless MDB_JET3_CHARSET names another.
//
// libmdb trusts what a file says of itself, and a damaged file can take the process down with
// it: only the reader child (JetReader.h) calls this; the program opens files through it.
//
// A Jet 3 database password (data.mdb of the earlier edition has one) is no encryption: the
// engine of that time checked it when opening, and the pages are stored plain. libmdb does not
// ask for it and reads the file as any other; storedPassword() gives what the header holds.
Result<std::unique_ptr<TableSource>> openJetFileInProcess(const QString &path);

// What a damaged or foreign file gets, naming it.
QString damagedJetFile(const QString &path);

} // namespace jet
