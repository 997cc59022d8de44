#include "BufferModel.h"

#include <gtest/gtest.h>

namespace nib::test::change_marks_test {

/// "U" unsaved, "S" saved, "." neither; "^" before it: lines above have gone.
std::string Marks(const SourceDocument& text)
{
    std::string marks;
    for (int32_t line = 0; line < text.LineCount(); ++line) {
        const LineMarks at = text.ChangesAt(line);
        if (at.goneAbove != LineChange::None) marks += '^';
        marks += ".SU"[static_cast<size_t>(at.line)];
    }
    return marks;
}

struct Step {
    const char* why;
    std::function<void(SourceDocument&)> act;
    const char* marks;
};

const auto kSave = [](SourceDocument& d) { d.SetModified(false); };
const auto kUndo = [](SourceDocument& d) { d.Undo(); };

const Step kSteps[] = {
    {"as opened", kSave, "...."},
    {"typed into",
     [](SourceDocument& d) {
         d.InsertText({0, 1}, u"xy");
     },
     ".U.."},
    {"and back by hand",
     [](SourceDocument& d) {
         d.DeleteRange({0, 1}, {2, 1});
     },
     "...."},
    {"a line in front",
     [](SourceDocument& d) {
         d.InsertText({0, 2}, u"new\r\n");
     },
     "..U.."},
    {"saved", kSave, "..S.."},
    {"edited again",
     [](SourceDocument& d) {
         d.InsertText({3, 2}, u"er");
     },
     "..U.."},
    {"taken back to what was saved", kUndo, "..S.."},
    {"and on to what was opened", kUndo, "..^.."},
    {"done again", [](SourceDocument& d) { d.Redo(); }, "..S.."},
    {"a line goes",
     [](SourceDocument& d) {
         d.DeleteRange({0, 0}, {0, 1});
     },
     "^.S.."},
    {"saved without it", kSave, "^.S.."},
    {"and it comes back", kUndo, "U.S.."},
    {"another text", [](SourceDocument& d) { d.SetText(u"a\r\nb"); }, "UU"},
    {"saved", kSave, ".."},
    {"a text that is not stored", [](SourceDocument& d) { d.SetText(u"c\r\nd"), d.SetModified(true); }, "UU"},
    {"and is edited",
     [](SourceDocument& d) {
         d.InsertText({0, 0}, u"x");
     },
     "UU"},
};

TEST(ChangeMarks, TellWhatIsUnsavedAndWhatIsNew)
{
    SourceDocument text;
    text.SetText(u"one\r\ntwo\r\nthree\r\nfour");
    for (const Step& step : kSteps) {
        step.act(text);
        EXPECT_EQ(Marks(text), step.marks) << step.why;
    }
}

void RandomEdit(SourceDocument& text, Dice& dice, bool withinLines)
{
    const BufferModel model = BufferModel::Of(text);
    Position a = dice.At(model);
    Position b = withinLines ? Position{text.LineLength(a.line), a.line} : dice.At(model);
    if (b < a) std::swap(a, b);
    LineEdits edits;
    switch (dice.Below(8)) {
    case 0: return text.Undo();
    case 1: return text.Redo();
    case 2: return text.DeleteRange(a, dice.OneIn(4) ? b : std::min(b, {0, a.line + 2}));
    case 3:
        for (int32_t line = a.line; line < text.LineCount(); line += 1 + dice.Below(3)) edits.Insert(line, 0, u"b");
        return text.EditLines(std::move(edits));
    case 5: {
        if (withinLines) return;
        std::vector<RangeEdit> ranges;
        for (Position at = a; at < text.End() && ranges.size() < 6;
             at = text.Clamp({at.col, at.line + dice.Below(3)})) {
            if (!ranges.empty() && at < ranges.back().end) break;
            const Position end = dice.OneIn(2) ? at : text.Clamp({0, at.line + dice.Below(3)});
            ranges.push_back({at, std::max(at, end), dice.Lines(3, u"ab")});
            at = ranges.back().end;
        }
        text.ReplaceRanges(std::move(ranges));
        return;
    }
    default: text.InsertText(a, withinLines ? dice.Line(2, u"ab\u0416") : dice.Lines(3, u"ab"));
    }
}

/// In their order.
bool AreSomeOf(const std::vector<Text>& lines, const std::vector<Text>& all)
{
    auto at = all.begin();
    return std::all_of(lines.begin(), lines.end(), [&](const Text& line) {
        at = std::find(at, all.end(), line);
        return at != all.end() && at++ != all.end();
    });
}

TEST(ChangeMarks, EverythingElseIsAsItWas)
{
    for (uint32_t seed = 1; seed <= 200 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        Dice dice(seed);
        SourceDocument text;
        text.SetText(dice.Lines(30, u"ab"));
        text.SetModified(false);
        const std::vector<Text> opened = CutLines(text.GetText());
        std::vector<Text> saved = opened;
        for (int32_t i = 0; i < 80; ++i) {
            if (dice.OneIn(12)) {
                saved = CutLines(text.GetText());
                text.BeginSaving();
                for (int32_t n = dice.Below(3); n > 0; --n) RandomEdit(text, dice, seed % 2 == 0);
                text.EndSaving(true);
            } else {
                RandomEdit(text, dice, seed % 2 == 0);
            }
            const std::vector<Text> now = CutLines(text.GetText());
            ASSERT_EQ(CutLines(AsLines(text.StoredText()).Whole()), saved);
            std::vector<Text> asSaved;
            std::vector<Text> asOpened;
            for (size_t line = 0; line < now.size(); ++line) {
                const LineChange change = text.ChangesAt(static_cast<int32_t>(line)).line;
                if (change != LineChange::Unsaved) asSaved.push_back(now[line]);
                if (change == LineChange::None) asOpened.push_back(now[line]);
                if (seed % 2 == 0) ASSERT_EQ(change == LineChange::Unsaved, now[line] != saved[line]) << line;
            }
            ASSERT_TRUE(AreSomeOf(asSaved, saved) && AreSomeOf(asOpened, opened));
            if (now == saved || !text.Modified()) ASSERT_EQ(Marks(text).find('U'), std::string::npos);
        }
    }
}

TEST(ChangeMarks, WhatIsStoredIsKnownAfterAnotherTextTookItsPlace)
{
    SourceDocument text;
    const auto stored = [&] { return text.StoredText() ? AsLines(text.StoredText()).Whole() : u"(not known)"; };
    text.SetText(u"a\r\nb");
    text.SetModified(false);
    text.SetText(u"c");
    text.SetModified(true);
    text.InsertText({0, 0}, u"d");
    EXPECT_EQ(stored(), u"a\r\nb");
    text.BeginSaving();
    text.SetText(u"e");
    text.EndSaving(false);
    EXPECT_EQ(stored(), u"a\r\nb") << "the save failed";
    text.SetStoredText(u"of others");
    EXPECT_EQ(stored(), u"of others");
    EXPECT_TRUE(text.Modified());
    text.SetModified(false);
    EXPECT_EQ(stored(), u"e");
    text.InsertText({0, 0}, Text(kLongestRead + 1, u'x'));
    EXPECT_EQ(stored(), u"e");
    text.InsertText({0, 0}, u"y");
    EXPECT_EQ(stored(), u"(not known)") << "a giant does not lie in memory twice";
}

} // namespace nib::test::change_marks_test
