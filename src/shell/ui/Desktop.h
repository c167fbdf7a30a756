#pragma once

#include "store/Result.h"

#include <QString>

namespace store {
struct DataPaths;
} // namespace store

// The windowed program on a data folder: the splash, the store with the folder's lock, the
// doctor check and the main window. Returns the process exit code.
int runDesktop(const store::DataPaths &paths);

// Opens the store of the data folder, which takes the folder's lock. An empty clinic file is
// set up as a new practice only when the user says so. Fails with the message to show, among
// them the one of a second program on the same folder.
Outcome openDataFolder(const store::DataPaths &paths);
// The doctor check and the sign-in: with no doctor yet, MedicAdd asks for the first one.
// True when a doctor signed in; false means the run ends without a main window.
bool signInAtStart();
