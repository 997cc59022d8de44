#include "compare/CompareSources.h"

#include "compare/GitLibrary.h"
#include "documents/mvDocument.h"
#include "hosts/StoredForm.h"

namespace nib {

namespace {

constexpr TextView kReading = u"Reading...";

[[noreturn]] void Refuse(Text why)
{
    throw Error{error_number::kFileNotFound, std::move(why)};
}

CompareText Read(DocumentServices& services, std::shared_ptr<mvItem> item, Text name, TextView note)
{
    const StatusNote reading(services.frame, kReading);
    const AutoSaveHold hold(services.shell);
    std::optional<ReadText> text;
    if (item->IsItem()) text = ReadIfThere(*item);
    if (!text) Refuse(u"\"" + item->DisplayPath() + u"\" does not exist.");
    Text source = item->Path();
    return {std::move(name), Text(note), std::move(*text), std::move(item), std::move(source)};
}

const mvItem& ItemOf(const mvDocument& document)
{
    const auto item = document.ItemObject();
    if (!item) Refuse(document.DisplayName() + u" has not been saved yet.");
    return *item;
}

} // namespace

CompareText StoredTextOf(DocumentServices& services, const mvDocument& document)
{
    auto item = services.connection.OpenServerForPath(ItemOf(document).Path(), true, false);
    return Read(services, std::move(item), document.DisplayName(), u"as stored");
}

CompareText OpenedTextOf(const mvDocument& document)
{
    const auto text = document.TextAsStored();
    if (!text) Refuse(u"It is not known any more how " + document.DisplayName() + u" was opened.");
    return {document.DisplayName(), u"as opened or saved", AsLines(text).Whole(), nullptr, u"opened"};
}

CompareText CommittedTextOf(const mvDocument& document)
{
    const auto item = document.ItemObject();
    const Text name = document.DisplayName();
    const std::string file = ItemOf(document).StoredFile();
    const StoredForm* form = item->Form();
    if (file.empty() || !form) Refuse(name + u" is in no commit.");
    // A form of its own: that of the item tells how it is to be written.
    const auto read = [name, file, own = *form]() -> ReadText {
        const std::optional<std::string> bytes = GitLibrary().CommittedFile(file);
        if (!bytes) Refuse(name + u" is in no commit.");
        StoredForm decoded = own;
        return decoded.Decode(*bytes);
    };
    return {name, u"last commit", read(), nullptr, u"committed", read};
}

CompareText TextOfItem(DocumentServices& services, std::shared_ptr<mvItem> item)
{
    Text name = item->ItemName();
    const Text place = item->DisplayPath();
    return Read(services, std::move(item), std::move(name), place);
}

} // namespace nib
