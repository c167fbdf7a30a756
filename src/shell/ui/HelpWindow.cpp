#include "shell/ui/HelpWindow.h"

#include "base/ui/NamedButton.h"
#include "shell/DataFiles.h"

#include <QHBoxLayout>
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
    // A close button of its own, for a desktop whose title bar is out of reach.
    QPushButton *close = namedButton(QStringLiteral("cmdClose"), QStringLiteral("Затвори"), this);
    connect(close, &QPushButton::clicked, this, &QWidget::close);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(close);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_browser);
    layout->addLayout(buttons);
    resize(640, 560);
}

QString HelpWindow::folderBesideProgram() { return datafiles::helpFolder(); }

QString HelpWindow::pagePath(const QString &folder, int context) { return datafiles::helpPagePath(folder, context); }

void HelpWindow::showPage(const QString &path) { m_browser->setSource(QUrl::fromLocalFile(path)); }

QString HelpWindow::currentPage() const { return m_browser->source().toLocalFile(); }
