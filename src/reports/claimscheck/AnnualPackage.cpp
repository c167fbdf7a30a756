#include "reports/claimscheck/AnnualPackage.h"

#include "patients/EgnRules.h"
#include "patients/ToothMap.h"
#include "reports/ActivityCodes.h"
#include "store/Csv.h"

#include <QDir>
#include <QFile>

namespace reports {
namespace {

const QStringList Columns{QStringLiteral("FromYear"),   QStringLiteral("ToYear"),   QStringLiteral("AgeGroup"),
                          QStringLiteral("Examinations"), QStringLiteral("Activities"),
                          QStringLiteral("EndodonticPermanent"), QStringLiteral("Contract")};

std::optional<int> count(const QString &text, int lowest, int highest)
{
    bool ok = false;
    const int value = text.trimmed().toInt(&ok);
    if (!ok || value < lowest || value > highest)
        return std::nullopt;
    return value;
}

std::optional<AgeGroup> groupNamed(const QString &text)
{
    for (AgeGroup group : {AgeGroup::UpTo18, AgeGroup::Over18})
        if (text.trimmed() == AgeGroupText(group))
            return group;
    return std::nullopt;
}

// One row of the file, or the fault of its first bad field.
Result<AnnualPackage> readRow(const store::CsvTable &csv, const QStringList &fields)
{
    auto field = [&](const QString &name) { return fields.at(csv.column(name)); };
    const auto from = count(field(QStringLiteral("FromYear")), 1900, 2999);
    const auto to = count(field(QStringLiteral("ToYear")), 1900, 2999);
    if (!from || !to || *to < *from)
        return Result<AnnualPackage>::failure(QStringLiteral("годините трябва да са две години, първата не след втората"));
    const auto group = groupNamed(field(QStringLiteral("AgeGroup")));
    if (!group)
        return Result<AnnualPackage>::failure(QStringLiteral("възрастовата група трябва да е „до 18“ или „над 18“"));
    const auto examinations = count(field(QStringLiteral("Examinations")), 0, 99);
    const auto activities = count(field(QStringLiteral("Activities")), 0, 99);
    if (!examinations || !activities)
        return Result<AnnualPackage>::failure(QStringLiteral("броят прегледи и дейности трябва да е цяло число от 0 до 99"));
    int endodontic = -1;
    if (const QString limit = field(QStringLiteral("EndodonticPermanent")).trimmed(); !limit.isEmpty()) {
        const auto value = count(limit, 0, 99);
        if (!value)
            return Result<AnnualPackage>::failure(QStringLiteral("броят ендодонтски лечения трябва да е цяло число или празно"));
        endodontic = *value;
    }
    return Result<AnnualPackage>::success(
        {*from, *to, *group, *examinations, *activities, endodontic, field(QStringLiteral("Contract")).trimmed()});
}

bool overlaps(const AnnualPackage &a, const AnnualPackage &b)
{
    return a.group == b.group && a.fromYear <= b.toYear && b.fromYear <= a.toYear;
}

} // namespace

QString AgeGroupText(AgeGroup group)
{
    return group == AgeGroup::UpTo18 ? QStringLiteral("до 18") : QStringLiteral("над 18");
}

std::optional<AgeGroup> AgeGroupOn(const QString &egn, const QDate &day, EgnRule rule)
{
    const auto over = EgnOverEighteen(egn, day, rule);
    if (!over)
        return std::nullopt;
    return *over ? AgeGroup::Over18 : AgeGroup::UpTo18;
}

bool OnPermanentTooth(const QString &kodZab)
{
    bool ok = false;
    const int tooth = kodZab.trimmed().toInt(&ok);
    const toothmap::Position *place = ok ? toothmap::positionOfTooth(tooth) : nullptr;
    return place && !place->milk;
}

bool IsEndodonticCode(const QString &code) { return code == u"332" || code == u"333"; }

bool IsPackageActivity(const QString &code, AgeGroup group)
{
    if (IsFillingCode(code) || code == u"508" || code == u"509")
        return true;
    return group == AgeGroup::UpTo18 && IsEndodonticCode(code);
}

Result<AnnualPackageTable> AnnualPackageTable::parse(const QString &csvText, const QString &source)
{
    const auto csv = store::parseCsv(csvText, source);
    if (!csv)
        return Result<AnnualPackageTable>::failure(csv.error());
    return fromCsv(csv.value(), source);
}

Result<AnnualPackageTable> AnnualPackageTable::load(const QString &dataFolder)
{
    const QString own = QDir(dataFolder).filePath(FileName);
    if (dataFolder.isEmpty() || !QFile::exists(own))
        return shipped();
    const auto csv = store::readCsvFile(own);
    if (!csv)
        return Result<AnnualPackageTable>::failure(csv.error());
    return fromCsv(csv.value(), QDir::toNativeSeparators(own));
}

Result<AnnualPackageTable> AnnualPackageTable::shipped()
{
    const auto csv = store::readCsvFile(QStringLiteral(":/data/") + FileName);
    if (!csv)
        return Result<AnnualPackageTable>::failure(csv.error());
    return fromCsv(csv.value(), FileName);
}

Result<AnnualPackageTable> AnnualPackageTable::fromCsv(const store::CsvTable &csv, const QString &source)
{
    using Failure = Result<AnnualPackageTable>;
    for (const QString &name : Columns)
        if (csv.column(name) < 0)
            return Failure::failure(store::csvLineMessage(source, 1, QStringLiteral("липсва колоната ") + name));
    if (csv.rows.isEmpty())
        return Failure::failure(store::csvLineMessage(source, 1, QStringLiteral("таблицата няма редове")));
    AnnualPackageTable table;
    table.m_source = source;
    for (qsizetype i = 0; i < csv.rows.size(); ++i) {
        const int line = csv.lineNumbers.at(i);
        const auto row = readRow(csv, csv.rows.at(i));
        if (!row)
            return Failure::failure(store::csvLineMessage(source, line, row.error()));
        for (const AnnualPackage &earlier : table.m_rows)
            if (overlaps(earlier, row.value()))
                return Failure::failure(store::csvLineMessage(
                    source, line, QStringLiteral("годините се застъпват с по-горен ред за същата възрастова група")));
        table.m_rows << row.value();
    }
    return Result<AnnualPackageTable>::success(table);
}

const AnnualPackage *AnnualPackageTable::find(int year, AgeGroup group) const
{
    for (const AnnualPackage &row : m_rows)
        if (row.group == group && row.fromYear <= year && year <= row.toYear)
            return &row;
    return nullptr;
}

} // namespace reports
