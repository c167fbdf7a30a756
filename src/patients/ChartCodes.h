#pragma once

#include <QList>
#include <QString>

// The entry codes of the dental chart: what the user types in a tooth field and what is stored.
namespace chartcodes {

struct EntryCode final
{
    QString typed;
    QString stored;
    QString legend; // the legend word, empty where the legend has none
};

// In the order in which a field's whole text is compared with them.
const QList<EntryCode> &entryCodes();

// The stored code for a text typed in a field: the first entry whose typed text equals the
// whole field exactly (no trimming), or the text unchanged.
QString translate(const QString &fieldText);

// "*": a milk tooth at this place with no finding.
inline const QString MilkMark = QStringLiteral("*");

} // namespace chartcodes
