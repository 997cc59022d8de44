#include "hosts/HostConnection.h"

#include "base/Error.h"
#include "diagnostics/Guarded.h"
#include "hosts/FileItem.h"
#include "hosts/PathString.h"

namespace nib {

namespace {

constexpr TextView kTitle{u"Nib"};

} // namespace

HostConnection::HostConnection(HostConfig config, PickerDialog& picker, MessageBoxes& boxes, HostLinkKinds kinds)
    : links_(std::move(config), std::move(kinds)), browser_(links_), picker_(picker), boxes_(boxes)
{
}

SelectedItem HostConnection::SelectItem(const SelectRequest& request, mvItem* start)
{
    const PickerAnswer answer = RunPicker(request, start);
    if (answer.paths.empty()) return {};
    return OpenPicked(answer.paths.front(), answer.readOnly, request.lock && request.mode != u"Save");
}

/// What cannot be opened is told of and left out, so that the other picks are not lost.
std::vector<SelectedItem> HostConnection::SelectItems(const SelectRequest& request, mvItem* start)
{
    const PickerAnswer answer = RunPicker(request, start);
    std::vector<SelectedItem> items;
    for (const Text& path : answer.paths) {
        SelectedItem picked = Guarded(
            DebugLog(), u"HostConnection.SelectItems",
            [&] { return OpenPicked(path, answer.readOnly, request.lock && request.mode != u"Save"); },
            [&](const Error& error) {
                boxes_.Show(error.description, message_box::kOk | message_box::kWarning, kTitle);
                return SelectedItem{};
            });
        if (picked.item) items.push_back(std::move(picked));
    }
    return items;
}

PickerAnswer HostConnection::RunPicker(const SelectRequest& request, mvItem* start)
{
    const HostSettings& host = links_.Config().Find(u"*");
    const Text startPath =
        start ? start->Path() : ComposeHostPath({Text(kHostProvider), host.serverName, host.account, {}, {}});
    return picker_.Run(request, startPath, browser_).value_or(PickerAnswer{});
}

/// No item when it is locked and the user does not want it read-only.
SelectedItem HostConnection::OpenPicked(TextView path, bool readOnly, bool lock)
{
    return Guarded(
        DebugLog(), u"HostConnection.OpenPicked",
        [&]() -> SelectedItem {
            return {OpenServerForPath(path, readOnly, lock), readOnly};
        },
        [&](const Error& error) -> SelectedItem {
            const bool noUpdate = error.number == error_number::kNoUpdate;
            if (!lock || !(noUpdate || IsLocked(error))) throw error;
            if (!noUpdate && !AgreesToReadOnly(path)) return {};
            return {OpenServerForPath(path, true, false), true};
        });
}

bool HostConnection::AgreesToReadOnly(TextView path)
{
    const Text question = LockedQuestion(OpenServerForPath(path, false, false)->DisplayPath());
    return boxes_.Show(question, message_box::kYesNo | message_box::kQuestion, kTitle) == message_box::kAnswerYes;
}

std::shared_ptr<mvItem> HostConnection::OpenServerForPath(TextView path, bool readOnly, bool lock)
{
    ItemPlace place = ParsePath(path);
    if (place.provider == kFileProvider) return std::make_shared<FileItem>(place.itemId, readOnly, links_.Saver());
    if (place.serverName.empty()) place.serverName = u"*";
    return links_.Find(place.serverName).Open(place, readOnly, lock);
}

} // namespace nib
