#include "editing/MvEdit.h"

#include "editing/SettingText.h"
#include "editing/SettingsMigration.h"
#include "editing/SettingsTable.h"
#include "persistence/store/SettingsStore.h"

#include <algorithm>

namespace nib {

void MvEdit::LoadSettings(const SettingsContext& context)
{
    // Single precision: the stored text "7.1" must not count as less than the version of this release.
    double stored = LeadingNumber(context.store.Get(settings_version::kKey, {}));
    auto version = static_cast<float>(std::clamp(stored, -1000.0, 1000.0));
    if (version < settings_version::kNumber && MigrateSettings(*this, context, version)) return;
    SettingsSource source{StoredTexts(context.store), context.defaultFontName};
    for (const SettingRow& row : kSettings) ReadSetting(row, *this, source);
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
