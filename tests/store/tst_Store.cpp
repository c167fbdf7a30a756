#include "Rows.h"
#include "TestPractice.h"

#include "maintenance/BackupFiles.h"
#include "maintenance/Restore.h"
#include "store/InstanceLock.h"
#include "store/Log.h"
#include "store/NewDatabaseFile.h"
#include "store/PrivateFolder.h"
#include "store/Schema.h"
#include "store/Scratch.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

namespace {

int modeOf(const QString &path)
{
    struct stat info {};
    return ::stat(QFile::encodeName(path).constData(), &info) == 0 ? int(info.st_mode & 0777) : -1;
}

void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path));
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The clinic file of a practice of some thousand patients with one page near its end
// overwritten: a copy or a disk gone wrong, found only by the integrity check.
QByteArray practiceWithAJunkPage()
{
    QTemporaryDir dir;
    const auto paths = store::DataPaths::inFolder(dir.path());
    if (!store::openStore(paths))
        qFatal("cannot make a practice");
    {
        store::Transaction transaction(store::clinicDb());
        for (int i = 0; i < 3000; ++i)
            store::run(store::clinicDb(), QStringLiteral("INSERT INTO Pacients (EGN, Names) VALUES (?, ?)"),
                       {QString::number(7500000000LL + i), QStringLiteral("Пациент %1").arg(i)});
        transaction.commit();
    }
    const int pageSize = store::scalar(store::clinicDb(), QStringLiteral("PRAGMA page_size")).toInt();
    const int pages = store::scalar(store::clinicDb(), QStringLiteral("PRAGMA page_count")).toInt();
    store::closeStore();
    QByteArray content = readFile(paths.clinicDb);
    content.replace(qsizetype(pageSize) * (pages - 2), pageSize, QByteArray(pageSize, '\x5a'));
    return content;
}

// The process of a program that has ended: its pid names no live process.
qint64 pidOfAnEndedProcess()
{
    QProcess ended;
    ended.start(QStringLiteral("true"));
    ended.waitForFinished();
    return ended.processId() ? ended.processId() : 999999;
}

// Write access taken away for the life of the object: by the folder's mode, or, for root, who
// writes everywhere, by acting as the unprivileged user "nobody".
class WithoutWriteAccess final
{
public:
    explicit WithoutWriteAccess(const QString &folder)
        : m_folder(folder)
    {
        if (::geteuid() != 0) {
            ::chmod(QFile::encodeName(folder).constData(), 0500);
            return;
        }
        // "nobody" may pass through the test's own folder into this one, but not write there.
        ::chmod(QFile::encodeName(QFileInfo(folder).absolutePath()).constData(), 0755);
        ::chmod(QFile::encodeName(folder).constData(), 0755);
        m_wasRoot = ::seteuid(65534) == 0;
    }
    ~WithoutWriteAccess()
    {
        if (m_wasRoot && ::seteuid(0) != 0)
            qFatal("cannot become root again");
        ::chmod(QFile::encodeName(m_folder).constData(), 0700);
    }

private:
    QString m_folder;
    bool m_wasRoot = false;
};

int number(const QSqlDatabase &db, const QString &sql, std::initializer_list<QVariant> values = {})
{
    return store::scalar(db, sql, values).toInt();
}

QStringList columnsOf(const QSqlDatabase &db, const QString &table)
{
    QSqlQuery columns = store::run(db, QStringLiteral("PRAGMA table_info(%1)").arg(table));
    QStringList names;
    while (columns.next())
        names << columns.value(1).toString();
    return names;
}

// A clinic file that holds only some of the tables, as a file of another program might.
QByteArray fileWithTablesMissing()
{
    QTemporaryDir dir;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("other"));
        db.setDatabaseName(dir.filePath(QStringLiteral("other.db")));
        if (!db.open())
            qFatal("cannot make a file");
        store::run(db, QStringLiteral("CREATE TABLE Pacients (EGN TEXT)"));
        store::run(db, QStringLiteral("CREATE TABLE Help (EGN TEXT)"));
        db.close();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("other"));
    return readFile(dir.filePath(QStringLiteral("other.db")));
}

// A second connection to a file of the store, removed again when it goes out of scope.
struct SecondConnection final
{
    SecondConnection(const QString &file, const QString &options)
        : db(store::addConnection(file, QStringLiteral("second")))
    {
        db.setConnectOptions(options);
        if (!db.open())
            qFatal("cannot open %s", qPrintable(file));
    }
    ~SecondConnection()
    {
        db.close();
        db = QSqlDatabase();
        QSqlDatabase::removeDatabase(QStringLiteral("second"));
    }
    QSqlDatabase db;
};

} // namespace

