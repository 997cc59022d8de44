#pragma once
// The settings dialog without its screen: a clone of the settings that is edited, and written back on OK alone.

#include "documents/DocumentServices.h"
#include "editing/BlockStyles.h"
#include "editing/clsKeywords.h"
#include "persistence/settings/SettingsCaptions.h"
#include "persistence/store/SettingsStore.h"

#include <vector>

namespace nib {

/// The words of one class in the order of the alphabet, for a list on the screen.
class KeywordRows {
public:
    void Fill(const clsKeywords& keywords, int32_t Class);
    size_t Count() const { return rows_.size(); }
    const Text& Word(size_t row) const { return rows_[row].word; }

    struct Place {
        size_t row;
        bool held;
    };
    /// Where the word stands, in whatever case, or where it would.
    Place Find(TextView word) const;
    void Insert(size_t row, TextView word);
    void Remove(size_t row) { rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(row)); }

private:
    struct Row {
        Text key;
        Text word;
    };
    std::vector<Row> rows_;
};

/// The parts of the program that take new settings without being documents.
class SettingsApplied {
public:
    virtual ~SettingsApplied() = default;
    /// Icons of the tool bar.
    virtual void IconsChosen(bool large) = 0;
    /// The find dialog and the window of results follow the editor's font.
    virtual void FontChanged() = 0;
};

/// The options that give a keyword's block style.
struct BlockChoice {
    int16_t style = block_style::kNone;
    BlockPlace place = BlockPlace::Anywhere; ///< of a style that begins a block

    friend bool operator==(const BlockChoice&, const BlockChoice&) = default;
};
BlockChoice ChoiceOfBlock(int32_t block);
int32_t BlockOfChoice(BlockChoice choice);

struct KeywordState {
    bool listed = false;   ///< in the class asked for
    bool reserved = false; ///< its style cannot be chosen
    BlockChoice choice;
};

inline constexpr int32_t kMostInField = 32767;
/// A number as typed: 0 for what reads as less, `most` for what reads as more.
int32_t LimitedNumber(TextView text, int32_t most);

class SettingsModel {
public:
    /// All outlive the model.
    SettingsModel(DocumentServices& services, SettingsStore& store, SettingsApplied& applied);

    MvEdit& Clone() { return clone_; }
    const MvEdit& Clone() const { return clone_; }

    /// Of the control; with a dagger when the host has fixed its setting.
    Text Caption(TextView control) const;
    bool ShowsHostNote(SettingsPage page) const;

    /// The check boxes that ask first; the answer is what the box shows afterwards.
    bool LoadsHostConfig() const { return !clone_.DisableHostConfig; }
    bool ChangeHostConfig(bool load);
    bool ChangeMinMaxClose(bool state);

    int32_t RecentCapacity() const { return recentCapacity_; }
    int32_t RecentLimit() const { return clone_.RecentFiles.MaxListSize(); }
    /// Kept until OK, so that no entry is lost by a number half typed.
    void SetRecentCapacity(int32_t capacity) { recentCapacity_ = capacity; }
    /// What the user added to the prefixes that are always there.
    Text UserPrefix() const;
    void SetUserPrefix(TextView prefixes) { clone_.Keywords.SetCommentPrefixes(prefixes); }
    /// Those to choose from, the present one among them.
    std::vector<Text> DialectNames() const;
    void SetDialect(TextView name);
    void ResetColors();

    KeywordState StateOf(TextView word, int32_t Class) const;
    /// False when the word was not taken; a listed word gets the block style.
    bool AddKeyword(TextView word, int32_t Class, BlockChoice choice);
    bool RemoveKeyword(TextView word, int32_t Class);
    void ExportKeywords(int32_t Class);
    /// True when the class was replaced.
    bool ImportKeywords(int32_t Class);

    /// OK: settings, store, documents and windows. False when it failed, which is logged.
    bool Accept();

private:
    bool CheckCharacters(TextView word);
    bool CheckImport(TextView text, Text& list);
    void ReportFailure(TextView what, const Error& error);
    std::shared_ptr<mvItem> PickFile(TextView mode);

    DocumentServices& services_;
    SettingsStore& store_;
    SettingsApplied& applied_;
    MvEdit clone_;
    int32_t recentCapacity_;
    std::shared_ptr<mvItem> lastFile_;
};

} // namespace nib
