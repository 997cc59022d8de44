#include "persistence/settings/SamplePreview.h"

#include "editing/MvEdit.h"

namespace nib {

namespace {
constexpr TextView kSeen[] = {
    u"FontName",     u"FontSize",      u"BackColor",     u"NormalColor", u"NormalStyle",    u"KeywordColor",
    u"KeywordStyle", u"StringColor",   u"StringStyle",   u"LabelColor",  u"LabelStyle",     u"CommentColor",
    u"CommentStyle", u"ReservedColor", u"ReservedStyle", u"TabSize",     u"CollapseBlocks",
};
} // namespace

void ShowOnSample(const MvEdit& settings, MvEdit& sample)
{
    for (TextView name : kSeen) CopySetting(SettingNamed(name), settings, sample);
}

MvEdit SampleSettings()
{
    MvEdit sample;
    sample.Keywords.SetKeywordList(keyword_class::kUser, u" ", kSampleUserWords);
    return sample;
}

} // namespace nib
