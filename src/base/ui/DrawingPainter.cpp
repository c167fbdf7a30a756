#include "base/ui/DrawingPainter.h"

#include <QFont>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace drawing {
namespace {

QColor colourOf(Rgb rgb, bool grey)
{
    if (!grey)
        return QColor::fromRgb(rgb);
    const int level = greyOf(rgb);
    return QColor(level, level, level);
}

// A line that comes out thinner than a pixel and a half is drawn as the device's own one-pixel
// line: a screen draws those, dashed or not, many times faster than an outline of that width.
QPen penOf(const Shape &shape, bool grey, double scale)
{
    if (shape.penWidth <= 0.0)
        return Qt::NoPen;
    QPen pen(colourOf(shape.pen, grey), shape.penWidth);
    pen.setJoinStyle(Qt::RoundJoin);
    pen.setCapStyle(Qt::RoundCap);
    if (shape.penWidth * scale < 1.5) {
        pen.setCosmetic(true);
        pen.setWidth(1);
    }
    if (shape.dashed)
        pen.setDashPattern({3.0, 2.0});
    return pen;
}

QPainterPath pathOf(const Shape &shape)
{
    QPainterPath path;
    if (shape.kind == ShapeKind::Ellipse) {
        path.addEllipse(shape.rect);
    } else if (!shape.points.isEmpty()) {
        path.moveTo(shape.points.first());
        for (qsizetype i = 1; i < shape.points.size(); ++i)
            path.lineTo(shape.points.at(i));
        if (shape.kind == ShapeKind::Polygon)
            path.closeSubpath();
    }
    return path;
}

// Diagonal lines, a unit apart, clipped to the shape: a hatch that keeps its spacing at any scale.
void hatch(QPainter &painter, const QPainterPath &path, const QColor &colour)
{
    const QRectF bounds = path.boundingRect();
    painter.save();
    painter.setClipPath(path, Qt::IntersectClip);
    QPen pen(colour, 0.25);
    painter.setPen(pen);
    const double reach = bounds.width() + bounds.height();
    for (double x = bounds.left() - bounds.height(); x < bounds.left() + reach; x += 1.0)
        painter.drawLine(QPointF(x, bounds.bottom()), QPointF(x + bounds.height(), bounds.top()));
    painter.restore();
}

// Text is set at the pixel size it has on the device, outside the picture's scale, so that
// the glyphs come from the font's cache instead of being drawn as outlines.
void paintText(QPainter &painter, const Shape &shape, bool grey)
{
    const QTransform toDevice = painter.transform();
    const double scale = std::sqrt(std::abs(toDevice.determinant()));
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(std::max(1, int(std::lround(shape.textHeight * scale))));
    font.setBold(shape.bold);
    painter.save();
    painter.resetTransform();
    painter.setFont(font);
    painter.setPen(colourOf(shape.pen, grey));
    painter.drawText(toDevice.mapRect(shape.rect), int(shape.alignment), shape.text);
    painter.restore();
}

void paintShape(QPainter &painter, const Shape &shape, bool grey)
{
    if (shape.kind == ShapeKind::Text) {
        paintText(painter, shape, grey);
        return;
    }
    const bool closed = shape.kind != ShapeKind::Polyline;
    painter.setPen(penOf(shape, grey, std::sqrt(std::abs(painter.transform().determinant()))));
    painter.setBrush(closed && shape.fillStyle == FillStyle::Solid ? QBrush(colourOf(shape.fill, grey)) : Qt::NoBrush);
    if (shape.kind == ShapeKind::Ellipse)
        painter.drawEllipse(shape.rect);
    else if (closed)
        painter.drawPolygon(shape.points.constData(), int(shape.points.size()));
    else
        painter.drawPolyline(shape.points.constData(), int(shape.points.size()));
    if (closed && shape.fillStyle == FillStyle::Hatched)
        hatch(painter, pathOf(shape), colourOf(shape.fill, grey));
}

} // namespace

QTransform fitting(const Drawing &picture, const QRectF &target)
{
    if (picture.size.isEmpty())
        return {};
    const double scale = std::min(target.width() / picture.size.width(), target.height() / picture.size.height());
    const QSizeF room = target.size() - picture.size * scale;
    QTransform transform;
    transform.translate(target.left() + room.width() / 2.0, target.top() + room.height() / 2.0);
    transform.scale(scale, scale);
    return transform;
}

void paint(QPainter &painter, const Drawing &picture, const QRectF &target, bool grey)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(fitting(picture, target), true);
    for (const Shape &shape : picture.shapes)
        paintShape(painter, shape, grey);
    painter.restore();
}

} // namespace drawing
