#pragma once

#include <QDate>
#include <QString>

#include <optional>

// The rules of the personal number (EGN) as this system applies them. Each test answers
// true when it found a fault. None looks at the length: that is the caller's first check.
// The rules are narrower than the public ones on purpose: a number with the century code
// of the 1800s, of 1900-1909 or of 2010 onwards cannot enter. A practice that registers
// children born from 2010 switches to the public rule (EgnRuleSetting.h), which takes
// everything the system's rule takes, and also every century code with its true month and
// the true leap years.

enum class EgnRule { System, Public };

// True when the day is impossible for the month (a month it cannot place is not its fault).
bool EgnDateBad(const QString &egn, EgnRule rule = EgnRule::System);
// True when characters 3-4 are not a month this system takes.
bool EgnMonthBad(const QString &egn, EgnRule rule = EgnRule::System);
// True when the tenth character is not the computed check digit.
bool EgnCheckDigitBad(const QString &egn);
// The check digit that the first nine characters call for.
int EgnCheckDigit(const QString &egn);
// True when the number is not ten digits. The tests above read a blank or a letter as a digit
// and a missing character as 0, so such a number can pass them all; the card refuses it.
bool EgnNotTenDigits(const QString &egn);

// The birth date as text day.month.year, e.g. "12.5.2005" for 0545120006, "01.01.1975".
// The system's rule reads the 1800s code as a 1900s month ("01.21.1975"), which names no date.
QString EgnBirthDateText(const QString &egn, EgnRule rule = EgnRule::System);
// The date that text names, or nullopt when it names none (day 00, month 00, 31.04 ...).
std::optional<QDate> EgnBirthDate(const QString &egn, EgnRule rule = EgnRule::System);
// The month that characters 3-4 carry by their century code (01-12, 21-32, 41-52), or 0 for
// any other code.
int EgnCenturyMonth(const QString &egn);
// "М" or "Ж" (Cyrillic), from the ninth character: even is male.
QString EgnSex(const QString &egn);

// Whether on `today` the patient is past the eighteenth birthday; on the birthday itself
// not yet. nullopt when the number names no birth date, so that no price is ever guessed.
std::optional<bool> EgnOverEighteen(const QString &egn, const QDate &today, EgnRule rule = EgnRule::System);
