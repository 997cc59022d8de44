#include "shell/HitTest.h"

#include "documents/mvDocument.h"
#include "editing/LexClass.h"

#include <algorithm>
#include <optional>

namespace nib {

namespace {

/// Token types of the lexer.
constexpr int32_t kEnd = 0;
constexpr int32_t kBlank = 1;
constexpr int32_t kLabel = 2;
constexpr int32_t kSeparator = 5;

/// The tokens of one line round a click.
class ClickedLine {
public:
    ClickedLine(SourceView& view, Position at) : view_(view), line_(at.line), text_(view.Document().GetLine(at.line))
    {
        Token token;
        if (view_.NextToken(line_, at.col, token)) clicked_ = token;
    }

    TextView Content() const { return text_; }
    const std::optional<Token>& Clicked() const { return clicked_; }
    TextView TextOf(const Token& token) const
    {
        auto start = std::min(static_cast<size_t>(token.start), text_.size());
        return TextView(text_).substr(start, static_cast<size_t>(token.length));
    }
    /// All of them, with the clicked one's place in `clicked`: the size of the list for a click behind the text.
    std::vector<Token> Tokens(size_t& clicked) const
    {
        std::vector<Token> tokens;
        Token token;
        for (int32_t at = 0; view_.NextToken(line_, at, token); at = std::max(at + 1, token.start + token.length))
            tokens.push_back(token);
        clicked = tokens.size();
        if (clicked_) {
            auto found = std::find_if(tokens.begin(), tokens.end(),
                                      [&](const Token& t) { return t.start + t.length > clicked_->start; });
            clicked = static_cast<size_t>(found - tokens.begin());
        }
        return tokens;
    }

private:
    SourceView& view_;
    int32_t line_;
    Text text_;
    std::optional<Token> clicked_;
};

bool EndsName(const Token& token)
{
    return token.type == kEnd || token.type == kBlank || token.type == kSeparator;
}

/// Walks backward over a line, one blank-separated word at a time.
class WordsBackward {
public:
    WordsBackward(const ClickedLine& line, bool stopAtParenthesis) : line_(line)
    {
        size_t clicked = 0;
        tokens_ = line.Tokens(clicked);
        at_ = clicked;
        while (at_ < tokens_.size() && !EndsName(tokens_[at_])) {
            if (stopAtParenthesis && line_.TextOf(tokens_[at_]) == u"(") break;
            ++at_;
        }
    }
    /// The word that ends where the walk stands; empty at the front of the line, behind a label or behind a ";".
    TextView Next()
    {
        if (!first_ && at_ > 0 && tokens_[at_ - 1].type == kBlank) --at_;
        first_ = false;
        size_t end = at_;
        while (at_ > 0 && !EndsName(tokens_[at_ - 1]) && tokens_[at_ - 1].type != kLabel) --at_;
        if (at_ == end) return {};
        const Token& last = tokens_[end - 1];
        auto start = static_cast<size_t>(tokens_[at_].start);
        return line_.Content().substr(start, static_cast<size_t>(last.start + last.length) - start);
    }

private:
    const ClickedLine& line_;
    std::vector<Token> tokens_;
    size_t at_ = 0;
    bool first_ = true;
};

bool Contains(TextView text, TextView part)
{
    return text.find(part) != TextView::npos;
}

/// A label is settled either way: a click on its definition means nothing else either.
bool FindLabel(const ClickedLine& line, uint32_t lineState, Hit& hit)
{
    if (!line.Clicked() || line.Clicked()->type != kLabel) return false;
    const Token& token = *line.Clicked();
    bool first = Trim(line.Content().substr(0, static_cast<size_t>(token.start))).empty();
    if (first && (lineState & line_flag::kLabel)) return true;
    TextView name = line.TextOf(token);
    if (name.ends_with(u':')) name.remove_suffix(1);
    hit.kind = HitKind::Label;
    hit.Target = name;
    return true;
}

bool FindCall(const ClickedLine& line, Hit& hit)
{
    if (!Contains(line.Content(), u"CALL")) return false;
    WordsBackward words(line, true);
    TextView name = words.Next();
    if (name.empty() || Contains(name, u"(") || !EqualsNoCase(words.Next(), u"CALL")) return false;
    hit.kind = HitKind::Call;
    hit.Target = name;
    return true;
}

bool IsInclude(TextView word)
{
    for (TextView keyword : {u"$INCLUDE", u"INCLUDE", u"$INSERT"})
        if (EqualsNoCase(word, keyword)) return true;
    return false;
}

bool FindInclude(const ClickedLine& line, Hit& hit)
{
    if (!Contains(line.Content(), u"$INSERT") && !Contains(line.Content(), u"INCLUDE")) return false;
    WordsBackward words(line, false);
    Text name(words.Next());
    if (name.empty()) return false;
    TextView keyword = words.Next();
    if (!IsInclude(keyword)) {
        // The file's name may stand in front of the item's.
        if (keyword.empty()) return false;
        name = Text(keyword) + u" " + name;
        if (!IsInclude(words.Next())) return false;
    }
    hit.kind = HitKind::Include;
    hit.Target = name;
    return true;
}

void FindBlock(uint32_t control, int32_t line, Hit& hit)
{
    uint32_t block = control & line_bits::kBlockMask;
    if (block == 0) return;
    bool collapsed = (block & line_bits::kBlockStateMask) == line_bits::kBlockCollapsed;
    hit.kind = collapsed ? HitKind::ClosedBlock : HitKind::OpenBlock;
    hit.Target = (collapsed ? u"+" : u"-") + Decimal(line);
}

} // namespace

Hit HitTest(SourceView& view, Position at)
{
    SourceDocument& document = view.Document();
    at.line = std::clamp(at.line, 0, document.LineCount() - 1);
    Hit hit;
    hit.TargetLine = at.line + 1;
    ClickedLine line(view, at);
    if (FindLabel(line, document.GetLineData(at.line, LineWord::Lexer), hit)) return hit;
    if (!FindCall(line, hit) && !FindInclude(line, hit))
        FindBlock(document.GetLineData(at.line, LineWord::Control), at.line, hit);
    return hit;
}

} // namespace nib
