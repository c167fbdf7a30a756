#include "maintenance/LegacyTables.h"

#include "admin/AccessCodes.h"
#include "maintenance/JetFile.h"
#include "patients/EgnRules.h"
#include "store/Schema.h"

#include <QDate>
#include <QDir>
#include <QRegularExpression>
#include <QSet>

namespace legacy {
namespace {

// The fields that make a row of a table one of a kind; a later row with the same values is a
// duplicate that the screens could not tell apart (two cards of one number, two doctors of
// one sign-in name).
QStringList uniqueKeyOf(const QString &table)
{
    static const QHash<QString, QStringList> keys{
        {QStringLiteral("Pacients"), {QStringLiteral("EGN")}},
        {QStringLiteral("Dental"), {QStringLiteral("EGN")}},
        {QStringLiteral("Medic"), {QStringLiteral("Names")}},
        {QStringLiteral("MedicUnit"), {}},
        {QStringLiteral("Ceny"), {QStringLiteral("KodHelp")}},
        {QStringLiteral("Grafic"), {QStringLiteral("KodMedic"), QStringLiteral("Data")}},
        {QStringLiteral("PostCode"), {QStringLiteral("PKod")}},
        {QStringLiteral("Mater"), {QStringLiteral("Kod")}},
        {QStringLiteral("RazhNorm"), {QStringLiteral("KodHelp")}},
    };
    return keys.value(table, {QStringLiteral("*")});
}

QVariant converted(const QVariant &value, const QString &type)
{
    if (value.isNull() || !value.isValid())
        return QVariant(QMetaType(type == u"REAL" ? QMetaType::Double : QMetaType::QString));
    if (type == u"DATE")
        return value.typeId() == QMetaType::QDate ? QVariant(value.toDate().toString(Qt::ISODate)) : value;
    if (type == u"BOOLEAN")
        return value.toBool() ? 1 : 0;
    if (type == u"REAL" || type == u"SMALLINT")
        return value;
    const QString text = value.toString();
    return text.trimmed().isEmpty() ? QVariant(QMetaType(QMetaType::QString)) : QVariant(text);
}

class TableReader final
{
public:
    TableReader(jet::TableSource &file, Plan &plan)
        : m_file(file)
        , m_plan(plan)
    {
    }

    void take(const QString &name, const QStringList &columns, const QStringList &types, bool inDataFile)
    {
        // A table the old files never had is a note; one they have and cannot give whole
        // refuses the take-over, since a practice taken in part is a practice lost in part.
        if (!m_file.hasTable(name)) {
            m_plan.notes << QStringLiteral("Във файла %1 липсва таблицата %2.").arg(m_file.path(), name);
            return;
        }
        auto source = m_file.read(name);
        if (!source) {
            if (m_failure.isEmpty())
                m_failure = source.error();
            return;
        }
        TableRows rows{name, inDataFile, columns, {}, 0};
        const QList<int> places = placesOf(source.value(), columns);
        const QStringList key = uniqueKeyOf(name);
        QSet<QString> seen;
        for (int line = 0; line < source->rows.size(); ++line) {
            QVariantList row;
            for (int c = 0; c < columns.size(); ++c)
                row << converted(places.at(c) < 0 ? QVariant() : source->rows.at(line).at(places.at(c)), types.at(c));
            const QString keyText = keyValue(row, columns, key);
            if (keyText != u"*" && seen.contains(keyText)) {
                m_plan.duplicates << QStringLiteral("%1, ред %2: %3 вече е пренесен").arg(name).arg(line + 1).arg(keyText);
                ++rows.refused;
                continue;
            }
            seen.insert(keyText);
            checkNumbers(name, line, row, columns);
            if (name == u"Medic")
                hashAccessCode(row, columns);
            rows.rows << row;
        }
        m_plan.tables << rows;
    }

    // The first table that could not be read, or an empty text.
    const QString &failure() const { return m_failure; }

private:
    QList<int> placesOf(const jet::Table &source, const QStringList &columns)
    {
        QList<int> places;
        for (const QString &column : columns) {
            places << source.column(column);
            if (places.last() < 0)
                m_plan.notes << QStringLiteral("Във файла %1 таблицата %2 няма полето %3; то остава празно.")
                                    .arg(m_file.path(), source.name, column);
        }
        return places;
    }

    static QString keyValue(const QVariantList &row, const QStringList &columns, const QStringList &key)
    {
        if (key == QStringList{QStringLiteral("*")})
            return QStringLiteral("*");
        QStringList parts;
        for (const QString &field : key)
            parts << row.at(columns.indexOf(field)).toString().trimmed();
        return parts.join(QStringLiteral(" / "));
    }

