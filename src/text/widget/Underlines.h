#pragma once
// Waves under parts of the text, and a bar at the edge of the margin beside their lines; lines that are marked as a
// whole.

#include "text/widget/ViewGeometry.h"

#include <QPainter>
#include <QRect>

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

namespace nib {

enum class Severity : uint8_t { Error, Warning, Hint };

/// Within one line; of no length it stands under the cell there.
struct Underline {
    TextRange range;
    Severity severity = Severity::Warning;
    friend bool operator==(const Underline&, const Underline&) = default;
};

class Underlines {
public:
    Underlines(LineCache& cache, ViewGeometry& geometry, const ViewMetrics& metrics, const ScreenColors& colors)
        : cache_(cache), geometry_(geometry), metrics_(metrics), colors_(colors)
    {
    }

    /// They ascend. Answers first and last line that look different now.
    std::optional<std::pair<int32_t, int32_t>> Set(std::vector<Underline> underlines);
    /// Takes them along with the text until others are set.
    void Follow(const TextChange& change);
    void Clear()
    {
        all_.clear();
        marked_.clear();
    }
    /// Lines, ascending, that are marked beside the text. Answers first and last line that look different now.
    std::optional<std::pair<int32_t, int32_t>> SetMarked(std::vector<int32_t> lines);
    bool HasMarked() const { return !marked_.empty(); }
    bool IsMarked(int32_t line) const { return std::binary_search(marked_.begin(), marked_.end(), line); }
    const std::vector<Underline>& All() const { return all_; }
    /// Lines that have one of that severity, those marked among the errors, ascending.
    std::vector<int32_t> Lines(Severity severity) const;

    void PaintWaves(QPainter& painter, const QRectF& area);
    void PaintMargin(QPainter& painter, const QRectF& area);

private:
    template <typename Visit>
    void ForEachInSight(const QRectF& area, Visit&& visit);
    void AddWave(const Underline& underline, qreal y);
    QColor ColorOf(Severity severity) const;

    LineCache& cache_;
    ViewGeometry& geometry_;
    const ViewMetrics& metrics_;
    const ScreenColors& colors_;
    std::vector<Underline> all_;
    std::vector<int32_t> marked_;
    std::array<std::vector<QRect>, 3> waves_;
};

} // namespace nib
