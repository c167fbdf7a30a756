// Every window the menu leads to speaks Bulgarian, Qt's own words included, and opens its own
// help page with F1.
#include "TestPractice.h"

#include "base/QtTranslations.h"
#include "base/RunState.h"
#include "base/ui/PrintPreview.h"
#include "patients/PatientRecordPage.h"
#include "reports/ui/SeekDate.h"
#include "shell/ui/HelpWindow.h"
#include "shell/ui/frmMain.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QFileDialog>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>
#include <QSet>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

QString sourceHelpFolder() { return QFINDTESTDATA("../../help"); }

// Latin words the system itself shows: the names of the file kinds, the caption of the
// accounting form's record navigator, the card's Rh label, the unit's bank and contact
// captions, the about box's button. Roman numerals (the chart's mobility grades) and file names
// are no English either.
const QSet<QString> LatinOfTheSystem{u"PDF"_s,  u"XML"_s, u"Record"_s, u"Ph"_s, u"IBAN"_s, u"BIC"_s,
                                     u"GSM"_s, u"E-mail"_s, u"URL"_s, u"OK"_s};

QStringList headerTexts(const QHeaderView *header)
{
    QStringList texts;
    if (!header->model() || !header->isVisible())
        return texts;
    for (int section = 0; section < header->count(); ++section)
        texts << header->model()->headerData(section, header->orientation()).toString();
    return texts;
}

// What a person can read in the window: its title, labels, buttons, headers, tool tips.
QStringList visibleTexts(QWidget *window)
{
    QStringList texts{window->windowTitle()};
    for (QWidget *widget : window->findChildren<QWidget *>()) {
        if (!widget->isVisibleTo(window))
            continue;
        texts << widget->toolTip();
        if (auto *label = qobject_cast<QLabel *>(widget))
            texts << label->text();
        else if (auto *button = qobject_cast<QAbstractButton *>(widget))
            texts << button->text();
        else if (auto *group = qobject_cast<QGroupBox *>(widget))
            texts << group->title();
        else if (auto *line = qobject_cast<QLineEdit *>(widget))
            texts << line->placeholderText();
        else if (auto *header = qobject_cast<QHeaderView *>(widget))
            texts << headerTexts(header);
    }
    for (QAction *action : window->findChildren<QAction *>())
        if (action->isVisible())
            texts << action->text() << action->toolTip();
    return texts;
}

QStringList englishWords(QWidget *window)
{
    static const QRegularExpression latinWord(u"(?<![\\p{L}-])[A-Za-z][A-Za-z-]+(?![\\p{L}-])"_s);
    static const QRegularExpression notWords(u"<[^>]*>|\\S+\\.(?:mdb|db|arh|pdf|xml|csv)\\b|\\b[IVX]+\\b"_s);
    QStringList found;
    for (const QString &text : visibleTexts(window))
        for (const auto &match : latinWord.globalMatch(QString(text).remove(notWords)))
            if (!LatinOfTheSystem.contains(match.captured()))
                found << u"%1: \"%2\" in \"%3\""_s.arg(window->objectName(), match.captured(), text.left(60));
    return found;
}

} // namespace

