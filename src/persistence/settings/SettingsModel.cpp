#include "persistence/settings/SettingsModel.h"

#include "diagnostics/Guarded.h"
#include "documents/mvDocument.h"
#include "editing/SettingText.h"
#include "persistence/store/LeadingNumber.h"

#include <algorithm>

namespace nib {

namespace {

using namespace message_box;

constexpr TextView kFixedPrefixes = u"*,!";

struct HostNoteRow {
    SettingsPage page;
    bool MvEdit::*fixed;
};
constexpr HostNoteRow kHostNotes[] = {
    {SettingsPage::General, &MvEdit::HostKeywords},
    {SettingsPage::Tools, &MvEdit::HostCompile},
    {SettingsPage::Tools, &MvEdit::HostFormat},
    {SettingsPage::Tools, &MvEdit::HostComment},
    {SettingsPage::LanguageKeywords, &MvEdit::HostKeywords},
    {SettingsPage::UserKeywords, &MvEdit::HostKeywords},
};

} // namespace

BlockChoice ChoiceOfBlock(int32_t block)
{
    const BlockStyleRow* row = FindBlockStyle(block);
    return row ? BlockChoice{row->style, row->place} : BlockChoice{};
}

int32_t BlockOfChoice(BlockChoice choice)
{
    for (const BlockStyleRow& row : kBlockStyles)
        if (row.user && row.style == choice.style && (row.style != block_style::kBegin || row.place == choice.place))
            return row.block;
    return 0;
}

int32_t LimitedNumber(TextView text, int32_t most)
{
    return static_cast<int32_t>(std::clamp<int64_t>(LeadingWhole(text), 0, most));
}

SettingsModel::SettingsModel(DocumentServices& services, SettingsStore& store, SettingsApplied& applied)
    : services_(services), store_(store), applied_(applied), clone_(services.settings.Clone()),
      recentCapacity_(clone_.RecentFiles.ListSize())
{
}

Text SettingsModel::Caption(TextView control) const
{
    auto row = std::find_if(std::begin(kSettingCaptions), std::end(kSettingCaptions),
                            [&](const SettingCaption& candidate) { return candidate.name == control; });
    if (row == std::end(kSettingCaptions)) return {};
    Text caption(row->caption);
    if (row->fixedByHost && clone_.*row->fixedByHost) caption += u" \u2020";
    return caption;
}

bool SettingsModel::ShowsHostNote(SettingsPage page) const
{
    return std::any_of(std::begin(kHostNotes), std::end(kHostNotes),
                       [&](const HostNoteRow& row) { return row.page == page && clone_.*row.fixed; });
}

bool SettingsModel::ChangeHostConfig(bool load)
{
    int32_t answer = services_.shell.ShowMessage(
        u"You must restart Nib for he new \"host Nib configuration\" setting to take effect.",
        kOkCancel | kInformation);
    if (answer == kAnswerOk) clone_.DisableHostConfig = !load;
    return LoadsHostConfig();
}

bool SettingsModel::ChangeMinMaxClose(bool state)
{
    if (services_.openCount == 0) return clone_.MinMaxClose = state;
    services_.shell.ShowMessage(u"The \"min, max, close\" setting cannot be changed while any documents are open. "
                                u"Please close all documents and try again.",
                                kOk | kInformation);
    return services_.settings.MinMaxClose;
}

Text SettingsModel::UserPrefix() const
{
    Text all = clone_.Keywords.CommentPrefixes();
    return all.size() > kFixedPrefixes.size() ? all.substr(kFixedPrefixes.size() + 1) : Text();
}

void SettingsModel::ResetColors()
{
    const MvEdit defaults;
    for (const HighlightRow& row : kHighlightRows) {
        clone_.*row.color = defaults.*row.color;
        if (row.style) clone_.*row.style = defaults.*row.style;
    }
}

bool SettingsModel::Accept()
{
    auto apply = [this] {
        MvEdit& live = services_.settings;
        // Documents may have come and gone meanwhile, opened by other programs.
        clone_.RecentFiles = live.RecentFiles;
        clone_.RecentFiles.SetListSize(recentCapacity_);
        clone_.RecentSearches = live.RecentSearches;
        if (services_.openCount > 0) clone_.MinMaxClose = live.MinMaxClose;
        live.UpdateFrom(clone_);
        live.SaveSettings(store_);
        applied_.IconsChosen(live.ToolbarLargeIcons);
        for (const auto& document : services_.openDocuments.All())
            Guarded(
                services_.log, u"frmSettings.ApplySettings", [&] { document->ApplySettings(); }, [](const Error&) {});
        applied_.FontChanged();
        return true;
    };
    return Guarded(services_.log, u"frmSettings.cmdOK", apply, [](const Error&) { return false; });
}

} // namespace nib
