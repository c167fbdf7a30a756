#pragma once

#include <QString>

// Space out the first ten characters of a text for the digit boxes of a printed form:
// character 1, then for each position 2 to 10 the gap and that character (nothing past the end).
QString SpreadWide(const QString &value);   // gap of two blanks
QString SpreadNarrow(const QString &value); // gap of one blank
