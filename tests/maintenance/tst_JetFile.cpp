#include "maintenance/JetReader.h"
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
    void initTestCase() { jet::setReaderProgram(qEnvironmentVariable("VELMORATA_BINARY")); }

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
        QCOMPARE(file.value()->storedPassword(), QStringLiteral("Rona5384"));
        auto norms = file.value()->read(QStringLiteral("RazhNorm"));
        QVERIFY(norms.ok());
        QCOMPARE(norms->rows.first().at(norms->column(QStringLiteral("M4"))).toDouble(), 0.68);
    }

    void refusesDamagedFiles_data()
    {
        QTest::addColumn<QString>("fixture");
        QTest::addColumn<QByteArray>("content");
        const auto fixture = [](const QString &name) {
            QFile file(data(name));
            if (!file.open(QIODevice::ReadOnly))
                qFatal("cannot read %s", qPrintable(name));
            return file.readAll();
        };
        const auto pageZeroed = [](QByteArray whole, int page) {
            return whole.replace(page * 2048, 2048, QByteArray(2048, '\0'));
        };
        const QByteArray sample = fixture(QStringLiteral("zoks-sample.mdb"));
        const QByteArray gaps = fixture(QStringLiteral("zoks-gaps.mdb"));
        const QByteArray clinic = fixture(QStringLiteral("legacy/velmorata.mdb"));
        const QByteArray reference = fixture(QStringLiteral("legacy/data.mdb"));
        QTest::newRow("empty") << "zoks" << QByteArray();
        QTest::newRow("text") << "zoks" << QByteArray("EGN;Names\n0747091619;Иван\n");
        QTest::newRow("cut mid-page") << "zoks" << sample.left(sample.size() / 2 + 100);
        QTest::newRow("cut at a page") << "zoks" << sample.left(4 * 2048);
        QTest::newRow("header zeroed") << "zoks" << QByteArray(64, '\0') + sample.mid(64);
        QByteArray scrambled = sample;
        for (int i = 2048; i < scrambled.size(); i += 7)
            scrambled[i] = char(0xA5);
        QTest::newRow("pages scrambled") << "zoks" << scrambled;
        // Files on which libmdb itself dies: the reader's child dies, the program does not.
        for (int cut : {38912, 40960})
            QTest::addRow("zoks cut at %d", cut) << "zoks" << sample.left(cut);
        for (int cut : {34816, 36864})
            QTest::addRow("gaps cut at %d", cut) << "zoks" << gaps.left(cut);
        for (int page : {1, 19, 20})
            QTest::addRow("zoks page %d zeroed", page) << "zoks" << pageZeroed(sample, page);
        for (int cut : {96256, 98304})
            QTest::addRow("clinic cut at %d", cut) << "legacy" << clinic.left(cut);
        QTest::newRow("clinic page 47 zeroed") << "legacy" << pageZeroed(clinic, 47);
        QTest::newRow("reference cut at 26624") << "legacy" << reference.left(26624);
    }

    // A damaged file is a message naming it, never a crash, whichever table is asked for: every
    // table it names either reads whole or is refused with the file's name.
    void refusesDamagedFiles()
    {
        QFETCH(QString, fixture);
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
        const QStringList wanted = fixture == u"zoks"
            ? QStringList{"patients", "address", "eknm", "s_code", "st_code"}
            : file.value()->tables();
        bool allRead = true;
        for (const QString &table : wanted) {
            auto rows = file.value()->read(table);
            if (!rows.ok())
                QVERIFY2(rows.error().contains(path), qPrintable(rows.error()));
            allRead = allRead && rows.ok() && !rows->rows.isEmpty();
        }
        QVERIFY2(!allRead || fixture == u"legacy", "a damaged file read as whole");
    }

    // The reader is a program of its own: one that is not there is a message, not a hang.
    void aMissingReaderIsAMessage()
    {
        jet::setReaderProgram(QStringLiteral("/nonexistent/velmorata"));
        auto file = jet::openTableSource(data(QStringLiteral("zoks-sample.mdb")));
        jet::setReaderProgram(qEnvironmentVariable("VELMORATA_BINARY"));
        QVERIFY(!file.ok());
        QVERIFY(file.error().contains(QStringLiteral("zoks-sample.mdb")));
    }
};

QTEST_GUILESS_MAIN(JetFileTest)
#include "tst_JetFile.moc"
