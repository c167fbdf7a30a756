#include "maintenance/JetSource.h"

#include "maintenance/JetReader.h"
#include "maintenance/JetSqliteFile.h"

#include <QDate>
#include <QFile>
#include <QFileInfo>

namespace jet {

int indexOfName(const QStringList &names, const QString &name)
{
    for (int i = 0; i < names.size(); ++i)
        if (names.at(i).compare(name, Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

int Table::column(const QString &name) const
{
    return indexOfName(columns, name);
}

bool TableSource::hasTable(const QString &table) const
{
    return tables().contains(table, Qt::CaseInsensitive);
}

Result<std::unique_ptr<TableSource>> openTableSource(const QString &path)
{
    using Opened = Result<std::unique_ptr<TableSource>>;
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return Opened::failure(QStringLiteral("Файлът %1 не може да се отвори. Проверете името и мястото му.").arg(path));
    const QByteArray head = file.read(32);
    file.close();
    if (head.startsWith(QByteArrayLiteral("SQLite format 3\0")))
        return openSqliteTables(path);
    return openJetFile(path);
}

QString trimmedText(const QVariant &value)
{
    if (!value.isValid() || value.isNull())
        return {};
    if (value.typeId() == QMetaType::QDate)
        return value.toDate().toString(Qt::ISODate);
    return value.toString().trimmed();
}

} // namespace jet
