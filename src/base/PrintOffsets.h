#pragma once

#include <QPointF>
#include <QString>

// Forms printed onto the fund's pre-printed paper take an offset in millimetres, kept per
// form in the settings, because every printer feeds the paper a little differently. A form
// with no offset of its own prints where its description puts it.
namespace print {

bool hasOffset(const QString &formName);
QPointF offsetOf(const QString &formName); // (0, 0) for a form without one
// Keeps the offset; false when the settings file could not be written.
[[nodiscard]] bool setOffset(const QString &formName, const QPointF &offsetMm);

} // namespace print
