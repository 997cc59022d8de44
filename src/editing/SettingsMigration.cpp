#include "editing/SettingsMigration.h"

#include "editing/SettingsTable.h"
#include "platform/MessageBoxes.h"

#include <algorithm>

namespace nib {

namespace {

constexpr float kFirstWithStore = 7.0F;
constexpr TextView kNewFont = u"DejaVu Sans Mono";
constexpr TextView kFontQuestion = u"This version of Nib includes a new monospaced font called DejaVu Sans Mono. "
                                   u"Your current editor font is MVW Lucida Console. Would you like to change "
                                   u"your editor font to the new font (recommended)?\r\n\r\n"
                                   u"(this prompt will not be shown again, but you can always change the font "
                                   u"by selecting Preferences from the View menu)";

constexpr TextView kWindowValues[] = {u"MainState",  u"MainLeft",   u"MainTop",        u"MainWidth",
                                      u"MainHeight", u"ChildState", u"ToolbarVisible", u"StatusbarVisible"};
/// Stands for a window value that was never stored: no window lies there.
constexpr TextView kNoValue = u"-10000";

struct OlderDefault {
    TextView name;
    TextView text;
};
constexpr OlderDefault kOlderDefaults[] = {{u"KeywordColor", u"&H80000008&"},
                                           {u"StringColor", u"&H00800080&"},
                                           {u"LabelColor", u"&H00800000&"},
                                           {u"ReservedColor", u"&H80000008&"}};

TextView DefaultThen(TextView name, TextView defaultNow)
{
    auto found = std::find_if(std::begin(kOlderDefaults), std::end(kOlderDefaults),
                              [&](const OlderDefault& row) { return row.name == name; });
    return found == std::end(kOlderDefaults) ? defaultNow : found->text;
}

void CopyOlderSettings(MvEdit& settings, const SettingsContext& context)
{
    auto get = [&](TextView name, TextView fallback) { return context.older->Get(name, DefaultThen(name, fallback)); };
    for (TextView name : kWindowValues)
        if (Text value = get(name, kNoValue); value != kNoValue) context.store.Save(name, value);
    SettingsSource source{get, context.defaultFontName, false};
    for (const SettingRow& row : kSettings)
        if (row.since == SettingSince::Older) ReadSetting(row, settings, source);
    settings.SaveSettings(context.store);
}

void OfferNewFont(MvEdit& settings, const SettingsContext& context)
{
    if (!EqualsNoCase(settings.FontName, kFormerFont) || !EqualsNoCase(context.defaultFontName, kNewFont)) return;
    if (!context.ask) return;
    int32_t answer = context.ask(kFontQuestion, message_box::kYesNoCancel | message_box::kQuestion);
    if (answer != message_box::kAnswerYes) return;
    settings.FontName = kNewFont;
    WriteSetting(SettingNamed(u"FontName"), settings, context.store);
}

} // namespace

bool MigrateSettings(MvEdit& settings, const SettingsContext& context, float storedVersion)
{
    // Where no older release ever ran there is nothing to bring over, neither values nor the taste of their time; a
    // store that has merely lost its stamp keeps what it still holds.
    bool fromOlder = context.older && storedVersion < kFirstWithStore;
    if (fromOlder)
        CopyOlderSettings(settings, context);
    else
        ReadSetting(SettingNamed(u"FontName"), settings, {StoredTexts(context.store), context.defaultFontName});
    OfferNewFont(settings, context);
    context.store.Save(settings_version::kKey, settings_version::kText); // the question was asked once
    return fromOlder;
}

} // namespace nib
