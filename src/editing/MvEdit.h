#pragma once
// The editor's settings, and the one list of what is stored of them: load, save, clone and update walk it, in its
// order.

#include "editing/clsKeywords.h"
#include "persistence/store/SettingsStore.h"

#include <functional>
#include <optional>
#include <variant>

namespace nib {

/// Values of Dialect beside the names of those that there are.
inline constexpr TextView kNoDialect{u"none"};
inline constexpr TextView kCommonDialect{u"common"};

/// Colours are 0x00BBGGRR, or with the top bit set a system colour. Styles are bits, 1 bold and 2 italic.
namespace system_color {
inline constexpr int32_t kWindow = static_cast<int32_t>(0x80000005);
inline constexpr int32_t kWindowText = static_cast<int32_t>(0x80000008);
} // namespace system_color

/// Where a comment marker stands: the values of IndentStar, IndentBang and IndentUserComment.
namespace comment_place {
inline constexpr int32_t kAtMargin = 0;
inline constexpr int32_t kLikeCode = 1;
inline constexpr int32_t kAtColumn0 = 2;
} // namespace comment_place

/// What loading needs from outside.
struct SettingsContext {
    SettingsStore& store;
    Text defaultFontName;
    /// Shows a message box and answers the button; see platform/MessageBoxes.h.
    std::function<int32_t(TextView text, int32_t flags)> ask;
};

/// All options of editor, language, compiler and windows, with their defaults.
struct MvEdit {
    MvEdit() { RecentSearches.SetMaxListSize(10); }

    /// Whatever the store holds, every field is usable afterwards; a key that is missing leaves its field alone.
    void LoadSettings(const SettingsContext& context);
    void SaveSettings(SettingsStore& store) const;
    MvEdit Clone() const;
    /// Takes the settings of `other`. What a host has fixed stays known: it belongs to the session, not to the
    /// settings.
    void UpdateFrom(const MvEdit& other);

    Text FontName;
    Text FontSize = u"10"; ///< points
    bool FontMono = true;
    int32_t BackColor = system_color::kWindow;
    int32_t NormalColor = system_color::kWindowText;
    int16_t NormalStyle = 0;
    int32_t KeywordColor = 0x00FF0000;
    int16_t KeywordStyle = 0;
    int32_t StringColor = 0x001515A3;
    int16_t StringStyle = 0;
    int32_t LabelColor = 0x005C5C5C;
    int16_t LabelStyle = 0;
    int32_t CommentColor = 0x00008000;
    int16_t CommentStyle = 0;
    int32_t ReservedColor = 0x00FF0000;
    int16_t ReservedStyle = 0;
    // Shown in a dialect alone.
    int32_t StatementColor = 0x00800080;
    int16_t StatementStyle = 0;
    int32_t FunctionColor = 0x00807000;
    int16_t FunctionStyle = 0;
    int32_t NumberColor = 0x00005898;
    int16_t NumberStyle = 0;
    bool Highlight = true;
    bool LineWrap = false;
    int16_t TabSize = 3;
    int16_t Margin = 6;
    int16_t IndentStar = 1;
    int16_t IndentBang = 0;
    int16_t IndentUserComment = 2;
    Text CompileCommand = u"BASIC";
    Text CompileOptions;
    Text CleanCompileCommand; ///< runs once a compile was clean
    clsKeywords Keywords;
    bool RecordLocking = true;
    bool ColorPrinting = false;
    bool NoGotoDialog = false;
    bool GotoLineNumber = false;
    bool AutoRecover = true;
    bool ReopenDocuments = false; ///< at the next start, after an ordinary end
    bool ToolbarHotTrack = true;
    bool ToolbarLargeIcons = false;
    Text ResultsFontName;
    Text ResultsFontSize;
    clsRecentList RecentFiles{clsRecentList::Case::Counts};
    bool MinMaxClose = false;
    bool CollapseBlocks = false;
    bool IndentByBlocks = true;
    bool CurrentLine = true;
    bool Matches = true;
    bool ChangeBars = true;
    bool IndentGuides = true;
    bool VisibleBlanks = false;
    bool SmoothScrolling = true;
    bool CheckAsYouType = true;
    bool CompleteWords = true;
    bool ProblemsShown = false;
    bool OutlineShown = false;
    bool HistoryShown = false;
    bool AuthorsShown = false;
    int16_t HistoryDays = 0;         ///< that versions are kept; 0 is for ever
    int16_t HistoryMegabytes = 1024; ///< that those of one account may take; 0 is no bound
    int16_t SearchEOD = 0;
    bool DisableHostConfig = false;
    clsRecentList RecentSearches;
    /// Of the programs; empty is as none, which a user chose who was never asked.
    Text Dialect;

