#pragma once

#include <QString>

// The practice the benchmarks run on: 100,000 patients and about 1,000,000 service lines of 35 doctors
// over ten years, generated once into a folder under the system's temporary folder and reused by later
// runs. The demo keeps every doctor's day within its minutes and every patient's year within the
// fund's annual package (an adult: an examination and two activities), so the doctors' days, not
// the patients, set the size: some 30,000 lines a year for every seven doctors once the practice
// has filled up.
namespace benchpractice {

inline constexpr int Patients = 100000;
inline constexpr int Years = 10;
inline constexpr int Doctors = 35;

// The folder of a practice of that many patients, doctors and years, generated once into the
// temporary folder (with the given seed) and reused by later runs; its name carries the
// parameters and the generator's version, and a file "complete" marks it whole.
QString practiceFolder(int patients, int doctors, int years, quint32 seed);
// The folder of the large practice, generated now if it is not there yet.
QString largePracticeFolder();
// The folder VELMORATA_BENCH_FOLDER names, to measure on another practice; else the large one.
QString measuredPracticeFolder();
// Opens that practice's store for the benchmark (ConnectMain, ConnectData).
void openLargePractice();

} // namespace benchpractice
