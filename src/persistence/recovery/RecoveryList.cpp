#include "persistence/recovery/RecoveryList.h"

#include "diagnostics/Guarded.h"
#include "documents/DocumentServices.h"
#include "documents/mvDocument.h"
#include "persistence/recovery/modAutoRecover.h"
#include "platform/posix/FileName.h"

#include <algorithm>

#include <unicode/udat.h>

namespace nib {

namespace {

constexpr TextView kHeader = u"*---> Recovered document: ";
constexpr TextView kGap = u"          ";
/// Longer than any item id. A file that is not ours can begin with a line of any length.
constexpr size_t kLongestTitle = 256;

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
Text TitleOf(const DynamicArray& fields)
{
    Text title = fields.Extract({1});
    if (title.size() > kLongestTitle) title = title.substr(0, kLongestTitle) + u"\u2026";
    std::replace_if(
        title.begin(), title.end(), [](char16_t c) { return c < u' '; }, u' ');
    return title;
}

Text RowText(const Text& content, int64_t seconds)
{
    DynamicArray fields;
    fields.Parse(content, u"\r\n");
    const int32_t lines = std::max(fields.Count() - 1, 0);
    return TitleOf(fields).append(kGap) + Decimal(lines) + u" lines" + Text(kGap) + DateAndTime(seconds);
}

} // namespace

void RecoveryList::Load(TextView folder, const DynamicArray& names)
{
    folder_ = folder;
    names_ = names;
    rows_.clear();
    for (int32_t position = 1; position <= names.Count(); ++position) {
        const Text name = names.Extract({position});
        if (const std::optional<Text> content = ReadCopy(name)) {
            const int64_t written = StampOf(ToFileName(PathOf(name))).seconds;
            rows_.push_back({RowText(*content, written), static_cast<int32_t>(rows_.size()) + 1});
        } else {
            names_.Replace({}, {position});
        }
    }
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
    for (size_t i = 0; i < rows_.size();) {
        const int32_t position = rows_[i].position;
        if (!rows_[i].checked || !Recover(names_.Extract({position}))) {
            ++i;
            continue;
        }
        TakeName(position);
        rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(i));
    }
}

bool RecoveryList::Recover(TextView name)
{
    const std::optional<Text> content = ReadCopy(name);
    if (!content) return false;
    auto document = NewDocumentObject(Documents());
    if (!document) return false;
    const bool filled = OrDefault(
        [&] {
            if (!document->FileNew()) return false;
            document->SetText(Text(kHeader) + *content);
            return true;
        },
        false);
    if (filled)
        recovery_.AdoptAutoSaveFile(name);
    else
        document->FileClose(false);
    return filled;
}

void RecoveryList::DeleteListed()
{
    WaitCursor wait(Documents().frame);
    for (const RecoveryRow& row : rows_) {
        const Text name = TakeName(row.position);
        if (!name.empty()) recovery_.AdoptAutoSaveFile(name);
    }
    rows_.clear();
}

std::optional<Text> RecoveryList::ReadCopy(TextView name)
{
    if (name.empty()) return std::nullopt;
    return ReadAutoSaveCopy(PathOf(name));
}

/// Leaves a blank in its place, so that the positions of the others stay.
Text RecoveryList::TakeName(int32_t position)
{
    Text name = names_.Extract({position});
    names_.Replace({}, {position});
    return name;
}

} // namespace nib
