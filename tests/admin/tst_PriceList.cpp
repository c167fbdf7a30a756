// The practice's price list: the 10/15 rule on the name, and what a save stores or refuses.
#include "EscapeAsks.h"
#include "TestPractice.h"

#include "admin/PriceList.h"
#include "admin/ui/Cenoraz.h"
#include "store/Sql.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSqlQuery>
#include <QTableView>
#include <QTest>

class TestPriceList final : public QObject
{
    Q_OBJECT
private slots:
    void truncation_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("kept");
        QTest::newRow("empty") << "" << "";
        QTest::newRow("10 stays") << "Обтурация1" << "Обтурация1";
        QTest::newRow("11 stays whole") << "Обтурация12" << "Обтурация12";
        QTest::newRow("15 stays whole") << "Обтурация123456" << "Обтурация123456";
        QTest::newRow("16 loses its tail") << "Обтурация1234567" << "Обтурация123456";
        QTest::newRow("long loses all past 15") << "Обтурация с амалгама на два зъба" << "Обтурация с ама";
    }
    void truncation()
    {
        QFETCH(QString, typed);
        QTEST(TrimmedPriceName(typed), "kept");
    }

    void savedPrice_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<bool>("stored");
        QTest::addColumn<QVariant>("price");
        QTest::newRow("point") << "12.50" << true << QVariant(12.5);
        QTest::newRow("comma") << " 12,50 " << true << QVariant(12.5);
        QTest::newRow("empty box: no price") << "  " << true << QVariant();
        QTest::newRow("words") << "дванадесет" << false << QVariant(7.0);
    }
    void savedPrice()
    {
        QFETCH(QString, typed);
        QFETCH(bool, stored);
        QFETCH(QVariant, price);
        TestPractice practice;
        const qint64 id = store::scalar(store::clinicDb(), QStringLiteral("SELECT MIN(ID) FROM Ceny")).toLongLong();
        store::run(store::clinicDb(), QStringLiteral("UPDATE Ceny SET CenaHelp = 7, TextHelp = 'Преглед' WHERE ID = ?"),
                   {id});
        const Outcome saved = SavePriceRow(store::clinicDb(), {id, {}, QStringLiteral("Обтурация1234567"), typed, {}});
        QCOMPARE(saved.ok(), stored);
        QSqlQuery row = store::run(store::clinicDb(), QStringLiteral("SELECT TextHelp, CenaHelp FROM Ceny WHERE ID = ?"), {id});
        QVERIFY(row.next());
        QCOMPARE(row.value(1).isNull(), price.isNull());
        if (!price.isNull())
            QCOMPARE(row.value(1).toDouble(), price.toDouble());
        QCOMPARE(row.value(0).toString(), stored ? QStringLiteral("Обтурация123456") : QStringLiteral("Преглед"));
    }

    // Only name and price are corrected: rows are neither added nor deleted. "Запиши", moving
    // to another row and closing each store the correction; a price that is no number stores nothing.
    void screenCorrectsNameAndPrice()
    {
        TestPractice practice;
        Cenoraz window;
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        auto *list = window.findChild<QTableView *>(QStringLiteral("DBGrid1"));
        auto *name = window.findChild<QLineEdit *>(QStringLiteral("Text2"));
        auto *price = window.findChild<QLineEdit *>(QStringLiteral("Text1_1"));
        const auto click = [&window](const char *button) {
            QTest::mouseClick(window.findChild<QPushButton *>(QLatin1String(button)), Qt::LeftButton);
        };
        const auto stored = [&practice](const QString &where, const QString &code) {
            return practice.count(u"SELECT COUNT(*) FROM Ceny WHERE KodHelp = '%1' AND "_qs.arg(code) + where);
        };
        QVERIFY(!window.findChild<QPushButton *>(QStringLiteral("cmdAdd"))->isEnabled());
        QVERIFY(!window.findChild<QPushButton *>(QStringLiteral("cmdDelete"))->isEnabled());
        QVERIFY(!window.findChild<QLineEdit *>(QStringLiteral("Text1_0"))->isEnabled());
        const int rows = practice.count(QStringLiteral("SELECT COUNT(*) FROM Ceny"));
        QCOMPARE(list->model()->rowCount(), rows);
        const QString code = window.findChild<QLabel *>(QStringLiteral("Label2"))->text();
        QCOMPARE(code, list->model()->index(0, 0).data().toString());

        name->setFocus();
        name->setText(QStringLiteral("Преглед с обясн"));
        QTest::keyClicks(name, "12"); // 17 characters
        QTest::keyClick(name, Qt::Key_Tab); // leaving the box applies the rule
        QCOMPARE(name->text(), QStringLiteral("Преглед с обясн"));
        price->setText(QStringLiteral("45,50"));
        click("cmdUpdate");
        QCOMPARE(stored(u"TextHelp = 'Преглед с обясн' AND CenaHelp = 45.5"_qs, code), 1);
        QCOMPARE(list->model()->index(0, 1).data().toString(), QStringLiteral("Преглед с обясн"));

        name->setText(QStringLiteral("Друго"));
        price->setText(QStringLiteral("четиридесет"));
        click("cmdUpdate");
        QCOMPARE(practice.dialogs().messages.size(), 1);
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM Ceny WHERE TextHelp = 'Друго'")), 0);
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM Ceny")), rows);

        price->setText(QStringLiteral("12"));
        list->setCurrentIndex(list->model()->index(1, 0));
        QCOMPARE(window.findChild<QLabel *>(QStringLiteral("Data1"))->text(), QStringLiteral("Запис: 2"));
        QCOMPARE(stored(u"CenaHelp = 12"_qs, code), 1);
        const QString second = list->model()->index(1, 0).data().toString();
        name->setText(QStringLiteral("Обтурация1234567")); // cut as on leaving its box
        click("cmdClose");
        QVERIFY(!window.isVisible());
        QCOMPARE(stored(u"TextHelp = 'Обтурация123456'"_qs, second), 1);
    }

    // Escape never stores: over a correction it asks, НЕ keeps the list and ДА closes it unstored.
    void escapeAsksAndNeverStores()
    {
        TestPractice practice;
        Cenoraz window;
        window.show();
        QTest::keyClick(&window, Qt::Key_Escape); // nothing typed: closes without a question
        QVERIFY(!window.isVisible());
        QVERIFY(practice.dialogs().questions.isEmpty());
        window.show();
        window.findChild<QLineEdit *>(QStringLiteral("Text1_1"))->setText(QStringLiteral("99"));
        QVERIFY(escapeAsksBeforeClosing(window, practice.dialogs()));
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM Ceny WHERE CenaHelp = 99")), 0);
    }
};

QTEST_MAIN(TestPriceList)
#include "tst_PriceList.moc"
