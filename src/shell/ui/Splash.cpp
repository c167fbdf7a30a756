#include "shell/ui/Splash.h"

#include "Version.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFrame>
#include <QLabel>
#include <QSysInfo>
#include <QThread>
#include <QTime>
#include <QVBoxLayout>

Splash::Splash()
    : QWidget(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint)
{
    setObjectName(QStringLiteral("Splash"));
    auto *frame = new QFrame(this);
    frame->setFrameShape(QFrame::Box);
    frame->setLineWidth(2);
    auto *logo = new QLabel(frame);
    logo->setObjectName(QStringLiteral("imgLogo"));
    logo->setPixmap(QIcon(QStringLiteral(":/src/shell/ui/icons/Velmorata.png")).pixmap(96, 96));
    auto *product = new QLabel(QStringLiteral("Велмората"), frame);
    product->setObjectName(QStringLiteral("lblProductName"));
    QFont big = product->font();
    big.setPointSize(big.pointSize() + 14);
    big.setBold(true);
    product->setFont(big);
    auto *versionLabel = new QLabel(QStringLiteral("Version %1.%2.%3").arg(version::Major).arg(version::Minor).arg(version::Revision), frame);
    versionLabel->setObjectName(QStringLiteral("lblVersion"));
    auto *platform = new QLabel(QSysInfo::prettyProductName(), frame);
    platform->setObjectName(QStringLiteral("lblPlatform"));
    auto *legal = new QLabel(QStringLiteral("Картотека на стоматологична практика"), frame);
    legal->setObjectName(QStringLiteral("lblLegal"));

    auto *inner = new QVBoxLayout(frame);
    inner->addWidget(logo, 0, Qt::AlignHCenter);
    inner->addWidget(product, 0, Qt::AlignHCenter);
    inner->addWidget(versionLabel, 0, Qt::AlignHCenter);
    inner->addWidget(platform, 0, Qt::AlignHCenter);
    inner->addWidget(legal, 0, Qt::AlignHCenter);
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(frame);
    setFixedSize(420, 280);
}

void Splash::showUntilNextSecond()
{
    show();
    repaint();
    QApplication::processEvents();
    // Until the clock's second changes; at most one second, so a start at second 59 goes on too.
    const int second = QTime::currentTime().second();
    QElapsedTimer waited;
    waited.start();
    while (QTime::currentTime().second() == second && waited.elapsed() < 1000) {
        QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        QThread::msleep(10);
    }
    close();
}
