#include "maintenance/Backup.h"

#include "maintenance/BackupFiles.h"
#include "store/Sql.h"

#include <QFile>
#include <QFileInfo>

namespace backup {
namespace {

using backupfiles::SideConnection;

Outcome cannotWrite(const QString &target)
{
    return Outcome::failure(QStringLiteral("Архивът %1 не може да се запише. Проверете правата за запис "
                                           "на папката и свободното място и опитайте отново.")
                                .arg(target));
}

// The copy goes to a file of its own beside the target and leaves the write-ahead log, so that
// the archive is one file that opens anywhere. What it holds is counted in the copy itself.
Result<BackupReport> copyInto(const QSqlDatabase &source, const QString &part)
{
    using Failed = Result<BackupReport>;
    BackupReport report;
    try {
        store::run(source, QStringLiteral("VACUUM INTO ?"), {part});
        SideConnection copy(part, SideConnection::Mode::ReadWrite);
        if (!copy.open() || !backupfiles::leaveWriteAheadLog(copy.db()))
            return Failed::failure(QString());
        report.patients = store::scalar(copy.db(), QStringLiteral("SELECT COUNT(*) FROM Pacients")).toLongLong();
        report.serviceLines = store::scalar(copy.db(), QStringLiteral("SELECT COUNT(*) FROM Help")).toLongLong();
    } catch (const store::SqlError &error) {
        return Failed::failure(error.message());
    }
    report.bytes = QFileInfo(part).size();
    return Result<BackupReport>::success(report);
}

bool sameFile(const QString &a, const QString &b)
{
    const QString canonical = QFileInfo(a).canonicalFilePath();
    return !canonical.isEmpty() && canonical == QFileInfo(b).canonicalFilePath();
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
    SideConnection source(clinicPath, SideConnection::Mode::ReadOnly);
    if (auto opened = source.open(); !opened)
        return Failed::failure(opened.error());
    const QString part = backupfiles::reserveSiblingName(target);
    if (part.isEmpty())
        return Failed::failure(cannotWrite(target).error());
    auto copied = copyInto(source.db(), part);
    if (copied && !(backupfiles::syncFile(part) && backupfiles::replaceFile(part, target)))
        copied = Failed::failure(QString());
    if (!copied) {
        QFile::remove(part);
        return Failed::failure(copied.error().isEmpty() ? cannotWrite(target).error() : copied.error());
    }
    return copied;
}

} // namespace backup
