#include "TestPractice.h"

#include "maintenance/JetReader.h"
#include "maintenance/JetSource.h"
#include "maintenance/ZoksImport.h"
#include "maintenance/ZoksRecord.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QProcess>
#include <QSqlQuery>
#include <QTest>

namespace {

QString data(const QString &name) { return qEnvironmentVariable("VELMORATA_TEST_DATA") + u'/' + name; }

// The sample's tables copied into an SQLite file, the other form a ZOKS source may take; with
// `copies` > 1 the patients and their addresses repeat under new numbers.
QString sqliteSource(const QString &folder, int copies = 1)
{
    const QString path = folder + QStringLiteral("/zoks.sqlite");
    auto jet = jet::openTableSource(data(QStringLiteral("zoks-sample.mdb")));
    Q_ASSERT(jet.ok());
    {
        QSqlDatabase db = store::addConnection(path, QStringLiteral("zoks-source"));
        db.open();
        store::Transaction write(db);
        for (const QString &name : jet.value()->tables()) {
            const jet::Table table = jet.value()->read(name).value();
            store::run(db, QStringLiteral("CREATE TABLE %1 (%2)").arg(name, table.columns.join(u',')));
            const int id = table.column(QStringLiteral("IDNUMBER"));
            const int times = id < 0 ? 1 : copies;
            QSqlQuery insert(db);
            insert.prepare(QStringLiteral("INSERT INTO %1 VALUES (%2)")
                               .arg(name, QStringList(table.columns.size(), QStringLiteral("?")).join(u',')));
            for (int copy = 0; copy < times; ++copy)
                for (QVariantList row : table.rows) {
                    if (copy > 0)
                        row[id] = QStringLiteral("%1").arg(copy, 5, 10, QChar(u'0')) + row[id].toString().mid(5);
                    for (int c = 0; c < row.size(); ++c)
                        insert.bindValue(c, row.at(c).typeId() == QMetaType::QDate
                                                ? QVariant(row.at(c).toDate().toString(Qt::ISODate))
                                                : row.at(c));
                    insert.exec();
                }
        }
        write.commit();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("zoks-source"));
    return path;
}

void changeSource(const QString &path, const QString &sql)
{
    {
        QSqlDatabase db = store::addConnection(path, QStringLiteral("zoks-change"));
        db.open();
        store::run(db, sql);
    }
    QSqlDatabase::removeDatabase(QStringLiteral("zoks-change"));
}

QString field(const QString &egn, const QString &name)
{
    return store::scalar(store::clinicDb(), QStringLiteral("SELECT %1 FROM Pacients WHERE EGN = ?").arg(name), {egn})
        .toString();
}

} // namespace

