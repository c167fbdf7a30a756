#pragma once

#include <QList>
#include <QString>

// The 52 chart positions of a patient (fields Z1..Z52 of Dental) and their FDI tooth numbers.
// Z1..Z20 are milk teeth, Z21..Z52 permanent. Twenty places can hold either a milk tooth or
// its permanent twin; a box (1..20) tells which is there. This is the one place that says
// which field is which tooth: the card, the treatment window, the prints and the XML report
// all read it from here.
namespace toothmap {

inline constexpr int FieldCount = 52;
inline constexpr int BoxCount = 20;

struct Position final
{
    int field;     // 1..52: the number in Z<field>
    int tooth;     // FDI number
    bool milk;     // Z1..Z20
    bool upper;    // upper or lower jaw
    int box;       // 1..20 for a place that has a box, else 0
    int twinField; // the other field of the same place, or 0 for a molar
};

// All 52, ordered by field number.
const QList<Position> &positions();
const Position &position(int field);

QString fieldName(int field); // "Z7"
int toothOf(int field);

// The permanent fields of the two screen rows, left to right (upper: 18..11 21..28; lower:
// 48..41 31..38): the order of the chart on screen and in print.
const QList<int> &upperRow();
const QList<int> &lowerRow();

// The column (0..15) of a field in its screen row; a milk field stands in its permanent twin's.
int columnOf(int field);

// The position of an FDI tooth number ("36", "75"), or nullptr for a number that names no tooth.
const Position *positionOfTooth(int tooth);

int milkFieldOfBox(int box);      // box n: Z<n>
int permanentFieldOfBox(int box); // Check1 -> Z24, Check11 -> Z40, ...

} // namespace toothmap
