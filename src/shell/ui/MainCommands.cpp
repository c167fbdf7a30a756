// Which menu item runs which command. An item that is not wired here stays on the menu,
// disabled, until its screen is part of the program.
#include "shell/ui/frmMain.h"

#include "admin/ui/Cenoraz.h"
#include "admin/ui/Grafic.h"
#include "maintenance/ui/LegacyTakeoverScreen.h"
#include "maintenance/ui/ZoksImportScreen.h"
#include "maintenance/ui/MaintenanceCommands.h"
#include "patients/ui/KartonAdd.h"
#include "patients/ui/KorEGN.h"
#include "patients/ui/SeekName.h"
#include "treatment/ui/DenHelp.h"

#include <QAction>
#include <QMenu>

namespace {

// The treatment window of a patient. Opened from the name search, it closes the search with it.
void openTreatment(const QString &egn, const QString &name, const QString &openMode, QWidget *owner)
{
    DenHelp *window = DenHelp::open(egn, name, openMode, owner);
    if (!window)
        return;
    // The one treatment window is opened again and again: one connection serves every opening.
    QObject::disconnect(window, &DenHelp::closed, owner, nullptr);
    QObject::connect(window, &DenHelp::closed, owner, [](const QString &closedMode) {
        if (closedMode != u"New")
            SeekName::closeOpen();
    });
}

// The take-over of an earlier edition's practice is no item of the system's own menu: it stands
// in "Служебна" after "Зареждане на данни", beside the other way of bringing data in.
void addTakeOverCommand(QMenu *service, QAction *restore, QWidget *owner)
{
    const QList<QAction *> items = service->actions();
    const qsizetype after = items.indexOf(restore) + 1;
    auto *takeOver = new QAction(QStringLiteral("Пренасяне от стара версия"), service);
    takeOver->setObjectName(QStringLiteral("mnuSlgLegacy"));
    service->insertAction(after < items.size() ? items.at(after) : nullptr, takeOver);
    QObject::connect(takeOver, &QAction::triggered, owner, [owner] { legacyscreen::TakeOverOldPractice(owner); });
}

} // namespace

void frmMain::connectCommands()
{
    wire(QStringLiteral("mnuPacDen"), [this] { openSearch(2); });
    wire(QStringLiteral("mnuPacKor"), [this] { openSearch(1); });
    wire(QStringLiteral("mnuPacKorEGN"), [this] { KorEGN::open(this); });
    wire(QStringLiteral("mnuPacReg"), [this] { followCard(KartonAdd::openNew(this)); });
    wire(QStringLiteral("mnuPacZOKC"), [this] { zoksscreen::ImportFromZoks(this); });
    addTakeOverCommand(action(QStringLiteral("mnuSlg"))->menu(), action(QStringLiteral("mnuSlgOpen")), this);
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
            openTreatment(egn, name, QStringLiteral("Edit"), this);
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
    openTreatment(egn, name, QStringLiteral("New"), this);
}

void frmMain::wire(const QString &name, std::function<void()> command)
{
    QAction *item = action(name);
    Q_ASSERT(item);
    connect(item, &QAction::triggered, this, std::move(command));
    m_wired.insert(name);
}
