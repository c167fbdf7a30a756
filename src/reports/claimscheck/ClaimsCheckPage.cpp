#include "reports/claimscheck/ClaimsCheckPage.h"

#include "reports/RuledList.h"
#include "reports/forms/ActivityReportPage.h"
#include "store/Dates.h"

#include <array>

using namespace print;

namespace reports {
namespace {

using ruledlist::Column;
using ruledlist::Left;
using ruledlist::RowHeight;
using ruledlist::Width;

// The rule's code stands on every row, so that a page that goes on with a group says whose rows
// they are.
const std::array<Column, 6> Columns{{
    {"Text1", "Дата", Left, 19},
    {"Text2", "ЕГН", Left + 19, 21},
    {"Text3", "Пациент", Left + 40, 42},
    {"Text4", "Лист", Left + 82, 13},
    {"Text6", "Правило", Left + 95, 27},
    {"Text5", "Забележка", Left + 122, 58},
}};

// A long name or text gets a smaller font and a second line rather than being cut.
PageItem cell(const Column &column, const QString &value)
{
    const double capacity = (column.width - 1.6) / 1.6; // characters of 8 pt
    PageItem item = wrapped(QString::fromLatin1(column.name), ruledlist::CellRect(column, 0.2, RowHeight - 0.4), value, value.size() <= capacity ? 8.0 : 6.0);
    item.alignment = Qt::AlignLeft | Qt::AlignVCenter;
    return item;
}

QList<PageItem> findingRow(const ClaimFinding &finding)
{
    const std::array<QString, 6> values{finding.date.isValid() ? dates::toTyped(finding.date) : QString(), finding.EGN,
                                        finding.name, finding.ListID, ClaimRuleOf(finding.rule).code, finding.text};
    QList<PageItem> row;
    for (std::size_t n = 0; n < Columns.size(); ++n)
        row << cell(Columns[n], values[n]);
    row << line(QStringLiteral("RowLine"), {Left, RowHeight}, {Left + Width, RowHeight}, 0.1);
    return row;
}

QList<PageItem> groupRow(const ClaimRuleInfo &rule, int count)
{
    PageItem title = text(QStringLiteral("Group1"), QRectF(Left, 0.5, Width, RowHeight - 0.5),
                          QStringLiteral("%1 (%2): %3").arg(rule.title, rule.code).arg(count), 9.0);
    title.bold = true;
    return {title, line(QStringLiteral("GroupLine"), {Left, RowHeight}, {Left + Width, RowHeight}, 0.3)};
}

} // namespace

QString FindingsSummary(int findings)
{
    return findings == 0 ? QStringLiteral("Проверка на отчета към НЗОК: няма забележки")
                         : QStringLiteral("Проверка на отчета към НЗОК: %1 забележки").arg(findings);
}

PageDescription ClaimsCheckPage(const QList<ClaimFinding> &findings, const Period &period, const QString &medicName)
{
    PageDescription form(QStringLiteral("chkClaims"), A4);
    form.title = QStringLiteral("Проверка преди отчета");
    AddReportHeading(form, QStringLiteral("за проверката на редовете към НЗОК преди отчета"), period, medicName);
    form.band.top = 44.0;
    form.band.bottom = form.size.height() - 14.0;
    form.band.headerHeight = 8.0;
    form.band.header = ruledlist::Heads(Columns);
    form.band.rowHeight = RowHeight;
    form.band.rows << QList<PageItem>{text(QStringLiteral("Summary"), QRectF(Left, 0.5, Width, RowHeight - 0.5),
                                           FindingsSummary(int(findings.size())), 9.0)};
    for (qsizetype first = 0; first < findings.size();) {
        qsizetype end = first;
        while (end < findings.size() && findings.at(end).rule == findings.at(first).rule)
            ++end;
        form.band.rows << groupRow(ClaimRuleOf(findings.at(first).rule), int(end - first));
        for (qsizetype k = first; k < end; ++k)
            form.band.rows << findingRow(findings.at(k));
        first = end;
    }
    return form;
}

} // namespace reports
