// Opening and saving: how a document's text moves to and from its item, with every prompt on the way.

#include "diagnostics/Guarded.h"
#include "documents/DocumentServices.h"
#include "documents/Overwriting.h"
#include "documents/mvDocument.h"
#include "hosts/StoredForm.h"
#include "text/TextSearch.h"

#include <ctime>

namespace nib {

namespace {

constexpr TextView kNothingToSave = u"Cannot save document - file name and/or item ID missing!";
constexpr TextView kOpening = u"mvDocument.FileOpen: error during open";
constexpr TextView kReading = u"Reading document from host";
constexpr TextView kSaving = u"Saving document to host";

Text WhyNoItem(const mvItem& item)
{
    if (item.Provider() == kHostProvider && item.Folder().empty() && !item.ItemID().empty())
        return u"Unable to open item " + item.ItemID() + u" because no file is named for it.";
    Text name = !item.ItemName().empty()      ? item.ItemName()
                : !item.DisplayPath().empty() ? item.DisplayPath()
                                              : item.Path();
    return u"Unable to open item " + name + u" because it appears to be a folder or file definition.";
}

} // namespace

bool mvDocument::FileNew()
{
    return FileNewItem(nullptr);
}

bool mvDocument::FileNewItem(std::shared_ptr<mvItem> item)
{
    if (IsBeingSaved()) return false;
    WaitCursor wait(services_.frame);
    item_ = std::move(item);
    SourceView& source = EnsureView().txtText();
    source.SetText(u"");
    stored_.Clear();
    replaces_.reset();
    source.Document().ClearBookmarks();
    source.Document().ClearUndo();
    source.Document().SetModified(false);
    readAt_ = 0;
    source.SetReadOnly(false);
    newNumber_ = ++services_.lastNewNumber;
    labels_.reset();
    if (!counted_) ++services_.openCount;
    counted_ = true;
    if (item_) AdoptLocation(*item_);
    if (item_) view_->Opened();
    services_.shell.DocumentChanged(*this);
    return true;
}

bool mvDocument::FileOpen(TextView path, bool readOnly)
{
    bool lock = services_.settings.RecordLocking;
    for (;;) {
        std::shared_ptr<mvItem> item;
        auto failure = FailureOf([&] {
            AutoSaveHold hold(services_.shell);
            item = services_.connection.OpenServerForPath(path, readOnly, lock);
        });
        if (!failure) return ItemOpen(std::move(item), readOnly);
        if (IsLocked(*failure) && HoldsItemOf(path)) return ItemOpen(item_, readOnly);
        if (!OpenAfterFailure(path, *failure, readOnly, lock)) return false;
    }
}

/// True: try once more with what `readOnly` and `lock` are now.
bool mvDocument::OpenAfterFailure(TextView path, const Error& error, bool& readOnly, bool& lock)
{
    bool locked = IsLocked(error);
    if (error.number == error_number::kNoUpdate && (lock || !readOnly)) {
        // Falls back without asking.
    } else if (locked && lock) {
        if (!Attempt(kOpening, [&] { return Ask(LockedQuestion(path)); })) return false;
    } else {
        ReportFailure(kOpening, error);
        return false;
    }
    readOnly = true;
    lock = false;
    return true;
}

bool mvDocument::HoldsItemOf(TextView path) const
{
    return item_ &&
           OrDefault([&] { return IsSameItem(*services_.connection.OpenServerForPath(path, true, false), *item_); },
                     false);
}

Text mvDocument::LockedQuestion(TextView path)
{
    auto item = services_.connection.OpenServerForPath(path, false, false);
    if (services_.openDocuments.On(*item))
        return item->DisplayPath() + u" is open in another window. Open in \"read only\" mode instead?";
    return nib::LockedQuestion(item->DisplayPath(), item->LockHolder());
}

bool mvDocument::ItemOpen(std::shared_ptr<mvItem> item, bool readOnly)
{
    if (!item || IsBeingSaved()) return false;
    return Attempt(u"mvDocument.ItemOpen: error during open", [&] {
        WaitCursor wait(services_.frame);
        return OpenItem(std::move(item), readOnly);
    });
}

template <typename Read>
auto mvDocument::Reading(Read&& read)
{
    StatusNote note(services_.frame, kReading);
    AutoSaveHold hold(services_.shell);
    return read();
}

bool mvDocument::OpenItem(std::shared_ptr<mvItem> item, bool readOnly)
{
    SourceView& source = EnsureView().txtText();
    if (!item->IsItem()) {
        Warn(WhyNoItem(*item));
        return false;
    }
    if (!item->Exists()) return OpenMissing(std::move(item));
    if (readOnly) {
        item->SetReadOnly(true);
    } else if (item->ReadOnly()) {
        if (!Ask(u"Item " + item->ItemName() + u" is \"read only\". Open in read-only mode?")) return false;
        item->SetReadOnly(true);
        services_.frame.SetWaitCursor(true);
    }
    // Whoever only reads keeps nobody from writing, also where it turned out after the lock was taken.
    if (item->ReadOnly()) item->LockItem(false);
    // Not before: the old text must never be saved as an item that could not be read, nor go without a question.
    const bool again = item == item_; // the answer may be to save it, or to leave it as it is
    const auto read = [&] { return Reading([&] { return item->ReadWhole(); }); };
    ReadText stored = again ? ReadText() : read();
    if (!ConfirmClose()) return false;
    if (again) stored = read();
    TakeItem(std::move(item));
    stored_.Clear();
    RememberStored(ShowRead(std::move(stored)));
    // As it was opened: rights that change later take nobody's keys away.
    source.SetReadOnly(item_->ReadOnly());
    source.SetCaret({0, 0});
    source.Document().ClearUndo();
    source.Document().ClearBookmarks();
    source.Document().SetModified(false);
    labels_.reset();
    if (!counted_) ++services_.openCount;
    counted_ = true;
    AdoptLocation(*item_);
    view_->Opened();
    services_.shell.DocumentChanged(*this);
    return true;
}

/// A file's name alone does not tell that it was looked for in the wrong place.
Text mvDocument::WhereMissing(const mvItem& item) const
{
    if (item.Provider() != kFileProvider) return {};
    const Text path = ComposeFilePath(item.Folder());
    const bool there =
        OrDefault([&] { return services_.connection.OpenServerForPath(path, true, false)->Exists(); }, true);
    if (there) return u"\nIts folder is " + item.Folder() + u".";
    return u"\nIts folder " + item.Folder() + u" does not exist either, so the item cannot be saved there.";
}

bool mvDocument::OpenMissing(std::shared_ptr<mvItem> item)
{
    if (Ask(u"Item " + item->ItemName() + u" does not exist. Create new item?" + WhereMissing(*item)))
        return ConfirmClose() && FileNewItem(std::move(item));
    if (!item_ && !IsDirty()) FileClose(false); // it holds nothing but the wish for this item
    return false;
}

bool mvDocument::Reload()
{
    return item_ && !IsBeingSaved() && Attempt(u"mvDocument.Reload: error during open", [&] {
               SourceView& source = EnsureView().txtText();
               WaitCursor wait(services_.frame);
               const Text stored = Reading([&] { return item_->ReadItem(0, 0, 0); });
               ReplaceText(stored);
               RememberStored(TabsOf(stored, services_.settings.TabSize));
               source.Document().SetModified(false);
               labels_.reset();
               services_.shell.DocumentChanged(*this);
               return true;
           });
}

std::vector<TabPlace> mvDocument::ShowRead(ReadText text)
{
    SourceView& source = EnsureView().txtText();
    const int32_t tabSize = services_.settings.TabSize;
    if (auto* bytes = std::get_if<ByteText>(&text)) return source.SetText(std::move(*bytes), tabSize);
    const Text& units = std::get<Text>(text);
    source.SetText(ExpandTabs(units, tabSize));
    return TabsOf(units, tabSize);
}

/// The lines of what is shown now are those of the item.
void mvDocument::RememberStored(const std::vector<TabPlace>& tabs)
{
    const StoredForm* form = item_->Form();
    stored_.Read(tabs, form ? form->OddEnds() : std::vector<OddEnd>(), services_.settings.TabSize, Source()->Document(),
                 services_.lastLineId);
    replaces_.reset();
    readAt_ = std::time(nullptr);
}

namespace {

/// A text that is being saved, and is modified still unless it was.
class Saving {
public:
    Saving(SourceDocument& text, int32_t& count) : text_(text), count_(count), snapshot_(text.BeginSaving())
    {
        ++count_;
    }
    ~Saving()
    {
        IgnoringErrors([&] { text_.EndSaving(saved_); });
        --count_;
    }
    Saving(const Saving&) = delete;
    Saving& operator=(const Saving&) = delete;

