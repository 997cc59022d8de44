#pragma once
#include "documents/mvDocument.h"

#include <set>

namespace nib {

class Program;

/// What other programs did to the items of open documents: found out when the user comes back to the program and before
/// a save, and asked about once, one document after the other.
class OutsideChanges {
public:
    explicit OutsideChanges(Program& program) : program_(program) {}

    /// At all documents, unless the user is being asked something already.
    void Look();
    /// False when the document is not to be saved now.
    bool MaySave(mvDocument& document);

private:
    /// True when the present text may take the place of what is stored.
    bool Ask(mvDocument& document, StoredState state);
    bool AskAboutChange(mvDocument& document);
    bool AskAboutLoss(mvDocument& document);
    void Merge(mvDocument& document);
    bool MergeOnce(mvDocument& document);
    void Compare(mvDocument& document);
    void Keep(mvDocument& document);

    Program& program_;
    std::set<int32_t> asked_; ///< documents whose change the user has put off
    bool asking_ = false;
    bool copyWanted_ = false;
};

} // namespace nib
