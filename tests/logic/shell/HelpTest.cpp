#include "shell/help/HelpIndex.h"
#include "shell/menus/MenuTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>

namespace nib::help_test {

std::map<std::string, std::string> ReadPages()
{
    std::map<std::string, std::string> pages;
    for (auto& entry : std::filesystem::directory_iterator(NIB_SOURCE_DIR "/resources/help")) {
        std::ostringstream text;
        text << std::ifstream(entry.path()).rdbuf();
        pages[entry.path().filename()] = text.str();
    }
    return pages;
}

std::vector<std::string> All(const std::string& text, const char* pattern)
{
    const std::regex expression(pattern);
    std::vector<std::string> found;
    for (std::sregex_iterator at(text.begin(), text.end(), expression), end; at != end; ++at) found.push_back((*at)[1]);
    return found;
}

TEST(HelpTest, ContentsAreThePages)
{
    auto pages = ReadPages();
    std::set<std::string> listed;
    for (const HelpPage& page : kHelpPages) {
        const std::string file = ToUtf8(page.file);
        listed.insert(file);
        EXPECT_EQ(All(pages[file], "<h1>(.*)</h1>"), std::vector<std::string>{ToUtf8(page.title)}) << file;
        EXPECT_TRUE(IsValidUtf8(pages[file]));
    }
    EXPECT_EQ(listed.size(), pages.size());
    std::ifstream resource(NIB_SOURCE_DIR "/resources/help.qrc");
    const std::string compiled{std::istreambuf_iterator<char>(resource), {}};
    for (const std::string& file : listed)
        EXPECT_NE(compiled.find("<file>help/" + file + "</file>"), std::string::npos) << file;
}

TEST(HelpTest, EveryCommandIsToldOnceAndLinked)
{
    std::map<std::string, std::string> tells;
    std::set<std::string> linked;
    auto pages = ReadPages();
    for (auto& [file, text] : pages) {
        for (const std::string& command : All(text, "<a name=\"(\\w+)\">"))
            EXPECT_TRUE(tells.emplace(command, file).second) << command << " is told twice";
    }
    for (auto& [file, text] : pages) {
        for (const std::string& link : All(text, "href=\"([^\"]*)\"")) {
            const std::string target = link.substr(0, link.find('#'));
            EXPECT_TRUE(pages.contains(target)) << file << " leads to " << link;
            if (target.size() == link.size()) continue;
            const std::string anchor = link.substr(target.size() + 1);
            EXPECT_EQ(tells[anchor], target) << file << " leads to " << link;
            if (file == "keys.html") linked.insert(anchor);
        }
    }
    for (const MenuToolRow& row : kMainMenu) {
        const std::string command = ToUtf8(row.key);
        EXPECT_TRUE(tells.contains(command)) << command;
        EXPECT_TRUE(linked.contains(command)) << command;
    }
    const auto menus = std::count_if(kMenus.begin(), kMenus.end(), [](auto& menu) { return *menu.menu != u'\0'; });
    EXPECT_EQ(tells.size(), std::size(kMainMenu) + menus) << "and the menus within menus";
}

TEST(HelpTest, Words)
{
    using Words = std::vector<Text>;
    EXPECT_EQ(WordsOf(u"Find & Replace: F3, (Ctrl+H)"), (Words{u"find", u"replace", u"f3", u"ctrl", u"h"}));
    EXPECT_EQ(WordsOf(u"\u00c4rger \U00010400x"), (Words{u"\u00e4rger", u"\U00010428x"}));
    EXPECT_EQ(WordsOf(u" ... "), Words{});
}

TEST(HelpTest, Search)
{
    HelpIndex index;
    index.AddPage(u"Editing", u"Undo takes back a change. See also locks.");
    index.AddPage(u"Locks", u"An item is locked while it is open.");
    index.AddPage(u"Search", u"Find text. Undo brings it back.");
    const std::pair<Text, std::vector<int32_t>> rows[] = {
        {u"", {0, 1, 2}},     {u" -- ", {0, 1, 2}}, {u"lock", {1, 0}},     {u"UNDO", {0, 2}},
        {u"undo chang", {0}}, {u"ocked", {}},       {u"search undo", {2}}, {u"undo nowhere", {}}};
    for (auto& [query, found] : rows) EXPECT_EQ(index.Find(query), found) << ToUtf8(query);
}

} // namespace nib::help_test
