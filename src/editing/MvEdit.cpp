#include "editing/MvEdit.h"

#include "editing/SettingsTable.h"
#include "persistence/store/LeadingNumber.h"
#include "platform/MessageBoxes.h"

#include <algorithm>

namespace nib {

namespace {

constexpr TextView kNewFont = u"DejaVu Sans Mono";
constexpr TextView kFontQuestion = u"This version of Nib includes a new monospaced font called DejaVu Sans Mono. "
                                   u"Your current editor font is MVW Lucida Console. Would you like to change "
                                   u"your editor font to the new font (recommended)?\r\n\r\n"
                                   u"(this prompt will not be shown again, but you can always change the font "
                                   u"by selecting Preferences from the View menu)";

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

void MvEdit::LoadSettings(const SettingsContext& context)
{
    auto get = [&](TextView name, TextView fallback) { return context.store.Get(name, fallback); };
    const SettingsSource source{get, context.defaultFontName};
    for (const SettingRow& row : kSettings) ReadSetting(row, *this, source);
    // Single precision: the stored text "7.1" must not count as less than the version of this release.
    double stored = LeadingNumber(get(settings_version::kKey, {}));
    auto version = static_cast<float>(std::clamp(stored, -1000.0, 1000.0));
    if (version >= settings_version::kNumber) return;
    OfferNewFont(*this, context);
    context.store.Save(settings_version::kKey, settings_version::kText); // the question was asked once
}

void MvEdit::SaveSettings(SettingsStore& store) const
{
    store.Save(settings_version::kKey, settings_version::kText);
    for (const SettingRow& row : kSettings) WriteSetting(row, *this, store);
}

MvEdit MvEdit::Clone() const
{
    MvEdit clone;
    clone.UpdateFrom(*this);
    clone.HostKeywords = HostKeywords;
    clone.HostCompile = HostCompile;
    clone.HostFormat = HostFormat;
    clone.HostComment = HostComment;
    return clone;
}

void MvEdit::UpdateFrom(const MvEdit& other)
{
    if (&other == this) return;
    for (const SettingRow& row : kSettings) CopySetting(row, other, *this);
}

} // namespace nib
