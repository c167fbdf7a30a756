// The main window, its menu and the screens it opens, and the shared dialogs.
#include "OpenWindows.h"
#include "PlainBoxes.h"
#include "TestPractice.h"

#include "Version.h"
#include "base/RunState.h"
#include "base/ui/PrintPreview.h"
#include "patients/ui/KartonAdd.h"
#include "patients/ui/KorEGN.h"
#include "patients/ui/SeekName.h"
#include "shell/ui/HelpWindow.h"
#include "shell/ui/SharedDialogs.h"
#include "shell/ui/TimeDay.h"
#include "shell/ui/frmMain.h"
#include "store/Scratch.h"
#include "store/Sql.h"
#include "store/Store.h"
#include "treatment/ui/DenHelp.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolBar>

using namespace Qt::StringLiterals;

namespace {

const QString PatientName = u"Мария Иванова Петрова"_s;

QString sourceHelpFolder() { return QFINDTESTDATA("../../help"); }

QString storedSetting(const QString &key)
{
    return QSettings(QSettings::IniFormat, QSettings::UserScope, QCoreApplication::organizationName(),
                     QCoreApplication::applicationName())
        .value(u"Settings/"_s + key)
        .toString();
}

void trigger(frmMain &window, const QString &item) { window.action(item)->trigger(); }

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
    trigger(window, u"mnuPacReg"_s);
    KartonAdd *card = KartonAdd::openCard();
    card->findChild<QLineEdit *>(u"Text4"_s)->setText(u"пеницилин"_s);
    return card;
}

// "Изход" answered ДА, run in the event loop: 0 when the run ended, `stayed` when it went on.
int exitAnsweredYes(frmMain &window, int stayed)
{
    QTimer::singleShot(0, &window, [&window] { trigger(window, u"mnuExit"_s); });
    QTimer::singleShot(stayed == 1 ? 5000 : 300, [stayed] { QCoreApplication::exit(stayed); });
    return QCoreApplication::exec();
}

void closeAllBut(QWidget *kept)
{
    for (QWidget *other : QApplication::topLevelWidgets())
        if (other != kept && other->isVisible())
            other->close();
    QApplication::processEvents();
}

QPushButton *button(QWidget *dialog, const QString &name) { return dialog->findChild<QPushButton *>(name); }

} // namespace

