#include "search/AccountFind.h"

#include "diagnostics/Guarded.h"
#include "documents/mvDocument.h"
#include "search/FindEngine.h"

#include <algorithm>

namespace nib {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kBetweenLooks{50};
constexpr size_t kNumberDigits = 4;

Text ListedNumber(int32_t line)
{
    Text number = Decimal(line + 1);
    if (number.size() < kNumberDigits) number.insert(0, kNumberDigits - number.size(), u'0');
    return number + u" ";
}

Text Seconds(milliseconds time)
{
    const int64_t tenths = (time.count() + 50) / 100;
    return Decimal(tenths / 10) + u"." + Decimal(tenths % 10) + u" s";
}

/// In sentences, behind `first` unless that is empty.
std::vector<Text> Summary(const SearchCounts& counts, Text first = {})
{
    std::vector<Text> all;
    if (!first.empty()) all.push_back(std::move(first));
    all.push_back(u"Hits: " + Decimal(counts.hits) + u". Items with hits: " + Decimal(counts.itemsWithHits) + u" of " +
                  Decimal(counts.items) + u". Files: " + Decimal(counts.files) + u". Time: " + Seconds(counts.time) +
                  u".");
    if (counts.skipped > 0) all.push_back(u"Skipped because they are no texts: " + Decimal(counts.skipped) + u".");
    if (counts.failed > 0) all.push_back(u"Not readable: " + Decimal(counts.failed) + u".");
    return all;
}

} // namespace

// The account and its files

void AccountFind::Open()
{
    if (dialog_.state != FindingState::Idle) return;
    Guarded(
        services_.log, u"AccountFind.Open",
        [&] {
            TakePlace();
            const bool taken = std::exchange(taken_, false);
            if (auto document = services_.openDocuments.ById(services_.frame.ActiveDocument())) {
                SourceView& source = document->EnsureView().txtText();
                const Position caret = source.Caret();
                Text text = document->HasSelection()
                                ? document->SelectionIsMultiLine() ? Text() : document->GetSelectionText()
                                : GetCaretWord(source.Document().GetLine(caret.line), caret.col);
                if (!text.empty() && !taken) dialog_.findText = std::move(text);
            }
            ReadFiles();
        },
        [&](const Error& error) { dialog_.fault = error.description; });
}

void AccountFind::TakeSearch(const FindDialog& dialog)
{
    if (dialog_.state != FindingState::Idle) return;
    dialog_.findText = dialog.findText;
    dialog_.matchCase = dialog.matchCase;
    dialog_.wholeWord = dialog.wholeWord;
    dialog_.regex = dialog.regex;
    if (dialog.replaceMode) dialog_.replaceText = dialog.replaceText;
    taken_ = !dialog.findText.empty();
}

void AccountFind::TakePlace()
{
    const auto document = services_.openDocuments.ById(services_.frame.ActiveDocument());
    const auto item = document ? document->ItemObject() : nullptr;
    ownFile_.clear();
    if (item && item->Provider() == kHostProvider && !item->Database().empty()) {
        ownFile_ = item->Folder();
        place_ = {item->Provider(), item->ServerName(), item->Database(), {}, {}};
        dialog_.hostName = item->HostName();
    } else {
        const Location& host = services_.place.host;
        place_ = {Text(kHostProvider), host.ServerName, host.Database, {}, {}};
        const Text path = ComposeHostPath({Text(kHostProvider), host.ServerName, {}, {}, {}});
        const auto server = services_.connection.OpenServerForPath(path, true, false);
        dialog_.hostName = server->HostName();
        mvSession* session = place_.database.empty() ? server->Session() : nullptr;
        if (session) place_.database = session->AccountName();
    }
    dialog_.account = place_.database;
}

void AccountFind::SetAccount(TextView name)
{
    if (name == place_.database || dialog_.state != FindingState::Idle) return;
    dialog_.account = place_.database = name;
    ownFile_.clear();
    Guarded(
        services_.log, u"AccountFind.SetAccount", [&] { ReadFiles(); },
        [&](const Error& error) { dialog_.fault = error.description; });
}

