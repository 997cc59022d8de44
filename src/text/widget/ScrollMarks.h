#pragma once
#include "text/Occurrences.h"
#include "text/SourceView.h"
#include "text/widget/ScreenColors.h"

#include <QScrollBar>
#include <QTimer>

#include <array>
#include <optional>
#include <vector>

namespace nib {

/// The vertical scroll bar, with a mark at the height of each line that is worth one. They are looked for in idle time,
/// a few milliseconds at once, and at most one of a kind for each pixel.
class ScrollMarks final : public QScrollBar {
public:
    enum class Kind : uint8_t { Saved, Unsaved, Hit, Bookmark, Warning, Error, Found };

    ScrollMarks(SourceView& model, const ScreenColors& colors);

    /// What is marked has changed.
    void Stale();
    /// The name whose places are hits; may be empty.
    void SetName(const Text& name);
    /// Lines, ascending, of a kind that the text does not tell of itself.
    void SetFindings(Kind kind, std::vector<int32_t> lines);
    /// Kinds at a height of the groove, a bit each.
    uint32_t At(int row) const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    static constexpr size_t kKinds = 7;

    QRect Groove() const;
    void Ring();
    void Gather();
    uint32_t KindsIn(int32_t first, int32_t end);
    bool HasHit(int32_t first, int32_t end);

    SourceView& model_;
    const ScreenColors& colors_;
    QTimer timer_;
    bool staleAgain_ = false;
    bool gathering_ = false;
    std::vector<uint8_t> rows_; ///< as painted
    std::vector<uint8_t> next_; ///< as far as it is gathered
    size_t row_ = 0;
    std::array<int32_t, 2> change_{}; ///< the next saved and unsaved line
    std::optional<Occurrences> hits_;
    std::array<std::vector<int32_t>, kKinds> findings_;
    std::vector<Token> tokens_;
    Text scratch_;
};

} // namespace nib
