#include "treatment/TreatmentDataPage.h"

#include "patients/PatientRecordPage.h"

namespace treatmentdata {
namespace {

using patientrecord::ServiceColumn;
using patientrecord::ServiceLine;

constexpr double ChartLeft = 17.0;
constexpr double CellWidth = 11.0;
constexpr double CellHeight = 7.0;
constexpr double NumberHeight = 5.0;

void addCell(print::PageDescription &form, const DataChartCell &cell, int column, double cellTop, double numberTop)
{
    const QRectF cellRect(ChartLeft + column * CellWidth, cellTop, CellWidth, CellHeight);
    const QRectF numberRect(ChartLeft + column * CellWidth + 2.0, numberTop, CellWidth - 4.0, NumberHeight);
    form.items << print::box(QStringLiteral("box_%1").arg(cell.place), cellRect);
    form.items << print::text(QStringLiteral("s_%1").arg(cell.place), cellRect, cell.code, 9.0, Qt::AlignCenter);
    form.items << print::text(QStringLiteral("z_%1").arg(cell.place), numberRect, cell.number, 8.0, Qt::AlignCenter);
    if (cell.framed)
        form.items << print::frame(QStringLiteral("frame_%1").arg(cell.place), numberRect);
}

double addChart(print::PageDescription &form, const DataChart &chart, double top)
{
    for (int column = 0; column < chart.upper.size(); ++column)
        addCell(form, chart.upper.at(column), column, top + NumberHeight, top);
    const double lowerTop = top + NumberHeight + CellHeight + 2.0;
    for (int column = 0; column < chart.lower.size(); ++column)
        addCell(form, chart.lower.at(column), column, lowerTop, lowerTop + CellHeight);
    return lowerTop + CellHeight + NumberHeight;
}

QList<ServiceColumn> dataColumns()
{
    return {
        {QStringLiteral("Head1"), QStringLiteral("Дата"), QStringLiteral("Data"), 10, 20,
         [](const ServiceLine &line) { return line.Data; }},
        {QStringLiteral("Head2"), QStringLiteral("Диагноза"), QStringLiteral("Help"), 30, 50,
         [](const ServiceLine &line) { return line.Help; }},
        {QStringLiteral("Head3"), QStringLiteral("Дейност"), QStringLiteral("TextHelp"), 80, 70,
         [](const ServiceLine &line) { return line.TextHelp; }},
        {QStringLiteral("Head4"), QStringLiteral("Код"), QStringLiteral("KodHelp"), 150, 15,
         [](const ServiceLine &line) { return line.KodHelp; }},
        {QStringLiteral("Head5"), QStringLiteral("код зъб"), QStringLiteral("KodZab"), 165, 17,
         [](const ServiceLine &line) { return line.KodZab; }},
        {QStringLiteral("Head6"), QStringLiteral("Вид"), QStringLiteral("Vid"), 182, 18,
         [](const ServiceLine &line) { return line.Vid; }},
    };
}

} // namespace

print::PageDescription TreatmentDataPage(const TreatmentData &data)
{
    print::PageDescription form(QStringLiteral("rprHelpData"), print::A4);
    form.title = QStringLiteral("Данни за лечение");
    form.whose = data.personal.patientNames;
    patientrecord::addPersonalHead(form, data.personal,
                                   {QStringLiteral("rNames"), QStringLiteral("rAdres"), QStringLiteral("rTel"),
                                    QStringLiteral("rWork"), QStringLiteral("rPol"), QStringLiteral("sReg"),
                                    QStringLiteral("rDataR"), QStringLiteral("rKrGr"), QStringLiteral("rPh"),
                                    QStringLiteral("rZBook"), QStringLiteral("rRBook"), QStringLiteral("rNep"),
                                    QStringLiteral("rOsob")});
    const double chartBottom = addChart(form, data.chart, patientrecord::ChartTop);
    patientrecord::setServiceBand(form, chartBottom + 4.0, dataColumns(), data.services);
    return form;
}

} // namespace treatmentdata
