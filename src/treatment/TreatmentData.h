#pragma once

#include "patients/PatientRecord.h"
#include "store/Result.h"

#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>

// The treatment data print ("Печат данни..." of the treatment window): the personal data and
// services of the printed card, with a chart of 32 cells in which a milk tooth takes the place
// of its permanent twin and shows its own number in a frame.
namespace treatmentdata {

struct DataChartCell final
{
    int place = 0;      // FDI number of the permanent tooth whose place this is
    QString number;     // the number printed at the cell: the place's, or the milk tooth's
    bool framed = false; // a milk tooth's number stands in a frame
    QString code;
};

struct DataChart final
{
    QList<DataChartCell> upper; // 18..11 21..28
    QList<DataChartCell> lower; // 48..41 31..38
};

// Fields are applied Z1..Z52 in order, so where a place has both a milk and a permanent code
// the permanent one is printed while the milk number keeps its frame.
DataChart BuildDataChart(const QStringList &chart);

struct TreatmentData final
{
    patientrecord::PersonalTexts personal;
    DataChart chart;
    QList<patientrecord::ServiceLine> services;
};
TreatmentData BuildTreatmentData(const patientrecord::PatientPrintSource &source);
Result<TreatmentData> LoadTreatmentData(const QSqlDatabase &clinic, const QString &egn);

} // namespace treatmentdata
