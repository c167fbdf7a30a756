#include "patients/ChartMarks.h"

#include "patients/ChartCodes.h"

#include <QHash>

namespace chartmarks {
namespace {

using enum Mark;

// Stored code -> findings. The combined codes carry two findings; "Rr" is roots left, as "R"
// is one; "*" is a milk tooth with nothing found.
const QHash<QString, QList<Mark>> &findingsOfCode()
{
    static const QHash<QString, QList<Mark>> findings{
        {QStringLiteral("C"), {Caries}},
        {QStringLiteral("P"), {Pulpitis}},
        {QStringLiteral("G"), {Gangrene}},
        {QStringLiteral("R"), {Root}},
        {QStringLiteral("O"), {Filling}},
        {QStringLiteral("E"), {Missing}},
        {QStringLiteral("K"), {Crown}},
        {QStringLiteral("X"), {Artificial}},
        {QStringLiteral("Pa"), {Periodontosis}},
        {QStringLiteral("F"), {Fracture}},
        {QStringLiteral("I"), {Mobility1}},
        {QStringLiteral("II"), {Mobility2}},
        {QStringLiteral("III"), {Mobility3}},
        {QStringLiteral("OC"), {Filling, Caries}},
        {QStringLiteral("OP"), {Filling, Pulpitis}},
        {QStringLiteral("Rr"), {Root}},
        {chartcodes::MilkMark, {}},
    };
    return findings;
}

QString legendWordOf(const QString &code)
{
    for (const chartcodes::EntryCode &entry : chartcodes::entryCodes())
        if (entry.stored == code && !entry.legend.isEmpty())
            return entry.legend;
    return {};
}

QList<LegendEntry> buildLegend()
{
    const std::pair<Mark, const char *> order[] = {
        {Caries, "C"},    {Pulpitis, "P"},   {Gangrene, "G"},    {Root, "R"},           {Filling, "O"},
        {Missing, "E"},   {Crown, "K"},      {Artificial, "X"},  {Periodontosis, "Pa"}, {Fracture, "F"},
        {Mobility1, "I"}, {Mobility2, "II"}, {Mobility3, "III"},
    };
    QList<LegendEntry> entries;
    for (const auto &[mark, code] : order)
        entries << LegendEntry{mark, QString::fromLatin1(code), legendWordOf(QString::fromLatin1(code))};
    return entries;
}

} // namespace

ToothState stateOf(const QString &fieldText)
{
    const QHash<QString, QList<Mark>> &findings = findingsOfCode();
    for (const QString &code : {chartcodes::translate(fieldText), chartcodes::translate(fieldText.toUpper())}) {
        const auto found = findings.constFind(code);
        if (found != findings.constEnd())
            return {*found, {}};
    }
    if (fieldText.trimmed().isEmpty())
        return {};
    return {{}, fieldText};
}

const QList<LegendEntry> &legend()
{
    static const QList<LegendEntry> entries = buildLegend();
    return entries;
}

QString wordOf(Mark mark)
{
    for (const LegendEntry &entry : legend())
        if (entry.mark == mark)
            return entry.word;
    return {};
}

QString nameOf(Mark mark)
{
    switch (mark) {
    case Caries:
        return QStringLiteral("caries");
    case Filling:
        return QStringLiteral("filling");
    case Pulpitis:
        return QStringLiteral("pulpitis");
    case Gangrene:
        return QStringLiteral("gangrene");
    case Root:
        return QStringLiteral("root");
    case Missing:
        return QStringLiteral("missing");
    case Crown:
        return QStringLiteral("crown");
    case Artificial:
        return QStringLiteral("artificial");
    case Periodontosis:
        return QStringLiteral("periodontosis");
    case Fracture:
        return QStringLiteral("fracture");
    case Mobility1:
        return QStringLiteral("mobility1");
    case Mobility2:
        return QStringLiteral("mobility2");
    case Mobility3:
        return QStringLiteral("mobility3");
    }
    return {};
}

} // namespace chartmarks
