#pragma once

#include <QDate>
#include <QString>

#include <optional>

// Dates are kept in the store as ISO text (YYYY-MM-DD). Users type DD.MM.YYYY; the period
// dialog hands MM/DD/YYYY texts to the builders. All conversions between these forms are here.
namespace dates {

// DD.MM.YYYY (also D.M.YYYY, and "/" or "-" between the parts) to a date; nullopt if it names no day.
std::optional<QDate> fromTyped(const QString &typed);
// MM/DD/YYYY (leading zeros optional) to a date; nullopt if it names no day.
std::optional<QDate> fromQueryForm(const QString &queryForm);
// YYYY-MM-DD as stored; nullopt for an empty or malformed value.
std::optional<QDate> fromIso(const QString &iso);

QString toIso(const QDate &date);
QString toTyped(const QDate &date);     // DD.MM.YYYY
QString toQueryForm(const QDate &date); // MM/DD/YYYY

// A stored ISO value shown as DD.MM.YYYY; a value that is no date is shown as it stands.
QString isoToTyped(const QString &iso);

// The period texts are reordered by slicing, not by date arithmetic: characters 4-5, "/",
// characters 1-2, "/", the last four characters. "05.03.2026" gives "03/05/2026".
QString sliceTypedToQueryForm(const QString &typed);

} // namespace dates
