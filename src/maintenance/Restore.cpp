#include "maintenance/Restore.h"

#include "maintenance/ArchiveCheck.h"
#include "maintenance/BackupFiles.h"
#include "store/EngineFile.h"
#include "store/Store.h"

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>
#include <unistd.h>

namespace restore {
namespace {

using backupfiles::PartFile;
using store::SideConnection;
using Failed = Result<RestoreReport>;

const QString Unchanged = QStringLiteral("Базата данни не е променена.");

// A folder, a device or a pipe is named for what it is: "does not exist" would send the user
// looking for a file that is there.
Outcome regularFile(const QString &archive)
{
    struct stat status
    {
    };
    if (::stat(QFile::encodeName(archive).constData(), &status) != 0)
        return Outcome::failure(QStringLiteral("Файлът %1 не съществува.").arg(archive));
    if (S_ISDIR(status.st_mode))
        return Outcome::failure(
            QStringLiteral("%1 е папка, а не архивен файл. Изберете архивен файл (*.arh).").arg(archive));
    if (!S_ISREG(status.st_mode))
        return Outcome::failure(QStringLiteral("%1 не е обикновен файл (а устройство или канал) и не може да е архив. "
                                               "Изберете архивен файл (*.arh).")
                                    .arg(archive));
    if (status.st_size == 0)
        return Outcome::failure(refusedArchive(archive, QStringLiteral("файлът е празен.")));
    return Outcome::success();
}

// The archive's bytes, as they are, under a name of the data folder's; the checks then run on
// exactly what will be put in place.
Outcome stageCopy(const QString &archive, PartFile &staged)
{
    if (auto regular = regularFile(archive); !regular)
        return regular;
    QFile source(archive);
    if (!source.open(QIODevice::ReadOnly))
        return Outcome::failure(
            QStringLiteral("Файлът %1 не може да се прочете. Проверете правата за четене.").arg(archive));
    if (staged.isOpen() && staged.copyFrom(source))
        return Outcome::success();
    const QString folder = QFileInfo(store::paths().clinicDb).absolutePath();
    if (staged.diskWasFull())
        return Outcome::failure(backupfiles::diskFullMessage(folder) + u' ' + Unchanged);
    return Outcome::failure(QStringLiteral("Архивът %1 не може да се копира в папката с данните %2. "
                                           "Проверете свободното място и опитайте отново.")
                                .arg(archive, folder));
}

// An archive far smaller than the practice is put in place only when the person says so: a
// restore of the wrong file would otherwise end years of records without a word.
Outcome agreeToSize(const QString &archive, const PracticeSize &archived, const ConfirmSmaller &confirm)
{
    const auto current = currentSize(store::paths().clinicDb);
    if (!current)
        return Outcome::success();
    const QString notice = smallerArchiveNotice(archive, archived, *current);
    if (notice.isEmpty() || confirm(notice + QStringLiteral(" Да бъдат ли заменени текущите данни с тези от архива?")))
        return Outcome::success();
    return Outcome::failure(notice + QStringLiteral(" Възстановяването е отказано. ") + Unchanged);
}

// The current file alone holds its data once its journals are folded in; a journal left beside
// it would otherwise be read into the restored file at the next opening. Only writers fill a
// journal, and the folder's lock keeps them out; a reader (a backup) may still hold it open.
Outcome settleCurrent(const QString &clinicPath)
{
    const QStringList journals{clinicPath + QStringLiteral("-wal"), clinicPath + QStringLiteral("-journal")};
    const auto anyLeft = [&] { return QFileInfo::exists(journals[0]) || QFileInfo::exists(journals[1]); };
    if (!anyLeft())
        return Outcome::success();
    {
        store::EngineFile live(clinicPath, store::EngineFile::Mode::ReadWrite);
        if (!live.leaveWriteAheadLog() && live.diskWasFull())
            return Outcome::failure(backupfiles::diskFullMessage(QFileInfo(clinicPath).absolutePath()) + u' ' +
                                    Unchanged);
    }
    if (anyLeft())
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
    const bool kept = ::link(QFile::encodeName(clinicPath).constData(), QFile::encodeName(safety).constData()) == 0 ||
                      (QFile::copy(clinicPath, safety) && backupfiles::syncFile(safety));
    if (!kept)
        return Result<QString>::failure(QStringLiteral("Копието на текущата база данни %1 не може да се запише. "
                                                       "%2 Проверете свободното място.")
                                            .arg(safety, Unchanged));
    return Result<QString>::success(safety);
}

Failed putInPlace(PartFile &staged, const QString &clinicPath, const QDateTime &now, RestoreReport report)
{
    if (auto settled = settleCurrent(clinicPath); !settled)
        return Failed::failure(settled.error());
    auto safety = keepSafetyCopy(clinicPath, now);
    if (!safety)
        return Failed::failure(safety.error());
    report.safetyCopy = safety.value();
    if (!staged.putInPlace()) {
        QFile::remove(report.safetyCopy);
        return Failed::failure(QStringLiteral("Базата данни %1 не може да се замени. Проверете правата за запис "
                                              "на папката с данните. %2")
                                   .arg(clinicPath, Unchanged));
    }
    return Failed::success(report);
}

// The restored file did not open: the kept copy goes back under the clinic file's name. The
// journals beside it are those the failed opening made for the restored file; left there, they
// would be read into the old one.
Failed takeBack(const QString &archive, const RestoreReport &report, const QString &why)
{
    const QString clinicPath = store::paths().clinicDb;
    store::closeClinicFile();
    for (const char *journal : {"-wal", "-shm", "-journal"})
        QFile::remove(clinicPath + QLatin1String(journal));
    const bool back = report.safetyCopy.isEmpty() ? QFile::remove(clinicPath)
                                                  : backupfiles::replaceFile(report.safetyCopy, clinicPath);
    (void)store::reopenClinicFile(); // the old file, damaged or not, as it was before the restore
    if (!back)
        return Failed::failure(QStringLiteral("Архивът %1 е поставен на мястото на базата данни, но тя не се отваря: "
                                              "%2 Предишната база данни е запазена като %3; затворете програмата "
                                              "и я върнете под името %4.")
                                   .arg(archive, why, report.safetyCopy, clinicPath));
    return Failed::failure(QStringLiteral("Архивът %1 не е зареден: след поставянето му базата данни не се отвори "
                                          "(%2). Предишната база данни е върната на мястото си и не е променена.")
                               .arg(archive, why));
}

} // namespace

QString safetyCopyName(const QString &folder, const QDateTime &now)
{
    const QString stem =
        folder + QStringLiteral("/velmorata-before-restore-") + now.toString(QStringLiteral("yyyyMMdd-HHmmss"));
    QString name = stem + QStringLiteral(".db");
    for (int n = 2; QFileInfo::exists(name); ++n)
        name = stem + QStringLiteral("-%1.db").arg(n);
    return name;
}

Result<RestoreReport> RestoreDatabase(const QString &archive, const ConfirmSmaller &confirm, const QDateTime &now)
{
    if (!store::holdsFolder())
        return Failed::failure(QStringLiteral("Папката с данните не е заета от тази програма."));
    const QString clinicPath = store::paths().clinicDb;
    backupfiles::removeStaleParts(clinicPath); // only a killed restore leaves them: the folder's lock is ours
    PartFile staged(clinicPath);
    if (auto copied = stageCopy(archive, staged); !copied)
        return Failed::failure(copied.error());
    const auto checked = CheckArchiveCopy(staged.path(), archive);
    if (!checked)
        return Failed::failure(checked.error());
    if (auto agreed = agreeToSize(archive, checked.value(), confirm); !agreed)
        return Failed::failure(agreed.error());
    store::closeClinicFile();
    const auto placed = putInPlace(staged, clinicPath, now, {{}, checked->patients, checked->serviceLines});
    if (!placed) {
        (void)store::reopenClinicFile(); // the file as it was: the failure already says nothing changed
        return placed;
    }
    if (auto reopened = store::reopenClinicFile(true); !reopened)
        return takeBack(archive, placed.value(), reopened.error());
    return placed;
}

} // namespace restore
