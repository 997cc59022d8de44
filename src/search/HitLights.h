#pragma once
#include "platform/Desktop.h"
#include "search/FindEngine.h"

namespace nib {

/// Where the selection stands among the hits.
struct HitCount {
    int32_t at = 0;    ///< 1-based; 0 when it is none of them
    int32_t all = 0;   ///< as far as they are counted
    bool done = false; ///< with counting
    bool more = false; ///< than are counted
    Text fault;        ///< why they cannot be counted

    friend bool operator==(const HitCount&, const HitCount&) = default;
};

/// Lights what is searched for in the document in front, and counts it: a slice at a time, so that no key waits.
class HitLights final : private BufferListener {
public:
    static constexpr size_t kMost = 1'000'000;

    /// All outlive it.
    HitLights(DocumentServices& services, FindEngine& engine, Timers& timers)
        : services_(services), engine_(engine), timers_(timers)
    {
    }
    ~HitLights() override { Detach(); }
    HitLights(const HitLights&) = delete;
    HitLights& operator=(const HitLights&) = delete;

    /// From now on, and anew when another text, rule or scope is searched.
    void Show();
    void Hide();
    const HitCount& Count() const { return count_; }
    /// Called when the count is another one; what it uses lives as long as anything is shown.
    void OnChange(std::function<void()> told) { told_.push_back(std::move(told)); }

private:
    struct Sought {
        Text text;
        FindOptions options;
        LookIn lookIn = LookIn::Nothing;
        int32_t documentId = 0;

        friend bool operator==(const Sought&, const Sought&) = default;
    };

    // BufferListener
    void TextChanged(const TextChange&) override { rest_ = kRest; }
    void TextReset() override { rest_ = kRest; }

    void Look();
    void Attach(mvDocument& document);
    void Detach();
    void Light(LitText lit);
    void Begin(mvDocument& document);
    void Slice();
    /// False when the text has been gone through.
    bool Gather(const SourceDocument& text);
    void Add(Position at, int32_t length);
    void Tell(HitCount count);
    int32_t PlaceOf(mvDocument& document) const;
    void Poll(std::chrono::milliseconds interval);

    static constexpr int32_t kRest = 3; ///< looks without a change before all is counted anew

    DocumentServices& services_;
    FindEngine& engine_;
    Timers& timers_;
    std::vector<std::function<void()>> told_;
    std::unique_ptr<Timers::Timer> timer_;
    std::chrono::milliseconds interval_{};
    Sought sought_;
    std::weak_ptr<mvDocument> document_;
    SourceDocument* text_ = nullptr;             ///< of it
    std::shared_ptr<const TextPattern> pattern_; ///< null unless hits are being gathered
    std::vector<FindHit> hits_;
    Position next_;
    int32_t rest_ = 0;
    HitCount count_;
};

} // namespace nib
