#include "shell/frame/DocumentProperties.h"

#include "documents/DocumentServices.h"
#include "documents/mvDocument.h"
#include "shell/DocumentStatus.h"

#include <iterator>

namespace nib {

namespace {

constexpr TextView kHost = u"mvdb";
constexpr TextView kLineEnd = u"\r\n";

int32_t CountLineEnds(TextView text)
{
    int32_t count = 0;
    for (size_t at = text.find(kLineEnd); at != TextView::npos; at = text.find(kLineEnd, at + 2)) ++count;
    return count;
}

using Rows = std::vector<PropertyRow>;

Rows PlaceOfItem(const mvItem& item)
{
    if (item.Provider() != kHost) return {{u"Location", item.FileName()}, {u"File name", item.ItemID()}};
    const TextView server = Field(item.ServerName(), u'*', 1);
    return {{u"Host", server.empty() ? item.HostName() : Text(server)}, // the default connection has no other name
            {u"Account", item.Account()},
            {u"File name", item.FileName()},
            {u"Item ID", item.ItemID()}};
}

Rows PlaceOfNew(const mvDocument& document, const Location& current)
{
    if (current.Provider != kHost) return {{u"Location", document.Path()}, {u"File name", document.DisplayName()}};
    bool anyHost = current.ServerName.empty() || current.ServerName == u"*";
    return {{u"Host", anyHost ? Text(kHost) : current.ServerName},
            {u"Account", current.Database},
            {u"File name", current.Folder},
            {u"Item ID", document.DisplayName()}};
}

/// What is not known has no row.
Rows AsStored(const mvDocument& document)
{
    const auto item = document.ItemObject();
    const std::optional<int64_t> size = item ? item->StoredSize() : std::nullopt;
    Rows rows{{u"Stored size", size ? Decimal(*size) + u" bytes" : Text()},
              {u"Character set", CodingText(document)},
              {u"Line ends", EndsText(document)},
              {u"Lock", LockText(document)}};
    std::erase_if(rows, [](const PropertyRow& row) { return row.value.empty(); });
    return rows;
}

Text YesNo(bool value)
{
    return value ? u"yes" : u"no";
}

} // namespace

int32_t TextSize(TextView text, TextView provider)
{
    auto length = static_cast<int32_t>(text.size());
    return provider == kHost ? length - CountLineEnds(text) : length;
}

int32_t TextLines(TextView text)
{
    if (text.empty()) return 0;
    return CountLineEnds(text) + (text.ends_with(kLineEnd) ? 0 : 1);
}

std::vector<PropertyRow> DocumentProperties(mvDocument& document, const Location& current)
{
    auto item = document.ItemObject();
    Rows rows = item ? PlaceOfItem(*item) : PlaceOfNew(document, current);
    Text provider = item ? item->Provider() : current.Provider;
    auto addMeasures = [&](const Text& text, TextView size, TextView lines) {
        rows.push_back({Text(size), Decimal(TextSize(text, provider))});
        rows.push_back({Text(lines), Decimal(TextLines(text))});
    };
    rows.push_back({u"Modified", YesNo(document.IsDirty())});
    rows.push_back({u"Read only", YesNo(document.ReadOnly())});
    addMeasures(document.GetText(), u"Size", u"Lines");
    if (document.HasSelection()) addMeasures(document.SelText(), u"Selection size", u"Selected lines");
    Rows stored = AsStored(document);
    rows.insert(rows.end(), std::make_move_iterator(stored.begin()), std::make_move_iterator(stored.end()));
    return rows;
}

} // namespace nib
