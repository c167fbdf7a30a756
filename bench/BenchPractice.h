#pragma once

#include <QString>

// The practice the benchmarks run on: 100,000 patients and about 1,000,000 service lines,
// generated once into a folder under the system's temporary folder and reused by later runs.
namespace benchpractice {

inline constexpr int Patients = 100000;
inline constexpr int Years = 3;

// The folder of the large practice, generated now if it is not there yet.
QString largePracticeFolder();
// Opens that practice's store for the benchmark (ConnectMain, ConnectData).
void openLargePractice();

} // namespace benchpractice
