#pragma once

#include "reports/Period.h"
#include "store/Result.h"

#include <QSqlDatabase>
#include <QString>

// "Разходи": what the services of a period used up of each material. The norms (RazhNorm) hold
// per activity code one column per material, M1, M2, ..., and column i belongs to the i-th
// material of TempMater in its record order, which is that of Mater when it was copied: the
// position alone links them.
namespace reports {

inline const QString NoMaterialsDataMessage = QStringLiteral("Няма данни за обработка!");
inline const QString MaterialsProgressMessage = QStringLiteral("Изчакайте!\rПресмятам разхода на материалите...");

// Copies Mater into TempMater in record order; Kol starts from what Mater holds, not from zero.
Outcome LoadMaterialsList(const QSqlDatabase &data, const QSqlDatabase &scratch);

// Adds the norms of every line of the period, of all doctors, by date, to TempMater's Kol in
// single precision, as the report's quantities carry the rounding of a single. A second run
// adds the period again on top. A Null norm makes that material's Kol Null, so it drops out of
// the report. A line whose code has no norm row, or norms with fewer columns than there are
// materials, is a message naming the code and the line, and the table is left empty. An empty
// period says "Няма данни за обработка!" and leaves the list as loaded. Shows ProgDialog and
// ends with "Завърших обработката на данните!" unless it failed.
Outcome CalcMaterials(const QSqlDatabase &clinic, const QSqlDatabase &data, const QSqlDatabase &scratch,
                      const Period &period);

} // namespace reports
