#include "text/widget/ScrollMarks.h"

#include <QPainter>
#include <QStyleOptionSlider>

#include <algorithm>
#include <chrono>

namespace nib {

namespace {

constexpr int kRest = 200;                            ///< milliseconds without a change before marks are looked for
constexpr auto kSlice = std::chrono::milliseconds(2); ///< short enough for the next key not to wait
constexpr int kThick = 2;

constexpr uint32_t Bit(ScrollMarks::Kind kind)
{
    return 1U << static_cast<uint32_t>(kind);
}

struct KindRow {
    ScrollMarks::Kind kind;
    int lane; ///< third of the bar's width
    QColor ScreenColors::*color;
};

constexpr KindRow kRows[] = {
    {ScrollMarks::Kind::Saved, 0, &ScreenColors::saved},     {ScrollMarks::Kind::Unsaved, 0, &ScreenColors::unsaved},
    {ScrollMarks::Kind::Hit, 1, &ScreenColors::matchFrame},  {ScrollMarks::Kind::Bookmark, 2, &ScreenColors::bookmark},
    {ScrollMarks::Kind::Warning, 2, &ScreenColors::unsaved}, {ScrollMarks::Kind::Error, 2, &ScreenColors::hidden},
    {ScrollMarks::Kind::Found, 1, &ScreenColors::foundMark},
};

} // namespace

ScrollMarks::ScrollMarks(SourceView& model, const ScreenColors& colors)
    : QScrollBar(Qt::Vertical), model_(model), colors_(colors)
{
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, [this] { Ring(); });
}

void ScrollMarks::Stale()
{
    // Comes with each key: a timer that runs is left alone.
    if (timer_.isActive() && !gathering_) {
        staleAgain_ = true;
        return;
    }
    gathering_ = false;
    timer_.start(kRest);
}

void ScrollMarks::Ring()
{
    if (std::exchange(staleAgain_, false)) return timer_.start(kRest);
    if (!std::exchange(gathering_, true)) {
        next_.assign(static_cast<size_t>(std::max(Groove().height(), 0)), 0);
        row_ = 0;
        change_ = {0, 0};
    }
    Gather();
}

void ScrollMarks::SetName(const Text& name)
{
    hits_.reset();
    if (!name.empty()) hits_.emplace(name);
    Stale();
}

void ScrollMarks::SetFindings(Kind kind, std::vector<int32_t> lines)
{
    std::vector<int32_t>& known = findings_[static_cast<size_t>(kind)];
    if (std::exchange(known, std::move(lines)) != known) Stale();
}

uint32_t ScrollMarks::At(int row) const
{
    const auto at = static_cast<size_t>(row);
    return at < rows_.size() ? rows_[at] : 0;
}

QRect ScrollMarks::Groove() const
{
    QStyleOptionSlider option;
    initStyleOption(&option);
    return style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarGroove, this);
}

void ScrollMarks::Gather()
{
    SourceDocument& document = model_.Document();
    const auto end = std::chrono::steady_clock::now() + kSlice;
    const auto height = static_cast<int64_t>(next_.size());
    const int64_t count = document.VisibleCount();
    for (; row_ < next_.size(); ++row_) {
        const auto row = static_cast<int64_t>(row_);
        const int64_t first = row * count / height;
        if (row > 0 && first == (row - 1) * count / height) continue; // of the line that has its mark above
        const int64_t behind = std::max(first + 1, (row + 1) * count / height);
        next_[row_] = static_cast<uint8_t>(
            KindsIn(document.VisibleLine(static_cast<int32_t>(first)),
                    behind < count ? document.VisibleLine(static_cast<int32_t>(behind)) : document.LineCount()));
        if (std::chrono::steady_clock::now() < end) continue;
        ++row_;
        return timer_.start(0);
    }
    gathering_ = false;
    if (rows_ == next_) return;
    std::swap(rows_, next_);
    update();
}

uint32_t ScrollMarks::KindsIn(int32_t first, int32_t end)
{
    const SourceDocument& document = model_.Document();
    uint32_t kinds = 0;
    if (document.BookmarkCount() > 0) {
        int32_t line = first;
        while (line < end && !document.HasBookmark(line)) ++line;
        if (line < end) kinds |= Bit(Kind::Bookmark);
    }
    constexpr LineChange changes[] = {LineChange::Saved, LineChange::Unsaved};
    for (size_t i = 0; i < 2 && model_.Marks().changeBars; ++i) {
        if (change_[i] >= 0 && change_[i] < first) change_[i] = document.NextChange(first, changes[i]);
        if (change_[i] == 0) change_[i] = document.NextChange(0, changes[i]);
        if (change_[i] >= first && change_[i] < end) kinds |= Bit(i == 0 ? Kind::Saved : Kind::Unsaved);
    }
    if (hits_ && HasHit(first, end)) kinds |= Bit(Kind::Hit);
    for (Kind kind : {Kind::Warning, Kind::Error, Kind::Found}) {
        const std::vector<int32_t>& lines =
            kind == Kind::Found ? document.Lit().lines : findings_[static_cast<size_t>(kind)];
        const auto at = std::lower_bound(lines.begin(), lines.end(), first);
        if (at != lines.end() && *at < end) kinds |= Bit(kind);
    }
    return kinds;
}

bool ScrollMarks::HasHit(int32_t first, int32_t end)
{
    SourceDocument& document = model_.Document();
    bool found = false;
    for (int32_t line = first; line < end && !found; ++line) {
        if (document.LineLength(line) > kLongestRead) continue;
        const TextView text = document.LineText(line, scratch_);
        if (!hits_->MayBeIn(text)) continue;
        document.ScanLine(line, tokens_);
        hits_->InLine(text, tokens_, [&](ColumnRange) { found = true; });
    }
    return found;
}

void ScrollMarks::paintEvent(QPaintEvent* event)
{
    QScrollBar::paintEvent(event);
    if (rows_.empty()) return;
    QPainter painter(this);
    const QRect groove = Groove();
    const int lane = std::max(groove.width() / 3, 2);
    for (const KindRow& kind : kRows) {
        const QColor& color = colors_.*kind.color;
        const int left =
            kind.lane == 2 ? groove.right() + 1 - lane : groove.left() + kind.lane * (groove.width() - lane) / 2;
        for (size_t row = 0; row < rows_.size(); ++row)
            if (rows_[row] & Bit(kind.kind))
                painter.fillRect(left, groove.top() + static_cast<int>(row), lane, kThick, color);
    }
}

void ScrollMarks::resizeEvent(QResizeEvent* event)
{
    QScrollBar::resizeEvent(event);
    Stale();
}

} // namespace nib
