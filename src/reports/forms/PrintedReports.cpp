#include "reports/forms/PrintedReports.h"

#include "reports/forms/Accounting.h"
#include "reports/forms/ActivityReport.h"
#include "reports/forms/ActivityReportPage.h"
#include "reports/forms/ClaimForm.h"
#include "reports/forms/ClaimFormCells.h"
#include "reports/forms/ClaimFormPage.h"
#include "reports/forms/FundSummary.h"
#include "reports/forms/FundSummaryPage.h"
#include "reports/forms/Materials.h"
#include "reports/forms/MaterialsPage.h"
#include "store/Dates.h"
#include "store/Scratch.h"
#include "store/Sql.h"

#include <QSqlQuery>
#include <QSqlRecord>

#include <charconv>

namespace reports {
namespace {

// A scratch value as the command line shows it: dates DD.MM.YYYY, single-precision quantities
// in their shortest exact form, nothing for an empty field.
QString shownValue(const QString &column, const QVariant &value)
{
    if (value.isNull())
        return {};
    if (column == u"Data")
        return dates::isoToTyped(value.toString());
    if (column == u"Kol") {
        char digits[32];
        const auto end = std::to_chars(digits, digits + sizeof digits, value.toFloat()).ptr;
        return QString::fromLatin1(digits, int(end - digits));
    }
    return value.toString();
}

Result<QStringList> scratchLines(const QSqlDatabase &scratch, const QString &table)
{
    const QStringList columns = store::scratchColumns(table);
    QStringList lines;
    try {
        QSqlQuery rows = store::run(scratch,
                                    QStringLiteral("SELECT %1 FROM %2").arg(columns.join(QStringLiteral(", ")), table));
        while (rows.next()) {
            QStringList fields;
            for (int i = 0; i < columns.size(); ++i)
                fields << shownValue(columns.at(i), rows.value(i));
            lines << fields.join(u'\t');
        }
    } catch (const store::SqlError &error) {
        return Result<QStringList>::failure(error.message());
    }
    return Result<QStringList>::success(lines);
}

Outcome emptied(ReportKind kind)
{
    const QString table = ScratchTableOf(kind);
    return table.isEmpty() ? Outcome::success() : store::EmptyScratchTable(table);
}

} // namespace

std::optional<ReportKind> ReportKindFrom(const QString &text)
{
    const int value = text.trimmed().toInt();
    if (value < 1 || value > 5)
        return std::nullopt;
    return ReportKind(value);
}

QString ReportKindText(ReportKind kind) { return QString::number(int(kind)); }

QString ScratchTableOf(ReportKind kind)
{
    switch (kind) {
    case ReportKind::Activity: return QStringLiteral("TempWork");
    case ReportKind::Materials: return QStringLiteral("TempMater");
    case ReportKind::FundSummary: return QStringLiteral("TempZOKC");
    case ReportKind::Xml: return {};
    case ReportKind::Specification: return QStringLiteral("TempSpec");
    }
    return {};
}

Outcome PrepareReport(const store::Databases &dbs, ReportKind kind, bool withScratch)
{
    if (!withScratch)
        return Outcome::success();
    if (kind == ReportKind::Materials)
        if (const Outcome classified = accounting::ClassifyFillings(dbs.clinic); !classified)
            return classified;
    // The XML report builds no table of its own, but the menu entry has always made TempWork.
    const QString table = kind == ReportKind::Xml ? QStringLiteral("TempWork") : ScratchTableOf(kind);
    return store::CreateScratchTable(table);
}

// A second "Търси" over the same open dialog builds the report anew rather than on top of the
// first: the materials list is loaded again before the period is added to it.
Result<SkippedPatients> BuildReport(const store::Databases &dbs, ReportKind kind, const Period &period,
                                    const QString &medicCode)
{
    if (const Outcome empty = emptied(kind); !empty)
        return Result<SkippedPatients>::failure(empty.error());
    const QSqlDatabase &clinic = dbs.clinic;
    const QSqlDatabase &scratch = dbs.scratch;
    switch (kind) {
    case ReportKind::Activity: return BuildActivityReport(clinic, scratch, period, medicCode);
    case ReportKind::FundSummary: return BuildFundSummary(clinic, scratch, period, medicCode);
    case ReportKind::Specification: return BuildSpecification(clinic, scratch, period, medicCode);
    case ReportKind::Materials:
        if (const Outcome loaded = LoadMaterialsList(dbs.data, scratch); !loaded)
            return Result<SkippedPatients>::failure(loaded.error());
        if (const Outcome calculated = CalcMaterials(clinic, dbs.data, scratch, period); !calculated)
            return Result<SkippedPatients>::failure(calculated.error());
        return Result<SkippedPatients>::success({});
    case ReportKind::Xml: break;
    }
    return Result<SkippedPatients>::failure(QStringLiteral("XML отчетът няма печатна форма."));
}

namespace {

Result<print::PageDescription> pageOf(const store::Databases &dbs, ReportKind kind, const Period &period,
                                      const QString &medicName)
{
    const QSqlDatabase &scratch = dbs.scratch;
    switch (kind) {
    case ReportKind::Activity:
        return Result<print::PageDescription>::success(WorkPage(scratch, period, medicName));
    case ReportKind::FundSummary:
        return Result<print::PageDescription>::success(ZokcPage(scratch, period, medicName));
    case ReportKind::Specification: {
        const auto cells = LoadSpecificationCells(dbs.clinic, scratch, period);
        if (!cells)
            return Result<print::PageDescription>::failure(cells.error());
        return Result<print::PageDescription>::success(SpecificationPage(cells.value()));
    }
    case ReportKind::Materials: return MaterialsForm(scratch, period, medicName);
    case ReportKind::Xml: break;
    }
    return Result<print::PageDescription>::failure(QStringLiteral("XML отчетът няма печатна форма."));
}

} // namespace

Result<print::PageDescription> ReportPage(const store::Databases &dbs, ReportKind kind, const Period &period,
                                          const QString &medicName)
{
    try {
        return pageOf(dbs, kind, period, medicName);
    } catch (const store::SqlError &error) {
        return Result<print::PageDescription>::failure(error.message());
    }
}

Result<QStringList> ReportLines(const store::Databases &dbs, ReportKind kind, const Period &period)
{
    if (kind != ReportKind::Specification)
        return scratchLines(dbs.scratch, ScratchTableOf(kind));
    const auto cells = LoadSpecificationCells(dbs.clinic, dbs.scratch, period);
    if (!cells)
        return Result<QStringList>::failure(cells.error());
    QStringList lines;
    for (const SpecificationCell &cell : cells.value())
        lines << cell.name + u'\t' + cell.text;
    return Result<QStringList>::success(lines);
}

Outcome CloseReport(ReportKind kind) { return emptied(kind); }

} // namespace reports
