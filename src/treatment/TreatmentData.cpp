#include "treatment/TreatmentData.h"

#include "patients/ToothMap.h"
#include "store/TextReading.h"

namespace treatmentdata {
namespace {

QList<DataChartCell> emptyRow(const QList<int> &permanentFields)
{
    QList<DataChartCell> row;
    for (int field : permanentFields) {
        const int tooth = toothmap::toothOf(field);
        row << DataChartCell{tooth, QString::number(tooth), false, {}};
    }
    return row;
}

// The cell of a permanent field's place.
DataChartCell &cellOf(DataChart &chart, int permanentField)
{
    return permanentField <= 36 ? chart.upper[permanentField - 21] : chart.lower[permanentField - 37];
}

} // namespace

DataChart BuildDataChart(const QStringList &chart)
{
    DataChart picture{emptyRow(toothmap::upperRow()), emptyRow(toothmap::lowerRow())};
    for (const toothmap::Position &position : toothmap::positions()) {
        const QString code = chart.value(position.field - 1);
        if (text::isBlank(code))
            continue;
        DataChartCell &cell = cellOf(picture, position.milk ? position.twinField : position.field);
        if (position.milk) {
            cell.number = QString::number(position.tooth);
            cell.framed = true;
        }
        cell.code = code;
    }
    return picture;
}

TreatmentData BuildTreatmentData(const patientrecord::PatientPrintSource &source)
{
    return {patientrecord::BuildPersonalTexts(source.patient, false), BuildDataChart(source.chart), source.services};
}

Result<TreatmentData> LoadTreatmentData(const QSqlDatabase &clinic, const QString &egn)
{
    const auto source = patientrecord::LoadPatientPrintSource(clinic, egn);
    if (!source)
        return Result<TreatmentData>::failure(source.error());
    return Result<TreatmentData>::success(BuildTreatmentData(source.value()));
}

} // namespace treatmentdata
