#include "TestPractice.h"

#include "reports/PeriodLines.h"
#include "reports/forms/Accounting.h"
#include "reports/forms/Materials.h"
#include "reports/forms/MaterialsPage.h"
#include "store/ReferenceData.h"
#include "store/Scratch.h"
#include "store/Sql.h"

#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

const reports::Period March = reports::CheckPeriod(QStringLiteral("01.03.2026"), QStringLiteral("31.03.2026")).period;

// Three materials (the first two start from nothing, the third from the store's 5), and the
// norms of a few codes, one column a material. A norm given as NaN is stored as Null.
using Norms = QList<std::pair<QString, QList<double>>>;

void setUpNorms(const Norms &norms, int columns = 3)
{
    const QSqlDatabase data = store::dataDb();
    store::run(data, QStringLiteral("DELETE FROM Mater"));
    const QList<std::pair<QString, double>> materials{{u"Амалгама"_s, 0.0}, {u"Композит"_s, 0.0}, {u"Памук"_s, 5.0}};
    int kod = 1;
    for (const auto &[name, kol] : materials)
        store::run(data, QStringLiteral("INSERT INTO Mater (Kod, Name, Kol, Ed) VALUES (?, ?, ?, 'гр')"),
                   {QStringLiteral("%1").arg(kod++, 3, 10, QChar(u'0')), name, kol});
    store::run(data, QStringLiteral("DROP TABLE RazhNorm"));
    QStringList names;
    for (int i = 1; i <= columns; ++i)
        names << QStringLiteral("M%1").arg(i);
    store::createRazhNorm(data, names);
    for (const auto &[code, values] : norms) {
        QVariantList row{code};
        for (const double value : values)
            row << (std::isnan(value) ? QVariant(QMetaType(QMetaType::Double)) : QVariant(value));
        QSqlQuery insert(data);
        insert.prepare(QStringLiteral("INSERT INTO RazhNorm (KodHelp, %1) VALUES (?%2)")
                           .arg(names.join(u','), QStringLiteral(",?").repeated(columns)));
        for (const QVariant &value : row)
            insert.addBindValue(value);
        QVERIFY(insert.exec());
    }
}

void addLines(int count, const QString &code, const QString &doctor = QStringLiteral("1111"),
              const QString &text = QString())
{
    for (int i = 0; i < count; ++i)
        store::run(store::clinicDb(),
                   QStringLiteral("INSERT INTO Help (EGN, Data, KodHelp, TextHelp, KodMedic, ListID) VALUES (?,?,?,?,?,?)"),
                   {QStringLiteral("8001010000"), QStringLiteral("2026-03-%1").arg(1 + i % 28, 2, 10, QChar(u'0')), code,
                    store::textOrNull(text), doctor, QStringLiteral("000042")});
}

Outcome loadAndCalc()
{
    if (auto made = store::CreateScratchTable(QStringLiteral("TempMater")); !made)
        return made;
    if (auto loaded = reports::LoadMaterialsList(store::dataDb(), store::scratchDb()); !loaded)
        return loaded;
    return reports::CalcMaterials(store::clinicDb(), store::dataDb(), store::scratchDb(), March);
}

// Name and quantity of each row of the report, in order.
QStringList reportRows()
{
    QStringList rows;
    const auto read = reports::ReadMaterialsReport(store::scratchDb());
    for (const reports::MaterialUse &use : read.value())
        rows << use.Name + u'=' + QString::number(use.Kol, 'g', 9);
    return rows;
}

int scratchRows() { return store::scalar(store::scratchDb(), QStringLiteral("SELECT COUNT(*) FROM TempMater")).toInt(); }

} // namespace

Q_DECLARE_METATYPE(Norms)

