#include "BufferModel.h"

#include <gtest/gtest.h>

#include <optional>

namespace nib::test::buffer_test {

constexpr TextView kAlphabet = u"abc {}.\u00C9\u00FF\u0416\uF8FC\uF8FD\uF8FE";

/// Replaces a range; both ways from its own fields. May fail after its first edit.
struct ReplaceOp : ISourceOp {
    ReplaceOp(Position start, Position end, Text removed, Text text, bool fails)
        : start_(start), end_(end), removed_(std::move(removed)), text_(std::move(text)), fails_(fails)
    {
    }
    void DoOp(SourceDocument& document) override
    {
        document.DeleteRange(start_, end_);
        newEnd_ = document.InsertText(start_, text_);
        LineEdits edits;
        edits.Insert(0, 0, u"  ");
        if (fails_) document.EditLines(std::move(edits));
        if (fails_) throw Error{7, u"The operation failed."};
    }
    void UndoOp(SourceDocument& document) override
    {
        document.DeleteRange(start_, newEnd_);
        document.InsertText(start_, removed_);
    }

private:
    Position start_;
    Position end_;
    Text removed_;
    Text text_;
    bool fails_;
    Position newEnd_;
};

/// A buffer beside the model, and what both were after each step.
class Pair {
public:
    explicit Pair(uint32_t seed, bool withOps) : dice_(seed), withOps_(withOps)
    {
        Text text = dice_.Lines(12, kAlphabet);
        buffer_.SetText(text);
        model_ = BufferModel::Of(text);
        for (size_t i = 0; i < model_.lines.size(); ++i) {
            auto line = static_cast<int32_t>(i);
            model_.lines[i].identity = static_cast<uint32_t>(i + 1);
            buffer_.SetLineData(line, LineWord::Identity, static_cast<uint32_t>(i + 1));
            if ((model_.lines[i].bookmark = dice_.OneIn(3))) buffer_.ToggleBookmark(line);
        }
        states_ = {model_};
    }

    void Step()
    {
        switch (dice_.Below(withOps_ ? 9 : 7)) {
        case 0: UndoOrRedo(true); break;
        case 1: UndoOrRedo(false); break;
        case 2: Save(); break;
        case 3: Group(); break;
        case 7: Operation(); break;
        case 4: FailingOperation(); break;
        default: Edit(); NewState();
        }
        Compare();
    }

    void Compare()
    {
        EXPECT_EQ(buffer_.GetText(), model_.Joined());
        ASSERT_EQ(static_cast<size_t>(buffer_.LineCount()), model_.lines.size());
        BufferModel real = BufferModel::Of(buffer_);
        EXPECT_TRUE(withOps_ || real == model_);
        auto marked = std::count_if(real.lines.begin(), real.lines.end(), [](auto& l) { return l.bookmark; });
        EXPECT_EQ(buffer_.BookmarkCount(), marked);
        EXPECT_EQ(buffer_.Modified(), saved_ != at_);
        EXPECT_EQ(buffer_.CanUndo(), at_ > 0);
        EXPECT_EQ(buffer_.CanRedo(), at_ + 1 < static_cast<int32_t>(states_.size()));
    }

    void UndoOrRedo(bool undo)
    {
        if (undo ? !buffer_.CanUndo() : !buffer_.CanRedo()) return;
        undo ? buffer_.Undo() : buffer_.Redo();
        at_ += undo ? -1 : 1;
        model_ = states_[static_cast<size_t>(at_)];
    }

