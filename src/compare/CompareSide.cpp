#include "compare/CompareSide.h"

#include "documents/DocumentSettings.h"
#include "documents/mvDocument.h"
#include "text/LineDiff.h"
#include "text/TextSearch.h"

namespace nib {

namespace {

class NoClipboard final : public Clipboard {
public:
    Text GetText() const override { return {}; }
    void SetText(TextView) override {}
};

constexpr TextView kGone = u"deleted";

} // namespace

struct CompareSide::Own {
    explicit Own(const DebugLog& log) : lexer(&log) { document.SetLexer(&lexer); }

    LexClass lexer; // outlives the text, which calls it
    SourceDocument document;
    NoClipboard clipboard;
    SourceView view{document, clipboard};
};

CompareSide::CompareSide(DocumentServices& services, CompareText text)
    : services_(services), own_(std::make_unique<Own>(services.log)), name_(std::move(text.name)),
      note_(std::move(text.note)), item_(std::move(text.item))
{
    Show(std::move(text.text));
    ApplyViewSettings(own_->view, services_.settings, &own_->lexer);
    own_->view.SetReadOnly(true);
}

CompareSide::CompareSide(DocumentServices& services, mvDocument& document)
    : services_(services), document_(document.weak_from_this()), heard_(&document.EnsureView().txtText().Document())
{
    heard_->AddListener(this);
}

CompareSide::~CompareSide()
{
    if (heard_ && IsThere()) heard_->RemoveListener(this);
}

void CompareSide::Show(ReadText text)
{
    const int32_t tabSize = services_.settings.TabSize;
    if (auto* bytes = std::get_if<ByteText>(&text))
        own_->view.SetText(std::move(*bytes), tabSize);
    else
        own_->view.SetText(ExpandTabs(std::get<Text>(text), tabSize));
    own_->document.ClearUndo();
    own_->document.SetModified(false);
}

std::shared_ptr<mvDocument> CompareSide::Document() const
{
    auto document = document_.lock();
    const bool shown = document && document->View() && &document->View()->txtText().Document() == heard_;
    return shown ? document : nullptr;
}

bool CompareSide::IsThere() const
{
    return own_ || Document();
}

SourceView& CompareSide::View() const
{
    return own_ ? own_->view : Document()->View()->txtText();
}

Text CompareSide::Name() const
{
    if (own_) return name_;
    const auto document = Document();
    if (!document) return {};
    return document->IsDirty() ? u"*" + document->DisplayName() : document->DisplayName();
}

Text CompareSide::Note() const
{
    if (own_) return state_ == StoredState::Gone ? Text(kGone) : note_;
    const auto document = Document();
    return document ? document->PlaceText() : Text();
}

bool CompareSide::CanEdit() const
{
    return !own_ && Document() && !View().ReadOnly();
}

bool CompareSide::Replace(int32_t first, int32_t count, const std::vector<Text>& lines)
{
    if (own_ || !Document() || !View().MayEdit()) return false;
    const std::vector<TextView> texts(lines.begin(), lines.end());
    ReplaceLines(Lines(), {first, count, 0, static_cast<int32_t>(texts.size())}, texts);
    return true;
}

bool CompareSide::Look()
{
    if (!own_ || !item_) return false;
    const StoredState state = item_->State();
    if (state == StoredState::Changed) {
        // What cannot be read now may be later; until then the text stays.
        const auto failure = FailureOf([&] { Show(item_->ReadWhole()); });
        if (!failure && onChange) onChange(nullptr);
        state_ = StoredState::Same;
        return !failure;
    }
    return std::exchange(state_, state) != state;
}

void CompareSide::TextChanged(const TextChange& change)
{
    if (onChange) onChange(&change);
}

void CompareSide::TextReset()
{
    if (onChange) onChange(nullptr);
}

void CompareSide::ModifiedChanged(bool)
{
    if (onModified) onModified();
}

} // namespace nib