class TestStore final : public QObject
{
    Q_OBJECT
private slots:
    void cleanup() { store::closeStore(); }

    // A missing folder and files are made with every table and the reference rows, and what is
    // stored is there when the folder is opened again.
    void newFolderIsMadeWholeAndKeepsItsData()
    {
        QTemporaryDir dir;
        const auto paths = store::DataPaths::inFolder(dir.path() + QStringLiteral("/new/folder"));
        QVERIFY(store::openStore(paths).ok());
        for (const store::TableDef &table : store::clinicTables())
            QCOMPARE(columnsOf(store::clinicDb(), table.name), QStringList{QStringLiteral("ID")} + table.columnNames());
        QCOMPARE(number(store::clinicDb(), QStringLiteral("PRAGMA user_version")), store::SchemaVersion);
        // The fund's minutes and prices over and up to 18, as the contract gives them.
        const QStringList fund{"101|15|6.44|6.44",    "103|0|6.44|6.44",     "301|26|21.13|25.13",
                               "301А|26|21.13|25.13", "301Б|26|21.13|25.13", "332|39|0|21.92",
                               "333|141|0|68.93",     "508|17|0|11.98",      "509|22|21.13|25.13"};
        const QString fundSql = QStringLiteral("SELECT Kod, Times, CenaNad, CenaDo FROM CenyZK ORDER BY Kod");
        QCOMPARE(rowsOf(store::clinicDb(), fundSql), fund);
        QVERIFY(number(store::clinicDb(), QStringLiteral("SELECT COUNT(*) FROM Ceny")) > 9);
        QVERIFY(number(store::dataDb(), QStringLiteral("SELECT COUNT(*) FROM PostCode")) >= 28);
        QCOMPARE(number(store::clinicDb(), QStringLiteral("SELECT COUNT(*) FROM Medic")), 0);
        // One norm column per material, the last one M<materials>, and a norm row for every storable code.
        const int materials = number(store::dataDb(), QStringLiteral("SELECT COUNT(*) FROM Mater"));
        QVERIFY(materials > 0);
        QVERIFY(store::run(store::dataDb(), QStringLiteral("SELECT M%1 FROM RazhNorm").arg(materials)).isActive());
        for (const QString code : {"101", "103", "301", "301А", "301Б", "332", "333", "508", "509"})
            QVERIFY2(number(store::dataDb(), QStringLiteral("SELECT COUNT(*) FROM RazhNorm WHERE KodHelp = ?"), {code}) == 1,
                     qPrintable(code));

        store::run(store::clinicDb(), QStringLiteral("INSERT INTO Medic (Names) VALUES (?)"), {u"д-р О'Нийл"_qs});
        store::closeStore();
        QVERIFY(store::openStore(paths).ok());
        QCOMPARE(store::scalar(store::clinicDb(), QStringLiteral("SELECT Names FROM medic")).toString(), u"д-р О'Нийл"_qs);
        QCOMPARE(rowsOf(store::clinicDb(), fundSql), fund); // the reference rows are not made twice
    }

    // A damaged or foreign clinic file is refused, named, and left as it was.
    // A practice of the first version gets the practice's settings when it is opened, and
    // keeps what it had; a file newer than the program is refused before anything is written.
    void anEarlierVersionIsBroughtUpToDate()
    {
        QTemporaryDir dir;
        const auto paths = store::DataPaths::inFolder(dir.path());
        QVERIFY(store::openStore(paths).ok());
        store::run(store::clinicDb(), QStringLiteral("INSERT INTO Medic (Names) VALUES ('д-р Първи')"));
        store::run(store::clinicDb(), QStringLiteral("DROP TABLE PracticeSettings"));
        store::run(store::clinicDb(), QStringLiteral("PRAGMA user_version = 1"));
        store::run(store::dataDb(), QStringLiteral("PRAGMA user_version = 1"));
        store::closeStore();

        QVERIFY(store::openStore(paths).ok());
        for (const QSqlDatabase &db : {store::clinicDb(), store::dataDb()})
            QCOMPARE(number(db, QStringLiteral("PRAGMA user_version")), store::SchemaVersion);
        QCOMPARE(columnsOf(store::clinicDb(), QStringLiteral("PracticeSettings")),
                 QStringList{QStringLiteral("ID")} + store::practiceTables().first().columnNames());
        QCOMPARE(number(store::clinicDb(), QStringLiteral("SELECT COUNT(*) FROM Medic")), 1);

        store::run(store::clinicDb(), QStringLiteral("PRAGMA user_version = %1").arg(store::SchemaVersion + 1));
        store::closeStore();
        const auto newer = store::openStore(paths);
        QVERIFY(!newer.ok());
        QVERIFY2(newer.error().contains(QStringLiteral("по-нова версия")), qPrintable(newer.error()));
    }

