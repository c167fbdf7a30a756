#include "TestPractice.h"
#include "Typing.h"

#include "base/RunState.h"
#include "shell/ui/Desktop.h"
#include "store/DataPaths.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QApplication>
#include <QComboBox>
#include <QFileInfo>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace {

// Answers the modal windows of the start-up as a user would: each time a modal window is up,
// the step for its objectName runs; the names of the windows met are recorded in order.
class ModalDriver final
{
public:
    using Step = std::function<void(QWidget *)>;
    explicit ModalDriver(std::map<QString, Step> steps)
        : m_steps(std::move(steps))
    {
        QObject::connect(&m_timer, &QTimer::timeout, [this] { poll(); });
        m_timer.start(20);
    }
    QStringList met;

private:
    void poll()
    {
        QWidget *modal = QApplication::activeModalWidget();
        if (!modal || modal == m_last)
            return;
        m_last = modal;
        met << modal->objectName();
        if (auto step = m_steps.find(modal->objectName()); step != m_steps.end())
            step->second(modal);
        else
            modal->close();
    }
    std::map<QString, Step> m_steps;
    QTimer m_timer;
    QPointer<QWidget> m_last;
};

void enterDoctor(QWidget *form)
{
    const QStringList typed{"Д-р Мария Петрова", "7501010000", "2200000009", "парола1"};
    for (int i = 0; i < 4; ++i)
        typeText(form->findChild<QLineEdit *>(QStringLiteral("txtFields%1").arg(i + 1)), typed[i]);
    QTest::mouseClick(form->findChild<QPushButton *>(QStringLiteral("cmdClose")), Qt::LeftButton);
}

void signInFirst(QWidget *form)
{
    auto *names = form->findChild<QComboBox *>(QStringLiteral("Combo1"));
    QCOMPARE(names->count(), 1);
    names->setCurrentIndex(0);
    emit names->activated(0);
    typeText(form->findChild<QLineEdit *>(QStringLiteral("txtField")), QStringLiteral("парола1"));
    QTest::mouseClick(form->findChild<QPushButton *>(QStringLiteral("OKButton")), Qt::LeftButton);
}

} // namespace

class tst_FirstRun final : public QObject
{
    Q_OBJECT
private slots:
    void firstDoctorIsOfferedAtSignIn();
    void noDoctorEnteredEndsTheRun();
    void anExistingDoctorGoesStraightToSignIn();
    void emptyClinicFileIsNewOnlyWhenTheUserSaysSo_data();
    void emptyClinicFileIsNewOnlyWhenTheUserSaysSo();
};

void tst_FirstRun::firstDoctorIsOfferedAtSignIn()
{
    TestPractice practice;
    ModalDriver driver({{QStringLiteral("MedicAdd"), enterDoctor}, {QStringLiteral("Password"), signInFirst}});
    QVERIFY(signInAtStart());
    QCOMPARE(driver.met, (QStringList{"MedicAdd", "Password"}));
    QCOMPARE(run().CurrentMedicName, QStringLiteral("Д-р Мария Петрова"));
    QCOMPARE(run().CurrentMedicCode, QStringLiteral("2200000009"));
    QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM Medic")), 1);
}

void tst_FirstRun::noDoctorEnteredEndsTheRun()
{
    TestPractice practice;
    // Closing the form by its close box enters nothing; the sign-in finds the table still empty,
    // offers the form once more and ends the run.
    ModalDriver driver({{QStringLiteral("MedicAdd"), [](QWidget *form) { form->close(); }}});
    QVERIFY(!signInAtStart());
    QCOMPARE(driver.met, (QStringList{"MedicAdd", "MedicAdd"}));
    QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM Medic")), 0);
}

void tst_FirstRun::anExistingDoctorGoesStraightToSignIn()
{
    TestPractice practice;
    practice.addDoctor(QStringLiteral("Д-р Мария Петрова"), QStringLiteral("2200000009"), QStringLiteral("парола1"));
    ModalDriver driver({{QStringLiteral("Password"), signInFirst}});
    QVERIFY(signInAtStart());
    QCOMPARE(driver.met, QStringList{"Password"});
}

void tst_FirstRun::emptyClinicFileIsNewOnlyWhenTheUserSaysSo_data()
{
    QTest::addColumn<bool>("answer");
    QTest::newRow("НЕ: left as it is") << false;
    QTest::newRow("ДА: a new practice") << true;
}

void tst_FirstRun::emptyClinicFileIsNewOnlyWhenTheUserSaysSo()
{
    QFETCH(bool, answer);
    QTemporaryDir folder;
    const auto paths = store::DataPaths::inFolder(folder.path());
    QFile empty(paths.clinicDb);
    QVERIFY(empty.open(QIODevice::WriteOnly));
    empty.close();
    ScriptedDialogs answers;
    answers.answers.push_back(answer);
    setDialogPort(&answers);
    const Outcome opened = openDataFolder(paths);
    setDialogPort(nullptr);
    QCOMPARE(answers.questions.size(), 1);
    QVERIFY(answers.questions.first().contains(paths.clinicDb));
    QCOMPARE(opened.ok(), answer);
    if (answer) {
        QCOMPARE(store::scalar(store::clinicDb(), QStringLiteral("SELECT COUNT(*) FROM CenyZK")).toInt(), 9);
        store::closeStore();
    } else {
        QVERIFY2(opened.error().contains(paths.clinicDb), qPrintable(opened.error()));
        QCOMPARE(QFileInfo(paths.clinicDb).size(), 0);
    }
}

QTEST_MAIN(tst_FirstRun)
#include "tst_FirstRun.moc"
