#pragma once

#include "store/Result.h"

#include <QDate>
#include <QSqlDatabase>
#include <QString>

// Ambulatory sheet numbers run per doctor and per calendar year from "000001". Each opening of
// the treatment window takes the next one; a number counts as taken only once a line carries it,
// so an opening that saves nothing leaves no gap.

// The sheet number counted so far: the largest ListID of the doctor's lines dated in the year
// of `today`, read by the system's numeric reading (so a malformed value reads as its leading
// digits and never stops the count), or 0 when there is none. The counter is 16 bits wide; a
// larger stored number is a failure with a message.
Result<int> LastSheetNumber(const QSqlDatabase &clinic, const QString &medicCode, const QDate &today);

// The next sheet number as six digits with leading zeros.
Result<QString> SheetNumber(const QSqlDatabase &clinic, const QString &medicCode, const QDate &today);

// `number` right-aligned in six digits: 7 gives "000007".
QString sheetNumberText(int number);
