#include "text/widget/AccessibleText.h"

#include "platform/qt/QtText.h"

#include <algorithm>
#include <utility>

namespace nib {

namespace {

/// Nobody listens to more than that.
constexpr int32_t kMostText = 100'000;
constexpr int32_t kMostLines = 1000;
constexpr int32_t kMostInserted = 10'000; ///< lines
/// Nor to so many changes in one go: each goes to another program and is asked about by it.
constexpr int32_t kMostChanges = 20;

} // namespace

void AccessibleText::KnowUpTo(int32_t line)
{
    if (starts_.empty()) starts_.push_back(0);
    for (auto next = static_cast<int32_t>(starts_.size()); next <= line; ++next) {
        starts_.push_back(starts_.back() + document_.LineLength(next - 1) + 1);
    }
}

void AccessibleText::Forget(int32_t line)
{
    auto keep = static_cast<size_t>(std::max(line, 0)) + 1;
    if (starts_.size() > keep) starts_.resize(keep);
}

int32_t AccessibleText::Of(Position p)
{
    p = document_.Clamp(p);
    KnowUpTo(p.line);
    return starts_[static_cast<size_t>(p.line)] + p.col;
}

Position AccessibleText::At(int32_t offset)
{
    offset = std::max(offset, 0);
    int32_t lines = document_.LineCount();
    KnowUpTo(0);
    // Not much further than it lies: after each key all below are forgotten.
    for (int32_t more = 64; starts_.back() <= offset; more *= 2) {
        const auto known = static_cast<int32_t>(starts_.size());
        if (known >= lines) break;
        KnowUpTo(std::min(known + more, lines) - 1);
    }
    auto above = std::upper_bound(starts_.begin(), starts_.end(), offset);
    auto line = static_cast<int32_t>(above - starts_.begin()) - 1;
    return {std::min(offset - starts_[static_cast<size_t>(line)], document_.LineLength(line)), line};
}

Text AccessibleText::Range(int32_t start, int32_t end)
{
    Text text;
    if (start >= end) return text;
    Position from = At(start);
    Position to = At(end);
    Text scratch;
    for (int32_t line = from.line; line <= to.line; ++line) {
        TextView whole = document_.LineText(line, scratch);
        auto first = static_cast<size_t>(line == from.line ? from.col : 0);
        auto last = line == to.line ? static_cast<size_t>(to.col) : whole.size();
        text.append(whole.substr(first, last - first));
        if (line != to.line) text.push_back(u'\n');
    }
    return text;
}

void AccessibleText::Remember()
{
    lineNumber_ = view_.CaretLine();
    line_ = document_.GetRange({0, lineNumber_}, {kMostText, lineNumber_});
    selection_ = view_.Selection();
    bool small = selection_.end.line - selection_.start.line < kMostLines;
    selected_ = small ? Replace(view_.SelectedText(), u"\r\n", u"\n") : Text();
}

/// The text that a change removed, with "\n" between lines; of the right kind but unknown content when it was not near
/// the caret.
Text AccessibleText::Removed(const TextChange& change) const
{
    if (change.start == selection_.start && change.oldEnd == selection_.end) return selected_;
    if (change.start.line != change.oldEnd.line) return u"\n";
    auto start = static_cast<size_t>(change.start.col);
    auto length = static_cast<size_t>(change.oldEnd.col) - start;
    if (change.start.line == lineNumber_ && start + length <= line_.size()) return line_.substr(start, length);
    return Text(length, u' ');
}

void AccessibleText::CaretMoved()
{
    if (!QAccessible::isActive()) return;
    Remember();
    TellSoon();
}

void AccessibleText::TellSoon()
{
    if (std::exchange(restWaits_, true)) return;
    QMetaObject::invokeMethod(
        &widget_, [this] { TellRest(); }, Qt::QueuedConnection);
}

void AccessibleText::TellRest()
{
    restWaits_ = false;
    if (std::exchange(changes_, 0) > kMostChanges) {
        QAccessibleEvent event(&widget_, QAccessible::VisibleDataChanged);
        QAccessible::updateAccessibility(&event);
    }
    const int32_t caret = Of(view_.Caret());
    QAccessibleTextCursorEvent moved(&widget_, caret);
    QAccessible::updateAccessibility(&moved);
    const bool selects = view_.HasSelection();
    if (!std::exchange(hadSelection_, selects) && !selects) return;
    QAccessibleTextSelectionEvent selected(&widget_, Of(selection_.start), Of(selection_.end));
    selected.setCursorPosition(caret);
    QAccessible::updateAccessibility(&selected);
}

/// False for one of so many that they are told as one.
bool AccessibleText::TellsChange(const TextChange& change)
{
    TellSoon();
    // A text that nobody listens to is not worth its copy.
    const int32_t lines = std::max(change.oldEnd.line, change.newEnd.line) - change.start.line;
    if (lines >= (change.within ? kMostLines : kMostInserted)) changes_ = kMostChanges;
    changes_ = std::min(changes_ + 1, kMostChanges + 1);
    return changes_ <= kMostChanges;
}

void AccessibleText::TextChanged(const TextChange& change)
{
    Forget(change.start.line);
    if (!QAccessible::isActive()) return;
    if (!TellsChange(change)) return Remember();
    int32_t start = Of(change.start);
    if (change.oldEnd != change.start) {
        QAccessibleTextRemoveEvent removed(&widget_, start, ToQString(Removed(change)));
        QAccessible::updateAccessibility(&removed);
    }
    if (change.newEnd != change.start) {
        QAccessibleTextInsertEvent inserted(&widget_, start, ToQString(Range(start, Of(change.newEnd))));
        QAccessible::updateAccessibility(&inserted);
    }
    Remember();
}

void AccessibleText::TextReset()
{
    Forget(0);
    if (!QAccessible::isActive()) return;
    QAccessibleEvent event(&widget_, QAccessible::VisibleDataChanged);
    QAccessible::updateAccessibility(&event);
}

} // namespace nib
