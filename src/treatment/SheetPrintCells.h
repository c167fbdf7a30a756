#pragma once

#include "patients/EgnRules.h"
#include "treatment/PatientHeader.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

// What the ambulatory sheet (rprKarton) writes into the boxes of the fund's form, worked out
// from the rows it prints: the patient, the first doctor of Medic, the lines copied into
// TempKarton and, when the sheet holds an examination, the chart.

struct SheetLine final // one row of TempKarton
{
    QString Data; // ISO date
    QString Help;
    QString TextHelp;
    QString KodZab;  // spread for the digit boxes, or as stored when blank
    QString KodHelp; // spread, at most three characters
};

struct SheetDoctor final
{
    QString Names;
    QString EGN;
    QString KodMedic;
};

struct SheetData final
{
    QString egn; // SheetEgn
    PatientFields patient;
    SheetDoctor doctor;
    QList<SheetLine> lines;
    bool hasExam = false;                // SheetHasExam
    std::optional<QStringList> dental;   // Z1..Z52 when the chart is to be filled and the patient has one
    EgnRule egnRule = EgnRule::System;   // the practice's, by which the birth cells are read
};

// The design captions that a birth cell keeps when the month code sets nothing.
inline const QString DesignCentury = QStringLiteral("1  9");
inline const QString DesignMonth = QStringLiteral("0  2");

struct BirthCells final
{
    QString day;     // Label52
    QString month;   // Label51
    QString century; // Label53
    QString year;    // Label54
};
// From the personal number, by the month code in its characters 3-4. The system's rule prints
// the month of the 1800s code only for 21 and 22; the public rule for the whole code.
BirthCells SheetBirthCells(const QString &egn, EgnRule rule = EgnRule::System);

// The header cells that have a value, by label name (Label1 ... Label17, Label50 ... Label54).
QHash<QString, QString> SheetHeaderCells(const SheetData &sheet);

struct ChartCell final
{
    QString text;
    bool milkFrame = false; // Shape k and Shape 100+k show: a milk tooth stands here
    int milkField = 0;      // k, for a place that can hold a milk tooth
};
// The 32 chart cells Label18..Label49 (index 0 is Label18, the cell of Z21) from Z1..Z52.
QList<ChartCell> SheetChartCells(const QStringList &dental);
QString chartCellName(int permanentField); // Z21 -> "Label18"
