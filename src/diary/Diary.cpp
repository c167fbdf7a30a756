#include "diary/Diary.h"

#include "store/Dates.h"
#include "store/Schema.h"
#include "store/Sql.h"

#include <QSqlError>

QString DiarySlotTime(int slot)
{
    const int minutes = 7 * 60 + 30 + slot * 30;
    return QStringLiteral("%1.%2").arg(minutes / 60).arg(minutes % 60, 2, 10, QChar(u'0'));
}

QString WeekdayName(const QDate &date)
{
    static const QStringList names{QStringLiteral("Понеделник"), QStringLiteral("Вторник"), QStringLiteral("Сряда"),
                                   QStringLiteral("Четвъртък"),  QStringLiteral("Петък"),   QStringLiteral("Събота"),
                                   QStringLiteral("Неделя")};
    return date.isValid() ? names.at(date.dayOfWeek() - 1) : QString();
}

ScheduleLinkState &scheduleLink()
{
    static ScheduleLinkState state;
    return state;
}

bool BookingActive() { return scheduleLink().ScheduleLink == u"1"; }

QString BookingQuestion(const QString &firstName)
{
    return QStringLiteral("Желаете ли да запиша този час за посещение от ") + firstName + u'?';
}

namespace {

Result<QString> storedDate(const QString &typed)
{
    const auto date = dates::fromTyped(typed.trimmed());
    if (!date)
        return Result<QString>::failure(
            QStringLiteral("\"%1\" не е дата. Въведете датата на страницата като ДД.ММ.ГГГГ и запишете отново.")
                .arg(typed.trimmed()));
    return Result<QString>::success(dates::toIso(*date));
}

QString updateStatement()
{
    QStringList sets{QStringLiteral("Data=?")};
    for (const QString &slot : store::diarySlotNames())
        sets << slot + QStringLiteral("=?");
    return QStringLiteral("UPDATE Grafic SET %1 WHERE ID=?").arg(sets.join(u','));
}

} // namespace

Result<QList<DiaryPage>> LoadDiary(const QSqlDatabase &clinic, const QString &medicCode)
{
    QList<DiaryPage> pages;
    try {
        QSqlQuery rows = store::run(clinic,
                                    QStringLiteral("SELECT ID, Data, %1 FROM Grafic WHERE KodMedic = ? ORDER BY Data, ID")
                                        .arg(store::diarySlotNames().join(u',')),
                                    {medicCode});
        while (rows.next()) {
            DiaryPage page{rows.value(0).toLongLong(), dates::isoToTyped(rows.value(1).toString()), {}};
            for (int slot = 0; slot < DiarySlotCount; ++slot)
                page.slotTexts << rows.value(2 + slot).toString();
            pages << page;
        }
    } catch (const store::SqlError &error) {
        return Result<QList<DiaryPage>>::failure(QStringLiteral("Графикът не може да се прочете: ") + error.message());
    }
    return Result<QList<DiaryPage>>::success(pages);
}

Result<DiaryPage> AddDiaryPage(const QSqlDatabase &clinic, const QString &medicCode, const QDate &today)
{
    try {
        const qint64 id = store::insertReturningKey(
            clinic, QStringLiteral("INSERT INTO Grafic (KodMedic, Data) VALUES (?, ?)"), {medicCode, dates::toIso(today)});
        return Result<DiaryPage>::success({id, dates::toTyped(today), QStringList(DiarySlotCount, QString())});
    } catch (const store::SqlError &error) {
        return Result<DiaryPage>::failure(QStringLiteral("Не можах да добавя страница в графика: ") + error.message());
    }
}

Outcome SaveDiaryPage(const QSqlDatabase &clinic, const DiaryPage &page)
{
    const auto date = storedDate(page.Data);
    if (!date)
        return Outcome::failure(date.error());
    try {
        store::Transaction transaction(clinic);
        QSqlQuery query(clinic);
        query.prepare(updateStatement());
        query.addBindValue(date.value());
        for (int slot = 0; slot < DiarySlotCount; ++slot)
            query.addBindValue(store::textOrNull(page.slotTexts.value(slot)));
        query.addBindValue(page.id);
        if (!query.exec())
            throw store::SqlError(clinic, query);
        transaction.commit();
    } catch (const store::SqlError &error) {
        return Outcome::failure(QStringLiteral("Страницата на графика не е записана: ") + error.message());
    }
    return Outcome::success();
}

Outcome DeleteDiaryPage(const QSqlDatabase &clinic, qint64 id)
{
    try {
        store::run(clinic, QStringLiteral("DELETE FROM Grafic WHERE ID = ?"), {id});
    } catch (const store::SqlError &error) {
        return Outcome::failure(QStringLiteral("Страницата на графика не е изтрита: ") + error.message());
    }
    return Outcome::success();
}

Result<DiaryPage> BookSlot(const QSqlDatabase &clinic, DiaryPage page, int slot, const QString &firstName)
{
    if (slot < 0 || slot >= DiarySlotCount)
        return Result<DiaryPage>::failure(QStringLiteral("Няма такъв час в графика."));
    page.slotTexts.resize(DiarySlotCount);
    page.slotTexts[slot] = firstName;
    const Outcome saved = SaveDiaryPage(clinic, page);
    if (!saved)
        return Result<DiaryPage>::failure(saved.error());
    return Result<DiaryPage>::success(page);
}
