#include "BufferModel.h"
#include "text/LineDiff.h"

#include <gtest/gtest.h>

#include <future>

namespace nib::test::lines_test {

struct Kept {
    Text text;
    uint32_t identity = 0;
    uint32_t control = 0;
};

constexpr auto kControlWord = static_cast<size_t>(LineWord::Control);
constexpr auto kIdentityWord = static_cast<size_t>(LineWord::Identity);

Text Stored(const LineStore& store, int32_t line)
{
    Text text;
    store.At(line).Units().AppendTo(text);
    return text;
}

/// Everything the store sums up, counted by walking.
void Compare(const LineStore& store, const std::vector<Kept>& model, Dice& dice)
{
    ASSERT_EQ(static_cast<size_t>(store.Count()), model.size());
    Nesting nesting;
    int32_t visible = 0;
    size_t units = 0;
    for (size_t i = 0; i < model.size(); ++i) {
        auto line = static_cast<int32_t>(i);
        ASSERT_EQ(Stored(store, line), model[i].text) << i;
        ASSERT_EQ(store.Word(line, kIdentityWord), model[i].identity) << i;
        if (i % 13 == 0) {
            ASSERT_EQ(store.VisibleBefore(line), visible) << i;
            ASSERT_EQ(store.NestingBefore(line), nesting) << i;
        }
        nesting.Follow(NestingOf(model[i].control));
        units += model[i].text.size();
        if (model[i].control & own_bits::kHidden) continue;
        if (i % 7 == 0) {
            ASSERT_EQ(store.VisibleLine(visible), line);
        }
        ++visible;
    }
    EXPECT_EQ(store.VisibleCount(), visible);
    EXPECT_EQ(store.UnitCount(), units);
    for (int32_t n = 0; n < 20; ++n) {
        int32_t line = dice.Below(store.Count());
        int32_t depth = 1 + dice.Below(3);
        int32_t open = depth;
        int32_t close = -1;
        for (int32_t i = line; i < store.Count() && close < 0; ++i) {
            Nesting own = NestingOf(model[static_cast<size_t>(i)].control);
            if (own.closes >= open) close = i;
            open += own.opens - own.closes;
        }
        ASSERT_EQ(store.FindClose(line, depth), close);
    }
}

/// Reads what the store held on a thread, lets it go there too, and tells how many lines differ.
std::future<int32_t> Reading(const LineStore& store, const std::vector<Kept>& model)
{
    return std::async(std::launch::async, [snapshot = store.Snapshot(), model]() mutable {
        int32_t differing = snapshot->LineCount() == static_cast<int32_t>(model.size()) ? 0 : 1;
        size_t at = 0;
        snapshot->ForEachLine([&](const LineRecord& line) {
            const Kept& kept = model[at++ % model.size()];
            Text text;
            line.Units().AppendTo(text);
            differing += text == kept.text && line.words[kIdentityWord] == kept.identity ? 0 : 1;
        });
        snapshot.reset();
        return differing;
    });
}

TEST(LineStore, SumsAndSnapshotsHoldThroughEditsAcrossChunks)
{
    for (uint32_t seed = 1; seed <= 6 && !testing::Test::HasFatalFailure(); ++seed) {
        SCOPED_TRACE(seed);
        Dice dice(seed);
        LineStore store;
        std::vector<Kept> model(1);
        if (dice.OneIn(2)) {
            Text text;
            for (int32_t i = 1; i < 2600; ++i) text += Decimal(i) + u"\n";
            store.Load(text);
            model.clear();
            for (Text& line : CutLines(text)) model.push_back({std::move(line)});
        }
        for (int32_t step = 0; step < 25 && !testing::Test::HasFatalFailure(); ++step) {
            std::future<int32_t> before = Reading(store, model);
            auto count = static_cast<int32_t>(model.size());
            int32_t line = dice.Below(count + 1);
            int32_t many = 1 + dice.Below(dice.OneIn(3) ? 1500 : 20);
            if (dice.OneIn(3) && count > many) {
                line = std::min(line, count - many);
                store.RemoveLines(line, many);
                model.erase(model.begin() + line, model.begin() + line + many);
            } else {
                store.InsertLines(line, many);
                model.insert(model.begin() + line, static_cast<size_t>(many), {});
            }
            count = static_cast<int32_t>(model.size());
            for (int32_t n = 0; n < 200; ++n) {
                int32_t at = dice.Below(count);
                Kept& kept = model[static_cast<size_t>(at)];
                kept.identity = static_cast<uint32_t>(dice.Below(1 << 30));
                kept.control = WithNesting(dice.OneIn(3) ? own_bits::kHidden : 0U, {dice.Below(2), dice.Below(2)});
                store.SetWord(at, kIdentityWord, kept.identity);
                store.SetWord(at, kControlWord, kept.control);
                Text text = dice.Line(12, u"abc\u0416");
                store.Replace(at, 0, kept.text.size() / 2, text);
                kept.text.replace(0, kept.text.size() / 2, text);
            }
            Compare(store, model, dice);
            EXPECT_EQ(before.get(), 0);
        }
    }
}

TEST(LineStore, AFewLinesDoNotKeepTheRoomOfMany)
{
    LineStore store;
    store.InsertLines(0, 200'000);
    EXPECT_LT(store.MemoryUse(), 200'000 * 60u);
    store.RemoveLines(1, 200'000);
    EXPECT_LT(store.MemoryUse(), 100'000u);
}

TEST(LineStore, NestingFollowsAndSaturates)
{
    EXPECT_EQ(NestingOf(WithNesting(0xFFu, {3, 5})), (Nesting{3, 5}));
    EXPECT_EQ(WithNesting(WithNesting(0xFFu, {3, 5}), {}), 0xFFu);
    EXPECT_EQ(NestingOf(WithNesting(0, {1000, 2000})), (Nesting{own_bits::kMostNesting, own_bits::kMostNesting}));
    Nesting nesting{1, 2};
    nesting.Follow({5, 1});
    EXPECT_EQ(nesting, (Nesting{4, 1}));
}

Text RandomText(std::mt19937& random, int mostLines, int kinds)
{
    Text text;
    for (auto lines = std::uniform_int_distribution(0, mostLines)(random); lines > 0; --lines) {
        const int kind = std::uniform_int_distribution(0, kinds)(random);
        text += kind == 0 ? Text(u"\r\n") : Text(static_cast<size_t>(kind), u'x') + Decimal(kind) + u"\r\n";
    }
    return std::uniform_int_distribution(0, 1)(random) ? text + u"end" : text;
}

size_t CommonLines(const std::vector<TextView>& a, const std::vector<TextView>& b)
{
    std::vector<std::vector<size_t>> best(a.size() + 1, std::vector<size_t>(b.size() + 1));
    for (size_t i = 1; i <= a.size(); ++i)
        for (size_t j = 1; j <= b.size(); ++j)
            best[i][j] = a[i - 1] == b[j - 1] ? best[i - 1][j - 1] + 1 : std::max(best[i - 1][j], best[i][j - 1]);
    return best.back().back();
}

TEST(LineDiff, TakesAndGivesAsFewLinesAsCanBe)
{
    std::mt19937 random(71);
    for (int round = 0; round < 2000; ++round) {
        const Text before = RandomText(random, 14, 1 + round % 6);
        const Text after = RandomText(random, 14, 1 + round % 6);
        const auto a = LinesOf(before);
        const auto b = LinesOf(after);
        size_t gone = 0;
        int32_t at = 0;
        std::vector<TextView> made;
        for (const LineHunk& hunk : DiffLines(a, b)) {
            made.insert(made.end(), a.begin() + at, a.begin() + hunk.oldLine);
            ASSERT_EQ(static_cast<int32_t>(made.size()), hunk.newLine);
            made.insert(made.end(), b.begin() + hunk.newLine, b.begin() + hunk.newLine + hunk.newCount);
            at = hunk.oldLine + hunk.oldCount;
            gone += static_cast<size_t>(hunk.oldCount);
        }
        made.insert(made.end(), a.begin() + at, a.end());
        ASSERT_EQ(made, b) << round;
        ASSERT_EQ(a.size() - gone, CommonLines(a, b)) << round;
    }
}

TEST(LineDiff, TextsWithoutAnythingInCommonAreComparedInTime)
{
    Text before;
    Text after;
    for (int32_t n = 0; n < 60'000; ++n) {
        before += Decimal(n) + u"\n";
        after += (n % 7 == 0 ? Decimal(n) : u"x" + Decimal(n)) + u"\n";
        if (n % 5 == 0) after += u"same\n";
    }
    const auto hunks = DiffLines(LinesOf(before), LinesOf(after));
    EXPECT_GT(hunks.size(), 1U);
    EXPECT_EQ(hunks.front().oldLine, 1);
}

TEST(LineDiff, ATextBecomesAnotherAndUndoGivesItBack)
{
    std::mt19937 random(72);
    for (int round = 0; round < 1500; ++round) {
        SourceDocument document;
        const Text before = RandomText(random, 20, 1 + round % 8);
        const Text after = RandomText(random, 20, 1 + round % 8);
        document.SetText(before);
        document.ClearUndo();
        const bool changed = ReplaceByLines(document, after);
        ASSERT_EQ(document.GetText(), after) << round;
        ASSERT_EQ(changed, before != after);
        ASSERT_EQ(document.CanUndo(), changed);
        document.Undo();
        ASSERT_EQ(document.GetText(), before) << round;
        ASSERT_FALSE(document.CanUndo());
    }
}

TEST(LineDiff, LinesInBothTextsStayThemselves)
{
    SourceDocument document;
    document.SetText(u"a\r\nb\r\nc\r\nd");
    document.ToggleBookmark(2);
    document.SetLineData(3, LineWord::Identity, 7);
    ReplaceByLines(document, u"new\r\na\r\nc\r\nd and more\r\ne");
    EXPECT_TRUE(document.HasBookmark(2));
    EXPECT_EQ(document.BookmarkCount(), 1);
    EXPECT_EQ(document.GetLineData(3, LineWord::Identity), 7U);
}

} // namespace nib::test::lines_test
