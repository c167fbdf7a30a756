// Every window of the program on the smallest screen the practice works on, 1366×768: its
// minimum size fits with the window frame and a panel, it opens with its frame on the screen,
// and at its least size its closing button is still on the window.
#include "TestPractice.h"

#include "admin/ui/Cenoraz.h"
#include "admin/ui/MedicAdd.h"
#include "admin/ui/MedicUnitForm.h"
#include "base/RunState.h"
#include "base/ui/PrintOffsetDialog.h"
#include "base/ui/PrintPreview.h"
#include "base/ui/WindowPlacement.h"
#include "diary/ui/Grafic.h"
#include "patients/ui/EgnRuleForm.h"
#include "patients/ui/KartonAdd.h"
#include "patients/ui/KorEGN.h"
#include "patients/ui/SeekName.h"
#include "patients/ui/ViewHelp.h"
#include "shell/ui/About.h"
#include "shell/ui/ChangePassword.h"
#include "shell/ui/HelpWindow.h"
#include "shell/ui/Password.h"
#include "shell/ui/Splash.h"
#include "shell/ui/TimeDay.h"
#include "shell/ui/frmMain.h"
#include "treatment/ui/DenHelp.h"
#include "treatment/ui/PathWay.h"

#include <QApplication>
#include <QLabel>
#include <QToolBar>
#include <QPushButton>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>

#include <functional>
#include <memory>

namespace {

const QString Doctor = QStringLiteral("D1");
const QString Name = QStringLiteral("Иван Петров Иванов");
// What the window manager keeps for itself: a panel and the title bar.
const QSize Decoration(16, 40 + 32);

QString patientEgn() { return validEgn(QDate(1980, 5, 5)); }

// Builds a window and gives it with the window it belongs to (the same one, or the owner to delete).
using MakeWindow = std::function<std::pair<std::unique_ptr<QWidget>, QWidget *>()>;

template <typename Window, typename... Args> MakeWindow plain(Args... args)
{
    return [=] {
        auto window = std::make_unique<Window>(args...);
        QWidget *shown = window.get();
        return std::make_pair(std::unique_ptr<QWidget>(std::move(window)), shown);
    };
}

std::unique_ptr<QWidget> openTreatment()
{
    return std::unique_ptr<QWidget>(DenHelp::open(patientEgn(), Name, QStringLiteral("Edit")));
}

// What a title bar needs to show the whole title: the text in bold and at least three buttons.
int wholeTitleWidth(const QWidget *window)
{
    QFont bold = QApplication::font();
    bold.setBold(true);
    return QFontMetrics(bold).horizontalAdvance(window->windowTitle()) + 3 * 40;
}

bool closeButtonOnWindow(QWidget *window, const QString &button)
{
    auto *push = window->findChild<QPushButton *>(button);
    return push && push->isVisible() && window->rect().contains(QRect(push->mapTo(window, QPoint(0, 0)), push->size()));
}

} // namespace

Q_DECLARE_METATYPE(MakeWindow)

