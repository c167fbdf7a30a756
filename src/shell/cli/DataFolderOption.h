#pragma once

#include "store/DataPaths.h"

#include <QCommandLineParser>
#include <QTextStream>

#include <optional>

// --data-dir DIR, alike for the window and every command that works on a practice.
QCommandLineOption dataFolderOption(const QString &description = QStringLiteral("The data folder"));

// The paths of the folder that --data-dir names, or of the default folder without it. An
// empty name is a fault of the command line (a script's empty variable, most likely), never
// the current folder: it is told on `err` after `prefix` ("report xml: "), and nothing is given.
std::optional<store::DataPaths> dataFolderOf(const QCommandLineParser &parser, QTextStream &err, const QString &prefix);
