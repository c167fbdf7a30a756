// The diary: slots and weekdays, pages in date order, and booking from the treatment window.
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

const QDate Today(2026, 3, 15); // a Sunday

// A practice of today with doctor D1 signed in.
struct SignedIn
{
    SignedIn()
    {
        run().CurrentMedicCode = QStringLiteral("D1");
        run().CurrentMedicName = QStringLiteral("Мария Петрова");
    }
    TestPractice practice{Today};
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

} // namespace

class TestDiary final : public QObject
{
    Q_OBJECT
private slots:
    void init() { scheduleLink() = {}; }

    void slotTimes_data()
    {
        QTest::addColumn<int>("slot");
        QTest::addColumn<QString>("time");
        QTest::newRow("Ch0") << 0 << "7.30";
        QTest::newRow("Ch1") << 1 << "8.00";
        QTest::newRow("Ch3") << 3 << "9.00";
        QTest::newRow("Ch4") << 4 << "9.30";
        QTest::newRow("Ch12") << 12 << "13.30";
        QTest::newRow("Ch13") << 13 << "14.00";
        QTest::newRow("Ch25") << 25 << "20.00";
    }
    void slotTimes()
    {
        QFETCH(int, slot);
        QFETCH(QString, time);
        QCOMPARE(DiarySlotTime(slot), time);
    }

    void weekdays_data()
    {
        QTest::addColumn<QDate>("date");
        QTest::addColumn<QString>("name");
        QTest::newRow("Sunday") << QDate(2026, 3, 15) << "Неделя";
        QTest::newRow("Monday") << QDate(2026, 3, 16) << "Понеделник";
        QTest::newRow("Thursday") << QDate(2026, 3, 19) << "Четвъртък";
        QTest::newRow("Saturday") << QDate(2026, 3, 21) << "Събота";
    }
    void weekdays()
    {
        QFETCH(QDate, date);
        QFETCH(QString, name);
        QCOMPARE(WeekdayName(date), name);
    }

    void opensOnTheDoctorsEarliestPage()
    {
        SignedIn signedIn;
        addPage(QStringLiteral("D1"), QStringLiteral("2026-03-20"));
        addPage(QStringLiteral("D2"), QStringLiteral("2026-01-01"));
        addPage(QStringLiteral("D1"), QStringLiteral("2026-03-16"), QStringLiteral("Петър "));
        Grafic window;
        QCOMPARE(window.windowTitle(), QStringLiteral("График за прегледите на д-р Мария Петрова"));
        QCOMPARE(window.findChild<QLineEdit *>(QStringLiteral("txtData"))->text(), QStringLiteral("16.03.2026"));
        QCOMPARE(window.findChild<QLabel *>(QStringLiteral("lblLabels_2"))->text(), QStringLiteral("Понеделник"));
        QCOMPARE(window.findChild<QLineEdit *>(QStringLiteral("Text1_5"))->text(), QStringLiteral("Петър "));
        QTest::mouseClick(window.findChild<QPushButton *>(QStringLiteral("Data1Next")), Qt::LeftButton);
        QCOMPARE(window.findChild<QLineEdit *>(QStringLiteral("txtData"))->text(), QStringLiteral("20.03.2026"));
        // The navigator keeps its caption as the pages move.
        QStringList captions;
        for (const QLabel *label : window.findChild<QWidget *>(QStringLiteral("Data1"))->findChildren<QLabel *>())
            captions << label->text();
        QCOMPARE(captions, QStringList{QStringLiteral("Придвижване по датите")});

        // "Обнови" reads the pages anew and stands on the first; what was typed and not saved goes.
        window.findChild<QLineEdit *>(QStringLiteral("Text1_2"))->setText(QStringLiteral("Нов"));
        QTest::mouseClick(window.findChild<QPushButton *>(QStringLiteral("cmdRefresh")), Qt::LeftButton);
        QCOMPARE(window.findChild<QLineEdit *>(QStringLiteral("txtData"))->text(), QStringLiteral("16.03.2026"));
        QCOMPARE(signedIn.practice.count(QStringLiteral("SELECT COUNT(*) FROM Grafic WHERE Ch2 IS NOT NULL")), 0);
    }

