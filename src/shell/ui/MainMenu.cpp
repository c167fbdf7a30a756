// The menu of the main window, built from one table: items in order with their captions,
// keys, start states and help context numbers.
#include "shell/ui/frmMain.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

namespace {

enum class Row { Menu, Item, Separator };

enum class Start {
    Command,       // enabled once its command is wired
    NoCommand,     // on the menu, enabled, and does nothing
    AlwaysOff,     // on the menu, disabled in every run, no command
    OffAtLoad,     // has a command, but the window keeps it disabled
    HiddenAtLoad,  // disabled and hidden
    Checked,       // a check mark that the command flips
};

struct MenuRow final
{
    Row row;
    const char *name = "";
    const char *caption = "";
    const char *key = "";
    Start start = Start::Command;
    int helpContext = 0;
};

constexpr MenuRow separator{Row::Separator};

const MenuRow menuRows[] = {
    {Row::Menu, "mnuPac", "Пациенти", "", Start::NoCommand, 34},
    {Row::Item, "mnuPacDen", "Стоматологична помощ", "F2", Start::Command, 6},
    {Row::Item, "mnuPacMed", "Медицинска помощ", "", Start::AlwaysOff},
    separator,
    {Row::Item, "mnuPacKor", "Корекция", "F4", Start::Command, 7},
    {Row::Item, "mnuPacKorEGN", "Корекция ЕГН", "", Start::Command, 51},
    separator,
    {Row::Item, "mnuPacReg", "Регистрация", "Ctrl+N", Start::Command, 8},
    {Row::Item, "mnuPacZOKC", "Добавяне от ЗОКС", "", Start::Command, 52},
    separator,
    {Row::Item, "mnuExit", "Изход", "Ctrl+Z", Start::Command},

    {Row::Menu, "mnuOtcet", "Справки", "", Start::NoCommand, 35},
    {Row::Item, "mnuOtPac", "Пациент", "", Start::Command, 9},
    {Row::Item, "mnuOtDati", "Дати...", "", Start::AlwaysOff},
    separator,
    {Row::Item, "mnuOtchetWork", "Дейности към ЗОК", "Ctrl+W", Start::Command, 10},
    {Row::Item, "mnuOtchetWorkGod", "Справка за ЗОК", "", Start::Command, 54},
    {Row::Item, "mnuOtMat", "Разходи", "", Start::Command, 55},
    separator,
    {Row::Item, "mnuOtchetExportXML", "Експорт XML", "", Start::Command, 56},
    {Row::Item, "mnuOtSpecif", "Спецификация", "", Start::Command, 57},
    separator,
    {Row::Item, "mnuOtSpGraf", "График за прегледи", "Ctrl+G", Start::Command, 11},

    {Row::Menu, "mnuSlg", "Служебна", "", Start::NoCommand, 36},
    {Row::Item, "mnuSlgMed", "Лекари", "", Start::OffAtLoad},
    {Row::Item, "mnuSlgCeno", "Ценоразпис", "", Start::Command, 12},
    {Row::Item, "mnuSlgUnit", "Лечебно заведение", "", Start::Command, 59},
    separator,
    {Row::Item, "mnuSlgGraf", "График за прегледи", "", Start::Command, 13},
    separator,
    {Row::Item, "mnuSlgSchet", "Осчетоводяване", "", Start::Command, 14},
    separator,
    {Row::Item, "mnuSlgSave", "Съхраняване на данни", "", Start::Command, 44},
    {Row::Item, "mnuSlgOpen", "Зареждане на данни", "", Start::Command, 45},
    separator,
    {Row::Item, "mnuSlgUtil", "Поправяне на БД", "", Start::Command, 60},
    {Row::Item, "mnuSlgClean", "Изтриване на БД", "", Start::HiddenAtLoad, 46},
    separator,
    {Row::Item, "mnuCahgePass", "Смяна на паролата", "", Start::Command, 61},

    {Row::Menu, "mnuView", "Прозорец", "", Start::NoCommand, 37},
    {Row::Item, "mnuViewButton", "Бутони", "", Start::Checked, 15},
    {Row::Item, "mnuViewTime", "Време", "", Start::Checked, 16},

    {Row::Menu, "mnuHelp", "Помощ", "", Start::NoCommand, 38},
    {Row::Item, "mnuHelpContents", "Съдържание", "", Start::Command, 17},
    separator,
    {Row::Item, "mnuHelpUpdate", "Обновяване", "", Start::Command},
    separator,
    {Row::Item, "mnuHelpAbout", "За програмата", "", Start::Command, 18},
    {Row::Item, "mnuHelpAutor", "За автора", "", Start::NoCommand},
};

void applyStart(QAction *action, Start start, bool wired)
{
    switch (start) {
    case Start::Command:
        action->setEnabled(wired);
        break;
    case Start::NoCommand:
        action->setEnabled(true);
        break;
    case Start::AlwaysOff:
    case Start::OffAtLoad:
        action->setEnabled(false);
        break;
    case Start::HiddenAtLoad:
        action->setEnabled(false);
        action->setVisible(false);
        break;
    case Start::Checked:
        action->setCheckable(true);
        action->setChecked(true);
        action->setEnabled(true);
        break;
    }
}

} // namespace

void frmMain::buildMenu()
{
    QMenu *menu = nullptr;
    for (const MenuRow &row : menuRows) {
        QAction *action = nullptr;
        if (row.row == Row::Separator) {
            menu->addSeparator();
            continue;
        }
        if (row.row == Row::Menu) {
            menu = menuBar()->addMenu(QString::fromUtf8(row.caption));
            menu->setObjectName(QString::fromLatin1(row.name));
            menu->installEventFilter(this);
            action = menu->menuAction();
        } else {
            action = menu->addAction(QString::fromUtf8(row.caption));
            action->setShortcut(QKeySequence(QString::fromLatin1(row.key)));
        }
        action->setObjectName(QString::fromLatin1(row.name));
        action->setProperty("helpContext", row.helpContext);
        m_actions.insert(action->objectName(), action);
    }
}

void frmMain::applyStartStates()
{
    for (const MenuRow &row : menuRows)
        if (row.row != Row::Separator)
            applyStart(action(QString::fromLatin1(row.name)), row.start, m_wired.contains(QString::fromLatin1(row.name)));
}
