#include "OpenWindows.h"
#include "TestPractice.h"

#include "base/RunState.h"
#include "base/ui/PrintPreview.h"
#include "reports/ui/ReportWindows.h"
#include "reports/ui/SeekDate.h"
#include "shell/ui/frmMain.h"
#include "store/Scratch.h"
#include "store/Sql.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QXmlStreamReader>

namespace {

const QString Doctor = QStringLiteral("2201234567");

} // namespace

// The six menu entries of the reports lead through the period dialog to their report.
class TestReportDialog final : public QObject
{
    Q_OBJECT
private slots:
    void init()
    {
        m_practice = std::make_unique<TestPractice>(QDate(2026, 4, 2));
        m_practice->addDoctor(QStringLiteral("Иван Петров"), Doctor);
        run().CurrentMedicCode = Doctor;
        run().CurrentMedicName = QStringLiteral("Иван Петров");
        m_egn = validEgn(QDate(1980, 5, 6));
        m_practice->addPatient(m_egn, QStringLiteral("Мария Иванова Петрова"), Doctor);
        m_practice->addService(m_egn, QDate(2026, 3, 5), QStringLiteral("101"), Doctor);
        m_practice->addService(m_egn, QDate(2026, 3, 5), QStringLiteral("301"), Doctor);
        store::run(store::clinicDb(), QStringLiteral("UPDATE Help SET Cena = 21.13"));
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
        SeekDate *dialog = openPeriod(entry, QStringLiteral("01.03.2026"), QStringLiteral("31.03.2026"));
        const QList<print::PrintPreview *> previews = openWindows<print::PrintPreview>();
        QCOMPARE(previews.size(), 1);
        QCOMPARE(previews.first()->objectName(), form);
        QVERIFY(dialog->isVisible());
        QVERIFY(scratchRows(table) > 0);
        QPointer<SeekDate> watched(dialog);
        previews.first()->close();
        QApplication::processEvents();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(scratchRows(table), 0);
        QVERIFY(!watched || !watched->isVisible());
    }

    void refusedPeriodsKeepTheDialog_data()
    {
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("last");
        QTest::addColumn<QString>("message");
        QTest::newRow("empty box: no message") << "01.03.2026" << "" << "";
        QTest::newRow("short") << "1.3.2026" << "31.03.2026" << "Грешка в изписването на датата!";
        QTest::newRow("month 13") << "01.13.2026" << "31.03.2026" << "Грешка в изписването на месеца!";
        QTest::newRow("31.02") << "01.02.2026" << "31.02.2026" << "не е ден от календара";
    }
    void refusedPeriodsKeepTheDialog()
    {
        QFETCH(QString, first);
        QFETCH(QString, last);
        QFETCH(QString, message);
        SeekDate *dialog = openPeriod(QStringLiteral("mnuOtchetWork"), first, last);
        QVERIFY(dialog->isVisible());
        QVERIFY(openWindows<print::PrintPreview>().isEmpty());
        if (message.isEmpty())
            QVERIFY(m_practice->dialogs().messages.isEmpty());
        else
            QVERIFY2(m_practice->dialogs().messages.value(0).contains(message),
                     qPrintable(m_practice->dialogs().messages.join(u'|')));
    }

    void cancelSaysSoAndCloses()
    {
        SeekDate *dialog = openPeriod(QStringLiteral("mnuOtchetWork"), {}, {});
        QPointer<SeekDate> watched(dialog);
        dialog->findChild<QPushButton *>(QStringLiteral("CancelButton"))->click();
        QCOMPARE(m_practice->dialogs().messages, QStringList{QStringLiteral("Няма избран период!")});
        QVERIFY(!watched || !watched->isVisible());
    }

    // "Осчетоводяване" leads to the XML report, as "Експорт XML" does; a cancelled save dialog
    // leaves the period for another try.
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
        SeekDate *dialog = openPeriod(entry, QStringLiteral("01.03.2026"), QStringLiteral("31.03.2026"));
        QVERIFY2(suggested.endsWith(QStringLiteral("/2300012345-032026.xml")), qPrintable(suggested));
        QVERIFY(dialog->isVisible());

        const QString target = m_practice->folder() + QStringLiteral("/report.xml");
        reportsui::setXmlFileChooser([target](QWidget *, const QString &) { return target; });
        QPointer<SeekDate> watched(dialog);
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
        QVERIFY(!watched || !watched->isVisible());
    }

private:
    SeekDate *openPeriod(const QString &entry, const QString &first, const QString &last)
    {
        m_window->action(entry)->trigger();
        SeekDate *dialog = SeekDate::current();
        if (!dialog)
            qFatal("no period dialog");
        dialog->findChild<QLineEdit *>(QStringLiteral("Text1_0"))->setText(first);
        dialog->findChild<QLineEdit *>(QStringLiteral("Text1_1"))->setText(last);
        dialog->findChild<QPushButton *>(QStringLiteral("OKButton"))->click();
        return dialog;
    }

    int scratchRows(const QString &table) const
    {
        return store::scalar(store::scratchDb(), QStringLiteral("SELECT COUNT(*) FROM ") + table).toInt();
    }

    std::unique_ptr<TestPractice> m_practice;
    std::unique_ptr<frmMain> m_window;
    QString m_egn;
};

QTEST_MAIN(TestReportDialog)
#include "tst_ReportDialog.moc"
