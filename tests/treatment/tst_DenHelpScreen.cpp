// The treatment window driven as a doctor drives it: the header, the chart, a code typed into
// the grid and Enter, and the rows it must refuse.
#include "TestPractice.h"

#include "base/RunState.h"
#include "diary/Diary.h"
#include "diary/ui/Grafic.h"
#include "patients/ui/MouthView.h"
#include "store/Sql.h"
#include "treatment/ChartPicture.h"
#include "treatment/PatientHeader.h"
#include "treatment/ui/DenHelp.h"
#include "treatment/ui/PathWay.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

const QString Name = u"Иван Петров Иванов"_s;

// The patient of the tests, with an address, phones, an allergy and a chart; the doctor D1 signed in.
QString addPatient(TestPractice &practice, const QDate &born = QDate(1980, 5, 5))
{
    run().CurrentMedicCode = u"D1"_s;
    const QString egn = validEgn(born);
    practice.addPatient(egn, Name, u"D1"_s);
    store::run(store::clinicDb(),
               u"UPDATE Pacients SET Tawn='София', UL='ул. Роза 5', BL=' ', ET='3', DTel='', STel='9876543', "
               "MTel='0888123456', ZBook='123', Nep='пеницилин' WHERE EGN=?"_s,
               {egn});
    store::run(store::clinicDb(), u"UPDATE Dental SET Z1='*', Z24='C', Z2='K', Z25='O', Z30='X' WHERE EGN=?"_s, {egn});
    return egn;
}

// "KV=Лозенец;UL=ул. Роза 5" -> fields, for the patient's row as for the chart
template <typename Fields> Fields fieldsOf(const QString &spec)
{
    Fields fields;
    for (const QString &pair : spec.split(u';', Qt::SkipEmptyParts))
        fields.insert(pair.section(u'=', 0, 0), pair.section(u'=', 1));
    return fields;
}

QTableView *grid(DenHelp *window) { return window->findChild<QTableView *>(u"DBGrid1"_s); }
QAbstractItemModel *model(DenHelp *window) { return grid(window)->model(); }
QString labelText(QWidget *window, const QString &name) { return window->findChild<QLabel *>(name)->text(); }
QPushButton *push(QWidget *window, const QString &name) { return window->findChild<QPushButton *>(name); }

// Types into the cell as a user does: the first key opens the editor, the rest goes into it, then Enter.
void typeIntoCell(DenHelp *window, int row, int column, const QString &text)
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // the editor of the last cell
    QTableView *view = grid(window);
    view->setCurrentIndex(view->model()->index(row, column));
    view->setFocus();
    QTest::keyClick(view, text.at(0).toLatin1());
    auto *editor = view->findChild<QLineEdit *>();
    QVERIFY(editor);
    QTest::keyClicks(editor, text.mid(1));
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents();
}

