#pragma once

#include <QEvent>
#include <QFocusEvent>

// Whether a focus event is the user leaving an input for another one. The focus going away
// because another window (a message, a menu) came up is no leaving: the user has not moved on.
inline bool isFocusLeaving(const QEvent *event)
{
    if (event->type() != QEvent::FocusOut)
        return false;
    const auto reason = static_cast<const QFocusEvent *>(event)->reason();
    return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason;
}

inline bool isFocusArriving(const QEvent *event)
{
    if (event->type() != QEvent::FocusIn)
        return false;
    const auto reason = static_cast<const QFocusEvent *>(event)->reason();
    return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason;
}
