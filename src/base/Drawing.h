#pragma once

// A picture as plain data: outlines, fills, marks and texts in units of its own (millimetres
// on paper), with colours as 0xRRGGBB numbers. Nothing here paints: a screen draws it with
// base/ui/DrawingPainter.h scaled into a widget, and the print renderer draws it scaled into a
// page item, so the window and the paper show one picture. Tests read the shapes by their tags.

#include <QList>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <Qt>

namespace drawing {

using Rgb = quint32; // 0xRRGGBB

enum class ShapeKind {
    Polygon,  // closed outline through `points`
    Polyline, // open line through `points`
    Ellipse,  // inside `rect`
    Text,     // `text` centred in `rect`, `textHeight` units high
};

enum class FillStyle {
    None,
    Solid,
    Hatched, // diagonal lines in the fill colour
};

struct Shape final
{
    ShapeKind kind = ShapeKind::Polygon;
    QList<QPointF> points;
    QRectF rect;
    Rgb pen = 0x000000;
    double penWidth = 0.2; // units; 0 draws no outline
    bool dashed = false;
    Rgb fill = 0xFFFFFF;
    FillStyle fillStyle = FillStyle::None;
    QString text;
    double textHeight = 2.5;
    bool bold = false;
    Qt::Alignment alignment = Qt::AlignCenter;
    QString tag; // what the shape shows, for tests: "Z36:caries"
};

struct Drawing final
{
    QSizeF size; // units
    QList<Shape> shapes;

    // The shapes whose tag is `tag`, in drawing order.
    QList<const Shape *> tagged(const QString &tag) const;
    bool has(const QString &tag) const { return !tagged(tag).isEmpty(); }
};

// The grey a black-and-white printer makes of a colour, 0 (black) to 255 (white).
int greyOf(Rgb colour);

// The points of `points`, each x in 0..1 and y in 0..1 of `box`, placed in it; `flipped`
// mirrors them top to bottom (a lower tooth is an upper one turned over).
QList<QPointF> placed(const QList<QPointF> &points, const QRectF &box, bool flipped = false);

} // namespace drawing
