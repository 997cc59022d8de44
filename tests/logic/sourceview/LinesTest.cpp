#include "BufferModel.h"

#include "text/LineStore.h"

#include <gtest/gtest.h>

namespace nib::test {
namespace {

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

TEST(LineStore, SumsHoldThroughEditsAcrossChunks)
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

} // namespace
} // namespace nib::test
