// Which menu item runs which command. An item that is not wired here stays on the menu,
// disabled, until its screen is part of the program.
#include "shell/ui/frmMain.h"
#include "shell/ui/WindowHelp.h"

#include "admin/ui/Cenoraz.h"
#include "admin/ui/MedicUnitForm.h"
#include "diary/ui/Grafic.h"
#include "maintenance/ui/LegacyTakeoverScreen.h"
#include "maintenance/ui/MaintenanceCommands.h"
#include "maintenance/ui/ZoksImportScreen.h"
#include "patients/ui/EgnRuleForm.h"
#include "patients/ui/KartonAdd.h"
#include "patients/ui/KorEGN.h"
#include "patients/ui/SeekName.h"
#include "reports/ui/ReportWindows.h"
#include "treatment/ui/TreatmentRoute.h"

#include <QAction>
#include <QMenu>


void frmMain::connectCommands()
{
    wire(QStringLiteral("mnuPacDen"), [this] { openSearch(2); });
    wire(QStringLiteral("mnuPacKor"), [this] { openSearch(1); });
    wire(QStringLiteral("mnuPacKorEGN"), [this] { KorEGN::open(this); });
    wire(QStringLiteral("mnuPacReg"), [this] { followCard(KartonAdd::openNew(this)); });
    wire(QStringLiteral("mnuPacZOKC"), [this] { zoksscreen::ImportFromZoks(this); });
    // The take-over of an earlier edition's practice stands after "Зареждане на данни", beside the
    // other way of bringing data in.
    insertItem(action(QStringLiteral("mnuSlg"))->menu(), action(QStringLiteral("mnuSlgOpen")),
               {"mnuSlgLegacy", "Пренасяне от стара версия", 62}, [this] { legacyscreen::TakeOverOldPractice(this); });
    // "Осчетоводяване" leads to the XML report, as it always has; the accounting form that
    // marks a period's lines one by one gets its own item below it.
    insertItem(action(QStringLiteral("mnuSlg"))->menu(), action(QStringLiteral("mnuSlgSchet")),
               {"mnuSlgSchetForm", "Осчетоводяване по услуги", 63}, [this] { reportsui::openAccountingPeriod(this); });
    wire(QStringLiteral("mnuOtchetWork"), [this] { reportsui::openReportPeriod(this, reports::ReportKind::Activity); });
    wire(QStringLiteral("mnuOtMat"), [this] { reportsui::openReportPeriod(this, reports::ReportKind::Materials); });
    wire(QStringLiteral("mnuOtchetWorkGod"),
         [this] { reportsui::openReportPeriod(this, reports::ReportKind::FundSummary); });
    // The check of a period's claims stands right before the XML report it prepares.
    QMenu *reportsMenu = action(QStringLiteral("mnuOtcet"))->menu();
    const QList<QAction *> reportItems = reportsMenu->actions();
    insertItem(reportsMenu, reportItems.at(reportItems.indexOf(action(QStringLiteral("mnuOtchetExportXML"))) - 1),
               {"mnuOtCheck", "Проверка преди отчета", 58}, [this] { reportsui::openClaimsCheckPeriod(this); });
    wire(QStringLiteral("mnuOtchetExportXML"), [this] { reportsui::openReportPeriod(this, reports::ReportKind::Xml); });
    wire(QStringLiteral("mnuOtSpecif"),
         [this] { reportsui::openReportPeriod(this, reports::ReportKind::Specification); });
    wire(QStringLiteral("mnuSlgSchet"), [this] { reportsui::openReportPeriod(this, reports::ReportKind::Xml, false); });
    wire(QStringLiteral("mnuSlgUnit"), [this] { MedicUnit::open(this); });
    // Which personal numbers the practice takes is the practice's own data, beside the unit's.
    insertItem(action(QStringLiteral("mnuSlg"))->menu(), action(QStringLiteral("mnuSlgUnit")),
               {"mnuSlgEgnRule", "Правило за ЕГН", 65}, [this] { EgnRuleForm::open(this); });
    wire(QStringLiteral("mnuOtPac"), [this] { openSearch(3); });
    wire(QStringLiteral("mnuOtSpGraf"), [this] { printDiaryPage(); });
    wire(QStringLiteral("mnuSlgCeno"), [this] { Cenoraz::open(this); });
    wire(QStringLiteral("mnuSlgGraf"), [this] { Grafic::open(this); });
    wire(QStringLiteral("mnuSlgSave"), [this] { maintenanceui::backupData(this); });
    wire(QStringLiteral("mnuSlgOpen"), [this] {
        maintenanceui::restoreData(this, [this] { return closeOpenWindows(); }, [this] { recalcMinutes(); });
    });
    wire(QStringLiteral("mnuSlgUtil"), [] { maintenanceui::repairData(); });
    wire(QStringLiteral("mnuSlgClean"), [] { maintenanceui::cleanOutData(); });
    wire(QStringLiteral("mnuExit"), [this] { exitProgram(); });
    wire(QStringLiteral("mnuCahgePass"), [this] { changePassword(); });
    wire(QStringLiteral("mnuHelpContents"), [this] { showHelp(0); });
    wire(QStringLiteral("mnuHelpUpdate"), [this] { openSupportPage(); });
    wire(QStringLiteral("mnuHelpAbout"), [this] { showAbout(); });
    connect(action(QStringLiteral("mnuViewButton")), &QAction::triggered, this, &frmMain::toggleButtons);
    connect(action(QStringLiteral("mnuViewTime")), &QAction::triggered, this, &frmMain::toggleTime);
}

void frmMain::openSearch(int purpose)
{
    // One search window serves every purpose; it is connected afresh so that a choice opens one window.
    SeekName *search = SeekName::openFor(purpose, this);
    disconnect(search, &SeekName::patientChosen, this, nullptr);
    connect(search, &SeekName::patientChosen, this, [this](int chosenFor, const QString &name, const QString &egn) {
        if (chosenFor == 1)
            followCard(KartonAdd::openForCorrection(name, egn, this));
        else if (chosenFor == 2)
            treatmentui::openChosenPatient(egn, name, this);
        else if (chosenFor == 3)
            printRecord(egn);
    });
}

void frmMain::followCard(KartonAdd *card)
{
    if (card)
        connect(card, &KartonAdd::openTreatment, this, &frmMain::treatNewPatient, Qt::UniqueConnection);
}

void frmMain::treatNewPatient(const QString &egn, const QString &name)
{
    treatmentui::openTreatment(egn, name, QStringLiteral("New"), this);
}

void frmMain::wire(const QString &name, std::function<void()> command)
{
    QAction *item = action(name);
    Q_ASSERT(item);
    // Noted first: F1 in a file dialog or question of the command finds the item's page.
    connect(item, &QAction::triggered, this,
            [this, item] { m_windowHelp->noteWork(item->property("helpContext").toInt()); });
    connect(item, &QAction::triggered, this, std::move(command));
    m_wired.insert(name);
}

// An item the system's own menu does not have, placed in a menu right after `before`.
void frmMain::insertItem(QMenu *menu, QAction *before, const AddedItem &added, std::function<void()> command)
{
    const QList<QAction *> items = menu->actions();
    const qsizetype after = items.indexOf(before) + 1;
    auto *item = new QAction(QString::fromUtf8(added.caption), menu);
    item->setObjectName(QString::fromLatin1(added.name));
    item->setProperty("helpContext", added.helpContext);
    menu->insertAction(after < items.size() ? items.at(after) : nullptr, item);
    m_actions.insert(item->objectName(), item);
    wire(item->objectName(), std::move(command));
}
