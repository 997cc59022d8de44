#pragma once
// An editor without a screen, written to and read from as a text in which "^" is the caret and "~" the other end of the
// selection.

#include "editing/LexClass.h"
#include "editing/MvEdit.h"
#include "fakes/MemoryClipboard.h"
#include "text/SourceView.h"

#include <ostream>

namespace nib::test {

/// What an edit must give back when it is undone.
struct EditorState {
    Text text;
    std::vector<uint32_t> words;

    friend bool operator==(const EditorState&, const EditorState&) = default;
    friend std::ostream& operator<<(std::ostream& out, const EditorState& state) { return out << ToUtf8(state.text); }
};

struct MarkedEditor {
    explicit MarkedEditor(Text marked = {})
    {
        buffer.SetLexer(&lexer);
        Load(std::move(marked));
    }

    void Load(Text marked)
    {
        size_t caret = marked.find(u'^');
        size_t anchor = marked.find(u'~');
        std::erase_if(marked, [](char16_t c) { return c == u'^' || c == u'~'; });
        if (caret == Text::npos) caret = 0;
        if (anchor == Text::npos)
            anchor = caret;
        else
            --(anchor < caret ? caret : anchor);
        buffer.SetText(marked);
        view.SetSelection(At(marked, anchor), At(marked, caret));
        buffer.EnsureScanned();
    }

    Text Plain() const { return Replace(buffer.GetText(), u"\r\n", u"\n"); }
    Text Marked() const
    {
        Text text = Plain();
        Position anchor;
        Position caret;
        view.GetSelection(anchor, caret);
        size_t at = Offset(text, caret);
        size_t other = Offset(text, anchor);
        text.insert(at, u"^");
        if (other != at) text.insert(other + (other > at ? 1 : 0), u"~");
        return text;
    }
    /// The caret and the other end of the selection stand in the text.
    bool HasSafeCaret() const
    {
        Position anchor;
        Position caret;
        view.GetSelection(anchor, caret);
        auto safe = [&](Position p) {
            return p.line >= 0 && p.line < buffer.LineCount() && p.col >= 0 && p.col <= buffer.LineLength(p.line);
        };
        return safe(anchor) && safe(caret);
    }
    EditorState State() const
    {
        EditorState state{Plain(), {}};
        for (int32_t line = 0; line < buffer.LineCount(); ++line)
            for (LineWord word : {LineWord::Control, LineWord::Lexer, LineWord::Identity})
                state.words.push_back(buffer.GetLineData(line, word));
        return state;
    }

    LexClass lexer;
    MvEdit settings;
    MemoryClipboard clipboard;
    SourceDocument buffer;
    SourceView view{buffer, clipboard};

private:
    static Position At(TextView text, size_t offset)
    {
        Position at;
        for (char16_t c : text.substr(0, offset))
            at = c == u'\n' ? Position{0, at.line + 1} : Position{at.col + 1, at.line};
        return at;
    }
    static size_t Offset(TextView text, Position at)
    {
        size_t start = 0;
        for (int32_t line = 0; line < at.line; ++line) start = text.find(u'\n', start) + 1;
        return start + static_cast<size_t>(at.col);
    }
};

} // namespace nib::test