    void refusesDamagedFiles_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("expected");
        QTest::newRow("not a database") << QByteArray("this is a letter, not a database\n").repeated(200)
                                        << QStringLiteral("не е база данни");
        QTest::newRow("a page of junk") << practiceWithAJunkPage() << QStringLiteral("възстановете последния архив");
        QTest::newRow("tables missing, the missing named") << fileWithTablesMissing() << QStringLiteral("Medic");
    }
    void refusesDamagedFiles()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, expected);
        QTemporaryDir dir;
        const auto paths = store::DataPaths::inFolder(dir.path());
        writeFile(paths.clinicDb, content);
        const auto opened = store::openStore(paths);
        QVERIFY(!opened.ok());
        QVERIFY2(opened.error().contains(expected) && opened.error().contains(paths.clinicDb), qPrintable(opened.error()));
        QVERIFY(!opened.error().contains(QStringLiteral("Pacients")));
        QCOMPARE(readFile(paths.clinicDb), content);
    }

    // A folder under a plain file cannot be made; a clinic file that is a folder cannot be opened.
    void refusesWhatIsNoFolderOrNoFile()
    {
        QTemporaryDir dir;
        writeFile(dir.filePath(QStringLiteral("plain-file")), {});
        const QString folder = dir.filePath(QStringLiteral("plain-file/practice"));
        const auto underFile = store::openStore(store::DataPaths::inFolder(folder));
        QVERIFY2(!underFile.ok() && underFile.error().contains(folder), qPrintable(underFile.error()));
        const auto paths = store::DataPaths::inFolder(dir.path());
        QVERIFY(QDir().mkpath(paths.clinicDb));
        const auto folderAsFile = store::openStore(paths);
        QVERIFY2(!folderAsFile.ok() && folderAsFile.error().contains(paths.clinicDb), qPrintable(folderAsFile.error()));
    }

    void lockLeftBehindIsTakenOver_data()
    {
        QTest::addColumn<QByteArray>("left");
        QTest::newRow("empty, as after a power cut") << QByteArray();
        QTest::newRow("another computer") << QByteArray("4242\nanother-computer\n");
        QTest::newRow("a program that died") << QByteArray::number(pidOfAnEndedProcess()) + "\n"
                + QSysInfo::machineHostName().toUtf8() + "\n";
    }
    void lockLeftBehindIsTakenOver()
    {
        QFETCH(QByteArray, left);
        QTemporaryDir dir;
        const auto paths = store::DataPaths::inFolder(dir.path());
        writeFile(dir.filePath(QStringLiteral("velmorata.lock")), left);
        const auto opened = store::openStore(paths);
        QVERIFY2(opened.ok(), qPrintable(opened.error()));
        QVERIFY(readFile(dir.filePath(QStringLiteral("velmorata.lock"))).startsWith(QByteArray::number(QCoreApplication::applicationPid()) + '\n'));
    }

    void theFolderIsRefusedToASecondTakerAndNamed()
    {
        QTemporaryDir dir;
        const auto paths = store::DataPaths::inFolder(dir.path());
        store::InstanceLock holder(paths.folder);
        QVERIFY(holder.acquire());
        const auto refused = store::openStore(paths);
        QCOMPARE(refused.error(), QStringLiteral("Програмата вече работи с папката с данни %1.").arg(paths.folder));
        QVERIFY2(!QFile::exists(paths.clinicDb), "nothing is touched before the lock is held");
        holder.release();
        QVERIFY(store::openStore(paths).ok());
    }

    void aFolderThatCannotBeWrittenIsSaidSo()
    {
        QTemporaryDir dir;
        const QString folder = dir.filePath(QStringLiteral("practice"));
        QVERIFY(QDir().mkpath(folder));
        store::StoreOpening opened = store::StoreOpening::success();
        {
            WithoutWriteAccess readOnly(folder);
            opened = store::openStore(store::DataPaths::inFolder(folder));
        }
        QVERIFY(!opened.ok());
        QVERIFY2(opened.error().contains(folder) && opened.error().contains(QStringLiteral("не може да се записва")),
                 qPrintable(opened.error()));
        QVERIFY(!opened.error().contains(QStringLiteral("вече работи")));
    }

    // The folder is 0700 and every file in it 0600, the log included; a wider folder is tightened
    // with one notice, logged, and a private one opens without a word.
    void filesOfTheFolderArePrivate()
    {
        QTemporaryDir dir;
        const auto paths = store::DataPaths::inFolder(dir.filePath(QStringLiteral("new")));
        ::umask(022); // as a desktop session leaves it
        QVERIFY(store::openStore(paths).ok());
        QVERIFY_THROWS_EXCEPTION(store::SqlError, store::run(store::clinicDb(), QStringLiteral("SELECT * FROM NoSuchTable")));
        QCOMPARE(modeOf(paths.folder), 0700);
        const QStringList files = QDir(paths.folder).entryList(QDir::Files);
        for (const char *name : {"velmorata.db", "velmorata.db-wal", "velmorata.db-shm", "data.db", "velmorata.lock", "velmorata.log"})
            QVERIFY2(files.contains(QLatin1String(name)), name);
        for (const QString &name : files)
            QVERIFY2(modeOf(QDir(paths.folder).filePath(name)) == 0600, qPrintable(name));

        store::closeStore();
        ::chmod(QFile::encodeName(paths.folder).constData(), 0755);
        ::chmod(QFile::encodeName(paths.clinicDb).constData(), 0644);
        const QString notes = QDir(paths.folder).filePath(QStringLiteral("notes.txt")); // the user's own
        writeFile(notes, "not ours");
        ::chmod(QFile::encodeName(notes).constData(), 0644);
        QStringList notices;
        store::setNoticeSink([&notices](const QString &text) { notices << text; });
        QVERIFY(store::openStore(paths).ok());
        store::closeStore();
        QVERIFY(store::openStore(paths).ok());
        store::setNoticeSink({});
        QCOMPARE(notices.size(), 1);
        QVERIFY(notices.first().contains(paths.folder));
        QCOMPARE(modeOf(paths.folder), 0700);
        QCOMPARE(modeOf(paths.clinicDb), 0600);
        QCOMPARE(modeOf(notes), 0644);
        QVERIFY(readFile(store::logFilePath(paths.folder)).contains(notices.first().toUtf8()));
    }

    // Only the program's own files are made private: the names it makes, and none of a user's.
    void ownFilesAreKnownByName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("own");
        for (const char *name : {"velmorata.db", "data.db-wal", "temp.db-shm", "velmorata.db-journal", "velmorata.lock",
                                 "velmorata.log", "velmorata.db.part-a1B2c3", "data.db.building-Zz9Yy8-journal",
                                 "velmorata-before-restore-20260315-101500.db",
                                 "velmorata-before-restore-20260315-101500-2.db-wal"})
            QTest::newRow(name) << QString::fromLatin1(name) << true;
        for (const char *name : {"notes.txt", "AnnualPackage.csv", "velmorata.db.bak", "old-velmorata.db", "data.db-wal2",
                                 "velmorata.db.part-toolong1", "velmorata-before-restore-yesterday.db", "Velmorata.db"})
            QTest::newRow(name) << QString::fromLatin1(name) << false;
    }
    void ownFilesAreKnownByName()
    {
        QFETCH(QString, name);
        QFETCH(bool, own);
        QCOMPARE(store::isOwnFileName(name), own);
    }

    // The names as the program's own makers make them, so that a new maker is not left out.
    void theMakersNamesAreOwn()
    {
        QTemporaryDir dir;
        const auto paths = store::DataPaths::inFolder(dir.path());
        QStringList made{QFileInfo(restore::safetyCopyName(dir.path(), QDateTime(QDate(2026, 3, 15), QTime(10, 15)))).fileName()};
        writeFile(dir.filePath(made.first()), {});
        made << QFileInfo(restore::safetyCopyName(dir.path(), QDateTime(QDate(2026, 3, 15), QTime(10, 15)))).fileName();
        {
            const backupfiles::PartFile part(paths.clinicDb);
            made << QFileInfo(part.path()).fileName();
        }
        QVERIFY(store::createDatabaseFile(paths.scratchDb, [&](const QSqlDatabase &db) {
                    store::run(db, QStringLiteral("CREATE TABLE Mine (A TEXT)"));
                    made << QDir(dir.path()).entryList({QStringLiteral("temp.db.*")}, QDir::Files);
                }).ok());
        QVERIFY(store::openStore(paths).ok());
        made << QDir(dir.path()).entryList(QDir::Files);
        QVERIFY(made.size() > 8);
        for (const QString &name : made)
            QVERIFY2(store::isOwnFileName(name), qPrintable(name));
    }

    // A folder named with nothing, or one that holds no practice where one must be, is refused
    // and nothing is made: not the folder, not a file, not the lock.
    void noFolderAndNoPracticeAreRefused()
    {
        QCOMPARE(store::DataPaths::inFolder(QStringLiteral(" ")).folder, QString());
        QVERIFY(!store::openStore(store::DataPaths::inFolder(QString())).ok());
        QVERIFY(!store::lockFolder(store::DataPaths::inFolder(QString())).ok());
        QVERIFY(!store::holdsFolder());

        QTemporaryDir dir;
        const QString missing = dir.filePath(QStringLiteral("mistyped"));
        for (const QString &folder : {missing, dir.path()}) {
            const auto refused = store::openStore(store::DataPaths::inFolder(folder), {.practiceMustExist = true});
            QVERIFY2(!refused.ok() && refused.error().contains(folder), qPrintable(refused.error()));
        }
        QVERIFY(!QFileInfo::exists(missing));
        QCOMPARE(QDir(dir.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
        QVERIFY(store::openStore(store::DataPaths::inFolder(dir.path())).ok());
        store::closeStore();
        QVERIFY(store::openStore(store::DataPaths::inFolder(dir.path()), {.practiceMustExist = true}).ok());
    }

    void engineErrorsAreToldInBulgarianAndLogged()
    {
        QTemporaryDir dir;
        const auto paths = store::DataPaths::inFolder(dir.path());
        QVERIFY(store::openStore(paths).ok());
        store::closeStore();
        SecondConnection readOnly(paths.dataDb, QStringLiteral("QSQLITE_OPEN_READONLY"));
        try {
            store::run(readOnly.db, QStringLiteral("DELETE FROM PostCode"));
            QFAIL("a read-only file takes no delete");
        } catch (const store::SqlError &error) {
            QCOMPARE(error.code(), 8);
            QVERIFY2(error.message().contains(paths.dataDb) && error.message().contains(QStringLiteral("само за четене")),
                     qPrintable(error.message()));
            QVERIFY(!error.message().contains(QStringLiteral("readonly")) && !error.message().contains(QStringLiteral("DELETE")));
            QVERIFY(error.engineText().contains(QStringLiteral("readonly")) && error.engineText().contains(QStringLiteral("DELETE FROM PostCode")));
            QVERIFY(readFile(store::logFilePath(paths.folder)).contains(error.engineText().toUtf8()));
        }
    }

    // A transaction rolls back unless committed. It holds the write lock from its start: a check
    // it makes before writing cannot be overtaken by a second writer, who waits and, past the
    // wait, is told the file is busy.
    void aTransactionKeepsOtherWritersOutFromItsStart()
    {
        QTemporaryDir dir;
        const auto paths = store::DataPaths::inFolder(dir.path());
        QVERIFY(store::openStore(paths).ok());
        try {
            store::Transaction transaction(store::clinicDb());
            store::run(store::clinicDb(), QStringLiteral("INSERT INTO Medic (Names) VALUES ('A')"));
            store::run(store::clinicDb(), QStringLiteral("INSERT INTO NoSuchTable VALUES (1)"));
            transaction.commit();
            QFAIL("the broken statement must throw");
        } catch (const store::SqlError &) {
        }
        SecondConnection second(paths.clinicDb, QStringLiteral("QSQLITE_BUSY_TIMEOUT=50"));
        {
            store::Transaction first(store::clinicDb());
            QCOMPARE(number(store::clinicDb(), QStringLiteral("SELECT COUNT(*) FROM Medic")), 0);
            try {
                store::run(second.db, QStringLiteral("INSERT INTO Medic (Names) VALUES ('B')"));
                QFAIL("the second writer got in while the first was deciding");
            } catch (const store::SqlError &error) {
                QVERIFY2(error.message().contains(QStringLiteral("зает")) && error.message().contains(paths.clinicDb),
                         qPrintable(error.message()));
            }
            store::run(store::clinicDb(), QStringLiteral("INSERT INTO Medic (Names) VALUES ('A')"));
            first.commit();
        }
        store::run(second.db, QStringLiteral("INSERT INTO Medic (Names) VALUES ('B')"));
        QCOMPARE(number(store::clinicDb(), QStringLiteral("SELECT COUNT(*) FROM Medic")), 2);
    }

    void aNewFileIsMadeWholeAndOnlyItsOwnIsDeleted_data()
    {
        QTest::addColumn<bool>("otherRunNamesItFirst");
        QTest::addColumn<bool>("fillFails");
        QTest::newRow("made") << false << false;
        QTest::newRow("another run's file kept") << true << false;
        QTest::newRow("a failed fill leaves nothing") << false << true;
        QTest::newRow("a failed fill keeps another run's file") << true << true;
    }
    void aNewFileIsMadeWholeAndOnlyItsOwnIsDeleted()
    {
        QFETCH(bool, otherRunNamesItFirst);
        QFETCH(bool, fillFails);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("velmorata.db"));
        const auto made = store::createDatabaseFile(path, [&](const QSqlDatabase &db) {
            store::run(db, QStringLiteral("CREATE TABLE Mine (A TEXT)"));
            if (otherRunNamesItFirst)
                writeFile(path, "another run's practice");
            if (fillFails)
                store::run(db, QStringLiteral("INSERT INTO Missing VALUES (1)"));
        });
        QCOMPARE(made.ok(), !fillFails);
        QStringList expected;
        if (otherRunNamesItFirst || !fillFails)
            expected << QStringLiteral("velmorata.db");
        if (fillFails) // the failure is logged beside the file
            expected << QStringLiteral("velmorata.log");
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files), expected);
        if (otherRunNamesItFirst)
            QCOMPARE(readFile(path), QByteArray("another run's practice"));
    }

    // The scratch file holds the table of one report: a second replaces the first, emptying
    // leaves the table, an unknown layout makes no file, and deleting is quiet when none is there.
    void scratchTableOfOneReport()
    {
        TestPractice practice;
        QVERIFY(!store::CreateScratchTable(QStringLiteral("TempNothing")).ok());
        QVERIFY(!QFile::exists(store::paths().scratchDb));
        store::DeleteScratchFile();
        QVERIFY(store::CreateScratchTable(QStringLiteral("TempWork")).ok());
        store::run(store::scratchDb(), QStringLiteral("INSERT INTO TempWork (EGN) VALUES ('1')"));
        QVERIFY(store::CreateScratchTable(QStringLiteral("TempMater")).ok());
        QCOMPARE(store::scalar(store::scratchDb(), u"SELECT group_concat(name) FROM sqlite_master WHERE type = 'table'"_qs)
                     .toString(),
                 u"TempMater"_qs);
        store::run(store::scratchDb(), QStringLiteral("INSERT INTO TempMater (Kod, Kol) VALUES ('001', 1.5)"));
        QVERIFY(store::EmptyScratchTable(QStringLiteral("TempMater")).ok());
        QCOMPARE(number(store::scratchDb(), QStringLiteral("SELECT COUNT(*) FROM TempMater")), 0);
        QVERIFY(QFile::exists(store::paths().scratchDb));
        store::DeleteScratchFile();
        QVERIFY(!QFile::exists(store::paths().scratchDb));
    }

    // However the program ends, its closing of the store takes the scratch file it made with it;
    // a temp.db it found there (a run that was killed) it leaves to the next report to replace.
    void theStoresClosingDeletesItsScratchFile_data()
    {
        QTest::addColumn<bool>("madeByThisRun");
        QTest::newRow("made by this run") << true;
        QTest::newRow("found there") << false;
    }
    void theStoresClosingDeletesItsScratchFile()
    {
        QFETCH(bool, madeByThisRun);
        QTemporaryDir dir;
        const auto paths = store::DataPaths::inFolder(dir.path());
        writeFile(paths.scratchDb, "left by a killed run");
        QVERIFY(store::openStore(paths).ok());
        if (madeByThisRun)
            QVERIFY(store::CreateScratchTable(QStringLiteral("TempWork")).ok());
        store::closeStore();
        QCOMPARE(QFile::exists(paths.scratchDb), !madeByThisRun);
    }
};

QTEST_GUILESS_MAIN(TestStore)
#include "tst_Store.moc"
