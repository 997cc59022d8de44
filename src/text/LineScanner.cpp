#include "text/LineScanner.h"

#include "diagnostics/Guarded.h"

#include <algorithm>
#include <chrono>

namespace nib {

namespace {

/// Lines that are scanned at once to colour one further down correctly; beyond that a look at the line before must do.
constexpr int32_t kScanAhead = 4000;

/// Nobody reads a longer line, and coloured at each key it would keep whoever edits it waiting.
constexpr size_t kMostLexed = size_t{1} << 20;

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

/// What the lexer is shown of a line.
UnitSpan LineScanner::LexedUnits(int32_t line) const
{
    UnitSpan units = lines_.At(line).Units();
    units.length = std::min(units.length, kMostLexed);
    return units;
}

bool LineScanner::ScanWhole(int32_t line, Nesting& nesting)
{
    const uint32_t above = line > 0 ? lines_.Word(line - 1, kState) : 0;
    LineScan scan;
    if (!lexer_->ScanLine(LexedUnits(line), above, scan)) return false;
    lines_.SetWord(line, kState, scan.data);
    nesting = scan.nesting;
    return true;
}

void LineScanner::RunLexer(int32_t line, std::vector<Token>* tokens, Nesting& nesting)
{
    if (!tokens && ScanWhole(line, nesting)) return;
    UnitSpan units = LexedUnits(line);
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
    length = static_cast<int32_t>(lines_.Length(line));
    if (at < length && tokens) tokens->push_back({kPlainToken, at, length - at, 0});
    lexer_->EndLineScan(document_);
}

bool LineScanner::IndentOf(TextView text, uint32_t above, LineIndent& indent)
{
    if (!lexer_ || busy_ || text.size() > kMostLexed) return false;
    Flag busy(busy_);
    return OrDefault([&] { return lexer_->IndentOf(text, above, indent); }, false);
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

bool BlockFolder::IsCollapsed(int32_t line) const
{
    return lines_.Word(line, kControl) & own_bits::kCollapsed;
}

bool BlockFolder::IsHidden(int32_t line) const
{
    return lines_.Word(line, kControl) & own_bits::kHidden;
}

int32_t BlockFolder::BlockEnd(int32_t line) const
{
    int32_t opens = NestingOf(lines_.Word(line, kControl)).opens;
    return opens > 0 ? lines_.FindClose(line + 1, opens) : -1;
}

int32_t BlockFolder::LastHidden(int32_t head) const
{
    return LastHidden(head, BlockEnd(head));
}

/// The end line is hidden with its block unless it opens the next one.
int32_t BlockFolder::LastHidden(int32_t head, int32_t end) const
{
    if (end > head && NestingOf(lines_.Word(end, kControl)).opens > 0) --end;
    return end;
}

uint32_t BlockFolder::BlockBits(int32_t line) const
{
    Nesting own = NestingOf(lines_.Word(line, kControl));
    int32_t depth = lines_.NestingBefore(line).opens;
    // Of the blocks open here, those that never close are none.
    bool inside = depth > own.closes && lines_.FindClose(line + 1, own.opens + 1) >= 0;
    uint32_t bits = inside ? line_bits::kBlockInside : 0;
    if (IsCollapsed(line)) return bits | line_bits::kBlockCollapsed;
    if (own.opens > 0 && BlockEnd(line) >= 0) return bits | line_bits::kBlockHead;
    if (own.closes > 0 && depth > 0) return bits | line_bits::kBlockEnd;
    return bits;
}

void BlockFolder::SetBit(int32_t line, uint32_t bit, bool on)
{
    uint32_t word = lines_.Word(line, kControl);
    lines_.SetWord(line, kControl, on ? word | bit : word & ~bit);
}

bool BlockFolder::Collapse(int32_t line)
{
    int32_t last = LastHidden(line);
    if (IsCollapsed(line) || last <= line) return false;
    SetBit(line, own_bits::kCollapsed, true);
    ++collapsed_;
    for (int32_t i = line + 1; i <= last; ++i) SetBit(i, own_bits::kHidden, true);
    return true;
}

/// Shows lines again, but for what collapsed blocks among them hide.
void BlockFolder::ShowRange(int32_t first, int32_t last)
{
    int32_t hiddenTo = -1;
    for (int32_t line = first; line <= last; ++line) {
        SetBit(line, own_bits::kHidden, line <= hiddenTo);
        if (IsCollapsed(line)) hiddenTo = std::max(hiddenTo, LastHidden(line));
    }
}

bool BlockFolder::Expand(int32_t line)
{
    if (!IsCollapsed(line)) return false;
    SetBit(line, own_bits::kCollapsed, false);
    --collapsed_;
    if (!IsHidden(line)) ShowRange(line + 1, LastHidden(line));
    return true;
}

template <typename Closed>
void BlockFolder::MatchBlocks(Closed&& closed) const
{
    struct Open {
        int32_t line;
        int32_t left;
    };
    std::vector<Open> open;
    for (int32_t line = 0; line < lines_.Count(); ++line) {
        Nesting own = NestingOf(lines_.Word(line, kControl));
        while (own.closes > 0 && !open.empty()) {
            int32_t taken = std::min(own.closes, open.back().left);
            own.closes -= taken;
            open.back().left -= taken;
            if (open.back().left > 0) break;
            int32_t head = open.back().line;
            open.pop_back();
            closed(head, line);
        }
        if (own.opens > 0) open.push_back({line, own.opens});
    }
}

bool BlockFolder::CollapseAll()
{
    bool changed = false;
    MatchBlocks([&](int32_t head, int32_t end) {
        if (IsCollapsed(head) || LastHidden(head, end) <= head) return;
        SetBit(head, own_bits::kCollapsed, true);
        ++collapsed_;
        changed = true;
    });
    return HideCollapsed() || changed;
}

bool BlockFolder::ExpandAll()
{
    if (collapsed_ == 0) return false;
    constexpr uint32_t kFolded = own_bits::kCollapsed | own_bits::kHidden;
    for (int32_t line = 0; line < lines_.Count(); ++line)
        if (const uint32_t word = lines_.Word(line, kControl); word & kFolded)
            lines_.SetWord(line, kControl, word & ~kFolded);
    collapsed_ = 0;
    return true;
}

bool BlockFolder::Reveal(int32_t line)
{
    bool changed = false;
    for (int32_t head = line - 1; head >= 0 && IsHidden(line); --head)
        if (IsCollapsed(head) && LastHidden(head) >= line) changed = Expand(head) || changed;
    return changed;
}

/// For many folds at once: matches all blocks in one walk rather than one by one.
bool BlockFolder::HideCollapsed()
{
    std::vector<std::pair<int32_t, int32_t>> folds; // head and last hidden line
    folds.reserve(static_cast<size_t>(std::max(collapsed_, 0)));
    MatchBlocks([&](int32_t head, int32_t end) {
        if (IsCollapsed(head) && LastHidden(head, end) > head) folds.emplace_back(head, LastHidden(head, end));
    });
    std::sort(folds.begin(), folds.end());
    auto fold = folds.begin();
    int32_t hiddenTo = -1;
    bool changed = false;
    for (int32_t line = 0; line < lines_.Count(); ++line) {
        const bool hide = line <= hiddenTo;
        const uint32_t word = lines_.Word(line, kControl);
        if (hide != ((word & own_bits::kHidden) != 0)) {
            lines_.SetWord(line, kControl, word ^ own_bits::kHidden);
            changed = true;
        }
        if (!(word & own_bits::kCollapsed)) continue;
        if (fold != folds.end() && fold->first == line) {
            hiddenTo = std::max(hiddenTo, fold++->second);
        } else {
            SetBit(line, own_bits::kCollapsed, false);
            --collapsed_;
            changed = true;
        }
    }
    return changed;
}

bool BlockFolder::Refresh(int32_t first, int32_t last)
{
    // From the fold that reaches up to the edit to the end of those that began in it. A block above that ended above
    // it still does: what matches it lies in between.
    int32_t above = std::max(first - 1, 0);
    int32_t seen = lines_.VisibleBefore(above) - (IsHidden(above) ? 1 : 0);
    int32_t line = seen > 0 ? lines_.VisibleLine(seen) : 0;
    int32_t below = last + 1 < lines_.Count() ? lines_.VisibleBefore(last + 1) : lines_.VisibleCount();
    int32_t end = below < lines_.VisibleCount() ? lines_.VisibleLine(below) : lines_.Count() - 1;
    int32_t hiddenTo = -1;
    bool changed = false;
    for (; line <= std::max(end, hiddenTo); ++line) {
        bool hide = line <= hiddenTo;
        if (hide != IsHidden(line)) {
            SetBit(line, own_bits::kHidden, hide);
            changed = true;
        }
        if (!IsCollapsed(line)) continue;
        int32_t lastHidden = LastHidden(line);
        if (lastHidden <= line) {
            SetBit(line, own_bits::kCollapsed, false);
            --collapsed_;
            changed = true;
        }
        hiddenTo = std::max(hiddenTo, lastHidden);
    }
    return changed;
}

bool BlockFolder::LineRemoved(uint32_t control)
{
    if (control & own_bits::kCollapsed) --collapsed_;
    return control & (own_bits::kCollapsed | own_bits::kHidden | own_bits::kNestingMask);
}

} // namespace nib
