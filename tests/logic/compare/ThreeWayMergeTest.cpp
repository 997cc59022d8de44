#include "compare/ThreeWayMerge.h"

#include "../storage/TempFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

namespace nib::test::three_way_merge_test {

using Kind = MergeBlock::Kind;
using Texts = std::array<std::string, kMergeSides>;

void AppendLines(const MergeTexts& texts, const MergeBlock& block, MergeSide side, std::string& out)
{
    const MergeLines& text = texts[static_cast<size_t>(side)];
    const LineSpan span = block.Of(side);
    for (int32_t line = span.first; line < span.End(); ++line) {
        out += ToUtf8(text.At(line));
        if (text.HasEnd(line) || block.kind == Kind::Conflict) out += '\n';
    }
}

/// As git writes it down.
std::string Merged(const Texts& texts)
{
    const MergeTexts lines{MergeLines(FromUtf8(texts[0])), MergeLines(FromUtf8(texts[1])),
                           MergeLines(FromUtf8(texts[2]))};
    std::string out;
    for (const MergeBlock& block : MergeThree(lines).blocks) {
        if (block.kind != Kind::Conflict) {
            AppendLines(lines, block, block.kind == Kind::Theirs ? MergeSide::Theirs : MergeSide::Mine, out);
            continue;
        }
        out += "<<<<<<< mine\n";
        AppendLines(lines, block, MergeSide::Mine, out);
        out += "||||||| base\n";
        AppendLines(lines, block, MergeSide::Base, out);
        out += "=======\n";
        AppendLines(lines, block, MergeSide::Theirs, out);
        out += ">>>>>>> theirs\n";
    }
    return out;
}

struct Dice {
    std::mt19937 engine{7};

    int Below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(engine); }
    std::string Line() { return std::string(1, static_cast<char>('a' + Below(6))); }
};

std::string Joined(const std::vector<std::string>& lines, bool ended)
{
    std::string text;
    for (const std::string& line : lines) text += line + "\n";
    if (!ended && !text.empty()) text.pop_back();
    return text;
}

std::vector<std::string> Edited(std::vector<std::string> lines, Dice& dice)
{
    for (int edits = dice.Below(4); edits > 0; --edits) {
        const auto at = lines.begin() + dice.Below(static_cast<int>(lines.size()) + 1);
        const auto end = at + std::min<std::ptrdiff_t>(dice.Below(3), lines.end() - at);
        const auto place = lines.erase(at, end) - lines.begin();
        for (int more = dice.Below(3); more > 0; --more) lines.insert(lines.begin() + place, dice.Line());
    }
    return lines;
}

TEST(ThreeWayMergeTest, MergesAsGitDoes)
{
    constexpr int kTriples = 1000;
    Dice dice;
    TempFolder folder;
    std::vector<Texts> triples;
    for (int i = 0; i < kTriples; ++i) {
        std::vector<std::string> base(static_cast<size_t>(dice.Below(30)));
        for (std::string& line : base) line = dice.Line();
        Texts texts{Joined(base, dice.Below(4) > 0), {}, {}};
        for (size_t side = 1; side < kMergeSides; ++side) texts[side] = Joined(Edited(base, dice), dice.Below(4) > 0);
        for (size_t side = 0; side < kMergeSides; ++side)
            folder.File(std::to_string(i) + "." + std::to_string(side), texts[side]);
        triples.push_back(std::move(texts));
    }
    const std::string each = "git merge-file -q -p --zdiff3 -L mine -L base -L theirs $i.2 $i.0 $i.1 > $i.merged";
    const std::string all =
        "cd '" + folder.Path() + "' && for i in $(seq 0 " + std::to_string(kTriples - 1) + "); do " + each + "; done";
    std::system(all.c_str()); // NOLINT(cert-env33-c): what git answers is the number of conflicts
    for (int i = 0; i < kTriples; ++i) {
        const Texts& texts = triples[static_cast<size_t>(i)];
        ASSERT_EQ(Merged(texts), BytesOf(folder / (std::to_string(i) + ".merged"))) << "base\n"
                                                                                    << texts[0] << "\ntheirs\n"
                                                                                    << texts[1] << "\nmine\n"
                                                                                    << texts[2];
    }
}

} // namespace nib::test::three_way_merge_test
