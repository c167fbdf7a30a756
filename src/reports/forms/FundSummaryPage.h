#pragma once

#include "base/Page.h"
#include "reports/Period.h"

#include <QSqlDatabase>
#include <QString>

// The printed fund summary "rprZOKC", on A4: the heading of the activity report and a ruled
// table of the two age groups by code.
namespace reports {

// The detail row k (0 for the first row of TempZOKC) holds Text1 Godini and Text2 to Text7 the
// counts of 101, 301, 332, 333, 508 and 509, read by print::rowItemName(name, k).
// Throws store::SqlError when TempZOKC cannot be read.
print::PageDescription ZokcPage(const QSqlDatabase &scratch, const Period &period, const QString &medicName);

} // namespace reports
