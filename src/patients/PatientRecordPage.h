#pragma once

#include "base/Page.h"
#include "patients/PatientRecord.h"

#include <QList>
#include <QString>

#include <functional>

// The printed card of a patient laid out on A4, and the pieces of it that the treatment data
// print shares: the head with the personal data and the band of services.
namespace patientrecord {

// The names the personal data carry on a form (each form has its own).
struct PersonalItemNames final
{
    QString names, address, telephones, work, pol, registered, dataR, krGr, ph, zBook, rBook, nep, osob;
};

// The title, the fixed captions and the personal data, from the top of the page down to
// where the chart starts (ChartTop).
inline constexpr double ChartTop = 86.0;
void addPersonalHead(print::PageDescription &form, const PersonalTexts &personal, const PersonalItemNames &names);

// A column of the service band.
struct ServiceColumn final
{
    QString headingName;
    QString heading;
    QString itemName;
    double x;
    double width;
    std::function<QString(const ServiceLine &)> value;
};
// The band of services from `top` to the foot of the page, one line each, its header on every page.
void setServiceBand(print::PageDescription &form, double top, const QList<ServiceColumn> &columns,
                    const QList<ServiceLine> &services);

// "rprPacient": the head, the 52 chart cells in four rows, the legend, the services.
print::PageDescription RecordPage(const PatientRecord &record);

} // namespace patientrecord
