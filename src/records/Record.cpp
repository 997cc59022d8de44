#include "records/Record.h"

#include "diagnostics/Guarded.h"

#include <algorithm>

namespace nib {

namespace {

/// Of the whole text.
constexpr size_t kMostUnits = 16 << 20;

} // namespace

Record::Record(SourceDocument& document) : document_(document)
{
    document_.AddListener(this);
}

Record::~Record()
{
    document_.RemoveListener(this);
}

void Record::TextChanged(const TextChange& change)
{
    const int32_t line = change.start.line;
    if (!change.IsScattered() && change.oldEnd.line == line && change.newEnd.line == line)
        starts_.erase(line + 1);
    else
        starts_.clear();
    if (changed) changed(false);
}

void Record::TextReset()
{
    starts_.clear();
    if (changed) changed(true);
}

bool Record::IsTooLarge()
{
    if (document_.UnitCount() > kMostUnits || AttributeCount() > kMostAttributes) return true;
    for (int32_t line = 0; line < AttributeCount(); ++line) {
        const TextView text = document_.LineText(line, scratch_);
        if (std::count(text.begin(), text.end(), kValueMark) >= kMostValues) return true;
    }
    return false;
}

const std::vector<int32_t>& Record::Starts(int32_t attribute)
{
    const auto [at, unknown] = starts_.try_emplace(attribute);
    if (!unknown || attribute < 1 || attribute > AttributeCount()) return at->second;
    const TextView text = document_.LineText(attribute - 1, scratch_);
    if (!text.empty()) at->second.push_back(0);
    for (size_t mark = text.find(kValueMark); mark != TextView::npos; mark = text.find(kValueMark, mark + 1))
        at->second.push_back(static_cast<int32_t>(mark) + 1);
    return at->second;
}

int32_t Record::ValueCount(int32_t attribute)
{
    return static_cast<int32_t>(Starts(attribute).size());
}

TextRange Record::Place(int32_t attribute, int32_t value)
{
    if (attribute > AttributeCount()) return {document_.End(), document_.End()};
    const std::vector<int32_t>& starts = Starts(attribute);
    const int32_t line = attribute - 1;
    const int32_t length = document_.LineLength(line);
    const auto index = static_cast<size_t>(value - 1);
    if (index >= starts.size()) return {{length, line}, {length, line}};
    const int32_t end = index + 1 < starts.size() ? starts[index + 1] - 1 : length;
    return {{starts[index], line}, {end, line}};
}

Text Record::Value(int32_t attribute, int32_t value)
{
    if (value > ValueCount(attribute)) return {};
    const TextRange place = Place(attribute, value);
    return Text(
        document_.LineText(attribute - 1, scratch_)
            .substr(static_cast<size_t>(place.start.col), static_cast<size_t>(place.end.col - place.start.col)));
}

int32_t Record::ValueAt(Position at)
{
    const std::vector<int32_t>& starts = Starts(at.line + 1);
    const auto after = std::upper_bound(starts.begin(), starts.end(), at.col);
    return std::max(static_cast<int32_t>(after - starts.begin()), 1);
}

void Record::Replace(std::vector<RangeEdit> edits)
{
    std::sort(edits.begin(), edits.end(), [](const RangeEdit& a, const RangeEdit& b) { return a.start < b.start; });
    document_.BreakTyping();
    editing_ = true;
    const auto failure = FailureOf([&] { document_.ReplaceRanges(std::move(edits)); });
    editing_ = false;
    if (failure) throw *failure;
    document_.BreakTyping();
}

void Record::SetValue(int32_t attribute, int32_t value, TextView text)
{
    const int32_t count = ValueCount(attribute);
    const TextRange place = Place(attribute, value);
    if (value <= count) return Replace({{place.start, place.end, Text(text)}});
    if (text.empty()) return;
    Text missing;
    for (int32_t line = AttributeCount(); line < attribute; ++line) missing += u"\r\n";
    missing.append(static_cast<size_t>(value - std::max(count, 1)), kValueMark);
    Replace({{place.start, place.end, missing + Text(text)}});
}

void Record::InsertValues(std::span<const int32_t> attributes, int32_t before)
{
    std::vector<RangeEdit> edits;
    for (int32_t attribute : attributes) {
        if (before > ValueCount(attribute)) continue;
        const Position at = Place(attribute, before).start;
        edits.push_back({at, at, Text(ValueMark)});
    }
    Replace(std::move(edits));
}

void Record::DeleteValues(std::span<const int32_t> attributes, int32_t value)
{
    std::vector<RangeEdit> edits;
    for (int32_t attribute : attributes) {
        const int32_t count = ValueCount(attribute);
        if (value > count) continue;
        TextRange place = Place(attribute, value);
        if (value < count)
            ++place.end.col;
        else if (value > 1)
            --place.start.col;
        edits.push_back({place.start, place.end, {}});
    }
    Replace(std::move(edits));
}

void Record::MoveValues(std::span<const int32_t> attributes, int32_t from, int32_t to)
{
    const auto [first, last] = std::minmax(from, to);
    std::vector<RangeEdit> edits;
    for (int32_t attribute : attributes) {
        const int32_t count = ValueCount(attribute);
        if (first > count) continue;
        std::vector<Text> values;
        for (int32_t value = first; value <= last; ++value) values.push_back(Value(attribute, value));
        if (from < to)
            std::rotate(values.begin(), values.begin() + 1, values.end());
        else
            std::rotate(values.begin(), values.end() - 1, values.end());
        // What was not there before need not be there afterwards.
        while (first + static_cast<int32_t>(values.size()) - 1 > count && values.back().empty()) values.pop_back();
        Text text;
        for (size_t i = 0; i < values.size(); ++i) text += (i > 0 ? Text(ValueMark) : Text()) + values[i];
        const Position end = Place(attribute, std::min(last, count)).end;
        edits.push_back({Place(attribute, first).start, end, std::move(text)});
    }
    Replace(std::move(edits));
}

} // namespace nib
