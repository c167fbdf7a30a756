#include "OpenWindows.h"
#include "TestPractice.h"

#include "base/Calendar.h"
#include "base/RunState.h"
#include "base/ui/PrintPreview.h"
#include "reports/Period.h"
#include "reports/claimscheck/ClaimsCheck.h"
#include "reports/claimscheck/ClaimsCheckPage.h"
#include "reports/ui/ClaimsCheckWindow.h"
#include "reports/ui/ReportWindows.h"
#include "reports/ui/SeekDate.h"
#include "shell/ui/frmMain.h"
#include "store/Dates.h"
#include "store/Scratch.h"
#include "store/Sql.h"
#include "store/Store.h"
#include "treatment/ui/DenHelp.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <QTreeWidget>
#include <QXmlStreamReader>

namespace {

const QString Doctor = QStringLiteral("2201234567");
const QString March = QStringLiteral("01.03.2026");
const QString EndOfMarch = QStringLiteral("31.03.2026");

} // namespace

// The reports' menu entries lead through the period dialog to their report; the check of a
// period's claims to the window of its findings, from there to a patient's treatment window,
// and as the XML report's first step.
class TestReportMenus final : public QObject
{
    Q_OBJECT
private slots:
    // A clean practice: one patient, examined and filled once, every line priced and timed.
    void init()
    {
        m_practice = std::make_unique<TestPractice>(QDate(2026, 4, 2));
        m_practice->addDoctor(QStringLiteral("Иван Петров"), Doctor);
        run().CurrentMedicCode = Doctor;
        run().CurrentMedicName = QStringLiteral("Иван Петров");
        m_clean = addPatient(QDate(1980, 5, 6), QStringLiteral("Мария Иванова Петрова"));
        m_practice->addService(m_clean, QDate(2026, 3, 5), QStringLiteral("101"), Doctor);
        m_practice->addService(m_clean, QDate(2026, 3, 5), QStringLiteral("301"), Doctor);
        store::run(store::clinicDb(), QStringLiteral("UPDATE Help SET KodZab = '36' WHERE KodHelp = '301'"));
        priceEveryLine();
        m_window = std::make_unique<frmMain>(QFINDTESTDATA("../../help"));
        m_window->show();
    }
    void cleanup()
    {
        reportsui::setXmlFileChooser(nullptr);
        for (QWidget *widget : QApplication::topLevelWidgets())
            if (widget != m_window.get() && widget->isVisible())
                widget->close();
        QApplication::processEvents();
        m_window.reset();
        m_practice.reset();
    }

