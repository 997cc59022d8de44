// Any text under any keywords: the tokens of a line cover it without gap or overlap, and the line ends. Scanned whole,
// it comes to what they do.
// Input: one byte of options, a keyword list, NUL, comment prefixes, NUL, the text.

#include "Fuzz.h"
#include "editing/LexClass.h"
#include "text/SourceDocument.h"

namespace {

using namespace nib;

void ScanLine(ISourceLex4& lexer, SourceDocument& buffer, int32_t line)
{
    Text text = buffer.GetLine(line);
    auto length = static_cast<int32_t>(text.size());
    lexer.BeginLineScan(buffer, line, text, 0);
    int32_t at = 0;
    Nesting nesting;
    for (;;) {
        Token token;
        lexer.ScanToken(token);
        Require(token.start == at);
        if (token.type == 0) break;
        Require(token.length > 0 && token.length <= length - at);
        Require(token.attributes >= 0 && token.attributes <= 2);
        if (token.attributes != 0) nesting.Follow(token.attributes == 1 ? Nesting{0, 1} : Nesting{1, 0});
        at += token.length;
        Require(lexer.GetLineIndex() == at);
    }
    Require(at == length);
    Require(lexer.EndLineScan(buffer) == 0);
    LineScan whole;
    Require(
        lexer.ScanLine(buffer.LineUnits(line), line > 0 ? buffer.GetLineData(line - 1, LineWord::Lexer) : 0, whole));
    Require(whole.nesting == nesting && whole.data == buffer.GetLineData(line, LineWord::Lexer));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size == 0) return 0;
    Input input(data + 1, size - 1);
    clsKeywords keywords;
    keywords.SetKeywordList(data[0] & 4 ? keyword_class::kLanguage : keyword_class::kUser, u"\n",
                            FromUtf8(input.Part()));
    keywords.SetCommentPrefixes(FromUtf8(input.Part()));
    if (data[0] & 1) keywords.SetCaseSensitive(true);
    LexClass lexer;
    lexer.SetKeywords(keywords);
    lexer.SetHighlight(!(data[0] & 2));
    SourceDocument buffer;
    buffer.SetText(FromUtf8(input.rest));
    for (int32_t line = 0; line < buffer.LineCount(); ++line) ScanLine(lexer, buffer, line);
    return 0;
}
