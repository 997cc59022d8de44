#include "editing/MvEdit.h"

#include "platform/MessageBoxes.h"

#include <algorithm>
#include <limits>

namespace nib {

namespace {

/// The stamp on what is stored.
constexpr TextView kVersionKey;
constexpr TextView kVersionText = u"7.1";
constexpr float kVersion = 7.1F;

/// The monospaced font that older releases came with.
constexpr TextView kFormerFont = u"MVW Lucida Console";

constexpr TextView kNewFont = u"DejaVu Sans Mono";
constexpr TextView kFontQuestion = u"This version of Nib includes a new monospaced font called DejaVu Sans Mono. "
                                   u"Your current editor font is MVW Lucida Console. Would you like to change "
                                   u"your editor font to the new font (recommended)?\r\n\r\n"
                                   u"(this prompt will not be shown again, but you can always change the font "
                                   u"by selecting Preferences from the View menu)";

/// The name under which the editor's font goes today.
Text MapFontName(const Text& name, const Text& defaultFontName)
{
    if (name.empty()) return defaultFontName;
    return EqualsNoCase(name, u"MV Lucida Console") ? Text(kFormerFont) : name;
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

constexpr TextView kTrue = u"True";
constexpr TextView kFalse = u"False";

template <class... Kinds>
struct ByKind : Kinds... {
    using Kinds::operator()...;
};
template <class... Kinds>
ByKind(Kinds...) -> ByKind<Kinds...>;

int64_t Obeying(SettingRule rule, int64_t number)
{
    switch (rule) {
    case SettingRule::NotNegative: return std::max<int64_t>(number, 0);
    case SettingRule::IndentChoice: return number < -2 || number > 2 ? 0 : std::abs(number);
    case SettingRule::UpToTwo: return number < 0 || number > 2 ? 0 : number;
    default: return number;
    }
}

void StoreNumber(int64_t number, int16_t& field)
{
    using Limits = std::numeric_limits<int16_t>;
    if (number >= Limits::min() && number <= Limits::max()) field = static_cast<int16_t>(number);
}

/// Colours are bit patterns, so the form without a sign is welcome too.
void StoreNumber(int64_t number, int32_t& field)
{
    if (number >= std::numeric_limits<int32_t>::min() && number <= std::numeric_limits<uint32_t>::max())
        field = static_cast<int32_t>(number);
}

int32_t ClampedNumber(TextView text)
{
    using Limits = std::numeric_limits<int32_t>;
    return static_cast<int32_t>(std::clamp<int64_t>(LeadingWhole(text), Limits::min(), Limits::max()));
}

// Keywords

constexpr TextView kCaseKey = u"CaseSensitiveKeywords";
constexpr TextView kLanguageKey = u"LanguageKeywords";
constexpr TextView kUserKey = u"UserKeywords";
constexpr TextView kPrefixesKey = u"CommentPrefixes";
constexpr TextView kComma = u",";
constexpr TextView kBlank = u" ";

void ReadKeywords(clsKeywords& keywords, const SettingsSource& source)
{
    auto setList = [&](int32_t wordClass, const Text& list) {
        bool commas = list.find(u',') != Text::npos;
        keywords.SetKeywordList(wordClass, commas ? kComma : kBlank, list);
    };
    keywords.SetCaseSensitive(WordToBoolean(source.get(kCaseKey, BooleanWord(false))).value_or(false));
    if (Text list = source.get(kLanguageKey, {}); !list.empty()) setList(keyword_class::kLanguage, list);
    setList(keyword_class::kUser, source.get(kUserKey, {}));
    if (Text prefixes = source.get(kPrefixesKey, {}); !prefixes.empty()) keywords.SetCommentPrefixes(prefixes);
}

void WriteKeywords(const MvEdit& settings, const clsKeywords& keywords, SettingsStore& store)
{
    bool commas = keywords.KeywordsHaveEmbeddedBlanks();
    auto list = [&](int32_t wordClass) {
        Text words = keywords.GetKeywordList(wordClass, commas ? kComma : kBlank);
        // A single word would be cut at its blanks.
        if (commas && !words.empty() && words.find(u',') == Text::npos) words += kComma;
        return words;
    };
    if (!settings.HostKeywords) {
        store.Save(kCaseKey, BooleanWord(keywords.CaseSensitive()));
        store.Save(kLanguageKey, list(keyword_class::kLanguage));
        store.Save(kUserKey, list(keyword_class::kUser));
    }
    if (!settings.HostComment) store.Save(kPrefixesKey, keywords.CommentPrefixes());
}

// Recent lists

/// Entries of the lowest numbers win, so a list is read from number 1 until it is full. A count is believed up to here:
/// no list that was ever written came near.
constexpr int32_t kMostEntries = 1000;

Text EntryKey(TextView name, int32_t number)
{
    return Text(name) + u"_" + Decimal(number);
}
Text CountKey(TextView name)
{
    return Text(name) + u"Count";
}

void ReadRecent(TextView name, TextView sizeKey, clsRecentList& list, const SettingsSource& source)
{
    if (!sizeKey.empty()) list.SetListSize(ClampedNumber(source.get(sizeKey, Decimal(list.ListSize()))));
    int32_t count = std::min(ClampedNumber(source.get(CountKey(name), u"0")), kMostEntries);
    auto capacity = static_cast<size_t>(list.ListSize());
    std::vector<Text> found;
    for (int32_t number = 1; number <= count && found.size() < capacity; ++number) {
        Text entry = source.get(EntryKey(name, number), {});
        auto same = [&](const Text& other) { return list.AreSame(other, entry); };
        if (!entry.empty() && std::none_of(found.begin(), found.end(), same)) found.push_back(std::move(entry));
    }
    std::for_each(found.rbegin(), found.rend(), [&](const Text& entry) { list.AddItem(entry); });
}

void WriteRecent(TextView name, TextView sizeKey, const clsRecentList& list, SettingsStore& store)
{
    if (!sizeKey.empty()) store.Save(sizeKey, Decimal(list.ListSize()));
    store.Save(CountKey(name), Decimal(list.ListCount()));
    for (int32_t number = 1; number <= list.ListCount(); ++number)
        store.Save(EntryKey(name, number), list.ListItem(number));
}

void CopyRecent(const clsRecentList& from, clsRecentList& to)
{
    to.Clear();
    to.SetListSize(from.ListSize());
    for (int32_t number = from.ListCount(); number > 0; --number) to.AddItem(from.ListItem(number));
}

} // namespace

void MvEdit::LoadSettings(const SettingsContext& context)
{
    auto get = [&](TextView name, TextView fallback) { return context.store.Get(name, fallback); };
    const SettingsSource source{get, context.defaultFontName};
    const auto isStored = [&](const SettingRow& row) { return !get(row.name, {}).empty(); };
    const bool fresh =
        get(kVersionKey, {}).empty() && std::none_of(std::begin(kSettings), std::end(kSettings), isStored);
    for (const SettingRow& row : kSettings) ReadSetting(row, *this, source);
    // Single precision: the stored text "7.1" must not count as less than the version of this release.
    double stored = LeadingNumber(get(kVersionKey, {}));
    auto version = static_cast<float>(std::clamp(stored, -1000.0, 1000.0));
    if (version >= kVersion) return;
    if (fresh) {
        Dialect = kCommonDialect;
        WriteSetting(SettingNamed(u"Dialect"), *this, context.store);
    }
    OfferNewFont(*this, context);
    context.store.Save(kVersionKey, kVersionText); // the question was asked once
}

void MvEdit::SaveSettings(SettingsStore& store) const
{
    store.Save(kVersionKey, kVersionText);
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
    clone.HostDialect = HostDialect;
    return clone;
}

void MvEdit::UpdateFrom(const MvEdit& other)
{
    if (&other == this) return;
    for (const SettingRow& row : kSettings) CopySetting(row, other, *this);
}

std::optional<bool> WordToBoolean(TextView text)
{
    text = Trim(text);
    if (EqualsNoCase(text, kTrue)) return true;
    if (EqualsNoCase(text, kFalse) || text.starts_with(u'0')) return LeadingNumber(text) != 0;
    return LeadingNumber(text) != 0 ? std::optional(true) : std::nullopt;
}

TextView BooleanWord(bool state)
{
    return state ? kTrue : kFalse;
}

const SettingRow& SettingNamed(TextView name)
{
    return *std::find_if(std::begin(kSettings), std::end(kSettings),
                         [&](const SettingRow& row) { return row.name == name; });
}

void ReadSetting(const SettingRow& row, MvEdit& settings, const SettingsSource& source)
{
    bool isFont = row.rule == SettingRule::EditorFont;
    auto readNumber = [&](auto& field) {
        StoreNumber(Obeying(row.rule, LeadingWhole(source.get(row.name, Decimal(field)))), field);
    };
    std::visit(
        ByKind{[&](Text MvEdit::*member) {
                   Text& field = settings.*member;
                   field = source.get(row.name, isFont ? source.defaultFontName : field);
                   if (isFont) field = MapFontName(field, source.defaultFontName);
               },
               [&](bool MvEdit::*member) {
                   bool& field = settings.*member;
                   field = WordToBoolean(source.get(row.name, BooleanWord(field))).value_or(field);
               },
               [&](int16_t MvEdit::*member) { readNumber(settings.*member); },
               [&](int32_t MvEdit::*member) { readNumber(settings.*member); },
               [&](clsKeywords MvEdit::*member) { ReadKeywords(settings.*member, source); },
               [&](RecentMember member) { ReadRecent(row.name, member.sizeKey, settings.*member.list, source); }},
        row.member);
}

void WriteSetting(const SettingRow& row, const MvEdit& settings, SettingsStore& store)
{
    if (row.fixedByHost && settings.*row.fixedByHost) return;
    std::visit(
        ByKind{[&](Text MvEdit::*member) { store.Save(row.name, settings.*member); },
               [&](bool MvEdit::*member) { store.Save(row.name, BooleanWord(settings.*member)); },
               [&](int16_t MvEdit::*member) { store.Save(row.name, Decimal(settings.*member)); },
               [&](int32_t MvEdit::*member) { store.Save(row.name, Decimal(settings.*member)); },
               [&](clsKeywords MvEdit::*member) { WriteKeywords(settings, settings.*member, store); },
               [&](RecentMember member) { WriteRecent(row.name, member.sizeKey, settings.*member.list, store); }},
        row.member);
}

void CopySetting(const SettingRow& row, const MvEdit& from, MvEdit& to)
{
    std::visit(ByKind{[&](clsKeywords MvEdit::*member) { (to.*member).UpdateFrom(from.*member); },
                      [&](RecentMember member) { CopyRecent(from.*member.list, to.*member.list); },
                      [&](auto member) { to.*member = from.*member; }},
               row.member);
}

} // namespace nib
