#include "language/Phrase.h"

namespace nib {

namespace {

constexpr bool IsByWording()
{
    for (size_t i = 0; i < std::size(kWordings); ++i)
        if (kWordings[i].wording != static_cast<Wording>(i)) return false;
    return static_cast<Wording>(std::size(kWordings)) == Wording::Name;
}
static_assert(IsByWording());

} // namespace

Text Composed(const Phrase& phrase, const std::function<Text(Wording)>& words)
{
    if (phrase.wording == Wording::Name) return phrase.name;
    const Text pattern = words(phrase.wording);
    Text text;
    for (size_t i = 0; i < pattern.size(); ++i) {
        const bool holder = pattern[i] == u'%' && i + 1 < pattern.size();
        const size_t number = holder ? size_t{pattern[i + 1]} - u'1' : phrase.values.size();
        if (number < phrase.values.size()) {
            text += Composed(phrase.values[number], words);
            ++i;
        } else {
            text += pattern[i];
        }
    }
    return text;
}

Text English(const Phrase& phrase)
{
    return Composed(phrase, [](Wording row) { return Text(kWordings[static_cast<size_t>(row)].english); });
}

} // namespace nib
