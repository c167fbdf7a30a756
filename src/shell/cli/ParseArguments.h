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

// Takes out of `arguments` (the command's name first) the word that names what the command
// makes ("sheet" of print, "xml" of report): the first that is neither an option nor the value
// of one of `valueOptions` (names without dashes), so that options may come before it or after
// it. Empty when there is none.
QString takeFormWord(QStringList &arguments, const QStringList &valueOptions);

// When the word names nothing the command knows: with --help in `arguments` the `list` of what
// it makes goes to `out` and the exit code is 0; otherwise what was wrong ("print: no form
// named", "print: unknown form \"x\"") and the list go to `err`, and the code is 2.
int refuseFormWord(const QString &word, const QStringList &arguments, const QString &command, const QString &kind,
                   const QString &list, QTextStream &out, QTextStream &err);

// A message of the program on one line of a terminal: its line breaks (carriage returns) become blanks.
QString oneLine(const QString &message);

// A field of a tab-separated output line: a tab, a line break or a backslash inside it would
// split its line or shift its columns for the script that reads them, so they are written
// escaped as \t, \r, \n and \\.
QString escapeField(const QString &text);
