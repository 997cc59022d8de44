#include "search/HitLights.h"

#include "documents/DocumentServices.h"

#include <algorithm>

namespace nib {

namespace {

using std::chrono::milliseconds;
using Watch = std::chrono::steady_clock;

constexpr milliseconds kAtWork{10};
constexpr milliseconds kWatching{100};
/// Short enough for the next key not to wait.
constexpr milliseconds kSlice{4};
/// What an expression may take while the lines in sight are painted.
constexpr milliseconds kPainting{30};
constexpr int32_t kLinesAtOnce = 64;

} // namespace

void HitLights::Show()
{
    if (!timer_) Poll(kWatching);
    Look();
}

void HitLights::Hide()
{
    timer_.reset();
    Light({});
    Detach();
    sought_ = {};
    count_ = {};
}

void HitLights::Poll(milliseconds interval)
{
    if (timer_ && interval_ == interval) return;
    interval_ = interval;
    timer_ = timers_.Every(interval, [this] { Look(); });
}

void HitLights::Look()
{
    Guarded(
        services_.log, u"HitLights.Look",
        [&] {
            const auto document = services_.openDocuments.ById(services_.frame.ActiveDocument());
            const FindDialog& dialog = engine_.Dialog();
            Sought sought{dialog.findText, dialog.Options(), dialog.lookIn, document ? document->DocumentID() : 0};
            const bool isThere = document && document->View();
            const bool changed =
                sought != sought_ || (text_ && !(isThere && &document->View()->txtText().Document() == text_));
            if (changed) {
                Light({});
                Detach();
                sought_ = std::move(sought);
                if (isThere) Attach(*document);
            }
            if (!text_ || !document) {
                if (changed) Tell({0, 0, true, false, {}});
                return;
            }
            const bool rested = rest_ > 0 && --rest_ == 0;
            if (changed || rested) Begin(*document);
            if (pattern_) Slice();
            HitCount count = count_;
            count.at = PlaceOf(*document);
            Tell(std::move(count));
        },
        [&](const Error& error) {
            pattern_ = nullptr;
            Light({});
            Tell({.done = true, .fault = error.description});
        });
    if (timer_) Poll(pattern_ ? kAtWork : kWatching);
}

void HitLights::Attach(mvDocument& document)
{
    document_ = document.weak_from_this();
    text_ = &document.View()->txtText().Document();
    text_->AddListener(this);
}

/// A text that its window took along is not there any more.
void HitLights::Detach()
{
    pattern_ = nullptr;
    hits_ = {};
    rest_ = 0;
    const auto document = document_.lock();
    if (document && document->View() && &document->View()->txtText().Document() == text_) text_->RemoveListener(this);
    text_ = nullptr;
    document_.reset();
}

void HitLights::Light(LitText lit)
{
    const auto document = document_.lock();
    if (document && document->View() && &document->View()->txtText().Document() == text_) text_->Light(std::move(lit));
}

void HitLights::Begin(mvDocument& document)
{
    hits_.clear();
    next_ = {};
    pattern_ = nullptr;
    count_ = {};
    if (const auto fault = engine_.Dialog().Fault()) {
        Light({});
        return Tell({.done = true, .fault = fault->Told()});
    }
    pattern_ = std::make_shared<TextPattern>(sought_.text, sought_.options);
    const auto lit = std::make_shared<TextPattern>(sought_.text, sought_.options);
    lit->SetPatience(kPainting);
    Light({sought_.text.empty() ? nullptr : lit, engine_.RangeIn(document), text_->Lit().lines});
}

void HitLights::Slice()
{
    const auto end = Watch::now() + kSlice;
    bool more = true;
    while (more && hits_.size() < kMost && Watch::now() < end) more = Gather(*text_);
    count_.all = static_cast<int32_t>(hits_.size());
    count_.more = hits_.size() >= kMost;
    count_.done = !more || count_.more;
    if (!count_.done) return;
    LitText lit = text_->Lit();
    lit.lines.clear();
    for (const FindHit& hit : hits_)
        if (lit.lines.empty() || lit.lines.back() != hit.at.line) lit.lines.push_back(hit.at.line);
    Light(std::move(lit));
    pattern_ = nullptr;
}

bool HitLights::Gather(const SourceDocument& text)
{
    if (!pattern_->IsRegex()) {
        FindHit hit;
        if (!text.Find(*pattern_, next_, false, hit)) return false;
        Add(hit.at, hit.length);
        next_ = {hit.at.col + hit.length, hit.at.line};
        return true;
    }
    const int32_t end = std::min(next_.line + kLinesAtOnce, text.LineCount());
    for (; next_.line < end; ++next_.line) {
        const TextView line = pattern_->Line(text.LineUnits(next_.line));
        pattern_->ForEach(line, [&](ColumnRange hit) { Add({hit.first, next_.line}, hit.last - hit.first); });
    }
    pattern_->Forget();
    return next_.line < text.LineCount();
}

void HitLights::Add(Position at, int32_t length)
{
    if (text_->Lit().Holds(at.line, {at.col, at.col + length})) hits_.push_back({at, length});
}

int32_t HitLights::PlaceOf(mvDocument& document) const
{
    const OrderedSelection selection = document.GetOrderedSelection();
    const auto at =
        std::partition_point(hits_.begin(), hits_.end(), [&](const FindHit& hit) { return hit.at < selection.start; });
    const bool isHit = at != hits_.end() && at->at == selection.start &&
                       Position{at->at.col + at->length, at->at.line} == selection.end;
    return isHit ? static_cast<int32_t>(at - hits_.begin()) + 1 : 0;
}

void HitLights::Tell(HitCount count)
{
    if (std::exchange(count_, std::move(count)) == count_) return;
    for (const auto& told : told_) told();
}

} // namespace nib