    SourceDocument& Buffer() { return buffer_; }
    const std::vector<BufferModel>& States() const { return states_; }

private:
    void Edit()
    {
        buffer_.BreakTyping();
        for (;;) {
            if (dice_.OneIn(5)) {
                LineEdits edits = RandomLineEdits(dice_, model_, kAlphabet);
                const bool any = !edits.IsEmpty();
                buffer_.EditLines(std::move(edits));
                if (any) return;
            } else if (dice_.OneIn(2)) {
                Text text = dice_.Lines(4, kAlphabet);
                Position at = dice_.At(model_);
                EXPECT_EQ(buffer_.InsertText(at, text), model_.Insert(at, text));
                if (!text.empty()) return;
            } else {
                auto [start, end] = Range();
                buffer_.DeleteRange(start, end);
                model_.Erase(start, end);
                if (start < end) return;
            }
        }
    }
    std::pair<Position, Position> Range()
    {
        Position a = dice_.At(model_);
        Position b = dice_.At(model_);
        return std::minmax(a, b);
    }
    void NewState()
    {
        states_.resize(static_cast<size_t>(at_ + 1));
        if (saved_ > at_) saved_ = -1;
        states_.push_back(model_);
        ++at_;
    }
    void Save()
    {
        bool modified = dice_.OneIn(4);
        buffer_.SetModified(modified);
        saved_ = modified ? -1 : at_;
    }
    void Group()
    {
        buffer_.BeginGroup();
        for (int32_t n = 1 + dice_.Below(4); n > 0; --n) {
            buffer_.BeginGroup();
            Edit();
            buffer_.EndGroup();
        }
        buffer_.EndGroup();
        NewState();
    }
    std::unique_ptr<ReplaceOp> MakeOp(bool fails)
    {
        auto [start, end] = Range();
        Text removed = buffer_.GetRange(start, end);
        Text text = dice_.Lines(4, kAlphabet);
        if (!fails) {
            model_.Erase(start, end);
            model_.Insert(start, text);
        }
        return std::make_unique<ReplaceOp>(start, end, removed, text, fails);
    }
    void Operation()
    {
        buffer_.ExecuteOp(MakeOp(false));
        NewState();
    }
    void FailingOperation() { EXPECT_THROW(buffer_.ExecuteOp(MakeOp(true)), Error); }

