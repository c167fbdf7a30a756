// The toolbar of the main window: seven buttons, each the twin of a menu item.
#include "shell/ui/frmMain.h"

#include <QAction>
#include <QIcon>
#include <QToolBar>

namespace {

struct ButtonRow final
{
    const char *key;
    const char *tooltip;
    const char *picture;
    const char *menuItem;
    bool separatorAfter;
};

const ButtonRow buttonRows[] = {
    {"New", "Нов пациент", "New", "mnuPacReg", false},
    {"Edit", "Корекция на картон", "Edit", "mnuPacKor", true},
    {"Help", "Стоматологична помощ", "Help", "mnuPacDen", true},
    {"PrintZOK", "Печат на дейностите за ЗОК", "ZOK", "mnuOtchetWork", false},
    {"PrintGraf", "Печат на графика", "Graf", "mnuOtSpGraf", false},
    {"PrintPac", "Печат на картон", "Pac", "mnuOtPac", true},
    {"Grafik", "График на стоматолога", "Grafic", "mnuSlgGraf", false},
};

QIcon picture(const char *name)
{
    return QIcon(QStringLiteral(":/src/shell/ui/icons/%1.png").arg(QString::fromLatin1(name)));
}

} // namespace

void frmMain::buildToolBar()
{
    m_toolBar = addToolBar(QStringLiteral("ToolBar"));
    m_toolBar->setObjectName(QStringLiteral("ToolBar"));
    m_toolBar->setMovable(false);
    m_toolBar->setFloatable(false);
    m_toolBar->toggleViewAction()->setVisible(false); // "Бутони" alone shows and hides it
    m_toolBar->setIconSize(QSize(24, 24));
    for (const ButtonRow &row : buttonRows) {
        QAction *twin = action(QString::fromLatin1(row.menuItem));
        QAction *button = m_toolBar->addAction(picture(row.picture), QString::fromUtf8(row.tooltip));
        button->setObjectName(QString::fromLatin1(row.key));
        button->setToolTip(QString::fromUtf8(row.tooltip));
        button->setEnabled(twin->isEnabled());
        connect(button, &QAction::triggered, twin, &QAction::trigger);
        connect(twin, &QAction::changed, button, [button, twin] { button->setEnabled(twin->isEnabled()); });
        if (row.separatorAfter)
            m_toolBar->addSeparator();
    }
}
