#include "shell/FileCommands.h"

#include "documents/DocumentServices.h"
#include "shell/Program.h"

namespace nib {

namespace {

/// The default connection, or any account.
constexpr TextView kAny = u"*";
/// In the settings store: the path of the account and file, or the folder, that something was opened or saved in last.
constexpr TextView kLastPlace = u"LastPlace";

/// `known` is `present`, or goes on where that ends.
bool GoesOn(const Location& present, const ItemPlace& known)
{
    const bool sameHost = present.Provider == known.provider && IsSameHost(present.ServerName, known.serverName);
    const bool fresh = present.Provider == kHostProvider && IsSameHost(present.ServerName, kAny);
    if (present.Database.empty() && present.Folder.empty() && fresh) return true; // nothing is known of it
    return sameHost && present.Folder.empty() && (present.Database.empty() || present.Database == known.database);
}

/// Beside the item; what the name of a file ends with stays its end.
Text CopyPathOf(const mvItem& item)
{
    ItemPlace place = ParsePath(item.Path());
    Text& id = place.itemId;
    if (place.provider != kFileProvider) {
        id += u".MINE";
        return ComposeHostPath(place);
    }
    const size_t dot = id.rfind(u'.');
    const bool ends = dot != Text::npos && dot > id.rfind(u'/') + 1;
    id.insert(ends ? dot : id.size(), u".mine");
    return ComposeFilePath(id);
}

} // namespace

void FileCommands::FileNew()
{
    auto document = NewDocumentObject(program_.Services());
    if (!document) return;
    Guarded(
        program_.Log(), u"frmMain.FileNew", [&] { document->FileNew(); },
        [&](const Error& error) {
            document->FileClose(false); // without a window nobody could
            program_.ReportError(error.description);
        });
}

void FileCommands::FileOpen()
{
    program_.Safely(u"frmMain.FileOpen", [&] { OpenDocumentsDialog(StartOfPicker()); });
}

void FileCommands::FileOpenFrom(TextView place)
{
    program_.Safely(u"FileCommands.FileOpenFrom",
                    [&] { OpenDocumentsDialog(program_.Connection().OpenServerForPath(place, true, false)); });
}

void FileCommands::FileOpenRecent(int32_t index)
{
    program_.Safely(u"frmMain.FileOpenRecent", [&] { OpenRecentDocument(index); });
}

bool FileCommands::FileSave(mvDocument& document)
{
    return program_.Safely(u"frmMain.FileSave", [&] {
        const bool hasPlace = document.ItemObject() && !document.ReadOnly();
        if (!hasPlace) return FileSaveAs(document);
        return program_.Outside().MaySave(document) && document.FileSave();
    });
}

bool FileCommands::FileSaveAs(mvDocument& document)
{
    return program_.Safely(u"frmMain.FileSaveAs", [&] { return SaveDocumentAsDialog(document, document.ItemObject()); });
}

bool FileCommands::FileSaveCopy(mvDocument& document)
{
    return program_.Safely(u"frmMain.FileSaveAs", [&] {
        const Text path = CopyPathOf(*document.ItemObject());
        return SaveDocumentAsDialog(document, program_.Connection().OpenServerForPath(path, true, false));
    });
}

void FileCommands::FileSaveAll()
{
    program_.Safely(u"frmMain.FileSaveAll", [&] {
        for (auto& document : program_.OpenDocuments().All()) {
            if (!document->IsDirty()) continue;
            if (!document->ReadOnly()) {
                FileSave(*document); // reports its own failure; the next one is saved all the same
                continue;
            }
            Text question = u"Document " + document->DisplayName() +
                            u" is read-only and cannot be saved. Continue with next document?";
            if (program_.ShowMessage(question, message_box::kOkCancel | message_box::kWarning) ==
                message_box::kAnswerCancel)
                return;
        }
    });
}

Saved FileCommands::IsDocumentSaved(mvDocument& document, Text message, int32_t buttons)
{
    return program_.Safely(u"frmMain.IsDocumentSaved", [&] {
        if (!document.IsDirty()) return Saved::Yes;
        if (message.empty()) message = u"Save changes to " + document.DisplayName() + u" ?";
        int32_t answer = program_.ShowMessage(message, buttons + message_box::kQuestion);
        if (answer == message_box::kAnswerYes || answer == message_box::kAnswerOk)
            return FileSave(document) && !document.IsDirty() ? Saved::Yes : Saved::Stop; // a client may have edited it
        return answer == message_box::kAnswerNo ? Saved::Discard : Saved::Stop;
    });
}

namespace {

/// Why what is being typed into it cannot be; empty when all is in its text.
Text InputRefused(mvDocument& document)
{
    return document.View() ? document.View()->TakeInput() : Text();
}

} // namespace

bool FileCommands::FileClose(mvDocument& document)
{
    if (!InputRefused(document).empty()) return false;
    auto self = document.shared_from_this(); // others may close it while the question is up
    Saved saved = IsDocumentSaved(document, {}, message_box::kYesNoCancel);
    if (saved == Saved::Stop) return false;
    if (saved == Saved::Discard) document.SetModified(false);
    IgnoringErrors([&] { closed_.Remember(document); });
    document.FileClose(false);
    return true;
}

void FileCommands::ReopenClosed()
{
    program_.Safely(u"frmMain.ReopenClosed", [&] {
        closed_.Reopen(program_);
        program_.Window().ProcessMessages();
    });
}

bool FileCommands::FileCloseAll()
{
    return program_.Safely(u"frmMain.FileCloseAll", [&] {
        for (auto& document : program_.OpenDocuments().All())
            if (!FileClose(*document)) return false;
        return true;
    });
}

void FileCommands::FileExit()
{
    if (CloseAllToEnd()) program_.Window().Unload();
}

bool FileCommands::CloseAllToEnd()
{
    for (auto& document : program_.OpenDocuments().All())
        if (const Text reason = InputRefused(*document); !reason.empty())
            return program_.ShowMessage(reason, message_box::kWarning), false;
    IgnoringErrors([&] { program_.Session().Remember(); });
    const bool closed = FileCloseAll();
    if (!closed) program_.Session().Forget();
    return closed;
}

/// Null when the present place cannot be had: then above all the user must be able to pick another.
std::shared_ptr<mvItem> FileCommands::StartOfPicker()
{
    std::shared_ptr<mvItem> cached;
    const Text last = program_.Store().Get(kLastPlace, {});
    if (!last.empty() && OrDefault([&] { return GoesOn(program_.Place().now, ParsePath(last)); }, false))
        cached = OrDefault([&] { return program_.Connection().OpenServerForPath(last, true, false); }, cached);
    return OrDefault([&] { return program_.DefaultServer(cached); }, std::shared_ptr<mvItem>());
}

void FileCommands::RememberPlace(const mvItem& item)
{
    ItemPlace place{item.Provider(), item.ServerName(), item.Database(), item.Folder(), {}};
    program_.Store().Save(kLastPlace, ComposeHostPath(place));
}

void FileCommands::OpenDocumentsDialog(const std::shared_ptr<mvItem>& start)
{
    std::vector<SelectedItem> picked;
    {
        AutoSaveHold hold(program_.Shell());
        SelectRequest request{.mode = u"Open", .extension = {}, .offerReadOnly = true};
        request.several = true;
        picked = program_.Connection().SelectItems(request, start.get());
    }
    for (const SelectedItem& item : picked) {
        program_.OpenPath(item.item->Path(), item.readOnly);
        program_.Window().ProcessMessages();
    }
}

bool FileCommands::SaveDocumentAsDialog(mvDocument& document, const std::shared_ptr<mvItem>& start)
{
    std::shared_ptr<mvItem> chosen;
    {
        AutoSaveHold hold(program_.Shell());
        auto server = start ? start : StartOfPicker();
        SelectRequest request{.mode = u"Save", .extension = {}};
        request.startNamed = start != nullptr;
        chosen = program_.Connection().SelectItem(request, server.get()).item;
    }
    if (!chosen) return false;
    const auto old = document.ItemObject();
    // What others have stored there is no less theirs for coming by this way.
    if (old && old->Path() == chosen->Path() && !program_.Outside().MaySave(document)) return false;
    if (!document.ItemSaveAs(chosen)) return false;
    if (old) program_.RecentFiles().RemoveItem(RecentEntryOf(*old));
    AddRecent(*document.ItemObject());
    return true;
}

bool FileCommands::OpenRecentDocument(int32_t index)
{
    AutoSaveHold hold(program_.Shell());
    clsRecentList& list = program_.RecentFiles();
    const Text entry = list.ListItem(index);
    bool opened = program_.OpenPath(RecentEntryToPath(PlaceOfOldEntries(), entry), false);
    if (opened && list.ListCount() > 0 && list.ListItem(1) != entry) list.RemoveItem(entry); // it has its account now
    program_.Window().ProcessMessages();
    return opened;
}

void FileCommands::AddRecent(const mvItem& item)
{
    clsRecentList& list = program_.RecentFiles();
    const Text entry = RecentEntryOf(item);
    for (int32_t i = list.ListCount(); IsLocalPath(entry) && i > 0; --i)
        if (const Text other = list.ListItem(i); other != entry && IsSameFile(other, entry)) list.RemoveItem(other);
    list.AddItem(entry);
    RememberPlace(item);
}

Location FileCommands::PlaceOfOldEntries() const
{
    Location place = program_.Place().host;
    const clsRecentList& list = program_.RecentFiles();
    for (int32_t i = 1; i <= list.ListCount() && place.Database.empty(); ++i) {
        const ItemPlace known = OrDefault([&] { return ParsePath(list.ListItem(i)); }, ItemPlace());
        const bool named = known.provider == kHostProvider && known.database != kAny;
        if (named && IsSameHost(known.serverName, place.ServerName)) place.Database = known.database;
    }
    return place;
}

namespace {

/// More names than these say no more.
constexpr size_t kNamed = 5;

void Append(Text& complaint, TextView sentence, const std::vector<Text>& names)
{
    if (names.empty()) return;
    if (!complaint.empty()) complaint += u"\n\n";
    complaint += sentence;
    for (size_t i = 0; i < names.size() && i < kNamed; ++i) complaint += u"\n" + names[i];
    if (names.size() > kNamed) complaint += u"\nand " + Decimal(static_cast<int64_t>(names.size() - kNamed)) + u" more";
}

} // namespace

Text RecentEntryOf(const mvItem& item)
{
    if (item.Provider() == kFileProvider) return item.Path();
    Text host = item.ServerName().empty() ? Text(kAny) : item.ServerName();
    Text account = item.Database().empty() ? Text(kAny) : item.Database();
    return ComposeHostPath({item.Provider(), std::move(host), std::move(account), item.Folder(), item.ItemID()});
}

Text RecentEntryToPath(const Location& host, TextView entry)
{
    ItemPlace place = ParsePath(entry);
    if (place.provider == kFileProvider) return Text(entry);
    const bool anyAccount = place.database == kAny;
    const bool anyHost = EqualsNoCase(place.serverName, u"(any)") || (place.serverName == kAny && anyAccount);
    if (anyHost && !host.ServerName.empty()) place.serverName = host.ServerName;
    if (anyAccount && !host.Database.empty()) place.database = host.Database;
    return ComposeHostPath(place);
}

Text RecentEntryCaption(TextView entry)
{
    return OrDefault(
        [&] {
            const ItemPlace place = ParsePath(entry);
            Text caption = place.itemId;
            if (place.provider == kFileProvider) return caption;
            if (!place.folder.empty()) caption = place.folder + u" " + caption;
            if (place.database != kAny) caption = place.database + u" " + caption;
            return place.serverName == kAny ? caption : caption + u" on " + place.serverName;
        },
        Text(entry));
}

void CloseWindow(mvDocument& document)
{
    if (document.View()) document.View()->QueryUnload();
}

void ToggleWindowState(clsDocView& view, int32_t state)
{
    view.SetWindowState(view.WindowState() == state ? window_state::kNormal : state);
}

Text DropComplaint(const std::vector<Text>& folders, const std::vector<Text>& elsewhere)
{
    Text complaint;
    Append(complaint, u"A folder cannot be opened as a document. Drop the files in it instead.", folders);
    Append(complaint, u"Only files of this computer can be opened by dropping them.", elsewhere);
    return complaint;
}

} // namespace nib
