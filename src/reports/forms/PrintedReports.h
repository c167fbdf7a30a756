#pragma once

#include "base/Page.h"
#include "reports/Period.h"
#include "reports/PeriodLines.h"
#include "store/Databases.h"
#include "store/Result.h"

#include <optional>

// The reports to the fund as the period dialog and the command line run them: what each menu
// entry prepares, which builder fills which scratch table, and which printed form shows it.
namespace reports {

enum class ReportKind {
    Activity = 1,      // "Дейности към ЗОК": TempWork, rprWork
    Materials = 2,     // "Разходи": TempMater, rprMat
    FundSummary = 3,   // "Справка за ЗОК": TempZOKC, rprZOKC
    Xml = 4,           // "Експорт XML" and "Осчетоводяване": the XML report
    Specification = 5, // "Спецификация": TempSpec, rptSpec
};

// The kind the run-wide ReportKind text names; nothing outside "1".."5".
std::optional<ReportKind> ReportKindFrom(const QString &text);
QString ReportKindText(ReportKind kind);
// The scratch table of a kind; empty for the XML report, which builds none of its own.
QString ScratchTableOf(ReportKind kind);

// What the menu entry does before the period dialog opens: the scratch table made anew and,
// for the materials, the fillings classified and the materials list loaded. `withScratch`
// false is "Осчетоводяване", which leads to the XML report without making a table.
Outcome PrepareReport(const store::Databases &dbs, ReportKind kind, bool withScratch = true);
// Fills the kind's scratch table for the period (a printed kind only).
Result<SkippedPatients> BuildReport(const store::Databases &dbs, ReportKind kind, const Period &period,
                                    const QString &medicCode);
// The printed form of a kind from its filled scratch table.
Result<print::PageDescription> ReportPage(const store::Databases &dbs, ReportKind kind, const Period &period,
                                          const QString &medicName);
// The filled report as plain text lines, for the command line: one line per row of the scratch
// table, its fields in the layout's order, tab-separated, dates DD.MM.YYYY; the specification
// gives one line per cell of the form that carries a figure, "<cell name><TAB><text>".
Result<QStringList> ReportLines(const store::Databases &dbs, ReportKind kind, const Period &period);
// Empties the scratch table when the report is closed.
Outcome CloseReport(ReportKind kind);

} // namespace reports
