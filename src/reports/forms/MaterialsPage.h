#pragma once

#include "base/Page.h"
#include "reports/Period.h"
#include "store/Result.h"

#include <QList>
#include <QSqlDatabase>
#include <QString>

// "rprMat": the materials a period used, read from TempMater, on A4.
namespace reports {

struct MaterialUse final
{
    QString Name;
    double Kol = 0.0;
    QString Ed;
};

// The materials with a quantity above 0, in the list's order; a Null quantity is not above 0.
Result<QList<MaterialUse>> ReadMaterialsReport(const QSqlDatabase &scratch);

// The quantity as the form prints it ("##0,0"): a whole number, rounded half away from zero,
// its thousands set apart by a blank as Bulgarian figures are (1234.4 gives "1 234"): a comma
// would read as a decimal point to the clerk.
QString MaterialQuantityText(double kol);

// Label3 and Label9 the period's two dates, Label6 the doctor line; the rows Text2 (name),
// Text1 (quantity), Text3 (unit).
print::PageDescription MaterialsPage(const QList<MaterialUse> &rows, const Period &period, const QString &medicName);
// The form from the scratch table as it stands.
Result<print::PageDescription> MaterialsForm(const QSqlDatabase &scratch, const Period &period,
                                             const QString &medicName);

} // namespace reports
