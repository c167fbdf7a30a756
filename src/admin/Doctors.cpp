#include "admin/Doctors.h"

#include "admin/AccessCodes.h"
#include "store/Sql.h"
#include "store/TextReading.h"

#include <limits>
#include <stdexcept>

namespace doctors {

QString MedicAddCheck(const DoctorEntry &entry)
{
    if (entry.names.isEmpty())
        return QStringLiteral("Моля, попълнете името на стоматолога!");
    if (entry.number.isEmpty())
        return QStringLiteral("Моля, попълнете номера на стоматолога!");
    if (entry.practiceCode.isEmpty())
        return QStringLiteral("Моля, попълнете кода на практиката на стоматолога!");
    if (entry.accessCode.isEmpty())
        return QStringLiteral("Моля, попълнете паролата!");
    // Six characters pass, whatever the message says.
    if (entry.accessCode.size() < MinimumAccessCodeLength)
        return QStringLiteral("Минималната дължина на паролата е повече от 6 символа!");
    return {};
}

namespace {

// Stores an access code by its hash. Hashing can fail as well as the store (whose SqlError is
// a runtime_error too); either failure is told after the caller's heading.
template <typename Write>
Outcome writeHashedCode(const QString &failedHeading, const QString &code, Write write)
{
    try {
        write(store::textOrNull(accesscodes::hashForStorage(code)));
        return Outcome::success();
    } catch (const std::runtime_error &error) {
        return Outcome::failure(failedHeading + QString::fromUtf8(error.what()));
    }
}

} // namespace

Outcome addDoctor(const QSqlDatabase &clinic, const DoctorEntry &entry)
{
    bool nameTaken = false;
    const Outcome written = writeHashedCode(QStringLiteral("Лекарят не е записан: "), entry.accessCode, [&](const QVariant &hash) {
        const QSqlDatabase &db = clinic;
        store::Transaction transaction(db);
        nameTaken = store::scalar(db, QStringLiteral("SELECT COUNT(*) FROM Medic WHERE TRIM(Names) = ?"),
                                  {entry.names.trimmed()})
                        .toInt() > 0;
        if (nameTaken)
            return;
        store::run(db, QStringLiteral("INSERT INTO Medic (Names, EGN, KodMedic, Password) VALUES (?, ?, ?, ?)"),
                   {entry.names, entry.number, entry.practiceCode, hash});
        transaction.commit();
    });
    if (written && nameTaken)
        return Outcome::failure(QStringLiteral("Лекарят не е записан: вече има лекар с името %1.").arg(entry.names.trimmed()));
    return written;
}

Result<int> doctorCount(const QSqlDatabase &clinic)
{
    try {
        return Result<int>::success(store::scalar(clinic, QStringLiteral("SELECT COUNT(*) FROM Medic")).toInt());
    } catch (const store::SqlError &error) {
        return Result<int>::failure(error.message());
    }
}

Result<QStringList> doctorNames(const QSqlDatabase &clinic)
{
    try {
        QSqlQuery rows = store::run(clinic, QStringLiteral("SELECT Names FROM Medic ORDER BY ID"));
        QStringList names;
        while (rows.next())
            names << rows.value(0).toString();
        return Result<QStringList>::success(names);
    } catch (const store::SqlError &error) {
        return Result<QStringList>::failure(error.message());
    }
}

Result<std::optional<SignInRecord>> lookUpDoctor(const QSqlDatabase &clinic, const QString &chosenName)
{
    using Found = std::optional<SignInRecord>;
    try {
        // Names may carry blanks the user does not see, so the trimmed texts are compared here
        // rather than in SQL; the walk goes on past a match, so the later row wins.
        QSqlQuery rows = store::run(clinic,
                                    QStringLiteral("SELECT Names, Password, KodMedic FROM Medic ORDER BY ID"));
        const QString wanted = chosenName.trimmed();
        Found found;
        while (rows.next())
            if (rows.value(0).toString().trimmed() == wanted)
                found = SignInRecord{rows.value(1).toString().trimmed(), rows.value(2).toString().trimmed(),
                                     rows.value(0).toString().trimmed()};
        return Result<Found>::success(found);
    } catch (const store::SqlError &error) {
        return Result<Found>::failure(error.message());
    }
}

bool sameCode(const QString &stored, const QString &typed)
{
    if (stored.trimmed().isEmpty())
        return typed.trimmed().isEmpty();
    return accesscodes::matches(stored, typed);
}

qint16 accessCodeNumber(const QString &typed)
{
    const qint64 number = text::leadingNumber(typed.trimmed());
    return number > std::numeric_limits<qint16>::max() ? qint16(0) : qint16(number);
}

namespace {

// Sign-in compares trimmed names and takes the later of equal ones; so does everything that
// works on the signed-in doctor's row.
const QString SignedInRow = QStringLiteral(
    "(SELECT MAX(ID) FROM Medic WHERE TRIM(Names) = ? AND TRIM(KodMedic) = ?)");

} // namespace

Result<QString> keptCode(const QSqlDatabase &clinic, const SignedInDoctor &doctor)
{
    try {
        const QVariant code = store::scalar(clinic,
                                            QStringLiteral("SELECT Password FROM Medic WHERE ID = ") + SignedInRow,
                                            {doctor.names.trimmed(), doctor.kodMedic.trimmed()});
        return Result<QString>::success(code.toString().trimmed());
    } catch (const store::SqlError &error) {
        return Result<QString>::failure(error.message());
    }
}

Outcome changeCode(const QSqlDatabase &clinic, const SignedInDoctor &doctor, const QString &newCode)
{
    int changed = 0;
    const Outcome written = writeHashedCode(QStringLiteral("Паролата не е сменена: "), newCode, [&](const QVariant &hash) {
        changed = store::run(clinic, QStringLiteral("UPDATE Medic SET Password = ? WHERE ID = ") + SignedInRow,
                             {hash, doctor.names.trimmed(), doctor.kodMedic.trimmed()})
                      .numRowsAffected();
    });
    if (written && changed == 0)
        return Outcome::failure(QStringLiteral("Паролата не е сменена: д-р %1 не е намерен в списъка на лекарите.")
                                    .arg(doctor.names.trimmed()));
    return written;
}

} // namespace doctors
