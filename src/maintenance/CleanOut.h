#pragma once

#include "store/Result.h"

#include <QSqlDatabase>
#include <QString>

// Keeping only one doctor's patients: every patient kept by another doctor goes, with the
// services and the chart under the patient's number. Referrals stay where they are.
namespace cleanout {

struct CleanOutReport final
{
    int patients = 0;
    int serviceLines = 0;
    int charts = 0;
};

// Deletes, in one transaction on the clinic database of the open store, the patients whose
// LKod is set and differs from `medicCode`, then their services and charts. A patient without
// LKod stays. An empty code keeps only the patients without one.
Result<CleanOutReport> CleanDatabase(const QSqlDatabase &clinic, const QString &medicCode);

// The names of the doctor with that practice code, or an empty text when no doctor has it.
Result<QString> doctorWithCode(const QSqlDatabase &clinic, const QString &medicCode);

// The question asked before the clean-out, naming the doctor whose patients stay.
QString question(const QString &medicName);

} // namespace cleanout
