#include "treatment/SheetNumbers.h"

#include "store/Dates.h"
#include "store/Sql.h"
#include "store/TextReading.h"

#include <limits>

Result<int> LastSheetNumber(const QSqlDatabase &clinic, const QString &medicCode, const QDate &today)
{
    const int year = today.year();
    qint64 largest = 0;
    try {
        // Every distinct number is read, not just the textually greatest: a value that is not
        // six clean digits would otherwise sort above the real series and restart it.
        QSqlQuery numbers = store::run(clinic,
                                       QStringLiteral("SELECT DISTINCT ListID FROM Help WHERE KodMedic = ? "
                                                      "AND Data BETWEEN ? AND ?"),
                                       {medicCode, dates::toIso(QDate(year, 1, 1)), dates::toIso(QDate(year, 12, 31))});
        while (numbers.next())
            largest = std::max(largest, text::leadingNumber(numbers.value(0).toString()));
    } catch (const store::SqlError &error) {
        return Result<int>::failure(QStringLiteral("Номерът на амбулаторния лист не може да се определи: ")
                                    + error.message());
    }
    if (largest > std::numeric_limits<qint16>::max())
        return Result<int>::failure(
            QStringLiteral("Номерът на амбулаторния лист %1 за %2 г. е по-голям от %3 и следващ номер не може да се даде."
                           "\rПоправете номерата на листовете (№ амб.лист) на лекаря за годината.")
                .arg(largest)
                .arg(year)
                .arg(std::numeric_limits<qint16>::max()));
    return Result<int>::success(int(largest));
}

Result<QString> SheetNumber(const QSqlDatabase &clinic, const QString &medicCode, const QDate &today)
{
    const auto last = LastSheetNumber(clinic, medicCode, today);
    if (!last)
        return Result<QString>::failure(last.error());
    return Result<QString>::success(sheetNumberText(last.value() + 1));
}

QString sheetNumberText(int number) { return QStringLiteral("%1").arg(number, 6, 10, QChar(u'0')); }
