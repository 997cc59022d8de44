#include "compare/history/ItemHistory.h"

#include "compare/history/VersionText.h"
#include "diagnostics/Guarded.h"
#include "documents/mvDocument.h"
#include "platform/posix/FileName.h"
#include "platform/posix/Process.h"

namespace nib {

ItemHistory::ItemHistory(DocumentServices& services, std::string folder, VersionKeeper::ToWindows toWindows)
    : services_(services), folder_(std::move(folder)), toWindows_(std::move(toWindows))
{
}

VersionKeeper* ItemHistory::Keeper()
{
    if (!keeper_ && !ended_ && toWindows_)
        keeper_ = std::make_unique<VersionKeeper>(toWindows_, [this](const HistoryPlace&, const Text& fault) {
            if (Trouble) Trouble(fault);
            if (Changed) Changed();
        });
    if (keeper_) keeper_->SetBounds({services_.settings.HistoryDays, services_.settings.HistoryMegabytes});
    return keeper_.get();
}

HistoryPlace ItemHistory::PlaceOf(const mvItem& item) const
{
    return HistoryPlace::Of({item.Provider(), item.ServerName(), item.Account(), item.Folder(), item.ItemID()},
                            folder_);
}

bool ItemHistory::Keeps(const mvItem& item) const
{
    return !ended_ && !folder_.empty() && toWindows_ && !item.ItemID().empty() &&
           services_.connection.KeepsHistory({item.Provider(), item.ServerName(), item.Account(), {}, {}});
}

void ItemHistory::Saved(const SavedText& saved)
{
    if (!Keeps(saved.item)) return;
    VersionKeeper* keeper = Keeper();
    if (!keeper) return;
    const bool local = saved.item.Provider() == kFileProvider;
    const Text host = local ? FromFileName(MachineName()) : saved.item.HostName();
    NewVersion version;
    version.time = saved.time;
    version.author = FromFileName(LoginName());
    version.item = saved.item.DisplayPath();
    version.host = host;
    version.account = saved.item.Account();
    NewVersion before = version;
    before.time = saved.beforeTime;
    before.author = host;
    before.wasRead = true;
    keeper->Keep({PlaceOf(saved.item), saved.before, std::move(before), saved.text, std::move(version)});
}

void ItemHistory::End()
{
    ended_ = true;
    keeper_.reset();
}

std::optional<VersionRepository> ItemHistory::RepositoryOf(const mvDocument& document, HistoryPlace& place) const
{
    const auto item = document.ItemObject();
    if (!item || folder_.empty()) return std::nullopt;
    place = PlaceOf(*item);
    return VersionRepository::Open(place.repository);
}

std::string ItemHistory::Last(const mvDocument& document) const
{
    HistoryPlace place;
    const auto repository = RepositoryOf(document, place);
    return repository ? repository->Last(place) : std::string();
}

std::vector<Version> ItemHistory::List(const mvDocument& document, const std::string& from, size_t count) const
{
    HistoryPlace place;
    const auto repository = RepositoryOf(document, place);
    return repository ? repository->List(from, count) : std::vector<Version>();
}

Text ItemHistory::TextOf(const mvDocument& document, const std::string& version) const
{
    HistoryPlace place;
    const auto repository = RepositoryOf(document, place);
    return repository ? VersionText(repository->Bytes(version)) : Text();
}

void ItemHistory::SetMessage(const mvDocument& document, const std::string& version, TextView message)
{
    HistoryPlace place;
    if (auto repository = RepositoryOf(document, place))
        repository->SetMessage(version, message, FromFileName(LoginName()));
    if (Changed) Changed();
}

void ItemHistory::BringBack(mvDocument& document, const std::string& version) const
{
    HistoryPlace place;
    const auto repository = RepositoryOf(document, place);
    if (!repository || !document.EnsureView().txtText().MayEdit()) return;
    document.BringBack(VersionText(repository->Bytes(version)));
}

void ItemHistory::AskAuthors(mvDocument& document, std::function<void(const AuthoredText&)> take)
{
    const auto item = document.ItemObject();
    VersionKeeper* keeper = item && document.View() && !folder_.empty() ? Keeper() : nullptr;
    if (!keeper) return take({});
    keeper->AskAuthors(PlaceOf(*item), document.AsWritten(), std::move(take));
}

} // namespace nib
