// The treatment window driven as a doctor drives it: the header, the chart, a code typed into
// the grid and Enter, and the rows it must refuse.
#include "TestPractice.h"

#include "admin/Diary.h"
#include "admin/ui/Grafic.h"
#include "shell/Calendar.h"
#include "shell/RunState.h"
#include "store/Sql.h"
#include "store/Store.h"
#include "treatment/Minutes.h"
#include "treatment/ui/DenHelp.h"
#include "treatment/ui/PathWay.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSqlQuery>
#include <QTableView>
#include <QPointer>
#include <QTest>
#include <QTimer>

namespace {

const QString Name = QStringLiteral("Иван Петров Иванов");

QString addPatient(TestPractice &practice, const QDate &born = QDate(1980, 5, 5))
{
    const QString egn = validEgn(born);
    practice.addPatient(egn, Name, QStringLiteral("D1"));
    store::run(store::clinicDb(),
               QStringLiteral("UPDATE Pacients SET Tawn='София', UL='ул. Роза 5', BL=' ', ET='3', DTel='', STel='9876543', "
                              "MTel='0888123456', ZBook='123', Nep='пеницилин' WHERE EGN=?"),
               {egn});
    store::run(store::clinicDb(), QStringLiteral("UPDATE Dental SET Z1='*', Z24='C', Z2='K', Z25='O', Z30='X' WHERE EGN=?"),
               {egn});
    return egn;
}

QTableView *grid(DenHelp *window) { return window->findChild<QTableView *>(QStringLiteral("DBGrid1")); }
QString labelText(QWidget *window, const QString &name) { return window->findChild<QLabel *>(name)->text(); }
QPushButton *push(QWidget *window, const QString &name) { return window->findChild<QPushButton *>(name); }

// Types into the cell as a user does: the first key opens the editor, the rest goes into it, then Enter.
void typeIntoCell(QTableView *view, const QModelIndex &cell, const QString &text)
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // the editor of the last cell
    view->setCurrentIndex(cell);
    view->setFocus();
    QTest::keyClick(view, text.at(0).toLatin1());
    auto *editor = view->findChild<QLineEdit *>();
    QVERIFY(editor);
    QTest::keyClicks(editor, text.mid(1));
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents();
}

struct Opened
{
    DenHelp *window;
    QAbstractItemModel *model;
    int newRow() const { return model->rowCount() - 1; }
};

} // namespace

class TestDenHelpScreen final : public QObject
{
    Q_OBJECT
private slots:
    void init() { scheduleLink() = {}; }

    void headerChartAndSheet()
    {
        TestPractice practice;
        run().CurrentMedicCode = QStringLiteral("D1");
        const QString egn = addPatient(practice);
        practice.addService(egn, QDate(2026, 2, 1), QStringLiteral("301"), QStringLiteral("D1"), QStringLiteral("000004"));
        DenHelp *window = DenHelp::open(egn, Name + u' ', QStringLiteral("Edit"));
        QVERIFY(window);
        QCOMPARE(window->windowTitle(), QStringLiteral("Картон на ") + Name + QStringLiteral(" с ЕГН ") + egn
                                            + QStringLiteral("  ЗОК №123"));
        QCOMPARE(labelText(window, "Label2_2"), QStringLiteral("София, ул. Роза 5, ет.3"));
        QCOMPARE(labelText(window, "Label2_4"), QStringLiteral(", сл.9876543, моб.0888123456"));
        QCOMPARE(labelText(window, "Label4_6"), QStringLiteral("пеницилин"));
        // Z1 "*": milk 55 shows and the cell of Z24 is emptied; Z2 "K" takes the cell of Z25.
        QCOMPARE(labelText(window, "Label5_3"), QString());
        QCOMPARE(labelText(window, "Label5_4"), QStringLiteral("K"));
        QCOMPARE(labelText(window, "Label5_9"), QStringLiteral("X"));
        QVERIFY(!window->findChild<QLabel *>("Label1_0")->isHidden());
        QVERIFY(!window->findChild<QLabel *>("Label1_0")->text().isEmpty());
        QVERIFY(window->findChild<QLabel *>("Label1_2")->isHidden());
        QCOMPARE(window->FirstName(), QStringLiteral("Иван "));
        QCOMPARE(window->SheetNumber(), QStringLiteral("000005"));
        QVERIFY(!push(window, "cmdUpdate")->isEnabled());
        QVERIFY(!push(window, "cmdDelete")->isEnabled());
        QVERIFY(!push(window, "cmdPrint")->isEnabled());
        QVERIFY(!push(window, "cmdPrintData")->isEnabled());
        QVERIFY(push(window, "cmdClose")->isDefault());
        window->close();
    }

