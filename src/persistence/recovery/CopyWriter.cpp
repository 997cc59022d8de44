#include "persistence/recovery/CopyWriter.h"

#include "diagnostics/Guarded.h"
#include "persistence/store/TextFile.h"
#include "platform/posix/FileName.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

namespace nib {

namespace {

/// Below the windows' thread, which a key waits for.
constexpr int kNiceness = 10;

bool IsAscii(const UnitSpan& span)
{
    if (!span.wide) return AsciiRun({static_cast<const char*>(span.data), span.length}) == span.length;
    return std::all_of(span.Wide(), span.Wide() + span.length, [](char16_t c) { return c < 0x80; });
}

void AppendBytes(const UnitSpan& span, std::string& out)
{
    if (!span.wide) {
        out.append(static_cast<const char*>(span.data), span.length);
        return;
    }
    const size_t at = out.size();
    out.resize(at + span.length);
    std::transform(span.Wide(), span.Wide() + span.length, out.data() + at,
                   [](char16_t c) { return static_cast<char>(c); });
}

void AppendUnits(const UnitSpan& span, std::string& out)
{
    const size_t at = out.size();
    out.resize(at + span.length * 2);
    char* to = out.data() + at;
    for (size_t i = 0; i < span.length; ++i) {
        *to++ = static_cast<char>(span[i] & 0xFF);
        *to++ = static_cast<char>(span[i] >> 8);
    }
}

/// Half the size for plain text, and still no doubt when it is read: bytes above 7F could be UTF-8 by chance.
std::string ContentOf(TextView itemId, const LinewiseText& text)
{
    const UnitSpan id{itemId.data(), itemId.size(), true};
    const UnitSpan end{u"\r\n", 2, true};
    bool plain = IsAscii(id);
    text.walk([&](const UnitSpan& line) { plain = plain && IsAscii(line); });
    const auto append = plain ? AppendBytes : AppendUnits;
    std::string out(plain ? std::string_view() : kUtf16Mark);
    const size_t units = itemId.size() + text.units + 2 * static_cast<size_t>(text.count + 1);
    out.reserve(out.size() + units * (plain ? 1 : 2));
    append(id, out);
    text.walk([&](const UnitSpan& line) {
        append(end, out);
        append(line, out);
    });
    return out;
}

} // namespace

void WriteAutoSaveCopy(const FileSaver& saver, TextView path, TextView itemId, const LinewiseText& text)
{
    WriteFile(
        saver, path, [&] { return ContentOf(itemId, text); }, false);
}

std::optional<Text> ReadAutoSaveCopy(TextView path)
{
    return OrDefault(
        [&] {
            int32_t encoding = file_encoding::kDetect;
            return std::optional<Text>(ReadTextFile(path, encoding, false));
        },
        std::optional<Text>());
}

CopyWriter::CopyWriter(FileSaver saver) : saver_(std::move(saver)), thread_([this] { Run(); }) {}

CopyWriter::~CopyWriter()
{
    {
        std::lock_guard lock(mutex_);
        stop_ = true;
    }
    wake_.notify_one();
    thread_.join();
}

int64_t CopyWriter::Write(TextView path, TextView itemId, std::shared_ptr<const TextSnapshot> text,
                          std::chrono::milliseconds patience)
{
    Order order{0, Text(path), Text(itemId), std::move(text), {}, Clock::now() + patience};
    clock_gettime(CLOCK_REALTIME, &order.taken);
    return HandOver(std::move(order));
}

void CopyWriter::Remove(TextView path)
{
    HandOver({0, Text(path), {}, nullptr, {}, Clock::now()});
}

int64_t CopyWriter::HandOver(Order order)
{
    std::vector<Order> dropped; // texts end outside the lock
    const std::lock_guard lock(mutex_);
    const auto same =
        std::stable_partition(orders_.begin(), orders_.end(), [&](const Order& old) { return old.path != order.path; });
    std::move(same, orders_.end(), std::back_inserter(dropped));
    orders_.erase(same, orders_.end());
    order.number = ++lastNumber_;
    orders_.push_back(std::move(order));
    wake_.notify_one();
    return lastNumber_;
}

void CopyWriter::WaitIdle(std::unique_lock<std::mutex>& lock)
{
    wake_.notify_one();
    idle_.wait(lock, [this] { return orders_.empty() && !busy_; });
}

void CopyWriter::Cancel()
{
    std::vector<Order> dropped;
    std::unique_lock lock(mutex_);
    dropped = std::exchange(orders_, {});
    WaitIdle(lock);
}

void CopyWriter::Flush()
{
    std::unique_lock lock(mutex_);
    hurry_ = true;
    WaitIdle(lock);
}

std::vector<CopyWriter::Outcome> CopyWriter::TakeOutcomes()
{
    const std::lock_guard lock(mutex_);
    return std::exchange(outcomes_, {});
}

void CopyWriter::Run()
{
    setpriority(PRIO_PROCESS, static_cast<id_t>(gettid()), kNiceness);
    std::unique_lock lock(mutex_);
    for (;;) {
        if (orders_.empty()) {
            hurry_ = false;
            idle_.notify_all();
            if (stop_) return;
            wake_.wait(lock);
            continue;
        }
        const auto next = std::min_element(orders_.begin(), orders_.end(),
                                           [](const Order& a, const Order& b) { return a.due < b.due; });
        if (!hurry_ && !stop_ && next->due > Clock::now()) {
            const Clock::time_point due = next->due;
            wake_.wait_until(lock, due);
            continue;
        }
        Order order = std::move(*next);
        orders_.erase(next);
        busy_ = true;
        lock.unlock();
        Outcome outcome = CarryOut(order);
        const bool wanted = order.text != nullptr;
        order = {};
        lock.lock();
        busy_ = false;
        if (wanted) outcomes_.push_back(std::move(outcome));
    }
}

CopyWriter::Outcome CopyWriter::CarryOut(const Order& order) const
{
    Outcome outcome{order.number, {}, {}};
    const auto failure = FailureOf([&] {
        const std::string file = ToFileName(order.path);
        if (!order.text) {
            unlink(file.c_str());
            return;
        }
        WriteAutoSaveCopy(saver_, order.path, order.itemId, AsLines(order.text));
        const timespec times[2] = {order.taken, order.taken};
        utimensat(AT_FDCWD, file.c_str(), times, 0);
        outcome.stamp = StampOf(file);
    });
    if (failure) outcome.fault = failure->description;
    return outcome;
}

} // namespace nib
