#include "store/Csv.h"
#include "store/Dates.h"
#include "store/TextReading.h"

#include <QTest>

class TestTextAndDates final : public QObject
{
    Q_OBJECT
private slots:
    void leadingNumber_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<qint64>("value");
        QTest::newRow("digits") << "0042" << qint64(42);
        QTest::newRow("stops at a letter") << "12a3" << qint64(12);
        QTest::newRow("nothing readable") << "x12" << qint64(0);
        QTest::newRow("empty") << "" << qint64(0);
        QTest::newRow("blank first") << " 12" << qint64(0);
        QTest::newRow("Cyrillic-looking digits are letters") << QStringLiteral("٣4") << qint64(0);
        QTest::newRow("forty digits saturate") << QString(40, u'9') << std::numeric_limits<qint64>::max();
    }
    void leadingNumber()
    {
        QFETCH(QString, text);
        QTEST(text::leadingNumber(text), "value");
    }

    void piecesBeyondTheEndReadZero()
    {
        QCOMPARE(text::numberAt(QStringLiteral("75"), 3, 2), 0);
        QCOMPARE(text::numberAt(QStringLiteral("7501"), 3, 2), 1);
        QCOMPARE(text::numberAt(QStringLiteral("7501"), 0, 2), 0);
    }

    void typedDates_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QDate>("date");
        QTest::newRow("DD.MM.YYYY") << "05.03.2026" << QDate(2026, 3, 5);
        QTest::newRow("D.M.YYYY") << "5.3.2026" << QDate(2026, 3, 5);
        QTest::newRow("slashes") << "05/03/2026" << QDate(2026, 3, 5);
        QTest::newRow("29 Feb of a common year") << "29.02.2025" << QDate();
        QTest::newRow("two-digit year") << "05.03.26" << QDate();
        QTest::newRow("words") << "вчера" << QDate();
        QTest::newRow("mixed separators") << "05.03/2026" << QDate();
        QTest::newRow("empty") << "" << QDate();
    }
    void typedDates()
    {
        QFETCH(QString, typed);
        QFETCH(QDate, date);
        const auto parsed = dates::fromTyped(typed);
        QCOMPARE(parsed.has_value(), date.isValid());
        if (parsed)
            QCOMPARE(*parsed, date);
    }

    void queryFormAndIso()
    {
        QCOMPARE(dates::fromQueryForm(QStringLiteral("03/05/2026")), std::optional<QDate>(QDate(2026, 3, 5)));
        QCOMPARE(dates::fromQueryForm(QStringLiteral("3/5/2026")), std::optional<QDate>(QDate(2026, 3, 5)));
        QVERIFY(!dates::fromQueryForm(QStringLiteral("13/01/2026")));
        QCOMPARE(dates::toIso(QDate(2026, 3, 5)), QStringLiteral("2026-03-05"));
        QCOMPARE(dates::isoToTyped(QStringLiteral("2026-03-05")), QStringLiteral("05.03.2026"));
        QCOMPARE(dates::isoToTyped(QStringLiteral("not a date")), QStringLiteral("not a date"));
        QCOMPARE(dates::sliceTypedToQueryForm(QStringLiteral("05.03.2026")), QStringLiteral("03/05/2026"));
    }

    // The table a CSV text gives: fields unquoted, rows with the line each began on, columns found
    // by name whatever the case; a fault names the source and the line. (The reading rules
    // themselves are tried on the post code import, which reads through the same reader.)
    void csvTable()
    {
        const auto table = store::parseCsv(QStringLiteral("a,b\n\"x, y\",\"two\nlines\"\n5,6\n"), QStringLiteral("t"));
        QVERIFY(table.ok());
        QCOMPARE(table->rows, (QList<QStringList>{{"x, y", "two\nlines"}, {"5", "6"}}));
        QCOMPARE(table->lineNumbers, (QList<int>{2, 4}));
        QCOMPARE(table->column(QStringLiteral("B")), 1);
        QCOMPARE(table->column(QStringLiteral("c")), -1);
        const auto refused = store::parseCsv(QStringLiteral("a,b\n1,2\n3\n"), QStringLiteral("test.csv"));
        QVERIFY(!refused.ok());
        QVERIFY2(refused.error().contains(u"ред 3"_qs) && refused.error().contains(u"test.csv"_qs), qPrintable(refused.error()));
    }
};

QTEST_GUILESS_MAIN(TestTextAndDates)
#include "tst_TextAndDates.moc"
