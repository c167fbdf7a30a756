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

    void csv_data()
    {
        QTest::addColumn<QString>("content");
        QTest::addColumn<int>("rows");
        QTest::addColumn<QString>("error");
        QTest::newRow("plain") << "a,b\n1,2\n3,4\n" << 2 << "";
        QTest::newRow("quoted separator and quote") << "a,b\n\"x, y\",\"say \"\"hi\"\"\"\n" << 1 << "";
        QTest::newRow("semicolons") << "a;b\n1;2\n" << 1 << "";
        QTest::newRow("CRLF and blank lines") << "a,b\r\n1,2\r\n\r\n3,4\r\n" << 2 << "";
        QTest::newRow("byte order mark") << QStringLiteral("\uFEFFa,b\n1,2\n") << 1 << "";
        QTest::newRow("short line names its line") << "a,b\n1,2\n3\n" << 0 << "ред 3";
        QTest::newRow("long line names its line") << "a,b\n1,2,3\n" << 0 << "ред 2";
        QTest::newRow("open quote") << "a,b\n1,\"2\n" << 0 << "незатворени";
        QTest::newRow("no header") << "" << 0 << "ред 1";
    }
    void csv()
    {
        QFETCH(QString, content);
        QFETCH(int, rows);
        QFETCH(QString, error);
        const auto table = store::parseCsv(content, QStringLiteral("test.csv"));
        if (!error.isEmpty()) {
            QVERIFY(!table.ok());
            QVERIFY2(table.error().contains(error) && table.error().contains(QStringLiteral("test.csv")),
                     qPrintable(table.error()));
            return;
        }
        QVERIFY2(table.ok(), qPrintable(table.error()));
        QCOMPARE(table->rows.size(), rows);
        QCOMPARE(table->column(QStringLiteral("B")), 1);
    }

    void csvKeepsQuotedText()
    {
        const auto table = store::parseCsv(QStringLiteral("a,b\n\"x, y\",\"two\nlines\"\n5,6\n"), QStringLiteral("t"));
        QVERIFY(table.ok());
        QCOMPARE(table->rows.at(0), (QStringList{QStringLiteral("x, y"), QStringLiteral("two\nlines")}));
        QCOMPARE(table->lineNumbers, (QList<int>{2, 4}));
    }
};

QTEST_GUILESS_MAIN(TestTextAndDates)
#include "tst_TextAndDates.moc"
