#pragma once

#include <QList>
#include <QPointF>

// The outlines of the drawn teeth, each in a box of its own: x from 0 to 1 across the tooth,
// y from 0 at the root tips to 1 at the biting edge, the neck at Neck. An upper tooth is drawn
// as it stands; a lower one is the same turned over.
namespace toothoutlines {

enum class Kind { Incisor, Canine, Premolar, Molar };

inline constexpr double Neck = 0.48;

// By FDI number: the last digit says the kind; milk 4 and 5 are molars.
Kind kindOf(int tooth);

struct Outline final
{
    QList<QPointF> crown;
    QList<QList<QPointF>> roots;
};
const Outline &outlineOf(Kind kind);

} // namespace toothoutlines
