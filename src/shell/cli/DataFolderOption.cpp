#include "shell/cli/DataFolderOption.h"

namespace {

const QString DataDir = QStringLiteral("data-dir");

} // namespace

QCommandLineOption dataFolderOption(const QString &description)
{
    const QString folder = store::DataPaths::defaultFolder();
    return QCommandLineOption(DataDir, QStringLiteral("%1 (default: %2).").arg(description, folder),
                              QStringLiteral("DIR"), folder);
}

std::optional<store::DataPaths> dataFolderOf(const QCommandLineParser &parser, QTextStream &err, const QString &prefix)
{
    const QString folder = parser.value(DataDir);
    if (store::DataPaths::namesNoFolder(folder)) {
        err << prefix << "--data-dir names no folder: give the data folder's name" << Qt::endl;
        return std::nullopt;
    }
    return store::DataPaths::inFolder(folder);
}