    // A number the rules refuse is still taken: the practice's history of that patient must
    // not be lost; the list says which cards to correct. The old edition knew only the
    // program's own rule, and the new practice starts with it, so the list follows that rule.
    void checkNumbers(const QString &table, int line, const QVariantList &row, const QStringList &columns)
    {
        if (table == u"Pacients") {
            const QString egn = row.at(columns.indexOf(QStringLiteral("EGN"))).toString().trimmed();
            if (egn.size() != 10 || EgnDateBad(egn, EgnRule::System) || EgnMonthBad(egn, EgnRule::System)
                || EgnCheckDigitBad(egn))
                m_plan.brokenNumbers << QStringLiteral("Pacients, ред %1: ЕГН „%2“").arg(line + 1).arg(egn);
        }
        if (table == u"Help") {
            const QString sheet = row.at(columns.indexOf(QStringLiteral("ListID"))).toString();
            static const QRegularExpression sixDigits(QStringLiteral("^\\d{6}$"));
            if (!sheet.isEmpty() && !sixDigits.match(sheet).hasMatch())
                m_plan.brokenNumbers << QStringLiteral("Help, ред %1: амбулаторен лист „%2“").arg(line + 1).arg(sheet);
        }
    }

    static void hashAccessCode(QVariantList &row, const QStringList &columns)
    {
        const int place = columns.indexOf(QStringLiteral("Password"));
        row[place] = converted(accesscodes::hashForStorage(row.at(place).toString()), QStringLiteral("TEXT"));
    }

    jet::TableSource &m_file;
    Plan &m_plan;
    QString m_failure;
};

QStringList typesOf(const store::TableDef &table)
{
    QStringList types;
    for (const store::ColumnDef &column : table.columns)
        types << (column.type.startsWith(QStringLiteral("VARCHAR")) ? QStringLiteral("TEXT") : column.type);
    return types;
}

void takeTables(TableReader &reader, const QList<store::TableDef> &tables, bool inDataFile)
{
    for (const store::TableDef &table : tables)
        // TempKarton is the print's work table, rebuilt at every print; the fund's prices (CenyZK)
        // are the table this version brings, as an old practice's copy is years behind.
        if (table.name != u"TempKarton" && table.name != u"CenyZK")
            reader.take(table.name, table.columnNames(), typesOf(table), inDataFile);
}

// RazhNorm has one column per material, M1, M2, ..., as many as the old practice kept.
void takeNorms(jet::TableSource &data, TableReader &reader)
{
    QStringList columns{QStringLiteral("KodHelp")};
    QStringList types{QStringLiteral("TEXT")};
    if (auto norms = data.read(QStringLiteral("RazhNorm")))
        for (const QString &column : norms->columns)
            if (column.startsWith(u'M', Qt::CaseInsensitive) && column.mid(1).toInt() > 0) {
                columns << QStringLiteral("M%1").arg(column.mid(1).toInt());
                types << QStringLiteral("REAL");
            }
    reader.take(QStringLiteral("RazhNorm"), columns, types, true);
}

} // namespace

int Plan::taken() const
{
    int rows = 0;
    for (const TableRows &table : tables)
        rows += int(table.rows.size());
    return rows;
}

int Plan::refused() const
{
    int rows = 0;
    for (const TableRows &table : tables)
        rows += table.refused;
    return rows;
}

Result<Plan> readOldPractice(const QString &folder)
{
    const QDir from(folder);
    auto clinic = jet::openTableSource(from.filePath(QStringLiteral("velmorata.mdb")));
    if (!clinic)
        return Result<Plan>::failure(clinic.error());
    if (!clinic.value()->hasTable(QStringLiteral("Pacients")))
        return Result<Plan>::failure(QStringLiteral("Файлът %1 не е база данни на практика: в него няма таблица Pacients.")
                                         .arg(clinic.value()->path()));
    auto data = jet::openTableSource(from.filePath(QStringLiteral("data.mdb")));
    if (!data)
        return Result<Plan>::failure(data.error());
    Plan plan;
    TableReader clinicReader(*clinic.value(), plan);
    takeTables(clinicReader, store::clinicTables(), false);
    TableReader dataReader(*data.value(), plan);
    takeTables(dataReader, store::referenceTables(), true);
    takeNorms(*data.value(), dataReader);
    for (const TableReader *reader : {&clinicReader, &dataReader})
        if (!reader->failure().isEmpty())
            return Result<Plan>::failure(reader->failure());
    return Result<Plan>::success(std::move(plan));
}

QStringList reportLines(const Plan &plan)
{
    QStringList counts;
    for (const TableRows &table : plan.tables)
        counts << QStringLiteral("%1 %2").arg(table.name).arg(table.rows.size());
    QStringList lines{QStringLiteral("Взети редове: %1 (%2); отказани: %3; сгрешени номера: %4.")
                          .arg(plan.taken())
                          .arg(counts.join(QStringLiteral(", ")))
                          .arg(plan.refused())
                          .arg(plan.brokenNumbers.size())};
    for (const QString &line : plan.duplicates)
        lines << QStringLiteral("Повторен, отказан: ") + line;
    for (const QString &line : plan.brokenNumbers)
        lines << QStringLiteral("Сгрешен номер, взет: ") + line;
    lines << plan.notes;
    return lines;
}

} // namespace legacy
