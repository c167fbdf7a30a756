#pragma once

#include "base/Page.h"
#include "reports/Period.h"

#include <QSqlDatabase>
#include <QString>

// The printed activity report "rprWork", on A4: a heading, one row per row of TempWork in the
// table's order, and at the end the sum of the minutes and the number of rows.
namespace reports {

// The fixed texts and the two captions of the report: "Справка", `subtitle`, Label12 (the period,
// the single date when both days are the same) and Label9 ("от д-р " and the doctor). The
// fund summary's form has the same heading.
void AddReportHeading(print::PageDescription &form, const QString &subtitle, const Period &period,
                      const QString &medicName);

// The detail row k (from 0) holds Text1 Data (DD.MM.YYYY), Text2 Name1, Text3 Time, Text4 EGN,
// Text5 Godini and Text6 KodHelp, read by print::rowItemName(name, k). The report's footer
// follows the rows as two more rows of the band, k = rows and rows + 1: Function1, the sum of
// Time, beside "Общо време на дейностите към ЗОК", and then Label7, "Общ брой амбулаторни
// листи: " and the number of rows (patients, though the caption says sheets).
// Throws store::SqlError when TempWork cannot be read.
print::PageDescription WorkPage(const QSqlDatabase &scratch, const Period &period, const QString &medicName);

} // namespace reports
