#pragma once

#include "store/Result.h"

#include <QSqlDatabase>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

// Finding one of the signed-in doctor's patients by the first word of the stored name.
namespace namesearch {

// The trimmed text with its first character upper-cased, the rest as typed.
QString searchKey(const QString &typed);
// The stored name's first word: up to the first blank, trimmed; the trimmed whole without a blank.
QString firstWord(const QString &names);

// A list entry: the name, fifty blanks, the number. The choice is read back from it by position.
QString listEntry(const QString &names, const QString &egn);

struct Choice final
{
    QString foundName; // the name with ten of the fifty blanks still behind it
    QString foundEgn;  // the last ten characters
};
// nullopt for an empty text: nothing was chosen.
std::optional<Choice> decodeEntry(const QString &entry);

struct Found final
{
    int patientsOfDoctor = 0; // 0: the doctor has no patients at all
    QStringList entries;      // in the order the patients were stored
};

// All patients of `medicCode` whose first name word equals the key of `typed` exactly.
Result<Found> searchByFirstName(const QSqlDatabase &clinic, const QString &typed, const QString &medicCode);

QString noPatientsMessage();
QString searchDoneMessage();
QString nothingChosenMessage();

} // namespace namesearch
