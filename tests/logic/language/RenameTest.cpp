// Names of DEMO and of programs made at random are given others, many times over: nothing but the names may change, and
// what is found wrong must stay the same.

#include "fakes/MemoryReader.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

namespace nib::test {
namespace {

constexpr int kRounds = 500; ///< of each account

using Random = std::minstd_rand;

MemoryItems Demo()
{
    MemoryItems items;
    const std::filesystem::path folder(NIB_SOURCE_DIR "/resources/accounts/DEMO/BP");
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(file), {}};
        items[u"BP"][FromUtf8(entry.path().filename().string())] = FromUtf8(bytes);
    }
    return items;
}

/// Programs that share COMMON and call each other, with some faults in them.
MemoryItems Made(Random& random)
{
    const TextView kLines[] = {u"@ = @ + 1",
                               u"IF @ > @ THEN @ = @:\"@ @\"",
                               u"GOSUB LOOK.@",
                               u"PRINT @:' @':OCONV(@, \"D\")",
                               u"CALL P@(@, @)",
                               u"@<1, @> = @[1, 2] ;* of @",
                               u"FOR @ = 1 TO @",
                               u"NEXT @",
                               u"READ @ FROM @, @ ELSE @ = ''",
                               u"LOOP WHILE @ DO @ -= 1 REPEAT",
                               u"CELL(@) = MOD(@, SIZE)",
                               u"BEGIN CASE\nCASE @ = @\n@ = SIZE\nEND CASE",
                               u"LOOK.@:",
                               u"RETURN",
                               u"LOCATE @ IN @ SETTING @ ELSE @ = 1"};
    const TextView kNames[] = {u"A", u"b", u"TOTAL", u"SHARED", u"BOTH", u"X.Y", u"K$1"};
    MemoryItems items;
    items[u"BP"][u"SHARE"] = u"COMMON /ALL/ SHARED, BOTH\nEQU SIZE TO 9\n";
    for (char16_t program = u'0'; program < u'6'; ++program) {
        Text text = Text(u"SUBROUTINE P") + program + u"(A, X.Y)\n$INCLUDE BP SHARE\nDIM CELL(9)\n";
        for (int line = 0; line < 40; ++line) {
            const TextView form = kLines[random() % std::size(kLines)];
            const bool counted = form.starts_with(u"GOSUB") || form.starts_with(u"CALL") || form.starts_with(u"LOOK");
            bool first = counted;
            for (char16_t c : form) {
                if (c != u'@')
                    text.push_back(c);
                else if (std::exchange(first, false))
                    text += Decimal(static_cast<int64_t>(random() % 6));
                else
                    text += kNames[random() % std::size(kNames)];
            }
            text += u"\n";
        }
        items[u"BP"][Text(u"P") + program] = text + u"END\n";
    }
    return items;
}

struct Renaming {
    explicit Renaming(MemoryItems all) : served(std::move(all))
    {
        for (const auto& [name, text] : served.items[u"BP"]) {
            std::vector<Text>& lines = texts[ServedItems::Path(u"BP", name)] = Split(text, u'\n');
            served.service.Open(ServedItems::Path(u"BP", name), lines);
        }
    }

    /// Where something is found wrong, without the words of it: those name names.
    Text Findings()
    {
        Text all;
        for (const auto& [path, lines] : texts)
            for (const ProgramFinding& one : served.service.Findings(path))
                all += path + u" " + Decimal(one.at.start.line) + u" " + one.code + u"\n";
        return all;
    }

    /// Empty when it was done. Each place held the old name, whole; columns of `at` move with those before it.
    Text Rename(const Text& path, Position& at, const Text& from, const Text& to)
    {
        const RenamePlan plan = served.service.Rename(path, at, to);
        for (const PathEdit& text : plan.edits) {
            std::vector<Text>& lines = texts.at(text.path);
            for (auto edit = text.edits.rbegin(); edit != text.edits.rend(); ++edit) {
                const auto [start, end] = edit->range;
                Text& line = lines[static_cast<size_t>(start.line)];
                const auto length = static_cast<size_t>(end.col - start.col);
                EXPECT_TRUE(EqualsNoCase(line.substr(static_cast<size_t>(start.col), length), from)) << ToUtf8(line);
                line.replace(static_cast<size_t>(start.col), length, edit->text);
                if (text.path == path && start.line == at.line && start.col < at.col)
                    at.col += static_cast<int32_t>(to.size()) - static_cast<int32_t>(length);
                served.service.Change(text.path, start.line, 1, {line});
            }
        }
        return plan.refusal;
    }

    ServedItems served;
    std::map<Text, std::vector<Text>> texts; ///< by path
};

void RenameMany(MemoryItems items, Random& random)
{
    Renaming account(std::move(items));
    const auto before = account.texts;
    const Text findings = account.Findings();
    const Dialect& words = *account.served.dialects.Find(u"common");
    int done = 0;
    for (int round = 0; round < kRounds; ++round) {
        const auto& [path, lines] = *std::next(before.begin(), static_cast<int64_t>(random() % before.size()));
        const ProgramFacts& facts = *account.served.service.Get(path);
        if (facts.occurrences.empty()) continue;
        const Occurrence one = facts.occurrences[random() % facts.occurrences.size()];
        const bool isElsewhere = facts.symbols[static_cast<size_t>(one.symbol)].kind == SymbolKind::External;
        const auto length = static_cast<size_t>(one.at.end.col - one.at.start.col);
        const Text name =
            lines[static_cast<size_t>(one.at.start.line)].substr(static_cast<size_t>(one.at.start.col), length);
        const Text other = u"NEW." + Text(random() % 12, u'N') + u"1";
        Position at = one.at.start;
        const Text refusal = account.Rename(path, at, name, other);
        if (!refusal.empty()) continue;
        ++done;
        ASSERT_NE(account.texts, before) << ToUtf8(name);
        ASSERT_EQ(account.Findings(), findings) << ToUtf8(path + u" " + name) << " line " << at.line + 1;
        // What is called is known from what is stored, and a name that is a word can be left alone.
        const Text back = account.Rename(path, at, other, name);
        ASSERT_TRUE(back.empty() || isElsewhere || !words.Find(name).empty())
            << ToUtf8(back) << ToUtf8(path + u" " + name) << " line " << at.line + 1;
        for (const auto& [text, now] : account.texts)
            for (size_t i = back.empty() ? 0 : now.size(); i < now.size(); ++i)
                ASSERT_TRUE(EqualsNoCase(now[i], before.at(text)[i])) << ToUtf8(before.at(text)[i]);
        // The name is written as at the place; elsewhere case may have differed.
        for (const auto& [text, now] : account.texts) {
            if (now == before.at(text)) continue;
            account.served.service.Change(text, 0, static_cast<int32_t>(now.size()), before.at(text));
        }
        account.texts = before;
    }
    EXPECT_GT(done, kRounds / 2);
}

TEST(Rename, ChangesNothingButTheName)
{
    Random random(71);
    RenameMany(Demo(), random);
    RenameMany(Made(random), random);
}

} // namespace
} // namespace nib::test
