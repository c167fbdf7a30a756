#pragma once

#include "store/Result.h"

#include <QDate>
#include <QList>
#include <QString>

// A believable synthetic practice for trying the program and for the benchmarks: doctors,
// patients with valid numbers and three-part names, addresses by post code, charts, services
// by the short codes over the years, referrals and diary pages. The same seed and the same
// "today" give the same practice.
struct DemoOptions final
{
    QString folder;
    int doctors = 2;
    int patients = 300;
    int years = 3;
    quint32 seed = 1;
    QDate today = QDate::currentDate();
};

struct DemoDoctor final
{
    QString name;
    QString code;       // KodMedic
    QString accessCode; // in clear, for the person trying the program; stored hashed
};

struct DemoSummary final
{
    QList<DemoDoctor> doctors;
    int patients = 0;
    qint64 serviceLines = 0;
};

// Fills the folder's store (creating it). Refuses a folder that already holds doctors or
// patients, so that no real practice is mixed with invented people.
Result<DemoSummary> generateDemoPractice(const DemoOptions &options);
