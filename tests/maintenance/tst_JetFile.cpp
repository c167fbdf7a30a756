#include "maintenance/JetFile.h"
#include "maintenance/JetSource.h"

#include <QDate>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

// The Jet reader over the real files of the other package and of the earlier edition.
class JetFileTest final : public QObject
{
    Q_OBJECT

    static QString data(const QString &name) { return qEnvironmentVariable("VELMORATA_TEST_DATA") + u'/' + name; }

private slots:
    void readsCyrillicDatesNumbersAndNull()
    {
        auto file = jet::openTableSource(data(QStringLiteral("zoks-sample.mdb")));
        QVERIFY2(file.ok(), qPrintable(file.error()));
        for (const char *table : {"patients", "address", "eknm", "s_code", "st_code"})
            QVERIFY(file.value()->hasTable(QString::fromLatin1(table)));
        auto patients = file.value()->read(QStringLiteral("PATIENTS"));
        QVERIFY(patients.ok());
        QCOMPARE(patients->rows.size(), 40);
        const QVariantList &first = patients->rows.first();
        QCOMPARE((QVariantList{first.at(patients->column(QStringLiteral("name1"))),
                               first.at(patients->column(QStringLiteral("BIRTHDATE"))),
                               first.at(patients->column(QStringLiteral("POL"))).toLongLong(),
                               first.at(patients->column(QStringLiteral("RECBOOK"))).isNull(),
                               first.at(patients->column(QStringLiteral("HIMNUMBER")))}),
                 (QVariantList{QStringLiteral("Тодор"), QDate(1943, 5, 4), 0LL, true, QStringLiteral(" ")}));
        QVERIFY(!file.value()->read(QStringLiteral("nosuchtable")).ok());
    }

    // The database password of Jet 3 only guards the engine's opening; the pages are plain.
    void readsThePasswordProtectedFileAndItsPassword()
    {
        auto file = jet::openTableSource(data(QStringLiteral("legacy/data.mdb")));
        QVERIFY2(file.ok(), qPrintable(file.error()));
        QCOMPARE(jet::storedPassword(*file.value()), QStringLiteral("Rona5384"));
        auto norms = file.value()->read(QStringLiteral("RazhNorm"));
        QVERIFY(norms.ok());
        QCOMPARE(norms->rows.first().at(norms->column(QStringLiteral("M4"))).toDouble(), 0.68);
    }

    void refusesDamagedFiles_data()
    {
        QTest::addColumn<QByteArray>("content");
        QFile sample(data(QStringLiteral("zoks-sample.mdb")));
        QVERIFY(sample.open(QIODevice::ReadOnly));
        const QByteArray whole = sample.readAll();
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("text") << QByteArray("EGN;Names\n0747091619;Иван\n");
        QTest::newRow("cut mid-page") << whole.left(whole.size() / 2 + 100);
        QTest::newRow("cut at a page") << whole.left(4 * 2048);
        QTest::newRow("header zeroed") << QByteArray(64, '\0') + whole.mid(64);
        QByteArray scrambled = whole;
        for (int i = 2048; i < scrambled.size(); i += 7)
            scrambled[i] = char(0xA5);
        QTest::newRow("pages scrambled") << scrambled;
    }

    // A damaged file is a message naming it, never a crash, whichever table is asked for.
    void refusesDamagedFiles()
    {
        QFETCH(QByteArray, content);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("temp.mdb"));
        QFile out(path);
        QVERIFY(out.open(QIODevice::WriteOnly));
        out.write(content);
        out.close();
        auto file = jet::openTableSource(path);
        if (!file.ok()) {
            QVERIFY(file.error().contains(path));
            return;
        }
        bool allRead = true;
        for (const char *table : {"patients", "address", "eknm", "s_code", "st_code"}) {
            auto rows = file.value()->read(QString::fromLatin1(table));
            allRead = allRead && rows.ok() && !rows->rows.isEmpty();
        }
        QVERIFY2(!allRead, "a damaged file read as whole");
    }
};

QTEST_GUILESS_MAIN(JetFileTest)
#include "tst_JetFile.moc"
