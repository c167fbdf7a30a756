#pragma once

#include "reports/Period.h"
#include "reports/PeriodLines.h"
#include "store/Result.h"

#include <QSqlDatabase>
#include <QString>

// "Дейности към ЗОК": what a doctor did for each patient in a period and how many of the fund's
// minutes it took, one row of TempWork per patient.
namespace reports {

// Fills TempWork (made by the caller) from the doctor's service lines of the period, in one
// transaction of `scratch`: one row per EGN in the order of the patient's first line (by date,
// then code, then as stored), with that line's date, the card's name, every code of the period
// joined by "," in the same order, the sum of their ActivityMinutes and the year of the first
// line less the year of birth. A patient without a card, or one whose minutes pass 32767,
// fails the whole report with a message and leaves the table empty. Patients whose EGN names
// no birth date are left out and returned. Shows ProgDialog and ends with DoneMessage.
Result<SkippedPatients> BuildActivityReport(const QSqlDatabase &clinic, const QSqlDatabase &scratch,
                                            const Period &period, const QString &medicCode);

} // namespace reports
