#include "store/DataPaths.h"

#include <QDir>
#include <QStandardPaths>

namespace store {

DataPaths DataPaths::inFolder(const QString &folder)
{
    if (namesNoFolder(folder))
        return {};
    const QDir dir(folder);
    const QString absolute = dir.absolutePath();
    return {absolute, dir.absoluteFilePath(QStringLiteral("velmorata.db")),
            dir.absoluteFilePath(QStringLiteral("data.db")), dir.absoluteFilePath(QStringLiteral("temp.db"))};
}

QString DataPaths::defaultFolder()
{
    QString base = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (base.isEmpty())
        base = QDir::homePath() + QStringLiteral("/.local/share");
    return base + QStringLiteral("/velmorata");
}

bool DataPaths::namesNoFolder(const QString &folder) { return folder.trimmed().isEmpty(); }

} // namespace store
