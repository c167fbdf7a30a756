#pragma once

#include "demo/DemoFaults.h"
#include "store/Result.h"

#include <QDate>
#include <QList>
#include <QString>

// A believable synthetic practice for trying the program and for the benchmarks: doctors,
// patients with valid numbers and three-part names, addresses by post code, charts, services
// by the short codes over the years, referrals and diary pages. The same seed and the same
// "today" give the same practice. Its claims keep the fund's rules, so that the claims check
// finds nothing unless faults are asked for.
struct DemoOptions final
{
    // The bounds of each option: a practice of thirty years is long, of two million patients
    // large; anything beyond would only fill a disk. Births run from 1930 to 2009, which the
    // personal number's rules take, so "today" lies in 2000..2099.
    static constexpr int MaxDoctors = 100;
    static constexpr int MaxPatients = 2000000;
    static constexpr int MaxYears = 30;
    static constexpr int FirstYear = 2000;
    static constexpr int LastYear = 2099;

    QString folder;
    int doctors = 2;
    int patients = 300;
    int years = 3;
    quint32 seed = 1;
    QDate today = QDate::currentDate();
    bool faults = false; // a handful of faults made on purpose for the claims check to find
};

// Raised whenever the generator makes a different practice of the same options, so that a
// practice generated once and kept (the benchmarks') is not taken for the new one.
inline constexpr int DemoGeneratorVersion = 2;

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
    qint64 serviceLines = 0; // the faults' lines included
    QList<DemoFault> faults;
};

// The first option out of its bounds, as a message; empty when all are good.
QString demoOptionsFault(const DemoOptions &options);

// Fills the folder's store (creating it). Refuses options out of bounds, and a folder that
// already holds doctors or patients, so that no real practice is mixed with invented people;
// that check runs inside the transaction that writes the practice. Every doctor's days stay
// within the minutes of a working day: visits that find a doctor's days full are left out, so
// that too few doctors for the patients give fewer visits, never a sheet number beyond the
// doctor's series. The fund's annual package is read from the folder's table.
Result<DemoSummary> generateDemoPractice(const DemoOptions &options);
