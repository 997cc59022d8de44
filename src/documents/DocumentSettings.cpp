#include "documents/DocumentSettings.h"

#include "diagnostics/Guarded.h"
#include "documents/mvDocument.h"
#include "editing/LexClass.h"
#include "editing/MvEdit.h"
#include "hosts/mvConnect.h"
#include "language/Dialects.h"
#include "persistence/store/SettingsStore.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace nib {

namespace {

struct TokenRow {
    int32_t type;
    int32_t MvEdit::*color;
    int16_t MvEdit::*style;
};

constexpr TokenRow kTokens[] = {
    {token_type::kComment, &MvEdit::CommentColor, &MvEdit::CommentStyle},
    {token_type::kReserved, &MvEdit::ReservedColor, &MvEdit::ReservedStyle},
    {token_type::kString, &MvEdit::StringColor, &MvEdit::StringStyle},
    {token_type::kNormal, &MvEdit::NormalColor, &MvEdit::NormalStyle},
    {token_type::kSeparator, &MvEdit::NormalColor, &MvEdit::NormalStyle},
    {token_type::kLabel, &MvEdit::LabelColor, &MvEdit::LabelStyle},
    {token_type::kUserKeyword, &MvEdit::KeywordColor, &MvEdit::KeywordStyle},
    {token_type::kStatement, &MvEdit::StatementColor, &MvEdit::StatementStyle},
    {token_type::kFunction, &MvEdit::FunctionColor, &MvEdit::FunctionStyle},
    {token_type::kNumberLook, &MvEdit::NumberColor, &MvEdit::NumberStyle},
};

constexpr int32_t kMarkTypes[] = {token_type::kValueMark, token_type::kSubValueMark};
constexpr int32_t kMarkColor = 150 | 150 << 8 | 150 << 16;
constexpr int32_t kBlack = 0;

void FillTable(TokenStyleTable& table, const MvEdit& settings, bool coloured)
{
    static const MvEdit shipped;
    for (const TokenRow& row : kTokens)
        table.SetColor(row.type, coloured ? settings.*row.color : kBlack, settings.*row.color != shipped.*row.color);
    for (const TokenRow& row : kTokens) table.SetStyle(row.type, settings.*row.style);
    for (int32_t type : kMarkTypes) table.SetColor(type, kMarkColor);
}

/// Points as text, with a point whatever the locale; `fallback` when it is no number above 0.
double PointSize(TextView text, double fallback)
{
    std::string digits = ToUtf8(Trim(text));
    double size = 0;
    auto result = std::from_chars(digits.data(), digits.data() + digits.size(), size);
    return result.ec == std::errc{} && size > 0 ? std::min(size, 400.0) : fallback;
}

SourceFont FontOf(const MvEdit& settings, SourceFont font)
{
    if (!settings.FontName.empty()) font.name = settings.FontName;
    if (!settings.FontSize.empty()) font.size = PointSize(settings.FontSize, font.size);
    font.bold = settings.NormalStyle & token_style::kBold;
    font.italic = settings.NormalStyle & token_style::kItalic;
    return font;
}

} // namespace

void UseDialect(MvEdit& settings, Dialects* dialects)
{
    settings.Keywords.SetRules(dialects ? dialects->Rules(settings.Dialect) : nullptr);
}

int32_t MarginWidthFor(SourceView& view)
{
    int32_t digits = 4;
    for (int32_t longer = view.Document().LineCount() / 10000; longer > 0; longer /= 10) ++digits;
    return digits + (view.ShowBlocks() ? 3 : 1);
}

ViewMarks ViewMarksOf(const MvEdit& settings)
{
    return {settings.CurrentLine,   settings.Matches,         settings.ChangeBars, settings.IndentGuides,
            settings.VisibleBlanks, settings.SmoothScrolling, settings.Margin};
}

void ApplyViewSettings(SourceView& view, const MvEdit& settings, LexClass* lexer)
{
    view.SetFont(FontOf(settings, view.Font()));
    view.SetTabSize(std::max<int32_t>(settings.TabSize, 1));
    view.SetIndentsByBlocks(settings.IndentByBlocks);
    view.SetMarks(ViewMarksOf(settings));
    view.SetLineWrap(settings.LineWrap);
    SourceDocument& document = view.Document();
    view.SetShowBlocks(settings.CollapseBlocks);
    view.SetMarginWidth(MarginWidthFor(view));
    FillTable(view.TokenStyles(), settings, true);
    FillTable(view.PrintTokenStyles(), settings, settings.ColorPrinting);
    view.SetBackColor(settings.BackColor); // which shows the tables too
    if (lexer) {
        lexer->SetKeywords(settings.Keywords);
        lexer->SetHighlight(settings.Highlight);
    }
    document.UpdateLines(0, document.LineCount() - 1);
}

namespace {

constexpr TextView kRecord = u"NIB";
constexpr TextView kProvider = u"mvdb";
constexpr TextView kLineEnd = u"\r\n";

enum Attribute : int32_t { LanguageKeywords = 2, UserKeywords, Compile, Format, CommentCharacters, DialectName };

/// The order of attribute 5.
constexpr TextView kFormatSettings[] = {u"Margin", u"TabSize", u"IndentStar", u"IndentBang", u"IndentUserComment"};

Text FormatNumber(TextView field)
{
    using Limits = std::numeric_limits<int16_t>;
    return Decimal(std::clamp<int32_t>(LeadingInt(field), Limits::min(), Limits::max()));
}

} // namespace

