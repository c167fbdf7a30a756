#include "reports/forms/FundSummary.h"

#include "base/Dialogs.h"
#include "patients/EgnRuleSetting.h"
#include "reports/ActivityCodes.h"
#include "reports/forms/ActivityReportWalk.h"
#include "store/Sql.h"

#include <array>
#include <limits>

namespace reports {
namespace {

// The counted columns of TempZOKC after Godini, Kod_103 left out: it counts nothing.
const std::array<QString, 6> CountedColumns{QStringLiteral("Kod_101"), QStringLiteral("Kod_301"),
                                            QStringLiteral("Kod_332"), QStringLiteral("Kod_333"),
                                            QStringLiteral("Kod_508"), QStringLiteral("Kod_509")};
// What each column counts, as the overflow message names it.
const std::array<QString, 6> ColumnCodes{QStringLiteral("101"), QStringLiteral("301-304"), QStringLiteral("332"),
                                         QStringLiteral("333"), QStringLiteral("508"), QStringLiteral("509")};

using GroupCounts = std::array<int, 6>;

// The column a code counts in, or -1 for a code the summary does not count.
int columnOf(const QString &code)
{
    if (code == QLatin1String("101"))
        return 0;
    if (IsFillingCode(code))
        return 1;
    static const QStringList rest{QStringLiteral("332"), QStringLiteral("333"), QStringLiteral("508"),
                                  QStringLiteral("509")};
    const qsizetype at = rest.indexOf(code);
    return at < 0 ? -1 : int(at) + 2;
}

struct Tally final
{
    EgnRule rule = EgnRule::System;
    std::array<GroupCounts, 2> groups{}; // under 18, over 18
    SkippedPatients skipped;

    void add(const ServiceLine &line)
    {
        const int column = columnOf(line.KodHelp);
        if (column < 0)
            return;
        const auto over = EgnOverEighteen(line.EGN, line.Data, rule);
        if (!over)
            skipped.add(line.EGN);
        else
            ++groups[*over ? 1 : 0][column];
    }
};

const std::array<QString, 2> &groupNames()
{
    static const std::array<QString, 2> names{UnderEighteenGroup, OverEighteenGroup};
    return names;
}

// The message for the first counter past the 16-bit range, or empty.
QString overflowOf(const Tally &tally, const Period &period)
{
    for (int group = 0; group < 2; ++group)
        for (int column = 0; column < int(CountedColumns.size()); ++column)
            if (tally.groups[group][column] > std::numeric_limits<qint16>::max())
                return CounterOverflowMessage(
                    QStringLiteral("дейностите с код %1 в група „%2“").arg(ColumnCodes[column], groupNames()[group]),
                    period);
    return {};
}

void writeRows(const QSqlDatabase &scratch, const Tally &tally)
{
    store::Transaction transaction(scratch);
    store::run(scratch, QStringLiteral("DELETE FROM TempZOKC"));
    QSqlQuery insert(scratch);
    const QString sql = QStringLiteral("INSERT INTO TempZOKC (Godini, %1) VALUES (?, ?, ?, ?, ?, ?, ?)")
                            .arg(QStringList(CountedColumns.begin(), CountedColumns.end()).join(QStringLiteral(", ")));
    if (!insert.prepare(sql))
        throw store::SqlError(scratch, insert);
    for (int group = 0; group < 2; ++group) {
        insert.addBindValue(groupNames()[group]);
        for (const int count : tally.groups[group])
            insert.addBindValue(count);
        if (!insert.exec())
            throw store::SqlError(scratch, insert);
    }
    transaction.commit();
}

} // namespace

Result<SkippedPatients> BuildFundSummary(const QSqlDatabase &clinic, const QSqlDatabase &scratch,
                                         const Period &period, const QString &medicCode)
{
    Tally tally;
    try {
        tally.rule = egnrule::practiceRule(clinic);
        WalkLinesWithProgress(clinic, {period, medicCode, LineOrder::ByDateThenCode}, 1,
                              [&tally](const ServiceLine &line) { tally.add(line); });
        const QString overflow = overflowOf(tally, period);
        if (!overflow.isEmpty())
            return Result<SkippedPatients>::failure(overflow);
        writeRows(scratch, tally);
    } catch (const store::SqlError &error) {
        return Result<SkippedPatients>::failure(error.message());
    }
    dialogs().information(DoneMessage);
    return Result<SkippedPatients>::success(tally.skipped);
}

} // namespace reports
