#pragma once
#include "language/IncludeSource.h"
#include "language/account/AccountIndex.h"

namespace nib {

/// The items of an account that its programs include, looked for where its compiler does: in the file that is named or
/// that of the program, then in files for such items.
class IncludeTexts final : public IncludeSource {
public:
    /// What stands in a window, which comes before what is stored; null when it does not.
    using OpenTexts = std::function<std::shared_ptr<const ProgramText>(const ItemName& name)>;

    /// The index outlives this, and so does the dialect.
    IncludeTexts(AccountIndex& index, const Dialect& dialect, std::vector<Text> files, OpenTexts open)
        : index_(index), dialect_(dialect), files_(std::move(files)), open_(std::move(open))
    {
    }

    Answer Find(TextView file, TextView item, std::shared_ptr<const ProgramText>& text) override;
    /// The item that is meant; none when it is not found.
    std::optional<ItemName> Resolve(TextView file, TextView item);

private:
    struct Known {
        Text stamp;
        std::shared_ptr<const ProgramText> text;
        uint64_t used = 0;
    };
    std::shared_ptr<const ProgramText> Stored(const ItemName& name);
    Answer WhyMissing(TextView file, TextView item);

    AccountIndex& index_;
    const Dialect& dialect_;
    std::vector<Text> files_;
    OpenTexts open_;
    std::map<ItemName, Known> known_;
    uint64_t clock_ = 0;
};

/// Where an item names what it includes, and what that is in its account.
inline std::optional<ItemName> Included(IncludeTexts& texts, const ItemName& name, const IncludeSite& site)
{
    return texts.Resolve(site.file.empty() ? name.file : site.file, site.item);
}

} // namespace nib
