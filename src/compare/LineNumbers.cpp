#include "compare/LineNumbers.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace nib {

namespace {

constexpr int32_t kLinesBetweenLooks = 0x4000;
constexpr uint64_t kFactor = 0x9E3779B97F4A7C15ULL;
constexpr uint64_t kWideSeed = 0xD6E8FEB86659FD93ULL;

uint64_t Stir(uint64_t hash, uint64_t word)
{
    hash = (hash ^ word) * kFactor;
    return hash ^ std::rotr(hash, 29);
}

uint64_t HashBytes(const void* data, size_t length, uint64_t seed)
{
    const auto* bytes = static_cast<const unsigned char*>(data);
    uint64_t hash = Stir(seed, length);
    uint64_t word = 0;
    for (; length >= sizeof word; bytes += sizeof word, length -= sizeof word) {
        std::memcpy(&word, bytes, sizeof word);
        hash = Stir(hash, word);
    }
    word = 0;
    std::memcpy(&word, bytes, length);
    return Stir(Stir(hash, word), kWideSeed);
}

/// However the line is stored.
uint64_t KeyOf(const UnitSpan& line, std::string& narrow)
{
    if (!line.wide) return HashBytes(line.data, line.length, 0);
    const char16_t* units = line.Wide();
    if (std::any_of(units, units + line.length, [](char16_t c) { return c > 0xFF; }))
        return HashBytes(units, line.length * sizeof(char16_t), kWideSeed);
    narrow.resize(line.length);
    std::transform(units, units + line.length, narrow.begin(), [](char16_t c) { return static_cast<char>(c); });
    return HashBytes(narrow.data(), narrow.size(), 0);
}

constexpr bool IsBlank(char16_t c)
{
    return c == u' ' || c == u'\t';
}

uint8_t IndentOf(const UnitSpan& line)
{
    constexpr size_t kMost = 200;
    size_t blanks = 0;
    while (blanks < std::min(line.length, kMost) && IsBlank(line[blanks])) ++blanks;
    return static_cast<uint8_t>(blanks);
}

} // namespace

bool IsCommentLine(TextView line)
{
    const size_t start = line.find_first_not_of(u" \t");
    if (start == TextView::npos) return false;
    line.remove_prefix(start);
    if (line[0] == u'*' || line[0] == u'!') return true;
    return StartsWithNoCase(line.substr(0, 3), u"REM") && (line.size() == 3 || IsBlank(line[3]));
}

Text ComparedForm(TextView line, const CompareOptions& options)
{
    Text form;
    if (options.blanks) {
        bool gap = false;
        for (char16_t c : line) {
            if (IsBlank(c)) {
                gap = !form.empty();
                continue;
            }
            if (std::exchange(gap, false)) form += u' ';
            form += c;
        }
    } else {
        form = line;
    }
    return options.letterCase ? ToLower(form) : form;
}

ComparedLines TakeLines(const LinewiseText& text, const CompareOptions& options, const std::atomic<bool>* cancelled)
{
    ComparedLines taken;
    taken.keys.reserve(static_cast<size_t>(text.count));
    taken.indents.reserve(static_cast<size_t>(text.count));
    const bool asStored = !options.blanks && !options.letterCase;
    bool stopped = false;
    std::string narrow;
    Text line;
    text.walk([&](const UnitSpan& span) {
        const int32_t place = taken.count++;
        if (cancelled && place % kLinesBetweenLooks == 0) stopped = stopped || *cancelled;
        if (stopped) return;
        if (!asStored || options.comments) {
            line.clear();
            span.AppendTo(line);
        }
        if (options.comments) {
            if (IsCommentLine(line)) return;
            taken.places.push_back(place);
        }
        if (!asStored) line = ComparedForm(line, options);
        taken.keys.push_back(KeyOf(asStored ? span : UnitSpan{line.data(), line.size(), true}, narrow));
        taken.indents.push_back(IndentOf(span));
    });
    // Without a place for any line every line would seem to count.
    if (options.comments && taken.places.empty()) taken.places.push_back(0);
    return taken;
}

LineNumbers::LineNumbers(const ComparedLines& leftLines, const ComparedLines& rightLines)
    : slots_(std::bit_ceil(2 * (leftLines.keys.size() + rightLines.keys.size()) + 1))
{
    left = Number(leftLines);
    right = Number(rightLines);
    slots_ = {};
}

std::vector<int32_t> LineNumbers::Number(const ComparedLines& lines)
{
    const size_t mask = slots_.size() - 1;
    std::vector<int32_t> numbers;
    numbers.reserve(lines.keys.size());
    for (size_t n = 0; n < lines.keys.size(); ++n) {
        const uint64_t key = lines.keys[n];
        size_t at = key & mask;
        while (slots_[at].number >= 0 && slots_[at].key != key) at = (at + 1) & mask;
        if (slots_[at].number < 0) {
            slots_[at] = {key, Count()};
            static const uint64_t kEmpty = HashBytes("", 0, 0);
            lines_.push_back({lines.indents[n], key == kEmpty});
        }
        numbers.push_back(slots_[at].number);
    }
    return numbers;
}

void LineNumbers::AppendLine(int32_t number, std::string& out) const
{
    const Line& line = lines_[static_cast<size_t>(number)];
    if (!line.empty) {
        out.append(line.indent, ' ');
        for (auto rest = static_cast<uint32_t>(number) + 1; rest > 0; rest >>= 6)
            out += static_cast<char>('0' + (rest & 63));
    }
    out += '\n';
}

} // namespace nib
