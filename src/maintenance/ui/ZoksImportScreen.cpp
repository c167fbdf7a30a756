#include "maintenance/ui/ZoksImportScreen.h"

#include "base/Dialogs.h"
#include "base/RunState.h"
#include "maintenance/ZoksImport.h"
#include "store/Sql.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>

namespace zoksscreen {
namespace {

// A long list of names would not fit the message; the first ones tell what to look at.
constexpr int SkippedShown = 15;

QString finishedMessage(const zoks::Summary &summary)
{
    QStringList lines{QStringLiteral("Завърших обработката на данните!"), zoks::summaryText(summary)};
    if (!summary.skipped.isEmpty())
        lines << QStringLiteral("Пропуснати пациенти:");
    lines << summary.skipped.mid(0, SkippedShown);
    if (summary.skipped.size() > SkippedShown)
        lines << QStringLiteral("... и още %1.").arg(summary.skipped.size() - SkippedShown);
    return lines.join(u'\r');
}

} // namespace

void importFile(const QString &path)
{
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const auto imported = zoks::ImportFromZoks(store::clinicDb(), path, run().CurrentMedicCode);
    QApplication::restoreOverrideCursor();
    dialogs().information(imported ? finishedMessage(imported.value()) : imported.error());
}

void ImportFromZoks(QWidget *owner)
{
    const QString start = QDir(run().DataFolder).filePath(QStringLiteral("temp.mdb"));
    const QString path = QFileDialog::getOpenFileName(
        owner, QStringLiteral("Добавяне от ЗОКС"), start,
        QStringLiteral("База данни на ЗОКС (*.mdb *.db *.sqlite);;Всички файлове (*)"));
    if (!path.isEmpty())
        importFile(path);
}

} // namespace zoksscreen
