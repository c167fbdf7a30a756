#include "maintenance/ArchiveCheck.h"

#include "maintenance/BackupFiles.h"
#include "store/EngineFile.h"
#include "store/Log.h"
#include "store/Schema.h"
#include "store/Sql.h"
#include "store/Store.h"

#include <QFile>
#include <QFileInfo>
#include <QSqlQuery>

namespace restore {
namespace {

using store::SideConnection;
using Checked = Result<PracticeSize>;

// Bytes 18 and 19 of the header are the file format's write and read versions: 1 for the
// rollback journal, 2 for the write-ahead log. Any other value makes the engine open the file
// read-only or not at all, which would leave the practice unable to save a line.
bool knownFormatVersions(const QString &staged)
{
    QFile file(staged);
    if (!file.open(QIODevice::ReadOnly) || !file.seek(18))
        return false;
    const QByteArray versions = file.read(2);
    const auto known = [](char version) { return version == 1 || version == 2; };
    return versions.size() == 2 && known(versions[0]) && known(versions[1]);
}

QStringList declaredColumns(const QSqlDatabase &db, const QString &table)
{
    QStringList columns;
    QSqlQuery query = store::run(db, QStringLiteral("SELECT name, type FROM pragma_table_info(?)"), {table});
    while (query.next())
        columns << (query.value(0).toString() + u' ' + query.value(1).toString()).toUpper();
    return columns;
}

QStringList expectedColumns(const store::TableDef &table)
{
    QStringList columns;
    if (table.withKey)
        columns << QStringLiteral("ID INTEGER");
    for (const store::ColumnDef &column : table.columns)
        columns << (column.name + u' ' + column.type).toUpper();
    return columns;
}

// The tables with other columns than this program makes: the screens and reports read and
// write these columns by name and position.
QStringList tablesWithOtherColumns(const QSqlDatabase &db)
{
    QStringList differing;
    for (const store::TableDef &table : store::clinicTables())
        if (declaredColumns(db, table.name) != expectedColumns(table))
            differing << table.name;
    return differing;
}

PracticeSize countRows(const QSqlDatabase &db)
{
    return {store::scalar(db, QStringLiteral("SELECT COUNT(*) FROM Pacients")).toLongLong(),
            store::scalar(db, QStringLiteral("SELECT COUNT(*) FROM Help")).toLongLong()};
}

Checked checkLayout(const QSqlDatabase &db, const QString &archive)
{
    if (auto tables = store::checkClinicTables(db, archive); !tables)
        return Checked::failure(tables.error() + QStringLiteral(" Базата данни не е променена. Изберете друг архив."));
    if (const QStringList differing = tablesWithOtherColumns(db); !differing.isEmpty())
        return Checked::failure(
            refusedArchive(archive, QStringLiteral("колоните на таблиците %1 не са тези на програмата.")
                                        .arg(differing.join(QStringLiteral(", ")))));
    const store::WriteProbe writing = store::probeWrite(db);
    if (writing == store::WriteProbe::DiskFull)
        return Checked::failure(backupfiles::diskFullMessage(QFileInfo(db.databaseName()).absolutePath()) +
                                QStringLiteral(" Базата данни не е променена."));
    if (writing == store::WriteProbe::Refused || !store::leaveWriteAheadLog(db))
        return Checked::failure(refusedArchive(archive, QStringLiteral("не може да се отвори за запис.")));
    return Checked::success(countRows(db));
}

bool muchSmaller(qint64 archived, qint64 current)
{
    return archived * 2 < current;
}

} // namespace

QString refusedArchive(const QString &archive, const QString &why)
{
    return QStringLiteral("Файлът %1 не е архив на данните на програмата: %2 "
                          "Базата данни не е променена. Изберете друг архив.")
        .arg(archive, why);
}

Checked CheckArchiveCopy(const QString &staged, const QString &archive)
{
    const QString damaged = QStringLiteral("не е цяла база данни (повреден, непълен или друг вид файл).");
    if (!knownFormatVersions(staged))
        return Checked::failure(refusedArchive(archive, damaged));
    SideConnection copy(staged, SideConnection::Mode::ReadWrite);
    if (!copy.open())
        return Checked::failure(refusedArchive(archive, QStringLiteral("не може да се отвори като база данни.")));
    const QString verdict = store::integrityVerdict(copy.db());
    if (verdict != QStringLiteral("ok")) {
        store::writeLog(QFileInfo(staged).absolutePath(), archive + QStringLiteral(": integrity_check: ") + verdict);
        return Checked::failure(refusedArchive(archive, damaged));
    }
    try {
        return checkLayout(copy.db(), archive);
    } catch (const store::SqlError &error) {
        return Checked::failure(error.message());
    }
}

std::optional<PracticeSize> currentSize(const QString &clinicPath)
{
    SideConnection live(clinicPath, SideConnection::Mode::ReadOnly);
    if (!live.open())
        return std::nullopt;
    try {
        return countRows(live.db());
    } catch (const store::SqlError &) {
        return std::nullopt; // a file too damaged to count is what the restore replaces
    }
}

QString smallerArchiveNotice(const QString &archive, const PracticeSize &archived, const PracticeSize &current)
{
    if (!muchSmaller(archived.patients, current.patients) && !muchSmaller(archived.serviceLines, current.serviceLines))
        return {};
    return QStringLiteral("Архивът %1 съдържа много по-малко данни от текущата база данни: %2 пациенти и %3 реда "
                          "с дейности срещу %4 пациенти и %5 реда с дейности сега.")
        .arg(archive)
        .arg(archived.patients)
        .arg(archived.serviceLines)
        .arg(current.patients)
        .arg(current.serviceLines);
}

} // namespace restore
