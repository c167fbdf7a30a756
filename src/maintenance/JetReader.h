#pragma once

#include "maintenance/JetSource.h"

// Jet files are read in a child process of this program's own executable, which hands the
// rows back through a pipe. libmdb was written for files that are whole; on a damaged one it
// may read past its buffers and crash. In the child, such a crash ends one read, and the
// program goes on with a message naming the file.
namespace jet {

// The first argument that makes the executable serve one read instead of starting.
inline constexpr char ReaderCommand[] = "jet-reader";

// The executable that serves the reads; by default the running program. Tests, which are
// executables of their own, point it at the program.
void setReaderProgram(const QString &program);

// Serves one read in the child: `arguments` are FILE to list its tables, or FILE TABLE to read
// one table. The answer goes to standard output; the exit code is 0 when it was given.
int serveReaderRequest(const QStringList &arguments);

// Opens a Jet file through the child. A file the child cannot read, or on which it dies, hangs
// or runs out of memory, is the message that the file is damaged, naming it.
Result<std::unique_ptr<TableSource>> openJetFile(const QString &path);

} // namespace jet
