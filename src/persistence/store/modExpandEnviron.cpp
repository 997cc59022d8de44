#include "persistence/store/modExpandEnviron.h"

namespace nib {

Text ExpandEnviron(TextView text, const Environment& environment)
{
    Text out;
    for (;;) {
        const size_t open = text.find(u'%');
        const size_t close = open == TextView::npos ? open : text.find(u'%', open + 1);
        if (close == TextView::npos) return out.append(text);
        out.append(text.substr(0, open));
        out.append(environment(text.substr(open + 1, close - open - 1)).value_or(Text()));
        text.remove_prefix(close + 1);
    }
}

Text ExpandKnownEnviron(TextView text, const Environment& environment)
{
    Text out;
    for (;;) {
        const size_t open = text.find(u'%');
        const size_t close = open == TextView::npos ? open : text.find(u'%', open + 1);
        if (close == TextView::npos) return out.append(text);
        out.append(text.substr(0, open));
        const std::optional<Text> value = environment(text.substr(open + 1, close - open - 1));
        out.append(value ? TextView(*value) : text.substr(open, close - open));
        // The second sign of an unknown reference may be the first one of the next.
        text.remove_prefix(value ? close + 1 : close);
    }
}

} // namespace nib
