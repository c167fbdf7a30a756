#pragma once

#include "reports/forms/PrintedReports.h"

class QWidget;
class SeekDate;

// What "Търси" of the period dialog leads to, and the menu entries that open the dialog.
namespace reportsui {

// The menu entry of a report: prepares the scratch table (and, for the materials, classifies
// the fillings), then opens the period dialog. `withScratch` false is "Осчетоводяване".
void openReportPeriod(QWidget *parent, reports::ReportKind kind, bool withScratch = true);
// The accounting form's entry: the period dialog, then the form for that period.
void openAccountingPeriod(QWidget *parent);
// The check of the claims before the report: the period dialog, then the window of its findings.
void openClaimsCheckPeriod(QWidget *parent);

// Builds the dialog's report for its period and shows it: a printed form in the preview, the
// XML report through the save dialog.
void runReport(SeekDate *dialog);
void openAccounting(SeekDate *dialog);
// Checks the signed-in doctor's lines of the dialog's period and shows the findings; closing
// their window closes the dialog.
void openClaimsCheck(SeekDate *dialog);

// Where the XML report is saved: the save dialog as the program shows it, replaceable by tests.
// Given the suggested path, returns the chosen one or empty when cancelled.
using XmlFileChooser = std::function<QString(QWidget *owner, const QString &suggestedPath)>;
void setXmlFileChooser(XmlFileChooser chooser); // nullptr puts back the real dialog

} // namespace reportsui
