#include "BufferModel.h"
#include "ToyLexer.h"

#include <gtest/gtest.h>

namespace nib::test::folding_test {

/// Blocks found by walking all lines.
struct NaiveBlocks {
    std::vector<int32_t> depthBefore; ///< open blocks in front of each line
    std::vector<int32_t> end;         ///< of the blocks that a line leaves open; -1 when it heads none
    std::vector<int32_t> opens;
    std::vector<int32_t> closes;
    std::vector<bool> inside; ///< of a block that opens above and closes below

    explicit NaiveBlocks(const std::vector<Text>& lines)
    {
        struct Open {
            size_t line;
        };
        std::vector<Open> open;
        end.assign(lines.size(), -1);
        opens.assign(lines.size(), 0);
        closes.assign(lines.size(), 0);
        inside.assign(lines.size(), false);
        std::vector<std::vector<int32_t>> closedAt(lines.size());
        for (size_t i = 0; i < lines.size(); ++i) {
            depthBefore.push_back(static_cast<int32_t>(open.size()));
            for (char16_t c : lines[i]) {
                if (c == u'{') open.push_back({i});
                if (c != u'}') continue;
                if (open.empty()) {
                    ++closes[i];
                    continue;
                }
                if (open.back().line != i) {
                    closedAt[open.back().line].push_back(static_cast<int32_t>(i));
                    ++closes[i];
                    for (size_t between = open.back().line + 1; between < i; ++between) inside[between] = true;
                }
                open.pop_back();
            }
            for (const Open& block : open) opens[i] += block.line == i ? 1 : 0;
        }
        for (size_t i = 0; i < lines.size(); ++i)
            if (opens[i] > 0 && closedAt[i].size() == static_cast<size_t>(opens[i])) end[i] = closedAt[i].back();
    }

