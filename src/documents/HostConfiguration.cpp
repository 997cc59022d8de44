#include "documents/HostConfiguration.h"

#include "diagnostics/Guarded.h"
#include "documents/mvDocuments.h"
#include "editing/MvEdit.h"
#include "hosts/mvConnect.h"
#include "persistence/store/LeadingNumber.h"

#include <algorithm>
#include <limits>

namespace nib {

namespace {

constexpr TextView kRecord = u"NIB";
constexpr TextView kProvider = u"mvdb";
constexpr TextView kLineEnd = u"\r\n";

enum Attribute : int32_t { LanguageKeywords = 2, UserKeywords, Compile, Format, CommentCharacters };

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
    const Location& location = services_.location;
    if (HostConfigLoaded_ || !EqualsNoCase(location.Provider, kProvider)) return;
    if (location.ServerName.empty() || location.Database.empty()) return;
    HostConfigLoaded_ = true;
    if (services_.settings.DisableHostConfig) return;
    const std::shared_ptr<mvItem> item = OpenAccount();
    if (!item || !item->Supports(kSupportsConfiguration)) return;
    if (mvSession* session = item->Session()) Apply(*session);
}

/// A connection that serves several accounts may be in none yet, or in another than the one that is meant.
std::shared_ptr<mvItem> HostConfiguration::OpenAccount()
{
    const Location& location = services_.location;
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
    UpdateDocuments();
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
    const Location& location = services_.location;
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
    if (!settings.HostKeywords && !settings.HostFormat && !settings.HostComment) return;
    for (const auto& document : services_.openDocuments.All()) document->ApplySettings();
}

} // namespace nib
