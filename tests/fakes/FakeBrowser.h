#pragma once
#include "base/Error.h"
#include "hosts/ItemBrowser.h"

#include <map>
#include <set>

namespace nib {

/// Places kept in memory, under paths of the usual form: "mvdb:HOST/ACCOUNT/FILE/ITEM" and "file:/folder/name".
struct FakeBrowser : ItemBrowser {
    FakeBrowser()
    {
        AddPlace(u"mvdb:LIVE");
        AddPlace(u"file:/home/ann");
        AddPlace(u"file:/");
    }

    void AddPlace(TextView path) { places_.push_back(Entry(path, false)); }
    /// Adds the places above it too.
    void Add(TextView path, bool isItem = true)
    {
        if (!known_.insert(Text(path)).second) return;
        const Text parent = Parent(path);
        children_[parent].push_back(Entry(path, isItem));
        if (!isItem) children_[Text(path)];
        if (!parent.empty() && !Parent(parent).empty()) Add(parent, false);
    }
    BrowseEntry& At(TextView path)
    {
        for (BrowseEntry& entry : children_[Parent(path)])
            if (entry.path == path) return entry;
        throw Error(error_number::kFileNotFound, Text(path));
    }
    void Remove(TextView path) { children_.erase(Text(path)); }

    std::vector<BrowseEntry> Places() override { return places_; }
    std::vector<BrowseEntry> Children(TextView path) override
    {
        ++listings;
        if (denied.contains(Text(path))) throw Error(error_number::kPermissionDenied, Text(path) + u": not allowed");
        const auto found = children_.find(Text(path));
        if (found == children_.end()) throw Error(error_number::kPathNotFound, Text(path) + u": gone");
        return found->second;
    }
    Text LockHolder(TextView path) override
    {
        ++lockQuestions;
        const auto found = locks.find(Text(path));
        return found == locks.end() ? Text() : found->second;
    }
    Text Parent(TextView path) override
    {
        if (path == u"file:/") return {};
        const size_t slash = path.rfind(u'/');
        if (slash == TextView::npos) return {};
        return Text(path.substr(0, path.substr(0, slash) == u"file:" ? slash + 1 : slash));
    }
    Text Resolve(TextView place, TextView typed) override
    {
        if (typed.starts_with(u'/')) return Text(u"file:").append(typed);
        if (typed.starts_with(u"mvdb:")) return Text(typed);
        if (place.empty()) throw Error(error_number::kBadFileName, u"Choose a place first.");
        return Text(place) + (place.ends_with(u'/') ? u"" : u"/") + Text(typed);
    }

    std::set<Text> denied;
    std::map<Text, Text> locks;
    int listings = 0;
    int lockQuestions = 0;

private:
    static BrowseEntry Entry(TextView path, bool isItem)
    {
        BrowseEntry entry;
        entry.path = path;
        entry.name = path == u"file:/" ? path.substr(5) : path.substr(path.find_last_of(u"/:") + 1);
        entry.isItem = isItem;
        return entry;
    }

    std::vector<BrowseEntry> places_;
    std::set<Text> known_;
    std::map<Text, std::vector<BrowseEntry>> children_;
};

/// An account with two files and a home folder, as most tests of the picker want it.
inline void FillWithSample(FakeBrowser& browser)
{
    for (TextView path : {u"mvdb:LIVE/SALES/BP/MAIN", u"mvdb:LIVE/SALES/BP/MAIN2", u"mvdb:LIVE/SALES/BP/CUST*1",
                          u"mvdb:LIVE/SALES/VOC/LIST", u"file:/home/ann/notes.txt", u"file:/home/ann/plain",
                          u"file:/home/ann/.profile", u"file:/home/ann/work/a.bas"}) {
        browser.Add(path);
    }
}

} // namespace nib