void HostConfiguration::LoadHostConfiguration()
{
    const Location& location = services_.place.host;
    if (HostConfigLoaded_ || !EqualsNoCase(location.Provider, kProvider)) return;
    if (location.ServerName.empty() || location.Database.empty()) return;
    HostConfigLoaded_ = true;
    if (services_.settings.DisableHostConfig) return;
    const std::shared_ptr<mvItem> item = OpenAccount();
    mvSession* session = item && item->Supports(kSupportsConfiguration) ? item->Session() : nullptr;
    if (session) Apply(*session);
    const Text dialect = session ? session->GetConfiguration(kRecord, DialectName) : Text();
    ReplaceDialect(dialect.empty() ? services_.connection.DialectOf(location.ServerName) : dialect);
    UpdateDocuments();
}

/// A connection that serves several accounts may be in none yet, or in another than the one that is meant.
std::shared_ptr<mvItem> HostConfiguration::OpenAccount()
{
    const Location& location = services_.place.host;
    const auto open = [&](const Text& account) {
        const Text path =
            services_.connection.ComposeHostPath({location.Provider, location.ServerName, account, {}, {}});
        return services_.connection.OpenServerForPath(path, false, false);
    };
    std::shared_ptr<mvItem> item = open({});
    mvSession* session = item ? item->Session() : nullptr;
    if (session && EqualsNoCase(session->AccountName(), location.Database)) return item;
    // Whoever opens something in an account that does not exist is told of it then.
    return OrDefault([&] { return open(location.Database); }, std::move(item));
}

void HostConfiguration::Apply(mvSession& session)
{
    MvEdit& settings = services_.settings;
    const auto read = [&](Attribute attribute) { return session.GetConfiguration(kRecord, attribute); };
    if (ReplaceKeywords(keyword_class::kLanguage, read(LanguageKeywords))) settings.HostKeywords = true;
    if (ReplaceKeywords(keyword_class::kUser, read(UserKeywords))) settings.HostKeywords = true;
    if (Text command = read(Compile); !command.empty()) {
        settings.CompileCommand = std::move(command);
        settings.CompileOptions.clear();
        settings.HostCompile = true;
    }
    if (const Text numbers = read(Format); !numbers.empty()) {
        ReplaceFormat(numbers);
        settings.HostFormat = true;
    }
    if (const Text prefixes = read(CommentCharacters); !prefixes.empty()) {
        settings.Keywords.SetCommentPrefixes(prefixes);
        settings.HostComment = true;
    }
}

/// A name that nobody knows changes nothing: the user's own choice is better than none.
void HostConfiguration::ReplaceDialect(const Text& name)
{
    MvEdit& settings = services_.settings;
    const bool none = EqualsNoCase(name, kNoDialect);
    if (name.empty() || (!none && !(services_.dialects && services_.dialects->Find(name)))) return;
    settings.Dialect = name;
    settings.HostDialect = true;
    UseDialect(settings, services_.dialects);
}

/// From the item named "FILE\ITEM". False when that gives no text. An item that cannot be had keeps nobody from work.
bool HostConfiguration::ReplaceKeywords(int32_t Class, TextView place)
{
    if (place.empty()) return false;
    const Text words = Guarded(
        services_.log, u"HostConfiguration.ReplaceKeywords", [&] { return ReadPlace(place); },
        [](const Error&) { return Text(); });
    if (words.empty()) return false;
    services_.settings.Keywords.SetKeywordList(Class, kLineEnd, words);
    return true;
}

Text HostConfiguration::ReadPlace(TextView place)
{
    const Location& location = services_.place.host;
    const Text path =
        services_.connection.ComposeHostPath({location.Provider, location.ServerName, location.Database,
                                              Text(Field(place, u'\\', 1)), Text(Field(place, u'\\', 2))});
    const std::shared_ptr<mvItem> item = services_.connection.OpenServerForPath(path, true, false);
    return item && item->IsItem() && item->Exists() ? item->ReadItem(0, 0, 0) : Text();
}

/// Kept within the same limits as the user's own numbers.
void HostConfiguration::ReplaceFormat(TextView numbers)
{
    int32_t number = 0;
    const Text noFont;
    for (TextView name : kFormatSettings) {
        ++number;
        const auto get = [&](TextView, TextView) { return FormatNumber(Field(numbers, u',', number)); };
        ReadSetting(SettingNamed(name), services_.settings, {get, noFont});
    }
}

void HostConfiguration::UpdateDocuments()
{
    const MvEdit& settings = services_.settings;
    if (!settings.HostKeywords && !settings.HostFormat && !settings.HostComment && !settings.HostDialect) return;
    for (const auto& document : services_.openDocuments.All()) {
        const bool highlight = document->Highlight(); // which may be a client's choice, and no host's
        document->ApplySettings();
        document->SetHighlight(highlight);
    }
}

} // namespace nib
