#pragma once
#include "platform/Desktop.h"

#include <set>

namespace nib::test {

struct FakeFonts final : Fonts {
    std::vector<Text> families{u"Arial", u"DejaVu Sans Mono"};
    std::set<Text> absent; ///< files that cannot be added
    std::vector<Text> added;
    std::vector<Text> removed;

    bool Add(TextView fileName) override
    {
        if (absent.contains(Text(fileName))) return false;
        added.emplace_back(fileName);
        return true;
    }
    void Remove(TextView fileName) override { removed.emplace_back(fileName); }
    std::vector<Text> Families() const override { return families; }
    Text ProgramFolder() const override { return u"/opt/nib"; }
};

} // namespace nib::test
