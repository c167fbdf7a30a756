#include "store/Log.h"

#include <QDateTime>
#include <QDir>
#include <QFile>

namespace store {
namespace {

NoticeSink &sink()
{
    static NoticeSink installed;
    return installed;
}

} // namespace

QString logFilePath(const QString &folder) { return QDir(folder).absoluteFilePath(QStringLiteral("velmorata.log")); }

void writeLog(const QString &folder, const QString &text)
{
    if (folder.isEmpty())
        return;
    QFile log(logFilePath(folder));
    // The log holds statements with patients' data in them: private like the databases.
    if (!log.open(QIODevice::Append | QIODevice::Text, QFileDevice::ReadOwner | QFileDevice::WriteOwner))
        return;
    const QString line = QDateTime::currentDateTime().toString(Qt::ISODate) + u' ' + text.simplified() + u'\n';
    log.write(line.toUtf8());
}

void setNoticeSink(NoticeSink installed) { sink() = std::move(installed); }

void notice(const QString &folder, const QString &text)
{
    writeLog(folder, text);
    if (sink())
        sink()(text);
}

} // namespace store
