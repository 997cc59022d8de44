#include "compare/QtCompareBar.h"

#include <QPainter>
#include <QStyleOptionSlider>

#include <algorithm>

namespace nib {

void CompareBar::paintEvent(QPaintEvent* event)
{
    QScrollBar::paintEvent(event);
    const CompareRows& rows = model_.Rows();
    if (!model_.IsThere() || rows.Count() == 0) return;
    QStyleOptionSlider option;
    initStyleOption(&option);
    const QRect groove = style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarGroove, this);
    QPainter painter(this);
    int painted = -1;
    for (int32_t change = 0; change < rows.ChangeCount(); ++change) {
        const RowRange range = rows.RowsOf(change);
        const auto at = [&](int32_t row) { return static_cast<int>(int64_t{row} * groove.height() / rows.Count()); };
        const int top = std::max(at(range.first), painted + 1);
        const int bottom = std::max(at(range.last), top + 2);
        if (top > groove.height() || bottom <= painted) continue;
        painter.fillRect(groove.left() + groove.width() / 4, groove.top() + top, groove.width() / 2, bottom - top,
                         painter_.ChangeColor(rows.BlockOfChange(change).kind));
        painted = bottom - 1;
    }
}

} // namespace nib
