#pragma once

#include <QString>

// The windowed program on a data folder: the lock, the splash, the store, the doctor check
// and the main window. Returns the process exit code.
int runDesktop(const QString &dataFolder);
