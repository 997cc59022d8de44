// Long runs of random edits in a text of many chunks, held against plain lines: undo and redo, folds, half-done scans,
// and readers of how it was.

#include "BufferModel.h"
#include "ToyLexer.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace nib::test {
namespace {

constexpr TextView kAlphabet = u"ab{},\u00E9\u03A9";

/// A million by hand.
int32_t Steps()
{
    const char* steps = std::getenv("NIB_EDITS");
    return steps ? std::atoi(steps) : 2000;
}

class LongRun {
public:
    explicit LongRun(uint32_t seed) : dice_(seed)
    {
        Text text;
        for (int32_t line = 0; line < 3000; ++line) text += dice_.Line(12, kAlphabet) + u"\n";
        document_.SetText(text);
        document_.SetLexer(&lexer_);
        for (Text& line : CutLines(text)) lines_.push_back(std::move(line));
    }
    ~LongRun() { document_.SetLexer(nullptr); }

    void Step()
    {
        switch (dice_.Below(16)) {
        case 0:
        case 1:
        case 2: Walk(true); break;
        case 3:
        case 4: Walk(false); break;
        case 5: document_.ScanSlice(20); break;
        case 6: dice_.OneIn(20) ? document_.CollapseAll() : document_.CollapseBlock(SomeLine()); break;
        case 7: dice_.OneIn(5) ? document_.ExpandAll() : document_.Reveal(SomeLine()); break;
        case 8: KeepHowItIs(); break;
        default: Edit();
        }
        ASSERT_EQ(document_.LineCount(), static_cast<int32_t>(lines_.size()));
        const int32_t line = SomeLine();
        ASSERT_EQ(document_.GetLine(line), lines_[static_cast<size_t>(line)]);
        ASSERT_EQ(document_.VisibleLine(document_.VisibleIndex(line)) == line, !document_.IsHidden(line));
    }
    void CompareAll() const
    {
        size_t units = 0;
        for (int32_t line = 0; line < document_.LineCount(); ++line) {
            ASSERT_EQ(document_.GetLine(line), lines_[static_cast<size_t>(line)]) << line;
            units += lines_[static_cast<size_t>(line)].size();
        }
        ASSERT_EQ(document_.UnitCount(), units);
    }
    void TakeAllBack()
    {
        while (!done_.empty()) Walk(true);
        EXPECT_FALSE(document_.CanUndo());
        CompareAll();
        while (!undone_.empty()) Walk(false);
        EXPECT_FALSE(document_.CanRedo());
        CompareAll();
    }

private:
    /// Lines `line` on, as they were and as they became.
    struct Change {
        size_t line;
        std::vector<Text> before;
        std::vector<Text> after;
    };

    int32_t SomeLine() { return dice_.Below(static_cast<int32_t>(lines_.size())); }
    Position SomeWhere(int32_t line)
    {
        return {dice_.Below(static_cast<int32_t>(lines_[static_cast<size_t>(line)].size()) + 1), line};
    }
    void Edit()
    {
        document_.BreakTyping();
        const Position start = SomeWhere(SomeLine());
        const int32_t most = dice_.OneIn(50) ? 900 : 3;
        const int32_t last = std::min(start.line + dice_.Below(most), static_cast<int32_t>(lines_.size()) - 1);
        const Position end = std::max(start, SomeWhere(last));
        Text text = dice_.Lines(dice_.OneIn(50) ? 900 : 3, kAlphabet);
        if (start == end && text.empty()) text = u"x";
        const auto at = static_cast<size_t>(start.line);
        const auto behind = static_cast<size_t>(end.line) + 1;
        const std::vector<Text> before(lines_.begin() + start.line, lines_.begin() + end.line + 1);
        std::vector<Text> after = CutLines(lines_[at].substr(0, static_cast<size_t>(start.col)) + text +
                                           lines_[behind - 1].substr(static_cast<size_t>(end.col)));
        if (dice_.OneIn(2)) {
            document_.ReplaceRanges({{start, end, text}});
        } else {
            document_.BeginGroup();
            document_.DeleteRange(start, end);
            document_.InsertText(start, text);
            document_.EndGroup();
        }
        done_.push_back({at, before, after});
        undone_.clear();
        Put(at, before.size(), after);
    }
    void Walk(bool back)
    {
        back ? document_.Undo() : document_.Redo();
        std::vector<Change>& from = back ? done_ : undone_;
        std::vector<Change>& to = back ? undone_ : done_;
        if (from.empty()) return;
        to.push_back(std::move(from.back()));
        from.pop_back();
        const Change& made = to.back();
        Put(made.line, (back ? made.after : made.before).size(), back ? made.before : made.after);
    }
    void Put(size_t line, size_t count, const std::vector<Text>& with)
    {
        const auto at = lines_.erase(lines_.begin() + static_cast<ptrdiff_t>(line),
                                     lines_.begin() + static_cast<ptrdiff_t>(line + count));
        lines_.insert(at, with.begin(), with.end());
    }
    /// Looks whether the text that was kept is what it was, and keeps that of now.
    void KeepHowItIs()
    {
        if (!dice_.OneIn(40)) return;
        if (kept_) {
            size_t line = 0;
            kept_->ForEachLine([&](const LineRecord& record) {
                Text text;
                record.Units().AppendTo(text);
                ASSERT_EQ(text, keptLines_[line++]);
            });
        }
        kept_ = document_.Snapshot();
        keptLines_ = lines_;
    }

