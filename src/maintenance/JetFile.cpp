#include "maintenance/JetFile.h"

// mdbtools.h wraps glib's headers in extern "C", which C++ templates inside them do not stand.
#include <glib.h>
#include <mdbtools.h>

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

#include <cstdlib>
#include <vector>

namespace jet {

QString damagedJetFile(const QString &path)
{
    return QStringLiteral("Файлът %1 е повреден или не е база данни на Access (.mdb). "
                          "Вземете здраво копие на файла и опитайте отново.")
        .arg(path);
}

namespace {

constexpr qint64 Jet3PageSize = 2048;

// A column's value as the bound text gives it; len 0 is Null: the programs that wrote these
// files store a field only when it has a value, so a text of no letters never occurs.
QVariant valueOf(int type, const char *text, int length)
{
    if (length <= 0)
        return type == MDB_BOOL ? QVariant(false) : QVariant();
    const QString value = QString::fromUtf8(text, length);
    switch (type) {
    case MDB_BOOL:
        return value != u"0";
    case MDB_BYTE:
    case MDB_INT:
    case MDB_LONGINT:
        return value.toLongLong();
    case MDB_FLOAT:
        // A single keeps seven digits; more would show noise (0.68 read as 0.68000001).
        return QString::number(value.toFloat(), 'g', 7).toDouble();
    case MDB_MONEY:
    case MDB_DOUBLE:
    case MDB_NUMERIC:
        return value.toDouble();
    case MDB_DATETIME:
        return QDateTime::fromString(value, QStringLiteral("yyyy-MM-dd HH:mm:ss")).date();
    default:
        return value;
    }
}

class JetFile final : public TableSource
{
public:
    JetFile(QString path, MdbHandle *handle)
        : m_path(std::move(path))
        , m_handle(handle)
    {
        for (unsigned i = 0; i < m_handle->num_catalog; ++i) {
            const auto *entry = static_cast<MdbCatalogEntry *>(g_ptr_array_index(m_handle->catalog, i));
            const QString name = QString::fromUtf8(entry->object_name);
            // MSys... are the engine's own tables.
            if (entry->object_type == MDB_TABLE && !name.startsWith(QStringLiteral("MSys"), Qt::CaseInsensitive))
                m_tables << name;
        }
    }
    ~JetFile() override { mdb_close(m_handle); }
    JetFile(const JetFile &) = delete;
    JetFile &operator=(const JetFile &) = delete;

    QString path() const override { return m_path; }
    QStringList tables() const override { return m_tables; }
    Result<Table> read(const QString &table) override;
    QString storedPassword() const override
    {
        return QString::fromLatin1(m_handle->f->db_passwd, qstrnlen(m_handle->f->db_passwd, 14));
    }

private:
    QString m_path;
    MdbHandle *m_handle;
    QStringList m_tables;
};

Result<Table> JetFile::read(const QString &name)
{
    const int found = indexOfName(m_tables, name);
    if (found < 0)
        return Result<Table>::failure(
            QStringLiteral("Във файла %1 липсва таблицата %2.").arg(m_path, name));
    const QByteArray stored = m_tables.at(found).toUtf8();
    MdbCatalogEntry *entry = mdb_get_catalogentry_by_name(m_handle, stored.constData());
    MdbTableDef *def = entry ? mdb_read_table(entry) : nullptr;
    if (!def || !mdb_read_columns(def)) {
        if (def)
            mdb_free_tabledef(def);
        return Result<Table>::failure(damagedJetFile(m_path));
    }
    Table result;
    result.name = m_tables.at(found);
    const unsigned count = def->num_cols;
    std::vector<QByteArray> buffers(count, QByteArray(int(m_handle->bind_size) + 1, '\0'));
    std::vector<int> lengths(count, 0);
    std::vector<int> types(count, 0);
    for (unsigned c = 0; c < count; ++c) {
        const auto *column = static_cast<MdbColumn *>(g_ptr_array_index(def->columns, c));
        result.columns << QString::fromUtf8(column->name);
        types[c] = column->col_type;
        mdb_bind_column(def, int(c) + 1, buffers[c].data(), &lengths[c]);
    }
    mdb_rewind_table(def);
    while (mdb_fetch_row(def)) {
        QVariantList row;
        row.reserve(int(count));
        for (unsigned c = 0; c < count; ++c)
            row << valueOf(types[c], buffers[c].constData(), lengths[c]);
        result.rows << row;
    }
    // A table whose pages end before its stated rows does is a cut or damaged copy.
    const bool whole = unsigned(result.rows.size()) == def->num_rows;
    mdb_free_tabledef(def);
    if (!whole)
        return Result<Table>::failure(damagedJetFile(m_path));
    return Result<Table>::success(std::move(result));
}

} // namespace

Result<std::unique_ptr<TableSource>> openJetFileInProcess(const QString &path)
{
    using Opened = Result<std::unique_ptr<TableSource>>;
    // libmdb reads past the end of a cut file without telling; a file of whole pages at least.
    const qint64 size = QFileInfo(path).size();
    if (size < 2 * Jet3PageSize || size % Jet3PageSize != 0)
        return Opened::failure(damagedJetFile(path));
    if (!std::getenv("MDB_JET3_CHARSET"))
        setenv("MDB_JET3_CHARSET", "CP1251", 0);
    MdbHandle *handle = mdb_open(QFile::encodeName(path).constData(), MDB_NOFLAGS);
    if (!handle)
        return Opened::failure(damagedJetFile(path));
    mdb_set_date_fmt(handle, "%Y-%m-%d %H:%M:%S");
    mdb_set_shortdate_fmt(handle, "%Y-%m-%d %H:%M:%S");
    mdb_set_boolean_fmt_numbers(handle);
    if (!mdb_read_catalog(handle, MDB_TABLE)) {
        mdb_close(handle);
        return Opened::failure(damagedJetFile(path));
    }
    return Opened::success(std::make_unique<JetFile>(path, handle));
}

} // namespace jet
