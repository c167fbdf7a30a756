#include "patients/DateLists.h"

#include "store/Dates.h"
#include "store/Sql.h"
#include "store/TextReading.h"

namespace datelists {
namespace {

const QChar CarriageReturn(13);

QString withFormatLine(const QString &first)
{
    return first + CarriageReturn + QStringLiteral("Формата на датата е: ДД.ММ.ГГГГ");
}

bool monthTooHigh(const QString &typed) { return text::numberAt(typed, 4, 2) > 12; }

QString dateField(ListKind kind) { return kind == ListKind::Born ? QStringLiteral("DataB") : QStringLiteral("DataR"); }

DateList headings(ListKind kind)
{
    switch (kind) {
    case ListKind::Born:
        return {QStringLiteral("родени от"), {}, {}, QStringLiteral("Дата на раждане"), true, {}};
    case ListKind::Registered:
        return {QStringLiteral("регистрирани от"), {}, {}, QStringLiteral("Дата на регист."), true, {}};
    case ListKind::Visited:
        break;
    }
    return {QStringLiteral("посетили кабинета от"), {}, {}, QStringLiteral("Дата на посещ."), false, {}};
}

} // namespace

QString DateMessage() { return withFormatLine(QStringLiteral("Грешка в изписването на датата!")); }
QString MonthMessage() { return withFormatLine(QStringLiteral("Грешка в изписването на месеца!")); }
QString NoLimitsMessage() { return QStringLiteral("Няма избрани ограничения за търсене!"); }

RowCheck CheckDateRow(ListKind kind, const QString &fromText, const QString &toText)
{
    if (fromText.isEmpty() || toText.isEmpty())
        return {};
    if (fromText.size() != 10 || toText.size() != 10)
        return {DateMessage(), std::nullopt};
    if (monthTooHigh(fromText) || monthTooHigh(toText))
        return {MonthMessage(), std::nullopt};
    ListRequest request{kind, dates::sliceTypedToQueryForm(fromText), dates::sliceTypedToQueryForm(toText), {}, {}};
    const auto from = dates::fromQueryForm(request.ListFromQuery);
    const auto to = dates::fromQueryForm(request.ListToQuery);
    if (!from || !to)
        return {DateMessage(), std::nullopt};
    request.ListFromDate = *from;
    request.ListToDate = *to;
    return {{}, request};
}

Result<DateList> LoadDateList(const QSqlDatabase &clinic, const ListRequest &request)
{
    DateList list = headings(request.kind);
    list.fromText = dates::toTyped(request.ListFromDate);
    list.toText = dates::toTyped(request.ListToDate);
    const QString field = dateField(request.kind);
    try {
        QSqlQuery rows = store::run(clinic,
                                    QStringLiteral("SELECT EGN, Names, %1 FROM Pacients WHERE %1 BETWEEN ? AND ? "
                                                   "ORDER BY %1, ID")
                                        .arg(field),
                                    {dates::toIso(request.ListFromDate), dates::toIso(request.ListToDate)});
        while (rows.next())
            list.rows << ListRow{rows.value(0).toString(), rows.value(1).toString(),
                                 dates::isoToTyped(rows.value(2).toString())};
    } catch (const store::SqlError &error) {
        return Result<DateList>::failure(QStringLiteral("Списъкът на пациентите не може да се прочете: ")
                                         + error.message());
    }
    return Result<DateList>::success(list);
}

} // namespace datelists
