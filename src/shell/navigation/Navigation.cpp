#include "shell/navigation/Navigation.h"

#include "base/Text.h"
#include "diagnostics/Guarded.h"
#include "documents/mvDocument.h"

namespace nib {

namespace {

constexpr int64_t kThrottleMs = 1001;

int32_t After(int32_t slot)
{
    return slot + 1 == NavigationHistory::kCapacity ? 0 : slot + 1;
}
int32_t Before(int32_t slot)
{
    return slot == 0 ? NavigationHistory::kCapacity - 1 : slot - 1;
}

/// Set for as long as this lives, whatever happens.
class ScopedFlag {
public:
    explicit ScopedFlag(bool& flag) : flag_(flag) { flag_ = true; }
    ~ScopedFlag() { flag_ = false; }
    ScopedFlag(const ScopedFlag&) = delete;
    ScopedFlag& operator=(const ScopedFlag&) = delete;

private:
    bool& flag_;
};

} // namespace

NavigationHistory::NavigationHistory(DocumentServices& services, const Clock& clock)
    : services_(services), clock_(clock)
{
}

bool NavigationHistory::RecordPosition(mvDocument* document, bool throttled)
{
    if (replaying_ || !document) return false;
    if (!throttled)
        lastRecordMs_ = 0;
    else if (!MayRecordNow())
        return false;
    auto position = Capture(*document);
    if (!position) return false;
    forwardCount_ = 0;
    Store(*position);
    return true;
}

bool NavigationHistory::MayRecordNow()
{
    int64_t now = clock_.NowMs();
    bool due = lastRecordMs_ == 0 || now - lastRecordMs_ >= kThrottleMs || now < lastRecordMs_;
    if (due) lastRecordMs_ = now;
    return due;
}

bool NavigationHistory::NavigateBack(mvDocument* document)
{
    // Messages let through by a visit may hold the same key again.
    if (replaying_ || !document) return false;
    auto present = Capture(*document);
    if (!present) return false;
    forwardSlot_ = head_;
    bool moved = StepBack();
    if (moved) {
        ring_[static_cast<size_t>(forwardSlot_)] = *present;
        forwardSlot_ = Before(forwardSlot_);
        ++forwardCount_;
    }
    return moved;
}

bool NavigationHistory::NavigateForward(mvDocument* document)
{
    if (replaying_ || !document) return false;
    auto present = Capture(*document);
    if (!present) return false;
    bool moved = StepForward();
    if (moved) Store(*present);
    return moved;
}

bool NavigationHistory::StepBack()
{
    while (CanNavigateBack()) {
        head_ = Before(head_);
        --backCount_;
        if (Visit(ring_[static_cast<size_t>(head_)])) return true;
    }
    return false;
}

bool NavigationHistory::StepForward()
{
    while (CanNavigateForward()) {
        forwardSlot_ = After(forwardSlot_);
        --forwardCount_;
        if (Visit(ring_[static_cast<size_t>(forwardSlot_)])) return true;
    }
    return false;
}

void NavigationHistory::Store(const Record& record)
{
    ring_[static_cast<size_t>(head_)] = record;
    head_ = After(head_);
    if (backCount_ < kCapacity) ++backCount_;
}

std::optional<NavigationHistory::Record> NavigationHistory::Capture(mvDocument& document) const
{
    if (!document.View()) return std::nullopt;
    Position caret = document.View()->txtText().Caret();
    return Record{document.DocumentID(), document.LineIdFromLine(caret.line), caret.col};
}

bool NavigationHistory::Visit(const Record& record)
{
    auto document = services_.openDocuments.ById(record.documentId);
    if (!document) return false;
    int32_t line = document->LineFromLineId(record.lineMarker);
    if (line < 0) return false;
    ScopedFlag replaying(replaying_);
    document->ShowLine(record.column, line, false);
    document->Activate();
    services_.frame.ProcessMessages();
    return true;
}

GotoModel::GotoModel(DocumentServices& services)
    : services_(services), byLine_(services.settings.GotoLineNumber), settingSeen_(byLine_)
{
}

std::shared_ptr<mvDocument> GotoModel::ActiveDocument() const
{
    return services_.openDocuments.ById(services_.frame.ActiveDocument());
}

void GotoModel::Begin(TextView target)
{
    target_ = target;
    bool setting = services_.settings.GotoLineNumber;
    // The user's last choice stays, until the settings say something new.
    if (setting != settingSeen_) byLine_ = setting;
    settingSeen_ = setting;
    GetLabels();
}

void GotoModel::GetLabels()
{
    labels_.clear();
    Guarded(
        services_.log, u"frmGoto.GetLabels",
        [&] {
            if (auto document = ActiveDocument())
                for (const Label& label : document->Labels()) labels_.push_back(label.name);
        },
        [&](const Error& error) { services_.shell.ReportError(error.description); });
}

bool GotoModel::Accept(TextView label, TextView lineNumber)
{
    return Guarded(
        services_.log, u"frmGoto.cmdOK_Click",
        [&] {
            auto document = ActiveDocument();
            if (!document) throw Error{error_number::kInvalidCall, u"No document is open."};
            if (byLine_) {
                document->GotoLine(ToInt(Trim(lineNumber)));
            } else {
                target_ = label;
                document->GotoLabel(target_);
            }
            return true;
        },
        [&](const Error& error) {
            services_.shell.ReportError(error.description);
            return false;
        });
}

int32_t GotoModel::LineCount() const
{
    auto document = ActiveDocument();
    return document && document->View() ? document->View()->txtText().Document().LineCount() : 0;
}

bool GotoModel::NoGotoDialog() const
{
    return services_.settings.NoGotoDialog;
}

void GotoModel::SetNoGotoDialog(bool on)
{
    services_.settings.NoGotoDialog = on;
}

} // namespace nib
