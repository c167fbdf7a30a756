#include "reports/ui/ReportWindows.h"

#include "base/Calendar.h"
#include "base/Dialogs.h"
#include "base/RunState.h"
#include "base/Settings.h"
#include "base/ui/BusyPointer.h"
#include "base/ui/PrintPreview.h"
#include "reports/claimscheck/ClaimsCheck.h"
#include "reports/ui/ClaimsCheckWindow.h"
#include "reports/ui/Schet.h"
#include "reports/ui/SeekDate.h"
#include "reports/xml/StomatologyXml.h"
#include "store/Sql.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QPointer>
#include <QStandardPaths>

namespace reportsui {
namespace {

QString showXmlSaveDialog(QWidget *owner, const QString &suggestedPath)
{
    return QFileDialog::getSaveFileName(owner, QStringLiteral("Записване на XML-файла"), suggestedPath,
                                        QStringLiteral("XML-файлове (*.xml);;Всички файлове (*.*)"));
}

XmlFileChooser &chooser()
{
    static XmlFileChooser chosen = showXmlSaveDialog;
    return chosen;
}

// The documents folder the first time, then the folder of the last report saved.
QString xmlFolder()
{
    const QString remembered = Settings().value(Settings::Key::XmlReportFolder).toString();
    if (!remembered.isEmpty() && QDir(remembered).exists())
        return remembered;
    return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
}

void rememberXmlFolder(const QString &savedPath)
{
    Settings settings;
    settings.setValue(Settings::Key::XmlReportFolder, QFileInfo(savedPath).absolutePath());
    (void)settings.sync(); // a folder not remembered only costs a click next month
}

// The signed-in doctor's findings in the dialog's period; a check that cannot run says why.
std::optional<QList<reports::ClaimFinding>> checkClaims(const SeekDate *dialog)
{
    Result<QList<reports::ClaimFinding>> checked = Result<QList<reports::ClaimFinding>>::failure({});
    {
        BusyPointer busy;
        checked = reports::CheckClaims(store::clinicDb(), dialog->period(), run().CurrentMedicCode, calendar::today());
    }
    if (!checked) {
        dialogs().information(checked.error());
        return std::nullopt;
    }
    return checked.value();
}

ClaimsCheckWindow *showFindings(SeekDate *dialog, const QList<reports::ClaimFinding> &findings)
{
    ClaimsCheckWindow *window =
        ClaimsCheckWindow::open(dialog->parentWidget(), findings, dialog->period(), run().CurrentMedicName);
    // The window may be open already, tied to the dialog's closing by an earlier check.
    QObject::disconnect(window, &QObject::destroyed, dialog, nullptr);
    return window;
}

// Before the report is written the period's findings are offered, while they can be mended:
// true when the user takes the offer and the report waits. A check that cannot run holds
// nothing up.
bool findingsShownFirst(SeekDate *dialog)
{
    const auto findings = checkClaims(dialog);
    if (!findings || findings->isEmpty() || !dialogs().question(reports::FindingsQuestion(int(findings->size()))))
        return false;
    showFindings(dialog, *findings);
    return true;
}

void saveXmlReport(SeekDate *dialog)
{
    if (findingsShownFirst(dialog))
        return; // the period stays in the dialog for the report after the mending
    std::optional<reports::XmlReport> report;
    {
        BusyPointer busy;
        auto built = reports::BuildStomatologyXml(store::clinicDb(), dialog->period(), run().CurrentMedicCode,
                                                  calendar::today());
        if (!built) {
            dialogs().information(built.error());
            return;
        }
        report = built.value();
    }
    if (!report->exportUin.isEmpty())
        run().ExportUin = report->exportUin;
    const QString suggested =
        QDir(xmlFolder()).filePath(reports::SuggestedXmlFileName(run().ExportUin, dialog->period()));
    const QString path = chooser()(dialog, suggested);
    if (path.isEmpty())
        return; // the period stays for another try
    if (const Outcome written = reports::WriteXmlReport(report->document, path); !written) {
        dialogs().information(written.error());
        return;
    }
    rememberXmlFolder(path);
    dialog->close();
}

// The printed report stays open over the period dialog; closing it empties the scratch table
// and closes the dialog too.
void showPrintedReport(SeekDate *dialog)
{
    const reports::ReportKind kind = dialog->kind();
    Result<reports::SkippedPatients> built = Result<reports::SkippedPatients>::failure({});
    {
        BusyPointer busy;
        built = reports::BuildReport(store::openedDatabases(), kind, dialog->period(), run().CurrentMedicCode);
    }
    if (!built) {
        dialogs().information(built.error());
        return;
    }
    const auto page = reports::ReportPage(store::openedDatabases(), kind, dialog->period(), run().CurrentMedicName);
    if (!page) {
        dialogs().information(page.error());
        return;
    }
    if (!built->isEmpty())
        dialogs().information(built->message());
    auto *preview = print::PrintPreview::showForm(page.value(), dialog->parentWidget());
    QObject::connect(preview, &QObject::destroyed, dialog, [kind, dialog] {
        (void)reports::CloseReport(kind); // the next report makes the file anew anyway
        dialog->close();
    });
}

} // namespace

void setXmlFileChooser(XmlFileChooser chooserFunction)
{
    chooser() = chooserFunction ? std::move(chooserFunction) : XmlFileChooser(showXmlSaveDialog);
}

void openReportPeriod(QWidget *parent, reports::ReportKind kind, bool withScratch)
{
    Outcome prepared = Outcome::success();
    {
        BusyPointer busy;
        prepared = reports::PrepareReport(store::openedDatabases(), kind, withScratch);
    }
    if (!prepared) {
        dialogs().information(prepared.error());
        return;
    }
    SeekDate::open(parent, kind);
}

void openAccountingPeriod(QWidget *parent) { SeekDate::openForAccounting(parent); }

void runReport(SeekDate *dialog)
{
    if (dialog->kind() == reports::ReportKind::Xml)
        saveXmlReport(dialog);
    else
        showPrintedReport(dialog);
}

// The form takes its dates from the period dialog, and closing it closes the dialog as well.
void openAccounting(SeekDate *dialog)
{
    Schet *form = Schet::open(dialog->parentWidget(), dialog->period());
    if (form)
        QObject::connect(form, &QObject::destroyed, dialog, [dialog] { dialog->close(); });
}

void openClaimsCheckPeriod(QWidget *parent) { SeekDate::openForClaimsCheck(parent); }

// The window takes its period from the dialog, and closing it closes the dialog as well.
void openClaimsCheck(SeekDate *dialog)
{
    const auto findings = checkClaims(dialog);
    if (!findings)
        return;
    ClaimsCheckWindow *window = showFindings(dialog, *findings);
    QObject::connect(window, &QObject::destroyed, dialog, [dialog] { dialog->close(); });
}

} // namespace reportsui
