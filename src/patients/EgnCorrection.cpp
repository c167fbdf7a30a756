#include "patients/EgnCorrection.h"

#include "patients/EgnMessages.h"
#include "patients/PatientCard.h"
#include "store/Sql.h"

namespace egncorrection {
namespace {

const QChar CarriageReturn(13);

int rewriteFirstRow(const QSqlDatabase &db, const QString &table, const QString &oldEgn, const QString &newEgn)
{
    const QVariant id = patientcard::firstRowId(db, table, oldEgn);
    if (id.isNull())
        return 0;
    return store::run(db, QStringLiteral("UPDATE %1 SET EGN = ? WHERE ID = ?").arg(table), {newEgn, id})
        .numRowsAffected();
}

bool heldBy(const QSqlDatabase &db, const QString &egn)
{
    return store::scalar(db, QStringLiteral("SELECT COUNT(*) FROM Pacients WHERE EGN = ?"), {egn}).toInt() > 0 ||
           store::scalar(db, QStringLiteral("SELECT COUNT(*) FROM Dental WHERE EGN = ?"), {egn}).toInt() > 0;
}

// Moving onto a number that another patient holds; an old number with nothing under it moves nothing.
bool heldByAnotherPatient(const QSqlDatabase &db, const QString &oldEgn, const QString &newEgn)
{
    return newEgn != oldEgn && heldBy(db, oldEgn) && heldBy(db, newEgn);
}

} // namespace

bool lengthWrong(const QString &typed) { return typed.trimmed().size() != 10; }

QString oldNumberWarning() { return QStringLiteral("Грешно ЕГН!") + CarriageReturn + QStringLiteral("Моля, проверете старото ЕГН!"); }

QString newNumberWarning() { return QStringLiteral("Грешно ЕГН!") + CarriageReturn + QStringLiteral("Моля, проверете новото ЕГН!"); }

// A number the card would not take cannot be moved to: the patient could not be opened under it.
static QString newNumberRefusal(const QString &newEgn, EgnRule rule)
{
    const QString refusal = lengthWrong(newEgn) ? newNumberWarning() : patientcard::numberRefusal(newEgn, rule);
    return refusal.isEmpty() ? refusal : refusal + CarriageReturn + QStringLiteral("Номерът не е сменен.");
}

Result<Moved> moveEgn(const QSqlDatabase &clinic, const QString &oldTyped, const QString &newTyped)
{
    const QString oldEgn = oldTyped.trimmed();
    const QString newEgn = newTyped.trimmed();
    const auto rule = patientcard::practiceEgnRule(clinic);
    if (!rule)
        return Result<Moved>::failure(rule.error());
    if (const QString refusal = newNumberRefusal(newEgn, rule.value()); !refusal.isEmpty())
        return Result<Moved>::failure(refusal);
    try {
        store::Transaction transaction(clinic);
        if (heldByAnotherPatient(clinic, oldEgn, newEgn))
            return Result<Moved>::failure(egnmessages::withNumber(QStringLiteral("Това ЕГН вече е на друг пациент:"), newEgn) +
                                          CarriageReturn + QStringLiteral("Номерът не е сменен."));
        Moved moved;
        moved.pacients = rewriteFirstRow(clinic, QStringLiteral("Pacients"), oldEgn, newEgn);
        moved.dental = rewriteFirstRow(clinic, QStringLiteral("Dental"), oldEgn, newEgn);
        moved.help = store::run(clinic, QStringLiteral("UPDATE Help SET EGN = ? WHERE EGN = ?"), {newEgn, oldEgn})
                         .numRowsAffected();
        transaction.commit();
        return Result<Moved>::success(moved);
    } catch (const store::SqlError &error) {
        return Result<Moved>::failure(QStringLiteral("Номерът не е сменен!") + CarriageReturn + error.message());
    }
}

} // namespace egncorrection
