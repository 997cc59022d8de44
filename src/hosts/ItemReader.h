#pragma once
#include "base/Text.h"

#include <optional>
#include <string>
#include <vector>

namespace nib {

/// The items of one account, for a search on a thread of its own. It is made on the thread of the windows and then
/// used on one other thread, one call at a time; it shares nothing with its link that changes, so a network link gives
/// it a connection of its own, and takes no locks. Its maker owns it and ends it when that thread is through.
///
/// Calls throw Error: one of number kDeviceUnavailable when the host cannot be reached any more, which ends the search,
/// any other for this file or item alone.
class ItemReader {
public:
    virtual ~ItemReader() = default;
    /// The files of the account in the order that they are shown in.
    virtual std::vector<Text> Files() = 0;
    /// The ids of all items of a file, in the order that they are searched in.
    virtual std::vector<Text> Ids(TextView file) = 0;
    /// The whole item with CR LF between lines and marks as mark characters, as mvItem::ReadItem answers it; nothing
    /// when it is no text, which object code is not.
    virtual std::optional<Text> Read(TextView file, TextView id) = 0;
    /// Tells the stored text of an item from others of it; empty where nothing but reading it can.
    virtual Text Stamp(TextView /*file*/, TextView /*id*/) { return {}; }
    /// Where the items of a file lie as files of their own, or the files of the account when none is named; empty where
    /// they do not.
    virtual std::string Folder(TextView /*file*/) { return {}; }
    /// What the connection says of how the account's programs are looked at, in lines as the record NIB has them.
    virtual Text ProgramRules() { return {}; }
    /// Comes from the other thread at any time, and waits for nothing: the call that is under way ends soon, and with
    /// those that follow throws whatever it likes.
    virtual void Stop() = 0;
};

} // namespace nib