class MaterialsTest final : public QObject
{
    Q_OBJECT

private slots:
    // Every doctor's lines, each adding its code's norms column by column in single precision:
    // ten times 0.1 makes the single just above 1, not 1 nor the double just below it. A Null
    // norm drops the material; with no lines only the stock shows.
    void sums_data()
    {
        QTest::addColumn<Norms>("norms");
        QTest::addColumn<QStringList>("lines"); // "count code doctor [TextHelp]"
        QTest::addColumn<QStringList>("rows");
        QTest::addColumn<QStringList>("messages");
        const QStringList done{reports::DoneMessage};
        QTest::newRow("an empty period shows the stock")
            << Norms{{u"101"_s, {1, 1, 1}}} << QStringList{} << QStringList{u"Памук=5"_s}
            << QStringList{reports::NoMaterialsDataMessage, reports::DoneMessage};
        QTest::newRow("single precision over all doctors")
            << Norms{{u"101"_s, {0.1, 0.0, 0.15}}, {u"103"_s, {0.0, 2.0, 0.0}}}
            << QStringList{"6 101 1111", "4 101 2222", "1 103 2222"}
            << QStringList{u"Амалгама=1.00000012"_s, u"Композит=2"_s, u"Памук=6.50000095"_s} << done;
        // A filling is charged by the norms of its material, once the accounting has told them apart.
        QTest::newRow("fillings by their material")
            << Norms{{u"301"_s, {9, 9, 9}}, {u"301А"_s, {1, 0, 0}}, {u"301Б"_s, {0, 1, 0}}}
            << QStringList{"1 301 1111 Обт.амалгама", "2 301 1111 Обт.хим.композ."}
            << QStringList{u"Амалгама=1"_s, u"Композит=2"_s, u"Памук=5"_s} << done;
        QTest::newRow("a Null norm drops the material") << Norms{{u"101"_s, {1, 1, std::nan("")}}}
                                                        << QStringList{"1 101 1111"}
                                                        << QStringList{u"Амалгама=1"_s, u"Композит=1"_s} << done;
    }
    void sums()
    {
        QFETCH(Norms, norms);
        QFETCH(QStringList, lines);
        TestPractice practice;
        setUpNorms(norms);
        for (const QString &line : lines) {
            const QStringList words = line.split(u' ');
            addLines(words[0].toInt(), words[1], words[2], words.value(3));
        }
        QVERIFY(accounting::ClassifyFillings(store::clinicDb()).ok());
        QVERIFY(loadAndCalc().ok());
        QTEST(reportRows(), "rows");
        QTEST(practice.dialogs().messages, "messages");
        QCOMPARE(practice.dialogs().progressShown, lines.isEmpty() ? 0 : 1);
    }

    // Where the norms cannot charge a line the report says which line, and leaves no table.
    void missingNormsAreAMessageAndAnEmptyTable_data()
    {
        QTest::addColumn<int>("columns");
        QTest::addColumn<QString>("code");
        QTest::newRow("no norm row for the code") << 3 << "999";
        QTest::newRow("fewer columns than materials") << 2 << "101";
    }

    void missingNormsAreAMessageAndAnEmptyTable()
    {
        QFETCH(int, columns);
        QFETCH(QString, code);
        TestPractice practice;
        setUpNorms({{u"101"_s, QList<double>(columns, 1.0)}}, columns);
        addLines(3, u"101"_s);
        addLines(1, code);
        const Outcome made = loadAndCalc();
        QVERIFY(!made.ok());
        QVERIFY2(made.error().contains(code) && made.error().contains(u"8001010000"_s), qPrintable(made.error()));
        QCOMPARE(scratchRows(), 0);
        QVERIFY(!practice.dialogs().messages.contains(reports::DoneMessage));
    }

    void quantityPrintsAsAWholeGroupedNumber_data()
    {
        QTest::addColumn<double>("kol");
        QTest::addColumn<QString>("shown");
        QTest::newRow("rounds up") << 2.6 << "3";
        QTest::newRow("half away from zero") << 2.5 << "3";
        QTest::newRow("small") << 0.4 << "0";
        QTest::newRow("thousands") << 1234.4 << "1 234";
        QTest::newRow("rounds into the next group") << 999.5 << "1 000";
        QTest::newRow("millions") << 1234567.0 << "1 234 567";
    }

    void quantityPrintsAsAWholeGroupedNumber()
    {
        QFETCH(double, kol);
        QFETCH(QString, shown);
        QCOMPARE(reports::MaterialQuantityText(kol), shown);
    }

    void theFormCarriesThePeriodAndEveryRow()
    {
        const QList<reports::MaterialUse> rows{{u"Амалгама"_s, 2.6, u"кап"_s}, {u"Памук"_s, 1234.4, u"гр"_s}};
        const print::PageDescription form = reports::MaterialsPage(rows, March, u"Иван Петров"_s);
        QCOMPARE(form.formName, u"rprMat"_s);
        const print::Page page = form.pages().first();
        for (const auto &[name, text] : QList<std::pair<QString, QString>>{
                 {u"Label3"_s, u"01.03.2026"_s}, {u"Label9"_s, u"31.03.2026"_s},
                 {u"Label6"_s, u"от д-р Иван Петров"_s},
                 {print::rowItemName(u"Text2"_s, 1), u"Памук"_s}, {print::rowItemName(u"Text1"_s, 0), u"3"_s},
                 {print::rowItemName(u"Text1"_s, 1), u"1 234"_s}, {print::rowItemName(u"Text3"_s, 0), u"кап"_s}})
            QCOMPARE(page.textAt(name), text);
    }
};

QTEST_MAIN(MaterialsTest)
#include "tst_Materials.moc"
