#pragma once
#include "editing/SettingsContext.h"
#include "editing/clsKeywords.h"
#include "persistence/store/SettingsStore.h"

namespace nib {

/// Colours are 0x00BBGGRR, or with the top bit set a system colour. Styles are bits, 1 bold and 2 italic.
namespace system_color {
inline constexpr int32_t kWindow = static_cast<int32_t>(0x80000005);
inline constexpr int32_t kWindowText = static_cast<int32_t>(0x80000008);
} // namespace system_color

/// All options of editor, language, compiler and windows, with their defaults. What is stored of them, and how, stands
/// in SettingsTable.h.
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
    bool Highlight = true;
    bool LineWrap = false;
    int16_t TabSize = 3;
    int16_t Margin = 6;
    int16_t IndentStar = 1;
    int16_t IndentBang = 0;
    int16_t IndentUserComment = 2;
    Text CompileCommand = u"BASIC";
    Text CompileOptions;
    clsKeywords Keywords;
    bool RecordLocking = true;
    bool ColorPrinting = false;
    bool NoGotoDialog = false;
    bool GotoLineNumber = false;
    bool AutoRecover = true;
    bool ToolbarHotTrack = true;
    bool ToolbarLargeIcons = false;
    Text ResultsFontName;
    Text ResultsFontSize;
    clsRecentList RecentFiles;
    bool MinMaxClose = false;
    bool CollapseBlocks = false;
    int16_t SearchEOD = 0;
    bool DisableHostConfig = false;
    clsRecentList RecentSearches;

    // Set when a host configuration has replaced values in memory; those are not written to the store.
    bool HostKeywords = false;
    bool HostCompile = false;
    bool HostFormat = false;
    bool HostComment = false;
};

} // namespace nib
