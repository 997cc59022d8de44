#include "text/widget/MarginNotes.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace nib {

void MarginNotes::Set(std::vector<MarginNote> notes)
{
    all_ = std::move(notes);
    old_ = false;
    columns_ = 0;
    for (const MarginNote& note : all_) columns_ = std::max(columns_, static_cast<int32_t>(note.text.size()) + 1);
}

void MarginNotes::Follow(const TextChange& change)
{
    old_ = true;
    const int32_t moved = change.newEnd.line - change.oldEnd.line;
    const auto behind = [&](int32_t line) { return line > change.oldEnd.line ? line + moved : line; };
    const auto from = std::partition_point(all_.begin(), all_.end(),
                                           [&](const MarginNote& note) { return note.last < change.start.line; });
    const bool withinLine = moved == 0 && change.start.line == change.oldEnd.line;
    if (from == all_.end() || (withinLine && from->first > change.oldEnd.line)) return;
    std::vector<MarginNote> rest;
    for (auto note = from; note != all_.end(); ++note) {
        if (note->first > change.oldEnd.line) {
            note->first += moved;
            note->last += moved;
            rest.push_back(std::move(*note));
            continue;
        }
        if (note->first < change.start.line) rest.push_back({note->first, change.start.line - 1, note->text});
        if (note->last <= change.oldEnd.line) continue;
        rest.push_back({behind(std::max(note->first, change.oldEnd.line + 1)), behind(note->last), note->text});
    }
    all_.erase(from, all_.end());
    std::move(rest.begin(), rest.end(), std::back_inserter(all_));
}

void MarginNotes::Paint(QPainter& painter, const QRectF& area)
{
    if (all_.empty()) return;
    // From the first line in sight, which shows the note of a run that began above it.
    auto note = all_.begin();
    const MarginNote* shown = nullptr;
    bool begun = false;
    painter.setFont(metrics_.StyledFont(0));
    painter.setPen(colors_.faint);
    geometry_.ForEach(0, area.bottom(), [&](int32_t line, qreal y) {
        if (!std::exchange(begun, true))
            note = std::partition_point(all_.begin(), all_.end(), [&](const MarginNote& n) { return n.last < line; });
        while (note != all_.end() && note->last < line) ++note;
        if (note == all_.end() || note->first > line || shown == &*note) return;
        shown = &*note;
        if (y + geometry_.HeightOf(line) <= area.top()) return;
        painter.drawText(QPointF(metrics_.CharWidth() / 2, y + metrics_.Ascent()), note->text);
    });
}

} // namespace nib
