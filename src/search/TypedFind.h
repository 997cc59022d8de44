#pragma once
#include "search/FindEngine.h"

namespace nib {

/// Finding as one types: what has been typed so far is looked for from where the caret stood at the beginning, round
/// the end of the text and without a question.
class TypedFind {
public:
    enum class Outcome { Nothing, Found, Wrapped, NotFound, Faulty };

    /// All outlive it.
    TypedFind(DocumentServices& services, FindEngine& engine) : services_(services), engine_(engine) {}

    /// In the document in front; false when there is none. What is selected in one line is what is looked for.
    bool Begin();
    /// The text or a rule is another one.
    Outcome Typed();
    /// To the next hit, or the one before.
    Outcome Step(bool up);
    /// Why the last one was faulty.
    const Text& Fault() const { return fault_; }

private:
    std::shared_ptr<mvDocument> Front();
    Outcome Go(mvDocument& document, Position from, bool up, bool pastHit);

    DocumentServices& services_;
    FindEngine& engine_;
    std::weak_ptr<mvDocument> document_;
    Position origin_;
    bool recorded_ = false; ///< in the history, where it began
    Text fault_;
};

} // namespace nib
