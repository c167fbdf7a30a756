#include "TestPractice.h"

#include "store/ReferenceData.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QFile>
#include <QTest>

namespace {

QString writeFile(const QString &folder, const QByteArray &content)
{
    const QString path = folder + QStringLiteral("/codes.csv");
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path));
    return path;
}

// The whole list as one text, to see that a refused file changed nothing at all.
QString postCodeList()
{
    return store::scalar(store::dataDb(),
                         QStringLiteral("SELECT group_concat(PKod || '|' || Tawn || '|' || ZK, ';') FROM PostCode"))
        .toString();
}

} // namespace

class TestPostCodeImport final : public QObject
{
    Q_OBJECT
private slots:
    void loaded_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("rows");
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("town");
        QTest::newRow("header in another order, extra column, semicolons")
            << QByteArray("ZdRn;Obl;Extra;PKod;Tawn;Obsh;ZK\n01;Варна;x;9000;гр. Варна;Варна;03\n02;Варна;y;9010;гр. Варна;Варна;03\n")
            << 2 << "9010" << "гр. Варна";
        QTest::newRow("CRLF line ends") << QByteArray("PKod,Tawn,Obsh,Obl,ZK,ZdRn\r\n9000,гр. Варна,Варна,Варна,03,06\r\n"
                                                "9010,с. Кранево,Балчик,Добрич,08,01\r\n")
                                        << 2 << "9010" << "с. Кранево";
        QTest::newRow("CR-only line ends") << QByteArray("PKod,Tawn,Obsh,Obl,ZK,ZdRn\r9000,гр. Варна,Варна,Варна,03,06\r"
                                                   "9010,с. Кранево,Балчик,Добрич,08,01")
                                           << 2 << "9010" << "с. Кранево";
        QTest::newRow("doubled quotes inside a quoted value")
            << QByteArray("PKod,Tawn,Obsh,Obl,ZK,ZdRn\n2000,\"с. \"\"Света\"\" Неделя, Малка\",Самоков,София,23,02\n") << 1
            << "2000" << "с. \"Света\" Неделя, Малка";
        QTest::newRow("quotes inside an unquoted value are text")
            << QByteArray("PKod,Tawn,Obsh,Obl,ZK,ZdRn\n2000,с. \"Света\" Неделя,Самоков,София,23,02\n") << 1 << "2000"
            << "с. \"Света\" Неделя";
        QTest::newRow("byte order mark and blank lines")
            << QByteArray("\xEF\xBB\xBFPKod,Tawn,Obsh,Obl,ZK,ZdRn\n\n5000,гр. Велико Търново,ВТ,ВТ,04,01\n\n") << 1 << "5000"
            << "гр. Велико Търново";
    }
    void loaded()
    {
        QFETCH(QByteArray, content);
        QFETCH(int, rows);
        QFETCH(QString, code);
        QFETCH(QString, town);
        TestPractice practice;
        const auto result = store::importPostCodes(store::dataDb(), writeFile(practice.folder(), content));
        QVERIFY2(result.ok(), qPrintable(result.error()));
        QCOMPARE(result.value(), rows);
        QCOMPARE(store::scalar(store::dataDb(), QStringLiteral("SELECT COUNT(*) FROM PostCode")).toInt(), rows);
        QCOMPARE(store::scalar(store::dataDb(), QStringLiteral("SELECT Tawn FROM PostCode WHERE PKod = ?"), {code}).toString(),
                 town);
    }

    void refused_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QStringList>("named"); // what the message must name besides the file
        const QByteArray header("PKod,Tawn,Obsh,Obl,ZK,ZdRn\n");
        // "гр. Варна" in Windows-1251, as a spreadsheet on a Bulgarian Windows saves it.
        const QByteArray cp1251Town("\xE3\xF0. \xC2\xE0\xF0\xED\xE0");
        QTest::newRow("Windows-1251") << header + "9000," + cp1251Town + ",a,b,03,06\n"
                                      << QStringList{"ред 2", "UTF-8", "iconv -f CP1251 -t UTF-8"};
        QTest::newRow("UTF-8 cut off inside a letter") << header + "9000,\xD0,a,b,03,06\n" << QStringList{"ред 2", "UTF-8"};
        QTest::newRow("header only") << header << QStringList{"няма нито един ред"};
        QTest::newRow("empty file") << QByteArray() << QStringList{"ред 1"};
        QTest::newRow("duplicate post code names both lines")
            << header + "9000,a,b,c,03,06\n9010,a,b,c,03,06\n 9000 ,d,e,f,03,06\n" << QStringList{"ред 4", "ред 2", "9000"};
        QTest::newRow("NUL byte") << header + QByteArray("9000,a\0b,c,d,03,06\n", 19) << QStringList{"ред 2", "NUL"};
        QTest::newRow("short line") << header + "9000,a,b,c,03,06\n9010,Варна\n" << QStringList{"ред 3"};
        QTest::newRow("long line") << header + "9000,a,b,c,03,06,7\n" << QStringList{"ред 2"};
        QTest::newRow("missing column") << QByteArray("PKod,Tawn,Obsh,Obl,ZK\n9000,a,b,c,03\n") << QStringList{"ZdRn"};
        QTest::newRow("empty post code") << header + ",a,b,c,03,01\n" << QStringList{"ред 2"};
        QTest::newRow("text after a closing quote") << header + "9000,\"a\"b,c,d,03,06\n" << QStringList{"ред 2"};
        QTest::newRow("quote left open") << header + "9000,\"a,b,c,03,06\n9010,a,b,c,03,06\n"
                                         << QStringList{"ред 2", "незатворени"};
    }
    void refused()
    {
        QFETCH(QByteArray, content);
        QFETCH(QStringList, named);
        TestPractice practice;
        const QString before = postCodeList();
        const QString path = writeFile(practice.folder(), content);
        const auto result = store::importPostCodes(store::dataDb(), path);
        QVERIFY(!result.ok());
        for (const QString &part : named + QStringList{path})
            QVERIFY2(result.error().contains(part), qPrintable(result.error()));
        QCOMPARE(postCodeList(), before); // nothing changed
    }

    // A file far larger than a read chunk goes through whole, and a fault near its end still
    // leaves the list as it was.
    void longFileIsReadToItsEnd()
    {
        TestPractice practice;
        QByteArray content("PKod,Tawn,Obsh,Obl,ZK,ZdRn\n");
        for (int code = 10000; code < 30000; ++code)
            content += QByteArray::number(code) + ",\"гр. Дълго Име, на няколко\nреда\",Общ,Обл,03,06\r\n";
        const QString path = writeFile(practice.folder(), content);
        const auto loaded = store::importPostCodes(store::dataDb(), path);
        QVERIFY2(loaded.ok(), qPrintable(loaded.error()));
        QCOMPARE(loaded.value(), 20000);
        const QString before = postCodeList();
        const auto refused = store::importPostCodes(store::dataDb(), writeFile(practice.folder(), content + "10000,a,b,c,d,e\n"));
        QVERIFY(!refused.ok());
        QVERIFY2(refused.error().contains(QStringLiteral("ред 40002")) && refused.error().contains(QStringLiteral("ред 2")),
                 qPrintable(refused.error()));
        QCOMPARE(postCodeList(), before);
    }
};

QTEST_GUILESS_MAIN(TestPostCodeImport)
#include "tst_PostCodeImport.moc"
