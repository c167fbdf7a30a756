// The treatment window driven as a doctor drives it: the header, the chart, a code typed into
// the grid and Enter, and the rows it must refuse.
#include "TestPractice.h"

#include "admin/Diary.h"
#include "admin/ui/Grafic.h"
#include "base/RunState.h"
#include "store/Sql.h"
#include "treatment/ui/DenHelp.h"
#include "treatment/ui/PathWay.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QPointer>
#include <QTest>
#include <QTimer>

namespace {

const QString Name = QStringLiteral("Иван Петров Иванов");

// The patient of the tests, with an address, phones, an allergy and a chart; the doctor D1 signed in.
QString addPatient(TestPractice &practice, const QDate &born = QDate(1980, 5, 5))
{
    run().CurrentMedicCode = QStringLiteral("D1");
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
    // The window is one for the run: each test starts without it, whatever the last one left.
    void cleanup()
    {
        for (QWidget *window : QApplication::topLevelWidgets())
            if (qobject_cast<DenHelp *>(window))
                delete window;
    }

    void headerChartAndSheet()
    {
        TestPractice practice;
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
        QVERIFY(push(window, "cmdPrint")->isEnabled());
        QVERIFY(push(window, "cmdPrintData")->isEnabled());
        QVERIFY(push(window, "cmdClose")->isDefault());
        // "(" on a stored row begins a new one.
        grid(window)->setCurrentIndex(grid(window)->model()->index(0, 3));
        grid(window)->setFocus();
        QTest::keyClick(grid(window), '(');
        QVERIFY(push(window, "cmdUpdate")->isEnabled());
        QVERIFY(!push(window, "cmdClose")->isDefault());
    }

    void shortCodeAndEnterStoreTheRow()
    {
        TestPractice practice;
        run().CurrentMedicCode = QStringLiteral("D1");
        run().MinutesLeft = 360;
        const QString egn = addPatient(practice);
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
        QCOMPARE(practice.count("SELECT COUNT(*) FROM Help WHERE Cena = 21.13 AND Times = 26 AND ListID = '000001'"), 1);
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
    }

    void correctionAfterPopravi()
    {
        TestPractice practice;
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
        // "Поправи" then "Запиши" standing on 508, a fund code and no short code: the fund would not
        // pay the line, so the save asks. НЕ leaves the row as it is; ДА stores it with no texts and 0.
        view->setCurrentIndex(model->index(0, 5));
        QTest::mouseClick(push(window, "cmdEdit"), Qt::LeftButton);
        QVERIFY(push(window, "cmdUpdate")->isEnabled());
        practice.dialogs().answers = {false};
        QTest::mouseClick(push(window, "cmdUpdate"), Qt::LeftButton);
        QCOMPARE(practice.dialogs().questions.size(), 1);
        QVERIFY(practice.dialogs().questions.first().contains(QStringLiteral("\"508\" е код на РЗОК")));
        QCOMPARE(practice.count("SELECT COUNT(*) FROM Help WHERE Help IS NULL AND Cena = 0"), 0);
        QVERIFY(push(window, "cmdUpdate")->isEnabled());
        practice.dialogs().answers = {true};
        QTest::mouseClick(push(window, "cmdUpdate"), Qt::LeftButton);
        QCOMPARE(practice.count("SELECT COUNT(*) FROM Help WHERE Help IS NULL AND Cena = 0"), 1);
        window->close();
    }

    // Enter in the date cell after correcting the date: the code typed before stays unexpanded,
    // and such a line is stored only after a question; НЕ leaves the row typed.
    void unexpandedCodeAsks()
    {
        TestPractice practice;
        DenHelp *window = DenHelp::open(addPatient(practice), Name, QStringLiteral("Edit"));
        QTableView *view = grid(window);
        QAbstractItemModel *model = view->model();
        model->setData(model->index(0, 5), QStringLiteral("1"));
        typeIntoCell(view, model->index(0, 1), QStringLiteral("14.03.2026"));
        QCOMPARE(practice.dialogs().questions.size(), 1);
        QVERIFY2(practice.dialogs().questions.first().contains(QStringLiteral("не е разгърнат")),
                 qPrintable(practice.dialogs().questions.first()));
        QCOMPARE(practice.count("SELECT COUNT(*) FROM Help"), 0);
        QCOMPARE(model->index(0, 5).data().toString(), QStringLiteral("1"));
    }

    // "Преглед..." opens the diary modally with the link set: a click on a slot, answered yes,
    // writes the patient's first name there.
    void bookingFromTheTreatmentWindow()
    {
        TestPractice practice;
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

    // A number with no birth date still gets the lines whose price does not depend on age; the
    // others are refused with a word on correcting the number. A missing chart stays empty.
    void patientWithoutBirthDate()
    {
        TestPractice practice;
        run().CurrentMedicCode = QStringLiteral("D1");
        const QString egn = QStringLiteral("8000001234"); // month 00: no birth date
        store::run(store::clinicDb(), QStringLiteral("INSERT INTO Pacients (EGN, Names) VALUES (?, ?)"), {egn, Name});
        DenHelp *window = DenHelp::open(egn, Name, QStringLiteral("Edit"));
        QVERIFY(window); // no Dental row: the chart stays empty, quietly
        QCOMPARE(labelText(window, "Label5_0"), QString());
        QVERIFY(practice.dialogs().messages.isEmpty());
        typeIntoCell(grid(window), grid(window)->model()->index(0, 5), QStringLiteral("30-2"));
        QCOMPARE(practice.dialogs().messages.size(), 1);
        QVERIFY(practice.dialogs().messages.first().contains(QStringLiteral("Корекция ЕГН")));
        QCOMPARE(practice.count("SELECT COUNT(*) FROM Help"), 0);
        typeIntoCell(grid(window), grid(window)->model()->index(0, 5), QStringLiteral("1"));
        QCOMPARE(practice.count("SELECT COUNT(*) FROM Help WHERE KodHelp = '101' AND Cena = 6.44"), 1);
    }

    void chartThatCannotBeReadIsSaidSo()
    {
        TestPractice practice;
        const QString egn = addPatient(practice);
        store::run(store::clinicDb(), QStringLiteral("ALTER TABLE Dental RENAME TO DentalAway"));
        QVERIFY(DenHelp::open(egn, Name, QStringLiteral("Edit")));
        QCOMPARE(practice.dialogs().messages.size(), 1);
        QVERIFY(practice.dialogs().messages.first().startsWith(QStringLiteral("Зъбният статус на пациента")));
    }

    // Escape over a typed row asks and never stores: НЕ keeps the row, ДА drops it; the window
    // stays. The close (the close box, "Затвори", "Изход" of the main window) asks over the row
    // and over referrals typed and not saved.
    void typingIsNotLostUnasked()
    {
        TestPractice practice;
        const QString egn = addPatient(practice);
        QPointer<DenHelp> window = DenHelp::open(egn, Name, QStringLiteral("Edit"));
        QTableView *view = grid(window);
        QAbstractItemModel *model = view->model();
        model->setData(model->index(0, 5), QStringLiteral("30"));
        practice.dialogs().answers = {false};
        QTest::keyClick(view, Qt::Key_Escape);
        QCOMPARE(practice.dialogs().questions,
                 QStringList{QStringLiteral("Има незаписан ред на услуга.\rДа се откажа ли от въведеното?")});
        QCOMPARE(model->index(0, 5).data().toString(), QStringLiteral("30"));
        practice.dialogs().answers = {true};
        QTest::keyClick(view, Qt::Key_Escape);
        QVERIFY(window && window->isVisible());
        QCOMPARE(model->index(0, 5).data().toString(), QString());
        QVERIFY(!push(window, "cmdUpdate")->isEnabled());
        QCOMPARE(practice.count("SELECT COUNT(*) FROM Help"), 0);
        QVERIFY(window->close()); // nothing typed: no question
        QCOMPARE(practice.dialogs().questions.size(), 2);

        window = DenHelp::open(egn, Name, QStringLiteral("Edit"));
        model = grid(window)->model();
        model->setData(model->index(0, 3), QStringLiteral("36"));
        QTest::mouseClick(push(window, "cmdParh"), Qt::LeftButton);
        auto *path = window->findChild<PathWay *>()->findChild<QTableView *>(QStringLiteral("grdPath"));
        path->model()->setData(path->model()->index(0, 1), QStringLiteral("12"));
        practice.dialogs().questions.clear();
        practice.dialogs().answers = {false, true};
        QVERIFY(!window->close());
        QVERIFY(window->isVisible());
        QCOMPARE(practice.dialogs().questions.first(),
                 QStringLiteral("Има незаписан ред на услуга.\rИма незаписано направление.\rДа се откажа ли от въведеното?"));
        QVERIFY(window->close());
        QCOMPARE(practice.dialogs().questions.size(), 2); // the referrals window, closed with it, asks no more
        QCOMPARE(practice.count("SELECT COUNT(*) FROM Help") + practice.count("SELECT COUNT(*) FROM Path"), 0);
    }

    // One window: the same patient again brings it forward; another patient is loaded into it,
    // after a question when typing would be dropped. Each patient's first line takes its own number.
    void oneWindowOneSheetPerPatient()
    {
        TestPractice practice;
        const QString first = addPatient(practice);
        const QString second = validEgn(QDate(1991, 7, 7), false);
        practice.addPatient(second, QStringLiteral("Мария Петрова"), QStringLiteral("D1"));
        DenHelp *window = DenHelp::open(first, Name, QStringLiteral("Edit"));
        typeIntoCell(grid(window), grid(window)->model()->index(0, 5), QStringLiteral("30"));
        QCOMPARE(DenHelp::open(first, Name, QStringLiteral("Edit")), window);
        QCOMPARE(window->SheetNumber(), QStringLiteral("000001"));

        QAbstractItemModel *model = grid(window)->model();
        model->setData(model->index(1, 3), QStringLiteral("11"));
        practice.dialogs().answers = {false};
        QCOMPARE(DenHelp::open(second, QStringLiteral("Мария Петрова"), QStringLiteral("Edit")), window);
        QCOMPARE(window->CurrentEGN(), first); // refused: the typing stays
        QCOMPARE(model->index(1, 3).data().toString(), QStringLiteral("11"));
        practice.dialogs().answers = {true};
        QCOMPARE(DenHelp::open(second, QStringLiteral("Мария Петрова"), QStringLiteral("New")), window);
        QCOMPARE(window->CurrentEGN(), second);
        QCOMPARE(window->OpenMode(), QStringLiteral("New"));
        QCOMPARE(window->SheetNumber(), QStringLiteral("000002"));
        typeIntoCell(grid(window), grid(window)->model()->index(0, 5), QStringLiteral("1"));
        QCOMPARE(practice.count("SELECT COUNT(DISTINCT ListID) FROM Help"), 2);
        QCOMPARE(practice.dialogs().questions.size(), 2);
    }

    // A line of another opening stored between the load and the first save: the window's line
    // takes the next number, shows it, and every later line of the opening carries it.
    void numberDecidedAtTheFirstSave()
    {
        TestPractice practice;
        DenHelp *window = DenHelp::open(addPatient(practice), Name, QStringLiteral("Edit"));
        QCOMPARE(window->SheetNumber(), QStringLiteral("000001"));
        practice.addService(validEgn(QDate(1970, 1, 1)), QDate(2026, 3, 15), QStringLiteral("101"), QStringLiteral("D1"),
                            QStringLiteral("000001"));
        QTableView *view = grid(window);
        typeIntoCell(view, view->model()->index(0, 5), QStringLiteral("30"));
        typeIntoCell(view, view->model()->index(1, 5), QStringLiteral("1"));
        QCOMPARE(window->SheetNumber(), QStringLiteral("000002"));
        QCOMPARE(practice.count("SELECT COUNT(*) FROM Help WHERE ListID = '000002'"), 2);
    }

    void noSheetNumberLeftKeepsTheWindowShut_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::newRow("the last number") << "032767";
        QTest::newRow("beyond 16 bits") << "99999";
    }
    void noSheetNumberLeftKeepsTheWindowShut()
    {
        QFETCH(QString, stored);
        TestPractice practice;
        const QString egn = addPatient(practice);
        practice.addService(egn, QDate(2026, 1, 5), QStringLiteral("301"), QStringLiteral("D1"), stored);
        QVERIFY(!DenHelp::open(egn, Name, QStringLiteral("Edit")));
        QCOMPARE(practice.dialogs().messages.size(), 1);
        QVERIFY(practice.dialogs().messages.first().contains(QStringLiteral("032767")));
    }
};

QTEST_MAIN(TestDenHelpScreen)
#include "tst_DenHelpScreen.moc"
