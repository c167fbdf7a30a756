#include "store/PrivateFolder.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <sys/stat.h>

namespace store {
namespace {

enum class Tightening { AlreadyPrivate, Tightened, Failed };

// Links are left alone: a link could point at a file outside the folder.
Tightening tighten(const QString &path, mode_t privateMode)
{
    struct stat info {};
    const QByteArray name = QFile::encodeName(path);
    if (::lstat(name.constData(), &info) != 0 || S_ISLNK(info.st_mode) || (info.st_mode & 077) == 0)
        return Tightening::AlreadyPrivate;
    return ::chmod(name.constData(), privateMode) == 0 ? Tightening::Tightened : Tightening::Failed;
}

// A name of the folder without the journal's ending an engine puts after a database's name.
QString databaseOf(const QString &name)
{
    for (const QLatin1String ending : {QLatin1String("-wal"), QLatin1String("-shm"), QLatin1String("-journal")})
        if (name.endsWith(ending))
            return name.chopped(ending.size());
    return name;
}

} // namespace

void makeNewFilesPrivate() { ::umask(077); }

bool isOwnFileName(const QString &name)
{
    // velmorata.lock and velmorata.log; the three databases; a database built under a temporary
    // name beside its own, or an archive staged there by a restore (XXXXXX of a temporary file);
    // the copy a restore keeps of the database it replaced, numbered when two fall in one second.
    static const QRegularExpression own(
        QStringLiteral("^(?:velmorata\\.(?:lock|log)"
                       "|(?:velmorata|data|temp)\\.db(?:\\.(?:building|part)-[A-Za-z0-9]{6})?"
                       "|velmorata-before-restore-[0-9]{8}-[0-9]{6}(?:-[0-9]+)?\\.db)$"));
    return own.match(databaseOf(name)).hasMatch();
}

QString tightenFolder(const QString &folder)
{
    bool tightened = false;
    bool failed = false;
    const auto count = [&](Tightening result) {
        tightened = tightened || result == Tightening::Tightened;
        failed = failed || result == Tightening::Failed;
    };
    count(tighten(folder, 0700));
    for (const QString &file : QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::System))
        if (isOwnFileName(file))
            count(tighten(QDir(folder).absoluteFilePath(file), 0600));
    if (failed)
        return QStringLiteral("Достъпът до папката с данните %1 не може да се ограничи само до собственика; "
                              "проверете собственика и правата на папката и файловете в нея.")
            .arg(folder);
    if (tightened)
        return QStringLiteral("Папката с данните %1 беше достъпна и за други потребители; "
                              "достъпът е ограничен само до собственика.")
            .arg(folder);
    return {};
}

} // namespace store
