#include "PlainBoxes.h"
#include "TestPractice.h"

#include "Version.h"
#include "base/RunState.h"
#include "patients/ui/KartonAdd.h"
#include "shell/ui/HelpWindow.h"
#include "shell/ui/TimeDay.h"
#include "shell/ui/frmMain.h"
#include "store/Scratch.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QMenu>
#include <QMenuBar>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolBar>

namespace {

const QString HelpMissing = QStringLiteral("Файла с описанието на програмата липсва!");

QString sourceHelpFolder() { return QFINDTESTDATA("../../help"); }

QString storedSetting(const QString &key)
{
    return QSettings(QSettings::IniFormat, QSettings::UserScope, QCoreApplication::organizationName(),
                     QCoreApplication::applicationName())
        .value(QStringLiteral("Settings/") + key)
        .toString();
}

// Runs `act`, then closes the modal window it opened; returns that window's title.
QString titleOfModal(const std::function<void()> &act)
{
    QString title;
    QTimer::singleShot(0, [&title] {
        if (QWidget *modal = QApplication::activeModalWidget()) {
            title = modal->windowTitle();
            modal->close();
        }
    });
    act();
    return title;
}

// A new card with a name typed on it, opened from the window as the menu opens it.
KartonAdd *cardWithTyping(frmMain &window)
{
    window.action(QStringLiteral("mnuPacReg"))->trigger();
    KartonAdd *card = KartonAdd::openCard();
    card->findChild<QLineEdit *>(QStringLiteral("Text4"))->setText(QStringLiteral("пеницилин"));
    return card;
}

} // namespace

