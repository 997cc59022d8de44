#pragma once
#include "persistence/recovery/DocumentSession.h"

#include <vector>

namespace nib {

class Program;

/// The documents that were closed, to be had back one after the other.
class ClosedDocuments {
public:
    bool Any() const { return !states_.empty(); }
    /// It is about to be closed.
    void Remember(mvDocument& document);
    /// Opens the last one again, as it was looked at.
    void Reopen(Program& program);

private:
    std::vector<DocumentState> states_; ///< the last one last
};

/// Each closes with its questions, up to the first document that stays open.
void CloseOthers(Program& program, int32_t document);
/// Those whose tabs stand to the right of it.
void CloseRight(Program& program, int32_t document);
bool HasOthers(Program& program, int32_t document);
bool HasRight(Program& program, int32_t document);

} // namespace nib
