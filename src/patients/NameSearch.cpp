#include "patients/NameSearch.h"

#include "store/Sql.h"

#include <QSqlError>

namespace namesearch {
namespace {

constexpr int Gap = 50;

// The first text after every text that begins with `key`, in the store's binary order.
QString prefixEnd(const QString &key)
{
    QList<uint> codes = key.toUcs4();
    codes.last() += 1;
    return QString::fromUcs4(reinterpret_cast<const char32_t *>(codes.constData()), codes.size());
}

// The store narrows the doctor's patients to those whose name can have the key as its first
// word: names beginning with the key (for an empty key: no name at all), and names beginning
// with white space, whose first word is found only after trimming. Each part is a range of
// the index by doctor and name, and a row in two ranges comes once; the exact comparison is
// made on what comes back.
QSqlQuery candidates(const QSqlDatabase &clinic, const QString &key, const QString &medicCode)
{
    const QString part = QStringLiteral("SELECT ID, Names, EGN FROM Pacients WHERE LKod = ? AND ");
    const QString keyPart = key.isEmpty() ? QStringLiteral("Names IS NULL") : QStringLiteral("Names >= ? AND Names < ?");
    const QString sql = part + keyPart + QStringLiteral(" UNION ") + part + QStringLiteral("Names < '!' UNION ") +
                        part + QStringLiteral("Names >= ? AND Names < ? UNION ") + part +
                        QStringLiteral("Names >= ? ORDER BY 1");
    QSqlQuery query(clinic);
    query.setForwardOnly(true);
    query.prepare(sql);
    query.addBindValue(medicCode);
    if (!key.isEmpty()) {
        query.addBindValue(key);
        query.addBindValue(prefixEnd(key));
    }
    query.addBindValue(medicCode);
    query.addBindValue(medicCode);
    query.addBindValue(QString(QChar(0x85)));
    query.addBindValue(QString(QChar(0xA1)));
    query.addBindValue(medicCode);
    query.addBindValue(QString(QChar(0x1680)));
    if (!query.exec())
        throw store::SqlError(clinic, query);
    return query;
}

} // namespace

QString searchKey(const QString &typed)
{
    const QString trimmed = typed.trimmed();
    if (trimmed.isEmpty())
        return trimmed;
    return trimmed.left(1).toUpper() + trimmed.mid(1);
}

QString firstWord(const QString &names)
{
    const qsizetype blank = names.indexOf(u' ');
    return blank < 0 ? names.trimmed() : names.left(blank).trimmed();
}

QString listEntry(const QString &names, const QString &egn) { return names + QString(Gap, u' ') + egn; }

std::optional<Choice> decodeEntry(const QString &entry)
{
    if (entry.isEmpty())
        return std::nullopt;
    return Choice{entry.left(qMax<qsizetype>(0, entry.size() - Gap)), entry.right(10)};
}

Result<Found> searchByFirstName(const QSqlDatabase &clinic, const QString &typed, const QString &medicCode)
{
    const QString key = searchKey(typed);
    Found found;
    try {
        found.patientsOfDoctor =
            store::scalar(clinic, QStringLiteral("SELECT COUNT(*) FROM Pacients WHERE LKod = ?"), {medicCode})
                .toInt();
        if (found.patientsOfDoctor == 0)
            return Result<Found>::success(found);
        QSqlQuery rows = candidates(clinic, key, medicCode);
        while (rows.next()) {
            const QString names = rows.value(1).toString();
            if (firstWord(names) == key)
                found.entries << listEntry(names, rows.value(2).toString());
        }
    } catch (const store::SqlError &error) {
        return Result<Found>::failure(QStringLiteral("Търсенето не може да бъде извършено!") + QChar(13) + error.message());
    }
    return Result<Found>::success(found);
}

QString noPatientsMessage()
{
    return QStringLiteral("Няма записани пациенти в БД!") + QChar(13) + QStringLiteral(" Прекъсвам търсенето!");
}

QString searchDoneMessage() { return QStringLiteral("Завърших търсенето на имената!"); }

QString nothingChosenMessage() { return QStringLiteral("Няма избрани имена!"); }

} // namespace namesearch
