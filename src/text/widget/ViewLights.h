#pragma once
// What is painted behind and beside the text: the caret's line, guides of indents, dots for blanks, bars of changes,
// and what belongs to the place of the caret.

#include "text/Matching.h"
#include "text/Occurrences.h"
#include "text/widget/ViewGeometry.h"

#include <QPainter>
#include <QRect>

#include <optional>
#include <vector>

namespace nib {

class ViewLights {
public:
    ViewLights(SourceView& model, LineCache& cache, ViewGeometry& geometry, const ViewMetrics& metrics,
               const ScreenColors& colors)
        : model_(model), cache_(cache), geometry_(geometry), metrics_(metrics), colors_(colors)
    {
    }

    /// The caret has moved or the text has changed.
    void Stale() { stale_ = true; }
    /// Before a paint, for lines that are scanned; answers those in a view of this height that look different now.
    std::vector<int32_t> Refresh(qreal height);
    /// Takes the name at the caret; true when it is another one.
    bool TakeName();
    /// Empty when there is none to be lit.
    const Text& Name() const { return name_; }

    void PaintBehind(QPainter& painter, const QRectF& area);
    void PaintBlanks(QPainter& painter, const QRectF& area);
    void PaintChanges(QPainter& painter, const QRectF& area);

private:
    SourceDocument& Document() { return model_.Document(); }
    std::vector<TextRange> WordsAtCaret();
    void PaintGuides(QPainter& painter, const QRectF& area);
    int32_t GuideIndent(int32_t line);
    int32_t IndentAt(int32_t line);
    void PaintMatches(QPainter& painter, int32_t line, qreal y);
    void PaintRange(QPainter& painter, const LineEntry& entry, qreal y, ColumnRange range, const QColor& color,
                    bool framed = false);
    void PaintFound(QPainter& painter, const QRectF& area);
    void Flush(QPainter& painter, const QColor& color);

    SourceView& model_;
    LineCache& cache_;
    ViewGeometry& geometry_;
    const ViewMetrics& metrics_;
    const ScreenColors& colors_;
    bool stale_ = true;
    std::optional<BlockMatch> block_;
    std::vector<TextRange> words_; ///< of it, or two brackets
    std::vector<TextRange> middles_;
    Text name_;
    std::optional<Occurrences> occurrences_;
    std::vector<QRect> rects_;
    int32_t blankLine_ = -1; ///< the empty line seen last, and the indent round it
    int32_t blankIndent_ = 0;
    Text scratch_;
};

} // namespace nib
