#pragma once
#include "editing/SourceView.h"

#include <algorithm>

namespace nib::test {

/// As much of the language as clicks need: blanks (1), labels at the front and behind GOTO and GOSUB (2), ";" (5),
/// comments (6), names and signs (8), keywords (10).
class BasicLexer final : public ISourceLex4 {
public:
    void BeginLineScan(SourceDocument&, int32_t line, TextView text, int32_t) override
    {
        line_ = line;
        text_ = text;
        at_ = 0;
        labelNext_ = false;
        labelLine_ = false;
    }
    void ScanToken(Token& token) override
    {
        token = {0, static_cast<int32_t>(at_), 0, 0};
        if (at_ >= text_.size()) return;
        size_t end = at_ + 1;
        char16_t c = text_[at_];
        token.type = c == u';' ? 5 : 8;
        if (c == u' ') {
            token.type = 1;
            while (end < text_.size() && text_[end] == u' ') ++end;
        } else if (c == u'*' && Trim(text_.substr(0, at_)).empty()) {
            token.type = 6;
            end = text_.size();
        } else if (IsName(c)) {
            end = ScanName(token);
        }
        token.length = static_cast<int32_t>(end - at_);
        at_ = end;
    }
    int16_t EndLineScan(SourceDocument& document) override
    {
        document.SetLineData(line_, LineWord::Lexer, labelLine_ ? 0x20000 : 0);
        return 0;
    }
    int32_t GetDesiredCase() override { return 0; }
    int32_t GetLineIndex() override { return static_cast<int32_t>(at_); }
    void SetLineIndex(int32_t index) override { at_ = static_cast<size_t>(index); }
    int32_t GetProperties() override { return 0; }

private:
    static bool IsName(char16_t c)
    {
        return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') || (c >= u'0' && c <= u'9') || c == u'.';
    }
    size_t ScanName(Token& token)
    {
        size_t end = at_;
        while (end < text_.size() && IsName(text_[end])) ++end;
        TextView word = text_.substr(at_, end - at_);
        bool defines = end < text_.size() && text_[end] == u':' && Trim(text_.substr(0, at_)).empty();
        if (defines || labelNext_) {
            token.type = 2;
            labelLine_ = labelLine_ || defines;
            labelNext_ = false;
            return defines ? end + 1 : end;
        }
        constexpr TextView keywords[] = {u"CALL", u"COMMON", u"END", u"GOSUB", u"GOTO", u"IF", u"INCLUDE", u"PRINT", u"THEN"};
        bool keyword =
            std::any_of(std::begin(keywords), std::end(keywords), [&](TextView k) { return EqualsNoCase(k, word); });
        if (keyword) token.type = 10;
        labelNext_ = EqualsNoCase(word, u"GOSUB") || EqualsNoCase(word, u"GOTO");
        token.attributes = EqualsNoCase(word, u"THEN") ? 1 : EqualsNoCase(word, u"END") ? 2 : 0;
        return end;
    }

    TextView text_;
    size_t at_ = 0;
    int32_t line_ = 0;
    bool labelNext_ = false;
    bool labelLine_ = false;
};

} // namespace nib::test
