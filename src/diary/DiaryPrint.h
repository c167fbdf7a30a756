#pragma once

#include "base/Dialogs.h"
#include "store/Result.h"

#include <QDate>
#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>

// The printed diary page of one day ("График"): 26 rows, one per half-hour, each with the
// label of its time and the text of its slot.
namespace diaryprint {

inline constexpr int RowCount = 26;

// "7.30 - ", "8.00 - ", ..., "20.00 - "; the 13.00 row is "13.00 -", without the closing blank.
QString RowLabel(int row);
// The slot a row prints. The form binds the "9.30 - " row to Ch3, so 9.00 prints twice and Ch4
// nowhere; practices know their printed diaries this way, and it is kept.
int RowSlot(int row);

// The day the page is for: the date shown in the heading and the date of the page looked up.
// A chosen date is both. Without one (the dialog cancelled) the heading shows the dialog's date,
// tomorrow, while the page looked up is today's month and year with tomorrow's day: on the last
// day of a month that is the first of the same month. Printed diaries have always done this.
struct PrintDay final
{
    QDate shown;
    QDate looked;
};
PrintDay ResolvePrintDay(const DateChoice &choice, const QDate &today);

// "DD.MM.YYYY - <weekday>"
QString DateHeading(const QDate &shown);
// "при д-р <doctor's name>"
QString DoctorLine(const QString &medicName);

struct Row final
{
    QString label;
    QString text;
};

// What the print shows: the two heading lines and, for each page of the doctor on that day
// (normally one; none prints the heading alone), its 26 rows.
struct DiaryPrint final
{
    QString dateHeading;
    QString doctorLine;
    QList<QList<Row>> pages;
};

Result<DiaryPrint> LoadDiaryPrint(const QSqlDatabase &clinic, const QString &medicCode, const QString &medicName,
                                  const PrintDay &day);
// The name of the doctor with the code, or a failure naming the unknown code.
Result<QString> DoctorName(const QSqlDatabase &clinic, const QString &medicCode);

} // namespace diaryprint
