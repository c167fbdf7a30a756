#include "maintenance/Backup.h"

#include "maintenance/BackupFiles.h"
#include "store/Log.h"

#include <QFile>
#include <QFileInfo>

#include <sqlite3.h>

#include <cerrno>

namespace backup {
namespace {

using backupfiles::EngineFile;

Outcome cannotWrite(const QString &target)
{
    return Outcome::failure(QStringLiteral("Архивът %1 не може да се запише. Проверете правата за запис "
                                           "на папката и свободното място и опитайте отново.")
                                .arg(target));
}

QString folderOf(const QString &path)
{
    return QFileInfo(path).absolutePath();
}

// The log cannot take the engine's words when the disk is full: the message then says so
// itself instead of sending the reader to an empty log.
QString cannotRead(const EngineFile &source, const QString &engineText)
{
    if (source.diskWasFull())
        return backupfiles::diskFullMessage(folderOf(source.path()));
    store::writeLog(folderOf(source.path()), source.path() + QStringLiteral(": backup: ") + engineText);
    return QStringLiteral("Базата данни %1 не може да се прочете и архивът не е записан. "
                          "Опитайте отново; подробности има в velmorata.log.")
        .arg(source.path());
}

bool failedWriting(int code)
{
    return code == SQLITE_IOERR || code == SQLITE_READONLY || code == SQLITE_CANTOPEN;
}

// The engine's online backup copies every page of the source's read transaction in a single
// step: one consistent state of the database, whatever the program writes meanwhile, and the
// counts are read in the same transaction. The copy needs no journal nor syncs of its own: it is
// synced once, whole, before it takes its name. A failure to write the copy comes back without
// a message: the caller names the archive.
Result<BackupReport> copyPages(EngineFile &source, EngineFile &copy)
{
    using Failed = Result<BackupReport>;
    if (!copy.exec(QStringLiteral("PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF")))
        return Failed::failure(QString());
    if (!source.exec(QStringLiteral("BEGIN")))
        return Failed::failure(cannotRead(source, source.errorText()));
    BackupReport report;
    report.patients = source.integer(QStringLiteral("SELECT COUNT(*) FROM Pacients")).value_or(-1);
    report.serviceLines = source.integer(QStringLiteral("SELECT COUNT(*) FROM Help")).value_or(-1);
    if (report.patients < 0 || report.serviceLines < 0)
        return Failed::failure(cannotRead(source, source.errorText()));
    sqlite3_backup *backup = sqlite3_backup_init(copy.handle(), "main", source.handle(), "main");
    if (!backup)
        return Failed::failure(QString());
    const int stepped = sqlite3_backup_step(backup, -1);
    sqlite3_backup_finish(backup);
    if (stepped == SQLITE_DONE)
        return Failed::success(report);
    if ((stepped & 0xff) == SQLITE_FULL || copy.diskWasFull())
        return Failed::failure(backupfiles::diskFullMessage(folderOf(copy.path())));
    if (failedWriting(stepped & 0xff))
        return Failed::failure(QString());
    return Failed::failure(cannotRead(source, QString::fromUtf8(sqlite3_errstr(stepped)) + u' ' + source.errorText()));
}

// The copy keeps the source's mark of the write-ahead log in its header; it is set back to the
// rollback journal, so that the archive is one file that opens anywhere, also from a folder
// where it cannot be written.
bool markWithoutLog(const QString &part)
{
    constexpr qint64 versionBytes = 18; // the file format's write and read versions: 1 rollback, 2 log
    QFile file(part);
    return file.open(QIODevice::ReadWrite) && file.seek(versionBytes) && file.write("\x01\x01", 2) == 2;
}

Result<BackupReport> copyInto(const QString &clinicPath, const QString &part)
{
    using Failed = Result<BackupReport>;
    Result<BackupReport> copied = Failed::failure(QString());
    {
        // Opened for writing though only read: the last connection to close a database of the
        // write-ahead log removes the log and its index, unless it was opened read-only, which
        // would leave both behind in the data folder. The engine reads a write-protected file
        // read-only all the same.
        EngineFile source(clinicPath, EngineFile::Mode::ReadWrite);
        EngineFile copy(part, EngineFile::Mode::ReadWrite);
        if (!source.isOpen() || !source.readWholeFileFast())
            return Failed::failure(cannotRead(source, source.errorText()));
        copied = copyPages(source, copy);
    }
    if (!copied)
        return copied;
    if (!markWithoutLog(part))
        return Failed::failure(QString());
    copied.value().bytes = QFileInfo(part).size();
    return copied;
}

// The copy is checked as the start-up checks the clinic file: a damaged database copied page by
// page makes a damaged archive, which must never take the place of a good one.
Outcome checkCopy(const QString &part, const QString &clinicPath, const QString &target)
{
    EngineFile copy(part, EngineFile::Mode::ReadOnly);
    const auto checked = copy.readWholeFileFast() ? copy.text(QStringLiteral("PRAGMA quick_check(1)")) : std::nullopt;
    const QString verdict = checked.value_or(copy.errorText());
    if (verdict == QStringLiteral("ok"))
        return Outcome::success();
    store::writeLog(folderOf(clinicPath), clinicPath + QStringLiteral(": backup: quick_check: ") + verdict);
    return Outcome::failure(QStringLiteral("Проверката на целостта на базата данни %1 откри повреда: архивът %2 не е "
                                           "записан, а досегашният файл с това име остава непроменен. Не работете с "
                                           "повредената база данни: възстановете последния архив на данните.")
                                .arg(clinicPath, target));
}

bool sameFile(const QString &a, const QString &b)
{
    const QString canonical = QFileInfo(a).canonicalFilePath();
    return !canonical.isEmpty() && canonical == QFileInfo(b).canonicalFilePath();
}

Result<BackupReport> copyChecked(const QString &clinicPath, const QString &target)
{
    using Failed = Result<BackupReport>;
    backupfiles::PartFile part(target);
    if (!part.isOpen())
        return Failed::failure(errno == ENOSPC ? backupfiles::diskFullMessage(folderOf(target))
                                               : cannotWrite(target).error());
    auto copied = copyInto(clinicPath, part.path());
    if (!copied)
        return Failed::failure(copied.error().isEmpty() ? cannotWrite(target).error() : copied.error());
    if (auto checked = checkCopy(part.path(), clinicPath, target); !checked)
        return Failed::failure(checked.error());
    if (!part.putInPlace())
        return Failed::failure(cannotWrite(target).error());
    return copied;
}

} // namespace

Result<BackupReport> BackupDatabase(const QString &clinicPath, const QString &target)
{
    using Failed = Result<BackupReport>;
    if (!QFileInfo(clinicPath).isFile())
        return Failed::failure(QStringLiteral("Базата данни %1 липсва: няма какво да се архивира.").arg(clinicPath));
    if (sameFile(clinicPath, target))
        return Failed::failure(
            QStringLiteral("Архивът не може да се запише върху самата база данни %1. Изберете друго име.").arg(target));
    backupfiles::removeStaleParts(target);
    return copyChecked(clinicPath, target);
}

} // namespace backup
