#include "language/service/WordForm.h"

namespace nib {

std::vector<std::pair<int32_t, int32_t>> ParametersOf(TextView form)
{
    constexpr TextView kBetween{u" [],"};
    std::vector<std::pair<int32_t, int32_t>> parameters;
    const size_t open = form.find(u'(');
    if (open == TextView::npos) return parameters;
    size_t start = TextView::npos;
    size_t last = open;
    const auto finish = [&] {
        if (start != TextView::npos) parameters.emplace_back(start, last + 1);
        start = TextView::npos;
    };
    int32_t depth = 0;
    for (size_t at = open; at < form.size(); ++at) {
        const char16_t c = form[at];
        if (c == u'(' && depth++ == 0) continue;
        if (c == u')' && --depth == 0) break;
        if (depth == 1 && c == u',') {
            finish();
        } else if (kBetween.find(c) == TextView::npos) {
            if (start == TextView::npos) start = at;
            last = at;
        }
    }
    finish();
    return parameters;
}

Text FormOf(TextView name, const std::vector<Text>& parameters)
{
    Text form(name);
    form += u"(";
    for (size_t i = 0; i < parameters.size(); ++i) form += (i > 0 ? u", " : u"") + parameters[i];
    return form + u")";
}

} // namespace nib
