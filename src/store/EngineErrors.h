#pragma once

#include <QString>

namespace store {

// What the person at the screen reads when the engine fails on `file`: in Bulgarian, naming the
// file and what to do, chosen by the engine's primary result code. The engine's own words go
// to the log, not here.
QString describeEngineError(const QString &file, int code);

} // namespace store
