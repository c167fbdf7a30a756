#pragma once

#include <QApplication>

// The hourglass for as long as a piece of work runs, put back however the work ends.
class BusyPointer final
{
public:
    BusyPointer() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~BusyPointer() { QApplication::restoreOverrideCursor(); }
    BusyPointer(const BusyPointer &) = delete;
    BusyPointer &operator=(const BusyPointer &) = delete;
};
