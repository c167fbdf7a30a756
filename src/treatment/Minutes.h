#pragma once

#include "store/Result.h"

#include <QDate>
#include <QSqlDatabase>
#include <QString>

// The working day's budget of 360 minutes. Two tables of minutes exist on purpose and are not
// to be merged: ActivityMinutes (the activity report) takes 302-304 and the Latin letter
// variants; the day's count takes only 101, 301/301А/301Б, 508, 509, 332 and 333.

inline constexpr int MinutesOfDay = 360;

// Minutes of an activity code for the activity report; exact comparison, 0 for anything else.
qint16 ActivityMinutes(const QString &code);
// Minutes a line of this code takes from the day's budget.
int DayBudgetMinutes(const QString &code);

// The minutes left of `day` after the lines of all doctors dated that day. Fails only when the
// count leaves the signed 16-bit range, which takes over two hundred of the longest lines.
Result<qint16> MinutesLeftOn(const QSqlDatabase &clinic, const QDate &day);
// Recomputes MinutesLeft for today; on failure MinutesLeft keeps its value and the message is returned.
Outcome RecalcMinutesLeft(const QSqlDatabase &clinic);
