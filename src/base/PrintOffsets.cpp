#include "base/PrintOffsets.h"

#include "base/Settings.h"

#include <optional>
#include <utility>

namespace print {
namespace {

// One line per form that goes onto pre-printed paper.
const struct
{
    const char *form;
    Settings::Key x;
    Settings::Key y;
} offsetKeys[] = {
    {"rprKarton", Settings::Key::KartonOffsetX, Settings::Key::KartonOffsetY},
    {"rptSpec", Settings::Key::SpecOffsetX, Settings::Key::SpecOffsetY},
};

std::optional<std::pair<Settings::Key, Settings::Key>> keysOf(const QString &formName)
{
    for (const auto &entry : offsetKeys)
        if (formName == QLatin1String(entry.form))
            return std::pair{entry.x, entry.y};
    return std::nullopt;
}

} // namespace

bool hasOffset(const QString &formName) { return keysOf(formName).has_value(); }

QPointF offsetOf(const QString &formName)
{
    const auto keys = keysOf(formName);
    if (!keys)
        return {};
    Settings settings;
    return {settings.value(keys->first).toDouble(), settings.value(keys->second).toDouble()};
}

bool setOffset(const QString &formName, const QPointF &offsetMm)
{
    const auto keys = keysOf(formName);
    if (!keys)
        return false;
    Settings settings;
    settings.setValue(keys->first, offsetMm.x());
    settings.setValue(keys->second, offsetMm.y());
    return settings.sync();
}

} // namespace print
