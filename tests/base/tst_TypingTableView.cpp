#include "TestPractice.h"
#include "Typing.h"
#include "base/ui/TypingTableView.h"

#include <QApplication>
#include <QLineEdit>
#include <QStandardItemModel>
#include <QTest>

// Escape in a cell that holds typing asks before it gives the typing up.
class TestTypingTableView final : public QObject
{
    Q_OBJECT
private slots:
    void escapeOverTypingAsks_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QList<bool>>("answers");
        QTest::addColumn<int>("questionsAsked");
        QTest::addColumn<bool>("editorOpen");
        QTest::addColumn<QString>("editorText");
        QTest::newRow("НЕ keeps the typing in the open cell") << QStringLiteral("30-2") << QList<bool>{false} << 1 << true
                                                             << QStringLiteral("30-2");
        QTest::newRow("ДА gives it up") << QStringLiteral("30-2") << QList<bool>{true} << 1 << false << QString();
        QTest::newRow("nothing typed, nothing asked") << QString() << QList<bool>{} << 0 << false << QString();
    }
    void escapeOverTypingAsks()
    {
        QFETCH(QString, typed);
        QFETCH(QList<bool>, answers);
        QFETCH(bool, editorOpen);
        ScriptedDialogs scripted;
        scripted.answers.assign(answers.begin(), answers.end());
        setDialogPort(&scripted);
        QStandardItemModel model(1, 1);
        model.setData(model.index(0, 0), QStringLiteral("101"));
        TypingTableView view;
        view.setModel(&model);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        view.setCurrentIndex(model.index(0, 0));
        view.edit(model.index(0, 0));
        auto *editor = view.findChild<QLineEdit *>();
        QVERIFY(editor);
        editor->clear();
        editor->setText(typed.isEmpty() ? QStringLiteral("101") : QString());
        typeText(editor, typed);
        QTest::keyClick(editor, Qt::Key_Escape);
        QTEST(int(scripted.questions.size()), "questionsAsked");
        auto *stillOpen = qobject_cast<QLineEdit *>(view.indexWidget(model.index(0, 0)));
        QCOMPARE(stillOpen != nullptr, editorOpen);
        if (editorOpen)
            QTEST(stillOpen->text(), "editorText");
        QCOMPARE(model.data(model.index(0, 0)).toString(), QStringLiteral("101"));
        setDialogPort(nullptr);
    }
};

QTEST_MAIN(TestTypingTableView)
#include "tst_TypingTableView.moc"
