#include "EscapeAsks.h"
#include "TestPractice.h"

#include "reports/forms/Accounting.h"
#include "reports/ui/Schet.h"
#include "store/Sql.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QTest>

namespace {

const QString Egn = QStringLiteral("8001010000");

reports::Period periodOf(const QString &from, const QString &to)
{
    return reports::CheckPeriod(from, to).period;
}

const reports::Period March = periodOf(QStringLiteral("01.03.2026"), QStringLiteral("31.03.2026"));

void addLine(const QDate &day, const QVariant &cena, const QVariant &schet, const QString &code = QStringLiteral("101"),
             const QString &text = QStringLiteral("Преглед"), const QString &doctor = QStringLiteral("1111"))
{
    store::run(store::clinicDb(),
               QStringLiteral("INSERT INTO Help (EGN, Data, KodHelp, TextHelp, Cena, Schet, KodMedic) VALUES (?,?,?,?,?,?,?)"),
               {Egn, day.toString(Qt::ISODate), code, text, cena, schet, doctor});
}

QString flagOf(qint64 id)
{
    return store::scalar(store::clinicDb(), QStringLiteral("SELECT Schet FROM Help WHERE ID = ?"), {id}).toString();
}

// The form is not modal and deletes itself when closed; a test leaves none behind.
struct OpenSchet final
{
    QPointer<Schet> window;
    explicit OpenSchet(const reports::Period &period)
        : window(Schet::open(nullptr, period))
    {
    }
    ~OpenSchet() { delete window.data(); }
    QString text(int label) const { return window->findChild<QLabel *>(QStringLiteral("Label1_%1").arg(label))->text(); }
    QCheckBox *flag() const { return window->findChild<QCheckBox *>(QStringLiteral("chkFields")); }
    QPushButton *button(const char *name) const { return window->findChild<QPushButton *>(QString::fromLatin1(name)); }
    void click(const char *name) const { QTest::mouseClick(button(name), Qt::LeftButton); }
    void moveTo(int row) const
    {
        auto *grid = window->findChild<QTableView *>(QStringLiteral("DBGrid1"));
        grid->setCurrentIndex(grid->model()->index(row, 0));
    }
    int rows() const { return window->findChild<QTableView *>(QStringLiteral("DBGrid1"))->model()->rowCount(); }
};

} // namespace

