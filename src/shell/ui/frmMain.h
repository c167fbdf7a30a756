#pragma once

#include <QHash>
#include <QMainWindow>
#include <QSet>

#include <functional>

class ChangePassword;
class KartonAdd;
class HelpWindow;
class QMenu;
class QToolBar;
class WindowHelp;
class TimeDay;

// The main window: caption with version and doctor, the whole menu, the toolbar, the clock
// and the help. Every menu item carries the system's name as objectName; a command whose
// screen is not part of the program yet stays on the menu, disabled.
class frmMain final : public QMainWindow
{
    Q_OBJECT
public:
    explicit frmMain(const QString &helpFolder, QWidget *parent = nullptr);
    explicit frmMain(QWidget *parent = nullptr);

    // The menu item or top-level menu of that name (mnuPacDen, mnuView ...), or nullptr.
    QAction *action(const QString &name) const;
    // Opens the help window at the page of a help context number; 0 opens the contents.
    void showHelp(int context);

    static QString caption(); // "Велмората X.Y.Z - д-р <name>"

    // Closes the windows opened from this one, each by its own close(), so that each asks over
    // its unsaved typing; false, with the rest left open, when one of them stays.
    bool closeOpenWindows();

protected:
    void changeEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // MainMenu.cpp: the menu from its table, and the start states once the commands are wired.
    void buildMenu();
    void applyStartStates();
    // MainToolBar.cpp
    void buildToolBar();
    // MainCommands.cpp: which item opens which screen, one line each.
    void connectCommands();
    // Connects an item to its command and, unless its start state keeps it disabled, enables it.
    void wire(const QString &name, std::function<void()> command);
    struct AddedItem final
    {
        const char *name;
        const char *caption;
        int helpContext;
    };
    void insertItem(QMenu *menu, QAction *before, const AddedItem &added, std::function<void()> command);
    // The name search for a purpose (1 correction, 2 treatment, 3 inquiry).
    void openSearch(int purpose);
    // MainPrints.cpp: the patient's record of the inquiry, the diary page of a chosen day.
    void printRecord(const QString &egn);
    void printDiaryPage();
    // Wires a card that was opened so that, stored as new, it opens the treatment window.
    void followCard(KartonAdd *card);
    void treatNewPatient(const QString &egn, const QString &name);

    void toggleButtons(bool checked);
    void toggleTime(bool checked);
    void exitProgram();
    void changePassword();
    void openSupportPage();
    void showAbout();
    void recalcMinutes();
    void saveGeometryToSettings();
    int helpContextAt(QObject *menu) const;

    QString m_helpFolder;
    QHash<QString, QAction *> m_actions;
    QSet<QString> m_wired;
    QToolBar *m_toolBar = nullptr;
    TimeDay *m_timeDay = nullptr;
    HelpWindow *m_help = nullptr;
    WindowHelp *m_windowHelp = nullptr;
    ChangePassword *m_changePassword = nullptr; // kept, only hidden between openings
    QString m_shownMinutesFailure;
    bool m_shownBefore = false;
};
