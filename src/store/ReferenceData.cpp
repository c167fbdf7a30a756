#include "store/ReferenceData.h"

#include "store/Schema.h"
#include "store/Sql.h"

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

void createRazhNorm(const QSqlDatabase &data, const CsvTable &norms)
{
    QStringList columns{QStringLiteral("ID INTEGER PRIMARY KEY"), QStringLiteral("KodHelp TEXT")};
    for (int i = 1; i < norms.header.size(); ++i)
        columns << QStringLiteral("M%1 REAL").arg(i);
    run(data, QStringLiteral("CREATE TABLE RazhNorm (%1)").arg(columns.join(QStringLiteral(", "))));
    run(data, QStringLiteral("CREATE INDEX RazhNormByKod ON RazhNorm (KodHelp)"));
}

} // namespace

void insertCsvRows(const QSqlDatabase &db, const QString &table, const CsvTable &csv, const QString &source)
{
    const QHash<QString, bool> numeric = numericColumns(db, table);
    QStringList names;
    for (const QString &name : csv.header) {
        if (!numeric.contains(name.trimmed().toLower()))
            throw SqlError(QStringLiteral("Файл %1: таблицата %2 няма поле %3.").arg(source, table, name));
        names << name.trimmed();
    }
    QSqlQuery insert(db);
    const QString marks = QStringList(QList<QString>(names.size(), QStringLiteral("?"))).join(u',');
    if (!insert.prepare(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)").arg(table, names.join(u','), marks)))
        throw SqlError(insert.lastError().text());
    for (int r = 0; r < csv.rows.size(); ++r) {
        for (int c = 0; c < names.size(); ++c) {
            bool good = true;
            insert.bindValue(c, fieldValue(csv.rows[r][c], numeric.value(names[c].toLower()), &good));
            if (!good)
                throw SqlError(QStringLiteral("Файл %1, ред %2: \"%3\" не е число.")
                                   .arg(source)
                                   .arg(csv.lineNumbers[r])
                                   .arg(csv.rows[r][c]));
        }
        if (!insert.exec())
            throw SqlError(QStringLiteral("Файл %1, ред %2: %3").arg(source).arg(csv.lineNumbers[r]).arg(insert.lastError().text()));
    }
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
    createRazhNorm(data, norms);
    insertCsvRows(data, QStringLiteral("RazhNorm"), norms, QStringLiteral("RazhNorm.csv"));
}

Result<int> importPostCodes(const QSqlDatabase &data, const QString &csvPath)
{
    auto csv = readCsvFile(csvPath);
    if (!csv)
        return Result<int>::failure(csv.error());
    const QStringList wanted = findTable(referenceTables(), QStringLiteral("PostCode"))->columnNames();
    CsvTable picked;
    picked.header = wanted;
    picked.lineNumbers = csv->lineNumbers;
    QList<int> sourceColumns;
    for (const QString &name : wanted) {
        const int column = csv->column(name);
        if (column < 0)
            return Result<int>::failure(QStringLiteral("Файл %1: липсва колона %2.").arg(csvPath, name));
        sourceColumns << column;
    }
    for (int r = 0; r < csv->rows.size(); ++r) {
        QStringList row;
        for (int column : sourceColumns)
            row << csv->rows[r][column];
        if (row[0].trimmed().isEmpty())
            return Result<int>::failure(
                QStringLiteral("Файл %1, ред %2: липсва пощенски код.").arg(csvPath).arg(csv->lineNumbers[r]));
        picked.rows << row;
    }
    try {
        Transaction transaction(data);
        run(data, QStringLiteral("DELETE FROM PostCode"));
        insertCsvRows(data, QStringLiteral("PostCode"), picked, csvPath);
        transaction.commit();
    } catch (const SqlError &error) {
        return Result<int>::failure(error.message());
    }
    return Result<int>::success(int(picked.rows.size()));
}

} // namespace store
