#include "persistence/settings/SettingsModel.h"

#include "diagnostics/Guarded.h"
#include "documents/DocumentServices.h"
#include "documents/DocumentSettings.h"
#include "documents/Overwriting.h"
#include "documents/mvDocument.h"
#include "editing/MvEdit.h"
#include "language/Dialects.h"
#include "persistence/store/SettingsStore.h"
#include "text/Units.h"

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
    {SettingsPage::General, &MvEdit::HostKeywords},      {SettingsPage::General, &MvEdit::HostDialect},
    {SettingsPage::Tools, &MvEdit::HostCompile},         {SettingsPage::Tools, &MvEdit::HostFormat},
    {SettingsPage::Tools, &MvEdit::HostComment},         {SettingsPage::LanguageKeywords, &MvEdit::HostKeywords},
    {SettingsPage::UserKeywords, &MvEdit::HostKeywords},
};

using namespace message_box;

constexpr TextView kLineEnd = u"\r\n";
constexpr TextView kBlanks = u" \t";
constexpr char16_t kByteOrderMark = u'\uFEFF';
/// A line of a file that holds no keywords can be of any length; a question must stay readable.
constexpr size_t kLongestShown = 80;

Text Shown(TextView word)
{
    return word.size() <= kLongestShown ? Text(word) : Text(word.substr(0, kLongestShown)) + u"...";
}

TextView WithoutBlanks(TextView line)
{
    size_t first = line.find_first_not_of(kBlanks);
    if (first == TextView::npos) return {};
    return line.substr(first, line.find_last_not_of(kBlanks) - first + 1);
}

/// Takes the next line off the text, whatever ends it.
TextView TakeLine(TextView& text)
{
    size_t end = text.find_first_of(kLineEnd);
    TextView line = text.substr(0, end);
    if (end == TextView::npos)
        text = {};
    else
        text.remove_prefix(end + (text.substr(end, 2) == kLineEnd ? 2 : 1));
    return line;
}

bool IsHighSurrogate(char16_t c)
{
    return (c & 0xFC00) == 0xD800;
}

/// The characters of a word that no keyword had so far, each once and as a question names it.
Text UnexpectedCharacters(TextView word, const clsKeywords& keywords)
{
    std::vector<TextView> met;
    Text list;
    for (size_t at = 0; at < word.size();) {
        size_t length = IsHighSurrogate(word[at]) && at + 1 < word.size() ? 2 : 1;
        TextView character = word.substr(at, length);
        char16_t c = character[0];
        bool usual = units::IsLetter(c) || c == u'_' || c == u'%' || (c == u'@' && at == 0) ||
                     keywords.KeywordFirstChars().find(character) != Text::npos ||
                     keywords.KeywordNextChars().find(character) != Text::npos;
        at += length;
        if (usual || std::find(met.begin(), met.end(), character) != met.end()) continue;
        met.push_back(character);
        if (!list.empty()) list += u' ';
        list += c == u' ' ? Text(u"space") : u"'" + Text(character) + u"'";
    }
    return list;
}

} // namespace

void KeywordRows::Fill(const clsKeywords& keywords, int32_t Class)
{
    rows_.clear();
    for (const clsKeyword& keyword : keywords)
        if (keyword.Class & Class) rows_.push_back({Text(FoldedWord(keyword.Word).View()), keyword.Word});
    std::sort(rows_.begin(), rows_.end(), [](const Row& a, const Row& b) { return a.key < b.key; });
}

KeywordRows::Place KeywordRows::Find(TextView word) const
{
    FoldedWord folded(word);
    TextView key = folded.View();
    auto at = std::lower_bound(rows_.begin(), rows_.end(), key, [](const Row& row, TextView k) { return row.key < k; });
    return {static_cast<size_t>(at - rows_.begin()), at != rows_.end() && at->key == key};
}

void KeywordRows::Insert(size_t row, TextView word)
{
    rows_.insert(rows_.begin() + static_cast<std::ptrdiff_t>(row), {Text(FoldedWord(word).View()), Text(word)});
}

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
    if (row->fixedByHost && clone_.*row->fixedByHost) caption += kHostMark;
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

std::vector<Text> SettingsModel::DialectNames() const
{
    std::vector<Text> names{Text(kNoDialect)};
    const auto add = [&](const Text& name) {
        const auto same = [&](const Text& held) { return EqualsNoCase(held, name); };
        if (!name.empty() && std::none_of(names.begin(), names.end(), same)) names.push_back(name);
    };
    if (services_.dialects)
        for (const Text& name : services_.dialects->Names()) add(name);
    add(clone_.Dialect);
    return names;
}

