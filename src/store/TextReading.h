#pragma once

#include <QString>
#include <QStringView>

namespace text {

// Reads a text as a number the way the whole system does: decimal digits from the left,
// stopping at the first character that is not one; nothing readable gives 0. Only the
// ASCII digits count, so a Cyrillic or Arabic-Indic digit stops the reading like a letter.
// Very long runs of digits saturate instead of wrapping.
qint64 leadingNumber(QStringView text);

// The piece of `text` from character `from` (counted from 1) of `length` characters,
// read as above. A piece beyond the end of the text reads as 0.
qint64 numberAt(QStringView text, int from, int length);

// The system's test for "empty": a field is empty when its trimmed text has no length.
inline bool isBlank(const QString &value) { return value.trimmed().isEmpty(); }

} // namespace text
