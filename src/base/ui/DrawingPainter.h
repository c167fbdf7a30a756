#pragma once

#include "base/Drawing.h"

#include <QRectF>
#include <QTransform>

class QPainter;

namespace drawing {

// The scale and place that fit a drawing whole into `target`, its proportions kept, centred.
QTransform fitting(const Drawing &picture, const QRectF &target);

// Draws the picture into `target` of the painter; `grey` turns every colour into its grey, as
// a black-and-white printer would.
void paint(QPainter &painter, const Drawing &picture, const QRectF &target, bool grey = false);

} // namespace drawing