void AccountFind::ReadFiles()
{
    listing_.reset();
    dialog_.readsFiles = false;
    dialog_.files.clear();
    dialog_.fault.clear();
    if (place_.database.empty()) return;
    const AutoSaveHold hold(services_.shell);
    auto listing = std::make_unique<Listing>();
    listing->reader = services_.connection.Reader(place_);
    listing->files = std::async(std::launch::async, [reader = listing->reader.get()] { return reader->Files(); });
    listing_ = std::move(listing);
    dialog_.readsFiles = true;
    Poll(kBetweenLooks);
}

void AccountFind::TakeFiles()
{
    if (listing_->files.wait_for(milliseconds(0)) != std::future_status::ready) return;
    const auto listing = std::exchange(listing_, nullptr);
    dialog_.readsFiles = false;
    const Text kept = kValueMark + store_.Get(ChosenKey(), u"") + kValueMark;
    for (Text& name : listing->files.get()) {
        const bool chosen = kept.find(kValueMark + name + kValueMark) != Text::npos;
        dialog_.files.push_back({std::move(name), chosen});
    }
    const auto choose = [&](auto&& fits) {
        for (AccountFile& file : dialog_.files) file.chosen = file.chosen || fits(file);
        return std::any_of(dialog_.files.begin(), dialog_.files.end(), [](auto& file) { return file.chosen; });
    };
    if (choose([](auto&) { return false; }) || choose([&](auto& file) { return file.name == ownFile_; })) return;
    choose([](auto&) { return true; });
}

void AccountFind::KeepChosen()
{
    Text names;
    for (const AccountFile& file : dialog_.files)
        if (file.chosen) names += (names.empty() ? Text() : Text(1, kValueMark)) + file.name;
    store_.Save(ChosenKey(), names);
}

// The search

bool AccountFind::CanFind() const
{
    const bool busy = dialog_.state == FindingState::Asking || dialog_.state == FindingState::Replacing;
    return !busy && !dialog_.findText.empty() &&
           std::any_of(dialog_.files.begin(), dialog_.files.end(), [](auto& file) { return file.chosen; });
}

AccountQuery AccountFind::MakeQuery() const
{
    AccountQuery query{dialog_.findText,
                       dialog_.matchCase,
                       dialog_.wholeWord,
                       dialog_.regex,
                       services_.settings.TabSize,
                       {},
                       dialog_.pattern,
                       {}};
    for (const AccountFile& file : dialog_.files)
        if (file.chosen) query.files.push_back(file.name);
    return query;
}

void AccountFind::Begin(bool replace)
{
    if (dialog_.state == FindingState::Searching) Stop();
    if (!CanFind()) return;
    Guarded(
        services_.log, u"AccountFind.Begin",
        [&] {
            recentSearches_.AddItem(dialog_.findText);
            KeepChosen();
            dialog_.fault.clear();
            dialog_.stopped = dialog_.listed = cut_ = false;
            dialog_.counts = {};
            replaces_ = replace;
            replacement_ = OneLine(dialog_.replaceText);
            found_.clear();
            query_ = MakeQuery();
            query_.Prepared().Prepared(replace ? replacement_ : Text()); // faults are told before anything begins
            dialog_.allFiles = static_cast<int32_t>(query_.files.size());
            AccountQuery query = query_;
            for (auto& document : services_.openDocuments.All()) {
                const auto item = document->ItemObject();
                if (item && document->View() && item->IsItem() && IsInAccount(*item, place_))
                    query.open[{item->Folder(), item->ItemID()}] = document->GetText();
            }
            const AutoSaveHold hold(services_.shell);
            search_ = std::make_unique<AccountSearch>(services_.connection.Reader(place_), std::move(query));
            dialog_.state = FindingState::Searching;
            Poll(kBetweenLooks);
        },
        [&](const Error& error) { dialog_.fault = error.description; });
}

