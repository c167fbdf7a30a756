// The diary: pages in date order, storing and refusing a page, and booking from the treatment window.
#include "EscapeAsks.h"
#include "TestPractice.h"

#include "admin/Diary.h"
#include "admin/ui/Grafic.h"
#include "base/RunState.h"
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

    // On an empty diary what was typed before "Добави" goes onto the new page and stays through "Запиши".
    void typingBeforeTheFirstPageIsKept()
    {
        SignedIn signedIn;
        Grafic window;
        edit(window, "Text1_5")->setText(QStringLiteral("Петър "));
        click(window, "cmdAdd");
        click(window, "cmdUpdate");
        QCOMPARE(edit(window, "Text1_5")->text(), QStringLiteral("Петър "));
        QCOMPARE(slot5(QStringLiteral("2026-03-15")), QStringLiteral("Петър "));
        QVERIFY(signedIn.practice.dialogs().messages.isEmpty());
    }

    void addingTwiceGivesTwoPagesOfTodayAndDeletingMovesOn()
    {
        SignedIn signedIn;
        addPage(QStringLiteral("D1"), QStringLiteral("2026-03-16"));
        Grafic window;
        click(window, "cmdAdd");
        click(window, "cmdAdd");
        QCOMPARE(signedIn.count(u"KodMedic = 'D1' AND Data = '2026-03-15'"_qs), 2);
        QCOMPARE(weekday(window), QStringLiteral("Неделя"));
        click(window, "Data1First"); // new pages come last until the diary is read anew
        QCOMPARE(edit(window, "txtData")->text(), QStringLiteral("16.03.2026"));
        click(window, "cmdDelete");
        QCOMPARE(edit(window, "txtData")->text(), QStringLiteral("15.03.2026"));
        QCOMPARE(signedIn.count(u"Data = '2026-03-16'"_qs), 0);
        QCOMPARE(signedIn.count(u"1 = 1"_qs), 2);
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
        QFETCH(QString, stored);
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
        QCOMPARE(slot5(QStringLiteral("2026-03-16")), stored);
        QCOMPARE(dialogs.messages.size(), page ? 0 : 1);
        QVERIFY(page || dialogs.messages.first().contains(QStringLiteral("Добави")));
        QCOMPARE(signedIn.count(u"1 = 1"_qs), page ? 1 : 0);
    }
};

QTEST_MAIN(TestDiary)
#include "tst_Diary.moc"
