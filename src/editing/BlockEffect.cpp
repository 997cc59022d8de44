#include "editing/BlockEffect.h"

#include "editing/BlockStyles.h"
#include "editing/LexClass.h"
#include "text/TextSearch.h"
#include "text/Units.h"

#include <algorithm>

namespace nib {

namespace {

using namespace block;

constexpr int32_t kClauses = kThen | kElse | kLocked;

/// A line that holds all of `all`, one of `any` (if there are any) and none of `without` has the effect.
struct EffectRule {
    int32_t all;
    int32_t any;
    int32_t without;
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

bool Fits(const EffectRule& rule, int32_t flags)
{
    return (flags & rule.all) == rule.all && (rule.any == 0 || flags & rule.any) && !(flags & rule.without);
}

template <size_t N>
void ApplyFirst(const EffectRule (&rules)[N], int32_t flags, BlockEffect& effect)
{
    for (const EffectRule& rule : rules) {
        if (!Fits(rule, flags)) continue;
        if (rule.effect.increment != 0) effect.increment = rule.effect.increment;
        if (rule.effect.decrement != 0) effect.decrement = rule.effect.decrement;
        return;
    }
}

} // namespace

BlockEffect BlockEffectOf(uint32_t lineFlags)
{
    BlockEffect effect;
    int32_t words = static_cast<int32_t>(lineFlags) & kAny;
    if (words == 0) return effect;
    ApplyFirst(kForRules, words, effect);
    ApplyFirst(kClauseRules, words, effect);
    ApplyFirst(kLoopRules, words, effect);
    ApplyFirst(kCaseRules, words, effect);
    ApplyFirst(kUserRules, words, effect);
    return effect;
}

int32_t LabelLength(TextView text, uint32_t lineFlags)
{
    if (lineFlags & line_flag::kApartLabel) return static_cast<int32_t>(std::min(text.find(u':'), text.size() - 1) + 1);
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

LineIndent IndentOfLine(TextView line, uint32_t lineFlags)
{
    const BlockEffect effect = BlockEffectOf(lineFlags);
    LineIndent indent;
    indent.steps = {effect.decrement, effect.increment};
    indent.column = IndentOf(line);
    if (lineFlags & line_flag::kLabel) {
        indent.labelled = true;
        indent.column += LabelLength(line.substr(static_cast<size_t>(indent.column)), lineFlags);
        indent.column += IndentOf(line.substr(static_cast<size_t>(indent.column)));
    }
    const bool directive = lineFlags & line_flag::kDirective && indent.column == 0;
    indent.code = static_cast<size_t>(indent.column) < line.size() && !(lineFlags & line_flag::kComment) && !directive;
    indent.continued = lineFlags & line_flag::kContinues;
    indent.goesOn = lineFlags & line_flag::kGoesOn;
    return indent;
}

} // namespace nib
