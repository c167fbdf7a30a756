#pragma once

#include "patients/EgnRules.h"
#include "store/Result.h"

#include <QHash>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <optional>

// The patient card's work with the store and its rules on leaving an input. The card screen
// holds the values; everything it reads or writes goes through here.
namespace patientcard {

// The ID of the first row of `table` (Pacients, Dental) stored under `egn`; null when there is none.
QVariant firstRowId(const QSqlDatabase &clinic, const QString &table, const QString &egn);

// The fields of Pacients that the card shows in inputs, by field name.
const QStringList &editedFields();

// One patient as the card shows it: the personal data by field name (DataR as typed,
// DD.MM.YYYY), the 52 chart texts, and the rows they came from (0 for none yet).
struct CardData final
{
    QHash<QString, QString> fields;
    QStringList chart = QStringList(52, QString());
    qint64 pacientRowId = 0;
    qint64 dentalRowId = 0;
};

// The stored patient with this number (the first row of it), or nullopt.
Result<std::optional<CardData>> loadPatient(const QSqlDatabase &clinic, const QString &egn);

// What leaving the number entry box leads to.
enum class EgnVerdict { Failed, NewPatient, ExistingPatient };

struct EgnEntry final
{
    EgnVerdict verdict = EgnVerdict::Failed;
    QStringList messages;  // to be shown in order
    QString shownEgn;       // the text that the stored-number input takes
    QString sex;            // "М"/"Ж" from the number
    QString existingName;   // Names of the stored patient
};

// The rule of the personal number the practice works by (EgnRuleSetting.h).
Result<EgnRule> practiceEgnRule(const QSqlDatabase &clinic);

// The message with which a number is refused, or an empty text when it is taken: the length of
// the text as typed, the three rules on the trimmed text, then ten digits. The card and the EGN
// correction refuse the same numbers. Under the system's rule a number that the public rule
// would take is told where the practice's setting is, below the rule's own message.
QString numberRefusal(const QString &typed, EgnRule rule);

// The steps on leaving the entry box with `typed` in it: the refusal above, then a look for a
// stored patient of that number. A new number that names no birth date is taken with a warning.
Result<EgnEntry> checkEnteredEgn(const QSqlDatabase &clinic, const QString &typed);

// The message that refuses a registration date that is not empty and no date; empty otherwise.
QString registrationDateRefusal(const CardData &card);

// A settlement found by post code in the reference table.
struct PostPlace final
{
    QString tawn, obsh, obl, zk, zdRn;
};
Result<std::optional<PostPlace>> findPostCode(const QSqlDatabase &data, const QString &pkod);
QString postCodeUnknownMessage();

// The checks and rewrites on leaving the name, health book, quarter and street inputs.
bool namesIncomplete(const QString &typed);
QString namesIncompleteMessage();
bool healthBookInvalid(const QString &typed);
QString healthBookMessage();
QString quarterWithPrefix(const QString &typed);
QString streetWithPrefix(const QString &typed);

// What a new card stores besides its inputs.
struct NewCardStamp final
{
    QString medicCode;            // LKod: the doctor who keeps the patient
    std::optional<qint16> idName; // IDName; nullopt leaves it empty
    QString postRzok;             // RZOK and ZR from the last post code found,
    QString postZr;               // overwriting what was typed there
};

// Stores a new patient under `egn` with its chart, in one transaction. Refused when the
// number is not a valid one or is already stored, or the registration date is no date.
Result<CardData> saveNewCard(const QSqlDatabase &clinic, const CardData &card, const QString &egn,
                             const NewCardStamp &stamp);
// Writes the inputs over the patient's stored rows in one transaction; a missing chart row
// is created rather than the chart lost.
Result<CardData> saveCardChanges(const QSqlDatabase &clinic, const CardData &card, const QString &egn);
// Removes the patient's row, chart row and all service lines of `egn` in one transaction.
Outcome deletePatient(const QSqlDatabase &clinic, const CardData &card, const QString &egn);

QString deleteQuestion();

} // namespace patientcard
