#pragma once
#include "documents/mvDocument.h"

#include <optional>

namespace nib {

enum class FindMode {
    Interactive, ///< one step from the caret on; positions survive edits between two steps
    List,        ///< all hits, to be listed
    Bookmark,    ///< all hits, to be marked
    Replace      ///< all hits, begun as a step from the caret; they are replaced when the pass ends, if not before
};

struct FindQuery {
    Text text;
    FindMode mode = FindMode::Interactive;
    bool up = false;
    bool matchCase = false;
    bool wholeWord = false;
    bool inSelection = false;
    bool allDocuments = false;
    /// Of the text and the rules above, and of the operation: its patience is that of all of it.
    std::shared_ptr<const TextPattern> pattern{};

    bool FromCaret() const { return mode == FindMode::Interactive || mode == FindMode::Replace; }
};

/// What a walk tells and asks on its way.
struct WalkEvents {
    /// The range being searched holds no further hit: the text may be changed now.
    std::function<void()> passEnds;
    /// The walk goes on at the other edge of the document if this answers true.
    std::function<bool(const FindQuery&)> mayWrap;
};

/// The way from hit to hit: through one document, round its end, on into the others. In positions, column -1 is the end
/// of the line and line -1 the last line, whatever they are when they are looked at.
class FindWalk {
public:
    FindWalk(mvDocuments& documents, WalkEvents events) : documents_(documents), events_(std::move(events)) {}

    /// The next step starts a new walk.
    void Reset();
    /// What is selected in a document is where a walk through the selection goes, also once that has been dropped.
    void KeepSelection(mvDocument& document);
    /// That one, unless another one has been made since; nothing when there is none.
    std::optional<TextRange> SelectedRange(mvDocument& current);
    /// Before a step of the user: goes on only where the last hit left the caret, and finds its lines again.
    void Rejoin(const FindQuery& query, mvDocument& current);
    /// Goes on from the last hit, or starts in `current`. Throws when the walk's document has been closed.
    bool Next(const FindQuery& query, mvDocument& current);

    /// Between the operations a document is not held, so that it ends when it is closed.
    void LetGo() { document_.reset(); }
    /// Of the last hit.
    const std::shared_ptr<mvDocument>& Document() const { return document_; }
    Position LastMatch() const { return lastMatch_; }
    Position LastEnd() const { return {lastMatch_.col + lastLength_, lastMatch_.line}; }
    int32_t LastLength() const { return lastLength_; }
    /// A hit was replaced, and the search goes on at `behind`.
    void MoveLastMatch(mvDocument& document, Position behind);
    /// Replacements yet to be made have moved the end of the last hit's line by this much.
    void ShiftLine(int32_t columns);

    int32_t matchCount = 0; ///< hits of this walk, as far as they are counted

private:
    struct Place {
        Position at;
        int32_t lineId = -1;
    };

    /// False when there is no selection to walk through.
    bool Restart(const FindQuery& query, mvDocument& current);
    void Mark(Place& place, Position at, bool withId);
    static int32_t LineOf(mvDocument& document, const Place& place);
    void FindDocument();
    bool Search(const FindQuery& query, Position at, bool exhausted);
    bool HitInRange(const FindQuery& query, Position from, FindHit& hit) const;
    bool StepPastHit(const FindQuery& query, Position& from) const;
    bool IsShown(mvDocument& current, const OrderedSelection& selection) const;
    bool WrapDue(const FindQuery& query) const;
    bool NextDocument();

    mvDocuments& documents_;
    WalkEvents events_;
    bool newSearch_ = true;
    Place start_;
    Place end_;
    TextRange shown_; ///< the hit that a step has selected last
    int32_t shownDocId_ = 0;
    int32_t keptDocId_ = 0; ///< of the selection kept
    Place keptStart_;
    Place keptEnd_;
    Position lastMatch_;
    int32_t lastLength_ = 0;
    int32_t lastMatchLineId_ = -1;
    std::vector<int32_t> visited_;
    int32_t searchDocId_ = 0;
    std::shared_ptr<mvDocument> document_;
    int32_t shiftedLine_ = -1;
    int32_t shift_ = 0;
};

} // namespace nib
