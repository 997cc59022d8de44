#include "text/LineScanner.h"

#include "diagnostics/Guarded.h"

#include <algorithm>
#include <chrono>

namespace nib {

namespace {

/// Lines that are scanned at once to colour one further down correctly; beyond that a look at the line before must do.
constexpr int32_t kScanAhead = 4000;

constexpr auto kControl = static_cast<size_t>(LineWord::Control);
constexpr auto kState = static_cast<size_t>(LineWord::Lexer);

/// Ends when the scan does, whatever the lexer throws.
class Flag {
public:
    explicit Flag(bool& flag) : flag_(flag), before_(std::exchange(flag, true)) {}
    ~Flag() { flag_ = before_; }
    Flag(const Flag&) = delete;
    Flag& operator=(const Flag&) = delete;

private:
    bool& flag_;
    bool before_;
};

} // namespace

void LineScanner::SetLexer(ISourceLex4* lexer)
{
    lexer_ = lexer;
    scannedTo_ = 0;
    for (int32_t line = 0; line < lines_.Count(); ++line) {
        lines_.SetWord(line, kState, 0);
        lines_.SetWord(line, kControl, WithNesting(lines_.Word(line, kControl), {}));
    }
    nestingChanged_ = true;
}

void LineScanner::LinesReplaced(int32_t first, int32_t oldLast, int32_t newLast)
{
    if (scannedTo_ > oldLast)
        scannedTo_ += newLast - oldLast;
    else if (scannedTo_ > first)
        scannedTo_ = first;
}

/// Answers up to which column the lexer's tokens can be used, even if it throws on the way.
int32_t LineScanner::ReadTokens(int32_t length, std::vector<Token>* tokens, Nesting& nesting)
{
    int32_t at = 0;
    IgnoringErrors([&] {
        for (;;) {
            // Once more at the end: the lexer closes its line on the token behind the last.
            Token token;
            lexer_->ScanToken(token);
            // A lexer that stands still, jumps or leaves the line has lost it.
            if (at == length || token.type == 0 || token.start != at || token.length <= 0 || token.length > length - at)
                return;
            if (tokens) tokens->push_back(token);
            if (token.attributes == token_attribute::kBeginsBlock)
                nesting.Follow({0, 1});
            else if (token.attributes == token_attribute::kEndsBlock)
                nesting.Follow({1, 0});
            at += token.length;
        }
    });
    return at;
}

void LineScanner::RunLexer(int32_t line, std::vector<Token>* tokens, Nesting& nesting)
{
    UnitSpan units = lines_.At(line).Units();
    TextView text;
    if (units.wide) {
        text = {units.Wide(), units.length};
    } else {
        if (scratch_.size() < units.length) scratch_.resize(units.length * 2);
        std::copy_n(units.Narrow(), units.length, scratch_.data());
        text = {scratch_.data(), units.length};
    }
    auto length = static_cast<int32_t>(text.size());
    lexer_->BeginLineScan(document_, line, text, 0);
    int32_t at = ReadTokens(length, tokens, nesting);
    if (at < length && tokens) tokens->push_back({kPlainToken, at, length - at, 0});
    lexer_->EndLineScan(document_);
}

bool LineScanner::Scan(int32_t line, std::vector<Token>* tokens)
{
    uint32_t stateBefore = lines_.Word(line, kState);
    uint32_t controlBefore = lines_.Word(line, kControl);
    Nesting nesting;
    bool done = false;
    {
        Flag busy(busy_);
        IgnoringErrors([&] {
            RunLexer(line, tokens, nesting);
            done = true;
        });
    }
    if (!done) {
        nesting = {};
        if (tokens) tokens->clear();
    }
    uint32_t control = WithNesting(controlBefore, nesting);
    lines_.SetWord(line, kControl, control);
    if (control != controlBefore) nestingChanged_ = true;
    return control != controlBefore || lines_.Word(line, kState) != stateBefore;
}

int32_t LineScanner::Rescan(int32_t first, int32_t last)
{
    if (!lexer_ || busy_) return -1;
    int32_t lastChanged = -1;
    for (int32_t line = first; line < std::min(scannedTo_, lines_.Count()); ++line) {
        uint32_t stateBefore = lines_.Word(line, kState);
        if (Scan(line)) lastChanged = line;
        if (line >= last && lines_.Word(line, kState) == stateBefore) break;
    }
    return lastChanged;
}

void LineScanner::EnsureScanned(int32_t last)
{
    if (!lexer_ || busy_) return;
    last = std::min(last, lines_.Count() - 1);
    while (scannedTo_ <= last) {
        Scan(scannedTo_);
        ++scannedTo_;
    }
}

bool LineScanner::Slice(int64_t microseconds)
{
    constexpr int32_t kBetweenLooksAtTheClock = 64;
    auto end = std::chrono::steady_clock::now() + std::chrono::microseconds(microseconds);
    while (!AllScanned() && !busy_) {
        EnsureScanned(scannedTo_ + kBetweenLooksAtTheClock);
        if (std::chrono::steady_clock::now() >= end) break;
    }
    return !AllScanned();
}

void LineScanner::Tokens(int32_t line, std::vector<Token>& tokens)
{
    tokens.clear();
    auto length = static_cast<int32_t>(lines_.Length(line));
    if (!lexer_ || busy_) { // a lexer that asks for tokens while it makes them gets plain text
        if (length > 0) tokens.push_back({kPlainToken, 0, length, 0});
        return;
    }
    if (line < scannedTo_ + kScanAhead)
        EnsureScanned(line - 1);
    else if (line > 0)
        Scan(line - 1);
    Scan(line, &tokens);
    if (line == scannedTo_) ++scannedTo_;
    if (tokens.empty() && length > 0) tokens.push_back({kPlainToken, 0, length, 0});
}

} // namespace nib
