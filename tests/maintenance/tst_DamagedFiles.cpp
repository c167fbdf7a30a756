#include "TestPractice.h"

#include "maintenance/Backup.h"
#include "maintenance/JetReader.h"
#include "maintenance/JetSource.h"
#include "maintenance/LegacyTakeover.h"
#include "maintenance/Restore.h"
#include "store/ReferenceData.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

// Files that come from outside, damaged at random with a fixed seed: cut, bytes changed, pages
// zeroed or repeated. Whatever the damage, the program goes on: each file either reads or is a
// message naming it, and a take-over either takes the practice whole or writes nothing.
// VELMORATA_FUZZ_ROUNDS runs more rounds than CI's (tools/fuzz.sh uses it before a release).
namespace {

constexpr int JetPage = 2048;
constexpr int SqlitePage = 4096;

QByteArray fixture(const QString &name)
{
    QFile file(qEnvironmentVariable("VELMORATA_TEST_DATA") + u'/' + name);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(name));
    return file.readAll();
}

void writeFile(const QString &path, const QByteArray &content)
{
    QFile out(path);
    if (!out.open(QIODevice::WriteOnly) || out.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path));
}

// One of the kinds of damage a copy meets: a cut (at a page or anywhere), bytes changed, a
// page zeroed, a page written over another.
QByteArray damaged(QByteArray file, QRandomGenerator &random, int pageSize = JetPage)
{
    const int pages = int(file.size() / pageSize);
    switch (random.bounded(5)) {
    case 0:
        return file.left(random.bounded(1, pages) * pageSize);
    case 1:
        return file.left(random.bounded(qsizetype(1), file.size()));
    case 2:
        for (int n = random.bounded(1, 17); n > 0; --n)
            file[random.bounded(qsizetype(0), file.size())] = char(random.bounded(256));
        return file;
    case 3:
        return file.replace(random.bounded(pages) * pageSize, pageSize, QByteArray(pageSize, '\0'));
    default:
        return file.replace(random.bounded(pages) * pageSize, pageSize,
                            file.mid(random.bounded(pages) * pageSize, pageSize));
    }
}

int rounds(int inCi)
{
    const int asked = qEnvironmentVariableIntValue("VELMORATA_FUZZ_ROUNDS");
    return asked > 0 ? asked : inCi;
}

} // namespace

