#pragma once
#include "compare/history/VersionKeeper.h"
#include "documents/DocumentServices.h"

#include <functional>
#include <memory>
#include <vector>

namespace nib {

class mvDocument;

/// The versions of items as documents and their windows know them.
class ItemHistory {
public:
    /// The services outlive it. Without a folder nothing is kept.
    ItemHistory(DocumentServices& services, std::string folder, VersionKeeper::ToWindows toWindows);

    bool Keeps(const mvItem& item) const;
    void Saved(const SavedText& saved);
    /// Waits until what was saved is kept, or is not. Nothing is kept any more after that.
    void End();

    /// Whatever shows the history is to look again.
    void LookAgain() const
    {
        if (Changed) Changed();
    }
    /// Empty where nothing is known of the document's item.
    std::string Last(const mvDocument& document) const;
    /// `count` versions from one back.
    std::vector<Version> List(const mvDocument& document, const std::string& from, size_t count) const;
    Text TextOf(const mvDocument& document, const std::string& version) const;
    void SetMessage(const mvDocument& document, const std::string& version, TextView message);
    /// Makes the text of a version that of the document, in one step of undo.
    void BringBack(mvDocument& document, const std::string& version) const;
    /// Who last changed the lines of the text in the window; answers later, with nothing where nobody knows.
    void AskAuthors(mvDocument& document, std::function<void(const AuthoredText&)> take);

    /// A version came, or what the user should see of the history is another.
    std::function<void()> Changed;
    /// Versions cannot be kept, for this reason; an empty one says that they can again.
    std::function<void(const Text& why)> Trouble;

private:
    std::optional<VersionRepository> RepositoryOf(const mvDocument& document, HistoryPlace& place) const;
    HistoryPlace PlaceOf(const mvItem& item) const;
    VersionKeeper* Keeper();

    DocumentServices& services_;
    const std::string folder_;
    const VersionKeeper::ToWindows toWindows_;
    const GitLibrary library_;
    std::unique_ptr<VersionKeeper> keeper_; ///< once there is something to keep
    bool ended_ = false;
};

} // namespace nib
