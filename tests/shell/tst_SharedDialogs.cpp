#include "TestPractice.h"

#include "base/RunState.h"
#include "shell/ui/SharedDialogs.h"
#include "shell/ui/TimeDay.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

class TestSharedDialogs final : public QObject
{
    Q_OBJECT
private slots:
    void captionsAndButtons_data()
    {
        QTest::addColumn<QString>("which");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("ok");
        QTest::addColumn<QString>("cancel");
        QTest::newRow("InfDialog") << "inf" << "Информация" << "Затвори" << "";
        QTest::newRow("QuesDialog") << "ques" << "Въпрос" << "ДА" << "НЕ";
        QTest::newRow("ExitDialog") << "exit" << "Изход от програмата" << "ДА" << "НЕ";
        QTest::newRow("ChoiceDialog") << "choice" << "Изберете" << "Избор" << "Отказ";
        QTest::newRow("ProgDialog") << "prog" << "Обработка" << "Затвори" << "";
    }
    void captionsAndButtons()
    {
        QFETCH(QString, which);
        QFETCH(QString, title);
        QFETCH(QString, ok);
        QFETCH(QString, cancel);
        std::unique_ptr<QDialog> dialog;
        if (which == u"inf")
            dialog = std::make_unique<InfDialog>(QStringLiteral("a\rb"));
        else if (which == u"ques")
            dialog = std::make_unique<QuesDialog>(QStringLiteral("?"));
        else if (which == u"exit")
            dialog = std::make_unique<ExitDialog>();
        else if (which == u"choice")
            dialog = std::make_unique<ChoiceDialog>();
        else
            dialog = std::make_unique<ProgDialog>(QStringLiteral("Изчакайте!"), 10);
        QCOMPARE(dialog->windowTitle(), title);
        QCOMPARE(dialog->findChild<QPushButton *>(QStringLiteral("OKButton"))->text(), ok);
        auto *cancelButton = dialog->findChild<QPushButton *>(QStringLiteral("CancelButton"));
        QCOMPARE(cancelButton ? cancelButton->text() : QString(), cancel);
    }

    void messageLinesBreakAtTheCarriageReturn()
    {
        InfDialog dialog(QStringLiteral("Грешна дата в ЕГН: \r   123"));
        QCOMPARE(dialog.findChild<QLabel *>(QStringLiteral("Label1"))->text(), QStringLiteral("Грешна дата в ЕГН: \n   123"));
    }

    void questionAnswers()
    {
        QuesDialog dialog(QStringLiteral("?"));
        QTimer::singleShot(0, &dialog, [&dialog] { dialog.findChild<QPushButton *>(QStringLiteral("OKButton"))->click(); });
        dialog.exec();
        QCOMPARE(dialog.nKod(), 1);
        QuesDialog refused(QStringLiteral("?"));
        QTimer::singleShot(0, &refused, [&refused] { refused.findChild<QPushButton *>(QStringLiteral("CancelButton"))->click(); });
        refused.exec();
        QCOMPARE(refused.nKod(), 0);
    }

    void choiceWithoutDateStaysOpen()
    {
        TestPractice practice;
        ChoiceDialog dialog;
        dialog.show();
        dialog.findChild<QPushButton *>(QStringLiteral("OKButton"))->click();
        QCOMPARE(practice.dialogs().messages, QStringList{QStringLiteral("Няма въведена дата за графика")});
        QVERIFY(dialog.isVisible());
        QVERIFY(!dialog.lChoice());
        QTest::keyClicks(dialog.findChild<QLineEdit *>(QStringLiteral("Text1")), QStringLiteral("31.02.2026"));
        dialog.findChild<QPushButton *>(QStringLiteral("OKButton"))->click();
        QVERIFY2(dialog.isVisible(), "a text that is no date keeps the dialog open");
        QCOMPARE(practice.dialogs().messages.size(), 2);
        dialog.findChild<QLineEdit *>(QStringLiteral("Text1"))->setText(QStringLiteral(" 02.03.2026 "));
        dialog.findChild<QPushButton *>(QStringLiteral("OKButton"))->click();
        QVERIFY(dialog.lChoice());
        QCOMPARE(dialog.dData(), QDate(2026, 3, 2));
        QVERIFY(!dialog.isVisible());
    }

    void choiceCancelledGivesTomorrow()
    {
        TestPractice practice(QDate(2026, 3, 15));
        ChoiceDialog dialog;
        dialog.show();
        dialog.findChild<QPushButton *>(QStringLiteral("CancelButton"))->click();
        QVERIFY(!dialog.lChoice());
        QCOMPARE(dialog.dData(), QDate(2026, 3, 16));
        QCOMPARE(practice.dialogs().messages, QStringList{QStringLiteral("Няма въведена дата за графика")});
    }

    void progressStopsOnlyWhenAllowed()
    {
        ProgDialog dialog(QStringLiteral("Изчакайте!"), 3);
        dialog.show();
        auto *ok = dialog.findChild<QPushButton *>(QStringLiteral("OKButton"));
        QVERIFY(!ok->isEnabled());
        dialog.setValue(2);
        dialog.allowStop(true);
        ok->click();
        QCOMPARE(dialog.nStop(), 1);
    }

    void clockShowsTheValueOfItsLastRefresh()
    {
        run().MinutesLeft = 120;
        TimeDay clock;
        auto *label = clock.findChild<QLabel *>(QStringLiteral("Label1"));
        QCOMPARE(label->text(), QStringLiteral("000"));
        clock.show();
        QCOMPARE(label->text(), QStringLiteral("120"));
        run().MinutesLeft = -4;
        QCOMPARE(label->text(), QStringLiteral("120")); // no timer: an old number until the next refresh
        clock.refresh();
        QCOMPARE(label->text(), QStringLiteral("-4"));
    }
};

QTEST_MAIN(TestSharedDialogs)
#include "tst_SharedDialogs.moc"
