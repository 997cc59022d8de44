#pragma once
#include "persistence/store/SettingsStore.h"
#include "platform/Desktop.h"
#include "search/AccountReplace.h"
#include "search/FindEngine.h"

#include <future>
#include <optional>

namespace nib {

struct AccountFile {
    Text name;
    bool chosen = false;
};

enum class FindingState { Idle, Searching, Asking, Replacing };

/// What the dialog shows and what the user has set in it.
struct AccountFindDialog {
    Text account;
    Text hostName;
    std::vector<AccountFile> files;
    Text pattern = u"*"; ///< of ids
    Text findText;
    Text replaceText;
    bool matchCase = false;
    bool wholeWord = false;
    bool regex = false;

    FindingState state = FindingState::Idle;
    bool readsFiles = false; ///< the list of files is on its way
    bool stopped = false;    ///< the last search, or the replacing, by the user
    bool listed = false;     ///< the results hold something of this search
    int32_t allFiles = 0;    ///< that are searched
    SearchCounts counts;
    Text fault; ///< for the user: what is wrong with the expression, why there are no files, or the search ended before
                ///< its time
};

/// Everything behind the dialog that searches and replaces in the items of an account: the search runs on its own, and
/// what it has found is listed as it arrives.
class AccountFind {
public:
    /// All outlive it.
    AccountFind(DocumentServices& services, Timers& timers, SettingsStore& store, clsRecentList& recentSearches)
        : services_(services), timers_(timers), store_(store), recentSearches_(recentSearches)
    {
    }
    AccountFind(const AccountFind&) = delete;
    AccountFind& operator=(const AccountFind&) = delete;

    /// The dialog comes up: in the account of the active document, or else the present one.
    void Open();
    void SetAccount(TextView name);
    /// The same that is looked for elsewhere, when the dialog comes up next.
    void TakeSearch(const FindDialog& dialog);
    bool CanFind() const;
    void Find() { Begin(false); }
    /// Searches, asks with what was found, and replaces it.
    void Replace() { Begin(true); }
    /// Leaves off between two items; true when there was something to stop.
    bool Stop();

    /// Brings to the front what was listed, unless something else is shown there by now.
    void ShowList();

    AccountFindDialog& Dialog() { return dialog_; }
    const clsRecentList& RecentSearches() const { return recentSearches_; }
    /// The dialog's state is another one.
    std::function<void()> onChange;

private:
    struct Listing {
        std::unique_ptr<ItemReader> reader;
        std::future<std::vector<Text>> files;
        Listing() = default;
        Listing(const Listing&) = delete;
        Listing& operator=(const Listing&) = delete;
        ~Listing()
        {
            if (reader) reader->Stop();
        }
    };

    void TakePlace();
    void ReadFiles();
    void TakeFiles();
    void KeepChosen();
    Text ChosenKey() const { return u"FindFiles " + ComposeHostPath(place_); }
    void Begin(bool replace);
    AccountQuery MakeQuery() const;
    void Poll(std::chrono::milliseconds interval);
    void Work();
    void TakeHits();
    void List(const FoundItem& item);
    bool BeginList(TextView title);
    void AddBlank() { services_.results->AddResultLine({}, 0, 0, false); }
    void AddHeader(const ItemKey& key);
    void SearchEnds(const SearchNews& news);
    bool MayReplace();
    void ReplaceSome();
    void ReplacingEnds();
    void Finish(const std::vector<Text>& summary);

    DocumentServices& services_;
    Timers& timers_;
    SettingsStore& store_;
    clsRecentList& recentSearches_;
    AccountFindDialog dialog_;
    ItemPlace place_; ///< the account
    Text ownFile_;    ///< of the active document
    std::unique_ptr<Listing> listing_;
    std::unique_ptr<AccountSearch> search_;
    std::unique_ptr<Timers::Timer> timer_;
    bool taken_ = false;     ///< what is looked for, from elsewhere
    bool working_ = false;   ///< a call on a host may let the timer ring once more
    int32_t listNumber_ = 0; ///< of the results that are this search's
    bool cut_ = false;       ///< the list is not whole

    bool replaces_ = false;
    AccountQuery query_; ///< of what is replaced
    Text replacement_;
    std::vector<ItemKey> found_; ///< items with hits
    size_t next_ = 0;            ///< of those, to be replaced in
    bool stops_ = false;         ///< before it
    int64_t replaced_ = 0;
    int32_t changed_ = 0;
};

} // namespace nib