    // The findings grouped by rule; "Печат" shows them in the preview; a second check, of a
    // period that ends before the second examination (20.03), fills the same window with one
    // group less; "Затвори" closes the period dialog with it.
    void menuLeadsThroughTheDialogToTheGroupedFindings()
    {
        addFaults();
        ClaimsCheckWindow *window = checkFromMenu(March, EndOfMarch);
        QVERIFY(window);
        QCOMPARE(window->parentWidget(), m_window.get());
        const QList<reports::ClaimFinding> findings = expectedFindings(March, EndOfMarch);
        QCOMPARE((QStringList{label(window, "lblPeriod"), label(window, "lblDoctor"), label(window, "lblSummary")}),
                 (QStringList{"от 01.03.2026 до 31.03.2026", "д-р Иван Петров",
                              reports::FindingsSummary(int(findings.size()))}));
        QCOMPARE(treeShape(window), findingsShape(findings));
        // The faults made here are among the groups, so the comparison above compared something.
        QCOMPARE(treeShape(window).filter(QRegularExpression(QStringLiteral("\\((EXAM|UNKNOWN-CODE)\\): 1"))).size(), 2);

        window->findChild<QPushButton *>(QStringLiteral("cmdPrint"))->click();
        const QList<print::PrintPreview *> previews = openWindows<print::PrintPreview>();
        QCOMPARE(previews.size(), 1);
        QCOMPARE(previews.first()->objectName(), QStringLiteral("chkClaims"));
        previews.first()->close();

        QCOMPARE(checkFromMenu(March, QStringLiteral("15.03.2026")), window);
        QCOMPARE(treeShape(window), findingsShape(expectedFindings(March, QStringLiteral("15.03.2026"))));
        QVERIFY(treeShape(window).filter(QStringLiteral("(EXAM)")).isEmpty());

        QPointer<SeekDate> dialog(SeekDate::current());
        window->findChild<QPushButton *>(QStringLiteral("cmdClose"))->click();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!dialog || !dialog->isVisible());
    }

    // Enter or a double click on a patient or one of its findings opens the patient; a finding
    // of no patient opens nothing, and Enter never presses a button of the window.
    void activatingARowOpensThePatient_data()
    {
        QTest::addColumn<QString>("row");
        QTest::addColumn<bool>("byEnter");
        QTest::addColumn<bool>("opens");
        QTest::newRow("patient, Enter") << "patient" << true << true;
        QTest::newRow("finding, double click") << "finding" << false << true;
        QTest::newRow("unknown package, Enter") << "package" << true << false;
    }
    void activatingARowOpensThePatient()
    {
        QFETCH(QString, row);
        QFETCH(bool, byEnter);
        QFETCH(bool, opens);
        addFaults();
        leavePackageUnknown();
        ClaimsCheckWindow *window = checkFromMenu(March, EndOfMarch);
        QVERIFY(window);
        auto *tree = window->findChild<QTreeWidget *>(QStringLiteral("treeFindings"));
        QTreeWidgetItem *item = rowOf(tree, row);
        QVERIFY(item);
        tree->setCurrentItem(item);
        if (byEnter) {
            QTest::keyClick(tree, Qt::Key_Return);
        } else {
            const QPoint centre = tree->visualItemRect(item).center();
            QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, centre); // a double click's first press
            QTest::mouseDClick(tree->viewport(), Qt::LeftButton, {}, centre);
        }
        const QList<DenHelp *> treatments = openWindows<DenHelp>();
        QVERIFY(openWindows<print::PrintPreview>().isEmpty());
        if (!opens) {
            QVERIFY(treatments.isEmpty());
            return;
        }
        QCOMPARE(treatments.size(), 1);
        QCOMPARE(treatments.first()->CurrentEGN(), m_faulty);
        QCOMPARE(treatments.first()->OpenMode(), QStringLiteral("Edit"));
        QCOMPARE(treatments.first()->parentWidget(), m_window.get());
    }

    // Before the XML report is written the findings are offered: "Да" shows them and writes
    // nothing, "Не" writes the report, a clean period asks nothing, and a check that cannot run
    // says why and holds nothing up.
    void theXmlReportOffersTheFindingsFirst_data()
    {
        QTest::addColumn<QString>("practice");
        QTest::addColumn<bool>("answer");
        QTest::addColumn<bool>("asks");
        QTest::addColumn<bool>("written");
        QTest::newRow("findings, Да") << "faulty" << true << true << false;
        QTest::newRow("findings, Не") << "faulty" << false << true << true;
        QTest::newRow("clean") << "clean" << true << false << true;
        QTest::newRow("broken package table") << "broken" << true << false << true;
    }
    void theXmlReportOffersTheFindingsFirst()
    {
        QFETCH(QString, practice);
        QFETCH(bool, answer);
        QFETCH(bool, asks);
        QFETCH(bool, written);
        if (practice == u"faulty")
            addFaults();
        if (practice == u"broken")
            writePackageTable(QStringLiteral("FromYear,ToYear\n2000\n"));
        const QString target = m_practice->folder() + QStringLiteral("/report.xml");
        reportsui::setXmlFileChooser([target](QWidget *, const QString &) { return target; });
        m_practice->dialogs().answers.push_back(answer);

        SeekDate *dialog = openPeriod(QStringLiteral("mnuOtchetExportXML"), March, EndOfMarch);

        const QStringList &questions = m_practice->dialogs().questions;
        QCOMPARE(questions.size(), asks ? 1 : 0);
        if (asks) {
            const auto findings = expectedFindings(March, EndOfMarch);
            QCOMPARE(questions.first(), reports::FindingsQuestion(int(findings.size())));
        }
        if (practice == u"broken")
            QVERIFY2(m_practice->dialogs().messages.join(u'|').contains(QStringLiteral("AnnualPackage.csv")),
                     qPrintable(m_practice->dialogs().messages.join(u'|')));
        QCOMPARE(QFile::exists(target), written);
        QCOMPARE(openWindows<ClaimsCheckWindow>().size(), written ? 0 : 1);
        QCOMPARE(dialog->isVisible(), !written); // after "Да" the period waits for the report
    }

    // The window, opened first from the menu, then again from the XML report's offer: closing
    // it now leaves the period for the report.
    void theReportsPeriodOutlivesAWindowOpenedFromTheMenu()
    {
        addFaults();
        ClaimsCheckWindow *window = checkFromMenu(March, EndOfMarch);
        QVERIFY(window);
        m_practice->dialogs().answers.push_back(true);
        SeekDate *dialog = openPeriod(QStringLiteral("mnuOtchetExportXML"), March, EndOfMarch);
        QCOMPARE(openWindows<ClaimsCheckWindow>(), QList<ClaimsCheckWindow *>{window});
        window->close();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(dialog->isVisible());
    }

    // A printed report opens over the dialog with its scratch table filled; closing it empties
    // the table and closes the dialog.
    void printedReportsOpenOverTheDialogAndCloseIt_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::addColumn<QString>("form");
        QTest::addColumn<QString>("table");
        QTest::newRow("Дейности към ЗОК") << "mnuOtchetWork" << "rprWork" << "TempWork";
        QTest::newRow("Справка за ЗОК") << "mnuOtchetWorkGod" << "rprZOKC" << "TempZOKC";
        QTest::newRow("Спецификация") << "mnuOtSpecif" << "rptSpec" << "TempSpec";
        QTest::newRow("Разходи") << "mnuOtMat" << "rprMat" << "TempMater";
    }
    void printedReportsOpenOverTheDialogAndCloseIt()
    {
        QFETCH(QString, entry);
        QFETCH(QString, form);
        QFETCH(QString, table);
        QPointer<SeekDate> dialog = openPeriod(entry, March, EndOfMarch);
        const QList<print::PrintPreview *> previews = openWindows<print::PrintPreview>();
        QCOMPARE(previews.size(), 1);
        QCOMPARE(previews.first()->objectName(), form);
        QVERIFY(dialog->isVisible());
        QVERIFY(scratchRows(table) > 0);
        previews.first()->close();
        QApplication::processEvents();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(scratchRows(table), 0);
        QVERIFY(!dialog || !dialog->isVisible());
    }

    // A refused period keeps the dialog with the check's message (the checks themselves are
    // tried on the period alone); "Отказ" says so and closes it.
    void refusedPeriodKeepsTheDialogAndCancelClosesIt()
    {
        QPointer<SeekDate> dialog = openPeriod(QStringLiteral("mnuOtchetWork"), QStringLiteral("01.02.2026"),
                                               QStringLiteral("31.02.2026"));
        QVERIFY(dialog->isVisible());
        QVERIFY(openWindows<print::PrintPreview>().isEmpty());
        QCOMPARE(m_practice->dialogs().messages,
                 QStringList{reports::CheckPeriod(QStringLiteral("01.02.2026"), QStringLiteral("31.02.2026")).message});
        dialog->findChild<QPushButton *>(QStringLiteral("CancelButton"))->click();
        QCOMPARE(m_practice->dialogs().messages.last(), QStringLiteral("Няма избран период!"));
        QVERIFY(!dialog || !dialog->isVisible());
    }

    // "Осчетоводяване" leads to the XML report, as "Експорт XML" does: the suggested name, a
    // cancelled save dialog that leaves the period for another try, then the written report.
    void bothXmlEntriesSaveTheReport_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::newRow("Експорт XML") << "mnuOtchetExportXML";
        QTest::newRow("Осчетоводяване") << "mnuSlgSchet";
    }
    void bothXmlEntriesSaveTheReport()
    {
        QFETCH(QString, entry);
        store::run(store::clinicDb(), QStringLiteral("UPDATE MedicUnit SET UserUIN = ' 2300012345 '"));
        QString suggested;
        reportsui::setXmlFileChooser([&suggested](QWidget *, const QString &path) {
            suggested = path;
            return QString();
        });
        QPointer<SeekDate> dialog = openPeriod(entry, March, EndOfMarch);
        QVERIFY2(suggested.endsWith(QStringLiteral("/2300012345-032026.xml")), qPrintable(suggested));
        QVERIFY(dialog->isVisible());

        const QString target = m_practice->folder() + QStringLiteral("/report.xml");
        reportsui::setXmlFileChooser([target](QWidget *, const QString &) { return target; });
        dialog->findChild<QPushButton *>(QStringLiteral("OKButton"))->click();
        QFile written(target);
        QVERIFY(written.open(QIODevice::ReadOnly));
        QXmlStreamReader xml(&written);
        int services = 0;
        while (!xml.atEnd())
            if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == u"service")
                ++services;
        QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
        QCOMPARE(services, 2);
        QVERIFY(!dialog || !dialog->isVisible());
    }

