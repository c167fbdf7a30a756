#include "maintenance/ui/MaintenanceCommands.h"

#include "base/Dialogs.h"
#include "base/RunState.h"
#include "base/ui/BusyPointer.h"
#include "maintenance/Backup.h"
#include "maintenance/CleanOut.h"
#include "maintenance/Repair.h"
#include "maintenance/Restore.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QApplication>
#include <QFileDialog>

namespace maintenanceui {
namespace {

const QString ArchiveFilter = QStringLiteral("Архивни файлове (*.arh);;Всички файлове (*.*)");

// The overwrite prompt is left out on purpose, and no extension is added to a typed name: the
// archive gets exactly the name the user gave.
QString showArchiveDialog(QWidget *owner, ArchiveDialog dialog)
{
    if (dialog == ArchiveDialog::Save)
        return QFileDialog::getSaveFileName(owner, QStringLiteral("Съхранение на данни"), QString(), ArchiveFilter,
                                            nullptr, QFileDialog::DontConfirmOverwrite);
    return QFileDialog::getOpenFileName(owner, QStringLiteral("Зареждане на данни"), QString(), ArchiveFilter);
}

ArchiveChooser &chooser()
{
    static ArchiveChooser chosen = showArchiveDialog;
    return chosen;
}

} // namespace

void setArchiveChooser(ArchiveChooser chosen)
{
    chooser() = chosen ? std::move(chosen) : showArchiveDialog;
}

void backupData(QWidget *owner)
{
    const QString target = chooser()(owner, ArchiveDialog::Save);
    if (target.isEmpty())
        return;
    std::optional<Result<backup::BackupReport>> copied;
    {
        BusyPointer busy;
        copied.emplace(backup::BackupDatabase(store::paths().clinicDb, target));
    }
    if (!*copied)
        dialogs().information(copied->error());
}

void restoreData(QWidget *owner, const std::function<bool()> &closeWindows, const std::function<void()> &reload)
{
    const QString archive = chooser()(owner, ArchiveDialog::Open);
    if (archive.isEmpty() || !closeWindows())
        return;
    bool declined = false;
    const auto askFirst = [&](const QString &question) {
        QApplication::restoreOverrideCursor(); // the question waits for the person, not the work
        declined = !dialogs().question(question);
        QApplication::setOverrideCursor(Qt::WaitCursor);
        return !declined;
    };
    std::optional<Result<restore::RestoreReport>> restored;
    {
        BusyPointer busy;
        restored.emplace(restore::RestoreDatabase(archive, askFirst));
    }
    if (!*restored) {
        if (!declined) // the person said no: nothing more to tell
            dialogs().information(restored->error());
        return;
    }
    reload();
    dialogs().information(QStringLiteral("Данните са заредени от %1. Предишната база данни е запазена като %2.")
                              .arg(archive, (*restored)->safetyCopy));
}

void repairData()
{
    std::optional<Result<repair::RepairReport>> repaired;
    {
        BusyPointer busy;
        repaired.emplace(repair::RepairDatabase(store::clinicDb(), repair::Mode::Write));
    }
    if (!*repaired) {
        dialogs().information(repaired->error());
        return;
    }
    const repair::RepairReport &report = repaired->value();
    if (report.fileDamaged())
        return dialogs().information(repair::damagedFileMessage());
    for (const QString &fault : report.faults)
        dialogs().information(fault);
    if (report.rewritten > 0)
        dialogs().information(repair::Done);
}

void cleanOutData()
{
    if (!dialogs().question(cleanout::question(run().CurrentMedicName)))
        return;
    std::optional<Result<cleanout::CleanOutReport>> cleaned;
    {
        BusyPointer busy;
        cleaned.emplace(cleanout::CleanDatabase(store::clinicDb(), run().CurrentMedicCode));
    }
    if (!*cleaned)
        dialogs().information(cleaned->error());
}

} // namespace maintenanceui
