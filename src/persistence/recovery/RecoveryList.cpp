#include "persistence/recovery/RecoveryList.h"

#include "diagnostics/Guarded.h"
#include "documents/DocumentServices.h"
#include "persistence/recovery/RecoveredDocument.h"
#include "platform/posix/FileName.h"

#include <algorithm>

#include <unicode/udat.h>

namespace nib {

namespace {

/// Longer than any item id. A file that is not ours can begin with a line of any length.
constexpr size_t kLongestTitle = 256;
/// A journal is written right behind the copy that it names.
constexpr int64_t kJournalDelay = 3;
constexpr TextView kBeforeSave = u"as it was before a save that was cut short";

Text DateAndTime(int64_t seconds)
{
    UErrorCode error = U_ZERO_ERROR;
    UDateFormat* format = udat_open(UDAT_MEDIUM, UDAT_MEDIUM, nullptr, nullptr, -1, nullptr, 0, &error);
    char16_t buffer[128];
    const int32_t length =
        udat_format(format, static_cast<UDate>(seconds) * 1000, buffer, std::size(buffer), nullptr, &error);
    udat_close(format);
    return U_SUCCESS(error) && length <= static_cast<int32_t>(std::size(buffer))
               ? Text(buffer, static_cast<size_t>(length))
               : Text();
}

/// On one line, whatever the file begins with.
Text Shortened(Text title)
{
    if (title.size() > kLongestTitle) title = title.substr(0, kLongestTitle) + u"\u2026";
    std::replace_if(
        title.begin(), title.end(), [](char16_t c) { return c < u' '; }, u' ');
    return title;
}

Text NameOf(const JournalHead& head)
{
    if (!head.name.empty()) return Shortened(head.name);
    return head.itemId.empty() ? Text(u"New document") : Shortened(head.itemId);
}

Text PlaceOf(TextView path)
{
    if (path.empty()) return {};
    return OrDefault(
        [&] {
            const ItemPlace place = ParsePath(path);
            if (IsLocalPath(path)) return FromFileName(FolderOf(ToFileName(place.itemId)));
            return place.database + (place.serverName == u"*" ? Text() : u" on " + place.serverName);
        },
        Text());
}

Text LinesOf(const Text& text)
{
    const auto breaks = std::count(text.begin(), text.end(), u'\n');
    return Decimal(text.empty() ? 0 : breaks + (text.ends_with(u'\n') ? 0 : 1)) + u" lines";
}

} // namespace

void RecoveryList::Load(TextView folder, const DynamicArray& names)
{
    folder_ = folder;
    rows_.clear();
    // First: what was typed since goes on top of them. Not checked: somebody may have mended the file by now.
    for (const KeptCopy& kept : UnsettledCopies(recovery_.Ports().saver.BackupFolder())) AddKept(kept);
    std::vector<Text> copies;
    for (int32_t position = 1; position <= names.Count(); ++position) copies.push_back(names.Extract({position}));
    for (const std::string& journal : recovery_.OrphanJournals()) {
        const auto own = ReadJournal(journal);
        if (!own) continue;
        const Text copy = std::erase(copies, own->content.head.copy) > 0 ? own->content.head.copy : Text();
        AddRow(*Newest(own, copy), copy, journal);
    }
    for (const Text& copy : copies)
        if (const auto written = ReadCopy(copy)) AddRow(*written, copy, {});
}

void RecoveryList::AddRow(const Written& written, Text copy, std::string journal)
{
    const JournalHead& head = written.content.head;
    rows_.push_back({NameOf(head), PlaceOf(head.path), head.path, LinesOf(written.content.text),
                     DateAndTime(written.at), true, std::move(copy), std::move(journal), std::nullopt});
}

void RecoveryList::AddKept(const KeptCopy& kept)
{
    IgnoringErrors([&] {
        const FileContent content = ReadWholeFile(kept.copy);
        const auto lines = std::count(content.Bytes().begin(), content.Bytes().end(), '\n');
        rows_.push_back({FromFileName(LastPart(kept.target)) + u" " + Text(kBeforeSave),
                         FromFileName(FolderOf(kept.target)),
                         ComposeFilePath(FromFileName(kept.target)),
                         Decimal(lines) + u" lines",
                         DateAndTime(content.stamp.seconds),
                         false,
                         {},
                         {},
                         kept});
    });
}

bool RecoveryList::PutBack(const KeptCopy& kept)
{
    if (!IsPlainFile(kept.copy)) return true; // went as another copy of the file was put back
    const FileContent content = ReadWholeFile(kept.copy);
    recovery_.Ports().saver.Save(kept.target, content.Bytes());
    ForgetCopy(kept);
    return true;
}

std::optional<RecoveryList::Written> RecoveryList::ReadCopy(TextView name)
{
    const Text path = folder_ + u"/" + Text(name);
    std::optional<Text> content = ReadAutoSaveCopy(path);
    if (!content) return std::nullopt;
    Written written{{{}, {}}, StampOf(ToFileName(path)).seconds};
    const size_t end = std::min(content->find(u"\r\n"), content->size());
    written.content.head.itemId = content->substr(0, end);
    written.content.text = content->substr(std::min(end + 2, content->size()));
    return written;
}

std::optional<RecoveryList::Written> RecoveryList::ReadJournal(const std::string& name)
{
    return OrDefault(
        [&] {
            const FileContent content = ReadWholeFile(recovery_.JournalFolder() + "/" + name);
            return std::optional(Written{journal::Read(content.Bytes()), content.stamp.seconds});
        },
        std::optional<Written>());
}

std::optional<RecoveryList::Written> RecoveryList::Newest(const std::optional<Written>& own, TextView copy)
{
    std::optional<Written> copied = copy.empty() ? std::nullopt : ReadCopy(copy);
    if (!own || !copied) return own ? own : copied;
    if (copied->at <= own->at + kJournalDelay) return own;
    copied->content.head = own->content.head;
    return copied;
}

std::optional<RecoveryList::Written> RecoveryList::Read(const RecoveryRow& row)
{
    return Newest(row.journal.empty() ? std::nullopt : ReadJournal(row.journal), row.copy);
}

void RecoveryList::Run(const std::function<RecoveryChoice()>& showModal)
{
    while (!rows_.empty()) {
        // The program starts under the hour-glass.
        Documents().frame.SetWaitCursor(false);
        switch (showModal()) {
        case RecoveryChoice::Cancel: return;
        case RecoveryChoice::Recover: RecoverChecked(); break;
        case RecoveryChoice::Delete: DeleteListed(); break;
        }
    }
}

void RecoveryList::CheckAll(bool checked)
{
    for (RecoveryRow& row : rows_) row.checked = checked;
}

bool RecoveryList::AnyChecked() const
{
    return std::any_of(rows_.begin(), rows_.end(), [](const RecoveryRow& row) { return row.checked; });
}

void RecoveryList::Compare(size_t row, const std::function<void(RecoveryComparison)>& show)
{
    const auto failure = FailureOf([&] { show(ReadBoth(rows_.at(row))); });
    if (failure) Documents().shell.ReportError(failure->description);
}

RecoveryComparison RecoveryList::ReadBoth(const RecoveryRow& row)
{
    const WaitCursor wait(Documents().frame);
    const AutoSaveHold hold(Documents().shell);
    const auto itemAt = [&](TextView path) { return Documents().connection.OpenServerForPath(path, true, false); };
    RecoveryComparison both{row.document, itemAt(row.path), Text(), u"as stored", Text(), Text(kBeforeSave)};
    bool wasStored = true;
    if (row.kept) {
        both.name = FromFileName(LastPart(row.kept->target));
        both.recovered = itemAt(ComposeFilePath(FromFileName(row.kept->copy)))->ReadWhole();
    } else {
        auto written = Read(row);
        if (!written)
            throw Error(error_number::kFileNotFound, u"The recoverable copy of " + row.document + u" cannot be read.");
        wasStored = !written->content.head.version.empty();
        both.recovered = std::move(written->content.text);
        both.recoveredNote = u"as recovered";
    }
    if (auto stored = ReadIfThere(*both.item)) {
        both.stored = std::move(*stored);
    } else {
        both.item = nullptr;
        both.storedNote = wasStored ? u"deleted" : u"not stored yet";
    }
    return both;
}

bool RecoveryList::ConfirmDelete()
{
    const Text what = rows_.size() > 1
                          ? u"copies of these " + Decimal(static_cast<int64_t>(rows_.size())) + u" documents?"
                          : Text(u"copy of this document?");
    const Text question = u"Are you sure you want to delete the recoverable " + what +
                          u"\r\n\r\nOnce the recoverable copies are deleted, they can no longer be retrieved.";
    using namespace message_box;
    return Documents().shell.ShowMessage(question, kYesNo | kWarning | kSecondDefault) == kAnswerYes;
}

void RecoveryList::RecoverChecked()
{
    WaitCursor wait(Documents().frame);
    std::erase_if(
        rows_, [&](const RecoveryRow& row) { return row.checked && OrDefault([&] { return Recover(row); }, false); });
}

/// The files are let go of last, and the journal not before the document has one of its own.
bool RecoveryList::Recover(const RecoveryRow& row)
{
    if (row.kept) return PutBack(*row.kept);
    const auto written = Read(row);
    if (!written) return false;
    const auto document = OpenRecovered(Documents(), written->content);
    if (!document) return false;
    recovery_.HandOver(Adopt(row), *document);
    return true;
}

AdoptedFiles RecoveryList::Adopt(const RecoveryRow& row)
{
    return {row.copy.empty() ? Text() : recovery_.AdoptAutoSaveFile(row.copy),
            row.journal.empty() ? std::string() : recovery_.AdoptJournal(row.journal)};
}

void RecoveryList::DeleteListed()
{
    WaitCursor wait(Documents().frame);
    std::erase_if(rows_, [&](const RecoveryRow& row) {
        if (row.kept) ForgetCopy(*row.kept);
        const AdoptedFiles adopted = Adopt(row);
        return adopted.copy.empty() == row.copy.empty() && adopted.journal.empty() == row.journal.empty();
    });
    if (rows_.empty()) return;
    Documents().shell.ReportError(u"The recoverable copy of " + rows_.front().document + u" cannot be deleted.");
}

} // namespace nib