    void closingStoresWhatWasTyped()
    {
        SignedIn signedIn;
        TestPractice &practice = signedIn.practice;
        addPage(QStringLiteral("D1"), QStringLiteral("2026-03-16"));
        Grafic window;
        window.show();
        auto *date = window.findChild<QLineEdit *>(QStringLiteral("txtData"));
        auto *close = window.findChild<QPushButton *>(QStringLiteral("cmdClose"));
        window.findChild<QLineEdit *>(QStringLiteral("Text1_2"))->setText(QStringLiteral("Мария "));
        // A page whose date is no date cannot be stored: the message, and the diary stays open.
        date->setText(QStringLiteral("16.13.2026"));
        QTest::mouseClick(close, Qt::LeftButton);
        QCOMPARE(practice.dialogs().messages.size(), 1);
        QVERIFY(window.isVisible());
        date->setText(QStringLiteral("16.03.2026"));
        QTest::mouseClick(close, Qt::LeftButton);
        QVERIFY(!window.isVisible());
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM Grafic WHERE Ch2 = 'Мария '")), 1);
    }

    // Escape never stores: over typing it asks, НЕ keeps the diary and ДА closes it unstored.
    void escapeAsksAndNeverStores()
    {
        SignedIn signedIn;
        TestPractice &practice = signedIn.practice;
        addPage(QStringLiteral("D1"), QStringLiteral("2026-03-16"));
        Grafic window;
        window.show();
        window.findChild<QLineEdit *>(QStringLiteral("Text1_5"))->setText(QStringLiteral("Мария "));
        QVERIFY(escapeAsksBeforeClosing(window, practice.dialogs()));
        QVERIFY(slot5(QStringLiteral("2026-03-16")).isEmpty());
    }

    // On an empty diary what was typed before "Добави" goes onto the new page and stays through "Запиши".
    void typingBeforeTheFirstPageIsKept()
    {
        SignedIn signedIn;
        Grafic window;
        window.findChild<QLineEdit *>(QStringLiteral("Text1_5"))->setText(QStringLiteral("Петър "));
        QTest::mouseClick(window.findChild<QPushButton *>(QStringLiteral("cmdAdd")), Qt::LeftButton);
        QTest::mouseClick(window.findChild<QPushButton *>(QStringLiteral("cmdUpdate")), Qt::LeftButton);
        QCOMPARE(window.findChild<QLineEdit *>(QStringLiteral("Text1_5"))->text(), QStringLiteral("Петър "));
        QCOMPARE(slot5(QStringLiteral("2026-03-15")), QStringLiteral("Петър "));
        QVERIFY(signedIn.practice.dialogs().messages.isEmpty());
    }

    // Booking from the treatment window into a diary without pages says what to do.
    void bookingWithoutAPageSaysToAddOne()
    {
        SignedIn signedIn;
        scheduleLink() = {QStringLiteral("1"), QStringLiteral("Иван ")};
        Grafic window;
        window.show();
        QTest::mouseClick(window.findChild<QLineEdit *>(QStringLiteral("Text1_5")), Qt::LeftButton);
        QCOMPARE(signedIn.practice.dialogs().messages.size(), 1);
        QVERIFY(signedIn.practice.dialogs().messages.first().contains(QStringLiteral("Добави")));
        QCOMPARE(signedIn.practice.count(QStringLiteral("SELECT COUNT(*) FROM Grafic")), 0);
    }