private:
    SeekDate *openPeriod(const QString &entry, const QString &first, const QString &last)
    {
        m_window->action(entry)->trigger();
        return submitPeriod(first, last);
    }

    int scratchRows(const QString &table) const
    {
        return store::scalar(store::scratchDb(), QStringLiteral("SELECT COUNT(*) FROM ") + table).toInt();
    }

    QString addPatient(const QDate &born, const QString &name)
    {
        const QString egn = validEgn(born);
        m_practice->addPatient(egn, name, Doctor);
        store::run(store::clinicDb(), QStringLiteral("UPDATE Pacients SET DataB = ? WHERE EGN = ?"),
                   {dates::toIso(born), egn});
        return egn;
    }

    void priceEveryLine()
    {
        store::run(store::clinicDb(), QStringLiteral("UPDATE Help SET Cena = 21.13, Times = 20"));
    }

    // A second examination in the year, and a code the fund does not know, on one patient.
    void addFaults()
    {
        m_faulty = addPatient(QDate(1990, 7, 8), QStringLiteral("Петър Георгиев Стоянов"));
        m_practice->addService(m_faulty, QDate(2026, 3, 10), QStringLiteral("101"), Doctor, QStringLiteral("000002"));
        m_practice->addService(m_faulty, QDate(2026, 3, 10), QStringLiteral("999"), Doctor, QStringLiteral("000002"));
        m_practice->addService(m_faulty, QDate(2026, 3, 20), QStringLiteral("101"), Doctor, QStringLiteral("000003"));
        priceEveryLine();
    }

    // A table of the practice that knows no package of 2026: a finding of the period, of no patient.
    void leavePackageUnknown()
    {
        writePackageTable(QStringLiteral("FromYear,ToYear,AgeGroup,Examinations,Activities,EndodonticPermanent,"
                                         "Contract\n2000,2020,до 18,1,4,2,Стар\n2000,2020,над 18,1,2,,Стар\n"));
    }

    void writePackageTable(const QString &text)
    {
        QFile file(store::paths().folder + QStringLiteral("/AnnualPackage.csv"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text.toUtf8());
    }

    SeekDate *submitPeriod(const QString &first, const QString &last)
    {
        SeekDate *dialog = SeekDate::current();
        if (!dialog)
            qFatal("no period dialog");
        dialog->findChild<QLineEdit *>(QStringLiteral("Text1_0"))->setText(first);
        dialog->findChild<QLineEdit *>(QStringLiteral("Text1_1"))->setText(last);
        dialog->findChild<QPushButton *>(QStringLiteral("OKButton"))->click();
        return dialog;
    }

    ClaimsCheckWindow *checkFromMenu(const QString &first, const QString &last)
    {
        auto *item = m_window->findChild<QAction *>(QStringLiteral("mnuOtCheck"));
        if (!item)
            qFatal("no menu item of the check");
        item->trigger();
        submitPeriod(first, last);
        const QList<ClaimsCheckWindow *> windows = openWindows<ClaimsCheckWindow>();
        return windows.size() == 1 ? windows.first() : nullptr;
    }

    QList<reports::ClaimFinding> expectedFindings(const QString &first, const QString &last) const
    {
        const auto checked =
            reports::CheckClaims(store::clinicDb(), reports::CheckPeriod(first, last).period, Doctor, calendar::today());
        if (!checked)
            qFatal("%s", qPrintable(checked.error()));
        return checked.value();
    }

    static QString label(const QWidget *window, const char *name)
    {
        return window->findChild<QLabel *>(QString::fromLatin1(name))->text();
    }

    // The tree as lines: a rule's caption, "  " and a patient's, "    " and a finding's cells.
    static QStringList treeShape(const QWidget *window)
    {
        QStringList lines;
        const std::function<void(const QTreeWidgetItem *, const QString &)> walk =
            [&](const QTreeWidgetItem *item, const QString &indent) {
                lines << indent + (item->childCount() > 0 ? item->text(0)
                                                          : QStringList{item->text(0), item->text(1), item->text(2)}
                                                                .join(u'|'));
                for (int k = 0; k < item->childCount(); ++k)
                    walk(item->child(k), indent + QStringLiteral("  "));
            };
        const auto *tree = window->findChild<QTreeWidget *>(QStringLiteral("treeFindings"));
        for (int k = 0; k < tree->topLevelItemCount(); ++k)
            walk(tree->topLevelItem(k), {});
        return lines;
    }

    // The same lines made from the findings as the check gives them.
    static QStringList findingsShape(const QList<reports::ClaimFinding> &findings)
    {
        QStringList lines;
        for (qsizetype k = 0; k < findings.size(); ++k) {
            const reports::ClaimFinding &finding = findings.at(k);
            const bool newRule = k == 0 || findings.at(k - 1).rule != finding.rule;
            if (newRule) {
                const auto &rule = reports::ClaimRuleOf(finding.rule);
                const auto count = std::count_if(findings.cbegin(), findings.cend(),
                                                 [&](const auto &other) { return other.rule == finding.rule; });
                lines << QStringLiteral("%1 (%2): %3").arg(rule.title, rule.code).arg(count);
            }
            QString indent = QStringLiteral("  ");
            if (!finding.EGN.isEmpty()) {
                if (newRule || findings.at(k - 1).EGN != finding.EGN)
                    lines << indent + (finding.EGN + QStringLiteral("  ") + finding.name).trimmed();
                indent += QStringLiteral("  ");
            }
            const QString date = finding.date.isValid() ? dates::toTyped(finding.date) : QString();
            lines << indent + QStringList{date, finding.ListID, finding.text}.join(u'|');
        }
        return lines;
    }

    QTreeWidgetItem *rowOf(QTreeWidget *tree, const QString &row) const
    {
        for (int k = 0; k < tree->topLevelItemCount(); ++k) {
            QTreeWidgetItem *rule = tree->topLevelItem(k);
            if (row == u"package" && rule->text(0).contains(QStringLiteral("(PACKAGE-UNKNOWN)")))
                return rule->child(0);
            if (row != u"package" && rule->text(0).contains(QStringLiteral("(UNKNOWN-CODE)")))
                return row == u"patient" ? rule->child(0) : rule->child(0)->child(0);
        }
        return nullptr;
    }

    std::unique_ptr<TestPractice> m_practice;
    std::unique_ptr<frmMain> m_window;
    QString m_clean;
    QString m_faulty;
};

QTEST_MAIN(TestReportMenus)
#include "tst_ReportMenus.moc"
