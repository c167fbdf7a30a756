#pragma once

#include "store/Result.h"

#include <QDate>
#include <QSqlDatabase>
#include <QString>

// Ambulatory sheet numbers run per doctor and per calendar year from "000001" to "032767" (the
// counter is 16 bits wide). Each opening of the treatment window expects the next one; the number
// is taken by the first line or referral stored under it, inside that write's transaction, so
// that two patients never share one whatever else was stored meanwhile. An opening that saves
// nothing leaves no gap.

// The sheet number counted so far: the largest ListID of the doctor's lines dated in the year
// of `today`, read by the system's numeric reading (so a malformed value reads as its leading
// digits and never stops the count), or 0 when there is none.
Result<int> LastSheetNumber(const QSqlDatabase &clinic, const QString &medicCode, const QDate &today);

// The next sheet number as six digits with leading zeros. After 032767 there is none: a failure
// whose message says so, never a seventh digit or a number that wraps.
Result<QString> SheetNumber(const QSqlDatabase &clinic, const QString &medicCode, const QDate &today);

// The sheet of one opening of the treatment window: the number it expects until a line or a
// referral takes it, then the number taken, which every later write of the opening carries.
struct OpeningSheet final
{
    QString medicCode;
    QString number;
    bool taken = false;
};

// The number a write for the patient `egn` stores under; call it inside the write's transaction.
// A number not yet taken is decided afresh from the stored lines. A taken number is kept unless
// a line of another patient now carries it (its own lines were deleted and the number given out
// again), when the next free one is taken. Throws store::SqlError; a failure is the limit.
Result<QString> TakeSheetNumber(const QSqlDatabase &clinic, const OpeningSheet &sheet, const QString &egn,
                                const QDate &today);

// `number` right-aligned in six digits: 7 gives "000007".
QString sheetNumberText(int number);