void SettingsModel::SetDialect(TextView name)
{
    clone_.Dialect = name;
    UseDialect(clone_, services_.dialects);
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

KeywordState SettingsModel::StateOf(TextView word, int32_t Class) const
{
    const clsKeyword* held = clone_.Keywords.Item(Trim(word));
    if (!held) return {};
    return {(held->Class & Class) != 0, (held->Class & keyword_class::kReserved) != 0, ChoiceOfBlock(held->Block)};
}

bool SettingsModel::CheckCharacters(TextView word)
{
    Text clean;
    Text badChar;
    if (!clone_.Keywords.ValidateKeyword(word, clean, badChar)) {
        services_.shell.ShowMessage(u"Keyword may not contain a comma, semicolon or parenthesis!", kWarning);
        return false;
    }
    Text unexpected = UnexpectedCharacters(word, clone_.Keywords);
    if (unexpected.empty()) return true;
    Text question = u"Keyword '" + Text(word) + u"' contains an unexpected character: " + unexpected +
                    u"\r\nAre you sure you want to add this keyword?";
    return services_.shell.ShowMessage(question, kYesNo | kWarning) == kAnswerYes;
}

bool SettingsModel::AddKeyword(TextView word, int32_t Class, BlockChoice choice)
{
    auto add = [&] {
        word = Trim(word);
        return CheckCharacters(word) && clone_.Keywords.AddKeyword(word, Class, BlockOfChoice(choice)) != nullptr;
    };
    return Guarded(services_.log, u"frmSettings.cmdAdd", add, [](const Error&) { return false; });
}

bool SettingsModel::RemoveKeyword(TextView word, int32_t Class)
{
    auto remove = [&] {
        word = Trim(word);
        if (!StateOf(word, Class).listed) return false;
        clone_.Keywords.RemoveKeyword(word, Class);
        return true;
    };
    return Guarded(services_.log, u"frmSettings.cmdRemove", remove, [](const Error&) { return false; });
}

std::shared_ptr<mvItem> SettingsModel::PickFile(TextView mode)
{
    SelectRequest request{.mode = Text(mode), .extension = u"txt"};
    request.mustExist = mode == u"Import";
    request.startNamed = lastFile_ != nullptr;
    auto item = services_.connection.SelectItem(request, lastFile_.get()).item;
    if (item) lastFile_ = item;
    return item;
}

void SettingsModel::ReportFailure(TextView what, const Error& error)
{
    services_.shell.ShowMessage(Text(what) + error.description, kWarning, u"Nib");
}

void SettingsModel::ExportKeywords(int32_t Class)
{
    auto write = [&] {
        auto item = PickFile(u"Export");
        const auto show = [this](TextView text, int32_t flags) { return services_.shell.ShowMessage(text, flags); };
        if (!item || !MayOverwrite(*item, show)) return;
        if (services_.settings.RecordLocking && !LockToWrite(*item, show)) return;
        item->WriteItem(0, 0, 0, clone_.Keywords.GetKeywordList(Class, kLineEnd));
        item->Commit();
        item->Close();
        item->LockItem(false); // the item stays, as the place where the next picker begins
    };
    Guarded(services_.log, u"frmSettings.cmdExport", write, [&](const Error& error) {
        if (lastFile_) lastFile_->LockItem(false);
        ReportFailure(u"Error exporting keyword list: ", error);
    });
}

bool SettingsModel::ImportKeywords(int32_t Class)
{
    auto read = [&] {
        auto item = PickFile(u"Import");
        if (!item) return false;
        Text text = item->ReadItem(0, 0, 0);
        item->Close();
        Text list;
        if (!CheckImport(text, list)) return false;
        WaitCursor wait(services_.frame);
        clone_.Keywords.SetKeywordList(Class, kLineEnd, list);
        return true;
    };
    return Guarded(services_.log, u"frmSettings.cmdImport", read, [&](const Error& error) {
        ReportFailure(u"Error importing keyword list: ", error);
        return false;
    });
}

/// `list` becomes what is to be imported; false when the user gave up.
bool SettingsModel::CheckImport(TextView text, Text& list)
{
    list.reserve(text.size() + kLineEnd.size());
    if (!text.empty() && text.front() == kByteOrderMark) text.remove_prefix(1);
    Text clean;
    Text badChar;
    while (!text.empty()) {
        TextView line = WithoutBlanks(TakeLine(text));
        bool isWord = !line.empty() && line.front() != u';';
        if (isWord && !clone_.Keywords.ValidateKeyword(line, clean, badChar)) {
            Text question = u"Keyword '" + Shown(line) + u"' contains an invalid character: " + badChar +
                            u". Import as '" + Shown(clean) +
                            u"'?\r\n\r\nClick 'Yes' to import corrected keyword, 'No' to skip this keyword, or Cancel "
                            u"to cancel the import operation.";
            int32_t answer = services_.shell.ShowMessage(question, kYesNoCancel | kWarning);
            if (answer != kAnswerYes && answer != kAnswerNo) return false;
            line = answer == kAnswerYes ? TextView(clean) : TextView();
        }
        list.append(line).append(kLineEnd);
    }
    return true;
}

} // namespace nib
