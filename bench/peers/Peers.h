#pragma once
// The text component of this house and a public one, each loaded with the same program and coloured.

#include "BasicText.h"
#include "editing/LexClass.h"
#include "platform/Desktop.h"
#include "text/SourceDocument.h"

#include <Qsci/qsciscintillabase.h>

#include <cstring>

namespace nib::bench {

constexpr int32_t kLines = 1000000;
/// Of the peer's own lexers the one for a BASIC that finds blocks in such programs, by their indentation.
constexpr int kBasic = 8;

inline const std::string& Bytes()
{
    static const std::string bytes = BasicBytes(kLines);
    return bytes;
}

/// The same with every line at the left.
inline const std::string& FlatBytes()
{
    static const std::string bytes = [] {
        std::string flat;
        for (const char* at = Bytes().c_str(); *at;) {
            at += strspn(at, " ");
            const char* end = strchr(at, '\n') + 1;
            flat.append(at, end);
            at = end;
        }
        return flat;
    }();
    return bytes;
}

class NoClipboard final : public Clipboard {
public:
    bool HasText() const override { return false; }
    Text GetText() const override { return {}; }
    void SetText(TextView) override {}
    Text GetPrimary() const override { return {}; }
    void SetPrimary(TextView) override {}
};

struct Ours {
    SourceDocument buffer;
    LexClass lexer;

    explicit Ours(const std::string& bytes = Bytes())
    {
        buffer.SetText(FromUtf8(bytes));
        buffer.SetLexer(&lexer);
        buffer.EnsureScanned();
    }
    ~Ours() { buffer.SetLexer(nullptr); }
};

struct Scintilla {
    QsciScintillaBase view;

    explicit Scintilla(const std::string& bytes = Bytes())
    {
        view.SendScintilla(QsciScintillaBase::SCI_SETUNDOCOLLECTION, 0UL);
        view.SendScintilla(QsciScintillaBase::SCI_SETCODEPAGE,
                           static_cast<unsigned long>(QsciScintillaBase::SC_CP_UTF8));
        view.SendScintilla(QsciScintillaBase::SCI_SETLEXER, static_cast<unsigned long>(kBasic));
        view.SendScintilla(QsciScintillaBase::SCI_SETPROPERTY, "fold", "1");
        view.SendScintilla(QsciScintillaBase::SCI_SETKEYWORDS, 0UL,
                           "if then else end locked begin case go goto gosub to sub subroutine call loop until while "
                           "do repeat for next step include");
        view.SendScintilla(QsciScintillaBase::SCI_ADDTEXT, static_cast<unsigned long>(bytes.size()), bytes.data());
        view.SendScintilla(QsciScintillaBase::SCI_COLOURISE, 0UL, -1L);
        view.SendScintilla(QsciScintillaBase::SCI_SETUNDOCOLLECTION, 1UL);
        // What its wrapper tells screen readers counts the characters before each edit; here the component counts.
        view.SendScintilla(QsciScintillaBase::SCI_SETMODEVENTMASK, 0UL);
    }
};

} // namespace nib::bench
