#pragma once
// An account whose items stand in memory, and the service over it.

#include "base/Error.h"
#include "hosts/ItemReader.h"
#include "language/Dialects.h"
#include "language/service/LanguageService.h"

#include <map>

namespace nib::test {

using MemoryItems = std::map<Text, std::map<Text, Text>>;

struct MemoryReader : ItemReader {
    explicit MemoryReader(MemoryItems& of) : items(of) {}
    std::vector<Text> Files() override { return Names(items); }
    std::vector<Text> Ids(TextView file) override { return Names(items.at(Text(file))); }
    std::optional<Text> Read(TextView file, TextView id) override
    {
        const auto at = items.find(Text(file));
        if (at == items.end() || !at->second.contains(Text(id)))
            throw Error(error_number::kPathNotFound, u"It is not there.");
        return at->second.at(Text(id));
    }
    void Stop() override {}

    MemoryItems& items;

private:
    template <typename Map>
    static std::vector<Text> Names(const Map& map)
    {
        std::vector<Text> names;
        for (const auto& [name, value] : map) names.push_back(name);
        return names;
    }
};

/// Programs of the account DEMO, all of them read.
struct ServedItems {
    explicit ServedItems(MemoryItems all, AccountAccess access = {}) : items(std::move(all))
    {
        access.reader = std::make_unique<MemoryReader>(items);
        service.AddAccount(u"mvdb:*/DEMO", std::move(access));
        while (service.Work()) continue;
    }
    static Text Path(const Text& file, const Text& item) { return u"mvdb:*/DEMO/" + file + u"/" + item; }
    /// Opens it as it is stored; where it has a "|", the caret is there, and the sign is none of it.
    Position Open(const Text& file, const Text& item)
    {
        Position caret;
        std::vector<Text> lines = Split(items[file][item], u'\n');
        for (size_t i = 0; i < lines.size(); ++i) {
            const size_t at = lines[i].find(u'|');
            if (at == Text::npos) continue;
            lines[i].erase(at, 1);
            caret = {static_cast<int32_t>(at), static_cast<int32_t>(i)};
        }
        service.Open(Path(file, item), std::move(lines));
        return caret;
    }

    MemoryItems items;
    Dialects dialects;
    LanguageService service{{dialects.Find(u"common"), {}}};
};

} // namespace nib::test
