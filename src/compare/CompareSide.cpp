#include "compare/CompareSide.h"

#include "documents/DocumentSettings.h"
#include "documents/mvDocument.h"
#include "text/LineDiff.h"
#include "text/TextSearch.h"

#include <algorithm>

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
      note_(std::move(text.note)), item_(std::move(text.item)), again_(std::move(text.again))
{
    Show(std::move(text.text));
    saved_ = SavesHere();
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
        tabs_ = own_->view.SetText(std::move(*bytes), tabSize);
    else
        tabs_ = TabsOf(std::get<Text>(text), tabSize);
    if (const Text* units = std::get_if<Text>(&text)) own_->view.SetText(ExpandTabs(*units, tabSize));
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

std::vector<TabPlace> CompareSide::TabsIn(int32_t first, int32_t count) const
{
    const auto from = std::partition_point(tabs_.begin(), tabs_.end(), [&](auto& tab) { return tab.line < first; });
    const auto end = std::partition_point(from, tabs_.end(), [&](auto& tab) { return tab.line < first + count; });
    return {from, end};
}

bool CompareSide::Replace(int32_t first, int32_t count, const CompareSide& other, int32_t otherFirst,
                          int32_t otherCount)
{
    const auto document = Document();
    if (!document || !View().MayEdit()) return false;
    std::vector<Text> lines;
    for (int32_t line = otherFirst; line < otherFirst + otherCount; ++line)
        lines.push_back(other.Lines().GetLine(line));
    ReplaceLines(Lines(), {first, count, 0, otherCount}, {lines.begin(), lines.end()});
    std::vector<TabPlace> tabs = other.TabsIn(otherFirst, otherCount);
    for (TabPlace& tab : tabs) tab.line += first - otherFirst;
    if (other.own_) document->TakeTabs(first, otherCount, std::move(tabs));
    return true;
}

int32_t CompareSide::SavesHere() const
{
    const auto open = item_ ? services_.openDocuments.On(*item_) : nullptr;
    return open ? open->SaveCount() : 0;
}

bool CompareSide::Look()
{
    if (!own_ || !item_) return false;
    const StoredState state = item_->State();
    // A server is not asked again and again, and does not have to be for what was saved here.
    const int32_t saved = SavesHere();
    if (std::exchange(saved_, saved) != saved || state == StoredState::Changed) return ShowStored();
    return std::exchange(state_, state) != state;
}

bool CompareSide::ReadAgain()
{
    if (!own_ || (!item_ && !again_)) return true;
    if (!item_) return ShowAnew(again_);
    saved_ = SavesHere();
    if (ShowStored()) return true;
    state_ = item_->State();
    return state_ == StoredState::Gone;
}

bool CompareSide::ShowStored()
{
    const bool shown = ShowAnew([this] { return item_->ReadWhole(); });
    state_ = StoredState::Same;
    return shown;
}

/// What cannot be read now may be later; until then the text stays.
bool CompareSide::ShowAnew(const std::function<ReadText()>& read)
{
    const auto failure = FailureOf([&] { Show(read()); });
    if (!failure && onChange) onChange(nullptr);
    return !failure;
}

void CompareSide::Take(CompareText text)
{
    name_ = std::move(text.name);
    note_ = std::move(text.note);
    item_ = std::move(text.item);
    again_ = std::move(text.again);
    saved_ = SavesHere();
    state_ = StoredState::Same;
    Show(std::move(text.text));
    if (onChange) onChange(nullptr);
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
