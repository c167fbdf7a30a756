#pragma once

#include <QString>

// Code groups the reports to the fund count by. Codes are compared by their exact text.
namespace reports {

// The 24 filling codes: "301" to "304", each alone or followed by the Cyrillic А, Б, В or the
// Latin A, B. Stored lines hold both alphabets, and all of them are fillings.
bool IsFillingCode(const QString &code);

} // namespace reports
