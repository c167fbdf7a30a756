#pragma once

#include "store/Result.h"

#include <QDate>
#include <QList>
#include <QSqlDatabase>
#include <QString>

#include <optional>

// Lists of patients by a date period: born, registered, or "visited" in it. The visited list is
// in truth a list by registration date, as the practice's list has always been; the visits are
// not consulted.
namespace datelists {

enum class ListKind { Born = 1, Registered = 2, Visited = 3 };

// One list to print. The query forms are MM/DD/YYYY, sliced from the typed DD.MM.YYYY.
struct ListRequest final
{
    ListKind kind = ListKind::Born;
    QString ListFromQuery;
    QString ListToQuery;
    QDate ListFromDate;
    QDate ListToDate;
};

// What one row of the search form leads to: nothing (a box empty), a message, or a list.
struct RowCheck final
{
    QString message;
    std::optional<ListRequest> request;
};

// The checks of one row: either box empty skips it; a text not exactly 10 long, or a month (the
// number at places 4-5) above 12, gives the message; the days and the separators are not tested.
// A text that passes and still names no day (31.02.2005) is refused with the date message.
RowCheck CheckDateRow(ListKind kind, const QString &fromText, const QString &toText);

QString DateMessage();  // "Грешка в изписването на датата!" / "Формата на датата е: ДД.ММ.ГГГГ"
QString MonthMessage(); // "Грешка в изписването на месеца!" / ...
QString NoLimitsMessage(); // "Няма избрани ограничения за търсене!"

struct ListRow final
{
    QString EGN;
    QString Names;
    QString date; // DD.MM.YYYY
};

// The texts of the printed list. The born and registered lists share one form whose wording
// changes with the kind; the visited list has its own, without "за пациентите".
struct DateList final
{
    QString kindWording;   // "родени от", "регистрирани от", "посетили кабинета от"
    QString fromText;      // DD.MM.YYYY
    QString toText;
    QString dateHeading;   // "Дата на раждане", "Дата на регист.", "Дата на посещ."
    bool forPatients = true; // the closing words "за пациентите"
    QList<ListRow> rows;
};

// The patients of the request's period, by the date field of its kind, ordered by it.
Result<DateList> LoadDateList(const QSqlDatabase &clinic, const ListRequest &request);

} // namespace datelists
