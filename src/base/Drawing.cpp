#include "base/Drawing.h"

#include <cmath>

namespace drawing {

QList<const Shape *> Drawing::tagged(const QString &tag) const
{
    QList<const Shape *> found;
    for (const Shape &shape : shapes)
        if (shape.tag == tag)
            found << &shape;
    return found;
}

int greyOf(Rgb colour)
{
    const int red = int((colour >> 16) & 0xFF);
    const int green = int((colour >> 8) & 0xFF);
    const int blue = int(colour & 0xFF);
    return int(std::lround(0.299 * red + 0.587 * green + 0.114 * blue));
}

QList<QPointF> placed(const QList<QPointF> &points, const QRectF &box, bool flipped)
{
    QList<QPointF> result;
    result.reserve(points.size());
    for (const QPointF &point : points) {
        const double y = flipped ? 1.0 - point.y() : point.y();
        result << QPointF(box.left() + point.x() * box.width(), box.top() + y * box.height());
    }
    return result;
}

} // namespace drawing
