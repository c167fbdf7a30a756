#include "reports/forms/ActivityReportWalk.h"

#include "base/Dialogs.h"

#include <algorithm>

namespace reports {
namespace {

// The real dialog repaints on every move; a move per line would cost more than the line.
constexpr int BarStep = 256;

} // namespace

void WalkLinesWithProgress(const QSqlDatabase &clinic, const LineFilter &filter, int barFloor,
                           const std::function<void(const ServiceLine &)> &visit)
{
    const int count = CountLines(clinic, filter);
    if (count == 0)
        return;
    const auto bar = dialogs().progress(CountingMessage, std::max(count, barFloor));
    int position = 0;
    WalkLines(clinic, filter, [&](const ServiceLine &line) {
        ++position;
        if (position % BarStep == 0 || position == count)
            bar->setValue(position);
        visit(line);
    });
}

} // namespace reports
