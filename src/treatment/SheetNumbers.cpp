#include "treatment/SheetNumbers.h"

#include "store/Dates.h"
#include "store/Sql.h"
#include "store/TextReading.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace {

// Six ASCII digits: the form the program writes, in which the textual order is the numeric one.
bool isCleanNumber(const QString &listId)
{
    return listId.size() == 6 && std::all_of(listId.begin(), listId.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

// Walks the doctor's numbers of the year from the textually greatest down, reading each by its
// leading digits. The first clean number ends the walk: every clean number after it is smaller,
// and only texts that are not clean (a stray letter, a short number) can sort above it. Returns
// nullopt when `limit` rows went by without a clean one.
std::optional<qint64> walkDown(const QSqlDatabase &clinic, const QString &medicCode, int year, int limit)
{
    QString sql = QStringLiteral("SELECT ListID FROM Help WHERE KodMedic = ? AND Data BETWEEN ? AND ? ORDER BY ListID DESC");
    if (limit > 0)
        sql += QStringLiteral(" LIMIT %1").arg(limit);
    QSqlQuery numbers = store::run(clinic, sql,
                                   {medicCode, dates::toIso(QDate(year, 1, 1)), dates::toIso(QDate(year, 12, 31))});
    qint64 largest = 0;
    int rows = 0;
    while (numbers.next()) {
        const QString listId = numbers.value(0).toString();
        largest = std::max(largest, text::leadingNumber(listId));
        ++rows;
        if (isCleanNumber(listId))
            return largest;
    }
    if (limit > 0 && rows == limit)
        return std::nullopt;
    return largest;
}

} // namespace

namespace {

constexpr int LargestSheetNumber = std::numeric_limits<qint16>::max();

QString noNextNumber(qint64 largest, int year)
{
    return QStringLiteral("Последният амбулаторен лист на лекаря за %1 г. е с номер %2, а най-големият възможен "
                          "номер е %3: нов лист не може да се започне.\rПоправете номерата на листовете "
                          "(№ амб.лист) на лекаря за годината.")
        .arg(year)
        .arg(largest)
        .arg(sheetNumberText(LargestSheetNumber));
}

qint64 largestOfYear(const QSqlDatabase &clinic, const QString &medicCode, int year)
{
    // The head of the ordered walk nearly always holds a clean number; the whole year is read
    // only when it does not.
    const std::optional<qint64> head = walkDown(clinic, medicCode, year, 64);
    return head ? *head : *walkDown(clinic, medicCode, year, 0);
}

Result<QString> nextAfter(qint64 largest, int year)
{
    if (largest >= LargestSheetNumber)
        return Result<QString>::failure(noNextNumber(largest, year));
    return Result<QString>::success(sheetNumberText(int(largest + 1)));
}

bool heldByAnotherPatient(const QSqlDatabase &clinic, const OpeningSheet &sheet, const QString &egn, int year)
{
    return store::scalar(clinic,
                         QStringLiteral("SELECT COUNT(*) FROM Help WHERE KodMedic = ? AND ListID = ? AND EGN <> ? "
                                        "AND Data BETWEEN ? AND ?"),
                         {sheet.medicCode, sheet.number, egn, dates::toIso(QDate(year, 1, 1)),
                          dates::toIso(QDate(year, 12, 31))})
               .toInt()
        > 0;
}

} // namespace

Result<int> LastSheetNumber(const QSqlDatabase &clinic, const QString &medicCode, const QDate &today)
{
    qint64 largest = 0;
    try {
        largest = largestOfYear(clinic, medicCode, today.year());
    } catch (const store::SqlError &error) {
        return Result<int>::failure(QStringLiteral("Номерът на амбулаторния лист не може да се определи: ")
                                    + error.message());
    }
    if (largest > LargestSheetNumber)
        return Result<int>::failure(noNextNumber(largest, today.year()));
    return Result<int>::success(int(largest));
}

Result<QString> SheetNumber(const QSqlDatabase &clinic, const QString &medicCode, const QDate &today)
{
    const auto last = LastSheetNumber(clinic, medicCode, today);
    if (!last)
        return Result<QString>::failure(last.error());
    return nextAfter(last.value(), today.year());
}

Result<QString> TakeSheetNumber(const QSqlDatabase &clinic, const OpeningSheet &sheet, const QString &egn,
                                const QDate &today)
{
    if (sheet.taken && !heldByAnotherPatient(clinic, sheet, egn, today.year()))
        return Result<QString>::success(sheet.number);
    return nextAfter(largestOfYear(clinic, sheet.medicCode, today.year()), today.year());
}

QString sheetNumberText(int number) { return QStringLiteral("%1").arg(number, 6, 10, QChar(u'0')); }