class tst_WindowTexts final : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestPractice> m_practice;
    std::unique_ptr<frmMain> m_window;
    QStringList m_faults;
    QSet<QWidget *> m_seen; // the windows inspected that are still there
    QSet<QString> m_seenNames;

    QString helpPage() const
    {
        auto *help = m_window->findChild<HelpWindow *>();
        return help ? help->currentPage().section(u'/', -1) : QString();
    }

    // Checks one window the walk reached: its words, and that F1 leads to a page of its own.
    void inspect(QWidget *window, const QString &via)
    {
        if (m_seen.contains(window))
            return;
        m_seen.insert(window);
        connect(window, &QObject::destroyed, this, [this, window] { m_seen.remove(window); });
        m_seenNames.insert(window->objectName() + u'/' + QString::fromLatin1(window->metaObject()->className()));
        m_faults << englishWords(window);
        if (auto *help = m_window->findChild<HelpWindow *>())
            help->showPage({});
        QTest::keyClick(window, Qt::Key_F1);
        const QString page = helpPage();
        if (page.isEmpty() || page == u"index.html")
            m_faults << u"%1 (from %2): F1 opens no page of its own (%3)"_s.arg(window->objectName(), via, page);
    }

    // The period of a report, when the item asked for one: March of the practice's year.
    void fillPeriod()
    {
        SeekDate *period = SeekDate::current();
        if (!period || !period->isVisible())
            return;
        const QList<QLineEdit *> boxes = period->findChildren<QLineEdit *>();
        boxes.at(0)->setText(u"01.03.2026"_s);
        boxes.at(1)->setText(u"31.03.2026"_s);
        period->findChild<QPushButton *>(u"OKButton"_s)->click();
    }

    void walk(QAction *item)
    {
        QTimer modals;
        modals.setInterval(30);
        connect(&modals, &QTimer::timeout, this, [&] {
            if (QWidget *modal = QApplication::activeModalWidget(); modal && !m_seen.contains(modal)) {
                inspect(modal, item->objectName());
                modal->close();
            }
        });
        modals.start();
        item->trigger();
        QApplication::processEvents();
        inspectOpenWindows(item->objectName());
        fillPeriod();
        QApplication::processEvents();
        modals.stop();
        inspectOpenWindows(item->objectName());
        for (QWidget *widget : QApplication::topLevelWidgets())
            if (widget != m_window.get() && widget->isVisible() && !qobject_cast<HelpWindow *>(widget))
                widget->close();
        QApplication::processEvents();
    }

    void inspectOpenWindows(const QString &via)
    {
        for (QWidget *widget : QApplication::topLevelWidgets())
            if (widget != m_window.get() && widget->isVisible() && !qobject_cast<HelpWindow *>(widget) &&
                !qobject_cast<QMenu *>(widget))
                inspect(widget, via);
    }

private slots:
    void initTestCase()
    {
        QVERIFY2(installQtTranslations(*qApp), "Qt's Bulgarian translations (qt6-translations-l10n) are missing");
    }

    // Qt's own questions come in Bulgarian too, among them the file dialog's overwrite question.
    void qtsOwnWordsAreBulgarian_data()
    {
        QTest::addColumn<QString>("context");
        QTest::addColumn<QString>("source");
        QTest::newRow("overwrite") << "QFileDialog" << "%1 already exists.\nDo you want to replace it?";
        QTest::newRow("look in") << "QFileDialog" << "Look in:";
        QTest::newRow("preview") << "QPrintPreviewDialog" << "Print Preview";
        QTest::newRow("cancel") << "QPlatformTheme" << "Cancel";
    }
    void qtsOwnWordsAreBulgarian()
    {
        QFETCH(QString, context);
        QFETCH(QString, source);
        const QString shown = QCoreApplication::translate(context.toLatin1(), source.toUtf8());
        QVERIFY2(shown != source && shown.contains(QRegularExpression(u"\\p{Cyrillic}"_s)), qPrintable(shown));
    }

    // The walk opens what every item of the menu opens, the report items on a period, and each
    // window and dialog it meets is read for English words and asked for its help page.
    void everyWindowOfTheMenu()
    {
        m_practice = std::make_unique<TestPractice>();
        m_practice->addDoctor(u"Иван Петров"_s, u"2201234567"_s);
        run().CurrentMedicCode = u"2201234567"_s;
        run().CurrentMedicName = u"Иван Петров"_s;
        m_practice->addPatient(validEgn(QDate(1980, 5, 6)), u"Мария Иванова Петрова"_s, u"2201234567"_s);
        m_practice->addService(validEgn(QDate(1980, 5, 6)), QDate(2026, 3, 10), u"101"_s, u"2201234567"_s);
        m_window = std::make_unique<frmMain>(sourceHelpFolder());
        m_window->show();
        m_faults << englishWords(m_window.get());
        const QSet<QString> leftOut{u"mnuExit"_s, u"mnuHelpUpdate"_s, u"mnuViewButton"_s, u"mnuViewTime"_s};
        int walked = 0;
        for (QMenu *menu : m_window->menuBar()->findChildren<QMenu *>())
            for (QAction *item : menu->actions())
                if (!item->isSeparator() && item->isEnabled() && item->isVisible() && !leftOut.contains(item->objectName())) {
                    walk(item);
                    ++walked;
                }
        QVERIFY(walked > 20);
        QVERIFY(m_seenNames.size() > 15);

        QFileDialog files(nullptr, u"Зареждане на данни"_s);
        files.setOption(QFileDialog::DontUseNativeDialog);
        files.show();
        inspect(&files, u"a file dialog"_s);
        files.close();

        m_window.reset();
        m_practice.reset();
        QVERIFY2(m_faults.isEmpty(), qPrintable(m_faults.join(u'\n')));
    }
};

QTEST_MAIN(tst_WindowTexts)
#include "tst_WindowTexts.moc"
