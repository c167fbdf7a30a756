#include "base/Page.h"
#include "base/PrintOffsets.h"
#include "base/Spread.h"
#include "base/ui/PrintRenderer.h"

#include <QFile>
#include <QFontMetricsF>
#include <QImage>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

using namespace print;

namespace {

// A list form: a title, a band from 40 mm to 100 mm with a 10 mm header and 10 mm rows (5 a page).
PageDescription listForm(int rows, bool headOnce = false)
{
    PageDescription form(QStringLiteral("rprTest"), A4);
    form.items << text(QStringLiteral("Title"), {10, 10, 100, 8}, QStringLiteral("Заглавие"));
    form.band.top = 40;
    form.band.bottom = 100;
    form.band.headerHeight = 10;
    form.band.header << text(QStringLiteral("Head"), {10, 0, 50, 10}, QStringLiteral("Дата"));
    form.band.rowHeight = 10;
    form.headOnFirstPageOnly = headOnce;
    form.continuationTop = 20;
    for (int n = 0; n < rows; ++n)
        form.band.rows << QList<PageItem>{text(QStringLiteral("Cell"), {10, 0, 50, 10}, QString::number(n))};
    return form;
}

QImage device() { return QImage(2480, 3508, QImage::Format_RGB32); } // A4 at 300 dpi

} // namespace

