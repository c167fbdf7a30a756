#include "shell/DataFiles.h"
#include "shell/cli/HelpPathCommand.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace {

void writePage(const QString &path)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile page(path);
    if (!page.open(QIODevice::WriteOnly))
        qFatal("cannot write %s", qPrintable(path));
    page.write("<html></html>");
}

} // namespace

// Where the program finds its help pages, built or installed, and what `help-path` answers.
class tst_HelpFolder : public QObject
{
    Q_OBJECT
private slots:
    void folderOfLayout_data();
    void folderOfLayout();
    void helpPath_data();
    void helpPath();
};

void tst_HelpFolder::folderOfLayout_data()
{
    QTest::addColumn<QStringList>("pages");
    QTest::addColumn<QString>("expected");
    QTest::newRow("build folder") << QStringList{"bin/help/index.html"} << "bin/help";
    QTest::newRow("installed") << QStringList{"share/velmorata/help/index.html"} << "share/velmorata/help";
    // A build inside an install tree must show the pages it was built with.
    QTest::newRow("both: beside wins") << QStringList{"bin/help/index.html", "share/velmorata/help/index.html"}
                                       << "bin/help";
    // A folder beside the program without the contents page is no help folder.
    QTest::newRow("beside without contents")
        << QStringList{"bin/help/6.html", "share/velmorata/help/index.html"} << "share/velmorata/help";
    QTest::newRow("none: the build place is named") << QStringList{} << "bin/help";
}

void tst_HelpFolder::folderOfLayout()
{
    QFETCH(QStringList, pages);
    QFETCH(QString, expected);
    QTemporaryDir root;
    for (const QString &page : pages)
        writePage(root.filePath(page));
    QDir().mkpath(root.filePath(QStringLiteral("bin")));
    QCOMPARE(datafiles::helpFolder(root.filePath(QStringLiteral("bin"))), root.filePath(expected));
}

void tst_HelpFolder::helpPath_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("page");
    QTest::newRow("contents") << QStringList{} << 0 << "index.html";
    QTest::newRow("context 6") << QStringList{"6"} << 0 << "6.html";
    QTest::newRow("contents by 0") << QStringList{"0"} << 0 << "index.html";
    QTest::newRow("no page: contents") << QStringList{"999"} << 0 << "index.html";
    QTest::newRow("negative") << QStringList{"-1"} << 2 << "";
    QTest::newRow("not a number") << QStringList{"six"} << 2 << "";
    QTest::newRow("two numbers") << QStringList{"6", "7"} << 2 << "";
}

void tst_HelpFolder::helpPath()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    QFETCH(QString, page);
    QTemporaryDir folder;
    writePage(folder.filePath(QStringLiteral("index.html")));
    writePage(folder.filePath(QStringLiteral("6.html")));
    QString out, err;
    QTextStream outStream(&out), errStream(&err);
    HelpPathCommand command(folder.path());
    QCOMPARE(command.execute(QStringList{QStringLiteral("help-path")} + arguments, outStream, errStream), exitCode);
    if (page.isEmpty())
        QVERIFY(out.isEmpty() && !err.isEmpty());
    else
        QCOMPARE(out.trimmed(), folder.filePath(page));
}

QTEST_GUILESS_MAIN(tst_HelpFolder)
#include "tst_HelpFolder.moc"
