// The upper half of the treatment window: the address and telephone lines, the first name, and
// the chart with its milk-tooth overlay.
#include "TestPractice.h"

#include "store/Sql.h"
#include "treatment/ChartPicture.h"
#include "treatment/PatientHeader.h"

#include <QTest>

namespace {

// "KV=Лозенец;UL=ул. Роза 5" -> fields, for the patient's row as for the chart
template<typename Fields>
Fields fieldsOf(const QString &spec)
{
    Fields fields;
    for (const QString &pair : spec.split(u';', Qt::SkipEmptyParts))
        fields.insert(pair.section(u'=', 0, 0), pair.section(u'=', 1));
    return fields;
}

} // namespace

class TestPatientHeader final : public QObject
{
    Q_OBJECT
private slots:
    void address_data()
    {
        QTest::addColumn<QString>("fields");
        QTest::addColumn<QString>("line");
        QTest::newRow("town only") << "Tawn=София" << "София";
        QTest::newRow("every part, in order")
            << "AP=7;ET=3;VX=А;BL=12;UL=ул. Роза 5;KV=Лозенец;Tawn=София" << "София, Лозенец, ул. Роза 5, бл.12, вх.А, ет.3, ап.7";
        QTest::newRow("blank parts are left out") << "Tawn=София;KV= ;BL=  ;AP=7" << "София, ап.7";
        QTest::newRow("a part keeps its own blanks") << "Tawn=София;ET= 3 " << "София, ет. 3 ";
        QTest::newRow("no town: the line starts with the comma") << "UL=ул. Роза 5" << ", ул. Роза 5";
    }
    void address()
    {
        QFETCH(QString, fields);
        QFETCH(QString, line);
        QCOMPARE(PatientAddress(fieldsOf<PatientFields>(fields)), line);
    }

    void telephone_data()
    {
        QTest::addColumn<QString>("fields");
        QTest::addColumn<QString>("line");
        QTest::newRow("none") << "" << "";
        QTest::newRow("home with the area code") << "TKod=02;DTel=9876543" << "дом.02/9876543";
        QTest::newRow("all three: the mobile takes no area code")
            << "TKod=02;DTel=111;STel=222;MTel=0888" << "дом.02/111, сл.02/222, моб.0888";
        QTest::newRow("no home number: starts with the comma") << "STel=9876543" << ", сл.9876543";
        QTest::newRow("mobile only") << "TKod=02;MTel=0888" << ", моб.0888";
        QTest::newRow("a lone blank still counts") << "DTel= " << "дом. ";
    }
    void telephone()
    {
        QFETCH(QString, fields);
        QFETCH(QString, line);
        QCOMPARE(PatientTelephone(fieldsOf<PatientFields>(fields)), line);
    }

    void firstName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("first");
        QTest::newRow("three names") << "Иван Петров Иванов" << "Иван ";
        QTest::newRow("two blanks between") << "Иван  Петров" << "Иван ";
        QTest::newRow("no blank") << "Иван" << "";
        QTest::newRow("empty") << "" << "";
    }
    void firstName()
    {
        QFETCH(QString, name);
        QFETCH(QString, first);
        QCOMPARE(FirstName(name), first);
    }

    void chart_data()
    {
        QTest::addColumn<QString>("fields");
        QTest::addColumn<int>("cell"); // 0..15 upper row, 16..31 lower row
        QTest::addColumn<QString>("shown");
        QTest::addColumn<int>("milk"); // index of the milk number that must show, -1 for none
        // Z24 is the fourth cell of the upper row (tooth 15); Z40 the fourth of the lower (45).
        QTest::newRow("permanent tooth alone") << "Z24=C" << 3 << "C" << -1;
        QTest::newRow("star empties the permanent cell") << "Z1=*;Z24=C" << 3 << "" << 0;
        QTest::newRow("star with blanks is a star") << "Z1= * ;Z24=C" << 3 << "" << 0;
        QTest::newRow("milk code takes the cell") << "Z1=K;Z24=C" << 3 << "K" << 0;
        QTest::newRow("empty milk field leaves the permanent") << "Z1=;Z24=C" << 3 << "C" << -1;
        QTest::newRow("lower jaw") << "Z11=O;Z40=X" << 19 << "O" << 10;
        QTest::newRow("last milk field") << "Z20=R;Z49=E" << 28 << "R" << 19;
    }
    void chart()
    {
        QFETCH(QString, fields);
        QFETCH(int, cell);
        QFETCH(QString, shown);
        QFETCH(int, milk);
        const ChartPicture picture = BuildChartPicture(fieldsOf<ChartFields>(fields));
        QCOMPARE(picture.upper.size(), 16);
        QCOMPARE(picture.lower.size(), 16);
        QCOMPARE((cell < 16 ? picture.upper : picture.lower).value(cell % 16), shown);
        QCOMPARE(picture.milkShown.size(), 20);
        QCOMPARE(picture.milkShown.indexOf(true), milk);
    }

    void unreadableHeaderSaysSo()
    {
        TestPractice practice;
        QVERIFY(LoadPatientHeader(store::clinicDb(), QStringLiteral("8001010000")).ok());
        store::run(store::clinicDb(), QStringLiteral("ALTER TABLE Pacients RENAME TO PacientsGone"));
        const auto header = LoadPatientHeader(store::clinicDb(), QStringLiteral("8001010000"));
        QVERIFY(!header.ok());
        QVERIFY(header.error().startsWith(QStringLiteral("Няма избрани имена!\r")));
    }
};

QTEST_GUILESS_MAIN(TestPatientHeader)
#include "tst_PatientHeader.moc"