class tst_Page final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QCoreApplication::setOrganizationName(QStringLiteral("Velmorata"));
        QCoreApplication::setApplicationName(QStringLiteral("Velmorata"));
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings.path());
    }

    void bandBreaksAcrossPages_data()
    {
        QTest::addColumn<int>("rows");
        QTest::addColumn<int>("pageCount");
        QTest::newRow("no rows: one page with the header") << 0 << 1;
        QTest::newRow("exactly one page full") << 5 << 1;
        QTest::newRow("one row over") << 6 << 2;
        QTest::newRow("many") << 23 << 5;
    }
    void bandBreaksAcrossPages()
    {
        QFETCH(int, rows);
        QFETCH(int, pageCount);
        const QList<Page> pages = listForm(rows).pages();
        QCOMPARE(pages.size(), pageCount);
        int seen = 0;
        for (int p = 0; p < pages.size(); ++p) {
            const Page &page = pages.at(p);
            QCOMPARE(page.textAt(QStringLiteral("Title")), QStringLiteral("Заглавие"));
            QCOMPARE(page.item(QStringLiteral("Head"))->rect.top(), 40.0);
            QCOMPARE(page.has(PageNumberItem), pageCount > 1);
            if (pageCount > 1)
                QCOMPARE(page.textAt(PageNumberItem), QStringLiteral("Стр. %1 от %2").arg(p + 1).arg(pageCount));
            for (const PageItem &item : page.items) {
                if (!item.name.startsWith(QStringLiteral("Cell.")))
                    continue;
                QCOMPARE(item.name, rowItemName(QStringLiteral("Cell"), seen));
                QCOMPARE(item.text, QString::number(seen));
                QVERIFY(item.rect.bottom() <= 100.0);
                QVERIFY(item.rect.top() >= 50.0);
                ++seen;
            }
        }
        QCOMPARE(seen, rows);
    }

    void headPrintedOnceLetsLaterPagesHoldMore()
    {
        // Page 1: 5 rows. Later pages start the header at 20 mm instead of 40: 7 rows each.
        const QList<Page> pages = listForm(19, true).pages();
        QCOMPARE(pages.size(), 3);
        QVERIFY(pages.at(0).has(QStringLiteral("Title")));
        QVERIFY(!pages.at(1).has(QStringLiteral("Title")));
        QCOMPARE(pages.at(1).item(QStringLiteral("Head"))->rect.top(), 20.0);
        QVERIFY(pages.at(1).has(rowItemName(QStringLiteral("Cell"), 11)));
        QVERIFY(!pages.at(1).has(rowItemName(QStringLiteral("Cell"), 12)));
        QCOMPARE(pages.at(2).item(rowItemName(QStringLiteral("Cell"), 12))->rect.top(), 30.0);
    }

    // A form's offset is kept, for the forms on pre-printed paper only, and moves every item.
    void offsetsAreKeptPerFormAndMoveEveryItem()
    {
        QVERIFY(hasOffset(QStringLiteral("rprKarton")));
        QVERIFY(!hasOffset(QStringLiteral("rprPacient")));
        QVERIFY(setOffset(QStringLiteral("rprKarton"), {2.5, -1.0}));
        QCOMPARE(offsetOf(QStringLiteral("rprKarton")), QPointF(2.5, -1.0));
        QVERIFY(!setOffset(QStringLiteral("rprPacient"), {3, 3}));
        QCOMPARE(offsetOf(QStringLiteral("rprPacient")), QPointF());
        QVERIFY(setOffset(QStringLiteral("rprKarton"), {}));
        const Page page = listForm(2).pages().first();
        const Page moved = page.shifted({1.5, -2.0});
        QCOMPARE(moved.items.size(), page.items.size());
        for (int n = 0; n < page.items.size(); ++n)
            QCOMPARE(moved.items.at(n).rect, page.items.at(n).rect.translated(1.5, -2.0));
    }

    // The personal number spread over the boxes of a form, wide or narrow, and read back per cell.
    // The PDF of a print is offered under the form, whose it is and the day, never under the
    // report's inner name, and with no character a file name cannot take.
    void pdfFileNames_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("whose");
        QTest::addColumn<QString>("name");
        QTest::newRow("sheet of a patient") << "Амбулаторен лист" << "Петър О'Нийл" << "Амбулаторен лист Петър О'Нийл 2026-03-02.pdf";
        QTest::newRow("spaces folded") << "Разходи" << "  д-р   Иван Петров " << "Разходи д-р Иван Петров 2026-03-02.pdf";
        QTest::newRow("no one's") << "Спецификация" << "" << "Спецификация 2026-03-02.pdf";
        QTest::newRow("slashes and quotes") << "Справка за ЗОК" << "ДЗ \"Усмивка\" 1/2" << "Справка за ЗОК ДЗ _Усмивка_ 1_2 2026-03-02.pdf";
        QTest::newRow("no title: the form's name") << "" << "Петър" << "rprKarton.pdf";
    }
    void pdfFileNames()
    {
        QFETCH(QString, title);
        QFETCH(QString, whose);
        print::PageDescription form(QStringLiteral("rprKarton"), print::A4);
        form.title = title;
        form.whose = whose;
        QTEST(form.pdfFileName(QDate(2026, 3, 2)), "name");
    }

    void spreadIntoDigitBoxes_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("wide");
        QTest::addColumn<QString>("narrow");
        QTest::newRow("ten digits") << "7501012345" << "7  5  0  1  0  1  2  3  4  5" << "7 5 0 1 0 1 2 3 4 5";
        QTest::newRow("empty gives only gaps") << "" << QString(18, u' ') << QString(9, u' ');
        QTest::newRow("short value ends in gaps") << "123" << "1  2  3" + QString(14, u' ') << "1 2 3" + QString(7, u' ');
        QTest::newRow("past ten is dropped") << "123456789012" << "1  2  3  4  5  6  7  8  9  0"
                                             << "1 2 3 4 5 6 7 8 9 0";
    }
    void spreadIntoDigitBoxes()
    {
        QFETCH(QString, value);
        QTEST(SpreadWide(value), "wide");
        QTEST(SpreadNarrow(value), "narrow");
        for (const auto &[spread, gap] : {std::pair{SpreadWide(value), 2}, std::pair{SpreadNarrow(value), 1}}) {
            const PageItem cells = digitBoxes(QStringLiteral("D"), {0, 0, 50, 5}, spread, gap);
            QString read;
            for (int n = 0; n < cells.cells; ++n)
                read += cells.cellText(n);
            QCOMPARE(read, value.left(10).leftJustified(10));
        }
        const PageItem two = digitBoxes(QStringLiteral("D"), {0, 0, 50, 5}, SpreadWide(QStringLiteral("5")), 2, 2);
        QCOMPARE(two.cellText(0) + two.cellText(1), QStringLiteral("5 "));
    }

    void textStaysInsideItsBox_data()
    {
        QTest::addColumn<bool>("wrap");
        QTest::addColumn<double>("height");
        QTest::newRow("cut on one line") << false << 6.0;
        QTest::newRow("wrapped, three lines room") << true << 12.0;
        QTest::newRow("wrapped, box lower than a line") << true << 2.0;
    }
    void textStaysInsideItsBox()
    {
        QFETCH(bool, wrap);
        QFETCH(double, height);
        QImage paper = device();
        const QString longName = QStringLiteral("Д'Артанян-Иванова ") + QString(237, u'Ж');
        QCOMPARE(longName.size(), 255);
        PageItem item = text(QStringLiteral("Label4"), {20, 20, 80, height}, longName);
        item.wrap = wrap;
        const QStringList lines = fittedLines(item, paper);
        const QFontMetricsF metrics(fontOf(item), &paper);
        const double perMm = paper.logicalDpiX() / 25.4;
        QVERIFY(!lines.isEmpty());
        QVERIFY(lines.size() == 1 || lines.size() * metrics.lineSpacing() <= height * perMm + 0.5);
        for (const QString &line : lines)
            QVERIFY2(metrics.horizontalAdvance(line) <= 80 * perMm, qPrintable(line));
        QVERIFY(lines.join(QString()).size() < longName.size()); // the rest is cut, not overprinted
        QVERIFY(longName.startsWith(lines.first()));
    }

    void shortTextIsWrittenWhole()
    {
        QImage paper = device();
        const PageItem item = wrapped(QStringLiteral("T"), {0, 0, 80, 20}, QStringLiteral("Иван Петров Иванов"));
        QCOMPARE(fittedLines(item, paper), QStringList{QStringLiteral("Иван Петров Иванов")});
    }

    void pdfIsWrittenWholeOrNotAtAll()
    {
        QTemporaryDir dir;
        const QString good = dir.filePath(QStringLiteral("list.pdf"));
        QVERIFY(writePdf(listForm(12), good));
        QFile pdf(good);
        QVERIFY(pdf.open(QIODevice::ReadOnly));
        QVERIFY(pdf.read(5) == "%PDF-");
        const QString missingFolder = dir.filePath(QStringLiteral("no/such/folder/list.pdf"));
        const Outcome refused = writePdf(listForm(1), missingFolder);
        QVERIFY(!refused);
        QVERIFY(refused.error().contains(QStringLiteral("list.pdf")));
        QVERIFY(!QFile::exists(missingFolder));
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList{QStringLiteral("list.pdf")});
    }

private:
    QTemporaryDir m_settings;
};

QTEST_MAIN(tst_Page)
#include "tst_Page.moc"