class ZoksImportTest final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { jet::setReaderProgram(qEnvironmentVariable("VELMORATA_BINARY")); }

    void namesSexAndAddress_data()
    {
        QTest::addColumn<QString>("built");
        QTest::addColumn<QString>("expected");
        QTest::newRow("three names") << zoks::joinedName(u"Иван"_qs, u" Петров "_qs, u"Иванов"_qs) << u"Иван Петров Иванов"_qs;
        QTest::newRow("NAME2 blank") << zoks::joinedName(u"Иван"_qs, u"  "_qs, u"Иванов"_qs) << u"Иван Иванов"_qs;
        QTest::newRow("NAME2 Null") << zoks::joinedName(u"Иван"_qs, QVariant(), u"Иванов"_qs) << u"Иван Иванов"_qs;
        QTest::newRow("POL 0") << zoks::sexOf(0) << u"М"_qs;
        QTest::newRow("POL 1") << zoks::sexOf(1) << u"Ж"_qs;
        QTest::newRow("POL 2") << zoks::sexOf(2) << u"Ж"_qs;
        QTest::newRow("POL Null") << zoks::sexOf(QVariant()) << u"Ж"_qs;
        QTest::newRow("all marks") << zoks::joinedAddress({u"Витоша"_qs, u"двор"_qs, u"5"_qs, u"12"_qs, u"А"_qs, u"3"_qs, u"9"_qs})
                                   << u"Витоша двор №5 бл.12, вх.А, ет.3 ,ап.9"_qs;
        QTest::newRow("blank parts left out") << zoks::joinedAddress({u"Шипка"_qs, u" "_qs, u"68"_qs, {}, {}, {}, u" "_qs})
                                              << u"Шипка №68"_qs;
        QTest::newRow("settlement") << zoks::settlementName(u"гр."_qs, u"София"_qs) << u"гр.София"_qs;
        QTest::newRow("settlement without kind") << zoks::settlementName(u" "_qs, u"Лозен"_qs) << u"Лозен"_qs;
    }
    void namesSexAndAddress()
    {
        QFETCH(QString, built);
        QFETCH(QString, expected);
        QCOMPARE(built, expected);
    }

    void importsTheSampleOnceAndOnlyOnce()
    {
        TestPractice practice;
        auto first = zoks::ImportFromZoks(store::clinicDb(), data(QStringLiteral("zoks-sample.mdb")), u"2200001234"_qs);
        QVERIFY2(first.ok(), qPrintable(first.error()));
        QCOMPARE(first->patients, 40);
        QCOMPARE(practice.dialogs().progressShown, 1);
        QCOMPARE(practice.count(u"SELECT COUNT(*) FROM Dental"_qs), 40);
        QCOMPARE(practice.count(u"SELECT COUNT(*) FROM Help WHERE KodHelp = '101' AND Help = 'Преглед' AND ZK = 1 "
                                "AND KodMedic = '2200001234'"_qs), 40);
        const QString egn = u"4305046363"_qs;
        // ZBook stays Null; IDName is the empty table's first card.
        QCOMPARE(practice.row(u"SELECT Names, Pol, DataB, DataR, Adres, Tawn, RZOK, ZR, STel, ZBook IS NULL, IDName, "
                              "LKod FROM Pacients WHERE EGN = ?"_qs, {egn}),
                 (QStringList{u"Тодор Христов Димитров"_qs, u"М"_qs, u"1943-05-04"_qs, u"1962-06-29"_qs,
                              u"Витоша вх. от двора №100 бл.222, вх.А, ет.12 ,ап.58"_qs, u"гр.София"_qs, u"22"_qs,
                              u"01"_qs, u"02/9811111"_qs, u"1"_qs, u"1"_qs, u"2200001234"_qs}));

        auto again = zoks::ImportFromZoks(store::clinicDb(), data(QStringLiteral("zoks-sample.mdb")), u"2200001234"_qs);
        QVERIFY(again.ok());
        QCOMPARE(again->patients + again->charts + again->examinations, 0);
        QCOMPARE(practice.count(u"SELECT COUNT(*) FROM Pacients"_qs), 40);
    }

    // The counter passes over the first card's number; a known patient gets only what he lacks.
    void counterAndIndependentAdds()
    {
        TestPractice practice;
        store::run(store::clinicDb(), u"INSERT INTO Pacients (EGN, IDName) VALUES ('1111111111', 500), "
                                      "('2222222222', 7), ('4305046363', 3)"_qs);
        auto imported = zoks::ImportFromZoks(store::clinicDb(), data(QStringLiteral("zoks-sample.mdb")), u"K"_qs);
        QVERIFY(imported.ok());
        QCOMPARE(imported->patients, 39);
        QCOMPARE(imported->charts, 40);
        QCOMPARE(imported->examinations, 40);
        QCOMPARE(field(u"4305046363"_qs, u"Names"_qs), QString()); // left as it was
        QCOMPARE(field(u"6410044001"_qs, u"IDName"_qs), u"8"_qs);
    }

    void leavesOutPatientsWithoutAddressAndNamesThem()
    {
        TestPractice practice;
        auto imported = zoks::ImportFromZoks(store::clinicDb(), data(QStringLiteral("zoks-gaps.mdb")), u"K"_qs);
        QVERIFY2(imported.ok(), qPrintable(imported.error()));
        QCOMPARE(imported->patients, 11);
        QCOMPARE(imported->skipped.size(), 1);
        QVERIFY(imported->skipped.first().contains(u"0945075128"_qs));
        QVERIFY(imported->skipped.first().contains(u"address"_qs));
    }

    // A district code without its row in st_code: the patient is left out rather than given
    // the district of the patient before.
    void leavesOutPatientsWhoseDistrictHasNoName()
    {
        TestPractice practice;
        const QString source = sqliteSource(practice.folder());
        changeSource(source, u"DELETE FROM st_code WHERE TYPE = '16'"_qs);
        auto imported = zoks::ImportFromZoks(store::clinicDb(), source, u"K"_qs);
        QVERIFY2(imported.ok(), qPrintable(imported.error()));
        QVERIFY(imported->patients > 0);
        QVERIFY(!imported->skipped.isEmpty());
        QVERIFY(imported->skipped.first().contains(u"st_code"_qs));
        QCOMPARE(practice.count(u"SELECT COUNT(*) FROM Pacients WHERE Tawn = 'гр.Пловдив'"_qs), 0);
    }

    void refusesBadSourcesAndChangesNothing_data()
    {
        QTest::addColumn<QString>("change");
        QTest::addColumn<QString>("named");
        QTest::newRow("no address table") << u"DROP TABLE address"_qs << u"address"_qs;
        QTest::newRow("no field") << u"ALTER TABLE eknm DROP COLUMN HRCODE"_qs << u"HRCODE"_qs;
        QTest::newRow("Null number") << u"UPDATE patients SET IDNUMBER = NULL WHERE rowid = 40"_qs << u"IDNUMBER"_qs;
        QTest::newRow("Null name") << u"UPDATE patients SET NAME1 = NULL WHERE rowid = 40"_qs << u"NAME1"_qs;
        QTest::newRow("Null birth") << u"UPDATE patients SET BIRTHDATE = NULL WHERE rowid = 40"_qs << u"BIRTHDATE"_qs;
        QTest::newRow("Null registration") << u"UPDATE patients SET DATEREG = NULL WHERE rowid = 40"_qs << u"DATEREG"_qs;
    }
    void refusesBadSourcesAndChangesNothing()
    {
        QFETCH(QString, change);
        QFETCH(QString, named);
        TestPractice practice;
        const QString source = sqliteSource(practice.folder());
        QVERIFY(zoks::ImportFromZoks(store::clinicDb(), source, u"K"_qs).ok()); // the whole file is good
        store::run(store::clinicDb(), u"DELETE FROM Pacients"_qs);
        store::run(store::clinicDb(), u"DELETE FROM Dental"_qs);
        store::run(store::clinicDb(), u"DELETE FROM Help"_qs);
        changeSource(source, change);
        auto imported = zoks::ImportFromZoks(store::clinicDb(), source, u"K"_qs);
        QVERIFY(!imported.ok());
        QVERIFY2(imported.error().contains(named), qPrintable(imported.error()));
        QCOMPARE(practice.count(u"SELECT (SELECT COUNT(*) FROM Pacients) + (SELECT COUNT(*) FROM Help)"_qs), 0);
    }

    // A run killed at any moment leaves the clinic file whole, with all of the import or none.
    void killedImportLeavesBeforeOrAfter()
    {
        const QString program = qEnvironmentVariable("VELMORATA_BINARY");
        QTemporaryDir dir;
        const QString folder = dir.filePath(u"practice"_qs);
        const QString source = sqliteSource(dir.path(), 500); // 20,000 patients
        QVERIFY(store::openStore(store::DataPaths::inFolder(folder)).ok());
        store::run(store::clinicDb(), u"INSERT INTO Medic (Names, KodMedic) VALUES ('Д-р Тест', '2200001234')"_qs);
        store::closeStore();
        for (int delay : {150, 400, 800}) {
            QProcess child;
            child.start(program, {u"import-zoks"_qs, u"--data-dir"_qs, folder, u"--doctor"_qs, u"2200001234"_qs, source});
            QVERIFY(child.waitForStarted());
            QTest::qWait(delay);
            child.kill();
            child.waitForFinished();
            QVERIFY(store::openStore(store::DataPaths::inFolder(folder)).ok());
            QCOMPARE(store::scalar(store::clinicDb(), u"PRAGMA integrity_check"_qs).toString(), u"ok"_qs);
            const int cards = store::scalar(store::clinicDb(), u"SELECT COUNT(*) FROM Pacients"_qs).toInt();
            const int lines = store::scalar(store::clinicDb(), u"SELECT COUNT(*) FROM Help"_qs).toInt();
            store::closeStore();
            QVERIFY2(cards == 0 || cards == 20000, qPrintable(QString::number(cards)));
            QCOMPARE(lines, cards);
        }
    }
};

QTEST_GUILESS_MAIN(ZoksImportTest)
#include "tst_ZoksImport.moc"
