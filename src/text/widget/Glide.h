#pragma once
#include "text/widget/ViewGeometry.h"

#include <QElapsedTimer>
#include <QTimer>

#include <functional>

class QWidget;

namespace nib {

/// Shows the way from one place to another in a few frames. Where it leads is settled before it begins: whoever wants
/// to know where the text stands ends it.
class Glide {
public:
    /// `show` is called for each frame: a start, and how many pixels from it.
    explicit Glide(std::function<void(const ViewGeometry::Place&, qreal)> show);

    /// Whether the desktop wants such things.
    static bool IsWelcome(const QWidget& widget);
    bool IsUnderWay() const { return timer_.isActive(); }
    void Start(const ViewGeometry::Place& from, const ViewGeometry::Place& to, qreal pixels);
    /// At its goal, at once.
    void Finish();
    /// Where it is.
    void Stop() { timer_.stop(); }

private:
    void Step();

    std::function<void(const ViewGeometry::Place&, qreal)> show_;
    QTimer timer_;
    QElapsedTimer clock_;
    ViewGeometry::Place from_;
    ViewGeometry::Place to_;
    qreal pixels_ = 0;
};

} // namespace nib
