#pragma once

#include <QString>

// Groups of the fund's activity codes. Codes are compared by their exact text.
namespace activities {

// The 24 filling codes: "301" to "304", each alone or followed by the Cyrillic А, Б, В or the
// Latin A, B. Stored lines hold both alphabets, and all of them are fillings.
bool IsFillingCode(const QString &code);

// The activities done on one tooth, whose line must name it: the fillings, the root
// treatments 332 and 333 and the extractions 508 and 509. The fund refuses them without one.
bool IsToothBoundCode(const QString &code);

} // namespace activities
