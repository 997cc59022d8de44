#pragma once
// Short texts in the margin, left of the numbers, for runs of lines.

#include "text/widget/ViewGeometry.h"

#include <QPainter>
#include <QString>

#include <vector>

namespace nib {

/// Of these lines, shown beside the first of them that is in sight.
struct MarginNote {
    int32_t first = 0;
    int32_t last = 0;
    QString text;
};

class MarginNotes {
public:
    MarginNotes(ViewGeometry& geometry, const ViewMetrics& metrics, const ScreenColors& colors)
        : geometry_(geometry), metrics_(metrics), colors_(colors)
    {
    }

    /// They ascend and lie apart.
    void Set(std::vector<MarginNote> notes);
    /// Takes them along with the text; a line that is edited loses its own.
    void Follow(const TextChange& change);
    /// They are of another text; their room stays.
    void Clear()
    {
        all_.clear();
        old_ = true;
    }
    /// The text has changed since they were set.
    bool AreOld() const { return old_; }
    const std::vector<MarginNote>& All() const { return all_; }
    /// Cells that the longest needs.
    int32_t Columns() const { return columns_; }

    void Paint(QPainter& painter, const QRectF& area);

private:
    ViewGeometry& geometry_;
    const ViewMetrics& metrics_;
    const ScreenColors& colors_;
    std::vector<MarginNote> all_;
    int32_t columns_ = 0;
    bool old_ = false;
};

} // namespace nib