class AccountingTest final : public QObject
{
    Q_OBJECT

private slots:
    void classifyFillingsMarksAndSortsByMaterial_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QVariant>("schet");
        QTest::addColumn<QString>("codeAfter");
        const QVariant unset(QMetaType(QMetaType::Int));
        QTest::newRow("amalgam") << "301" << "Обт.амалгама" << QVariant(1) << "301А";
        QTest::newRow("composite, unmarked") << "301" << "Обт.хим.композ." << QVariant(0) << "301Б";
        QTest::newRow("the other amalgam spelling") << "301" << "Обт.амлгама" << unset << "301";
        QTest::newRow("another code keeps it") << "101" << "Обт.амалгама" << unset << "101";
        QTest::newRow("already sorted") << "301А" << "Обт.амалгама" << QVariant(1) << "301А";
    }

    void classifyFillingsMarksAndSortsByMaterial()
    {
        QFETCH(QString, code);
        QFETCH(QString, text);
        QFETCH(QVariant, schet);
        QFETCH(QString, codeAfter);
        TestPractice practice;
        addLine(QDate(2026, 3, 2), 10.0, schet, code, text);
        QVERIFY(accounting::ClassifyFillings(store::clinicDb()).ok());
        QCOMPARE(practice.row(QStringLiteral("SELECT KodHelp, Schet FROM Help")), QStringList({codeAfter, u"1"_qs}));
        // The letters are the Cyrillic ones the norms are kept under.
        QVERIFY(!codeAfter.contains(u'A') && !codeAfter.contains(u'B'));
    }

    void sumsOfThePeriodInWholeCents_data()
    {
        QTest::addColumn<QVariantList>("prices");
        QTest::addColumn<QVariantList>("flags");
        QTest::addColumn<QStringList>("sums"); // total, booked, remaining
        QTest::newRow("odd cents stay exact") << QVariantList{12.05, 17.99, 0.1} << QVariantList{1, 0, 1}
                                              << QStringList{"30.14 лв.", "12.15 лв.", "17.99 лв."};
        QTest::newRow("all booked") << QVariantList{12.5, 3.0} << QVariantList{1, 1}
                                    << QStringList{"15.50 лв.", "15.50 лв.", "0.00 лв."};
        QTest::newRow("no price, flag never written")
            << QVariantList{QVariant(QMetaType(QMetaType::Double)), 7.0}
            << QVariantList{QVariant(QMetaType(QMetaType::Int)), 0} << QStringList{"7.00 лв.", "0.00 лв.", "7.00 лв."};
    }

    void sumsOfThePeriodInWholeCents()
    {
        QFETCH(QVariantList, prices);
        QFETCH(QVariantList, flags);
        QFETCH(QStringList, sums);
        TestPractice practice;
        for (int i = 0; i < prices.size(); ++i) // every doctor's lines count
            addLine(QDate(2026, 3, 10 - i), prices.at(i), flags.at(i), u"101"_qs, u"Преглед"_qs, QString::number(1000 + i));
        addLine(QDate(2026, 4, 1), 99.0, 1); // out of the period
        const auto book = accounting::LoadBookPeriod(store::clinicDb(), March);
        QVERIFY(book.ok());
        QCOMPARE(book->lines.size(), prices.size());
        QVERIFY(book->lines.first().Data < book->lines.last().Data); // by date
        QCOMPARE(QStringList({accounting::LevaText(book->sums.totalCents), accounting::LevaText(book->sums.bookedCents),
                              accounting::LevaText(book->sums.remainingCents())}),
                 sums);
    }

    void anEmptyPeriodSaysSoAndCannotBeSaved()
    {
        TestPractice practice;
        OpenSchet form(March);
        QCOMPARE(practice.dialogs().messages, QStringList{accounting::NoDataMessage});
        QVERIFY(!form.button("cmdUpdate")->isEnabled());
        QCOMPARE(form.text(5) + form.text(3) + form.text(4), QString());
        const Outcome saved = accounting::SaveBooking(store::clinicDb(), 4711, true); // a line that is gone
        QVERIFY(!saved.ok());
        QVERIFY(saved.error().contains(u"4711"_qs));
    }

    // Запиши moves the booked sum by the price at every save, up with the mark on and down with
    // it off; leaving a line with a changed mark stores it in the same way.
    void marksAreSavedThroughTheButtonsAndMoveTheRunningSums()
    {
        TestPractice practice;
        addLine(QDate(2026, 3, 2), 10.0, 1);
        addLine(QDate(2026, 3, 3), 5.5, 0, u"332"_qs, u"Екстракция"_qs);
        OpenSchet form(March);
        QCOMPARE(form.text(1), u"101 Преглед"_qs);
        QCOMPARE(form.window->findChild<QLabel *>(QStringLiteral("Data1"))->text(), u"Record: 1"_qs);
        QCOMPARE(QStringList({form.text(5), form.text(3), form.text(4)}),
                 QStringList({u"15.50 лв."_qs, u"10.00 лв."_qs, u"5.50 лв."_qs}));
        form.click("cmdUpdate"); // saved again with the mark on: counted twice until reloaded
        QCOMPARE(form.text(3), u"20.00 лв."_qs);
        form.moveTo(1);
        QCOMPARE(form.window->findChild<QLabel *>(QStringLiteral("Data1"))->text(), u"Record: 2"_qs);
        form.flag()->setChecked(true);
        form.moveTo(0);
        QCOMPARE(flagOf(2), u"1"_qs);
        QCOMPARE(form.text(3), u"25.50 лв."_qs);
        form.flag()->setChecked(false);
        form.click("cmdUpdate");
        QCOMPARE(flagOf(1), u"0"_qs);
        QCOMPARE(QStringList({form.text(3), form.text(4)}), QStringList({u"15.50 лв."_qs, u"0.00 лв."_qs}));
        QVERIFY(practice.dialogs().questions.isEmpty());
    }

    // A tick not saved is given up only on the user's word: a second opening for another period
    // asks before it loads that period, and Escape asks before it closes.
    void anUnsavedMarkIsGivenUpOnlyAfterAQuestion()
    {
        TestPractice practice;
        addLine(QDate(2026, 3, 2), 10.0, 0);
        addLine(QDate(2026, 4, 2), 10.0, 0);
        addLine(QDate(2026, 4, 3), 10.0, 0);
        const reports::Period april = periodOf(QStringLiteral("01.04.2026"), QStringLiteral("30.04.2026"));
        OpenSchet form(March);
        form.flag()->setChecked(true);
        QCOMPARE(Schet::open(nullptr, april), form.window.data()); // НЕ: the tick and the period stay
        QCOMPARE(form.rows(), 1);
        QVERIFY(form.flag()->isChecked());
        practice.dialogs().answers = {true};
        Schet::open(nullptr, april);
        QCOMPARE(form.rows(), 2);
        QCOMPARE(practice.dialogs().questions.size(), 2);
        form.flag()->setChecked(true);
        QVERIFY(escapeAsksBeforeClosing(*form.window, practice.dialogs()));
        QCOMPARE(practice.count(QStringLiteral("SELECT COUNT(*) FROM Help WHERE Schet = 1")), 0);
    }
};

QTEST_MAIN(AccountingTest)
#include "tst_Accounting.moc"