    const std::shared_ptr<const TextSnapshot>& Snapshot() const { return snapshot_; }
    void Done() { saved_ = true; }

private:
    SourceDocument& text_;
    int32_t& count_;
    std::shared_ptr<const TextSnapshot> snapshot_;
    bool saved_ = false;
};

} // namespace

void mvDocument::WriteFrom(SourceView& source, mvItem& item)
{
    Saving saving(source.Document(), savings_); // begins first, as its copy can wait
    StatusNote note(services_.frame, kSaving);
    AutoSaveHold hold(services_.shell);
    const auto& text = saving.Snapshot();
    if (StoredForm* form = item.Form()) {
        const StoredForm* old = item_ && item_.get() != &item ? item_->Form() : form;
        if (old && (old == form || form->TakeForm(*old))) form->SetOddEnds(stored_.OddEnds(*text));
    }
    const LinewiseText written = stored_.Written(text);
    const auto before = StoredBefore(item);
    item.WriteWhole(written, [this](const auto& work) { services_.frame.Await(work); });
    item.Commit();
    saving.Done();
    ++saved_;
    IgnoringErrors([&] { services_.shell.DocumentSaved({item, before, readAt_, written, std::time(nullptr)}); });
    replaces_.reset();
    readAt_ = std::time(nullptr);
}

namespace {

LinewiseText LinesOfHeld(std::shared_ptr<const Text> text)
{
    LinewiseText lines = LinesIn(*text);
    lines.walk = [text = std::move(text), walk = std::move(lines.walk)](const auto& visit) { walk(visit); };
    return lines;
}

} // namespace

/// As it was read or saved last, or another has stored it since; for an item that this document was not on, as it is
/// there.
std::optional<LinewiseText> mvDocument::StoredBefore(mvItem& item)
{
    if (item_.get() == &item) {
        if (replaces_) return LinesOfHeld(replaces_);
        const auto text = readAt_ != 0 ? Source()->Document().StoredText() : nullptr;
        return text ? std::optional(stored_.Written(text)) : std::nullopt;
    }
    if (!services_.shell.KeepsVersions(item) || !item.Exists()) return std::nullopt;
    readAt_ = std::time(nullptr);
    return OrDefault(
        [&] {
            // By an object of its own: what this one knows of the item is part of the save.
            auto there = services_.connection.OpenServerForPath(item.Path(), true, false);
            return std::optional(LinesOfHeld(std::make_shared<const Text>(there->ReadItem(0, 0, 0))));
        },
        std::optional<LinewiseText>());
}

bool mvDocument::FileSave()
{
    if (IsBeingSaved()) return false;
    if (!item_) {
        Warn(kNothingToSave);
        return false;
    }
    if (ReadOnly()) {
        Warn(u"Cannot save " + DisplayName() + u" - document is read-only!");
        return false;
    }
    return Attempt(u"mvDocument.FileSave: error during save", [&] {
        SourceView& source = EnsureView().txtText();
        WaitCursor wait(services_.frame);
        WriteFrom(source, *item_);
        AdoptLocation(*item_);
        labels_.reset();
        services_.shell.DocumentChanged(*this);
        return true;
    });
}

bool mvDocument::FileSaveAs(TextView path)
{
    EnsureView();
    auto item = services_.connection.OpenServerForPath(path, false, false);
    if (item->IsItem()) return ItemSaveAs(std::move(item));
    Warn(kNothingToSave);
    return false;
}

bool mvDocument::MayOverwrite(mvItem& item)
{
    if (!item_ || item_->Path() != item.Path())
        return nib::MayOverwrite(item, [this](TextView text, int32_t flags) { return Show(text, flags); });
    if (!item_->ReadOnly()) return true;
    Warn(u"Item '" + item.ItemID() + u"' is open in read-only mode. Please save using a different name.");
    return false;
}

bool mvDocument::ItemSaveAs(std::shared_ptr<mvItem> item)
{
    if (!item || IsBeingSaved()) return false;
    AdoptLocation(*item);
    if (!MayOverwrite(*item)) return false;
    bool sameItem = item_ && item_->Path() == item->Path();
    if (sameItem) item = item_; // it may hold the lock; a second binding to the same item would lose it
    const auto show = [this](TextView text, int32_t flags) { return Show(text, flags); };
    if (services_.settings.RecordLocking && !LockToWrite(*item, show)) return false;
    SourceView& source = EnsureView().txtText();
    return Attempt(u"mvDocument.ItemSaveAs: error during save", [&] {
        WaitCursor wait(services_.frame);
        WriteFrom(source, *item);
        if (!sameItem) TakeItem(std::move(item)); // a save that failed leaves the document with its item and lock
        source.SetReadOnly(false);
        labels_.reset();
        services_.shell.DocumentChanged(*this);
        return true;
    });
}

} // namespace nib