    Dice dice_;
    ToyLexer lexer_;
    SourceDocument document_;
    std::vector<Text> lines_;
    std::vector<Change> done_;
    std::vector<Change> undone_;
    std::shared_ptr<const TextSnapshot> kept_;
    std::vector<Text> keptLines_;
};

TEST(RandomEdits, AreThoseOfPlainLines)
{
    for (uint32_t seed = 1; seed <= 2; ++seed) {
        SCOPED_TRACE(seed);
        LongRun run(seed);
        const int32_t steps = Steps();
        for (int32_t step = 0; step < steps && !::testing::Test::HasFatalFailure(); ++step) {
            run.Step();
            if (step % 1000 == 0) run.CompareAll();
        }
        run.TakeAllBack();
    }
}

/// Tries all that changes the text, whenever it is called.
struct Meddler final : BufferListener {
    SourceDocument& document;
    int32_t refused = 0;
    int32_t calls = 0;

    explicit Meddler(SourceDocument& meddled) : document(meddled) {}
    void TextChanged(const TextChange&) override { Meddle(); }
    void TextReset() override { Meddle(); }
    void LinesRepaint(int32_t, int32_t) override { Meddle(); }
    void CaretRequested(Position) override { Meddle(); }
    void ModifiedChanged(bool) override { Meddle(); }
    void FoldingChanged() override { Meddle(); }

    void Meddle()
    {
        ++calls;
        LineEdits edits;
        edits.Insert(0, 0, u"no");
        const auto nothing = [](SourceDocument&) {};
        const std::function<void()> tries[] = {
            [&] {
                document.InsertText({0, 0}, u"no");
            },
            [&] {
                document.DeleteRange({0, 0}, {0, 1});
            },
            [&] { document.EditLines(std::move(edits)); },
            [&] {
                document.ReplaceRanges({{{0, 0}, {0, 0}, u"no"}});
            },
            [&] { document.SetText(u"no"); },
            [&] { document.ExecuteOp(std::make_unique<CallOp>(nothing, nothing)); },
            [&] { document.Undo(); },
            [&] { document.Redo(); },
            [&] { document.UndoSweep(); },
        };
        for (const auto& attempt : tries) {
            try {
                attempt();
                ADD_FAILURE() << "attempt " << &attempt - tries;
            } catch (const Error&) {
                ++refused;
            }
        }
        document.EnsureScanned(); // is no edit
        throw Error{1, u"and it fails"};
    }
};

TEST(RandomEdits, AListenerChangesNothingFromWithinACall)
{
    ToyLexer lexer;
    SourceDocument document;
    document.SetLexer(&lexer);
    Meddler first(document);
    Meddler second(document);
    document.AddListener(&first);
    document.AddListener(&second);
    document.SetText(u"{\na\n}\nb");
    document.CollapseAll();
    document.InsertText({1, 3}, u"c\nd");
    document.DeleteRange({0, 0}, {0, 2});
    document.Undo();
    document.Undo();
    document.Redo();
    document.ExpandAll();
    document.SetModified(false);
    EXPECT_EQ(document.GetText(), u"{\r\na\r\n}\r\nbc\r\nd");
    EXPECT_GT(first.calls, 15);
    EXPECT_EQ(first.refused, 9 * first.calls);
    EXPECT_EQ(second.calls, first.calls) << "whatever the first one throws";
    document.SetLexer(nullptr);
}

} // namespace
} // namespace nib::test
