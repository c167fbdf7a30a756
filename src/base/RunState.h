#pragma once

#include "store/DataPaths.h"

#include <QString>

// The values that live for the whole run and that every screen may read. The paths are fixed
// at start-up; the others are set by the screens that own them.
struct RunState final
{
    QString DataFolder;
    QString ClinicDbPath;
    QString DataDbPath;
    QString ScratchDbPath;
    QString ConnectMain;
    QString ConnectData;
    QString ConnectTemp;
    QString CurrentMedicCode; // KodMedic of the signed-in doctor; empty when nobody is signed in
    QString CurrentMedicName;
    qint16 SeekPurpose = 0; // 1 correction, 2 treatment, 3 inquiry
    QString ReportKind;     // "1".."5": which report the period dialog serves
    QString CardMode;       // "New", "Edit" or " "
    qint16 MinutesLeft = 0; // minutes left of today's working day; may go below zero
    qint16 nIDMedic = 0;    // numeric reading of the signed-in doctor's access code (sign-in)
    QString ExportUin;
    QString SheetEgn;
    bool SheetHasExam = false;
};

RunState &run();
// Fixes the paths and connection names from the data folder.
void initRunState(const store::DataPaths &paths);
