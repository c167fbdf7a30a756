// The diary: pages in date order, storing and refusing a page, booking from the treatment window, the print.
#include "EscapeAsks.h"
#include "TestPractice.h"

#include "base/RunState.h"
#include "diary/Diary.h"
#include "diary/DiaryPrint.h"
#include "diary/DiaryPrintPage.h"
#include "diary/ui/Grafic.h"
#include "store/Sql.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace {

// A practice of Sunday 15.03.2026 with doctor D1 signed in.
struct SignedIn
{
    SignedIn()
    {
        run().CurrentMedicCode = QStringLiteral("D1");
        run().CurrentMedicName = QStringLiteral("Мария Петрова");
    }
    TestPractice practice{QDate(2026, 3, 15)};
    int count(const QString &where) const { return practice.count(u"SELECT COUNT(*) FROM Grafic WHERE "_qs + where); }
};

void addPage(const QString &doctor, const QString &isoDate, const QString &ch5 = {})
{
    store::run(store::clinicDb(), QStringLiteral("INSERT INTO Grafic (KodMedic, Data, Ch5) VALUES (?, ?, ?)"),
               {doctor, isoDate, store::textOrNull(ch5)});
}

QString slot5(const QString &isoDate)
{
    return store::scalar(store::clinicDb(), QStringLiteral("SELECT Ch5 FROM Grafic WHERE Data = ?"), {isoDate}).toString();
}

QLineEdit *edit(const Grafic &window, const char *name) { return window.findChild<QLineEdit *>(QLatin1String(name)); }
void click(const Grafic &window, const char *name)
{
    QTest::mouseClick(window.findChild<QPushButton *>(QLatin1String(name)), Qt::LeftButton);
}
QString weekday(const Grafic &window) { return window.findChild<QLabel *>(QStringLiteral("lblLabels_2"))->text(); }

} // namespace

class TestDiary final : public QObject
{
    Q_OBJECT
private slots:
    void init() { scheduleLink() = {}; }

    void opensOnTheDoctorsEarliestPage()
    {
        SignedIn signedIn;
        addPage(QStringLiteral("D1"), QStringLiteral("2026-03-20"));
        addPage(QStringLiteral("D2"), QStringLiteral("2026-01-01"));
        addPage(QStringLiteral("D1"), QStringLiteral("2026-03-16"), QStringLiteral("Петър "));
        Grafic window;
        QCOMPARE(window.windowTitle(), QStringLiteral("График за прегледите на д-р Мария Петрова"));
        QCOMPARE(edit(window, "txtData")->text(), QStringLiteral("16.03.2026"));
        QCOMPARE(weekday(window), QStringLiteral("Понеделник"));
        QCOMPARE(edit(window, "Text1_5")->text(), QStringLiteral("Петър "));
        click(window, "Data1Next");
        QCOMPARE(edit(window, "txtData")->text(), QStringLiteral("20.03.2026"));
        QCOMPARE(weekday(window), QStringLiteral("Петък"));

        // "Обнови" reads the pages anew and stands on the first; what was typed and not saved goes.
        edit(window, "Text1_2")->setText(QStringLiteral("Нов"));
        click(window, "cmdRefresh");
        QCOMPARE(edit(window, "txtData")->text(), QStringLiteral("16.03.2026"));
        QCOMPARE(signedIn.count(u"Ch2 IS NOT NULL"_qs), 0);
    }

    // A page whose date is no date is stored neither by "Запиши" nor by "Изход", which keeps the
    // diary open; moved to another day, the page is stored under it when the diary closes.
    void aPageIsStoredOnlyUnderADate()
    {
        SignedIn signedIn;
        addPage(QStringLiteral("D1"), QStringLiteral("2026-03-16"));
        Grafic window;
        window.show();
        edit(window, "Text1_2")->setText(QStringLiteral("Мария "));
        edit(window, "txtData")->setText(QStringLiteral("32.03.2026"));
        QCOMPARE(weekday(window), QString());
        click(window, "cmdUpdate");
        edit(window, "txtData")->setText(QStringLiteral("16.13.2026"));
        click(window, "cmdClose");
        QCOMPARE(signedIn.practice.dialogs().messages.size(), 2);
        QVERIFY(window.isVisible());
        QCOMPARE(signedIn.count(u"Ch2 IS NULL AND Data = '2026-03-16'"_qs), 1);
        edit(window, "txtData")->setText(QStringLiteral("17.03.2026"));
        click(window, "cmdClose");
        QVERIFY(!window.isVisible());
        QCOMPARE(signedIn.count(u"Ch2 = 'Мария ' AND Data = '2026-03-17'"_qs), 1);
    }

