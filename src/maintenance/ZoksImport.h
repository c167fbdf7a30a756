#pragma once

#include "store/Result.h"

#include <QSqlDatabase>
#include <QStringList>

// "Добавяне от ЗОКС": the patients of the other package's database join the clinic database.
// Existing rows are never touched; a patient gets a card, an empty chart and a first
// examination line, each only where the clinic has none for that number, so a second run adds
// only what is missing.
namespace zoks {

struct Summary final
{
    int sourceRows = 0;
    int patients = 0;     // new cards
    int charts = 0;       // new empty charts
    int examinations = 0; // new "Преглед" lines
    QStringList skipped;  // "name (number): why", one for each patient left out
};

// One line for the person at the screen or the command line.
QString summaryText(const Summary &summary);

// Reads `sourcePath` (Jet .mdb or SQLite) and adds its patients for the doctor `doctorCode` in
// one transaction, showing the progress dialog. A patient whose address or settlement,
// municipality or district the source lacks is left out and named in the summary. A missing
// table or field, a Null number, name or date, or a damaged file is refused with a message
// naming the file and the row; then, as after a stop in the progress dialog, nothing changes.
Result<Summary> ImportFromZoks(const QSqlDatabase &clinic, const QString &sourcePath, const QString &doctorCode);

} // namespace zoks
