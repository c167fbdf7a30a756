#include "maintenance/Backup.h"

#include "maintenance/BackupFiles.h"
#include "store/EngineFile.h"
#include "store/Log.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>

namespace backup {
namespace {

using store::EngineFile;

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

// The engine's online backup copies every page of the source's read transaction in a single
// step: one consistent state of the database, whatever the program writes meanwhile, and the
// counts are read in the same transaction. The copy needs no journal nor syncs of its own: it is
// synced once, whole, before it takes its name. A failure to write the copy comes back without
// a message: the caller names the archive.
Result<BackupReport> copyPages(EngineFile &source, EngineFile &copy)
{
    using Failed = Result<BackupReport>;
    if (!source.beginReading())
        return Failed::failure(cannotRead(source, source.errorText()));
    BackupReport report;
    report.patients = source.integer(QStringLiteral("SELECT COUNT(*) FROM Pacients")).value_or(-1);
    report.serviceLines = source.integer(QStringLiteral("SELECT COUNT(*) FROM Help")).value_or(-1);
    if (report.patients < 0 || report.serviceLines < 0)
        return Failed::failure(cannotRead(source, source.errorText()));
    QString engineText;
    switch (copy.copyPagesOf(source, engineText)) {
    case store::CopyEnd::Done:
        return Failed::success(report);
    case store::CopyEnd::CopyDiskFull:
        return Failed::failure(backupfiles::diskFullMessage(folderOf(copy.path())));
    case store::CopyEnd::CopyNotWritten:
        return Failed::failure(QString());
    case store::CopyEnd::SourceNotRead:
        break;
    }
    return Failed::failure(cannotRead(source, engineText));
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
    if (!store::markWithoutWriteAheadLog(part))
        return Failed::failure(QString());
    copied.value().bytes = QFileInfo(part).size();
    return copied;
}

// The copy is checked as the start-up checks the clinic file: a damaged database copied page by
// page makes a damaged archive, which must never take the place of a good one.
Outcome checkCopy(const QString &part, const QString &clinicPath, const QString &target)
{
    EngineFile copy(part, EngineFile::Mode::ReadOnly);
    const QString verdict = copy.quickCheckVerdict();
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