bool AccountFind::Stop()
{
    if (dialog_.state == FindingState::Idle) return false;
    dialog_.stopped = true;
    if (search_) {
        const SearchNews news = search_->Take();
        search_.reset();
        dialog_.counts = news.counts;
        for (const FoundItem& item : news.items) List(item);
        Finish(Summary(dialog_.counts, u"Stopped."));
    } else if (dialog_.state == FindingState::Replacing) {
        stops_ = true;
        if (!working_) ReplacingEnds(); // else once the item is through
    }
    return true;
}

void AccountFind::Poll(milliseconds interval)
{
    timer_.reset();
    timer_ = timers_.Every(interval, [this] {
        if (std::exchange(working_, true)) return;
        Guarded(
            services_.log, u"AccountFind.Poll", [&] { Work(); },
            [&](const Error& error) {
                search_.reset();
                dialog_.state = FindingState::Idle;
                dialog_.fault = error.description;
            });
        working_ = false;
        if (!listing_ && dialog_.state == FindingState::Idle) timer_.reset();
        if (onChange) onChange();
    });
}

void AccountFind::Work()
{
    if (listing_) TakeFiles();
    if (search_) TakeHits();
    if (dialog_.state == FindingState::Replacing) ReplaceSome();
}

void AccountFind::TakeHits()
{
    const SearchNews news = search_->Take();
    dialog_.counts = news.counts;
    for (const FoundItem& item : news.items) List(item);
    // Something else is shown there now, and whoever asked for it wants to read it.
    const bool replaced = dialog_.listed && (!services_.results || services_.results->ListNumber() != listNumber_);
    cut_ = cut_ || news.cut;
    if (!replaced && !news.ended) return;
    search_.reset();
    if (replaced)
        dialog_.state = FindingState::Idle;
    else
        SearchEnds(news);
}

bool AccountFind::BeginList(TextView title)
{
    if (!services_.results) return false;
    if (dialog_.listed) return services_.results->ListNumber() == listNumber_;
    services_.results->ResetResults(title);
    listNumber_ = services_.results->ListNumber();
    return dialog_.listed = true;
}

void AccountFind::AddHeader(const ItemKey& key)
{
    ItemPlace item = place_;
    std::tie(item.folder, item.itemId) = key;
    services_.results->AddItemHeader(OneLine(key.first + u" " + key.second), ComposeHostPath(item));
}

void AccountFind::List(const FoundItem& item)
{
    if (item.found.hits > 0) found_.push_back(item.key);
    if (item.found.lines.empty() && item.fault.empty()) return;
    if (!BeginList(u"Search Results")) return;
    AddBlank();
    AddHeader(item.key);
    if (!item.fault.empty()) services_.results->AddNote({OneLine(item.fault)});
    for (const FoundLine& line : item.found.lines) {
        const Text number = ListedNumber(line.line);
        services_.results->AddItemLine(number + line.text, line.column + static_cast<int32_t>(number.size()),
                                       line.length, line.line + 1);
    }
}

void AccountFind::SearchEnds(const SearchNews& news)
{
    dialog_.fault = news.fault;
    if (!news.fault.empty()) return Finish(Summary(news.counts, OneLine(news.fault)));
    if (replaces_ && !found_.empty() && MayReplace()) {
        dialog_.state = FindingState::Replacing;
        dialog_.listed = false;
        cut_ = false;
        stops_ = false;
        next_ = 0;
        replaced_ = changed_ = 0;
        BeginList(u"Replaced in Account");
        return Poll(milliseconds(0));
    }
    Finish(Summary(news.counts));
}

/// Ends with the last line of the list, where there is one.
void AccountFind::Finish(const std::vector<Text>& summary)
{
    dialog_.state = FindingState::Idle;
    if (!dialog_.listed || !BeginList({})) return;
    AddBlank();
    if (cut_)
        services_.results->AddNote({u"The list ends here: hits in more than " + Decimal(AccountSearch::kMostLines) +
                                    u" lines are counted only."});
    services_.results->AddNote(summary);
}

void AccountFind::ShowList()
{
    if (dialog_.listed && BeginList({})) services_.results->ShowResults({});
}

} // namespace nib
