// The buffer against a model too simple to be wrong: a list of lines, each with a bookmark and an identity.

#include "text/SourceDocument.h"

#include <gtest/gtest.h>

#include <random>

namespace nib {
namespace {

struct ModelLine {
    Text text;
    bool bookmark = false;
    uint32_t identity = 0;
    friend bool operator==(const ModelLine&, const ModelLine&) = default;
};
using Model = std::vector<ModelLine>;

std::vector<Text> Pieces(TextView text)
{
    std::vector<Text> pieces(1);
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') ++i;
        if (text[i] == u'\r' || text[i] == u'\n')
            pieces.emplace_back();
        else
            pieces.back() += text[i];
    }
    return pieces;
}

void Insert(Model& model, Position at, TextView text)
{
    auto pieces = Pieces(text);
    auto line = static_cast<size_t>(at.line);
    auto col = static_cast<size_t>(at.col);
    if (pieces.size() == 1) {
        model[line].text.insert(col, pieces[0]);
        return;
    }
    Text tail = model[line].text.substr(col);
    std::vector<ModelLine> fresh;
    for (Text& piece : pieces) fresh.push_back({piece, false, 0});
    fresh.front().text = model[line].text.substr(0, col) + fresh.front().text;
    fresh.back().text += tail;
    ModelLine& keeper = at.col == 0 && !tail.empty() ? fresh.back() : fresh.front();
    keeper.bookmark = model[line].bookmark;
    keeper.identity = model[line].identity;
    model.erase(model.begin() + at.line);
    model.insert(model.begin() + at.line, fresh.begin(), fresh.end());
}

void Erase(Model& model, Position start, Position end)
{
    ModelLine first = model[static_cast<size_t>(start.line)];
    ModelLine last = model[static_cast<size_t>(end.line)];
    Text tail = last.text.substr(static_cast<size_t>(end.col));
    ModelLine joined = start.line != end.line && start.col == 0 && !tail.empty() ? last : first;
    joined.text = first.text.substr(0, static_cast<size_t>(start.col)) + tail;
    model.erase(model.begin() + start.line, model.begin() + end.line + 1);
    model.insert(model.begin() + start.line, joined);
}

Model Read(const SourceDocument& buffer)
{
    Model model;
    for (int32_t line = 0; line < buffer.LineCount(); ++line)
        model.push_back({buffer.GetLine(line),
                         (buffer.GetLineData(line, LineWord::Control) & line_bits::kBookmark) != 0,
                         buffer.GetLineData(line, LineWord::Identity)});
    return model;
}

Text Joined(const Model& model)
{
    Text text;
    for (const ModelLine& line : model) text += (&line == &model.front() ? u"" : u"\r\n") + line.text;
    return text;
}

class Random {
public:
    explicit Random(unsigned seed) : engine_(seed) {}
    int32_t Below(int32_t limit) { return std::uniform_int_distribution<int32_t>(0, limit - 1)(engine_); }
    Text Fragment(bool breaks)
    {
        static const std::vector<Text> parts = {u"a", u" ", u"\uF8FD", u"\u00E9", u"\u4E2D", u"IF X THEN",
                                                u"{", u"}", u",",      u"\r\n",   u"\n",     u"\r"};
        Text text;
        for (int32_t n = Below(6); n >= 0; --n) text += parts[static_cast<size_t>(Below(breaks ? 12 : 9))];
        return text;
    }
    Position Place(const SourceDocument& buffer)
    {
        int32_t line = Below(buffer.LineCount());
        return {Below(buffer.LineLength(line) + 1), line};
    }

private:
    std::mt19937 engine_;
};

/// "{" begins a block, "}" ends one; a line that ends in "," makes the next one begin as type 4.
class ToyLexer final : public ISourceLex4 {
public:
    void BeginLineScan(SourceDocument& document, int32_t line, TextView text, int32_t) override
    {
        line_ = line;
        text_ = text;
        at_ = 0;
        continued_ = line > 0 && document.GetLineData(line - 1, LineWord::Lexer) == 1;
    }
    void ScanToken(Token& token) override
    {
        token = {};
        if (at_ >= static_cast<int32_t>(text_.size())) return;
        char16_t c = text_[static_cast<size_t>(at_)];
        token = {continued_ ? 4 : 8, at_, 1, c == u'{' ? 1 : c == u'}' ? 2 : 0};
        ++at_;
    }
    int16_t EndLineScan(SourceDocument& document) override
    {
        document.SetLineData(line_, LineWord::Lexer, text_.ends_with(u',') || (continued_ && text_.empty()) ? 1 : 0);
        return 0;
    }
    int32_t GetDesiredCase() override { return 0; }
    int32_t GetLineIndex() override { return at_; }
    void SetLineIndex(int32_t index) override { at_ = index; }
    int32_t GetProperties() override { return 0; }

private:
    TextView text_;
    int32_t line_ = 0;
    int32_t at_ = 0;
    bool continued_ = false;
};

TEST(BufferProperty, EditsUndoAndRedoFollowTheModel)
{
    for (unsigned seed = 1; seed <= 40; ++seed) {
        Random random(seed);
        SourceDocument buffer;
        if (seed % 4 == 0) { // more than one chunk
            Text big;
            for (int i = 0; i < 3000; ++i) big += u"line\n";
            buffer.SetText(big);
        }
        std::vector<Model> states{Read(buffer)};
        Model model = states.front();
        uint32_t nextIdentity = 1;
        for (int step = 0; step < 120; ++step) {
            Position at = random.Place(buffer);
            if (random.Below(3) > 0) {
                Text text = random.Fragment(true);
                buffer.InsertText(at, text);
                Insert(model, at, text);
            } else {
                Position end = random.Place(buffer);
                if (end < at) std::swap(at, end);
                if (seed % 4 == 0) end.line = std::min(end.line, at.line + random.Below(1500));
                end = buffer.Clamp(end);
                if (at < end) {
                    buffer.DeleteRange(at, end);
                    Erase(model, at, end);
                }
            }
            buffer.BreakTyping();
            ASSERT_EQ(Read(buffer), model) << "seed " << seed << " step " << step;
            if (random.Below(4) == 0) {
                int32_t line = random.Below(buffer.LineCount());
                buffer.ToggleBookmark(line);
                model[static_cast<size_t>(line)].bookmark = !model[static_cast<size_t>(line)].bookmark;
                buffer.SetLineData(line, LineWord::Identity, nextIdentity);
                model[static_cast<size_t>(line)].identity = nextIdentity++;
            }
        }
        Text last = Joined(model);
        ASSERT_EQ(buffer.GetText(), last);
        while (buffer.CanUndo()) buffer.Undo();
        EXPECT_FALSE(buffer.Modified());
        EXPECT_EQ(buffer.GetText(), Joined(states.front()));
        while (buffer.CanRedo()) buffer.Redo();
        EXPECT_EQ(buffer.GetText(), last);
        int32_t bookmarks = 0;
        for (const ModelLine& line : Read(buffer)) bookmarks += line.bookmark ? 1 : 0;
        EXPECT_EQ(buffer.BookmarkCount(), bookmarks);
    }
}

/// What a scan from scratch says of every line.
struct Scanned {
    std::vector<uint32_t> states;
    std::vector<uint32_t> controls;
    std::vector<int32_t> ends;
    friend bool operator==(const Scanned&, const Scanned&) = default;
};

Scanned ScannedState(SourceDocument& buffer)
{
    buffer.EnsureScanned();
    Scanned scanned;
    for (int32_t line = 0; line < buffer.LineCount(); ++line) {
        scanned.states.push_back(buffer.GetLineData(line, LineWord::Lexer));
        scanned.controls.push_back(buffer.GetLineData(line, LineWord::Control));
        scanned.ends.push_back(buffer.BlockEnd(line));
    }
    return scanned;
}

TEST(BufferProperty, IncrementalScanEqualsScanFromScratch)
{
    for (unsigned seed = 1; seed <= 60; ++seed) {
        Random random(seed);
        ToyLexer lexer;
        ToyLexer freshLexer;
        SourceDocument buffer;
        buffer.SetLexer(&lexer);
        for (int step = 0; step < 60; ++step) {
            Position at = random.Place(buffer);
            if (random.Below(4) > 0) {
                buffer.InsertText(at, random.Fragment(true));
            } else {
                Position end = random.Place(buffer);
                buffer.DeleteRange(std::min(at, end), std::max(at, end));
            }
            if (random.Below(6) == 0 && buffer.CanUndo()) buffer.Undo();
            if (random.Below(3) == 0) buffer.EnsureScanned();
            SourceDocument fresh;
            fresh.SetText(buffer.GetText());
            fresh.SetLexer(&freshLexer);
            ASSERT_EQ(ScannedState(buffer), ScannedState(fresh)) << "seed " << seed << " step " << step;
        }
    }
}

TEST(BufferProperty, FoldingNeverHidesALineWithoutACollapsedHead)
{
    for (unsigned seed = 1; seed <= 60; ++seed) {
        Random random(seed);
        ToyLexer lexer;
        SourceDocument buffer;
        buffer.SetLexer(&lexer);
        for (int step = 0; step < 80; ++step) {
            Position at = random.Place(buffer);
            switch (random.Below(7)) {
            case 0: buffer.CollapseBlock(at.line); break;
            case 1: buffer.ExpandBlock(at.line); break;
            case 2: buffer.Reveal(at.line); break;
            case 3: random.Below(4) == 0 ? buffer.CollapseAll() : buffer.DeleteRange(at, random.Place(buffer)); break;
            case 4: random.Below(4) == 0 ? buffer.ExpandAll() : buffer.Undo(); break;
            default: buffer.InsertText(at, random.Fragment(true));
            }
            int32_t visible = 0;
            int32_t hiddenTo = -1;
            for (int32_t line = 0; line < buffer.LineCount(); ++line) {
                ASSERT_EQ(buffer.IsHidden(line), line <= hiddenTo)
                    << "seed " << seed << " step " << step << " line " << line;
                if (!buffer.IsHidden(line)) {
                    ASSERT_EQ(buffer.VisibleIndex(line), visible);
                    ASSERT_EQ(buffer.VisibleLine(visible), line);
                    ++visible;
                }
                uint32_t block = buffer.GetLineData(line, LineWord::Control) & line_bits::kBlockStateMask;
                if (block != line_bits::kBlockCollapsed) continue;
                int32_t end = buffer.BlockEnd(line);
                ASSERT_GT(end, line);
                // An end line that opens the next block stays in sight.
                hiddenTo = std::max(hiddenTo, buffer.IsHidden(end) ? end : end - 1);
            }
            ASSERT_EQ(buffer.VisibleCount(), visible);
        }
    }
}

} // namespace
} // namespace nib
