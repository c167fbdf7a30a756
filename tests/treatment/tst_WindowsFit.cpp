// The treatment windows on the smallest screen the practice works on, 1366×768: each one's
// minimum size fits it, its buttons included, and each opens with its frame on the screen.
#include "TestPractice.h"

#include "base/RunState.h"
#include "treatment/ui/DenHelp.h"
#include "treatment/ui/PathWay.h"
#include "treatment/ui/ViewHelp.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QSize Laptop(1366, 768);
// What the window manager keeps for itself: a panel and the title bar.
const QSize Decoration(16, 40 + 32);

QString fitsLaptop(QWidget *window)
{
    const QSize least = window->minimumSizeHint().expandedTo(window->minimumSize()) + Decoration;
    return least.width() <= Laptop.width() && least.height() <= Laptop.height()
        ? QString()
        : QStringLiteral("%1 needs %2×%3").arg(window->objectName()).arg(least.width()).arg(least.height());
}

// The whole window within the free area of its screen.
bool onScreen(QWidget *window)
{
    return window->screen()->availableGeometry().contains(window->frameGeometry());
}

bool visibleOnWindow(QWidget *window, const QString &button)
{
    auto *push = window->findChild<QPushButton *>(button);
    return push && push->isVisible()
        && window->rect().contains(QRect(push->mapTo(window, QPoint(0, 0)), push->size()));
}

} // namespace

class TestWindowsFit final : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { QCOMPARE(QGuiApplication::primaryScreen()->size(), Laptop); }

    void treatmentWindow()
    {
        TestPractice practice;
        run().CurrentMedicCode = QStringLiteral("D1");
        const QString egn = validEgn(QDate(1980, 5, 5));
        practice.addPatient(egn, QStringLiteral("Иван Петров Иванов"), QStringLiteral("D1"));
        DenHelp *window = DenHelp::open(egn, QStringLiteral("Иван Петров Иванов"), QStringLiteral("Edit"));
        QVERIFY(window);
        QVERIFY2(fitsLaptop(window).isEmpty(), qPrintable(fitsLaptop(window)));
        QVERIFY(onScreen(window));
        window->resize(window->minimumSizeHint());
        QCoreApplication::processEvents();
        QVERIFY(visibleOnWindow(window, QStringLiteral("cmdClose")));
        QVERIFY(window->findChild<QWidget *>(QStringLiteral("Check1"))->isVisible());
        QTest::mouseClick(window->findChild<QPushButton *>(QStringLiteral("cmdParh")), Qt::LeftButton);
        auto *referrals = window->findChild<PathWay *>();
        QVERIFY(referrals && onScreen(referrals));
        QVERIFY2(fitsLaptop(referrals).isEmpty(), qPrintable(fitsLaptop(referrals)));
        QVERIFY(visibleOnWindow(referrals, QStringLiteral("cmdClose")));
        delete window;
    }

    // The history opens beside the patient card, whose right edge may be near the screen's. A
    // patient without lines reads "Запис №: 0".
    void historyBesideTheCard()
    {
        TestPractice practice;
        ViewHelp view(validEgn(QDate(1980, 5, 5)));
        view.move(1068, 120);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        QVERIFY2(onScreen(&view), qPrintable(QStringLiteral("x=%1").arg(view.frameGeometry().x())));
        QVERIFY2(fitsLaptop(&view).isEmpty(), qPrintable(fitsLaptop(&view)));
        QCOMPARE(view.findChild<QLabel *>(QStringLiteral("Data3"))->text(), QStringLiteral("Запис №: 0"));
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
    TestWindowsFit test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_WindowsFit.moc"
