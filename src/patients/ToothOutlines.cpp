#include "patients/ToothOutlines.h"

namespace toothoutlines {
namespace {

using Points = QList<QPointF>;

// A root as a narrowing wedge from the neck, between `left` and `right`, its tip at `tipX`.
Points root(double left, double right, double tipX, double tipY = 0.03)
{
    return {{left, Neck}, {tipX - 0.06, tipY + 0.05}, {tipX, tipY}, {tipX + 0.06, tipY + 0.05}, {right, Neck}};
}

Outline incisor()
{
    // Narrow at the neck, a straight biting edge.
    return {{{0.3, Neck}, {0.7, Neck}, {0.84, 0.93}, {0.78, 0.98}, {0.22, 0.98}, {0.16, 0.93}},
            {root(0.32, 0.68, 0.5)}};
}

Outline canine()
{
    // One pointed cusp and the longest root.
    return {{{0.27, Neck}, {0.73, Neck}, {0.86, 0.76}, {0.5, 0.99}, {0.14, 0.76}}, {root(0.3, 0.7, 0.5, 0.0)}};
}

Outline premolar()
{
    // Two cusps.
    return {{{0.22, Neck}, {0.78, Neck}, {0.88, 0.74}, {0.74, 0.97}, {0.5, 0.88}, {0.26, 0.97}, {0.12, 0.74}},
            {root(0.3, 0.7, 0.5, 0.08)}};
}

Outline molar()
{
    // Wide, three cusps, two roots.
    return {{{0.08, Neck},
             {0.92, Neck},
             {0.97, 0.76},
             {0.84, 0.98},
             {0.67, 0.9},
             {0.5, 0.98},
             {0.33, 0.9},
             {0.16, 0.98},
             {0.03, 0.76}},
            {root(0.12, 0.44, 0.24, 0.1), root(0.56, 0.88, 0.76, 0.1)}};
}

} // namespace

Kind kindOf(int tooth)
{
    const int place = tooth % 10;
    const bool milk = tooth / 10 >= 5;
    if (place <= 2)
        return Kind::Incisor;
    if (place == 3)
        return Kind::Canine;
    if (place <= 5 && !milk)
        return Kind::Premolar;
    return Kind::Molar;
}

const Outline &outlineOf(Kind kind)
{
    static const Outline outlines[] = {incisor(), canine(), premolar(), molar()};
    return outlines[int(kind)];
}

} // namespace toothoutlines
