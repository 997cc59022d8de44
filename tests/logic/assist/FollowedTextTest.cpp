#include "shell/assist/FollowedText.h"

#include <gtest/gtest.h>

#include <random>

namespace nib::followed_text_test {

using Lines = std::vector<Text>;

Lines LinesOf(const SourceDocument& text)
{
    Lines lines;
    for (int32_t line = 0; line < text.LineCount(); ++line) lines.push_back(text.GetLine(line));
    return lines;
}

/// What the service would have.
void Apply(Lines& told, std::optional<ChangedLines> change)
{
    if (!change) return;
    Lines lines = change->Lines();
    EXPECT_EQ(static_cast<int32_t>(lines.size()), change->count);
    if (change->whole) return void(told = std::move(lines));
    const auto at = told.erase(told.begin() + change->first, told.begin() + change->first + change->removed);
    told.insert(at, lines.begin(), lines.end());
}

TEST(FollowedTextTest, WhatIsToldIsTheTextHoweverItWasEdited)
{
    std::mt19937 random(7);
    const auto pick = [&](int32_t below) { return static_cast<int32_t>(random() % static_cast<uint32_t>(below)); };
    SourceDocument text;
    int32_t notices = 0;
    FollowedText followed(text, [&] { ++notices; });
    Lines told;
    for (int32_t round = 0; round < 3000; ++round) {
        const auto place = [&] { return text.Clamp({pick(5), pick(text.LineCount())}); };
        const int64_t revision = followed.Revision();
        const int32_t kind = pick(20);
        if (kind < 9) {
            text.InsertText(place(), kind < 4 ? u"A\r\nB\r\n" : u"C");
        } else if (kind < 15) {
            Position a = place();
            Position b = place();
            if (b.line - a.line > 4) b.line = a.line + 4;
            text.DeleteRange(std::min(a, b), text.Clamp(std::max(a, b)));
        } else if (kind < 17) {
            const int32_t line = pick(text.LineCount());
            if (line + 1 == text.LineCount()) continue;
            text.ReplaceRanges({{{0, line / 2}, {0, line / 2}, u"X\r\nY"}, {{0, line + 1}, {0, line + 1}, u"Z"}});
        } else if (kind < 19) {
            text.Undo();
        } else if (pick(8) == 0) {
            text.SetText(pick(2) == 0 ? Text(300, u'\n') : Text(u"a\nb"));
        }
        if (kind < 9) {
            EXPECT_GT(followed.Revision(), revision);
        }
        if (pick(4) == 0) {
            Apply(told, followed.Take());
            ASSERT_EQ(told, LinesOf(text)) << round;
            EXPECT_FALSE(followed.Take()) << "all has been told";
        }
    }
    EXPECT_GT(notices, 1000);
}

ProgramFinding Finding(const char16_t* code, Position at)
{
    return {code, FindingLevel::Warning, {at, {at.col + 1, at.line}}, {}, {}};
}

TEST(FollowedTextTest, FindingsMoveWithTheTextAndLoseTheirMends)
{
    SourceDocument text;
    text.SetText(u"one\r\ntwo\r\nthree");
    FollowedText followed(text, [] {});
    ProgramFinding finding = Finding(u"x", {1, 1});
    finding.mends.emplace_back();
    followed.SetFindings({Finding(u"a", {0, 0}), finding});
    text.InsertText({0, 1}, u"new\r\n");
    EXPECT_EQ(followed.Findings()[0].at.start, (Position{0, 0}));
    EXPECT_EQ(followed.Findings()[1].at.start, (Position{1, 2}));
    EXPECT_TRUE(followed.Findings()[1].mends.empty());
    text.DeleteRange({0, 2}, {0, 3});
    EXPECT_EQ(followed.Findings()[1].at, (TextRange{{0, 2}, {0, 2}})) << "its word has gone";
}

TEST(FollowedTextTest, MarksMoveWithTheirLinesAndGoWithThem)
{
    const struct {
        Position from;
        Position to;
        Text with;
        std::vector<int32_t> lines; ///< of those in lines 1 and 3
    } rows[] = {{{0, 0}, {0, 0}, u"x\r\n", {2, 4}}, {{0, 1}, {0, 1}, u"\r\n", {2, 4}},
                {{3, 1}, {3, 1}, u"\r\n", {1, 4}},  {{0, 1}, {0, 1}, u"x", {1, 3}},
                {{0, 1}, {0, 2}, u"", {2}},         {{3, 0}, {0, 1}, u"", {0, 2}},
                {{0, 1}, {3, 1}, u"", {1, 3}},      {{1, 0}, {1, 4}, u"", {}}};
    for (const auto& row : rows) {
        SourceDocument text;
        text.SetText(u"one\r\ntwo\r\nthree\r\nfour\r\nfive");
        FollowedText followed(text, [] {});
        followed.SetMarks({{3, 3, u"b", {}}, {1, 1, u"a", {}}});
        text.DeleteRange(row.from, row.to);
        text.InsertText(row.from, row.with);
        std::vector<int32_t> lines;
        for (const CompileMark& mark : followed.Marks()) lines.push_back(mark.line);
        EXPECT_EQ(lines, row.lines) << &row - rows;
        text.SetText(u"other");
        EXPECT_TRUE(followed.Marks().empty());
    }
}

TEST(FollowedTextTest, NewFindingsInTheTypedLineWait)
{
    const std::vector<ProgramFinding> found = {Finding(u"a", {0, 1}), Finding(u"b", {0, 2})};
    const struct {
        std::vector<ProgramFinding> shown;
        int32_t typed;
        size_t now;
    } rows[] = {{{}, -1, 2},
                {{}, 2, 1},
                {{}, 7, 2},
                {{Finding(u"b", {3, 2})}, 2, 2},
                {{Finding(u"a", {3, 2})}, 2, 1},
                {{Finding(u"b", {3, 1})}, 2, 1}};
    for (const auto& row : rows) {
        const SplitFindings split = HoldBack(found, row.shown, row.typed);
        EXPECT_EQ(split.shown.size(), row.now) << &row - rows;
        EXPECT_EQ(split.waits, row.now < 2) << &row - rows;
    }
}

} // namespace nib::followed_text_test
