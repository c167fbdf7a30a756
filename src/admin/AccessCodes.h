#pragma once

#include <QString>

// Access codes are kept as salted password hashes (Argon2id), never in clear. The sign-in
// compares what is typed, trimmed, with the stored hash. An empty code is stored empty, so
// that a doctor with no code can never sign in.
namespace accesscodes {

// The value to store for a code as typed; blanks around it do not count.
QString hashForStorage(const QString &typed);
// Whether the typed code (trimmed) fits the stored value; never true for an empty stored value.
bool matches(const QString &stored, const QString &typed);

} // namespace accesscodes
