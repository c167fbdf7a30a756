#pragma once

#include "store/Result.h"

#include <QSqlDatabase>
#include <QString>
#include <QStringList>

#include <optional>

// The doctors of the practice (table Medic): entering a new one, the names offered at sign-in,
// the look-up of a chosen name and the change of an access code. Access codes are stored as
// hashes (admin/AccessCodes.h); everything here compares what is typed with the stored hash.
namespace doctors {

// What MedicAdd holds: txtFields 1 to 4.
struct DoctorEntry final
{
    QString names;        // "Имена"
    QString number;       // "Номер", stored as EGN
    QString practiceCode; // "Код практика", stored as KodMedic
    QString accessCode;   // "Код за достъп", stored hashed
};

inline constexpr int MinimumAccessCodeLength = 6;

// The message of the first check the entry fails, in the form's order, or an empty text when it
// passes them all. Values are taken as typed: a blank is content.
QString MedicAddCheck(const DoctorEntry &entry);
// Stores the entry as a new row of Medic, the access code hashed. A name that a doctor already
// bears (blanks around it not counting) is refused: at sign-in the later of two equal names
// hides the earlier doctor for good.
Outcome addDoctor(const QSqlDatabase &clinic, const DoctorEntry &entry);

Result<int> doctorCount(const QSqlDatabase &clinic);
// Names of all doctors in table order, as stored.
Result<QStringList> doctorNames(const QSqlDatabase &clinic);

struct SignInRecord final
{
    QString accessCode; // the stored hash, trimmed; empty when the doctor has no code
    QString kodMedic;   // trimmed
    QString names;      // trimmed
};
// The doctor whose trimmed name equals the trimmed chosen name; of two with one name the later
// row wins. nullopt when no row has that name.
Result<std::optional<SignInRecord>> lookUpDoctor(const QSqlDatabase &clinic, const QString &chosenName);

// Whether a typed code is the stored one, blanks around it not counting. An empty stored code
// equals only an empty typed one; callers that sign in must refuse the empty code themselves.
bool sameCode(const QString &stored, const QString &typed);
// nIDMedic: the numeric reading of an access code as a signed 16-bit value; 0 for a code whose
// number does not fit, since nothing that reads the value depends on it.
qint16 accessCodeNumber(const QString &typed);

// The signed-in doctor's row: the row sign-in took, the later of equal trimmed names, with the
// trimmed practice code sign-in kept.
struct SignedInDoctor final
{
    QString names;    // CurrentMedicName
    QString kodMedic; // CurrentMedicCode
};
// The stored code of the signed-in doctor; empty when the row has none or is gone.
Result<QString> keptCode(const QSqlDatabase &clinic, const SignedInDoctor &doctor);
// Gives the signed-in doctor the new code (may be empty). Fails when no row was changed.
Outcome changeCode(const QSqlDatabase &clinic, const SignedInDoctor &doctor, const QString &newCode);

} // namespace doctors
