#include "persistence/recovery/JournalWriter.h"

#include "diagnostics/Guarded.h"
#include "platform/posix/FileName.h"
#include "platform/posix/FileSaver.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace nib {

namespace {

constexpr std::string_view kIncomplete = "~";
/// Handed over in pieces, a long text is not held in memory until the burst is over.
constexpr size_t kManyBytes = size_t{1} << 18;
constexpr size_t kFewBytes = size_t{1} << 14;
/// Below the windows' thread, which a key waits for.
constexpr int kNiceness = 10;

} // namespace

JournalWriter::JournalWriter(std::string folder) : folder_(std::move(folder)), thread_([this] { Run(); }) {}

JournalWriter::~JournalWriter()
{
    {
        std::lock_guard lock(mutex_);
        stop_ = true;
    }
    wake_.notify_one();
    thread_.join();
}

void JournalWriter::Begin(const std::string& name)
{
    HandOver({What::Begin, name, {}});
}

void JournalWriter::Append(const std::string& name, std::string bytes)
{
    HandOver({What::Append, name, std::move(bytes)});
}

void JournalWriter::Commit(const std::string& name)
{
    HandOver({What::Commit, name, {}});
}

void JournalWriter::Remove(const std::string& name)
{
    HandOver({What::Remove, name, {}});
}

void JournalWriter::RemoveAfter(const std::string& newer, const std::string& name)
{
    HandOver({What::Remove, name, newer});
}

void JournalWriter::HandOver(Order order)
{
    bool wake = false;
    {
        std::lock_guard lock(mutex_);
        last_ = Clock::now();
        wake = orders_.empty();
        if (wake) first_ = last_;
        if (order.what == What::Begin) broken_.erase(order.name);
        // What is saved must not be offered again, and what has begun is there at once.
        if (order.what == What::Remove || order.what == What::Commit) wake = hurry_ = true;
        // A key each: they go to disk as one.
        const bool joins = order.what == What::Append && !orders_.empty() && orders_.back().what == What::Append &&
                           orders_.back().name == order.name && order.bytes.size() < kFewBytes;
        if (joins)
            orders_.back().bytes += order.bytes;
        else
            orders_.push_back(std::move(order));
        if (orders_.back().bytes.size() >= kManyBytes) wake = hurry_ = true;
    }
    if (wake) wake_.notify_one();
}

void JournalWriter::Flush()
{
    std::unique_lock lock(mutex_);
    hurry_ = true;
    wake_.notify_one();
    idle_.wait(lock, [this] { return orders_.empty() && !busy_; });
}

bool JournalWriter::IsBroken(const std::string& name) const
{
    std::lock_guard lock(mutex_);
    return broken_.contains(name);
}

Text JournalWriter::Fault() const
{
    std::lock_guard lock(mutex_);
    return broken_.empty() ? Text() : broken_.begin()->second;
}

void JournalWriter::WaitForQuiet(std::unique_lock<std::mutex>& lock)
{
    while (!stop_ && !hurry_) {
        const auto due = std::min(last_ + kQuiet, first_ + kLongest);
        if (Clock::now() >= due) return;
        wake_.wait_until(lock, due);
    }
}

void JournalWriter::Run()
{
    setpriority(PRIO_PROCESS, static_cast<id_t>(gettid()), kNiceness);
    std::unique_lock lock(mutex_);
    for (;;) {
        wake_.wait(lock, [this] { return stop_ || hurry_ || !orders_.empty(); });
        if (!orders_.empty()) WaitForQuiet(lock);
        const std::vector<Order> orders = std::exchange(orders_, {});
        hurry_ = false;
        busy_ = true;
        lock.unlock();
        if (FailureOf([&] { Carry(orders); })) BreakAll();
        lock.lock();
        busy_ = false;
        idle_.notify_all();
        if (stop_ && orders_.empty()) return;
    }
}

void JournalWriter::Carry(const std::vector<Order>& orders)
{
    for (const Order& order : orders) {
        if (order.what != What::Begin && order.what != What::Remove && IsBroken(order.name)) continue;
        if (const int error = CarryOut(order); error != 0) Break(order.name, error);
    }
    std::vector<std::pair<std::string, int>> failed;
    for (auto& [name, open] : open_)
        if (const int error = Sync(open); error != 0) failed.emplace_back(name, error);
    for (const auto& [name, error] : failed) Break(name, error);
}

/// Half a record may stand at the end of the file now. One without the ending stays as it is: its beginning is whole.
void JournalWriter::Break(const std::string& name, int error)
{
    if (auto found = open_.find(name); found != open_.end()) {
        if (found->second.path.ends_with(kIncomplete)) unlink(found->second.path.c_str());
        open_.erase(found);
    }
    std::lock_guard lock(mutex_);
    broken_[name] = SystemText(error);
}

/// What was handed over is lost, and nobody knows how much of it.
void JournalWriter::BreakAll()
{
    std::vector<std::string> names;
    for (const auto& [name, open] : open_) names.push_back(name);
    for (const std::string& name : names) Break(name, ENOMEM);
}

int JournalWriter::CarryOut(const Order& order)
{
    if (order.what == What::Begin) return Begin(order);
    if (order.what == What::Remove) return Remove(order);
    auto found = open_.find(order.name);
    if (found == open_.end()) return EBADF;
    OpenFile& open = found->second;
    if (order.what == What::Commit) return Commit(open, order.name);
    const int error = WriteAll(open.file.Get(), order.bytes, open.size);
    open.size += static_cast<int64_t>(order.bytes.size());
    open.dirty = true;
    return error;
}

int JournalWriter::Begin(const Order& order)
{
    open_.erase(order.name);
    if (const int error = MakeFolders(folder_); error != 0) return error;
    const std::string path = PathOf(order.name) + std::string(kIncomplete);
    unlink(path.c_str());
    Descriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!file) return errno;
    open_[order.name] = {std::move(file), path, 0, true};
    return 0;
}

int JournalWriter::Commit(OpenFile& open, const std::string& name)
{
    if (const int error = Sync(open); error != 0) return error;
    if (rename(open.path.c_str(), PathOf(name).c_str()) != 0) return errno;
    open.path = PathOf(name);
    return SyncFolder(folder_);
}

int JournalWriter::Remove(const Order& order)
{
    if (!order.bytes.empty() && IsBroken(order.bytes)) return 0;
    if (auto found = open_.find(order.name); found != open_.end()) {
        unlink(found->second.path.c_str());
        open_.erase(found);
    }
    {
        std::lock_guard lock(mutex_);
        broken_.erase(order.name);
    }
    return unlink(PathOf(order.name).c_str()) == 0 || errno == ENOENT || errno == ENOTDIR ? 0 : errno;
}

int JournalWriter::Sync(OpenFile& open)
{
    if (!open.dirty) return 0;
    open.dirty = false;
    return fdatasync(open.file.Get()) == 0 ? 0 : errno;
}

} // namespace nib
