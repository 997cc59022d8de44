// Replacing what a search of an account has found: asked once, then item by item in slices.

#include "documents/DocumentServices.h"
#include "search/AccountFind.h"

#include <tuple>

namespace nib {

namespace {

/// As long as the windows may wait for items that are replaced.
constexpr std::chrono::milliseconds kSlice{20};

} // namespace

bool AccountFind::MayReplace()
{
    dialog_.state = FindingState::Asking;
    if (onChange) onChange();
    const Text question = u"Replace " + Decimal(dialog_.counts.hits) + u" occurrences in " +
                          Decimal(static_cast<int64_t>(found_.size())) + u" items of account " + place_.database +
                          u"?\n\nItems that are open are changed in their windows and not saved. All others are saved "
                          u"at once, which cannot be undone.";
    constexpr int32_t kFlags = message_box::kYesNo | message_box::kQuestion | message_box::kSecondDefault;
    return services_.shell.ShowMessage(question, kFlags) == message_box::kAnswerYes;
}

void AccountFind::ReplaceSome()
{
    const auto start = std::chrono::steady_clock::now();
    while (next_ < found_.size()) {
        const ItemKey& key = found_[next_];
        ItemPlace item = place_;
        std::tie(item.folder, item.itemId) = key;
        const ReplaceOutcome outcome = ReplaceInItem(services_, query_, replacement_, item);
        ++next_;
        replaced_ += outcome.hits;
        changed_ += outcome.hits > 0 ? 1 : 0;
        if (BeginList({})) {
            AddHeader(key);
            services_.results->AddNote({outcome.report});
        }
        if (stops_) break;
        if (std::chrono::steady_clock::now() - start >= kSlice) return;
    }
    ReplacingEnds();
}

void AccountFind::ReplacingEnds()
{
    const size_t left = found_.size() - next_;
    std::vector<Text> summary{u"Replaced: " + Decimal(replaced_) + u". Items changed: " + Decimal(changed_) +
                              u". Items not changed: " + Decimal(static_cast<int64_t>(next_) - changed_) + u"."};
    if (left > 0) summary.push_back(u"Stopped before these items: " + Decimal(static_cast<int64_t>(left)) + u".");
    Finish(summary);
}

} // namespace nib
