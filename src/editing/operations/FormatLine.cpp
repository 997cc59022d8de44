#include "editing/operations/FormatLine.h"

#include "base/Text.h"
#include "editing/LexClass.h"
#include "editing/MvEdit.h"
#include "text/Units.h"

#include <algorithm>

namespace nib {

namespace {

// Line flags
constexpr uint32_t kFor = 1;
constexpr uint32_t kNext = 2;
constexpr uint32_t kLoop = 4;
constexpr uint32_t kUntilWhile = 8;
constexpr uint32_t kBegin = 16;
constexpr uint32_t kCase = 32;
constexpr uint32_t kEnd = 64;
constexpr uint32_t kThen = 128;
constexpr uint32_t kElse = 256;
constexpr uint32_t kLocked = 512;
constexpr uint32_t kRepeat = 1024;
constexpr uint32_t kUserBegin = 2048;
constexpr uint32_t kUserEnd = 4096;
constexpr uint32_t kUserMiddle = 8192;
constexpr uint32_t kUserBeginFirst = 16384;
constexpr uint32_t kUserBeginLast = 32768;
constexpr uint32_t kAnyBlock = 0xFFFF;
constexpr uint32_t kCommentLine = 0x10000;

constexpr uint32_t kClauses = kThen | kElse | kLocked;

/// A line that holds all of `all`, one of `any` (if there are any) and none of `without` has the effect.
struct EffectRule {
    uint32_t all;
    uint32_t any;
    uint32_t without;
    BlockEffect effect;
};

// The first rule of a group that fits assigns those of its values that are not 0; a later group overrides an earlier.
constexpr EffectRule kForRules[] = {{kFor, 0, kNext, {1, 0}}, {kNext, 0, kFor, {0, 1}}};
constexpr EffectRule kClauseRules[] = {{kEnd, kClauses, 0, {1, 1}}, {0, kClauses, 0, {1, 0}}, {kEnd, 0, kCase, {0, 1}}};
constexpr EffectRule kLoopRules[] = {
    {kLoop, 0, kRepeat, {1, 0}}, {kRepeat, 0, kLoop, {0, 1}}, {kUntilWhile, 0, kLoop | kRepeat | kFor, {1, 1}}};
constexpr EffectRule kCaseRules[] = {
    {kBegin | kCase, 0, 0, {2, 0}}, {kEnd | kCase, 0, 0, {0, 2}}, {kCase, 0, 0, {1, 1}}};
constexpr EffectRule kUserRules[] = {{0, kUserBegin | kUserBeginFirst | kUserBeginLast, 0, {1, 0}},
                                     {kUserEnd, 0, 0, {0, 1}},
                                     {kUserMiddle, 0, 0, {1, 1}}};

bool Fits(const EffectRule& rule, uint32_t flags)
{
    return (flags & rule.all) == rule.all && (rule.any == 0 || flags & rule.any) && !(flags & rule.without);
}

template <size_t N>
void ApplyFirst(const EffectRule (&rules)[N], uint32_t flags, BlockEffect& effect)
{
    for (const EffectRule& rule : rules) {
        if (!Fits(rule, flags)) continue;
        if (rule.effect.increment != 0) effect.increment = rule.effect.increment;
        if (rule.effect.decrement != 0) effect.decrement = rule.effect.decrement;
        return;
    }
}

/// A text that is no program can open a block on each of a million lines; its indent must not outgrow the memory.
constexpr int64_t kDeepestIndent = 1000;

// Places of a comment line; any other value means the margin.
constexpr int32_t kLikeCode = 1;
constexpr int32_t kAtColumn0 = 2;

int32_t Length(TextView text)
{
    return static_cast<int32_t>(text.size());
}

int32_t CountBlanks(TextView text)
{
    return static_cast<int32_t>(std::min(text.find_first_not_of(u' '), text.size()));
}

int32_t LabelLength(TextView text)
{
    bool number = !text.empty() && units::IsDigit(text[0]);
    size_t end = 0;
    while (end < text.size()) {
        char16_t c = text[end];
        if (!units::IsDigit(c) && c != u'.' && (number || (!units::IsLetter(c) && c != u'$' && c != u'_'))) break;
        ++end;
    }
    if (end > 0 && end < text.size() && text[end] == u':') ++end;
    return static_cast<int32_t>(end);
}

/// Where comment lines that begin with this character stand. A remark spelled out, or one behind a mark, is like code.
int32_t CommentPlace(char16_t first, const FormatRules& rules)
{
    if (first == u'*') return rules.indentStar;
    if (first == u'!') return rules.indentBang;
    bool prefix = !units::IsLetter(first) && first != kValueMark && first != kSubValueMark;
    return prefix ? rules.indentUserComment : kLikeCode;
}

int32_t IndentOf(char16_t first, uint32_t flags, int32_t level, const FormatRules& rules)
{
    int32_t place = flags & kCommentLine ? CommentPlace(first, rules) : kLikeCode;
    if (place == kAtColumn0) return 0;
    if (place != kLikeCode) return rules.margin;
    return static_cast<int32_t>(std::min(int64_t{level} * rules.tabSize, kDeepestIndent)) + rules.margin;
}

} // namespace

FormatRules::FormatRules(const MvEdit& settings)
    : tabSize(std::max<int32_t>(settings.TabSize, 0)), margin(std::max<int32_t>(settings.Margin, 0)),
      indentStar(settings.IndentStar), indentBang(settings.IndentBang), indentUserComment(settings.IndentUserComment)
{
}

BlockEffect BlockEffectOf(uint32_t lineFlags)
{
    BlockEffect effect;
    if (!(lineFlags & kAnyBlock)) return effect;
    ApplyFirst(kForRules, lineFlags, effect);
    ApplyFirst(kClauseRules, lineFlags, effect);
    ApplyFirst(kLoopRules, lineFlags, effect);
    ApplyFirst(kCaseRules, lineFlags, effect);
    ApplyFirst(kUserRules, lineFlags, effect);
    return effect;
}

BlankEdit LayOutLine(TextView line, uint32_t lineFlags, int32_t level, const FormatRules& rules)
{
    BlankEdit edit;
    TextView text = line.substr(0, line.find_last_not_of(u' ') + 1);
    edit.trailing = Length(line) - Length(text);
    if (text.empty()) return edit;

    int32_t existing = CountBlanks(text);
    text.remove_prefix(static_cast<size_t>(existing));
    if (lineFlags & line_flag::kLabel) edit.label = LabelLength(text);
    if (edit.label > 0) {
        edit.leading = existing;
        text.remove_prefix(static_cast<size_t>(edit.label));
        existing = CountBlanks(text);
        text.remove_prefix(static_cast<size_t>(existing));
    }
    if (text.empty()) return edit; // a label alone

    int32_t indent = IndentOf(text.front(), lineFlags, level, rules);
    if (edit.label > 0) indent = std::max(indent - edit.label, 1);
    edit.delta = indent - existing;
    return edit;
}

} // namespace nib
