#include "shell/ui/HelpWindow.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTextBrowser>
#include <QVBoxLayout>

HelpWindow::HelpWindow(QWidget *parent)
    : QWidget(parent, Qt::Window)
{
    setObjectName(QStringLiteral("HelpWindow"));
    setWindowTitle(QStringLiteral("Помощ - Велмората"));
    m_browser = new QTextBrowser(this);
    m_browser->setObjectName(QStringLiteral("txtHelp"));
    m_browser->setOpenExternalLinks(true);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_browser);
    resize(640, 560);
}

QString HelpWindow::folderBesideProgram()
{
    return QDir(QCoreApplication::applicationDirPath()).absoluteFilePath(QStringLiteral("help"));
}

QString HelpWindow::pagePath(const QString &folder, int context)
{
    const QDir dir(folder);
    if (context > 0) {
        const QFileInfo page(dir.filePath(QStringLiteral("%1.html").arg(context)));
        if (page.isFile())
            return page.absoluteFilePath();
    }
    const QFileInfo contents(dir.filePath(QStringLiteral("index.html")));
    return contents.isFile() ? contents.absoluteFilePath() : QString();
}

void HelpWindow::showPage(const QString &path) { m_browser->setSource(QUrl::fromLocalFile(path)); }

QString HelpWindow::currentPage() const { return m_browser->source().toLocalFile(); }
