// Every window of these screens fits the smallest screen the practice works on.
#include "TestPractice.h"

#include "admin/ui/Cenoraz.h"
#include "admin/ui/Grafic.h"
#include "admin/ui/MedicAdd.h"
#include "patients/ui/KartonAdd.h"
#include "patients/ui/KorEGN.h"
#include "patients/ui/SeekName.h"
#include "shell/ui/About.h"
#include "shell/ui/ChangePassword.h"
#include "shell/ui/HelpWindow.h"
#include "shell/ui/Password.h"
#include "shell/ui/TimeDay.h"
#include "base/ui/WindowPlacement.h"
#include "shell/ui/frmMain.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTest>

#include <functional>
#include <memory>

namespace {

// What a title bar and a task bar take from the screen's height.
constexpr int TitleBar = 32;
constexpr int TaskBar = 40;

using MakeWindow = std::function<std::unique_ptr<QWidget>()>;

} // namespace

Q_DECLARE_METATYPE(MakeWindow)

class TestWindowSizes final : public QObject
{
    Q_OBJECT
  private slots:
    void fitsTheSmallestScreen_data()
    {
        QTest::addColumn<MakeWindow>("make");
        QTest::newRow("frmMain") << MakeWindow([] { return std::make_unique<frmMain>(QString()); });
        QTest::newRow("KartonAdd new") << MakeWindow(
            [] { return std::make_unique<KartonAdd>(QStringLiteral("New"), QString(), QString(), nullptr); });
        QTest::newRow("SeekName") << MakeWindow([] { return std::make_unique<SeekName>(); });
        QTest::newRow("KorEGN") << MakeWindow([] { return std::make_unique<KorEGN>(); });
        QTest::newRow("Cenoraz") << MakeWindow([] { return std::make_unique<Cenoraz>(); });
        QTest::newRow("Grafic") << MakeWindow([] { return std::make_unique<Grafic>(); });
        QTest::newRow("MedicAdd") << MakeWindow([] { return std::make_unique<MedicAdd>(); });
        QTest::newRow("ChangePassword") << MakeWindow([] { return std::make_unique<ChangePassword>(); });
        QTest::newRow("Password") << MakeWindow([] { return std::make_unique<Password>(); });
        QTest::newRow("About") << MakeWindow([] { return std::make_unique<About>(); });
        QTest::newRow("HelpWindow") << MakeWindow([] { return std::make_unique<HelpWindow>(); });
        QTest::newRow("TimeDay") << MakeWindow([] { return std::make_unique<TimeDay>(); });
    }
    void fitsTheSmallestScreen()
    {
        QFETCH(MakeWindow, make);
        TestPractice practice;
        const std::unique_ptr<QWidget> window = make();
        const QSize needed = window->minimumSizeHint().expandedTo(window->minimumSize());
        const QSize room(SmallestScreen.width(), SmallestScreen.height() - TitleBar - TaskBar);
        QVERIFY2(needed.width() <= room.width() && needed.height() <= room.height(),
                 qPrintable(QStringLiteral("needs %1×%2").arg(needed.width()).arg(needed.height())));
    }

    // A window placed out of the screen's free area comes back into it, shrunk where it is larger.
    void opensOnScreen()
    {
        const QRect free = QGuiApplication::primaryScreen()->availableGeometry();
        QWidget window;
        window.setGeometry(free.right() - 100, free.bottom() - 50, free.width() + 300, 400);
        keepOnScreen(&window);
        QVERIFY2(free.contains(window.frameGeometry()), qPrintable(QStringLiteral("%1,%2 %3×%4")
                                                                       .arg(window.x())
                                                                       .arg(window.y())
                                                                       .arg(window.width())
                                                                       .arg(window.height())));
    }
};

QTEST_MAIN(TestWindowSizes)
#include "tst_WindowSizes.moc"
