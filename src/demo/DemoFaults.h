#pragma once

#include "reports/claimscheck/ClaimRules.h"

#include <QDate>
#include <QList>
#include <QSqlDatabase>
#include <QString>

class DemoPackage;
class DemoSheets;
struct DemoOptions;
struct DemoPatient;

// A fault made on purpose in the demo practice, for the claims check to find.
struct DemoFault final
{
    QList<reports::ClaimRule> rules; // what the check finds of it
    QString EGN;
    QDate date;
    QString medicCode;
    int lines = 0; // service lines it added; a fault in a line already there adds none
};

// A handful of faults of every kind the claims check knows, whatever the size of the practice:
// each in the last full month before today (a line after today on the next working day), so
// that a month's check of one doctor or the other shows them. They are written like the rest of
// the practice, on the practice's own patients and sheets. A practice too small for one (no
// line in the month, no child) goes without it. Throws store::SqlError.
QList<DemoFault> addDemoFaults(DemoSheets &sheets, const QSqlDatabase &clinic, const DemoOptions &options,
                               const QList<DemoPatient> &patients, const DemoPackage &package);
