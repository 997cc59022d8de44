#include "text/widget/Glide.h"

#include <QStyle>
#include <QWidget>

#include <cmath>

namespace nib {

namespace {

constexpr qreal kLasts = 100; ///< milliseconds
constexpr int kFrame = 15;

} // namespace

Glide::Glide(std::function<void(const ViewGeometry::Place&, qreal)> show) : show_(std::move(show))
{
    timer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Step(); });
}

bool Glide::IsWelcome(const QWidget& widget)
{
    return widget.style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, &widget) > 0;
}

void Glide::Start(const ViewGeometry::Place& from, const ViewGeometry::Place& to, qreal pixels)
{
    from_ = from;
    to_ = to;
    pixels_ = pixels;
    clock_.start();
    timer_.start(kFrame);
    show_(from_, 0);
}

void Glide::Step()
{
    const qreal left = 1 - static_cast<qreal>(clock_.elapsed()) / kLasts;
    if (left <= 0) return Finish();
    show_(from_, std::round(pixels_ * (1 - left * left * left)));
}

void Glide::Finish()
{
    if (!timer_.isActive()) return;
    timer_.stop();
    show_(to_, 0);
}

} // namespace nib
