#include "store/ReferenceData.h"

#include "store/Schema.h"
#include "store/Sql.h"

#include <QFile>
#include <QSqlError>
#include <QSqlQuery>

namespace store {
namespace {

CsvTable shippedCsv(const QString &name)
{
    const QString path = QStringLiteral(":/data/%1.csv").arg(name);
    auto table = readCsvFile(path);
    if (!table)
        throw SqlError(table.error());
    return table.value();
}

// The declared type of each column, by lower-case name, as the table reports it.
QHash<QString, bool> numericColumns(const QSqlDatabase &db, const QString &table)
{
    QHash<QString, bool> numeric;
    QSqlQuery info = run(db, QStringLiteral("PRAGMA table_info(%1)").arg(table));
    while (info.next()) {
        const QString type = info.value(2).toString().toUpper();
        numeric.insert(info.value(1).toString().toLower(), type == u"REAL" || type == u"SMALLINT");
    }
    return numeric;
}

QVariant fieldValue(const QString &raw, bool numeric, bool *good)
{
    const QString value = raw.trimmed();
    *good = true;
    if (value.isEmpty())
        return QVariant(numeric ? QMetaType(QMetaType::Double) : QMetaType(QMetaType::QString));
    if (!numeric)
        return value;
    const double number = QString(value).replace(u',', u'.').toDouble(good);
    return number;
}

QStringList materialColumns(const CsvTable &norms)
{
    QStringList columns;
    for (int i = 1; i < norms.header.size(); ++i)
        columns << QStringLiteral("M%1").arg(i);
    return columns;
}

} // namespace

void createRazhNorm(const QSqlDatabase &data, const QStringList &materialColumns)
{
    QStringList columns{QStringLiteral("ID INTEGER PRIMARY KEY"), QStringLiteral("KodHelp TEXT")};
    for (const QString &material : materialColumns)
        columns << material + QStringLiteral(" REAL");
    run(data, QStringLiteral("CREATE TABLE RazhNorm (%1)").arg(columns.join(QStringLiteral(", "))));
    run(data, QStringLiteral("CREATE INDEX RazhNormByKod ON RazhNorm (KodHelp)"));
}

CsvRowInserter::CsvRowInserter(const QSqlDatabase &db, const QString &table, const QStringList &header,
                               const QString &source, bool idIsLine)
    : m_db(db)
    , m_insert(db)
    , m_source(source)
    , m_idIsLine(idIsLine)
{
    const QHash<QString, bool> numeric = numericColumns(db, table);
    for (const QString &name : header) {
        if (!numeric.contains(name.trimmed().toLower()))
            throw SqlError(QStringLiteral("Файл %1: таблицата %2 няма поле %3.").arg(source, table, name));
        m_names << name.trimmed();
        m_numeric << numeric.value(name.trimmed().toLower());
    }
    QStringList columns = m_names;
    if (idIsLine)
        columns.prepend(QStringLiteral("ID"));
    const QString marks = QStringList(QList<QString>(columns.size(), QStringLiteral("?"))).join(u',');
    if (!m_insert.prepare(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)").arg(table, columns.join(u','), marks)))
        throw SqlError(m_db, m_insert);
}

void CsvRowInserter::add(const QStringList &fields, int line)
{
    const int first = m_idIsLine ? 1 : 0;
    if (m_idIsLine)
        m_insert.bindValue(0, line);
    for (int c = 0; c < m_names.size(); ++c) {
        bool good = true;
        m_insert.bindValue(first + c, fieldValue(fields.at(c), m_numeric.at(c), &good));
        if (!good)
            throw SqlError(csvLineMessage(m_source, line, QStringLiteral("\"%1\" не е число.").arg(fields.at(c))));
    }
    if (!m_insert.exec())
        throw SqlError(csvLineMessage(m_source, line, SqlError(m_db, m_insert).message()));
}

void insertCsvRows(const QSqlDatabase &db, const QString &table, const CsvTable &csv, const QString &source)
{
    CsvRowInserter insert(db, table, csv.header, source);
    for (int r = 0; r < csv.rows.size(); ++r)
        insert.add(csv.rows.at(r), csv.lineNumbers.at(r));
}

void loadClinicReferenceData(const QSqlDatabase &clinic)
{
    for (const QString &name : {QStringLiteral("CenyZK"), QStringLiteral("Ceny")})
        insertCsvRows(clinic, name, shippedCsv(name), name + QStringLiteral(".csv"));
}

void loadDataReferenceData(const QSqlDatabase &data)
{
    for (const QString &name : {QStringLiteral("PostCode"), QStringLiteral("Mater")})
        insertCsvRows(data, name, shippedCsv(name), name + QStringLiteral(".csv"));
    const CsvTable norms = shippedCsv(QStringLiteral("RazhNorm"));
    createRazhNorm(data, materialColumns(norms));
    insertCsvRows(data, QStringLiteral("RazhNorm"), norms, QStringLiteral("RazhNorm.csv"));
}

namespace {

// The columns of PostCode, in the order of the table, as positions in the file's header.
Result<QList<int>> postCodeColumns(const CsvReader &reader, const QStringList &wanted, const QString &csvPath)
{
    QList<int> columns;
    for (const QString &name : wanted) {
        const int column = reader.column(name);
        if (column < 0)
            return Result<QList<int>>::failure(QStringLiteral("Файл %1: липсва колона %2.").arg(csvPath, name));
        columns << column;
    }
    return Result<QList<int>>::success(columns);
}

// Replaces the rows of PostCode by the file's, within the caller's transaction. Each row's ID
// is the line it came from, so that a repeated code can name the line of its first appearance
// without holding the codes in memory. Gives the number of rows, or the file's first fault.
Result<int> replacePostCodes(const QSqlDatabase &data, CsvReader &reader, const QString &csvPath)
{
    const QStringList wanted = findTable(referenceTables(), QStringLiteral("PostCode"))->columnNames();
    const auto columns = postCodeColumns(reader, wanted, csvPath);
    if (!columns)
        return Result<int>::failure(columns.error());
    run(data, QStringLiteral("DELETE FROM PostCode"));
    CsvRowInserter insert(data, QStringLiteral("PostCode"), wanted, csvPath, true);
    QSqlQuery firstLine(data);
    if (!firstLine.prepare(QStringLiteral("SELECT ID FROM PostCode WHERE PKod = ?")))
        throw SqlError(data, firstLine);
    int rows = 0;
    QStringList fields;
    int line = 0;
    while (reader.next(fields, line)) {
        QStringList row;
        for (int column : columns.value())
            row << fields.at(column);
        const QString code = row.first().trimmed();
        if (code.isEmpty())
            return Result<int>::failure(csvLineMessage(csvPath, line, QStringLiteral("липсва пощенски код.")));
        firstLine.bindValue(0, code);
        if (!firstLine.exec())
            throw SqlError(data, firstLine);
        if (firstLine.next())
            return Result<int>::failure(csvLineMessage(
                csvPath, line,
                QStringLiteral("пощенският код %1 се повтаря (вече е на ред %2).").arg(code, firstLine.value(0).toString())));
        firstLine.finish();
        insert.add(row, line);
        ++rows;
    }
    if (!reader.error().isEmpty())
        return Result<int>::failure(reader.error());
    if (rows == 0)
        return Result<int>::failure(
            QStringLiteral("Файл %1: няма нито един ред с пощенски код, само заглавен ред; списъкът не е сменен.").arg(csvPath));
    return Result<int>::success(rows);
}

} // namespace

Result<int> importPostCodes(const QSqlDatabase &data, const QString &csvPath)
{
    QFile file(csvPath);
    if (!file.open(QIODevice::ReadOnly))
        return Result<int>::failure(QStringLiteral("Файлът %1 не може да се прочете: %2").arg(csvPath, file.errorString()));
    CsvReader reader(file, csvPath);
    if (!reader.error().isEmpty())
        return Result<int>::failure(reader.error());
    try {
        Transaction transaction(data);
        const auto replaced = replacePostCodes(data, reader, csvPath);
        if (replaced)
            transaction.commit(); // otherwise the transaction rolls back: nothing changes
        return replaced;
    } catch (const SqlError &error) {
        return Result<int>::failure(error.message());
    }
}

} // namespace store
