#include "persistence/recovery/DocumentJournal.h"

#include <algorithm>
#include <utility>

namespace nib {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int32_t kLinesBetweenLooks = 64;
constexpr size_t kLargestPiece = size_t{1} << 18;
/// So many bytes of changes, and a part of the text's, are cheaper than the text once more.
constexpr size_t kFewBytes = size_t{1} << 18;
constexpr size_t kPartOfText = 8;

} // namespace

void DocumentJournal::Begin(JournalHead head)
{
    head_ = std::move(head);
    state_ = State::Copying;
    copied_ = 0;
    textBytes_ = changeBytes_ = 0;
    piece_.clear();
    pending_.clear();
    std::string bytes;
    journal::Begin(head_, bytes);
    writer_.Begin(name_);
    writer_.Append(name_, std::move(bytes));
}

void DocumentJournal::CopySlice(std::chrono::microseconds time)
{
    const auto end = Clock::now() + time;
    while (IsCopying()) {
        const int32_t last = std::min(copied_ + kLinesBetweenLooks, text_.LineCount());
        while (copied_ < last) CopyLine(copied_++);
        if (copied_ == text_.LineCount()) EndCopying();
        if (Clock::now() >= end) return;
    }
}

void DocumentJournal::CopyLine(int32_t line)
{
    const UnitSpan units = text_.LineUnits(line);
    if (line > 0) piece_ += "\r\n";
    if (units.wide) {
        EndPiece();
        std::string bytes;
        journal::TextPiece({units.Wide(), units.length}, bytes);
        textBytes_ += bytes.size();
        writer_.Append(name_, std::move(bytes));
    } else {
        piece_.append(reinterpret_cast<const char*>(units.Narrow()), units.length);
        if (piece_.size() >= kLargestPiece) EndPiece();
    }
}

void DocumentJournal::EndPiece()
{
    std::string bytes;
    journal::NarrowPiece(std::exchange(piece_, {}), bytes);
    textBytes_ += bytes.size();
    writer_.Append(name_, std::move(bytes));
}

void DocumentJournal::EndCopying()
{
    EndPiece();
    std::string bytes = std::exchange(pending_, {});
    journal::EndOfText(bytes);
    writer_.Append(name_, std::move(bytes));
    writer_.Commit(name_);
    for (const std::string& name : std::exchange(superseded_, {})) writer_.RemoveAfter(name_, name);
    state_ = State::Following;
}

void DocumentJournal::SetCopyName(TextView name)
{
    head_.copy = name;
    std::string record;
    journal::CopyName(name, record);
    Follow(std::move(record));
}

void DocumentJournal::TextChanged(const TextChange& change)
{
    if (IsStale() || (IsCopying() && change.start.line >= copied_)) return;
    if (IsCopying()) {
        if (change.oldEnd.line >= copied_) return MakeStale();
        copied_ += change.newEnd.line - change.oldEnd.line;
    }
    if (change.IsScattered() && IsLarge(change)) return MakeStale();
    std::string record;
    journal::Change(change.start, change.oldEnd, text_.GetRange(change.start, change.newEnd), record);
    changeBytes_ += record.size();
    if (changeBytes_ > MostChangeBytes()) return MakeStale();
    Follow(std::move(record));
}

size_t DocumentJournal::MostChangeBytes() const
{
    return kFewBytes + textBytes_ / kPartOfText;
}

/// A change of all lines is not made to a record to find that out.
bool DocumentJournal::IsLarge(const TextChange& change) const
{
    size_t bytes = changeBytes_;
    for (int32_t line = change.start.line; line <= change.newEnd.line && bytes <= MostChangeBytes(); ++line)
        bytes += text_.LineUnits(line).length;
    return bytes > MostChangeBytes();
}

void DocumentJournal::Follow(std::string record)
{
    if (state_ == State::Following)
        writer_.Append(name_, std::move(record));
    else if (IsCopying())
        pending_ += record;
}

} // namespace nib
