#include "OpenWindows.h"
#include "TestPractice.h"

#include "admin/ui/Cenoraz.h"
#include "patients/ui/KartonAdd.h"
#include "patients/ui/KorEGN.h"
#include "patients/ui/SeekName.h"
#include "base/RunState.h"
#include "base/ui/PrintPreview.h"
#include "shell/ui/frmMain.h"
#include "treatment/ui/DenHelp.h"

#include <QAction>
#include <QApplication>
#include <QTest>

namespace {

} // namespace

// The menu opens the screens of the daily work and hands patients from one to the next.
class TestMainCommands final : public QObject
{
    Q_OBJECT
private slots:
    void init()
    {
        m_practice = std::make_unique<TestPractice>();
        m_practice->addDoctor(QStringLiteral("Иван Петров"), QStringLiteral("2201234567"));
        run().CurrentMedicCode = QStringLiteral("2201234567");
        run().CurrentMedicName = QStringLiteral("Иван Петров");
        m_egn = validEgn(QDate(1980, 5, 6));
        m_practice->addPatient(m_egn, QStringLiteral("Мария Иванова Петрова"), QStringLiteral("2201234567"));
        m_window = std::make_unique<frmMain>(QFINDTESTDATA("../../help"));
        m_window->show();
    }
    void cleanup()
    {
        for (QWidget *widget : QApplication::topLevelWidgets())
            if (widget != m_window.get() && widget->isVisible())
                widget->close();
        QApplication::processEvents();
        m_window.reset();
        m_practice.reset();
    }

    void registrationOpensANewCardThenTheTreatmentWindow()
    {
        m_window->action(QStringLiteral("mnuPacReg"))->trigger();
        m_window->action(QStringLiteral("mnuPacReg"))->trigger();
        const QList<KartonAdd *> cards = openWindows<KartonAdd>();
        QCOMPARE(cards.size(), 1);
        QCOMPARE(run().CardMode, QStringLiteral("New"));
        emit cards.first()->openTreatment(m_egn, QStringLiteral("Мария Иванова Петрова"));
        const QList<DenHelp *> treatment = openWindows<DenHelp>();
        QCOMPARE(treatment.size(), 1);
        QVERIFY(treatment.first()->windowTitle().contains(m_egn));
    }

    void treatmentSearchOpensOneWindowAndClosesWithIt()
    {
        // Opened twice from the menu: still one search window, and one choice opens one window.
        m_window->action(QStringLiteral("mnuPacDen"))->trigger();
        m_window->action(QStringLiteral("mnuPacDen"))->trigger();
        QCOMPARE(run().SeekPurpose, 2);
        const QList<SeekName *> searches = openWindows<SeekName>();
        QCOMPARE(searches.size(), 1);
        emit searches.first()->patientChosen(2, QStringLiteral("Мария Иванова Петрова"), m_egn);
        const QList<DenHelp *> treatment = openWindows<DenHelp>();
        QCOMPARE(treatment.size(), 1);
        treatment.first()->close();
        QApplication::processEvents();
        QVERIFY(openWindows<SeekName>().isEmpty());
    }

    void correctionSearchOpensTheCardAsAChildWindow()
    {
        m_window->action(QStringLiteral("mnuPacKor"))->trigger();
        QCOMPARE(run().SeekPurpose, 1);
        const QList<SeekName *> searches = openWindows<SeekName>();
        QCOMPARE(searches.size(), 1);
        QCOMPARE(searches.first()->parentWidget(), m_window.get());
        emit searches.first()->patientChosen(1, QStringLiteral("Мария Иванова Петрова"), m_egn);
        QVERIFY(openWindows<DenHelp>().isEmpty());
        const QList<KartonAdd *> cards = openWindows<KartonAdd>();
        QCOMPARE(cards.size(), 1);
        QCOMPARE(cards.first()->CardEGN(), m_egn);
        QCOMPARE(cards.first()->parentWidget(), m_window.get());
    }

    // The inquiry prints the chosen patient's record and keeps the search open for the next one;
    // the diary print asks for the day and prints the signed-in doctor's page.
    void inquiryAndDiaryOpenTheirPrints()
    {
        m_window->action(QStringLiteral("mnuOtPac"))->trigger();
        const QList<SeekName *> searches = openWindows<SeekName>();
        QCOMPARE(searches.size(), 1);
        emit searches.first()->patientChosen(3, QStringLiteral("Мария Иванова Петрова"), m_egn);
        QList<print::PrintPreview *> previews = openWindows<print::PrintPreview>();
        QCOMPARE(previews.size(), 1);
        QVERIFY(openWindows<SeekName>().size() == 1);
        previews.first()->close();
        QApplication::processEvents();
        m_practice->dialogs().dates.push_back(DateChoice{true, QDate(2026, 3, 20)});
        m_window->action(QStringLiteral("mnuOtSpGraf"))->trigger();
        QVERIFY(m_practice->dialogs().dates.empty());
        QCOMPARE(openWindows<print::PrintPreview>().size(), 1);
        QVERIFY(m_practice->dialogs().messages.isEmpty());
    }

    void egnCorrectionOpensOnce()
    {
        m_window->action(QStringLiteral("mnuPacKorEGN"))->trigger();
        m_window->action(QStringLiteral("mnuPacKorEGN"))->trigger();
        QCOMPARE(openWindows<KorEGN>().size(), 1);
    }

private:
    std::unique_ptr<TestPractice> m_practice;
    std::unique_ptr<frmMain> m_window;
    QString m_egn;
};

QTEST_MAIN(TestMainCommands)
#include "tst_MainCommands.moc"
