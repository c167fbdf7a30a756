#include "shell/ui/About.h"

#include "Version.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QStandardPaths>
#include <QStyle>
#include <QVBoxLayout>

namespace {

QString versionText()
{
    return QStringLiteral("%1.%2.%3").arg(version::Major).arg(version::Minor).arg(version::Revision);
}

} // namespace

About::About(QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(QStringLiteral("Програма..."));
    auto *image = new QLabel(this);
    image->setObjectName(QStringLiteral("Image1"));
    image->setPixmap(QIcon(QStringLiteral(":/src/shell/ui/icons/Velmorata.png")).pixmap(64, 64));
    auto *title = new QLabel(QStringLiteral("Велмората"), this);
    title->setObjectName(QStringLiteral("lblTitle"));
    QFont big = title->font();
    big.setPointSize(big.pointSize() + 6);
    big.setBold(true);
    title->setFont(big);
    auto *versionLabel = new QLabel(QStringLiteral("Версия ") + versionText(), this);
    versionLabel->setObjectName(QStringLiteral("lblVersion"));
    auto *description = new QLabel(QStringLiteral("Картотека на стоматологична практика по договор с НЗОК.\n"
                                                  "Пациенти, зъбен статус, амбулаторни листове, направления,\n"
                                                  "график и отчети към РЗОК."),
                                   this);
    description->setObjectName(QStringLiteral("lblDescription"));
    auto *ok = new QPushButton(QStringLiteral("OK"), this);
    ok->setObjectName(QStringLiteral("cmdOK"));
    ok->setDefault(true);
    auto *sysInfo = new QPushButton(QStringLiteral("&Система..."), this);
    sysInfo->setObjectName(QStringLiteral("cmdSysInfo"));
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(sysInfo, &QPushButton::clicked, this, &About::showSystemInformation);

    auto *text = new QVBoxLayout;
    text->addWidget(title);
    text->addWidget(versionLabel);
    text->addWidget(description);
    auto *top = new QHBoxLayout;
    top->addWidget(image, 0, Qt::AlignTop);
    top->addLayout(text, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(sysInfo);
    auto *column = new QVBoxLayout(this);
    column->addLayout(top);
    column->addLayout(buttons);
}

QString About::systemInformationTool()
{
    for (const QString &name : {QStringLiteral("hardinfo"), QStringLiteral("kinfocenter"),
                               QStringLiteral("gnome-system-monitor"), QStringLiteral("xfce4-taskmanager")}) {
        const QString path = QStandardPaths::findExecutable(name);
        if (!path.isEmpty())
            return path;
    }
    return {};
}

void About::showSystemInformation()
{
    const QString tool = systemInformationTool();
    if (tool.isEmpty() || !QProcess::startDetached(tool, {}))
        QMessageBox::information(this, windowTitle(), QStringLiteral("System Information Is Unavailable At This Time"));
}
