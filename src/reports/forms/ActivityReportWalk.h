#pragma once

#include "reports/PeriodLines.h"

#include <QSqlDatabase>

#include <functional>

// The counting walk of the activity report and the fund summary: the period's lines in the
// report's order under ProgDialog ("Изчакайте! Пресмятам времето за дейностите..."). An empty
// period shows no dialog. Throws store::SqlError.
namespace reports {

// `barFloor`: the least maximum the bar gets (the activity report's bar runs to 2 for one line).
void WalkLinesWithProgress(const QSqlDatabase &clinic, const LineFilter &filter, int barFloor,
                           const std::function<void(const ServiceLine &)> &visit);

} // namespace reports
