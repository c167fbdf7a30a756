// Which menu item runs which command. An item that is not wired here stays on the menu,
// disabled, until its screen is part of the program.
#include "shell/ui/frmMain.h"

#include <QAction>

void frmMain::connectCommands()
{
    wire(QStringLiteral("mnuExit"), [this] { exitProgram(); });
    wire(QStringLiteral("mnuCahgePass"), [this] { changePassword(); });
    wire(QStringLiteral("mnuHelpContents"), [this] { showHelp(0); });
    wire(QStringLiteral("mnuHelpUpdate"), [this] { openSupportPage(); });
    wire(QStringLiteral("mnuHelpAbout"), [this] { showAbout(); });
    connect(action(QStringLiteral("mnuViewButton")), &QAction::triggered, this, &frmMain::toggleButtons);
    connect(action(QStringLiteral("mnuViewTime")), &QAction::triggered, this, &frmMain::toggleTime);
}

void frmMain::wire(const QString &name, std::function<void()> command)
{
    QAction *item = action(name);
    Q_ASSERT(item);
    connect(item, &QAction::triggered, this, std::move(command));
    m_wired.insert(name);
}