class TestWindowSizes final : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { QCOMPARE(QGuiApplication::primaryScreen()->size(), SmallestScreen); }

    void fitsTheSmallestScreen_data()
    {
        QTest::addColumn<MakeWindow>("make");
        QTest::addColumn<QString>("closeButton");
        QTest::newRow("frmMain") << plain<frmMain>(QString()) << QString();
        QTest::newRow("Splash") << plain<Splash>() << QString();
        QTest::newRow("KartonAdd new") << plain<KartonAdd>(QStringLiteral("New"), QString(), QString(), nullptr)
                                       << QStringLiteral("cmdClose");
        QTest::newRow("SeekName") << plain<SeekName>() << QString();
        QTest::newRow("KorEGN") << plain<KorEGN>() << QString();
        QTest::newRow("Cenoraz") << plain<Cenoraz>() << QString();
        QTest::newRow("Grafic") << plain<Grafic>() << QString();
        QTest::newRow("MedicAdd") << plain<MedicAdd>() << QString();
        QTest::newRow("MedicUnit") << plain<MedicUnit>() << QString();
        QTest::newRow("ChangePassword") << plain<ChangePassword>() << QString();
        QTest::newRow("Password") << plain<Password>() << QString();
        QTest::newRow("About") << plain<About>() << QString();
        QTest::newRow("HelpWindow") << plain<HelpWindow>() << QString();
        QTest::newRow("TimeDay") << plain<TimeDay>() << QString();
        QTest::newRow("PrintOffsetDialog") << plain<print::PrintOffsetDialog>(QStringLiteral("rprKarton"), nullptr) << QString();
        QTest::newRow("EgnRuleForm") << plain<EgnRuleForm>() << QStringLiteral("cmdClose");
        QTest::newRow("DenHelp") << MakeWindow([] {
            auto window = openTreatment();
            QWidget *shown = window.get();
            return std::make_pair(std::move(window), shown);
        }) << QStringLiteral("cmdClose");
        QTest::newRow("PathWay") << MakeWindow([] {
            auto window = openTreatment();
            QTest::mouseClick(window->findChild<QPushButton *>(QStringLiteral("cmdParh")), Qt::LeftButton);
            QWidget *referrals = window->findChild<PathWay *>();
            return std::make_pair(std::move(window), referrals);
        }) << QStringLiteral("cmdClose");
        // The history opens beside the patient card, whose right edge may be near the screen's.
        QTest::newRow("ViewHelp beside the card") << MakeWindow([] {
            auto view = std::make_unique<ViewHelp>(patientEgn());
            view->move(1068, 120);
            QWidget *shown = view.get();
            return std::make_pair(std::unique_ptr<QWidget>(std::move(view)), shown);
        }) << QString();
    }
    void fitsTheSmallestScreen()
    {
        QFETCH(MakeWindow, make);
        QFETCH(QString, closeButton);
        TestPractice practice;
        run().CurrentMedicCode = Doctor;
        practice.addPatient(patientEgn(), Name, Doctor);
        const auto [owner, window] = make();
        QVERIFY(window);
        const QSize least = window->minimumSizeHint().expandedTo(window->minimumSize()) + Decoration;
        QVERIFY2(least.width() <= SmallestScreen.width() && least.height() <= SmallestScreen.height(),
                 qPrintable(QStringLiteral("needs %1×%2").arg(least.width()).arg(least.height())));
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        QVERIFY2(window->width() >= wholeTitleWidth(window),
                 qPrintable(QStringLiteral("\"%1\" is cut at %2 px").arg(window->windowTitle()).arg(window->width())));
        const QRect frame = window->frameGeometry();
        QVERIFY2(window->screen()->availableGeometry().contains(frame),
                 qPrintable(QStringLiteral("%1,%2 %3×%4").arg(frame.x()).arg(frame.y()).arg(frame.width()).arg(frame.height())));
        if (!closeButton.isEmpty()) {
            window->resize(window->minimumSizeHint());
            QCoreApplication::processEvents();
            QVERIFY(closeButtonOnWindow(window, closeButton));
        }
    }

    // "Корекция" (F4) opens the card with the patient's services beside it: the history's frame,
    // its title bar included, is on the screen, and it covers neither the card's title bar (and
    // close box) nor the card's upper fields.
    void historyBesideTheCardLeavesItClear()
    {
        TestPractice practice;
        run().CurrentMedicCode = Doctor;
        run().CardMode = QStringLiteral("Edit");
        practice.addPatient(patientEgn(), Name, Doctor);
        KartonAdd *card = KartonAdd::openForCorrection(Name, patientEgn());
        QVERIFY(card && card->history());
        QVERIFY(QTest::qWaitForWindowExposed(card->history()));
        const QRect history = card->history()->frameGeometry();
        QVERIFY(card->screen()->availableGeometry().contains(history));
        const QRect cardFrame = card->frameGeometry();
        const QRect titleBar(cardFrame.topLeft(), QSize(cardFrame.width(), card->geometry().top() - cardFrame.top()));
        QVERIFY(titleBar.height() > 0);
        QVERIFY(!history.intersects(titleBar));
        for (const char *name : {"Text3", "txtFields(17)", "Text7", "Text8"}) {
            const auto *field = card->findChild<QWidget *>(QString::fromLatin1(name));
            QVERIFY2(field, name);
            QVERIFY2(!history.intersects(QRect(field->mapToGlobal(QPoint(0, 0)), field->size())), name);
        }
        card->close();
    }

    // The preview of a form for the fund's paper, as wide as the screen: every action of the
    // program's own stands on its bar, none behind the bar's "»". The offscreen style draws
    // narrower buttons than a desktop's, whose bars are up to half as wide again: a bar that
    // carries one of ours must fit the screen with that to spare.
    void previewActionsAreInReach()
    {
        TestPractice practice;
        auto *preview = new print::PrintPreview(print::PageDescription(QStringLiteral("rprKarton"), print::A4));
        preview->showMaximized();
        QVERIFY(QTest::qWaitForWindowExposed(preview));
        QVERIFY(preview->width() > SmallestScreen.width() - 20);
        for (const char *name : {"actSavePdf", "actOffset", "actDataOnly"}) {
            auto *action = preview->findChild<QAction *>(QString::fromLatin1(name));
            QVERIFY2(action, name);
            QToolBar *carrier = nullptr;
            for (QToolBar *bar : preview->findChildren<QToolBar *>())
                if (bar->actions().contains(action))
                    carrier = bar;
            QVERIFY2(carrier, name);
            QVERIFY2(carrier->widgetForAction(action)->isVisible(), name);
            QVERIFY2(carrier->sizeHint().width() * 3 / 2 <= preview->width(),
                     qPrintable(QStringLiteral("%1 on a bar of %2 px").arg(QString::fromLatin1(name)).arg(carrier->sizeHint().width())));
        }
        preview->close();
    }

    // A window placed out of the screen's free area comes back into it, shrunk where it is larger.
    void placementBringsAWindowBack()
    {
        const QRect free = QGuiApplication::primaryScreen()->availableGeometry();
        QWidget window;
        window.setGeometry(free.right() - 100, free.bottom() - 50, free.width() + 300, 400);
        keepOnScreen(&window);
        QVERIFY(free.contains(window.frameGeometry()));
    }
};

int main(int argc, char **argv)
{
    // An offscreen screen the size of a small laptop's, with window frames.
    QTemporaryDir folder;
    const QString config = folder.filePath(QStringLiteral("screen.json"));
    QFile file(config);
    if (!file.open(QIODevice::WriteOnly))
        return 1;
    file.write(R"({"windowFrameMargins": true, "screens": [{"name": "laptop", "x": 0, "y": 0, "width": 1366,
               "height": 768, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
    file.close();
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + config.toLocal8Bit());
    QApplication app(argc, argv);
    TestWindowSizes test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_WindowSizes.moc"
