#pragma once
#include "language/account/Catalogue.h"

#include <functional>

namespace nib {

/// What is wrong in a program that only the other programs of its account tell: calls, and areas that they share.
class AccountFindings {
public:
    /// A program as it stands, be it open or stored; null when it is none.
    using Programs = std::function<std::shared_ptr<const ProgramFacts>(const ItemName&)>;

    /// All outlive this.
    AccountFindings(AccountIndex& index, Catalogue& catalogue, Programs programs)
        : index_(index), catalogue_(catalogue), programs_(std::move(programs))
    {
    }

    /// In no order.
    std::vector<ProgramFinding> Of(const ProgramFacts& program, const ItemName& name);

private:
    struct Look {
        const ProgramFacts& program;
        const ItemName& name;
        std::vector<ProgramFinding> found;

        void Tell(TextView code, TextRange at, Phrase message);
    };

    static void Count(Look& look, const CallSite& call, size_t takes, bool fewer);
    void Call(Look& look, const CallSite& call);
    void UnnamedCommon(Look& look, const CallSite& call, const ItemName& calleeName, const ProgramFacts& callee);
    void NamedCommon(Look& look, const CommonBlock& block);

    AccountIndex& index_;
    Catalogue& catalogue_;
    Programs programs_;
};

} // namespace nib
