#pragma once
// The one list of what is stored: load, save, clone and update walk it, in this order.

#include "editing/MvEdit.h"

#include <variant>

namespace nib {

/// What a number or name read from the store must obey.
enum class SettingRule {
    None,
    NotNegative,  ///< below 0 becomes 0
    IndentChoice, ///< the absolute value; above 2 becomes 0
    UpToTwo,      ///< outside 0 to 2 becomes 0
    EditorFont,   ///< the default font when missing; see MapFontName
};

/// A list under numbered keys: the row's name and "Count", the row's name, "_" and a number from 1.
struct RecentMember {
    clsRecentList MvEdit::*list;
    TextView sizeKey; ///< of its capacity; empty when that is not stored
};

/// Which member, and by its type of which kind: text, switch, number, colour, or a part that has keys of its own.
using SettingMember = std::variant<Text MvEdit::*, bool MvEdit::*, int16_t MvEdit::*, int32_t MvEdit::*,
                                   clsKeywords MvEdit::*, RecentMember>;

struct SettingRow {
    TextView name;
    SettingMember member;
    SettingRule rule = SettingRule::None;
    bool MvEdit::*fixedByHost = nullptr; ///< while this is set the row is not written
};

inline constexpr SettingRow kSettings[] = {
    {u"FontName", &MvEdit::FontName, SettingRule::EditorFont},
    {u"FontSize", &MvEdit::FontSize},
    {u"FontMono", &MvEdit::FontMono},
    {u"BackColor", &MvEdit::BackColor},
    {u"NormalColor", &MvEdit::NormalColor},
    {u"NormalStyle", &MvEdit::NormalStyle},
    {u"KeywordColor", &MvEdit::KeywordColor},
    {u"KeywordStyle", &MvEdit::KeywordStyle},
    {u"StringColor", &MvEdit::StringColor},
    {u"StringStyle", &MvEdit::StringStyle},
    {u"LabelColor", &MvEdit::LabelColor},
    {u"LabelStyle", &MvEdit::LabelStyle},
    {u"CommentColor", &MvEdit::CommentColor},
    {u"CommentStyle", &MvEdit::CommentStyle},
    {u"ReservedColor", &MvEdit::ReservedColor},
    {u"ReservedStyle", &MvEdit::ReservedStyle},
    {u"Highlight", &MvEdit::Highlight},
    {u"LineWrap", &MvEdit::LineWrap},
    {u"TabSize", &MvEdit::TabSize, SettingRule::NotNegative, &MvEdit::HostFormat},
    {u"Margin", &MvEdit::Margin, SettingRule::NotNegative, &MvEdit::HostFormat},
    {u"IndentStar", &MvEdit::IndentStar, SettingRule::IndentChoice, &MvEdit::HostFormat},
    {u"IndentBang", &MvEdit::IndentBang, SettingRule::IndentChoice, &MvEdit::HostFormat},
    {u"IndentUserComment", &MvEdit::IndentUserComment, SettingRule::IndentChoice, &MvEdit::HostFormat},
    {u"CompileCommand", &MvEdit::CompileCommand, SettingRule::None, &MvEdit::HostCompile},
    {u"CompileOptions", &MvEdit::CompileOptions, SettingRule::None, &MvEdit::HostCompile},
    {u"Keywords", &MvEdit::Keywords}, // two groups of the host: its keys are looked at one by one
    {u"RecordLocking", &MvEdit::RecordLocking},
    {u"ColorPrinting", &MvEdit::ColorPrinting},
    {u"NoGotoDialog", &MvEdit::NoGotoDialog},
    {u"GotoLineNumber", &MvEdit::GotoLineNumber},
    {u"AutoRecover", &MvEdit::AutoRecover},
    {u"ToolbarHotTrack", &MvEdit::ToolbarHotTrack},
    {u"ToolbarLargeIcons", &MvEdit::ToolbarLargeIcons},
    {u"ResultsFontName", &MvEdit::ResultsFontName},
    {u"ResultsFontSize", &MvEdit::ResultsFontSize},
    {u"RecentFile", RecentMember{&MvEdit::RecentFiles, u"RecentListSize"}},
    {u"MinMaxClose", &MvEdit::MinMaxClose},
    {u"CollapseBlocks", &MvEdit::CollapseBlocks},
    {u"SearchEOD", &MvEdit::SearchEOD, SettingRule::UpToTwo},
    {u"DisableHostConfig", &MvEdit::DisableHostConfig},
    {u"RecentSearch", RecentMember{&MvEdit::RecentSearches, {}}},
};

/// The row of this name, which must exist.
const SettingRow& SettingNamed(TextView name);

/// The stamp on what is stored.
namespace settings_version {
inline constexpr TextView kKey = u"";
inline constexpr TextView kText = u"7.1";
inline constexpr float kNumber = 7.1F;
} // namespace settings_version

/// Where stored texts come from.
struct SettingsSource {
    std::function<Text(TextView name, TextView fallback)> get;
    const Text& defaultFontName;
};

/// A text that the field cannot take leaves it as it was.
void ReadSetting(const SettingRow& row, MvEdit& settings, const SettingsSource& source);
void WriteSetting(const SettingRow& row, const MvEdit& settings, SettingsStore& store);
void CopySetting(const SettingRow& row, const MvEdit& from, MvEdit& to);

/// The name under which the editor's font goes today.
Text MapFontName(Text name, const Text& defaultFontName);
/// The monospaced font that older releases came with.
inline constexpr TextView kFormerFont = u"MVW Lucida Console";

} // namespace nib
