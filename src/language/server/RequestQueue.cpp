#include "language/server/RequestQueue.h"

#include <algorithm>

namespace nib {

namespace {

constexpr size_t kMostBytes = size_t{128} << 20;

} // namespace

void RequestQueue::Put(Message message, size_t bytes)
{
    std::unique_lock lock(mutex_);
    went_.wait(lock, [&] { return closed_ || waiting_.empty() || bytes_ + bytes <= kMostBytes; });
    bytes_ += bytes;
    waiting_.push_back({std::move(message), bytes});
    came_.notify_one();
}

std::optional<Message> RequestQueue::Take(Time until)
{
    std::unique_lock lock(mutex_);
    taken_ = nullptr;
    cancelled_ = false;
    came_.wait_until(lock, until, [&] { return closed_ || !waiting_.empty(); });
    if (waiting_.empty()) return std::nullopt;
    Waiting next = std::move(waiting_.front());
    waiting_.pop_front();
    bytes_ -= next.bytes;
    taken_ = next.message.id;
    went_.notify_one();
    return std::move(next.message);
}

bool RequestQueue::Cancel(const Json& id)
{
    const std::lock_guard lock(mutex_);
    if (id.is_null()) return false;
    cancelled_ = cancelled_ || taken_ == id;
    const auto isMeant = [&](const Waiting& one) {
        return one.message.kind == Message::Kind::Request && one.message.id == id;
    };
    const auto found = std::find_if(waiting_.begin(), waiting_.end(), isMeant);
    if (found == waiting_.end()) return false;
    bytes_ -= found->bytes;
    waiting_.erase(found);
    went_.notify_one();
    return true;
}

bool RequestQueue::IsCancelled() const
{
    const std::lock_guard lock(mutex_);
    return cancelled_;
}

bool RequestQueue::WillChange(const Json& uri) const
{
    const std::lock_guard lock(mutex_);
    return std::any_of(waiting_.begin(), waiting_.end(), [&](const Waiting& one) {
        return one.message.method == "textDocument/didChange" && Below(one.message.params, "/textDocument/uri") == uri;
    });
}

void RequestQueue::Close()
{
    const std::lock_guard lock(mutex_);
    closed_ = true;
    came_.notify_all();
    went_.notify_all();
}

bool RequestQueue::IsOver() const
{
    const std::lock_guard lock(mutex_);
    return closed_ && waiting_.empty();
}

} // namespace nib
