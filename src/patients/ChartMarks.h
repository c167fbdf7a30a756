#pragma once

#include <QList>
#include <QString>

// What a tooth field says about the tooth, as the drawn chart shows it: the findings of its
// code, or the text itself when no code of the chart names it. The field stays the record;
// this only reads it.
namespace chartmarks {

enum class Mark {
    Caries,
    Filling,
    Pulpitis,
    Gangrene,
    Root, // a root remnant
    Missing,
    Crown,
    Artificial,
    Periodontosis,
    Fracture,
    Mobility1,
    Mobility2,
    Mobility3,
};

struct ToothState final
{
    QList<Mark> marks;
    QString unread; // a text that no code names, shown as it stands
};

// The state a field's text stands for. A code still as typed ("1") or in small letters ("c")
// reads as the code it becomes when the field is left, so that the picture follows the typing.
ToothState stateOf(const QString &fieldText);

// The marks of the legend, in its order, with the code each stands for and the chart legend's
// word for it.
struct LegendEntry final
{
    Mark mark;
    QString code;
    QString word;
};
const QList<LegendEntry> &legend();

// The legend's word for a mark.
QString wordOf(Mark mark);

// A plain name of the mark, for the tags of the drawing: "caries", "mobility2".
QString nameOf(Mark mark);

} // namespace chartmarks