    Dice dice_;
    bool withOps_; ///< an operation's own undo does not know the words of the lines
    SourceDocument buffer_;
    BufferModel model_;
    std::vector<BufferModel> states_;
    int32_t at_ = 0;
    int32_t saved_ = 0;
};

class BufferEdit : public ::testing::TestWithParam<bool> {};

TEST_P(BufferEdit, FollowsTheModel)
{
    for (uint32_t seed = 1; seed <= 60 && !HasFatalFailure() && !HasNonfatalFailure(); ++seed) {
        SCOPED_TRACE(seed);
        Pair pair(seed, GetParam());
        for (int32_t step = 0; step < 80 && !HasFatalFailure(); ++step) pair.Step();
        while (pair.Buffer().CanUndo()) pair.UndoOrRedo(true), pair.Compare();
        EXPECT_EQ(pair.Buffer().GetText(), pair.States().front().Joined());
        while (pair.Buffer().CanRedo()) pair.UndoOrRedo(false), pair.Compare();
        EXPECT_EQ(pair.Buffer().GetText(), pair.States().back().Joined());
    }
}

INSTANTIATE_TEST_SUITE_P(Words, BufferEdit, ::testing::Values(false, true), [](const auto& row) {
    return row.param ? "TextOnlyWithOperations" : "WithBookmarksAndIdentities";
});

struct Place final : BufferListener {
    Position at;
    bool sticky = false;
    void TextChanged(const TextChange& change) override { at = change.Map(at, sticky); }
};

TEST(BufferEditRules, PlacesGoThroughEditsOfManyLinesAsThroughOneAfterTheOther)
{
    Dice dice(7);
    for (int32_t round = 0; round < 500; ++round) {
        SourceDocument together;
        SourceDocument single;
        const Text text = dice.Lines(5, u"abc");
        BufferModel model = BufferModel::Of(text);
        Place places[2];
        places[0].at = places[1].at = dice.At(model);
        places[0].sticky = places[1].sticky = dice.OneIn(2);
        for (SourceDocument* buffer : {&together, &single}) {
            buffer->SetText(text);
            buffer->AddListener(&places[buffer == &single]);
        }
        single.BeginGroup();
        LineEdits edits = RandomLineEdits(dice, model, u"xy", &single);
        single.EndGroup();
        together.EditLines(std::move(edits));
        ASSERT_EQ(together.GetText(), single.GetText());
        ASSERT_EQ(places[0].at, places[1].at) << round;
        for (SourceDocument* buffer : {&together, &single}) buffer->Undo();
        ASSERT_EQ(places[0].at, places[1].at) << round;
        for (SourceDocument* buffer : {&together, &single}) buffer->RemoveListener(&places[buffer == &single]);
    }
}

TEST(BufferEditRules, PositionsOutsideAreClamped)
{
    SourceDocument buffer;
    buffer.SetText(u"one\rtwo");
    EXPECT_EQ(buffer.InsertText({99, 0}, u"!"), (Position{4, 0}));
    EXPECT_EQ(buffer.InsertText({0, 99}, u"?"), (Position{4, 1}));
    EXPECT_EQ(buffer.InsertText({5, -1}, u">"), (Position{1, 0}));
    EXPECT_EQ(buffer.GetText(), u">one!\r\ntwo?");
    buffer.DeleteRange({-3, -3}, {99, 99});
    EXPECT_EQ(buffer.GetText(), u"");
    EXPECT_EQ(buffer.LineCount(), 1);
}

TEST(BufferEditRules, ATextMayBeInsertedFromTheBufferItself)
{
    SourceDocument buffer;
    buffer.InsertText({0, 0}, u"\u0416 wide and long enough to move");
    Text line = buffer.GetLine(0);
    Text scratch;
    for (int32_t i = 0; i < 4; ++i) {
        buffer.InsertText({0, 0}, buffer.LineText(0, scratch));
        line += line;
        ASSERT_EQ(buffer.GetLine(0), line);
    }
    while (buffer.CanUndo()) buffer.Undo();
    EXPECT_EQ(buffer.GetText(), u"");
}

TEST(FindRules, Table)
{
    struct Row {
        TextView text, word;
        Position from;
        FindOptions options;
        std::optional<Position> at;
    };
    const FindOptions any{};
    const FindOptions back{true, false, false};
    const FindOptions word{false, false, true};
    const Row rows[] = {
        {u"ab\ncd", u"bc", {}, any, {}},                            // no match spans lines
        {u"ab\ncd", u"b\nc", {}, any, {}},                          // nor does a text with a line break match
        {u"ab\ncd", u"", {}, any, {}},                              //
        {u"aaa", u"aa", {1, 0}, any, Position{1, 0}},               // forward: from the position on
        {u"aaa", u"aa", {1, 0}, back, Position{1, 0}},              // backward: starts at the position
        {u"aaa", u"aa", {9, 9}, back, Position{1, 0}},              // overlaps the one before it
        {u"x\na x", u"x", {1, 1}, back, Position{0, 0}},            //
        {u"A.B A", u"A", {}, word, Position{4, 0}},                 // "." belongs to a word
        {u"A$ A_ 1A A9 (A)", u"a", {}, word, Position{13, 0}},      //
        {u"\u00C9t\u00E9", u"\u00E9", {1, 0}, any, Position{2, 0}}, //
        {u"\u00C9t\u00E9", u"\u00C9T\u00C9", {}, any, Position{0, 0}},
        {u"\u00E9A \u00C9", u"\u00E9", {}, word, Position{3, 0}},
        {u"a\uF8FDb", u"b", {}, word, Position{2, 0}}, // marks part words
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::PrintToString(Text(row.text)) + " " + testing::PrintToString(Text(row.word)));
        SourceDocument buffer;
        buffer.SetText(row.text);
        FindHit hit;
        ASSERT_EQ(buffer.Find(row.word, row.from, row.options, hit), row.at.has_value());
        EXPECT_EQ(hit.at, row.at.value_or(Position{}));
    }
}

TEST(Bookmarks, NextAndPreviousGoRoundTheEnds)
{
    SourceDocument buffer;
    buffer.SetText(u"0\n1\n2\n3\n4");
    EXPECT_EQ(buffer.FindBookmark(2, false), -1);
    for (int32_t line : {1, 3}) buffer.ToggleBookmark(line);
    const int32_t next[] = {1, 3, 3, 1, 1};
    const int32_t previous[] = {3, 3, 1, 1, 3};
    for (int32_t line = 0; line < 5; ++line) {
        EXPECT_EQ(buffer.FindBookmark(line, false), next[line]) << line;
        EXPECT_EQ(buffer.FindBookmark(line, true), previous[line]) << line;
    }
    buffer.SetLineData(1, LineWord::Control, 0);
    EXPECT_EQ(buffer.FindBookmark(3, false), 3) << "the only one is its own neighbour";
    buffer.SetLineData(4, LineWord::Control, line_bits::kBookmark);
    EXPECT_EQ(buffer.BookmarkCount(), 2);
    buffer.ClearBookmarks();
    EXPECT_EQ(buffer.BookmarkCount(), 0);
    EXPECT_EQ(buffer.FindBookmark(0, true), -1);
}

} // namespace nib::test::buffer_test
