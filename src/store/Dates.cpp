#include "store/Dates.h"

#include <QRegularExpression>

#include <array>

namespace dates {
namespace {

std::optional<QDate> dateOf(int year, int month, int day)
{
    const QDate date(year, month, day);
    if (!date.isValid())
        return std::nullopt;
    return date;
}

// Three whole numbers separated by one of the given characters, or nothing.
std::optional<std::array<int, 3>> threeNumbers(const QString &text, const QString &separators)
{
    static const QRegularExpression pattern(QStringLiteral("^\\s*(\\d{1,4})([./-])(\\d{1,2})\\2(\\d{1,4})\\s*$"));
    const auto match = pattern.match(text);
    if (!match.hasMatch() || !separators.contains(match.captured(2)))
        return std::nullopt;
    return std::array<int, 3>{match.captured(1).toInt(), match.captured(3).toInt(), match.captured(4).toInt()};
}

} // namespace

std::optional<QDate> fromTyped(const QString &typed)
{
    const auto parts = threeNumbers(typed, QStringLiteral("./-"));
    if (!parts || (*parts)[2] < 1000)
        return std::nullopt;
    return dateOf((*parts)[2], (*parts)[1], (*parts)[0]);
}

std::optional<QDate> fromQueryForm(const QString &queryForm)
{
    const auto parts = threeNumbers(queryForm, QStringLiteral("/"));
    if (!parts || (*parts)[2] < 1000)
        return std::nullopt;
    return dateOf((*parts)[2], (*parts)[0], (*parts)[1]);
}

std::optional<QDate> fromIso(const QString &iso)
{
    const QDate date = QDate::fromString(iso.left(10), Qt::ISODate);
    if (!date.isValid())
        return std::nullopt;
    return date;
}

QString toIso(const QDate &date) { return date.toString(Qt::ISODate); }
QString toTyped(const QDate &date) { return date.toString(QStringLiteral("dd.MM.yyyy")); }
QString toQueryForm(const QDate &date) { return date.toString(QStringLiteral("MM/dd/yyyy")); }

QString isoToTyped(const QString &iso)
{
    const auto date = fromIso(iso);
    return date ? toTyped(*date) : iso;
}

QString sliceTypedToQueryForm(const QString &typed)
{
    return typed.mid(3, 2) + u'/' + typed.left(2) + u'/' + typed.right(4);
}

} // namespace dates
