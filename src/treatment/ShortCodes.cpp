#include "treatment/ShortCodes.h"

namespace {

ShortCode row(const char *typed, const char *kod, const char *key, const char *treatment, const char *diagnosis)
{
    return {QString::fromUtf8(typed), QString::fromUtf8(kod), QString::fromUtf8(key), QString::fromUtf8(treatment),
            QString::fromUtf8(diagnosis)};
}

} // namespace

const QList<ShortCode> &shortCodeTable()
{
    static const QList<ShortCode> table{
        row("1", "101", "101", "", "Преглед"),
        row("1-3", "103", "101", "", "Преглед"),
        row("30", "301", "301", "Обт.амлгама", "Caries profunda"),
        row("31", "301", "301", "Обт.хим.композ.", "Caries profunda"),
        row("30-2", "301", "301", "Обт.амлгама", "Caries media"),
        row("31-2", "301", "301", "Обт.хим.композ.", "Caries media"),
        row("30-3", "301", "301", "Обт.амлгама", "Caries secunda"),
        row("31-3", "301", "301", "Обт.хим.композ.", "Caries secunda"),
        row("30-4", "301", "301", "Обт.амлгама", "Caries superf."),
        row("31-4", "301", "301", "Обт.хим.композ.", "Caries superf."),
        row("32", "332", "332", "Mед.лечение", "Pulpitis chr.ulcerosa"),
        row("33", "333", "333", "Мед.лечение", "Pulpitis chr.ulcerosa"),
        row("32-1", "332", "332", "Mед.лечение", "Gangr.complicata"),
        row("33-1", "301", "301", "Обт.хим.композ.", "Gangr.complicata"),
        row("58-1", "508", "508", "Екстракция", "DL-Luxacio"),
        row("58-2", "508", "508", "Екстракция", "Radis relicva"),
        row("58", "508", "508", "Екстракция", "R.gangr."),
        row("59", "509", "509", "Екстракция", "R.gangr."),
        row("59-1", "509", "509", "Екстракция", "Periodontitis chr.execerbata"),
        row("31-1", "301", "301", "Обт.хим.композ.", "Pulpitis chr.ulcerosa"),
        row("30-1", "301", "301", "Обт.амалгама", "Pulpitis chr.ulcerosa"),
        row("59-2", "509", "509", "Екстракция", "Causa protetica"),
        row("59-3", "509", "509", "Екстракция", "Causa ortodontica"),
        row("59-4", "509", "509", "Екстракция", "Parodontosis dentitis"),
    };
    return table;
}

const ShortCode *matchShortCode(const QString &cellText)
{
    const QString typed = cellText.trimmed();
    for (const ShortCode &code : shortCodeTable())
        if (code.typed == typed)
            return &code;
    return nullptr;
}
