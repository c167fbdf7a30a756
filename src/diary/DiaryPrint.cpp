#include "diary/DiaryPrint.h"

#include "diary/Diary.h"
#include "store/Dates.h"
#include "store/Schema.h"
#include "store/Sql.h"

namespace diaryprint {
namespace {

QList<Row> rowsOfPage(const QSqlQuery &page)
{
    QList<Row> rows;
    for (int row = 0; row < RowCount; ++row)
        rows << Row{RowLabel(row), page.value(RowSlot(row)).toString()};
    return rows;
}

} // namespace

QString RowLabel(int row)
{
    const QString time = DiarySlotTime(row);
    return time == u"13.00" ? time + QStringLiteral(" -") : time + QStringLiteral(" - ");
}

int RowSlot(int row) { return row == 4 ? 3 : row; }

PrintDay ResolvePrintDay(const DateChoice &choice, const QDate &today)
{
    if (choice.lChoice && choice.dData.isValid())
        return {choice.dData, choice.dData};
    const QDate tomorrow = today.addDays(1);
    const QDate shown = choice.dData.isValid() ? choice.dData : tomorrow;
    return {shown, QDate(today.year(), today.month(), tomorrow.day())};
}

QString DateHeading(const QDate &shown) { return dates::toTyped(shown) + QStringLiteral(" - ") + WeekdayName(shown); }

QString DoctorLine(const QString &medicName) { return QStringLiteral("при д-р ") + medicName; }

Result<DiaryPrint> LoadDiaryPrint(const QSqlDatabase &clinic, const QString &medicCode, const QString &medicName,
                                  const PrintDay &day)
{
    DiaryPrint print{DateHeading(day.shown), DoctorLine(medicName), {}};
    try {
        QSqlQuery pages = store::run(clinic,
                                     QStringLiteral("SELECT %1 FROM Grafic WHERE KodMedic = ? AND Data = ? ORDER BY ID")
                                         .arg(store::diarySlotNames().join(u',')),
                                     {medicCode, dates::toIso(day.looked)});
        while (pages.next())
            print.pages << rowsOfPage(pages);
    } catch (const store::SqlError &error) {
        return Result<DiaryPrint>::failure(QStringLiteral("Графикът не може да се прочете: ") + error.message());
    }
    return Result<DiaryPrint>::success(print);
}

Result<QString> DoctorName(const QSqlDatabase &clinic, const QString &medicCode)
{
    try {
        const QVariant name = store::scalar(clinic, QStringLiteral("SELECT Names FROM Medic WHERE KodMedic = ? ORDER BY ID"),
                                            {medicCode});
        if (!name.isValid())
            return Result<QString>::failure(QStringLiteral("Няма лекар с код ") + medicCode + u'.');
        return Result<QString>::success(name.toString());
    } catch (const store::SqlError &error) {
        return Result<QString>::failure(QStringLiteral("Лекарите не могат да се прочетат: ") + error.message());
    }
}

} // namespace diaryprint
