#pragma once

#include "maintenance/DemoPractice.h"

#include <QDate>
#include <QList>
#include <QRandomGenerator>
#include <QSqlDatabase>
#include <QString>

// One invented patient, as far as the services need one.
struct DemoPatient final
{
    QString egn;
    QDate born;
    QDate registered;
    int doctor = 0; // index into the practice's doctors
};

// Writes the services of the invented practice as the treatment window would have left them:
// visits on working days within each doctor's minutes of the day, one sheet number per visit
// counted per doctor and year, the fund's price and minutes by the patient's age on the day,
// milk-tooth codes (332, 508) only on milk teeth of children, lines of past months marked as
// printed and this month's as still to print, and now and then a referral on the sheet.
// Throws store::SqlError. Gives the number of service lines.
qint64 addDemoServices(const QSqlDatabase &clinic, QRandomGenerator &random, const DemoOptions &options,
                       const QList<DemoDoctor> &doctors, const QList<DemoPatient> &patients);
