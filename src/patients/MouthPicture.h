#pragma once

#include "base/Drawing.h"
#include "patients/ChartMarks.h"
#include "patients/ToothMap.h"

#include <QList>
#include <QStringList>

#include <array>

// The drawn chart: the 52 fields as a mouth, the permanent teeth in their two rows by FDI
// number, the milk teeth on rows of their own inside them, each tooth drawn by its kind with
// the findings of its field, and a legend below. The card, the treatment window and the
// patient's record print all draw this one picture.
namespace mouth {

// Index box-1: true where the place holds the milk tooth (the box of the card is on).
using MilkPlaces = std::array<bool, toothmap::BoxCount>;

// The places a stored chart shows as milk, as the card shows them when it comes to the front:
// those whose milk field holds something.
MilkPlaces milkPlacesOf(const QStringList &texts);

struct Tooth final
{
    int field = 0;
    int tooth = 0;
    bool present = true; // false: the other tooth of its place is in the mouth, this one is drawn faded
    QRectF box;          // where the tooth is drawn, in the picture's units
    QRectF area;         // where a click means this tooth: its box and its number
    chartmarks::ToothState state;
};

struct MouthPicture final
{
    drawing::Drawing drawing;
    QList<Tooth> teeth; // all 52, by field

    // The field of the tooth drawn at `point` (picture units), or 0 where no tooth is.
    int fieldAt(const QPointF &point) const;
};

// `texts` are Z1..Z52 as they stand (missing ones read as empty).
MouthPicture drawMouth(const QStringList &texts, const MilkPlaces &milkPlaces);
inline MouthPicture drawMouth(const QStringList &texts)
{
    return drawMouth(texts, milkPlacesOf(texts));
}

// The colour each finding is drawn in. Findings drawn on the same part of a tooth differ in
// grey as well, so that a black-and-white print keeps them apart.
drawing::Rgb colourOf(chartmarks::Mark mark);

} // namespace mouth