    void addingTwiceGivesTwoPagesOfToday()
    {
        SignedIn signedIn;
        TestPractice &practice = signedIn.practice;
        Grafic window;
        auto *add = window.findChild<QPushButton *>(QStringLiteral("cmdAdd"));
        QTest::mouseClick(add, Qt::LeftButton);
        QTest::mouseClick(add, Qt::LeftButton);
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM Grafic WHERE KodMedic = 'D1' AND Data = '2026-03-15'")), 2);
        QCOMPARE(window.findChild<QLabel *>(QStringLiteral("lblLabels_2"))->text(), QStringLiteral("Неделя"));
    }

    void pageDateThatIsNoDateIsRefused()
    {
        SignedIn signedIn;
        TestPractice &practice = signedIn.practice;
        addPage(QStringLiteral("D1"), QStringLiteral("2026-03-16"));
        Grafic window;
        auto *date = window.findChild<QLineEdit *>(QStringLiteral("txtData"));
        date->setText(QStringLiteral("32.03.2026"));
        QCOMPARE(window.findChild<QLabel *>(QStringLiteral("lblLabels_2"))->text(), QString());
        window.findChild<QLineEdit *>(QStringLiteral("Text1_2"))->setText(QStringLiteral("Мария "));
        QTest::mouseClick(window.findChild<QPushButton *>(QStringLiteral("cmdUpdate")), Qt::LeftButton);
        QCOMPARE(practice.dialogs().messages.size(), 1);
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM Grafic WHERE Data = '2026-03-16' AND Ch2 IS NULL")), 1);
        // Moved to another day, the page is stored under it.
        date->setText(QStringLiteral("17.03.2026"));
        QTest::mouseClick(window.findChild<QPushButton *>(QStringLiteral("cmdUpdate")), Qt::LeftButton);
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM Grafic WHERE Data = '2026-03-17' AND Ch2 = 'Мария '")), 1);
    }

    void booking_data()
    {
        QTest::addColumn<QString>("link");
        QTest::addColumn<bool>("answer");
        QTest::addColumn<int>("questions");
        QTest::addColumn<QString>("stored");
        QTest::newRow("from the treatment window, yes") << "1" << true << 1 << "Иван ";
        QTest::newRow("from the treatment window, no") << "1" << false << 1 << "Стар запис";
        QTest::newRow("from the menu, never linked") << "" << true << 0 << "Стар запис";
    }
    void booking()
    {
        QFETCH(QString, link);
        QFETCH(bool, answer);
        QFETCH(int, questions);
        QFETCH(QString, stored);
        SignedIn signedIn;
        TestPractice &practice = signedIn.practice;
        addPage(QStringLiteral("D1"), QStringLiteral("2026-03-16"), QStringLiteral("Стар запис"));
        scheduleLink() = {link, QStringLiteral("Иван ")};
        practice.dialogs().answers.push_back(answer);
        Grafic window;
        window.show();
        QTest::mouseClick(window.findChild<QLineEdit *>(QStringLiteral("Text1_5")), Qt::LeftButton);
        QCOMPARE(practice.dialogs().questions.size(), questions);
        if (questions)
            QCOMPARE(practice.dialogs().questions.first(),
                     QStringLiteral("Желаете ли да запиша този час за посещение от Иван ?"));
        QCOMPARE(slot5(QStringLiteral("2026-03-16")), stored);
    }

    void deletingMovesToTheNextPage()
    {
        SignedIn signedIn;
        TestPractice &practice = signedIn.practice;
        addPage(QStringLiteral("D1"), QStringLiteral("2026-03-16"));
        addPage(QStringLiteral("D1"), QStringLiteral("2026-03-17"));
        Grafic window;
        QTest::mouseClick(window.findChild<QPushButton *>(QStringLiteral("cmdDelete")), Qt::LeftButton);
        QCOMPARE(window.findChild<QLineEdit *>(QStringLiteral("txtData"))->text(), QStringLiteral("17.03.2026"));
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM Grafic")), 1);
    }
};

QTEST_MAIN(TestDiary)
#include "tst_Diary.moc"
