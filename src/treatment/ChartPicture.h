#pragma once

#include "store/Result.h"

#include <QHash>
#include <QList>
#include <QSqlDatabase>
#include <QString>

#include <optional>

// What the read-only chart of the treatment window shows: 32 cells in two rows (the permanent
// teeth 18..28 above, 48..38 below) and which of the twenty milk-tooth numbers stand visible.
// A milk field with any text shows its number; "*" empties the cell of its permanent twin, any
// other code takes that cell's place.
struct ChartPicture final
{
    QList<QString> upper;       // 16 cell texts, left to right
    QList<QString> lower;       // 16
    QList<bool> milkShown;      // index 0..19 for Z1..Z20
};

using ChartFields = QHash<QString, QString>; // "Z1".."Z52" -> code

ChartPicture BuildChartPicture(const ChartFields &fields);

// The patient's Dental row, or nullopt when the patient has none.
Result<std::optional<ChartFields>> LoadChart(const QSqlDatabase &clinic, const QString &egn);
