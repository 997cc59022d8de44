#include "language/account/AccountIndex.h"
#include "hosts/accounts/AccountLink.h"
#include "language/Dialects.h"
#include "logic/storage/TempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <thread>

namespace nib::test::account_index_test {

using Clock = std::chrono::steady_clock;

/// An account in a folder and what is known of it. Facts are made in a way that can be seen through: a symbol for each
/// assignment, those of included items too.
struct AccountIndexTest : testing::Test {
    AccountIndexTest()
    {
        folder.Folder("accounts/DEMO/BP");
        folder.Folder("accounts/DEMO/INC");
        folder.File("accounts/DEMO/DATA/C1", "SMITH\n12 HIGH STREET\n1200.50\n");
    }

    AccountIndex::Options Options(const std::string& database, Text identity = u"1")
    {
        HostSettings settings;
        settings.root = folder / "accounts";
        auto reader =
            AccountLinks({}).at(u"accounts")(settings, FileSaver(folder.Path()))->Reader({{}, {}, u"DEMO", {}, {}});
        return {std::move(reader), dialects.Find(u"common"), database, std::move(identity), {}};
    }
    std::unique_ptr<AccountIndex> Index(const std::string& database = {}, const Text& identity = u"1")
    {
        AccountIndex::Options options = Options(database, identity);
        auto holder = std::make_shared<AccountIndex*>(nullptr);
        options.analyse = [this, holder](const ItemName& name, TextView text) {
            ++analysed;
            return Analyse(**holder, name, text);
        };
        auto index = std::make_unique<AccountIndex>(std::move(options));
        *holder = index.get();
        return index;
    }
    static ProgramFacts Analyse(AccountIndex& index, const ItemName& name, TextView text, int depth = 0)
    {
        ProgramFacts program;
        for (const Text& line : Split(text, u'\n')) {
            const Text word(Field(line, u' ', 1));
            Text second(Field(line, u' ', 2));
            if (second.ends_with(u'\r')) second.pop_back();
            if (word == u"CALL") program.calls.push_back({{}, second, 0, 0, false});
            if (line.find(u" = ") != Text::npos) {
                program.symbols.emplace_back().name = word;
                program.symbols.back().value = line;
            }
            if (word != u"INCLUDE") continue;
            program.includes.push_back({{}, {}, second, false});
            auto included = index.Find(u"INC", second);
            if (!included) included = index.Find(name.file, second);
            const auto inner = included && depth < 5 ? index.Read(*included) : std::nullopt;
            if (!inner) continue;
            for (Symbol& symbol : Analyse(index, *included, *inner, depth + 1).symbols)
                program.symbols.push_back(symbol);
        }
        program.outline.push_back({name.item, SymbolKind::Label, {}, 0, 0});
        return program;
    }
    static void Finish(AccountIndex& index)
    {
        for (int quiet = 0; quiet < 2;) quiet = index.Work(Clock::now() + std::chrono::milliseconds(5)) ? 0 : quiet + 1;
    }
    /// All that it knows.
    static std::vector<Text> Facts(AccountIndex& index)
    {
        std::vector<Text> facts;
        for (const auto& hit : index.Names().Find(u"", 10'000))
            facts.push_back(u"name " + hit.item.file + u" " + hit.name);
        for (char16_t letter = u'A'; letter < u'I'; ++letter) {
            for (const ItemName& item : index.ItemsNamed(Text(1, letter))) {
                const auto program = index.Get(item);
                facts.push_back(u"item " + item.file + u" " + item.item + (program ? u"" : u" none"));
                for (const Symbol& symbol : program ? program->symbols : std::vector<Symbol>())
                    facts.push_back(symbol.value);
            }
            for (ItemUse use : {ItemUse::Includes, ItemUse::Calls})
                for (const ItemName& item : index.Users(use, Text(1, letter)))
                    facts.push_back(Text(1, letter) + u" used by " + item.file + u" " + item.item);
        }
        std::sort(facts.begin(), facts.end());
        return facts;
    }

    std::string RandomText()
    {
        std::string text = "* A program\nZ = 0\n";
        for (int i = Below(6); i >= 0; --i) {
            const std::string letter(1, static_cast<char>('A' + Below(8)));
            text += Below(3) == 0   ? "INCLUDE " + letter + "\n"
                    : Below(2) == 0 ? "CALL " + letter + " (X)\n"
                                    : letter + " = " + std::to_string(Below(1000)) + "\n";
        }
        return text;
    }
    void RandomEdit()
    {
        const std::string file = Below(2) == 0 ? "BP/" : "INC/";
        const std::string path = folder / ("accounts/DEMO/" + file + static_cast<char>('A' + Below(8)));
        std::error_code ignored;
        if (Below(4) == 0)
            std::filesystem::remove(path, ignored);
        else
            folder.File(path.substr(folder.Path().size() + 1), RandomText());
    }
    int Below(int end) { return std::uniform_int_distribution(0, end - 1)(random); }

    TempFolder folder;
    Dialects dialects;
    std::mt19937 random{20};
    int analysed = 0;
};

TEST_F(AccountIndexTest, FollowsWhateverHappensInTheFolders)
{
    const std::string database = folder / "index.db";
    auto index = Index(database);
    auto other = Index(database); // another editor on the same one
    for (int round = 0; round < 60; ++round) {
        for (int edits = Below(4); edits >= 0; --edits) RandomEdit();
        if (round % 20 == 19) index = Index(database);
        Finish(*index);
        if (round % 3 == 0) Finish(*other);
        const auto scratch = Index();
        Finish(*scratch);
        const auto found = Facts(*index);
        const auto expected = Facts(*scratch);
        std::vector<Text> wrong;
        std::set_symmetric_difference(found.begin(), found.end(), expected.begin(), expected.end(),
                                      std::back_inserter(wrong));
        ASSERT_EQ(wrong, std::vector<Text>()) << round;
    }
    Finish(*other);
    EXPECT_EQ(Facts(*other), Facts(*index));
    EXPECT_TRUE(index->IsCertain());
}

TEST_F(AccountIndexTest, StartsFromWhatWasKept)
{
    folder.File("accounts/DEMO/BP/A", "INCLUDE B\nA = 1\n");
    folder.File("accounts/DEMO/INC/B", "B = 2\nC = 3\n");
    const std::string database = folder / "index.db";
    const auto facts = [&](const Text& identity = u"1") {
        const auto index = Index(database, identity);
        Finish(*index);
        return Facts(*index);
    };
    const auto first = facts();
    analysed = 0;
    EXPECT_EQ(facts(), first);
    EXPECT_EQ(analysed, 0);
    EXPECT_EQ(facts(u"2"), first) << "what was made under another version";
    EXPECT_EQ(analysed, 2);
    EXPECT_EQ(std::filesystem::status(database).permissions(), std::filesystem::perms(0600));

    // What an include has become while nobody looked is known to all that include it.
    folder.File("accounts/DEMO/INC/B", "B = 4\nC = 3\n");
    analysed = 0;
    EXPECT_NE(facts(u"2"), first);
    EXPECT_EQ(analysed, 2);
}

TEST_F(AccountIndexTest, BuildsABrokenDatabaseAnew)
{
    for (const char* name : {"A", "B", "C"}) folder.File(std::string("accounts/DEMO/BP/") + name, RandomText());
    const auto scratch = Index();
    Finish(*scratch);
    const auto expected = Facts(*scratch);
    const std::string database = folder / "index.db";
    for (int round = 0; round < 40; ++round) {
        {
            const auto index = Index(database);
            Finish(*index);
            Facts(*index); // which may be the first to come upon what is broken
            Finish(*index);
            ASSERT_EQ(Facts(*index), expected) << round;
        }
        std::string bytes = BytesOf(database);
        const auto size = static_cast<int>(bytes.size());
        if (round % 4 == 0)
            bytes.resize(static_cast<size_t>(Below(size)));
        else
            bytes.replace(static_cast<size_t>(Below(size / 4096)) * 4096, 4096,
                          std::string(4096, static_cast<char>(Below(256))));
        folder.File("index.db", bytes);
    }
}

} // namespace nib::test::account_index_test
