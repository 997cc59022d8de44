#include "persistence/store/modDotToAbsPath.h"

namespace nib {

namespace {

/// Every run of "/" becomes one.
Text CollapseSlashes(TextView path)
{
    Text out;
    out.reserve(path.size());
    for (char16_t c : path)
        if (c != u'/' || !out.ends_with(u'/')) out.push_back(c);
    return out;
}

} // namespace

Text DotToAbsPath(TextView path, TextView baseFolder)
{
    Text absolute(path);
    if (absolute.starts_with(u"../") || absolute == u"..") absolute.insert(0, u"./");
    if (absolute.starts_with(u"./")) absolute.replace(0, 1, baseFolder);

    std::vector<Text> kept;
    for (Text& component : Split(CollapseSlashes(absolute), u'/')) {
        if (component != u"..") {
            kept.push_back(std::move(component));
        } else if (kept.size() >= 2) {
            kept.pop_back();
        }
    }
    Text joined;
    for (size_t i = 0; i < kept.size(); ++i) {
        if (i > 0) joined.push_back(u'/');
        joined += kept[i];
    }
    // The root alone is an empty component.
    return joined.empty() ? Text(u"/") : joined;
}

} // namespace nib
