#pragma once
// What the settings dialog shows: its tabs, its switches, its captions, and which of them a host can fix.

#include "editing/LexClass.h"
#include "editing/MvEdit.h"

namespace nib {

/// Pages in the order of the tabs.
enum class SettingsPage { General, Highlight, Tools, LanguageKeywords, UserKeywords };

struct SettingsTab {
    TextView key;
    TextView caption;
    int32_t number;           ///< given with the tab
    int32_t keywordClass = 0; ///< of the tabs that show keywords
};

inline constexpr SettingsTab kSettingsTabs[] = {
    {u"General", u"&General", 1100},
    {u"Highlight", u"&Highlight", 1200},
    {u"Tools", u"&Tools", 1300},
    {u"Keywords.Language", u"&Language Keywords", 600, keyword_class::kLanguage},
    {u"Keywords.User", u"&User Keywords", 600, keyword_class::kUser},
};

inline constexpr TextView kHostNote =
    u"\u2020 Setting was loaded from the NIB configuration file on the host.  Changes "
    u"to this setting will not be saved.";

/// Behind the caption of what the host governs.
inline constexpr TextView kHostMark = u" \u2020";

/// A check box that stands for one switch of the settings.
struct SettingSwitch {
    TextView name;
    bool MvEdit::*member;
};

inline constexpr SettingSwitch kSettingSwitches[] = {
    {u"chkLineWrap", &MvEdit::LineWrap},
    {u"chkHighlight", &MvEdit::Highlight},
    {u"chkAutoRecover", &MvEdit::AutoRecover},
    {u"chkReopen", &MvEdit::ReopenDocuments},
    {u"chkColorPrinting", &MvEdit::ColorPrinting},
    {u"chkLocking", &MvEdit::RecordLocking},
    {u"chkMonospace", &MvEdit::FontMono},
    {u"chkLargeIcons", &MvEdit::ToolbarLargeIcons},
    {u"chkCollapseBlocks", &MvEdit::CollapseBlocks},
};

struct SettingCaption {
    TextView name;
    TextView caption;
    bool MvEdit::*fixedByHost = nullptr;
};

inline constexpr SettingCaption kSettingCaptions[] = {
    {u"chkHostConfig", u"&Load keywords and settings from host NIB configuration file when possible"},
    {u"txtRecentFiles", u"Recent &files:"},
    {u"cboDialect", u"Di&alect of programs:", &MvEdit::HostDialect},
    {u"chkLineWrap", u"Enable line &wrapping"},
    {u"chkHighlight", u"Enable &BASIC syntax highlighting"},
    {u"chkAutoRecover", u"Automatic document recover&y"},
    {u"chkReopen", u"Reopen &documents at start"},
    {u"chkColorPrinting", u"Use color when &printing"},
    {u"chkLocking", u"Use &record locking when reading from host database"},
    {u"chkMonospace", u"&Only list &monospaced fonts"},
    {u"cmdChangeFont", u"&Select font..."},
    {u"chkLargeIcons", u"Show large &icons on toolbar"},
    {u"chkMinMaxClose", u"Show document min, ma&x && close buttons "},
    {u"chkCollapseBlocks", u"Enable collapsible code bloc&ks"},
    {u"chkCaseSensitive", u"&Case sensitive keywords", &MvEdit::HostKeywords},
    {u"optEOD", u"At &end of document:"},
    {u"txtCommand", u"&Command", &MvEdit::HostCompile},
    {u"txtOptions", u"&Options", &MvEdit::HostCompile},
    {u"txtCleanCommand", u"&After a clean compile"},
    {u"txtTabSize", u"Tab &size", &MvEdit::HostFormat},
    {u"txtMargin", u"&Margin", &MvEdit::HostFormat},
    {u"txtHistoryDays", u"&Days to keep versions, 0: all"},
    {u"txtHistoryMegabytes", u"Me&gabytes, 0: any"},
    {u"optIndentStar", u"  *  comment line &indent", &MvEdit::HostFormat},
    {u"optIndentBang", u"  !  comment li&ne indent", &MvEdit::HostFormat},
    {u"txtUserPrefix", u"&Prefix character", &MvEdit::HostComment},
    {u"optIndentUser", u"&user-defined comment line indent", &MvEdit::HostFormat},
    {u"lstKeywords", u"Defined key&words:", &MvEdit::HostKeywords},
    {u"txtKeyword", u"&Keyword:"},
    {u"cmdAdd", u"&Add keyword"},
    {u"cmdRemove", u"&Delete keyword"},
    {u"cmdImport", u"&Import keyword list..."},
    {u"cmdExport", u"E&xport keyword list..."},
    {u"optNone", u"&None"},
    {u"optBegin", u"&Begin block indent if keyword found:"},
    {u"optAny", u"anywhere &in line"},
    {u"optFirst", u"at beginning &of line"},
    {u"optLast", u"at end of &line"},
    {u"optEnd", u"&End block indent"},
    {u"optMid", u"&Mid block indent"},
    {u"cmdDefaultColors", u"Reset Default Colors"},
};

inline constexpr TextView kSearchEodChoices[] = {u"Prompt", u"Wrap and beep", u"Wrap silently"};
inline constexpr TextView kIndentChoices[] = {u"None", u"Margin", u"Code"};

/// One kind of code on the page of colours.
struct HighlightRow {
    TextView caption;
    int32_t MvEdit::*color;
    int16_t MvEdit::*style; ///< null for the background, which has none
    int32_t token = 0;      ///< what is drawn so
};

inline constexpr HighlightRow kHighlightRows[] = {
    {u"Background color", &MvEdit::BackColor, nullptr},
    {u"Normal text", &MvEdit::NormalColor, &MvEdit::NormalStyle, token_type::kNormal},
    {u"Language keyword", &MvEdit::ReservedColor, &MvEdit::ReservedStyle, token_type::kReserved},
    {u"Comment", &MvEdit::CommentColor, &MvEdit::CommentStyle, token_type::kComment},
    {u"String", &MvEdit::StringColor, &MvEdit::StringStyle, token_type::kString},
    {u"Label", &MvEdit::LabelColor, &MvEdit::LabelStyle, token_type::kLabel},
    {u"User keyword", &MvEdit::KeywordColor, &MvEdit::KeywordStyle, token_type::kUserKeyword},
    {u"Statement", &MvEdit::StatementColor, &MvEdit::StatementStyle, token_type::kStatement},
    {u"Function", &MvEdit::FunctionColor, &MvEdit::FunctionStyle, token_type::kFunction},
    {u"Number", &MvEdit::NumberColor, &MvEdit::NumberStyle, token_type::kNumberLook},
};

} // namespace nib
