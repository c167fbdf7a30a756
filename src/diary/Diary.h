#pragma once

#include "store/Result.h"

#include <QDate>
#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>

// Each doctor's diary: one page (a Grafic row) per day with 26 half-hour slots of free text,
// Ch0 at 7.30 to Ch25 at 20.00.
inline constexpr int DiarySlotCount = 26;

// "7.30", "8.00", ... "20.00"
QString DiarySlotTime(int slot);
// "Неделя", "Понеделник", ... for the day of the week of `date`.
QString WeekdayName(const QDate &date);

struct DiaryPage final
{
    qint64 id = 0;
    QString Data; // DD.MM.YYYY as shown and typed
    QStringList slotTexts; // 26 texts
};

// The doctor's pages by date, earliest first (two pages of one date keep the order they were made).
Result<QList<DiaryPage>> LoadDiary(const QSqlDatabase &clinic, const QString &medicCode);
// A new page of `today` for the doctor, stored at once; nothing stops a second page of the same day.
Result<DiaryPage> AddDiaryPage(const QSqlDatabase &clinic, const QString &medicCode, const QDate &today);
// Stores the page's date and slots; a date that is not a date stores nothing.
Outcome SaveDiaryPage(const QSqlDatabase &clinic, const DiaryPage &page);
Outcome DeleteDiaryPage(const QSqlDatabase &clinic, qint64 id);

// Booking from the treatment window. The window that offers it sets `ScheduleLink` to "1" and
// publishes its patient's first name; the link stays for the rest of the run, so a later diary
// opened from the menu still books, under the last patient's name.
struct ScheduleLinkState final
{
    QString ScheduleLink;
    QString FirstName;
};
ScheduleLinkState &scheduleLink();

bool BookingActive();
// "Желаете ли да запиша този час за посещение от <FirstName>?"
QString BookingQuestion(const QString &firstName);
// Writes the first name into the slot (whatever stood there) and stores the page.
Result<DiaryPage> BookSlot(const QSqlDatabase &clinic, DiaryPage page, int slot, const QString &firstName);
