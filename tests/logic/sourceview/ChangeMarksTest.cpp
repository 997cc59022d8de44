#include "BufferModel.h"

#include <gtest/gtest.h>

namespace nib::test::change_marks_test {

/// "U" unsaved, "S" saved, "." neither; "^" before it: lines above have gone.
std::string Marks(const SourceDocument& text)
{
    const auto letter = [](LineChange change) { return change == LineChange::Unsaved ? 'U' : 'S'; };
    std::string marks;
    for (int32_t line = 0; line < text.LineCount(); ++line) {
        const LineMarks at = text.ChangesAt(line);
        if (at.goneAbove != LineChange::None) marks += '^';
        marks += at.line == LineChange::None ? '.' : letter(at.line);
    }
    return marks;
}

struct Step {
    const char* why;
    std::function<void(SourceDocument&)> act;
    const char* marks;
};

void Save(SourceDocument& d)
{
    d.SetModified(false);
}
void Undo(SourceDocument& d)
{
    d.Undo();
}

const Step kSteps[] = {
    {"as opened", Save, "...."},
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
    {"saved", Save, "..S.."},
    {"edited again",
     [](SourceDocument& d) {
         d.InsertText({3, 2}, u"er");
     },
     "..U.."},
    {"taken back to what was saved", Undo, "..S.."},
    {"and on to what was opened", Undo, "..^.."},
    {"done again", [](SourceDocument& d) { d.Redo(); }, "..S.."},
    {"a line goes",
     [](SourceDocument& d) {
         d.DeleteRange({0, 0}, {0, 1});
     },
     "^.S.."},
    {"saved without it", Save, "^.S.."},
    {"and it comes back", Undo, "U.S.."},
    {"a text that somebody put in", [](SourceDocument& d) { d.SetText(u"a\r\nb"); }, "UU"},
    {"saved", Save, ".."},
    {"one that is not stored",
     [](SourceDocument& d) {
         d.SetText(u"c\r\nd");
         d.SetModified(true);
         d.InsertText({0, 0}, u"x");
     },
     "UU"},
    {"after an edit no more is known to be unsaved",
     [](SourceDocument& d) {
         Save(d);
         d.InsertText({0, 0}, u"x");
         d.SetModified(true);
     },
     "U."},
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
    if (!dice.OneIn(4)) b = std::min(b, {0, a.line + 2});
    LineEdits edits;
    switch (dice.Below(8)) {
    case 0: return text.Undo();
    case 1: return text.Redo();
    case 2:
    case 3: return text.DeleteRange(a, b);
    case 4:
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
    size_t at = 0;
    for (const Text& line : lines) {
        while (at < all.size() && all[at] != line) ++at;
        if (at++ == all.size()) return false;
    }
    return true;
}

TEST(ChangeMarks, EverythingElseIsAsItWas)
{
    for (uint32_t seed = 1; seed <= 200 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        Dice dice(seed);
        SourceDocument text;
        text.SetText(dice.Lines(30, u"ab"));
        const std::vector<Text> opened = CutLines(text.GetText());
        std::vector<Text> saved = opened;
        text.SetModified(false);
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
            std::vector<Text> asSaved;
            std::vector<Text> asOpened;
            for (size_t line = 0; line < now.size(); ++line) {
                const LineChange change = text.ChangesAt(static_cast<int32_t>(line)).line;
                if (change != LineChange::Unsaved) asSaved.push_back(now[line]);
                if (change == LineChange::None) asOpened.push_back(now[line]);
                if (seed % 2 == 0) ASSERT_EQ(change == LineChange::Unsaved, now[line] != saved[line]) << line;
            }
            ASSERT_TRUE(AreSomeOf(asSaved, saved));
            ASSERT_TRUE(AreSomeOf(asOpened, opened));
            if (now == saved) ASSERT_EQ(Marks(text).find('U'), std::string::npos);
            if (now == opened && opened == saved) ASSERT_EQ(text.NextChange(0, LineChange::Saved), -1);
            for (LineChange change : {LineChange::Saved, LineChange::Unsaved}) {
                int32_t line = 0;
                const auto has = [&](LineMarks m) { return m.line == change || m.goneAbove == change; };
                while (line < text.LineCount() && !has(text.ChangesAt(line))) ++line;
                const int32_t next = text.NextChange(0, change);
                if (line < text.LineCount()) ASSERT_TRUE(next >= 0 && next <= line) << next << " " << line;
            }
        }
    }
}

} // namespace nib::test::change_marks_test