class tst_MainWindow final : public QObject
{
    Q_OBJECT
private:
    QTemporaryDir m_settings;

private slots:
    void initTestCase()
    {
        QCoreApplication::setOrganizationName(QStringLiteral("Velmorata"));
        QCoreApplication::setApplicationName(QStringLiteral("Velmorata"));
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings.path());
    }

    void init()
    {
        QFile::remove(m_settings.path() + QStringLiteral("/Velmorata/Velmorata.ini"));
    }

    void captionAndMenu()
    {
        TestPractice practice;
        run().CurrentMedicName = QStringLiteral("Иванов");
        frmMain window(sourceHelpFolder());
        QCOMPARE(window.windowTitle(), QStringLiteral("Велмората %1 - д-р Иванов").arg(QString::fromLatin1(version::Text)));
        // Each key reaches one item only.
        QHash<QString, QString> itemOfKey;
        for (QAction *item : window.findChildren<QAction *>()) {
            const QString key = item->shortcut().toString();
            if (key.isEmpty())
                continue;
            QVERIFY2(!itemOfKey.contains(key), qPrintable(key));
            itemOfKey.insert(key, item->objectName());
        }
        QCOMPARE(itemOfKey.value(QStringLiteral("Ctrl+N")), QStringLiteral("mnuPacReg"));
        QCOMPARE(itemOfKey.value(QStringLiteral("F2")), QStringLiteral("mnuPacDen"));
    }

    // The doctors' form and the clean-out stay out of reach; the two view items start checked,
    // and the buttons' item hides and shows the bar.
    void startStates()
    {
        TestPractice practice;
        frmMain window(sourceHelpFolder());
        window.show();
        for (const char *off : {"mnuPacMed", "mnuOtDati", "mnuSlgMed"}) {
            QVERIFY2(!window.action(QString::fromLatin1(off))->isEnabled(), off);
            QVERIFY2(window.action(QString::fromLatin1(off))->isVisible(), off);
        }
        QVERIFY(!window.action(QStringLiteral("mnuSlgClean"))->isEnabled());
        QVERIFY(!window.action(QStringLiteral("mnuSlgClean"))->isVisible());
        for (const char *checked : {"mnuViewButton", "mnuViewTime"})
            QVERIFY2(window.action(QString::fromLatin1(checked))->isChecked(), checked);
        auto *bar = window.findChild<QToolBar *>(QStringLiteral("ToolBar"));
        for (const bool shown : {false, true}) {
            window.action(QStringLiteral("mnuViewButton"))->trigger();
            QCOMPARE(window.action(QStringLiteral("mnuViewButton"))->isChecked(), shown);
            QCOMPARE(bar->isVisible(), shown);
        }
    }

    // Each button follows its menu item's state and runs that item.
    void toolbar()
    {
        TestPractice practice;
        frmMain window(sourceHelpFolder());
        auto *bar = window.findChild<QToolBar *>(QStringLiteral("ToolBar"));
        int buttons = 0;
        for (QAction *button : bar->actions()) {
            if (button->isSeparator())
                continue;
            ++buttons;
            QVERIFY2(!button->icon().pixmap(24, 24).isNull(), qPrintable(button->objectName()));
            QList<std::pair<QAction *, std::shared_ptr<QSignalSpy>>> items;
            for (QAction *item : window.findChildren<QAction *>())
                if (item->objectName().startsWith(QStringLiteral("mnu"))) {
                    disconnect(item, &QAction::triggered, &window, nullptr); // count the trigger, open no screen
                    item->setEnabled(true); // a screen that lands enables its item
                    items.append({item, std::make_shared<QSignalSpy>(item, &QAction::triggered)});
                }
            button->trigger();
            QList<QAction *> twins;
            for (const auto &[item, triggered] : items)
                if (triggered->size() == 1)
                    twins << item;
            QCOMPARE(twins.size(), 1);
            twins.first()->setEnabled(false);
            QVERIFY(!button->isEnabled());
            twins.first()->setEnabled(true);
            QVERIFY(button->isEnabled());
        }
        QCOMPARE(buttons, 7);
    }

    void clockToggle()
    {
        TestPractice practice;
        frmMain window(sourceHelpFolder());
        window.show();
        QAction *item = window.action(QStringLiteral("mnuViewTime"));
        auto clockShown = [&window] {
            auto *clock = window.findChild<TimeDay *>();
            return clock && clock->isVisible();
        };
        QVERIFY(item->isChecked());
        QVERIFY(!clockShown());
        item->trigger(); // takes the mark off a clock that was not showing
        QVERIFY(!item->isChecked());
        QVERIFY(!clockShown());
        run().MinutesLeft = 123;
        item->trigger();
        QVERIFY(item->isChecked());
        QVERIFY(clockShown());
        QCOMPARE(window.findChild<TimeDay *>()->findChild<QLabel *>(QStringLiteral("Label1"))->text(), QStringLiteral("123"));

        window.findChild<TimeDay *>()->close(); // closed by the user: the mark stays
        QVERIFY(item->isChecked());
        item->trigger();
        QVERIFY(!item->isChecked());
        QVERIFY(!clockShown());
        item->trigger();
        QVERIFY(clockShown());
    }

    // The clock has no timer: a new count shows only when the clock itself is activated again.
    void clockKeepsItsNumberUntilActivated()
    {
        TestPractice practice;
        frmMain window(sourceHelpFolder());
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QAction *item = window.action(QStringLiteral("mnuViewTime"));
        item->trigger();
        item->trigger();
        auto *clock = window.findChild<TimeDay *>();
        QVERIFY(clock && clock->isVisible());
        auto *label = clock->findChild<QLabel *>(QStringLiteral("Label1"));
        QCOMPARE(label->text(), QStringLiteral("360"));

        // Every doctor's services of the day count.
        practice.addService(QStringLiteral("7501010001"), QDate(2026, 3, 15), QStringLiteral("333"), QStringLiteral("1"));
        practice.addService(QStringLiteral("7501010001"), QDate(2026, 3, 15), QStringLiteral("301Б"), QStringLiteral("2"));
        QWidget elsewhere; // another window takes the activation, and the main window gets it back
        elsewhere.show();
        elsewhere.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&elsewhere));
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QCOMPARE(int(run().MinutesLeft), 360 - 141 - 26);
        QCOMPARE(label->text(), QStringLiteral("360"));
        clock->activateWindow();
        QTRY_COMPARE(label->text(), QStringLiteral("193"));
    }

    void overflowIsToldOnce()
    {
        TestPractice practice;
        store::Transaction transaction(store::clinicDb());
        for (int i = 0; i < 240; ++i)
            practice.addService(QStringLiteral("7501010001"), QDate(2026, 3, 15), QStringLiteral("333"), QStringLiteral("1"));
        transaction.commit();
        frmMain window(sourceHelpFolder());
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QCOMPARE(practice.dialogs().messages.size(), 1);
        QVERIFY(practice.dialogs().messages.first().contains(QStringLiteral("Минутите")));
        // Coming back to the window does not repeat the same message.
        QEvent deactivate(QEvent::ActivationChange);
        QApplication::sendEvent(&window, &deactivate);
        QCOMPARE(practice.dialogs().messages.size(), 1);
    }

    // The scratch file goes and the frame is stored, over a damaged settings file too.
    void orderlyClose_data()
    {
        QTest::addColumn<bool>("withScratch");
        QTest::addColumn<QByteArray>("settingsFile");
        QTest::newRow("scratch file present") << true << QByteArray();
        QTest::newRow("no scratch file") << false << QByteArray();
        QTest::newRow("damaged settings file") << true << QByteArray("[Settings\n\0\xff\xfe=MainLeft\n=\n[[[", 28);
    }
    void orderlyClose()
    {
        QFETCH(bool, withScratch);
        QFETCH(QByteArray, settingsFile);
        TestPractice practice;
        if (!settingsFile.isEmpty()) {
            const QString file = m_settings.path() + QStringLiteral("/Velmorata/Velmorata.ini");
            QVERIFY(QDir().mkpath(QFileInfo(file).path()));
            QFile damaged(file);
            QVERIFY(damaged.open(QIODevice::WriteOnly));
            damaged.write(settingsFile);
        }
        if (withScratch)
            QVERIFY(store::CreateScratchTable(QStringLiteral("TempWork")).ok());
        QCOMPARE(QFile::exists(store::paths().scratchDb), withScratch);
        frmMain window(sourceHelpFolder());
        window.show();
        window.setGeometry(60, 70, 800, 600);
        QVERIFY(window.close());
        QVERIFY(!QFile::exists(store::paths().scratchDb));
        const QRect frame = window.frameGeometry();
        QCOMPARE(storedSetting(QStringLiteral("MainLeft")), QString::number(frame.x()));
        QCOMPARE(storedSetting(QStringLiteral("MainTop")), QString::number(frame.y()));
        QCOMPARE(storedSetting(QStringLiteral("MainWidth")), QString::number(frame.width()));
        QCOMPARE(storedSetting(QStringLiteral("MainHeight")), QString::number(frame.height()));
        // The sizes were stored, damaged file or not: nobody is told otherwise.
        QVERIFY2(practice.dialogs().messages.isEmpty(), qPrintable(practice.dialogs().messages.join(u'|')));
    }

    void minimizedCloseKeepsGeometry()
    {
        TestPractice practice;
        {
            QSettings before(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Velmorata"), QStringLiteral("Velmorata"));
            before.setValue(QStringLiteral("Settings/MainWidth"), QStringLiteral("777"));
        }
        QVERIFY(store::CreateScratchTable(QStringLiteral("TempWork")).ok());
        frmMain window(sourceHelpFolder());
        window.showMinimized();
        QVERIFY(window.isMinimized());
        QVERIFY(window.close());
        QVERIFY(!QFile::exists(store::paths().scratchDb));
        QCOMPARE(storedSetting(QStringLiteral("MainWidth")), QStringLiteral("777"));
        QVERIFY(storedSetting(QStringLiteral("MainLeft")).isEmpty());
    }

    void exitDialog()
    {
        TestPractice practice;
        QVERIFY(store::CreateScratchTable(QStringLiteral("TempWork")).ok());
        frmMain window(sourceHelpFolder());
        window.show();
        practice.dialogs().exitAnswers = {false};
        window.action(QStringLiteral("mnuExit"))->trigger();
        QVERIFY(window.isVisible());

        // "ДА" ends the run at once: no orderly close, so the scratch file and settings stay as they were.
        practice.dialogs().exitAnswers = {true};
        QTimer::singleShot(0, &window, [&window] { window.action(QStringLiteral("mnuExit"))->trigger(); });
        QTimer::singleShot(5000, [] { QCoreApplication::exit(1); });
        QCOMPARE(QCoreApplication::exec(), 0);
        QVERIFY(QFile::exists(store::paths().scratchDb));
        QVERIFY(storedSetting(QStringLiteral("MainLeft")).isEmpty());
        store::DeleteScratchFile();
    }

    void helpPages()
    {
        TestPractice practice;
        frmMain window(sourceHelpFolder());
        // Every help context of the menu has its own page.
        for (QAction *item : window.findChildren<QAction *>()) {
            const int context = item->property("helpContext").toInt();
            if (context > 0)
                QVERIFY2(HelpWindow::pagePath(sourceHelpFolder(), context).endsWith(QStringLiteral("/%1.html").arg(context)),
                         qPrintable(item->objectName()));
        }
        window.action(QStringLiteral("mnuHelpContents"))->trigger();
        auto *help = window.findChild<HelpWindow *>();
        QVERIFY(help && help->isVisible());
        QVERIFY(help->currentPage().endsWith(QStringLiteral("/index.html")));
        QVERIFY(practice.dialogs().messages.isEmpty());
        // A close button of its own.
        QTest::mouseClick(help->findChild<QPushButton *>(QStringLiteral("cmdClose")), Qt::LeftButton);
        QVERIFY(!help->isVisible());
    }

    void helpFolderMissing()
    {
        TestPractice practice;
        QTemporaryDir empty;
        run().CurrentMedicName = QStringLiteral("Иванов");
        frmMain window(empty.path() + QStringLiteral("/help"));
        window.show();
        const QList<PlainBox> boxes =
            plainBoxesShownBy([&window] { window.action(QStringLiteral("mnuHelpContents"))->trigger(); });
        // A plain box under the window's caption, with the information icon; not the "Информация" dialog.
        QCOMPARE(boxes.size(), 1);
        QCOMPARE(boxes.first().title, window.windowTitle());
        QVERIFY(boxes.first().title.endsWith(QStringLiteral(" - д-р Иванов")));
        QCOMPARE(boxes.first().text, HelpMissing);
        QCOMPARE(boxes.first().icon, QMessageBox::Information);
        QVERIFY(practice.dialogs().messages.isEmpty());
        QVERIFY(!window.findChild<HelpWindow *>());
    }

    void f1OnAMenuItem()
    {
        TestPractice practice;
        frmMain window(sourceHelpFolder());
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        auto pressF1On = [&window](const char *menuName, const char *itemName) {
            auto *menu = window.findChild<QMenu *>(QString::fromLatin1(menuName));
            menu->popup(window.mapToGlobal(QPoint(10, 10)));
            menu->setActiveAction(window.action(QString::fromLatin1(itemName)));
            QTest::keyClick(menu, Qt::Key_F1);
            QVERIFY(!menu->isVisible());
        };
        pressF1On("mnuView", "mnuViewTime");
        auto *help = window.findChild<HelpWindow *>();
        QVERIFY(help);
        QVERIFY2(help->currentPage().endsWith(QStringLiteral("/16.html")), qPrintable(help->currentPage()));
        // An item without a page of its own opens the page of its menu.
        pressF1On("mnuPac", "mnuExit");
        QVERIFY2(help->currentPage().endsWith(QStringLiteral("/34.html")), qPrintable(help->currentPage()));
    }

    void aboutAndChangePasswordOpen()
    {
        TestPractice practice;
        practice.addDoctor(QStringLiteral("Иванов"), QStringLiteral("1"));
        frmMain window(sourceHelpFolder());
        window.show();
        QCOMPARE(titleOfModal([&] { window.action(QStringLiteral("mnuHelpAbout"))->trigger(); }), QStringLiteral("Програма..."));
        QCOMPARE(titleOfModal([&] { window.action(QStringLiteral("mnuCahgePass"))->trigger(); }),
                 QStringLiteral("Смяна на паролата"));
    }

    // "Изход" closes the open windows through their own close(): one that keeps its typing stops
    // the exit, and the run goes on.
    void exitClosesTheOpenWindowsFirst()
    {
        TestPractice practice;
        frmMain window(sourceHelpFolder());
        window.show();
        KartonAdd *card = cardWithTyping(window);
        QVERIFY(card->parentWidget() == &window);
        practice.dialogs().exitAnswers = {true};
        practice.dialogs().answers = {false};
        QTimer::singleShot(0, &window, [&window] { window.action(QStringLiteral("mnuExit"))->trigger(); });
        QTimer::singleShot(300, [] { QCoreApplication::exit(7); });
        QCOMPARE(QCoreApplication::exec(), 7);
        QCOMPARE(practice.dialogs().questions.size(), 1);
        QVERIFY(card->isVisible());

        practice.dialogs().exitAnswers = {true};
        practice.dialogs().answers = {true};
        QTimer::singleShot(0, &window, [&window] { window.action(QStringLiteral("mnuExit"))->trigger(); });
        QTimer::singleShot(5000, [] { QCoreApplication::exit(1); });
        QCOMPARE(QCoreApplication::exec(), 0);
        QVERIFY(!KartonAdd::openCard() || !KartonAdd::openCard()->isVisible());
    }

    void closeBoxAsksTheOpenWindows()
    {
        TestPractice practice;
        frmMain window(sourceHelpFolder());
        window.show();
        KartonAdd *card = cardWithTyping(window);
        practice.dialogs().answers = {false, true};
        QVERIFY(!window.close());
        QVERIFY(card->isVisible());
        QVERIFY(window.close());
        QCOMPARE(practice.dialogs().questions.size(), 2);
    }
};

QTEST_MAIN(tst_MainWindow)
#include "tst_MainWindow.moc"

