#pragma once

#include <QString>

// The practice the benchmarks run on: 100,000 patients and about 1,000,000 service lines of 35 doctors
// over ten years, generated once into a folder under the system's temporary folder and reused by later
// runs. The demo keeps every doctor's day within its minutes (about thirteen lines), so a million
// lines take some 3,300 doctor-days a year for ten years.
namespace benchpractice {

inline constexpr int Patients = 100000;
inline constexpr int Years = 10;
inline constexpr int Doctors = 35;

// The folder of a practice of that many patients, doctors and years, generated once into the
// temporary folder (with the given seed) and reused by later runs.
QString practiceFolder(int patients, int doctors, int years, quint32 seed);
// The folder of the large practice, generated now if it is not there yet.
QString largePracticeFolder();
// Opens that practice's store for the benchmark (ConnectMain, ConnectData).
void openLargePractice();

} // namespace benchpractice
