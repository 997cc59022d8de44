#pragma once
#include "text/SourceDocument.h"

#include <algorithm>

namespace nib {

/// A small language: "*" starts a comment (6), quotes a string (7), IF and END are keywords (4) that begin and end a
/// block, all else is plain (8).
struct WordLexer : ISourceLex4 {
    void BeginLineScan(SourceDocument&, int32_t, TextView text, int32_t) override
    {
        ++scans;
        text_ = text;
        at_ = 0;
    }
    void ScanToken(Token& token) override
    {
        token = {0, static_cast<int32_t>(at_), 0, 0};
        if (at_ >= text_.size()) return;
        size_t end = at_ + 1;
        token.type = 8;
        if (text_[at_] == u'*') {
            token.type = 6;
            end = text_.size();
        } else if (text_[at_] == u'"') {
            token.type = 7;
            end = std::min(text_.find(u'"', at_ + 1), text_.size() - 1) + 1;
        } else if (IsWord(at_)) {
            while (end < text_.size() && IsWord(end)) ++end;
            TextView word = text_.substr(at_, end - at_);
            token.attributes = word == u"IF" ? 1 : word == u"END" ? 2 : 0;
            if (token.attributes != 0) token.type = 4;
        } else {
            while (end < text_.size() && text_[end] != u'*' && text_[end] != u'"' && !IsWord(end)) ++end;
        }
        token.length = static_cast<int32_t>(end - at_);
        at_ = end;
    }
    int16_t EndLineScan(SourceDocument&) override { return 0; }

    int32_t scans = 0;

private:
    bool IsWord(size_t i) const { return text_[i] >= u'A' && text_[i] <= u'Z'; }

    TextView text_;
    size_t at_ = 0;
};

} // namespace nib