    // Escape never stores: over typing it asks, НЕ keeps the diary and ДА closes it unstored.
    void escapeAsksAndNeverStores()
    {
        SignedIn signedIn;
        addPage(QStringLiteral("D1"), QStringLiteral("2026-03-16"));
        Grafic window;
        window.show();
        edit(window, "Text1_5")->setText(QStringLiteral("Мария "));
        QVERIFY(escapeAsksBeforeClosing(window, signedIn.practice.dialogs()));
        QVERIFY(slot5(QStringLiteral("2026-03-16")).isEmpty());
    }

    // On an empty diary what was typed before "Добави" goes onto the new page and stays through
    // "Запиши"; added twice, there are two pages of today; deleting moves on to the next page.
    void addingKeepsTheTypingAndDeletingMovesOn()
    {
        SignedIn signedIn;
        Grafic window;
        edit(window, "Text1_5")->setText(QStringLiteral("Петър "));
        click(window, "cmdAdd");
        click(window, "cmdUpdate");
        QCOMPARE(edit(window, "Text1_5")->text(), QStringLiteral("Петър "));
        QCOMPARE(slot5(QStringLiteral("2026-03-15")), QStringLiteral("Петър "));
        QVERIFY(signedIn.practice.dialogs().messages.isEmpty());

        addPage(QStringLiteral("D1"), QStringLiteral("2026-03-16"));
        click(window, "cmdAdd");
        QCOMPARE(signedIn.count(u"KodMedic = 'D1' AND Data = '2026-03-15'"_qs), 2);
        QCOMPARE(weekday(window), QStringLiteral("Неделя"));
        click(window, "cmdRefresh"); // read anew: the first of the two pages of today
        click(window, "cmdDelete");
        click(window, "cmdDelete");
        QCOMPARE(edit(window, "txtData")->text(), QStringLiteral("16.03.2026"));
        QCOMPARE(signedIn.count(u"1 = 1"_qs), 1);
    }

    void booking_data()
    {
        QTest::addColumn<QString>("link");
        QTest::addColumn<bool>("page");
        QTest::addColumn<bool>("answer");
        QTest::addColumn<int>("questions");
        QTest::addColumn<QString>("stored");
        QTest::newRow("from the treatment window, yes") << "1" << true << true << 1 << "Иван ";
        QTest::newRow("from the treatment window, no") << "1" << true << false << 1 << "Стар запис";
        QTest::newRow("from the menu, never linked") << "" << true << true << 0 << "Стар запис";
        QTest::newRow("no page: says to add one") << "1" << false << true << 0 << "";
    }
    void booking()
    {
        QFETCH(QString, link);
        QFETCH(bool, page);
        QFETCH(bool, answer);
        QFETCH(int, questions);
        SignedIn signedIn;
        ScriptedDialogs &dialogs = signedIn.practice.dialogs();
        if (page)
            addPage(QStringLiteral("D1"), QStringLiteral("2026-03-16"), QStringLiteral("Стар запис"));
        scheduleLink() = {link, QStringLiteral("Иван ")};
        dialogs.answers.push_back(answer);
        Grafic window;
        window.show();
        QTest::mouseClick(edit(window, "Text1_5"), Qt::LeftButton);
        QCOMPARE(dialogs.questions.size(), questions);
        if (questions)
            QCOMPARE(dialogs.questions.first(), QStringLiteral("Желаете ли да запиша този час за посещение от Иван ?"));
        QTEST(slot5(QStringLiteral("2026-03-16")), "stored");
        QCOMPARE(dialogs.messages.size(), page ? 0 : 1);
        QVERIFY(page || dialogs.messages.first().contains(QStringLiteral("Добави")));
        QCOMPARE(signedIn.count(u"1 = 1"_qs), page ? 1 : 0);
    }

