#pragma once
#include "compare/QtComparePainter.h"

#include <QScrollBar>

namespace nib {

/// The vertical scroll bar, with the changes at their heights.
class CompareBar final : public QScrollBar {
public:
    /// Both outlive it.
    CompareBar(CompareModel& model, const QtComparePainter& painter)
        : QScrollBar(Qt::Vertical), model_(model), painter_(painter)
    {
    }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    CompareModel& model_;
    const QtComparePainter& painter_;
};

} // namespace nib
