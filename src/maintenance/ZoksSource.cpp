#include "maintenance/ZoksSource.h"

namespace zoks {
namespace {

QStringList words(const char *list)
{
    return QString::fromLatin1(list).split(u' ');
}

struct TableLayout final
{
    const char *name;
    const char *fields;
};

const TableLayout layouts[] = {
    {"patients", "IDNUMBER NAME1 NAME2 NAME3 POL BIRTHDATE DATEREG HIMNUMBER RECBOOK"},
    {"address", "IDNUMBER POSTCODE STREET1 STREET2 NOMSTRT NOMBLOK VHOD ETAG APART TOWNVILLAG TELEFON FAX"},
    {"eknm", "TOWNVILLAG DISTRICTCO HRCODE KIND TOWNVILLA2 MUNICIPALI"},
    {"s_code", "CODE NAME"},
    {"st_code", "TYPE NAME"},
};

// Keys are compared as the package's engine compares texts: without regard to case.
QString keyOf(const QVariant &value)
{
    return value.isNull() ? QString() : value.toString().toUpper();
}

Result<SourceTable> readTable(jet::TableSource &file, const TableLayout &layout)
{
    auto table = file.read(QString::fromLatin1(layout.name));
    if (!table)
        return Result<SourceTable>::failure(table.error());
    QStringList missing;
    for (const QString &field : words(layout.fields))
        if (table.value().column(field) < 0)
            missing << field;
    if (!missing.isEmpty())
        return Result<SourceTable>::failure(QStringLiteral("Във файла %1 таблицата %2 няма полетата %3.")
                                                .arg(file.path(), QString::fromLatin1(layout.name),
                                                     missing.join(QStringLiteral(", "))));
    return Result<SourceTable>::success(SourceTable(std::move(table.value()), words(layout.fields)));
}

} // namespace

SourceTable::SourceTable(jet::Table table, const QStringList &fields)
    : m_table(std::move(table))
{
    for (const QString &field : fields)
        m_places << m_table.column(field);
}

Lookup::Lookup(SourceTable table, int keyField)
    : m_table(std::move(table))
{
    for (int row = m_table.rowCount() - 1; row >= 0; --row)
        m_rows.insert(keyOf(m_table.value(row, keyField)), row);
}

int Lookup::find(const QString &key) const
{
    return m_rows.value(key.toUpper(), -1);
}

Result<Source> readSource(const QString &path)
{
    auto opened = jet::openTableSource(path);
    if (!opened)
        return Result<Source>::failure(opened.error());
    jet::TableSource &file = *opened.value();
    QList<SourceTable> tables;
    for (const TableLayout &layout : layouts) {
        auto table = readTable(file, layout);
        if (!table)
            return Result<Source>::failure(table.error());
        tables << std::move(table.value());
    }
    Source source;
    source.patients = tables.at(0);
    source.address = Lookup(tables.at(1), address::IDNUMBER);
    source.settlements = Lookup(tables.at(2), eknm::TOWNVILLAG);
    source.municipalities = Lookup(tables.at(3), names::KEY);
    source.districts = Lookup(tables.at(4), names::KEY);
    return Result<Source>::success(std::move(source));
}

} // namespace zoks
