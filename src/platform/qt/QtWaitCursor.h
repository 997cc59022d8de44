#pragma once
#include <QCursor>
#include <QGuiApplication>

namespace nib {

/// The hour-glass over the whole program while it lives. Nests.
class QtWaitCursor {
public:
    QtWaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~QtWaitCursor() { QGuiApplication::restoreOverrideCursor(); }
    QtWaitCursor(const QtWaitCursor&) = delete;
    QtWaitCursor& operator=(const QtWaitCursor&) = delete;
};

} // namespace nib