QString cell(DenHelp *window, int row, int column) { return model(window)->index(row, column).data().toString(); }

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

    void address_data()
    {
        QTest::addColumn<QString>("fields");
        QTest::addColumn<QString>("line");
        QTest::newRow("town only") << "Tawn=София" << "София";
        QTest::newRow("every part, in order") << "AP=7;ET=3;VX=А;BL=12;UL=ул. Роза 5;KV=Лозенец;Tawn=София"
                                              << "София, Лозенец, ул. Роза 5, бл.12, вх.А, ет.3, ап.7";
        QTest::newRow("blank parts are left out") << "Tawn=София;KV= ;BL=  ;AP=7" << "София, ап.7";
        QTest::newRow("a part keeps its own blanks") << "Tawn=София;ET= 3 " << "София, ет. 3 ";
        QTest::newRow("no town: the line starts with the comma") << "UL=ул. Роза 5" << ", ул. Роза 5";
    }
    void address()
    {
        QFETCH(QString, fields);
        QTEST(PatientAddress(fieldsOf<PatientFields>(fields)), "line");
    }

    void telephone_data()
    {
        QTest::addColumn<QString>("fields");
        QTest::addColumn<QString>("line");
        QTest::newRow("none") << "" << "";
        QTest::newRow("home with the area code") << "TKod=02;DTel=9876543" << "дом.02/9876543";
        QTest::newRow("all three: the mobile takes no area code")
            << "TKod=02;DTel=111;STel=222;MTel=0888" << "дом.02/111, сл.02/222, моб.0888";
        QTest::newRow("no home number: starts with the comma") << "STel=9876543" << ", сл.9876543";
        QTest::newRow("mobile only") << "TKod=02;MTel=0888" << ", моб.0888";
        QTest::newRow("a lone blank still counts") << "DTel= " << "дом. ";
    }
    void telephone()
    {
        QFETCH(QString, fields);
        QTEST(PatientTelephone(fieldsOf<PatientFields>(fields)), "line");
    }

    void firstName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("first");
        QTest::newRow("three names") << "Иван Петров Иванов" << "Иван ";
        QTest::newRow("two blanks between") << "Иван  Петров" << "Иван ";
        QTest::newRow("no blank") << "Иван" << "";
        QTest::newRow("empty") << "" << "";
    }
    void firstName()
    {
        QFETCH(QString, name);
        QTEST(FirstName(name), "first");
    }

    void chart_data()
    {
        QTest::addColumn<QString>("fields");
        QTest::addColumn<int>("cell"); // 0..15 upper row, 16..31 lower row
        QTest::addColumn<QString>("shown");
        QTest::addColumn<int>("milk"); // index of the milk number that must show, -1 for none
        // Z24 is the fourth cell of the upper row (tooth 15); Z40 the fourth of the lower (45).
        QTest::newRow("permanent tooth alone") << "Z24=C" << 3 << "C" << -1;
        QTest::newRow("star empties the permanent cell") << "Z1=*;Z24=C" << 3 << "" << 0;
        QTest::newRow("star with blanks is a star") << "Z1= * ;Z24=C" << 3 << "" << 0;
        QTest::newRow("milk code takes the cell") << "Z1=K;Z24=C" << 3 << "K" << 0;
        QTest::newRow("empty milk field leaves the permanent") << "Z1=;Z24=C" << 3 << "C" << -1;
        QTest::newRow("lower jaw") << "Z11=O;Z40=X" << 19 << "O" << 10;
        QTest::newRow("last milk field") << "Z20=R;Z49=E" << 28 << "R" << 19;
    }
    void chart()
    {
        QFETCH(QString, fields);
        QFETCH(int, cell);
        const ChartPicture picture = BuildChartPicture(fieldsOf<ChartFields>(fields));
        QCOMPARE(picture.upper.size(), 16);
        QCOMPARE(picture.lower.size(), 16);
        QTEST((cell < 16 ? picture.upper : picture.lower).value(cell % 16), "shown");
        QCOMPARE(picture.milkShown.size(), 20);
        QTEST(int(picture.milkShown.indexOf(true)), "milk");
    }

    void unreadableHeaderSaysSo()
    {
        TestPractice practice;
        QVERIFY(LoadPatientHeader(store::clinicDb(), u"8001010000"_s).ok());
        store::run(store::clinicDb(), u"ALTER TABLE Pacients RENAME TO PacientsGone"_s);
        const auto header = LoadPatientHeader(store::clinicDb(), u"8001010000"_s);
        QVERIFY(!header.ok());
        QVERIFY(header.error().startsWith(u"Няма избрани имена!\r"_s));
    }

    void headerChartAndSheet()
    {
        TestPractice practice;
        const QString egn = addPatient(practice);
        practice.addService(egn, QDate(2026, 2, 1), u"301"_s, u"D1"_s, u"000004"_s);
        DenHelp *window = DenHelp::open(egn, Name + u' ', u"Edit"_s);
        QVERIFY(window);
        QCOMPARE(window->windowTitle(), u"Картон на "_s + Name + u" с ЕГН "_s + egn + u"  ЗОК №123"_s);
        // Z1 "*": milk 55 shows and the cell of Z24 is emptied; Z2 "K" takes the cell of Z25.
        const QList<std::pair<QString, QString>> labels{
            {u"Label2_2"_s, u"София, ул. Роза 5, ет.3"_s}, {u"Label2_4"_s, u", сл.9876543, моб.0888123456"_s},
            {u"Label4_6"_s, u"пеницилин"_s},              {u"Label5_3"_s, QString()},
            {u"Label5_4"_s, u"K"_s},                      {u"Label5_9"_s, u"X"_s}};
        for (const auto &[name, text] : labels)
            QCOMPARE(labelText(window, name), text);
        QVERIFY(!window->findChild<QLabel *>(u"Label1_0"_s)->isHidden());
        QVERIFY(window->findChild<QLabel *>(u"Label1_2"_s)->isHidden());
        QCOMPARE(window->SheetNumber(), u"000005"_s);
        QVERIFY(!push(window, u"cmdUpdate"_s)->isEnabled() && push(window, u"cmdClose"_s)->isDefault());
        // "(" on a stored row begins a new one.
        grid(window)->setCurrentIndex(model(window)->index(0, 3));
        grid(window)->setFocus();
        QTest::keyClick(grid(window), '(');
        QVERIFY(push(window, u"cmdUpdate"_s)->isEnabled());
        QVERIFY(!push(window, u"cmdClose"_s)->isDefault());
    }

    // The drawn mouth shows the patient's chart; a tooth pointed at there is typed into "Код зъб"
    // of the row being typed, and nothing is stored until Enter.
    void pointingAtAToothTypesItsNumber()
    {
        TestPractice practice;
        DenHelp *window = DenHelp::open(addPatient(practice), Name, u"Edit"_s);
        QVERIFY(window);
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window));
        auto *mouth = window->findChild<MouthView *>(u"Mouth"_s);
        QVERIFY(mouth && mouth->isVisible());
        // Z1 "*" puts milk 55 into the mouth and fades 15, whose "C" still shows; Z25 "O" under milk "K".
        const mouth::MouthPicture &picture = mouth->picture();
        QVERIFY(picture.teeth.at(0).present && !picture.teeth.at(23).present);
        for (const QString &tag : {u"Z24:caries"_s, u"Z2:crown"_s, u"Z25:filling"_s, u"Z30:artificial"_s})
            QVERIFY2(picture.drawing.has(tag), qPrintable(tag));

        const int fresh = model(window)->rowCount() - 1;
        QTest::mouseClick(mouth, Qt::LeftButton, {}, mouth->centreOf(50));
        QCOMPARE(cell(window, fresh, 3), u"36"_s);
        QCOMPARE(grid(window)->currentIndex(), model(window)->index(fresh, 3));
        QVERIFY(grid(window)->hasFocus());
        QVERIFY(push(window, u"cmdUpdate"_s)->isEnabled());
        // Another tooth replaces it in the same row; a milk tooth gives its milk number.
        QTest::mouseClick(mouth, Qt::LeftButton, {}, mouth->centreOf(1));
        QCOMPARE(cell(window, fresh, 3), u"55"_s);
        QCOMPARE(model(window)->rowCount(), fresh + 1);
        QCOMPARE(practice.count(u"SELECT COUNT(*) FROM Help"_s), 0);
    }

    void shortCodeAndEnterStoreTheRow()
    {
        TestPractice practice;
        run().MinutesLeft = 360;
        DenHelp *window = DenHelp::open(addPatient(practice), Name, u"New"_s);
        QVERIFY(window);
        QCOMPARE(model(window)->rowCount(), 1);
        QCOMPARE(labelText(window, u"Data3"_s), u"Запис №: 0"_s);
        typeIntoCell(window, 0, 5, u"30-2"_s);
        QCOMPARE((QStringList{cell(window, 0, 5), cell(window, 0, 2), cell(window, 0, 1), cell(window, 0, 7)}),
                 (QStringList{"301", "Caries media", "15.03.2026", "000001"}));
        QCOMPARE(labelText(window, u"Label6"_s), u"Остават: 334 мин."_s);
        QCOMPARE(practice.count(u"SELECT COUNT(*) FROM Help WHERE Cena = 21.13 AND Times = 26 AND ListID = '000001'"_s), 1);
        // The tooth box was left empty: the line is stored, and the doctor is told it wants one.
        QCOMPARE(practice.dialogs().messages.size(), 1);
        QVERIFY2(practice.dialogs().messages.first().startsWith(u"Дейност 301 е записана без код на зъб."_s),
                 qPrintable(practice.dialogs().messages.first()));
        practice.dialogs().messages.clear();
        QVERIFY(!push(window, u"cmdUpdate"_s)->isEnabled());
        QVERIFY(push(window, u"cmdClose"_s)->isDefault());

        // Enter again on the stored row changes nothing.
        grid(window)->setCurrentIndex(model(window)->index(0, 5));
        QTest::keyClick(grid(window), Qt::Key_Return);
        QCOMPARE(practice.count(u"SELECT COUNT(*) FROM Help WHERE Help = 'Caries media'"_s), 1);
        QVERIFY(practice.dialogs().messages.isEmpty());

        // A begun row whose date was cleared is refused with a message, and nothing is written.
        const int fresh = model(window)->rowCount() - 1;
        model(window)->setData(model(window)->index(fresh, 1), QString());
        QVERIFY(push(window, u"cmdUpdate"_s)->isEnabled());
        QVERIFY(!push(window, u"cmdClose"_s)->isDefault());
        typeIntoCell(window, fresh, 5, u"58"_s);
        QCOMPARE(practice.dialogs().messages.size(), 1);
        QVERIFY(practice.dialogs().messages.first().contains(u"дата"_s));
        QCOMPARE(practice.count(u"SELECT COUNT(*) FROM Help"_s), 1);

        // "Изтрий" removes the line at once.
        QTableView *view = grid(window);
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(model(window)->index(0, 2)).center());
        QVERIFY(push(window, u"cmdDelete"_s)->isEnabled());
        QTest::mouseClick(push(window, u"cmdDelete"_s), Qt::LeftButton);
        QCOMPARE(practice.count(u"SELECT COUNT(*) FROM Help"_s), 0);
    }

    void correctionAfterPopravi()
    {
        TestPractice practice;
        const QString egn = addPatient(practice);
        practice.addService(egn, QDate(2026, 3, 1), u"508"_s, u"D2"_s, u"000009"_s);
        DenHelp *window = DenHelp::open(egn, Name, u"Edit"_s);
        // Typing over a stored row's tooth cell with a short code, then Enter, rewrites the line.
        typeIntoCell(window, 0, 3, u"30"_s);
        QCOMPARE(practice.count(u"SELECT COUNT(*) FROM Help WHERE KodZab = '301' AND KodHelp = '508' AND KodMedic = 'D1' "
                                "AND ListID = '000001' AND Help = 'Caries profunda'"_s),
                 1);
        // "Поправи" then "Запиши" standing on 508, a fund code and no short code: the fund would not
        // pay the line, so the save asks. НЕ leaves the row as it is; ДА stores it with no texts and 0.
        grid(window)->setCurrentIndex(model(window)->index(0, 5));
        QTest::mouseClick(push(window, u"cmdEdit"_s), Qt::LeftButton);
        QVERIFY(push(window, u"cmdUpdate"_s)->isEnabled());
        const QString unpaid = u"SELECT COUNT(*) FROM Help WHERE Help IS NULL AND Cena = 0"_s;
        practice.dialogs().answers = {false};
        QTest::mouseClick(push(window, u"cmdUpdate"_s), Qt::LeftButton);
        QCOMPARE(practice.dialogs().questions.size(), 1);
        QVERIFY(practice.dialogs().questions.first().contains(u"\"508\" е код на РЗОК"_s));
        QCOMPARE(practice.count(unpaid), 0);
        QVERIFY(push(window, u"cmdUpdate"_s)->isEnabled());
        practice.dialogs().answers = {true};
        QTest::mouseClick(push(window, u"cmdUpdate"_s), Qt::LeftButton);
        QCOMPARE(practice.count(unpaid), 1);
    }

    // "Преглед..." opens the diary modally with the link set: a click on a slot, answered yes,
    // writes the patient's first name there.
    void bookingFromTheTreatmentWindow()
    {
        TestPractice practice;
        DenHelp *window = DenHelp::open(addPatient(practice), Name, u"Edit"_s);
        practice.dialogs().answers.push_back(true);
        QString shownLink;
        QTimer::singleShot(0, window, [&shownLink] {
            auto *diary = qobject_cast<Grafic *>(QApplication::activeModalWidget());
            if (!diary)
                return;
            shownLink = scheduleLink().ScheduleLink;
            QTest::mouseClick(diary->findChild<QPushButton *>(u"cmdAdd"_s), Qt::LeftButton);
            QTest::mouseClick(diary->findChild<QLineEdit *>(u"Text1_3"_s), Qt::LeftButton);
            diary->accept();
        });
        QTest::mouseClick(push(window, u"cmdGrafic"_s), Qt::LeftButton);
        QCOMPARE(shownLink, u"1"_s);
        QCOMPARE(window->ScheduleLink(), u"1"_s);
        QCOMPARE(practice.dialogs().questions, QStringList{u"Желаете ли да запиша този час за посещение от Иван ?"_s});
        QCOMPARE(practice.count(u"SELECT COUNT(*) FROM Grafic WHERE KodMedic = 'D1' AND Data = '2026-03-15' "
                                "AND Ch3 = 'Иван '"_s),
                 1);
    }

    // A patient without a chart row opens quietly with an empty chart; a chart table that cannot
    // be read is said.
    void chartMissingIsQuietUnreadableIsSaidSo()
    {
        TestPractice practice;
        const QString egn = addPatient(practice);
        store::run(store::clinicDb(), u"DELETE FROM Dental WHERE EGN = ?"_s, {egn});
        DenHelp *window = DenHelp::open(egn, Name, u"Edit"_s);
        QVERIFY(window);
        QCOMPARE(labelText(window, u"Label5_0"_s), QString());
        QVERIFY(practice.dialogs().messages.isEmpty());
        delete window;
        store::run(store::clinicDb(), u"ALTER TABLE Dental RENAME TO DentalAway"_s);
        QVERIFY(DenHelp::open(egn, Name, u"Edit"_s));
        QCOMPARE(practice.dialogs().messages.size(), 1);
        QVERIFY(practice.dialogs().messages.first().startsWith(u"Зъбният статус на пациента"_s));
    }

    // Escape over a typed row asks and never stores: НЕ keeps the row, ДА drops it; the window
    // stays. The close (the close box, "Затвори", "Изход" of the main window) asks over the row
    // and over referrals typed and not saved.
    void typingIsNotLostUnasked()
    {
        TestPractice practice;
        const QString egn = addPatient(practice);
        QPointer<DenHelp> window = DenHelp::open(egn, Name, u"Edit"_s);
        model(window)->setData(model(window)->index(0, 5), u"30"_s);
        practice.dialogs().answers = {false};
        QTest::keyClick(grid(window), Qt::Key_Escape);
        QCOMPARE(practice.dialogs().questions,
                 QStringList{u"Има незаписан ред на услуга.\rДа се откажа ли от въведеното?"_s});
        QCOMPARE(cell(window, 0, 5), u"30"_s);
        practice.dialogs().answers = {true};
        QTest::keyClick(grid(window), Qt::Key_Escape);
        QVERIFY(window && window->isVisible());
        QCOMPARE(cell(window, 0, 5), QString());
        QVERIFY(!push(window, u"cmdUpdate"_s)->isEnabled());
        QVERIFY(window->close()); // nothing typed: no question
        QCOMPARE(practice.dialogs().questions.size(), 2);

        window = DenHelp::open(egn, Name, u"Edit"_s);
        model(window)->setData(model(window)->index(0, 3), u"36"_s);
        QTest::mouseClick(push(window, u"cmdParh"_s), Qt::LeftButton);
        auto *path = window->findChild<PathWay *>()->findChild<QTableView *>(u"grdPath"_s);
        path->model()->setData(path->model()->index(0, 1), u"12"_s);
        practice.dialogs().questions.clear();
        practice.dialogs().answers = {false, true};
        QVERIFY(!window->close());
        QVERIFY(window->isVisible());
        QCOMPARE(practice.dialogs().questions.first(),
                 u"Има незаписан ред на услуга.\rИма незаписано направление.\rДа се откажа ли от въведеното?"_s);
        QVERIFY(window->close());
        QCOMPARE(practice.dialogs().questions.size(), 2); // the referrals window, closed with it, asks no more
        QCOMPARE(practice.count(u"SELECT COUNT(*) FROM Help"_s) + practice.count(u"SELECT COUNT(*) FROM Path"_s), 0);
    }

    // One window: the same patient again brings it forward; another patient is loaded into it,
    // after a question when typing would be dropped. Each patient's first line takes its own number.
    void oneWindowOneSheetPerPatient()
    {
        TestPractice practice;
        const QString first = addPatient(practice);
        const QString second = validEgn(QDate(1991, 7, 7), false);
        practice.addPatient(second, u"Мария Петрова"_s, u"D1"_s);
        DenHelp *window = DenHelp::open(first, Name, u"Edit"_s);
        typeIntoCell(window, 0, 5, u"30"_s);
        QCOMPARE(DenHelp::open(first, Name, u"Edit"_s), window);
        QCOMPARE(window->SheetNumber(), u"000001"_s);
        model(window)->setData(model(window)->index(1, 3), u"11"_s);
        practice.dialogs().answers = {false};
        QCOMPARE(DenHelp::open(second, u"Мария Петрова"_s, u"Edit"_s), window);
        QCOMPARE(window->CurrentEGN(), first); // refused: the typing stays
        QCOMPARE(cell(window, 1, 3), u"11"_s);
        practice.dialogs().answers = {true};
        QCOMPARE(DenHelp::open(second, u"Мария Петрова"_s, u"New"_s), window);
        QCOMPARE(window->CurrentEGN(), second);
        QCOMPARE(window->OpenMode(), u"New"_s);
        QCOMPARE(window->SheetNumber(), u"000002"_s);
        typeIntoCell(window, 0, 5, u"1"_s);
        QCOMPARE(practice.count(u"SELECT COUNT(DISTINCT ListID) FROM Help"_s), 2);
        QCOMPARE(practice.dialogs().questions.size(), 2);
    }

    void noSheetNumberLeftKeepsTheWindowShut()
    {
        TestPractice practice;
        const QString egn = addPatient(practice);
        practice.addService(egn, QDate(2026, 1, 5), u"301"_s, u"D1"_s, u"032767"_s);
        QVERIFY(!DenHelp::open(egn, Name, u"Edit"_s));
        QCOMPARE(practice.dialogs().messages.size(), 1);
        QVERIFY(practice.dialogs().messages.first().contains(u"032767"_s));
    }
};

QTEST_MAIN(TestDenHelpScreen)
#include "tst_DenHelpScreen.moc"
