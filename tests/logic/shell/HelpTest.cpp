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

const std::filesystem::path kFolder = NIB_SOURCE_DIR "/resources/help";

std::map<std::string, std::string> ReadPages(const std::filesystem::path& folder = kFolder)
{
    std::map<std::string, std::string> pages;
    for (auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.is_directory()) continue;
        std::ostringstream text;
        text << std::ifstream(entry.path()).rdbuf();
        pages[entry.path().filename()] = text.str();
    }
    return pages;
}

std::vector<std::string> All(const std::string& text, const std::regex& expression)
{
    std::vector<std::string> found;
    for (std::sregex_iterator at(text.begin(), text.end(), expression), end; at != end; ++at) found.push_back((*at)[1]);
    return found;
}

std::vector<std::string> All(const std::string& text, const char* pattern)
{
    return All(text, std::regex(pattern));
}

std::string Replaced(const std::string& text, const std::string& pattern, const char* by)
{
    return std::regex_replace(text, std::regex(pattern), by);
}

/// What a page has in every language: its blocks in their order, and in each the anchors, links, code and keys.
std::string ShapeOf(const std::string& page)
{
    constexpr std::pair<const char*, const char*> kKeys[] = {
        {"Strg", "Ctrl"},     {"Umschalt", "Shift"},  {"Hoch", "Up"},
        {"Herunter", "Down"}, {"Links", "Left"},      {"Rechts", "Right"},
        {"Entf", "Delete"},   {"Einfg", "Insert"},    {"Pos1", "Home"},
        {"Ende", "End"},      {"Eingabe", "Enter"},   {"Return", "Enter"},
        {"Escape", "Esc"},    {"Leertaste", "Space"}, {"R\u00fccktaste", "Backspace"}};
    static const std::regex block("<(title|h\\d|p|ul|li|table|tr|th|td|pre|br|img)\\b[^>]*>");
    static const std::regex inner(
        "((?:name|href)=\"[^\"]*\"|<[bi]>|<tt>[^<[]*|<code>[^<]*|"
        "(?:\\b(?:Ctrl|Shift|Alt)\\+)+[^ ,;:.<)]+|\\bF\\d+|^(?:Delete|Insert|Esc|Tab|Home)(?=</td>|,))");
    std::string text = Replaced(page, "\\s+", " ");
    for (auto& [german, english] : kKeys)
        text = Replaced(text, "([^a-z])" + std::string(german) + "\\b", ("$1" + std::string(english)).c_str());
    std::string shape;
    for (std::sregex_iterator at(text.begin(), text.end(), block), end; at != end; ++at) {
        const auto next = std::next(at);
        std::vector<std::string> parts =
            All(std::string((*at)[0].second, next == end ? text.cend() : (*next)[0].first), inner);
        std::sort(parts.begin(), parts.end());
        shape += (*at)[0].str() + '\n';
        for (const std::string& part : parts) shape += part + '\n';
    }
    return shape;
}

TEST(HelpTest, ContentsAreThePages)
{
    auto pages = ReadPages();
    std::ifstream resource(NIB_SOURCE_DIR "/resources/help.qrc");
    const std::string compiled{std::istreambuf_iterator<char>(resource), {}};
    std::set<std::string> listed;
    for (const HelpPage& page : kHelpPages) listed.insert(ToUtf8(page.file));
    EXPECT_EQ(listed.size(), pages.size());
    for (const std::string& file : listed) {
        EXPECT_EQ(All(pages[file], "<h1>(.*)</h1>").size(), 1) << file;
        EXPECT_NE(compiled.find("<file>help/" + file + "</file>"), std::string::npos) << file;
    }
    for (auto& folder : std::filesystem::directory_iterator(kFolder)) {
        if (!folder.is_directory()) continue;
        const std::string language = folder.path().filename();
        auto translated = ReadPages(folder.path());
        EXPECT_EQ(translated.size(), pages.size());
        for (auto& [file, text] : pages) {
            EXPECT_TRUE(IsValidUtf8(translated[file]));
            EXPECT_EQ(ShapeOf(translated[file]), ShapeOf(text)) << language << ' ' << file;
            EXPECT_EQ(All(translated[file], "<h1>(.*)</h1>"), All(translated[file], "<title>(.*)</title>")) << file;
            EXPECT_NE(compiled.find("<file>help/" + language + '/' + file), std::string::npos) << file;
        }
    }
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
