#include "maintenance/ui/LegacyTakeoverScreen.h"

#include "base/Dialogs.h"
#include "maintenance/LegacyTakeover.h"

#include <QApplication>
#include <QFileDialog>

namespace legacyscreen {
namespace {

constexpr int LinesShown = 15;

QString shortReport(const legacy::Plan &plan)
{
    QStringList lines = legacy::reportLines(plan);
    if (lines.size() > LinesShown) {
        const qsizetype more = lines.size() - LinesShown;
        lines = lines.mid(0, LinesShown);
        lines << QStringLiteral("... и още %1 реда.").arg(more);
    }
    return lines.join(u'\r');
}

template <typename Work>
auto busy(Work work)
{
    QApplication::setOverrideCursor(Qt::WaitCursor);
    auto result = work();
    QApplication::restoreOverrideCursor();
    return result;
}

} // namespace

void takeOver(const QString &fromFolder, const QString &dataFolder)
{
    const auto tried = busy([&] { return legacy::tryTakeOver(fromFolder, dataFolder); });
    if (!tried) {
        dialogs().information(tried.error());
        return;
    }
    if (!dialogs().question(shortReport(tried.value()) + QStringLiteral("\rДа пренеса ли данните в папката %1?").arg(dataFolder)))
        return;
    const auto done = busy([&] { return legacy::takeOverOldPractice(fromFolder, dataFolder); });
    if (!done) {
        dialogs().information(done.error());
        return;
    }
    dialogs().information(QStringLiteral("Завърших обработката на данните!\rДанните са в папката %1: "
                                         "стартирайте програмата с тази папка с данни (--data-dir).")
                              .arg(dataFolder));
}

void TakeOverOldPractice(QWidget *owner)
{
    const QString from = QFileDialog::getExistingDirectory(owner, QStringLiteral("Папка на velmorata.mdb и data.mdb"));
    if (from.isEmpty())
        return;
    const QString target = QFileDialog::getExistingDirectory(owner, QStringLiteral("Нова папка с данни"));
    if (!target.isEmpty())
        takeOver(from, target);
}

} // namespace legacyscreen