    uint32_t Bits(size_t line, bool collapsed) const
    {
        uint32_t bits = inside[line] ? line_bits::kBlockInside : 0;
        if (collapsed) return bits | line_bits::kBlockCollapsed;
        if (end[line] >= 0) return bits | line_bits::kBlockHead;
        return closes[line] > 0 && depthBefore[line] > 0 ? bits | line_bits::kBlockEnd : bits;
    }
};

bool Collapsed(const SourceDocument& buffer, int32_t line)
{
    return (buffer.GetLineData(line, LineWord::Control) & line_bits::kBlockStateMask) == line_bits::kBlockCollapsed;
}

void CompareScan(SourceDocument& buffer)
{
    buffer.EnsureScanned();
    SourceDocument fresh;
    ToyLexer lexer;
    fresh.SetText(buffer.GetText());
    fresh.SetLexer(&lexer);
    fresh.EnsureScanned();
    std::vector<Token> tokens;
    std::vector<Token> freshTokens;
    for (int32_t i = 0; i < buffer.LineCount(); ++i) {
        ASSERT_EQ(buffer.GetLineData(i, LineWord::Lexer), fresh.GetLineData(i, LineWord::Lexer)) << i;
        buffer.ScanLine(i, tokens);
        fresh.ScanLine(i, freshTokens);
        ASSERT_EQ(tokens.size(), freshTokens.size()) << i;
        for (size_t t = 0; t < tokens.size(); ++t) {
            EXPECT_EQ(tokens[t].type, freshTokens[t].type);
            EXPECT_EQ(tokens[t].start, freshTokens[t].start);
        }
    }
}

void CompareFolding(SourceDocument& buffer)
{
    std::vector<Text> lines = CutLines(buffer.GetText());
    NaiveBlocks blocks(lines);
    int32_t visible = 0;
    int32_t hiddenTo = -1;
    for (size_t i = 0; i < lines.size(); ++i) {
        auto line = static_cast<int32_t>(i);
        bool collapsed = Collapsed(buffer, line);
        ASSERT_EQ(buffer.BlockEnd(line), blocks.end[i]) << i;
        ASSERT_EQ(buffer.GetLineData(line, LineWord::Control), blocks.Bits(i, collapsed)) << i;
        ASSERT_TRUE(!collapsed || blocks.end[i] > line) << "a collapsed line that heads nothing: " << i;
        bool hidden = line <= hiddenTo;
        ASSERT_EQ(buffer.IsHidden(line), hidden) << i;
        ASSERT_EQ(buffer.VisibleIndex(line), hidden ? visible - 1 : visible) << i;
        if (!hidden) {
            ASSERT_EQ(buffer.VisibleLine(visible), line);
            ++visible;
        }
        if (!collapsed) continue;
        int32_t end = blocks.end[i];
        hiddenTo = std::max(hiddenTo, blocks.opens[static_cast<size_t>(end)] > 0 ? end - 1 : end);
    }
    EXPECT_EQ(buffer.VisibleCount(), visible);
}

void RandomEdit(SourceDocument& buffer, Dice& dice, bool withinGroup)
{
    BufferModel model = BufferModel::Of(buffer);
    Position a = dice.At(model);
    Position b = dice.At(model);
    switch (withinGroup ? 2 + dice.Below(5) : dice.Below(7)) {
    case 0: buffer.Undo(); break;
    case 1: buffer.Redo(); break;
    case 2:
        if (b < a) std::swap(a, b);
        if (!dice.OneIn(4)) b.line = std::min(b.line, a.line + 2);
        buffer.DeleteRange(a, b);
        break;
    case 3: buffer.EditLines(RandomLineEdits(dice, model, u"a,{} ")); break;
    default: buffer.InsertText(a, dice.Lines(3, u"a,{} ")); break;
    }
}

void RandomFold(SourceDocument& buffer, Dice& dice)
{
    int32_t line = dice.Below(buffer.LineCount());
    switch (dice.Below(12)) {
    case 0: buffer.CollapseAll(); break;
    case 1: buffer.ExpandAll(); break;
    case 2:
    case 3: buffer.ExpandBlock(line); break;
    case 4:
        buffer.Reveal(line);
        EXPECT_FALSE(buffer.IsHidden(line));
        break;
    default: buffer.CollapseBlock(line); break;
    }
}

TEST(Folding, EditsLeaveTheTextAsIfScannedAnew)
{
    for (uint32_t seed = 1; seed <= 120 && !testing::Test::HasFatalFailure(); ++seed) {
        SCOPED_TRACE(seed);
        Dice dice(seed);
        SourceDocument buffer;
        ToyLexer lexer;
        buffer.SetText(dice.Lines(20, u"a,{} "));
        buffer.SetLexer(&lexer);
        if (dice.OneIn(2)) buffer.EnsureScanned();
        for (int32_t step = 0; step < 60 && !testing::Test::HasFailure(); ++step) {
            bool group = dice.OneIn(4);
            if (group) buffer.BeginGroup();
            for (int32_t n = group ? 3 : 1; n > 0; --n) RandomEdit(buffer, dice, group);
            if (group) buffer.EndGroup();
            if (dice.OneIn(3)) RandomFold(buffer, dice);
            CompareScan(buffer);
            CompareFolding(buffer);
        }
        buffer.SetLexer(nullptr);
        EXPECT_EQ(buffer.VisibleCount(), buffer.LineCount()) << "plain text has no blocks";
    }
}

TEST(Folding, ALocalEditScansFewLines)
{
    SourceDocument buffer;
    ToyLexer lexer;
    Text text;
    for (int32_t i = 0; i < 3000; ++i) text += u"{\na\n}\n";
    buffer.SetText(text);
    buffer.SetLexer(&lexer);
    buffer.EnsureScanned();
    lexer.linesScanned = 0;
    buffer.InsertText({0, 4000}, u"b");
    buffer.InsertText({0, 4000}, u"\n");
    EXPECT_LE(lexer.linesScanned, 6);
    lexer.linesScanned = 0;
    buffer.CollapseAll();
    EXPECT_EQ(lexer.linesScanned, 0);
}

} // namespace nib::test::folding_test