    // Set when a host configuration has replaced values in memory; those are not written to the store.
    bool HostKeywords = false;
    bool HostCompile = false;
    bool HostFormat = false;
    bool HostComment = false;
    bool HostDialect = false;
};

/// "True" and "False" in any case, or a number; nothing when it is another word.
std::optional<bool> WordToBoolean(TextView text);
TextView BooleanWord(bool state);

/// What a number or name read from the store must obey.
enum class SettingRule {
    None,
    NotNegative,  ///< below 0 becomes 0
    IndentChoice, ///< the absolute value; above 2 becomes 0
    UpToTwo,      ///< outside 0 to 2 becomes 0
    EditorFont,   ///< the default font when missing, and one of its old names becomes the last one
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
    {u"ReopenDocuments", &MvEdit::ReopenDocuments},
    {u"CleanCompileCommand", &MvEdit::CleanCompileCommand},
    {u"IndentByBlocks", &MvEdit::IndentByBlocks},
    {u"CurrentLine", &MvEdit::CurrentLine},
    {u"Matches", &MvEdit::Matches},
    {u"ChangeBars", &MvEdit::ChangeBars},
    {u"IndentGuides", &MvEdit::IndentGuides},
    {u"VisibleBlanks", &MvEdit::VisibleBlanks},
    {u"SmoothScrolling", &MvEdit::SmoothScrolling},
    {u"CheckAsYouType", &MvEdit::CheckAsYouType},
    {u"CompleteWords", &MvEdit::CompleteWords},
    {u"ProblemsShown", &MvEdit::ProblemsShown},
    {u"OutlineShown", &MvEdit::OutlineShown},
    {u"HistoryShown", &MvEdit::HistoryShown},
    {u"AuthorsShown", &MvEdit::AuthorsShown},
    {u"HistoryDays", &MvEdit::HistoryDays, SettingRule::NotNegative},
    {u"HistoryMegabytes", &MvEdit::HistoryMegabytes, SettingRule::NotNegative},
    {u"Dialect", &MvEdit::Dialect, SettingRule::None, &MvEdit::HostDialect},
    {u"StatementColor", &MvEdit::StatementColor},
    {u"StatementStyle", &MvEdit::StatementStyle},
    {u"FunctionColor", &MvEdit::FunctionColor},
    {u"FunctionStyle", &MvEdit::FunctionStyle},
    {u"NumberColor", &MvEdit::NumberColor},
    {u"NumberStyle", &MvEdit::NumberStyle},
};

/// The row of this name, which must exist.
const SettingRow& SettingNamed(TextView name);

/// Where stored texts come from.
struct SettingsSource {
    std::function<Text(TextView name, TextView fallback)> get;
    const Text& defaultFontName;
};

/// A text that the field cannot take leaves it as it was.
void ReadSetting(const SettingRow& row, MvEdit& settings, const SettingsSource& source);
void WriteSetting(const SettingRow& row, const MvEdit& settings, SettingsStore& store);
void CopySetting(const SettingRow& row, const MvEdit& from, MvEdit& to);

} // namespace nib
