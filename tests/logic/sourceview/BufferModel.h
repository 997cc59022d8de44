#pragma once
// The plainest possible editor text, to hold the real one against, and random texts and ranges for both.

#include "text/LineEdits.h"
#include "text/SourceDocument.h"

#include <algorithm>
#include <functional>
#include <random>
#include <vector>

namespace nib::test {

struct ModelLine {
    Text text;
    bool bookmark = false;
    uint32_t identity = 0;
    friend bool operator==(const ModelLine&, const ModelLine&) = default;
};

inline std::vector<Text> CutLines(TextView text)
{
    std::vector<Text> lines(1);
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') continue;
        if (text[i] == u'\r' || text[i] == u'\n')
            lines.emplace_back();
        else
            lines.back() += text[i];
    }
    return lines;
}

struct BufferModel {
    std::vector<ModelLine> lines = std::vector<ModelLine>(1);

    friend bool operator==(const BufferModel&, const BufferModel&) = default;

    static BufferModel Of(TextView text)
    {
        BufferModel model;
        model.lines.clear();
        for (Text& line : CutLines(text)) model.lines.push_back({std::move(line)});
        return model;
    }

    /// What a buffer holds, read through its contract.
    static BufferModel Of(const SourceDocument& document)
    {
        BufferModel model;
        model.lines.clear();
        for (int32_t i = 0; i < document.LineCount(); ++i)
            model.lines.push_back({document.GetLine(i),
                                   (document.GetLineData(i, LineWord::Control) & line_bits::kBookmark) != 0,
                                   document.GetLineData(i, LineWord::Identity)});
        return model;
    }

    Text Joined() const
    {
        Text text = lines[0].text;
        for (size_t i = 1; i < lines.size(); ++i) text += u"\r\n" + lines[i].text;
        return text;
    }

    Position Insert(Position at, TextView text)
    {
        std::vector<Text> pieces = CutLines(text);
        auto line = static_cast<size_t>(at.line);
        auto col = static_cast<size_t>(at.col);
        auto breaks = static_cast<int32_t>(pieces.size()) - 1;
        auto endCol = static_cast<int32_t>(pieces.back().size()) + (breaks == 0 ? at.col : 0);
        ModelLine old = lines[line];
        pieces.front().insert(0, old.text.substr(0, col));
        pieces.back() += old.text.substr(col);
        // The words stay with the text: below what is inserted in front of it, else above. Whole lines go in front of
        // an empty one too.
        bool wholeLines = !CutLines(text).front().empty() && pieces.back() == old.text;
        size_t keeper = at.col == 0 && (!old.text.empty() || wholeLines) ? pieces.size() - 1 : 0;
        std::vector<ModelLine> with(pieces.size());
        with[keeper] = old;
        for (size_t i = 0; i < pieces.size(); ++i) with[i].text = std::move(pieces[i]);
        auto place = lines.erase(lines.begin() + at.line);
        lines.insert(place, with.begin(), with.end());
        return {endCol, at.line + breaks};
    }

    void Erase(Position start, Position end)
    {
        if (end <= start) return;
        auto first = static_cast<size_t>(start.line);
        auto last = static_cast<size_t>(end.line);
        Text tail = lines[last].text.substr(static_cast<size_t>(end.col));
        bool lastStays = first != last && start.col == 0 && (end.col == 0 || !tail.empty());
        ModelLine joined = lines[lastStays ? last : first];
        joined.text = lines[first].text.substr(0, static_cast<size_t>(start.col)) + tail;
        lines.erase(lines.begin() + start.line, lines.begin() + end.line);
        lines[first] = std::move(joined);
    }
};

/// An operation as its caller writes it.
struct CallOp final : ISourceOp {
    using Step = std::function<void(SourceDocument&)>;

    CallOp(Step doIt, Step undoIt) : do_(std::move(doIt)), undo_(std::move(undoIt)) {}
    void DoOp(SourceDocument& document) override { do_(document); }
    void UndoOp(SourceDocument& document) override { undo_(document); }

private:
    Step do_;
    Step undo_;
};

/// The same sequence for the same seed on every machine.
class Dice {
public:
    explicit Dice(uint32_t seed) : engine_(seed) {}
    int32_t Below(int32_t limit) { return static_cast<int32_t>(engine_() % static_cast<uint32_t>(limit)); }
    bool OneIn(int32_t n) { return Below(n) == 0; }

    Text Line(int32_t most, TextView alphabet)
    {
        Text text;
        for (int32_t n = Below(most + 1); n > 0; --n)
            text += alphabet[static_cast<size_t>(Below(static_cast<int32_t>(alphabet.size())))];
        return text;
    }
    /// A few lines with all three kinds of line end between them.
    Text Lines(int32_t most, TextView alphabet)
    {
        static constexpr TextView kEnds[] = {u"\r\n", u"\r", u"\n", u"\r\r\n", u"\n\r"};
        Text text = Line(8, alphabet);
        for (int32_t n = Below(most); n > 0; --n) {
            text += kEnds[Below(5)];
            text += Line(8, alphabet);
        }
        return text;
    }
    Position At(const BufferModel& model)
    {
        int32_t line = Below(static_cast<int32_t>(model.lines.size()));
        auto length = static_cast<int32_t>(model.lines[static_cast<size_t>(line)].text.size());
        return {OneIn(3) ? 0 : OneIn(3) ? length : Below(length + 1), line};
    }

private:
    std::mt19937 engine_;
};

/// Edits within some of the lines; made in the model too, and in `single` one after the other.
inline LineEdits RandomLineEdits(Dice& dice, BufferModel& model, TextView alphabet, SourceDocument* single = nullptr)
{
    LineEdits edits;
    for (int32_t line = 0; line < static_cast<int32_t>(model.lines.size()); ++line) {
        for (int32_t n = dice.Below(3); n > 0; --n) {
            Text& text = model.lines[static_cast<size_t>(line)].text;
            const auto length = static_cast<int32_t>(text.size());
            const int32_t column = dice.Below(length + 1);
            if (dice.OneIn(2)) {
                const Text put = dice.Line(3, alphabet);
                edits.Insert(line, column, put);
                if (single) single->InsertText({column, line}, put);
                text.insert(static_cast<size_t>(column), put);
            } else {
                const int32_t count = dice.Below(length - column + 1);
                edits.Remove(line, column, count);
                if (single) single->DeleteRange({column, line}, {column + count, line});
                text.erase(static_cast<size_t>(column), static_cast<size_t>(count));
            }
        }
    }
    return edits;
}

} // namespace nib::test