    void shortCodeAndEnterStoreTheRow()
    {
        TestPractice practice;
        run().CurrentMedicCode = QStringLiteral("D1");
        run().MinutesLeft = 360;
        const QString egn = addPatient(practice, QDate(2008, 3, 15)); // turns 18 today
        DenHelp *window = DenHelp::open(egn, Name, QStringLiteral("New"));
        QVERIFY(window);
        QTableView *view = grid(window);
        QAbstractItemModel *model = view->model();
        QCOMPARE(model->rowCount(), 1);
        QCOMPARE(labelText(window, "Data3"), QStringLiteral("Запис №: 0"));
        typeIntoCell(view, model->index(0, 5), QStringLiteral("30-2"));
        QCOMPARE(practice.count("SELECT COUNT(*) FROM Help"), 1);
        QCOMPARE(model->index(0, 5).data().toString(), QStringLiteral("301"));
        QCOMPARE(model->index(0, 2).data().toString(), QStringLiteral("Caries media"));
        QCOMPARE(model->index(0, 1).data().toString(), QStringLiteral("15.03.2026"));
        QCOMPARE(model->index(0, 7).data().toString(), QStringLiteral("000001"));
        QCOMPARE(labelText(window, "Label6"), QStringLiteral("Остават: 334 мин."));
        QCOMPARE(practice.count("SELECT COUNT(*) FROM Help WHERE Cena = 25.13 AND Times = 26 AND ListID = '000001'"), 1);
        QVERIFY(!push(window, "cmdUpdate")->isEnabled());
        QVERIFY(push(window, "cmdClose")->isDefault());

        // Enter again on the stored row changes nothing.
        view->setCurrentIndex(model->index(0, 5));
        QTest::keyClick(view, Qt::Key_Return);
        QCOMPARE(practice.count("SELECT COUNT(*) FROM Help WHERE Help = 'Caries media'"), 1);
        QVERIFY(practice.dialogs().messages.isEmpty());

        // A begun row whose date was cleared is refused with a message, and nothing is written.
        const int fresh = model->rowCount() - 1;
        model->setData(model->index(fresh, 1), QString());
        QVERIFY(push(window, "cmdUpdate")->isEnabled());
        QVERIFY(!push(window, "cmdClose")->isDefault());
        typeIntoCell(view, model->index(fresh, 5), QStringLiteral("58"));
        QCOMPARE(practice.dialogs().messages.size(), 1);
        QVERIFY(practice.dialogs().messages.first().contains(QStringLiteral("дата")));
        QCOMPARE(practice.count("SELECT COUNT(*) FROM Help"), 1);

        // "Изтрий" removes the line at once.
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(model->index(0, 2)).center());
        QVERIFY(push(window, "cmdDelete")->isEnabled());
        QTest::mouseClick(push(window, "cmdDelete"), Qt::LeftButton);
        QCOMPARE(practice.count("SELECT COUNT(*) FROM Help"), 0);
        window->close();
    }

    void correctionAfterPopravi()
    {
        TestPractice practice;
        run().CurrentMedicCode = QStringLiteral("D1");
        const QString egn = addPatient(practice);
        practice.addService(egn, QDate(2026, 3, 1), QStringLiteral("508"), QStringLiteral("D2"), QStringLiteral("000009"));
        DenHelp *window = DenHelp::open(egn, Name, QStringLiteral("Edit"));
        QTableView *view = grid(window);
        QAbstractItemModel *model = view->model();
        // Typing over a stored row's tooth cell with a short code, then Enter, rewrites the line.
        typeIntoCell(view, model->index(0, 3), QStringLiteral("30"));
        QCOMPARE(practice.count("SELECT COUNT(*) FROM Help WHERE KodZab = '301' AND KodHelp = '508' AND KodMedic = 'D1' "
                                "AND ListID = '000001' AND Help = 'Caries profunda'"),
                 1);
        // "Поправи" then Enter standing on 508: the line takes the present doctor again, texts of no code.
        view->setCurrentIndex(model->index(0, 5));
        QTest::mouseClick(push(window, "cmdEdit"), Qt::LeftButton);
        QVERIFY(push(window, "cmdUpdate")->isEnabled());
        QTest::mouseClick(push(window, "cmdUpdate"), Qt::LeftButton);
        QCOMPARE(practice.count("SELECT COUNT(*) FROM Help WHERE Help IS NULL AND Cena = 0"), 1);
        window->close();
    }

    void openParenBeginsARow()
    {
        TestPractice practice;
        run().CurrentMedicCode = QStringLiteral("D1");
        const QString egn = addPatient(practice);
        practice.addService(egn, QDate(2026, 3, 1), QStringLiteral("508"), QStringLiteral("D1"), QStringLiteral("000001"));
        DenHelp *window = DenHelp::open(egn, Name, QStringLiteral("Edit"));
        QTableView *view = grid(window);
        view->setCurrentIndex(view->model()->index(0, 3));
        view->setFocus();
        QTest::keyClick(view, '(');
        QVERIFY(push(window, "cmdUpdate")->isEnabled());
        QVERIFY(!push(window, "cmdClose")->isDefault());
        window->close();
    }

    // "Преглед..." opens the diary modally with the link set: a click on a slot, answered yes,
    // writes the patient's first name there.
    void bookingFromTheTreatmentWindow()
    {
        TestPractice practice;
        run().CurrentMedicCode = QStringLiteral("D1");
        const QString egn = addPatient(practice);
        DenHelp *window = DenHelp::open(egn, Name, QStringLiteral("Edit"));
        practice.dialogs().answers.push_back(true);
        QString shownLink;
        QTimer::singleShot(0, window, [&shownLink] {
            auto *diary = qobject_cast<Grafic *>(QApplication::activeModalWidget());
            if (!diary)
                return;
            shownLink = scheduleLink().ScheduleLink;
            QTest::mouseClick(diary->findChild<QPushButton *>(QStringLiteral("cmdAdd")), Qt::LeftButton);
            QTest::mouseClick(diary->findChild<QLineEdit *>(QStringLiteral("Text1_3")), Qt::LeftButton);
            diary->accept();
        });
        QTest::mouseClick(push(window, "cmdGrafic"), Qt::LeftButton);
        QCOMPARE(shownLink, QStringLiteral("1"));
        QCOMPARE(window->ScheduleLink(), QStringLiteral("1"));
        QCOMPARE(practice.dialogs().questions,
                 QStringList{QStringLiteral("Желаете ли да запиша този час за посещение от Иван ?")});
        QCOMPARE(practice.count("SELECT COUNT(*) FROM Grafic WHERE KodMedic = 'D1' AND Data = '2026-03-15' "
                                "AND Ch3 = 'Иван '"),
                 1);
        window->close();
    }

    void patientsThatCannotBePricedOrHaveNoChart()
    {
        TestPractice practice;
        run().CurrentMedicCode = QStringLiteral("D1");
        const QString egn = QStringLiteral("8000001234"); // month 00: no birth date
        store::run(store::clinicDb(), QStringLiteral("INSERT INTO Pacients (EGN, Names) VALUES (?, ?)"), {egn, Name});
        DenHelp *window = DenHelp::open(egn, Name, QStringLiteral("Edit"));
        QVERIFY(window); // no Dental row: the chart stays empty, quietly
        QCOMPARE(labelText(window, "Label5_0"), QString());
        typeIntoCell(grid(window), grid(window)->model()->index(0, 5), QStringLiteral("30-2"));
        QCOMPARE(practice.dialogs().messages.size(), 1);
        QCOMPARE(practice.count("SELECT COUNT(*) FROM Help"), 0);
        practice.dialogs().answers = {true};
        window->close();
    }

    void closingWithAnUnsavedRowAsks()
    {
        TestPractice practice;
        run().CurrentMedicCode = QStringLiteral("D1");
        const QString egn = addPatient(practice);
        QPointer<DenHelp> window = DenHelp::open(egn, Name, QStringLiteral("Edit"));
        QVERIFY(window);
        QVERIFY(window->close()); // nothing typed: no question
        QVERIFY(practice.dialogs().questions.isEmpty());

        window = DenHelp::open(egn, Name, QStringLiteral("Edit"));
        QAbstractItemModel *model = grid(window)->model();
        model->setData(model->index(0, 3), QStringLiteral("36"));
        practice.dialogs().answers = {false, true};
        QVERIFY(!window->close());
        QVERIFY(window->isVisible());
        QCOMPARE(practice.dialogs().questions.size(), 1);
        QVERIFY(window->close());
        QCOMPARE(practice.count("SELECT COUNT(*) FROM Help"), 0);
    }

    void sheetNumberOutOfRangeKeepsTheWindowShut()
    {
        TestPractice practice;
        run().CurrentMedicCode = QStringLiteral("D1");
        const QString egn = addPatient(practice);
        practice.addService(egn, QDate(2026, 1, 5), QStringLiteral("301"), QStringLiteral("D1"), QStringLiteral("99999"));
        QVERIFY(!DenHelp::open(egn, Name, QStringLiteral("Edit")));
        QCOMPARE(practice.dialogs().messages.size(), 1);
    }

    // Pictures of the three windows on a demo practice, for a person to look at:
    // VELMORATA_DEMO_DIR=<folder made by `velmorata demo`> VELMORATA_SHOTS=<folder for the PNGs>.
    void demoScreenshots()
    {
        const QString demo = qEnvironmentVariable("VELMORATA_DEMO_DIR");
        const QString shots = qEnvironmentVariable("VELMORATA_SHOTS");
        if (demo.isEmpty() || shots.isEmpty())
            QSKIP("no demo folder given");
        const auto paths = store::DataPaths::inFolder(demo);
        initRunState(paths);
        QVERIFY(store::openStore(paths).ok());
        ScriptedDialogs answers;
        setDialogPort(&answers);
        QSqlQuery doctor = store::run(store::clinicDb(), QStringLiteral("SELECT KodMedic, Names FROM Medic ORDER BY ID"));
        QVERIFY(doctor.next());
        run().CurrentMedicCode = doctor.value(0).toString();
        run().CurrentMedicName = doctor.value(1).toString();
        QVERIFY(RecalcMinutesLeft().ok());
        QSqlQuery patient = store::run(store::clinicDb(),
                                       QStringLiteral("SELECT EGN, Names FROM Pacients WHERE LKod = ? ORDER BY ID"),
                                       {run().CurrentMedicCode});
        QVERIFY(patient.next());
        DenHelp *window = DenHelp::open(patient.value(0).toString(), patient.value(1).toString(), QStringLiteral("Edit"));
        QVERIFY(window);
        QTableView *view = grid(window);
        typeIntoCell(view, view->model()->index(view->model()->rowCount() - 1, 5), QStringLiteral("30-2"));
        QTest::qWait(200);
        QVERIFY(window->grab().save(shots + QStringLiteral("/DenHelp.png")));

        QTest::mouseClick(push(window, "cmdParh"), Qt::LeftButton);
        auto *referrals = window->findChild<PathWay *>();
        QVERIFY(referrals);
        auto *path = referrals->findChild<QTableView *>(QStringLiteral("grdPath"));
        QAbstractItemModel *model = path->model();
        const int fresh = model->rowCount() - 1;
        model->setData(model->index(fresh, 0), calendar::today().toString(QStringLiteral("dd.MM.yyyy")));
        model->setData(model->index(fresh, 1), QStringLiteral("12"));
        path->setCurrentIndex(model->index(fresh, 1));
        QTest::mouseClick(path->viewport(), Qt::LeftButton, {}, path->visualRect(model->index(fresh, 1)).center());
        QTest::mouseClick(push(referrals, "cmdUpdatePath"), Qt::LeftButton);
        QTest::qWait(200);
        QVERIFY(referrals->grab().save(shots + QStringLiteral("/PathWay.png")));

        scheduleLink().ScheduleLink = QStringLiteral("1"); // as "Преглед..." sets it before the diary opens
        Grafic diary(window);
        diary.show();
        QTest::mouseClick(push(&diary, "cmdAdd"), Qt::LeftButton);
        answers.answers.push_back(true);
        QTest::mouseClick(diary.findChild<QLineEdit *>(QStringLiteral("Text1_5")), Qt::LeftButton);
        QTest::qWait(200);
        QVERIFY(diary.grab().save(shots + QStringLiteral("/Grafic.png")));
        qInfo() << "asked:" << answers.questions << "messages:" << answers.messages;
        window->close();
        setDialogPort(nullptr);
        store::closeStore();
    }
};

QTEST_MAIN(TestDenHelpScreen)
#include "tst_DenHelpScreen.moc"
