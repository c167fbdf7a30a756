#pragma once

#include <QWidget>

class QTextBrowser;

// The program's description: Bulgarian HTML pages, one per help context number ("6.html"),
// and the contents ("index.html"), kept beside the program in a build and under share/ when
// installed.
class HelpWindow final : public QWidget
{
    Q_OBJECT
public:
    explicit HelpWindow(QWidget *parent = nullptr);

    // The help folder of the running program, built or installed.
    static QString folderBesideProgram();
    // The page of a context number, or the contents for 0 or a number without a page; empty
    // when the folder holds neither.
    static QString pagePath(const QString &folder, int context);

    void showPage(const QString &path);
    QString currentPage() const;

private:
    QTextBrowser *m_browser;
};
