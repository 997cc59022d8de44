#include "platform/posix/KeptCopies.h"

#include "platform/posix/FileName.h"

#include <charconv>
#include <filesystem>
#include <optional>
#include <set>

#include <fcntl.h>
#include <sys/file.h>

namespace nib {

namespace {

namespace fs = std::filesystem;

constexpr size_t kLongestName = 200;
constexpr std::string_view kHead = ".of";
constexpr std::string_view kPart = ".part";
constexpr std::string_view kLink = ".temp";

Descriptor Create(const std::string& path)
{
    return Descriptor(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
}

int Fill(Descriptor& file, std::string_view bytes)
{
    if (int error = WriteAll(file.Get(), bytes); error != 0) return error;
    return fsync(file.Get()) == 0 ? 0 : errno;
}

/// Its process lives. What is not there belongs to nobody.
bool IsHeld(const std::string& path)
{
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    if (!file) return errno != ENOENT;
    return flock(file.Get(), LOCK_SH | LOCK_NB) != 0;
}

/// What a head says.
struct Head {
    std::string target;
    uint64_t newHash = 0;
};

std::string HeadText(const Head& head)
{
    return std::to_string(head.newHash) + "\n" + head.target;
}

std::optional<std::string> BytesOf(const std::string& path)
{
    std::optional<std::string> bytes;
    SystemErrorOf([&] { bytes = ReadWholeFile(path, SIZE_MAX).Bytes(); });
    return bytes;
}

std::optional<Head> ReadHead(const std::string& path)
{
    const std::string text = BytesOf(path).value_or("");
    Head head;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), head.newHash);
    const auto at = static_cast<size_t>(end - text.data());
    if (error != std::errc() || at + 1 >= text.size() || text[at] != '\n') return std::nullopt;
    head.target = text.substr(at + 1);
    return head;
}

bool IsWhole(const Head& head, const std::string& copy)
{
    const std::optional<std::string> now = BytesOf(head.target);
    return now && (HashBytes(*now) == head.newHash || now == BytesOf(copy));
}

std::vector<std::string> Names(const std::string& folder, std::string_view ending)
{
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error))
        if (std::string name = it->path().string(); name.ends_with(ending)) names.push_back(std::move(name));
    return names;
}

void ClearTemporary(const std::string& link)
{
    std::error_code error;
    const std::string file = fs::read_symlink(link, error).string();
    if (error || !LastPart(file).starts_with(kTemporaryName) || IsHeld(file)) return;
    unlink(file.c_str());
    unlink(link.c_str());
}

} // namespace

CopyKeeper::CopyKeeper(const std::string& folder, const std::string& target)
    : target_(AbsolutePath(target)),
      name_(folder + "/" + LastPart(target).substr(0, kLongestName) + "." + RandomSuffix())
{
}

int CopyKeeper::Keep(std::string_view oldBytes, std::string_view newBytes)
{
    // A copy has its name when it is whole, and never without its head.
    const std::string part = name_ + std::string(kPart);
    file_ = Create(part);
    if (!file_) return errno;
    // Where there are no locks the copy counts as that of a process that has ended, and the file as what it is.
    flock(file_.Get(), LOCK_EX | LOCK_NB);
    Descriptor head = Create(name_ + std::string(kHead));
    if (!head) return errno;
    if (int error = Fill(head, HeadText({target_, HashBytes(newBytes)})); error != 0) return error;
    if (int error = head.Close(); error != 0) return error;
    if (int error = Fill(file_, oldBytes); error != 0) return error;
    if (rename(part.c_str(), name_.c_str()) != 0) return errno;
    return SyncFolder(FolderOf(name_));
}

CopyKeeper::~CopyKeeper()
{
    if (!file_) return;
    unlink((name_ + std::string(kPart)).c_str());
    ForgetCopy({name_, target_});
}

TemporaryMark::TemporaryMark(const std::string& folder, int file, const std::string& name)
    : link_(folder + "/" + RandomSuffix() + std::string(kLink))
{
    const bool marked = MakeFolders(folder) == 0 && flock(file, LOCK_EX | LOCK_NB) == 0 &&
                        symlink(AbsolutePath(name).c_str(), link_.c_str()) == 0;
    if (!marked) link_.clear();
}

TemporaryMark::~TemporaryMark()
{
    if (!link_.empty()) unlink(link_.c_str());
}

std::vector<KeptCopy> UnsettledCopies(const std::string& folder)
{
    std::vector<KeptCopy> unsettled;
    for (const std::string& name : Names(folder, kHead)) {
        const std::string copy = name.substr(0, name.size() - kHead.size());
        const std::optional<Head> head = ReadHead(name);
        if (head && IsPlainFile(copy) && !IsHeld(copy) && !IsWhole(*head, copy))
            unsettled.push_back({copy, head->target});
    }
    return unsettled;
}

void ForgetCopiesOf(const std::string& folder, const std::string& target)
{
    for (const std::string& name : Names(folder, kHead)) {
        const std::string copy = name.substr(0, name.size() - kHead.size());
        const std::optional<Head> head = ReadHead(name);
        if (head && head->target == AbsolutePath(target) && !IsHeld(copy)) ForgetCopy({copy, {}});
    }
}

void ForgetCopy(const KeptCopy& kept)
{
    // Without its head nobody would know later what the copy is.
    if (unlink(kept.copy.c_str()) != 0 && errno != ENOENT) return;
    unlink((kept.copy + std::string(kHead)).c_str());
}

void ClearLeftovers(const std::string& folder)
{
    for (const std::string& part : Names(folder, kPart))
        if (!IsHeld(part)) unlink(part.c_str());
    std::vector<KeptCopy> copies;
    std::set<std::string> whole;
    for (const std::string& name : Names(folder, kHead)) {
        const std::string copy = name.substr(0, name.size() - kHead.size());
        if (IsHeld(copy) || IsHeld(copy + std::string(kPart))) continue;
        const std::optional<Head> head = ReadHead(name);
        if (head && IsPlainFile(copy) && IsWhole(*head, copy)) whole.insert(head->target);
        copies.push_back({copy, head ? head->target : std::string()});
    }
    for (const KeptCopy& kept : copies)
        if (!IsPlainFile(kept.copy) || whole.contains(kept.target)) ForgetCopy(kept);
    for (const std::string& link : Names(folder, kLink)) ClearTemporary(link);
}

} // namespace nib