    // The printed page: row labels and slots, the day printed for a cancelled choice.
    void printRows_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("label");
        QTest::addColumn<int>("slot");
        QTest::newRow("first") << 0 << "7.30 - " << 0;
        QTest::newRow("9.00") << 3 << "9.00 - " << 3;
        QTest::newRow("9.30 prints the 9.00 slot") << 4 << "9.30 - " << 3;
        QTest::newRow("13.00 has no closing blank") << 11 << "13.00 -" << 11;
        QTest::newRow("13.30") << 12 << "13.30 - " << 12;
        QTest::newRow("last") << 25 << "20.00 - " << 25;
    }
    void printRows()
    {
        QFETCH(int, row);
        QTEST(diaryprint::RowLabel(row), "label");
        QTEST(diaryprint::RowSlot(row), "slot");
    }

    void printDay_data()
    {
        QTest::addColumn<DateChoice>("choice");
        QTest::addColumn<QDate>("today");
        QTest::addColumn<QDate>("shown");
        QTest::addColumn<QDate>("looked");
        const QDate chosen(2026, 4, 7);
        QTest::newRow("chosen") << DateChoice{true, chosen} << QDate(2026, 3, 15) << chosen << chosen;
        QTest::newRow("cancelled mid-month")
            << DateChoice{false, QDate(2026, 3, 16)} << QDate(2026, 3, 15) << QDate(2026, 3, 16) << QDate(2026, 3, 16);
        QTest::newRow("cancelled on the last of a month: the first of the same month")
            << DateChoice{false, QDate(2026, 4, 1)} << QDate(2026, 3, 31) << QDate(2026, 4, 1) << QDate(2026, 3, 1);
        QTest::newRow("cancelled on new year's eve")
            << DateChoice{false, QDate()} << QDate(2026, 12, 31) << QDate(2027, 1, 1) << QDate(2026, 12, 1);
    }
    void printDay()
    {
        QFETCH(DateChoice, choice);
        QFETCH(QDate, today);
        const diaryprint::PrintDay day = diaryprint::ResolvePrintDay(choice, today);
        QTEST(day.shown, "shown");
        QTEST(day.looked, "looked");
    }

    void pageOfTheDoctorAndDay()
    {
        TestPractice practice;
        practice.addDoctor(QStringLiteral("Д-р О'Брайън"), QStringLiteral("D1"));
        store::run(store::clinicDb(),
                   QStringLiteral("INSERT INTO Grafic (KodMedic, Data, Ch3, Ch4, Ch25) VALUES ('D1', '2026-03-20', "
                                  "'Иван ', 'Петър ', 'Късен ')"));
        store::run(store::clinicDb(),
                   QStringLiteral("INSERT INTO Grafic (KodMedic, Data, Ch3) VALUES ('D2', '2026-03-20', 'Чужд ')"));
        const auto print = diaryprint::LoadDiaryPrint(store::clinicDb(), u"D1"_qs, u"Д-р О'Брайън"_qs, {QDate(2026, 3, 20), QDate(2026, 3, 20)});
        QVERIFY2(print.ok(), qPrintable(print.error()));
        QCOMPARE(print->pages.size(), 1);
        const QList<diaryprint::Row> &rows = print->pages.first();
        QCOMPARE(rows.size(), diaryprint::RowCount);
        QCOMPARE(rows.at(3).text + rows.at(4).text + rows.at(25).text, QString("Иван Иван Късен ")); // 9.30 shows 9.00
        for (const diaryprint::Row &row : rows)
            QVERIFY(row.text != u"Петър ");
        QCOMPARE(print->dateHeading, QString("20.03.2026 - Петък"));

        const print::Page page = diaryprint::DiaryPage(print.value()).pages().first();
        QCOMPARE(page.textAt("Label3"), QString("20.03.2026 - Петък"));
        QCOMPARE(page.textAt("Label4"), QString("при д-р Д-р О'Брайън"));
        QCOMPARE(page.textAt(print::rowItemName("lblTime4", 0)), QString("9.30 - "));
        QCOMPARE(page.textAt(print::rowItemName("txtSlot4", 0)), QString("Иван "));
        QCOMPARE(page.textAt(print::rowItemName("lblTime11", 0)), QString("13.00 -"));

        const auto empty = diaryprint::LoadDiaryPrint(store::clinicDb(), QStringLiteral("D1"), {}, {QDate(2026, 3, 21), QDate(2026, 3, 21)});
        QVERIFY(empty.ok());
        QVERIFY(empty->pages.isEmpty());
        // The doctor of the print is found by code; an unknown code is named.
        QCOMPARE(diaryprint::DoctorName(store::clinicDb(), QStringLiteral("D1")).value(), QString("Д-р О'Брайън"));
        const auto unknown = diaryprint::DoctorName(store::clinicDb(), QStringLiteral("9'9"));
        QVERIFY(!unknown.ok());
        QVERIFY(unknown.error().contains(QStringLiteral("9'9")));
    }
};

QTEST_MAIN(TestDiary)
#include "tst_Diary.moc"