class DamagedFilesTest final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { jet::setReaderProgram(qEnvironmentVariable("VELMORATA_BINARY")); }

    void everyDamagedJetFileReadsOrIsRefused_data()
    {
        QTest::addColumn<QString>("name");
        for (const QString name : {"zoks-sample.mdb", "zoks-gaps.mdb", "legacy/velmorata.mdb", "legacy/data.mdb"})
            QTest::newRow(qPrintable(name)) << name;
    }
    void everyDamagedJetFileReadsOrIsRefused()
    {
        QFETCH(QString, name);
        const QByteArray whole = fixture(name);
        QRandomGenerator random(20261124);
        QTemporaryDir dir;
        const QString path = dir.filePath(u"damaged.mdb"_qs);
        for (int round = 0; round < rounds(60); ++round) {
            writeFile(path, damaged(whole, random));
            auto file = jet::openTableSource(path);
            if (!file.ok()) {
                QVERIFY2(file.error().contains(path), qPrintable(file.error()));
                continue;
            }
            for (const QString &table : file.value()->tables())
                if (auto rows = file.value()->read(table); !rows.ok())
                    QVERIFY2(rows.error().contains(path), qPrintable(u"round %1: "_qs.arg(round) + rows.error()));
        }
    }

    // A post-code list damaged anywhere is taken whole or refused naming its file and line, the
    // list before it left exactly as it was.
    void aDamagedPostCodeListIsTakenWholeOrRefused()
    {
        QByteArray good("PKod;Tawn;Obsh;Obl;ZK;ZdRn\r\n");
        for (int code = 1000; code < 1300; ++code)
            good += QByteArray::number(code) + ";гр. Примерно;Община;Област;03;06\r\n";
        TestPractice practice;
        const QString path = practice.folder() + u"/codes.csv"_qs;
        const auto list = [] {
            return store::scalar(store::dataDb(), u"SELECT group_concat(PKod || '|' || Tawn, ';') FROM PostCode"_qs)
                .toString();
        };
        QRandomGenerator random(20261126);
        for (int round = 0; round < rounds(60); ++round) {
            const QString before = list();
            QByteArray content = good;
            for (int n = random.bounded(1, 6); n > 0; --n)
                content[random.bounded(qsizetype(0), content.size())] = char(random.bounded(256));
            writeFile(path, random.bounded(4) == 0 ? content.left(random.bounded(content.size())) : content);
            const auto imported = store::importPostCodes(store::dataDb(), path);
            if (!imported.ok()) {
                QVERIFY2(imported.error().contains(path), qPrintable(imported.error()));
                QCOMPARE(list(), before);
            }
        }
    }

    // A restore of a damaged archive either puts a whole database in place and says so, or says
    // it did not and leaves the practice exactly as it was: never "failed" after a swap.
    void aDamagedArchiveIsRestoredWholeOrNotAtAll()
    {
        TestPractice practice;
        practice.addDoctor(u"Д-р Тест"_qs, u"2200001234"_qs);
        for (int n = 0; n < 40; ++n) {
            const QString egn = u"85010%1"_qs.arg(10000 + n);
            practice.addPatient(egn, u"Иван Петров Иванов"_qs, u"2200001234"_qs);
            practice.addServices(3, egn, QDate(2026, 3, 2), u"101"_qs, u"2200001234"_qs);
        }
        const QString archive = practice.folder() + u"/good.arh"_qs;
        QVERIFY(backup::BackupDatabase(store::paths().clinicDb, archive));
        QFile good(archive);
        QVERIFY(good.open(QIODevice::ReadOnly));
        const QByteArray whole = good.readAll();
        const QString damagedArchive = practice.folder() + u"/damaged.arh"_qs;
        const auto contents = [] {
            return store::scalar(store::clinicDb(), u"SELECT COUNT(*) || '/' || group_concat(EGN) FROM Pacients"_qs)
                .toString();
        };
        QRandomGenerator random(20261127);
        for (int round = 0; round < rounds(40); ++round) {
            writeFile(damagedArchive, damaged(whole, random, SqlitePage));
            const QString before = contents();
            const auto restored = restore::RestoreDatabase(damagedArchive, [](const QString &) { return true; },
                                                           QDateTime(QDate(2026, 3, 15), QTime(9, 0)).addSecs(round));
            QVERIFY2(store::clinicDb().isOpen(), qPrintable(u"round %1"_qs.arg(round)));
            QCOMPARE(store::scalar(store::clinicDb(), u"PRAGMA quick_check"_qs).toString(), u"ok"_qs);
            if (!restored.ok())
                QCOMPARE(contents(), before);
        }
    }

    // All or nothing: a take-over from damaged old files either brings the practice whole, as
    // the good files give it, or leaves the new folder without a practice.
    void aDamagedOldPracticeIsTakenWholeOrNotAtAll()
    {
        const QByteArray clinic = fixture(u"legacy/velmorata.mdb"_qs);
        const QByteArray reference = fixture(u"legacy/data.mdb"_qs);
        QRandomGenerator random(20261125);
        QTemporaryDir dir;
        const QString old = dir.filePath(u"old"_qs);
        QDir().mkpath(old);
        for (int round = 0; round < rounds(25); ++round) {
            const bool clinicDamaged = random.bounded(2) == 0;
            writeFile(old + u"/velmorata.mdb"_qs, clinicDamaged ? damaged(clinic, random) : clinic);
            writeFile(old + u"/data.mdb"_qs, clinicDamaged ? reference : damaged(reference, random));
            const QString folder = dir.filePath(u"new%1"_qs.arg(round));
            auto taken = legacy::takeOverOldPractice(old, folder);
            if (!taken.ok()) {
                QVERIFY2(taken.error().contains(u".mdb"_qs), qPrintable(taken.error()));
                QVERIFY(!QFileInfo::exists(folder + u"/velmorata.db"_qs));
            }
        }
    }
};

QTEST_GUILESS_MAIN(DamagedFilesTest)
#include "tst_DamagedFiles.moc"
