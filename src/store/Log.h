#pragma once

#include <QString>

#include <functional>

// velmorata.log in the data folder: what a person at the screen is not shown but support
// needs, such as the engine's own English text and the statement that failed. The messages
// on the screen are in Bulgarian and say what to do; the log keeps the detail behind them.
namespace store {

QString logFilePath(const QString &folder);
// Appends one dated line; a log that cannot be written never stops the work.
void writeLog(const QString &folder, const QString &text);

// A notice for the person starting the program (a folder made private, for instance): always
// written to the log, and handed to the sink the front end installs (the command line prints
// it on stderr; the window leaves it in the log).
using NoticeSink = std::function<void(const QString &)>;
void setNoticeSink(NoticeSink sink);
void notice(const QString &folder, const QString &text);

} // namespace store
