#include "records/GridCell.h"

#include "base/Error.h"

#include <algorithm>

namespace nib {

namespace {

struct SignRow {
    char16_t mark;
    char16_t sign;
};
/// One unit for one, so that places in what is shown are places in what is stored.
constexpr SignRow kSigns[] = {
    {kSubValueMark, kSubValueSign}, {kTextMark, kTextSign}, {kAttributeMark, u'\u00B6'}, {kItemMark, u'\u00A7'}};

Text WithSigns(TextView stored)
{
    Text text(stored);
    for (const SignRow& row : kSigns) std::replace(text.begin(), text.end(), row.mark, row.sign);
    return text;
}

/// Only marks within a value can be typed: the others would cut the record anew.
Text WithMarks(TextView typed)
{
    Text text(typed);
    for (const SignRow& row : {kSigns[0], kSigns[1]}) std::replace(text.begin(), text.end(), row.sign, row.mark);
    return text;
}

/// A longer value costs too much to be converted each time that it is painted.
constexpr size_t kMostConverted = 10'000;

/// An empty text is one empty piece.
std::vector<Text> Pieces(TextView text, char16_t delimiter)
{
    return text.empty() ? std::vector<Text>(1) : Split(text, delimiter);
}

bool IsConverted(TextView stored, const DictionaryField* field)
{
    // What looks like a sign could not be told from one.
    if (stored.size() > kMostConverted) return false;
    const TextView signs[] = {TextView(&kSubValueSign, 1), TextView(&kTextSign, 1)};
    return field && field->conversion.Converts() && stored.find(signs[0]) == TextView::npos &&
           stored.find(signs[1]) == TextView::npos;
}

ShownValue ShowPiece(TextView stored, const DictionaryField& field)
{
    if (auto shown = field.conversion.Show(stored)) return {WithSigns(*shown), false};
    return {WithSigns(stored), true};
}

Text JoinPieces(const std::vector<Text>& pieces)
{
    Text text;
    for (size_t i = 0; i < pieces.size(); ++i) text += (i > 0 ? Text(SubValueMark) : Text()) + pieces[i];
    return text;
}

/// How many are the same at the front of both, and how many of the rest at the back.
template <typename List>
std::pair<size_t, size_t> CommonEnds(const List& a, const List& b)
{
    const size_t most = std::min(a.size(), b.size());
    size_t front = 0;
    while (front < most && a[front] == b[front]) ++front;
    size_t back = 0;
    while (back < most - front && a[a.size() - 1 - back] == b[b.size() - 1 - back]) ++back;
    return {front, back};
}

Text StoreConverted(TextView before, TextView typed, const DictionaryField& field)
{
    const std::vector<Text> stored = Pieces(before, kSubValueMark);
    std::vector<Text> shown;
    shown.reserve(stored.size());
    for (const Text& piece : stored) shown.push_back(ShowPiece(piece, field).text);
    std::vector<Text> pieces = Pieces(typed, kSubValueSign);
    const auto [front, back] = CommonEnds(shown, pieces);
    const size_t last = pieces.size() - back;
    std::vector<Text> result(stored.begin(), stored.begin() + static_cast<std::ptrdiff_t>(front));
    for (size_t i = front; i < last; ++i) {
        const Text replaced = i < stored.size() - back ? stored[i] : Text();
        result.push_back(field.conversion.Store(WithMarks(pieces[i]), replaced));
    }
    result.insert(result.end(), stored.end() - static_cast<std::ptrdiff_t>(back), stored.end());
    return JoinPieces(result);
}

} // namespace

ShownValue ShowValue(TextView stored, const DictionaryField* field)
{
    if (!IsConverted(stored, field)) {
        const bool known = !field || field->conversion.IsKnown();
        return {WithSigns(stored), !stored.empty() && (!known || (field && field->conversion.Converts()))};
    }
    ShownValue all;
    bool first = true;
    for (const Text& piece : Pieces(stored, kSubValueMark)) {
        const ShownValue shown = ShowPiece(piece, *field);
        all.odd = all.odd || shown.odd;
        if (!first) all.text += kSubValueSign;
        all.text += shown.text;
        first = false;
    }
    return all;
}

Text StoredValue(TextView before, TextView typed, const DictionaryField* field)
{
    const Text shown = ShowValue(before, field).text;
    if (typed == shown) return Text(before);
    const bool cuts = std::any_of(typed.begin(), typed.end(), [](char16_t c) {
        return c == u'\r' || c == u'\n' || (IsMark(c) && c != kSubValueMark && c != kTextMark);
    });
    if (cuts) throw Error(error_number::kInvalidCall, u"A value can hold neither line breaks nor marks that end it.");
    if (IsConverted(before, field)) return StoreConverted(before, WithSigns(typed), *field);
    const auto [front, back] = CommonEnds(TextView(shown), typed);
    const TextView middle = typed.substr(front, typed.size() - front - back);
    for (const SignRow& row : {kSigns[0], kSigns[1]})
        if (before.find(row.sign) != TextView::npos && middle.find(row.sign) != TextView::npos)
            throw Error(error_number::kInvalidCall,
                        u"This value holds the sign of a mark as a character. It can be changed in the text.");
    return Text(before.substr(0, front)) + WithMarks(middle) + Text(before.substr(before.size() - back));
}

} // namespace nib
