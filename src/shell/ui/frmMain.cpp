#include "shell/ui/frmMain.h"

#include "Version.h"
#include "base/Dialogs.h"
#include "base/RunState.h"
#include "base/Settings.h"
#include "base/ui/WindowPlacement.h"
#include "shell/ui/About.h"
#include "shell/ui/ChangePassword.h"
#include "shell/ui/HelpWindow.h"
#include "shell/ui/PlainMessage.h"
#include "shell/ui/TimeDay.h"
#include "shell/ui/WindowHelp.h"
#include "store/Scratch.h"
#include "store/Sql.h"
#include "treatment/Minutes.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QKeyEvent>
#include <QMenu>
#include <QPointer>
#include <QToolBar>
#include <QUrl>

namespace {

const QString SupportPage = QStringLiteral("https://velmorata.bg/podkrepa");

} // namespace

frmMain::frmMain(QWidget *parent)
    : frmMain(HelpWindow::folderBesideProgram(), parent)
{
}

frmMain::frmMain(const QString &helpFolder, QWidget *parent)
    : QMainWindow(parent)
    , m_helpFolder(helpFolder)
{
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(QStringLiteral("Велмората"));
    setWindowIcon(QIcon(QStringLiteral(":/src/shell/ui/icons/Velmorata.png")));
    setContextMenuPolicy(Qt::PreventContextMenu);
    m_windowHelp = new WindowHelp([this](int context) { showHelp(context); }, this);
    qApp->installEventFilter(m_windowHelp);
    buildMenu();
    connectCommands();
    applyStartStates();
    buildToolBar();

    // F1 outside the menus opens the contents.
    auto *help = new QAction(this);
    help->setShortcut(Qt::Key_F1);
    connect(help, &QAction::triggered, this, [this] { showHelp(0); });
    addAction(help);

    setGeometry(Settings::defaultValue(Settings::Key::MainLeft).toInt(),
                Settings::defaultValue(Settings::Key::MainTop).toInt(),
                Settings::defaultValue(Settings::Key::MainWidth).toInt(),
                Settings::defaultValue(Settings::Key::MainHeight).toInt());
    setWindowTitle(caption());
    keepOnScreen(this);
}

QAction *frmMain::action(const QString &name) const { return m_actions.value(name); }

QString frmMain::caption()
{
    return QStringLiteral("Велмората %1.%2.%3 - д-р %4")
        .arg(version::Major)
        .arg(version::Minor)
        .arg(version::Revision)
        .arg(run().CurrentMedicName);
}

// The clock's item starts checked, so the clock is shown with the window the first time.
void frmMain::showEvent(QShowEvent *event)
{
    QMainWindow::showEvent(event);
    if (m_shownBefore)
        return;
    m_shownBefore = true;
    if (QAction *clock = action(QStringLiteral("mnuViewTime")); clock && clock->isChecked())
        toggleTime(true);
}

void frmMain::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        recalcMinutes();
    QMainWindow::changeEvent(event);
}

// The day's minutes are counted anew at every return to the window. A count that fails would
// fail again at the next activation, which the message itself brings about, so each failure
// is told once.
void frmMain::recalcMinutes()
{
    const Outcome recalculated = RecalcMinutesLeft(store::clinicDb());
    if (recalculated) {
        m_shownMinutesFailure.clear();
        return;
    }
    if (recalculated.error() == m_shownMinutesFailure)
        return;
    m_shownMinutesFailure = recalculated.error();
    dialogs().information(recalculated.error());
}

// Closing the window itself is the orderly end: the scratch file goes, and the geometry is
// kept unless the window lies minimized.
void frmMain::closeEvent(QCloseEvent *event)
{
    if (!closeOpenWindows()) {
        event->ignore();
        return;
    }
    store::DeleteScratchFile();
    if (!isMinimized())
        saveGeometryToSettings();
    event->accept();
}

void frmMain::saveGeometryToSettings()
{
    const QRect frame = frameGeometry();
    Settings settings;
    settings.setValue(Settings::Key::MainLeft, QString::number(frame.x()));
    settings.setValue(Settings::Key::MainTop, QString::number(frame.y()));
    settings.setValue(Settings::Key::MainWidth, QString::number(frame.width()));
    settings.setValue(Settings::Key::MainHeight, QString::number(frame.height()));
    if (!settings.sync())
        dialogs().information(QStringLiteral("Размерите на прозореца не можаха да се запишат във файла ")
                              + settings.fileName() + u'.');
}

void frmMain::toggleButtons(bool checked) { m_toolBar->setVisible(checked); }

void frmMain::toggleTime(bool checked)
{
    if (!checked) {
        if (m_timeDay)
            m_timeDay->hide();
        return;
    }
    if (!m_timeDay) {
        m_timeDay = new TimeDay(this);
        m_timeDay->move(geometry().right() - m_timeDay->width() - 24, geometry().top() + 72);
    }
    m_timeDay->show();
    keepOnScreen(m_timeDay);
    m_timeDay->raise();
}

void frmMain::exitProgram()
{
    // The exit dialog ends the run at once: no orderly close, the scratch file stays. The open
    // windows still close one by one, so that none drops typing unasked.
    if (dialogs().confirmExit() && closeOpenWindows())
        QCoreApplication::exit(0);
}

bool frmMain::closeOpenWindows()
{
    QList<QPointer<QWidget>> open;
    for (QWidget *child : findChildren<QWidget *>())
        if (child->isWindow() && child->isVisible())
            open << child;
    for (const QPointer<QWidget> &window : std::as_const(open))
        if (window && window->isVisible() && !window->close())
            return false;
    return true;
}

void frmMain::changePassword()
{
    if (!m_changePassword)
        m_changePassword = new ChangePassword(this);
    m_changePassword->exec();
}

void frmMain::openSupportPage()
{
    if (!QDesktopServices::openUrl(QUrl(SupportPage)))
        dialogs().information(QStringLiteral("Страницата за поддръжка %1 не може да се отвори: "
                                             "няма настроен уеб браузър.")
                                  .arg(SupportPage));
}

void frmMain::showAbout()
{
    About about(this);
    about.exec();
}

void frmMain::showHelp(int context)
{
    const QString page = HelpWindow::pagePath(m_helpFolder, context);
    if (page.isEmpty()) {
        plainMessage(this, windowTitle(), QStringLiteral("Файла с описанието на програмата липсва!"),
                     QMessageBox::Information);
        return;
    }
    if (!m_help) {
        m_help = new HelpWindow(this);
        m_help->move(geometry().topLeft() + QPoint(60, 60));
    }
    m_help->showPage(page);
    bringForward(m_help);
}

// F1 on an open menu: the page of the item under the pointer, or else of the menu itself.
bool frmMain::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent *>(event)->key() == Qt::Key_F1) {
        const int context = helpContextAt(watched);
        if (auto *menu = qobject_cast<QMenu *>(watched))
            menu->close();
        showHelp(context);
        return true;
    }
    return QMainWindow::eventFilter(watched, event);
}

int frmMain::helpContextAt(QObject *watched) const
{
    auto *menu = qobject_cast<QMenu *>(watched);
    if (!menu)
        return 0;
    if (QAction *item = menu->activeAction(); item && item->property("helpContext").toInt() > 0)
        return item->property("helpContext").toInt();
    return menu->menuAction()->property("helpContext").toInt();
}
