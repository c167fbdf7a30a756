#pragma once

#include <QCommandLineParser>
#include <QStringList>
#include <QTextStream>

#include <optional>

// Parses a command's arguments with its parser. Gives the exit code when the run ends here:
// 2 after a wrong command line (the fault on `err`), 0 after --help was answered on `out`;
// nothing when the command goes on. `prefix` starts the fault's line ("demo: "), or is empty.
std::optional<int> parseArguments(QCommandLineParser &parser, const QStringList &arguments, QTextStream &out,
                                  QTextStream &err, const QString &prefix = {});

// A message of the program on one line of a terminal: its line breaks (carriage returns) become blanks.
QString oneLine(const QString &message);

// A field of a tab-separated output line: a tab, a line break or a backslash inside it would
// split its line or shift its columns for the script that reads them, so they are written
// escaped as \t, \r, \n and \\.
QString escapeField(const QString &text);
