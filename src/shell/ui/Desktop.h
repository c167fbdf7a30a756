#pragma once

#include "store/Result.h"

#include <QString>

namespace store {
struct DataPaths;
class InstanceLock;
} // namespace store

// The windowed program on a data folder: the lock, the splash, the store, the doctor check
// and the main window. Returns the process exit code.
int runDesktop(const QString &dataFolder);

// Makes the data folder, takes its lock and opens the store. Fails with the message to show,
// among them the one of a second program on the same folder.
Outcome openDataFolder(const store::DataPaths &paths, store::InstanceLock &lock);
// The doctor check and the sign-in: with no doctor yet, MedicAdd asks for the first one.
// True when a doctor signed in; false means the run ends without a main window.
bool signInAtStart();
