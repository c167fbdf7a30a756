#pragma once

#include "base/Page.h"
#include "store/Result.h"
#include "treatment/SheetPrintCells.h"

#include <QSqlDatabase>

#include <functional>

// "Печат" of the treatment window: the patient's lines still marked "Печат за РЗОК" go into
// TempKarton and onto the ambulatory sheet, and lose their mark, so that a line reaches paper
// once. The copy, the marks and the output are one transaction: a sheet that did not come out
// leaves the marks as they were.

// Shown once for every line whose code is longer than the three boxes of the form.
inline const QString LongCodeWarning =
    QStringLiteral("Кода е по-голям от 3 символа!") + QChar(13) + QStringLiteral(" Ще бъде съкратен при печата!");

// The code as the sheet's three boxes take it, spread for them; `cut` tells that it was
// shortened (an empty code counts as such).
QString SheetActivityCode(const QString &kodHelp, bool *cut = nullptr);

struct SheetPrinted final
{
    bool hasExam = false; // a printed line has the code "101"; the chart was filled
    int lines = 0;
    int shortenedCodes = 0; // how many times LongCodeWarning is due
};

enum class SheetMarks { Change, Keep };

// Does the whole print for the patient. `output` gets the finished sheet (show it, write the
// PDF); when it fails, nothing of the print stays in the database. Fails with a message when
// the patient or a doctor is missing or a statement fails.
using SheetOutput = std::function<Outcome(const print::PageDescription &sheet)>;
Result<SheetPrinted> PrintSheet(const QSqlDatabase &clinic, const QString &egn, SheetMarks marks,
                                const SheetOutput &output);

// The rows the sheet prints, read as rprKarton reads them (TempKarton must be filled first).
SheetData ReadSheetData(const QSqlDatabase &clinic, const QString &egn, bool hasExam);
