#include "maintenance/Restore.h"

#include "maintenance/BackupFiles.h"
#include "store/Log.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QFile>
#include <QFileInfo>

#include <unistd.h>

namespace restore {
namespace {

using backupfiles::SideConnection;
using Failed = Result<RestoreReport>;

QString refusedArchive(const QString &archive, const QString &why)
{
    return QStringLiteral("Файлът %1 не е архив на данните на програмата: %2 "
                          "Базата данни не е променена. Изберете друг архив.")
        .arg(archive, why);
}

// The archive's bytes, as they are, under a name of the data folder's; the checks then run on
// exactly what will be put in place.
Result<QString> stageCopy(const QString &archive, const QString &clinicPath)
{
    const QFileInfo source(archive);
    if (!source.isFile())
        return Result<QString>::failure(QStringLiteral("Файлът %1 не съществува.").arg(archive));
    if (source.size() == 0)
        return Result<QString>::failure(refusedArchive(archive, QStringLiteral("файлът е празен.")));
    const QString staged = backupfiles::reserveSiblingName(clinicPath);
    QFile::remove(staged); // copy() makes the file itself
    if (staged.isEmpty() || !QFile::copy(archive, staged)) {
        QFile::remove(staged);
        return Result<QString>::failure(QStringLiteral("Архивът %1 не може да се копира в папката с данните %2. "
                                                       "Проверете свободното място и опитайте отново.")
                                            .arg(archive, QFileInfo(clinicPath).absolutePath()));
    }
    QFile::setPermissions(staged, QFile::ReadOwner | QFile::WriteOwner);
    return Result<QString>::success(staged);
}

// Whether the staged copy is a whole clinic database; what it holds, when it is.
Failed checkStaged(const QString &staged, const QString &archive)
{
    RestoreReport report;
    SideConnection copy(staged, SideConnection::Mode::ReadWrite);
    if (!copy.open())
        return Failed::failure(refusedArchive(archive, QStringLiteral("не може да се отвори като база данни.")));
    const QString verdict = backupfiles::integrityVerdict(copy.db());
    if (verdict != QStringLiteral("ok")) {
        store::writeLog(QFileInfo(staged).absolutePath(), archive + QStringLiteral(": integrity_check: ") + verdict);
        return Failed::failure(refusedArchive(archive, QStringLiteral("не е цяла база данни (повреден, непълен или друг вид файл).")));
    }
    if (auto tables = store::checkClinicTables(copy.db(), archive); !tables)
        return Failed::failure(tables.error() + QStringLiteral(" Базата данни не е променена. Изберете друг архив."));
    try {
        report.patients = store::scalar(copy.db(), QStringLiteral("SELECT COUNT(*) FROM Pacients")).toLongLong();
        report.serviceLines = store::scalar(copy.db(), QStringLiteral("SELECT COUNT(*) FROM Help")).toLongLong();
    } catch (const store::SqlError &error) {
        return Failed::failure(error.message());
    }
    if (!backupfiles::leaveWriteAheadLog(copy.db()))
        return Failed::failure(refusedArchive(archive, QStringLiteral("не може да се отвори за запис.")));
    return Failed::success(report);
}

// The current file alone holds its data once its write-ahead log is folded in; a log left
// beside it would otherwise be read into the restored file at the next opening. Only writers
// fill a log, and the folder's lock keeps them out; a reader (a backup) may still hold it open.
Outcome settleCurrent(const QString &clinicPath)
{
    const QString log = clinicPath + QStringLiteral("-wal");
    if (!QFileInfo::exists(log))
        return Outcome::success();
    {
        SideConnection live(clinicPath, SideConnection::Mode::ReadWrite);
        if (live.open())
            (void)backupfiles::leaveWriteAheadLog(live.db());
    }
    if (QFileInfo::exists(log))
        return Outcome::failure(QStringLiteral("Базата данни %1 се чете в момента от друга програма "
                                               "(например архивиране). Изчакайте и опитайте отново.")
                                    .arg(clinicPath));
    return Outcome::success();
}

// The current file under a dated name; a hard link costs nothing and never leaves the clinic
// file missing, a copy serves where links are not to be had.
Result<QString> keepSafetyCopy(const QString &clinicPath, const QDateTime &now)
{
    if (!QFileInfo::exists(clinicPath))
        return Result<QString>::success(QString());
    const QString safety = safetyCopyName(QFileInfo(clinicPath).absolutePath(), now);
    const bool kept = ::link(QFile::encodeName(clinicPath).constData(), QFile::encodeName(safety).constData()) == 0
        || (QFile::copy(clinicPath, safety) && backupfiles::syncFile(safety));
    if (!kept)
        return Result<QString>::failure(QStringLiteral("Копието на текущата база данни %1 не може да се запише. "
                                                       "Базата данни не е променена. Проверете свободното място.")
                                            .arg(safety));
    return Result<QString>::success(safety);
}

Failed putInPlace(const QString &staged, const QString &clinicPath, const QDateTime &now, RestoreReport report)
{
    if (auto settled = settleCurrent(clinicPath); !settled)
        return Failed::failure(settled.error());
    auto safety = keepSafetyCopy(clinicPath, now);
    if (!safety)
        return Failed::failure(safety.error());
    report.safetyCopy = safety.value();
    if (!backupfiles::syncFile(staged) || !backupfiles::replaceFile(staged, clinicPath))
        return Failed::failure(QStringLiteral("Базата данни %1 не може да се замени. Проверете правата за запис "
                                              "на папката с данните.")
                                   .arg(clinicPath));
    return Failed::success(report);
}

} // namespace

QString safetyCopyName(const QString &folder, const QDateTime &now)
{
    const QString stem = folder + QStringLiteral("/velmorata-before-restore-") + now.toString(QStringLiteral("yyyyMMdd-HHmmss"));
    QString name = stem + QStringLiteral(".db");
    for (int n = 2; QFileInfo::exists(name); ++n)
        name = stem + QStringLiteral("-%1.db").arg(n);
    return name;
}

Result<RestoreReport> RestoreDatabase(const QString &archive, const QDateTime &now)
{
    if (!store::holdsFolder())
        return Failed::failure(QStringLiteral("Папката с данните не е заета от тази програма."));
    const QString clinicPath = store::paths().clinicDb;
    auto staged = stageCopy(archive, clinicPath);
    if (!staged)
        return Failed::failure(staged.error());
    const auto checked = checkStaged(staged.value(), archive);
    if (!checked) {
        QFile::remove(staged.value());
        return checked;
    }
    store::closeClinicFile();
    const auto placed = putInPlace(staged.value(), clinicPath, now, checked.value());
    if (!placed)
        QFile::remove(staged.value());
    // The clinic file, restored or as it was, is opened again. One that does not open when the
    // restore failed is the damaged file the restore was to replace: the failure already says
    // that nothing changed.
    if (auto reopened = store::reopenClinicFile(bool(placed)); !reopened && placed)
        return Failed::failure(reopened.error());
    return placed;
}

} // namespace restore
