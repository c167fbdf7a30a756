#pragma once

#include "demo/DemoPractice.h"

#include <QDate>
#include <QList>
#include <QRandomGenerator>
#include <QString>

class DemoPackage;
class DemoSheets;
class FundPriceTable;

// One invented patient, as far as the services need one.
struct DemoPatient final
{
    QString egn;
    QDate born;
    QDate registered;
    int doctor = 0; // index into the practice's doctors
};

// Writes the services of the invented practice: in each calendar year from the patient's
// registration a few visits on working days within each doctor's minutes of the day, one sheet
// per visit, an examination on the first visit of the year, milk-tooth codes (332, 508) only on
// milk teeth of children, and only what the fund pays within the patient's annual package. A
// visit left with no line is not made. Throws store::SqlError.
void addDemoServices(DemoSheets &sheets, QRandomGenerator &random, const DemoOptions &options,
                     const QList<DemoPatient> &patients, const DemoPackage &package, const FundPriceTable &prices);
