#pragma once
// A language of two rules: "{" and "}" are blocks, and a line that ends in "," goes on in the next one, where every
// other token is of type 3 instead of 1.

#include "text/SourceDocument.h"

#include <vector>

namespace nib::test {

struct ToyLexer : ISourceLex4 {
    void BeginLineScan(SourceDocument& document, int32_t line, TextView lineText, int32_t) override
    {
        line_ = line;
        text_ = lineText;
        at_ = 0;
        goesOn_ = line > 0 && document.GetLineData(line - 1, LineWord::Lexer) == 1;
        ++linesScanned;
    }
    void ScanToken(Token& token) override
    {
        auto length = static_cast<int32_t>(text_.size());
        token = {0, at_, 0, 0};
        if (at_ >= length) return;
        auto isBrace = [this](int32_t i) {
            return text_[static_cast<size_t>(i)] == u'{' || text_[static_cast<size_t>(i)] == u'}';
        };
        token.type = goesOn_ ? 3 : 1;
        token.length = 1;
        if (isBrace(at_)) {
            token.attributes = text_[static_cast<size_t>(at_)] == u'{' ? 1 : 2;
            token.type = 2;
        } else {
            while (at_ + token.length < length && !isBrace(at_ + token.length)) ++token.length;
        }
        at_ += token.length;
    }
    int16_t EndLineScan(SourceDocument& document) override
    {
        document.SetLineData(line_, LineWord::Lexer,
                             !text_.empty() && text_.back() == u',' ? 1
                             : goesOn_ && text_.empty()             ? 1
                                                                    : 0);
        return 0;
    }

    int32_t linesScanned = 0;

private:
    int32_t line_ = 0;
    Text text_;
    int32_t at_ = 0;
    bool goesOn_ = false;
};

} // namespace nib::test