class tst_MainWindow final : public QObject
{
    Q_OBJECT
private:
    QTemporaryDir m_settings;

private slots:
    void initTestCase()
    {
        QCoreApplication::setOrganizationName(u"Velmorata"_s);
        QCoreApplication::setApplicationName(u"Velmorata"_s);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings.path());
    }
    void init() { QFile::remove(m_settings.path() + u"/Velmorata/Velmorata.ini"_s); }
    void cleanup() { closeAllBut(nullptr); }

    // The caption names the version and the doctor; each key reaches one item only. The doctors'
    // form and the clean-out stay out of reach; the two view items start checked, and the
    // buttons' item hides and shows the bar.
    void captionMenuAndStartStates()
    {
        TestPractice practice;
        run().CurrentMedicName = u"Иванов"_s;
        frmMain window(sourceHelpFolder());
        window.show();
        QCOMPARE(window.windowTitle(), u"Велмората %1 - д-р Иванов"_s.arg(QString::fromLatin1(version::Text)));
        QHash<QString, QString> itemOfKey;
        for (QAction *item : window.findChildren<QAction *>()) {
            const QString key = item->shortcut().toString();
            QVERIFY2(key.isEmpty() || !itemOfKey.contains(key), qPrintable(key));
            if (!key.isEmpty())
                itemOfKey.insert(key, item->objectName());
        }
        QCOMPARE(itemOfKey.value(u"Ctrl+N"_s), u"mnuPacReg"_s);
        QCOMPARE(itemOfKey.value(u"F2"_s), u"mnuPacDen"_s);
        for (const char *off : {"mnuPacMed", "mnuOtDati", "mnuSlgMed"})
            QVERIFY2(!window.action(QString::fromLatin1(off))->isEnabled() &&
                         window.action(QString::fromLatin1(off))->isVisible(),
                     off);
        QVERIFY(!window.action(u"mnuSlgClean"_s)->isEnabled() && !window.action(u"mnuSlgClean"_s)->isVisible());
        QVERIFY(window.action(u"mnuViewButton"_s)->isChecked() && window.action(u"mnuViewTime"_s)->isChecked());
        auto *bar = window.findChild<QToolBar *>(u"ToolBar"_s);
        for (const bool shown : {false, true}) {
            trigger(window, u"mnuViewButton"_s);
            QCOMPARE(window.action(u"mnuViewButton"_s)->isChecked(), shown);
            QCOMPARE(bar->isVisible(), shown);
        }
    }

    // Each button follows its menu item's state and runs that item.
    void toolbar()
    {
        TestPractice practice;
        frmMain window(sourceHelpFolder());
        auto *bar = window.findChild<QToolBar *>(u"ToolBar"_s);
        int buttons = 0;
        for (QAction *button : bar->actions()) {
            if (button->isSeparator())
                continue;
            ++buttons;
            QVERIFY2(!button->icon().pixmap(24, 24).isNull(), qPrintable(button->objectName()));
            QList<std::pair<QAction *, std::shared_ptr<QSignalSpy>>> items;
            for (QAction *item : window.findChildren<QAction *>())
                if (item->objectName().startsWith(u"mnu"_s)) {
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

    // The clock has no timer: it shows the count of its last refresh, which its showing and its
    // own activation make. The main window recounts every doctor's services of the day when it
    // is activated. It is shown with the window, as its item starts checked; the view item's
    // mark follows the item, not a close of the clock.
    void clock()
    {
        TestPractice practice;
        frmMain window(sourceHelpFolder());
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QAction *item = window.action(u"mnuViewTime"_s);
        auto clockShown = [&window] {
            auto *clock = window.findChild<TimeDay *>();
            return clock && clock->isVisible();
        };
        QVERIFY(item->isChecked() && clockShown()); // the mark and the clock agree from the start
        trigger(window, u"mnuViewTime"_s);
        QVERIFY(!item->isChecked() && !clockShown());
        trigger(window, u"mnuViewTime"_s);
        QVERIFY(item->isChecked() && clockShown());
        auto *clock = window.findChild<TimeDay *>();
        auto *label = clock->findChild<QLabel *>(u"Label1"_s);
        QCOMPARE(label->text(), u"360"_s);

        practice.addService(u"7501010001"_s, QDate(2026, 3, 15), u"333"_s, u"1"_s);
        practice.addService(u"7501010001"_s, QDate(2026, 3, 15), u"301Б"_s, u"2"_s);
        QWidget elsewhere; // another window takes the activation, and the main window gets it back
        elsewhere.show();
        elsewhere.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&elsewhere));
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QCOMPARE(int(run().MinutesLeft), 360 - 141 - 26);
        QCOMPARE(label->text(), u"360"_s);
        clock->activateWindow();
        QTRY_COMPARE(label->text(), u"193"_s);

        clock->close(); // closed by the user: the mark stays
        QVERIFY(item->isChecked());
        trigger(window, u"mnuViewTime"_s);
        QVERIFY(!item->isChecked() && !clockShown());
    }

    void overflowIsToldOnce()
    {
        TestPractice practice;
        practice.addServices(240, u"7501010001"_s, QDate(2026, 3, 15), u"333"_s, u"1"_s);
        frmMain window(sourceHelpFolder());
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QCOMPARE(practice.dialogs().messages.size(), 1);
        QVERIFY(practice.dialogs().messages.first().contains(u"Минутите"_s));
        // Coming back to the window does not repeat the same message.
        QEvent deactivate(QEvent::ActivationChange);
        QApplication::sendEvent(&window, &deactivate);
        QCOMPARE(practice.dialogs().messages.size(), 1);
    }

    // The scratch file goes and the frame is stored, over a damaged settings file too; a
    // minimized window keeps the frame stored before.
    void orderlyClose_data()
    {
        QTest::addColumn<bool>("withScratch");
        QTest::addColumn<QByteArray>("settingsFile");
        QTest::addColumn<bool>("minimized");
        QTest::newRow("scratch file present") << true << QByteArray() << false;
        QTest::newRow("no scratch file") << false << QByteArray() << false;
        QTest::newRow("damaged settings file") << true << QByteArray("[Settings\n\0\xff\xfe=MainLeft\n=\n[[[", 28) << false;
        QTest::newRow("minimized") << true << QByteArray("[Settings]\nMainWidth=777\n") << true;
    }
    void orderlyClose()
    {
        QFETCH(bool, withScratch);
        QFETCH(QByteArray, settingsFile);
        QFETCH(bool, minimized);
        TestPractice practice;
        if (!settingsFile.isEmpty()) {
            const QString file = m_settings.path() + u"/Velmorata/Velmorata.ini"_s;
            QVERIFY(QDir().mkpath(QFileInfo(file).path()));
            QFile settings(file);
            QVERIFY(settings.open(QIODevice::WriteOnly));
            settings.write(settingsFile);
        }
        if (withScratch)
            QVERIFY(store::CreateScratchTable(u"TempWork"_s).ok());
        QCOMPARE(QFile::exists(store::paths().scratchDb), withScratch);
        frmMain window(sourceHelpFolder());
        window.show();
        window.setGeometry(60, 70, 800, 600);
        if (minimized)
            window.showMinimized();
        QVERIFY(window.close());
        QVERIFY(!QFile::exists(store::paths().scratchDb));
        const QRect frame = window.frameGeometry();
        QCOMPARE(storedSetting(u"MainLeft"_s), minimized ? QString() : QString::number(frame.x()));
        QCOMPARE(storedSetting(u"MainTop"_s), minimized ? QString() : QString::number(frame.y()));
        QCOMPARE(storedSetting(u"MainWidth"_s), minimized ? u"777"_s : QString::number(frame.width()));
        QCOMPARE(storedSetting(u"MainHeight"_s), minimized ? QString() : QString::number(frame.height()));
        // The sizes were stored, damaged file or not: nobody is told otherwise.
        QVERIFY2(practice.dialogs().messages.isEmpty(), qPrintable(practice.dialogs().messages.join(u'|')));
    }

    // The close box and "Изход" close the open windows through their own close(): one that keeps
    // its typing stops both. "Изход" asks first, and НЕ keeps the run; otherwise the run ends at
    // once, without the orderly close: the scratch file and the settings stay as they were.
    void closeBoxAndExitAskTheOpenWindows()
    {
        TestPractice practice;
        QVERIFY(store::CreateScratchTable(u"TempWork"_s).ok());
        frmMain window(sourceHelpFolder());
        window.show();
        KartonAdd *card = cardWithTyping(window);
        QVERIFY(card->parentWidget() == &window);
        practice.dialogs().answers = {false};
        QVERIFY(!window.close());
        QVERIFY(card->isVisible());
        practice.dialogs().exitAnswers = {false};
        trigger(window, u"mnuExit"_s);
        QVERIFY(window.isVisible());
        QCOMPARE(practice.dialogs().questions.size(), 1);

        practice.dialogs().exitAnswers = {true};
        practice.dialogs().answers = {false};
        QCOMPARE(exitAnsweredYes(window, 7), 7);
        QCOMPARE(practice.dialogs().questions.size(), 2);
        QVERIFY(card->isVisible());

        practice.dialogs().exitAnswers = {true};
        practice.dialogs().answers = {true};
        QCOMPARE(exitAnsweredYes(window, 1), 0);
        QVERIFY(!KartonAdd::openCard() || !KartonAdd::openCard()->isVisible());
        QVERIFY(QFile::exists(store::paths().scratchDb));
        QVERIFY(storedSetting(u"MainLeft"_s).isEmpty());
        store::DeleteScratchFile();
    }

    // Every help context of the menu has its own page; the contents open in a help window with a
    // close button of its own, and F1 on a menu item opens its page, or its menu's.
    void help()
    {
        TestPractice practice;
        frmMain window(sourceHelpFolder());
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        for (QAction *item : window.findChildren<QAction *>()) {
            const int context = item->property("helpContext").toInt();
            QVERIFY2(context <= 0 ||
                         HelpWindow::pagePath(sourceHelpFolder(), context).endsWith(u"/%1.html"_s.arg(context)),
                     qPrintable(item->objectName()));
        }
        trigger(window, u"mnuHelpContents"_s);
        auto *help = window.findChild<HelpWindow *>();
        QVERIFY(help && help->isVisible());
        QVERIFY(help->currentPage().endsWith(u"/index.html"_s));
        QVERIFY(practice.dialogs().messages.isEmpty());
        QTest::mouseClick(button(help, u"cmdClose"_s), Qt::LeftButton);
        QVERIFY(!help->isVisible());
        auto pressF1On = [&window](const char *menuName, const char *itemName) {
            auto *menu = window.findChild<QMenu *>(QString::fromLatin1(menuName));
            menu->popup(window.mapToGlobal(QPoint(10, 10)));
            menu->setActiveAction(window.action(QString::fromLatin1(itemName)));
            QTest::keyClick(menu, Qt::Key_F1);
            QVERIFY(!menu->isVisible());
        };
        pressF1On("mnuView", "mnuViewTime");
        QVERIFY2(help->currentPage().endsWith(u"/16.html"_s), qPrintable(help->currentPage()));
        pressF1On("mnuPac", "mnuExit");
        QVERIFY2(help->currentPage().endsWith(u"/34.html"_s), qPrintable(help->currentPage()));
    }

    void helpFolderMissing()
    {
        TestPractice practice;
        QTemporaryDir empty;
        run().CurrentMedicName = u"Иванов"_s;
        frmMain window(empty.path() + u"/help"_s);
        window.show();
        const QList<PlainBox> boxes = plainBoxesShownBy([&window] { trigger(window, u"mnuHelpContents"_s); });
        // A plain box under the window's caption, with the information icon; not the "Информация" dialog.
        QCOMPARE(boxes.size(), 1);
        QCOMPARE(boxes.first().title, window.windowTitle());
        QVERIFY(boxes.first().title.endsWith(u" - д-р Иванов"_s));
        QCOMPARE(boxes.first().text, u"Файла с описанието на програмата липсва!"_s);
        QCOMPARE(boxes.first().icon, QMessageBox::Information);
        QVERIFY(practice.dialogs().messages.isEmpty());
        QVERIFY(!window.findChild<HelpWindow *>());
    }

    // The menu opens the screens of the daily work, each once, and hands patients from one to
    // the next: registration to a new card and on to treatment; the treatment search to one
    // treatment window, closed with it; the correction search to the card, a child window; the
    // inquiry to the record's print, keeping the search; the diary print asks for the day.
    void menuWalksTheDailyWork()
    {
        TestPractice practice;
        practice.addDoctor(u"Иван Петров"_s, u"2201234567"_s);
        run().CurrentMedicCode = u"2201234567"_s;
        const QString egn = validEgn(QDate(1980, 5, 6));
        practice.addPatient(egn, PatientName, u"2201234567"_s);
        frmMain window(sourceHelpFolder());
        window.show();
        QCOMPARE(titleOfModal([&] { trigger(window, u"mnuHelpAbout"_s); }), u"Програма..."_s);
        QCOMPARE(titleOfModal([&] { trigger(window, u"mnuCahgePass"_s); }), u"Смяна на паролата"_s);
        QCOMPARE(titleOfModal([&] { window.findChild<QAction *>(u"mnuSlgEgnRule"_s)->trigger(); }), u"Правило за ЕГН"_s);
        for (const QString item : {"mnuPacReg", "mnuPacReg", "mnuPacKorEGN", "mnuPacKorEGN"})
            trigger(window, item);
        QCOMPARE(openWindows<KorEGN>().size(), 1);
        QCOMPARE(openWindows<KartonAdd>().size(), 1);
        emit openWindows<KartonAdd>().first()->openTreatment(egn, PatientName);
        QCOMPARE(openWindows<DenHelp>().size(), 1);
        QVERIFY(openWindows<DenHelp>().first()->windowTitle().contains(egn));
        closeAllBut(&window);

        trigger(window, u"mnuPacDen"_s);
        trigger(window, u"mnuPacDen"_s);
        QCOMPARE(openWindows<SeekName>().size(), 1);
        emit openWindows<SeekName>().first()->patientChosen(2, PatientName, egn);
        QCOMPARE(openWindows<DenHelp>().size(), 1);
        openWindows<DenHelp>().first()->close();
        QApplication::processEvents();
        QVERIFY(openWindows<SeekName>().isEmpty());

        trigger(window, u"mnuPacKor"_s);
        QCOMPARE(openWindows<SeekName>().first()->parentWidget(), &window);
        emit openWindows<SeekName>().first()->patientChosen(1, PatientName, egn);
        QVERIFY(openWindows<DenHelp>().isEmpty());
        QCOMPARE(openWindows<KartonAdd>().size(), 1);
        QCOMPARE(openWindows<KartonAdd>().first()->CardEGN(), egn);
        QCOMPARE(openWindows<KartonAdd>().first()->parentWidget(), &window);
        closeAllBut(&window);

        trigger(window, u"mnuOtPac"_s);
        emit openWindows<SeekName>().first()->patientChosen(3, PatientName, egn);
        QCOMPARE(openWindows<print::PrintPreview>().size(), 1);
        QCOMPARE(openWindows<SeekName>().size(), 1);
        openWindows<print::PrintPreview>().first()->close();
        QApplication::processEvents();
        practice.dialogs().dates.push_back(DateChoice{true, QDate(2026, 3, 20)});
        trigger(window, u"mnuOtSpGraf"_s);
        QVERIFY(practice.dialogs().dates.empty());
        QCOMPARE(openWindows<print::PrintPreview>().size(), 1);
        QVERIFY(practice.dialogs().messages.isEmpty());
    }

    // A message's lines break at the carriage return; "ДА" answers 1 and "НЕ" 0; the progress
    // stops only once the routine allows it.
    void sharedDialogs()
    {
        InfDialog message(u"Грешна дата в ЕГН: \r   123"_s);
        QCOMPARE(message.findChild<QLabel *>(u"Label1"_s)->text(), u"Грешна дата в ЕГН: \n   123"_s);
        for (const auto &[pressed, nKod] : {std::pair{u"OKButton"_s, 1}, std::pair{u"CancelButton"_s, 0}}) {
            QuesDialog question(u"?"_s);
            QTimer::singleShot(0, &question, [&question, pressed] { button(&question, pressed)->click(); });
            question.exec();
            QCOMPARE(question.nKod(), nKod);
        }
        ProgDialog progress(u"Изчакайте!"_s, 3);
        progress.show();
        QVERIFY(!button(&progress, u"OKButton"_s)->isEnabled());
        progress.setValue(2);
        progress.allowStop(true);
        button(&progress, u"OKButton"_s)->click();
        QCOMPARE(progress.nStop(), 1);
    }

    // No date, or a text that is no date, keeps the dialog open with a message; a cancel gives
    // tomorrow, unchosen.
    void choiceOfADate()
    {
        TestPractice practice(QDate(2026, 3, 15));
        const QString noDate = u"Няма въведена дата за графика"_s;
        ChoiceDialog dialog;
        dialog.show();
        button(&dialog, u"OKButton"_s)->click();
        QCOMPARE(practice.dialogs().messages, QStringList{noDate});
        QVERIFY(dialog.isVisible() && !dialog.lChoice());
        QTest::keyClicks(dialog.findChild<QLineEdit *>(u"Text1"_s), u"31.02.2026"_s);
        button(&dialog, u"OKButton"_s)->click();
        QVERIFY(dialog.isVisible());
        QCOMPARE(practice.dialogs().messages.size(), 2);
        dialog.findChild<QLineEdit *>(u"Text1"_s)->setText(u" 02.03.2026 "_s);
        button(&dialog, u"OKButton"_s)->click();
        QVERIFY(dialog.lChoice() && !dialog.isVisible());
        QCOMPARE(dialog.dData(), QDate(2026, 3, 2));

        ChoiceDialog cancelled;
        cancelled.show();
        button(&cancelled, u"CancelButton"_s)->click();
        QVERIFY(!cancelled.lChoice());
        QCOMPARE(cancelled.dData(), QDate(2026, 3, 16));
        QCOMPARE(practice.dialogs().messages.size(), 3);
        QCOMPARE(practice.dialogs().messages.last(), noDate);
    }

};

QTEST_MAIN(tst_MainWindow)
#include "tst_MainWindow.moc"
