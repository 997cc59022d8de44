#pragma once
// One of two texts that are compared: that of an open document, as it is edited, or one that was read for it alone.

#include "documents/DocumentServices.h"
#include "editing/LexClass.h"

#include <functional>
#include <memory>

namespace nib {

/// A text that is in no document.
struct CompareText {
    Text name;
    Text note; ///< which of its texts it is; in the user's language where ShownTexts has it
    ReadText text;
    std::shared_ptr<mvItem> item; ///< that it was read from, to look what has become of it; null for none
    Text source{};                ///< the same when it is read another time; empty where nobody can tell
    /// Reads it another time where it comes from no item. Throws Error.
    std::function<ReadText()> again{};
};

class CompareSide final : private BufferListener {
public:
    /// `services` outlives it, and so do settings that are in it.
    CompareSide(DocumentServices& services, CompareText text);
    CompareSide(DocumentServices& services, mvDocument& document);
    ~CompareSide() override;

    /// False for good once the document has closed: there is no text then.
    bool IsThere() const;
    SourceView& View() const;
    SourceDocument& Lines() const { return View().Document(); }
    Text Name() const;
    /// What tells it from other texts of that name: where it is, or which of them.
    Text Note() const;
    /// Null for a text that is in none.
    std::shared_ptr<mvDocument> Document() const;
    /// What is taken over to it changes the document.
    bool CanEdit() const;
    /// Lines of the other side in place of these, as one step of undo. False when the document refuses.
    bool Replace(int32_t first, int32_t count, const CompareSide& other, int32_t otherFirst, int32_t otherCount);
    /// Looks whether what is stored has changed, and reads it again then; true when text or caption are others now.
    bool Look();
    /// Reads what is stored, whether it is known to have changed or not. False when that failed: the text stays.
    bool ReadAgain();
    /// Another text in place of that which was read.
    void Take(CompareText text);

    /// The text has changed; lines are those of `change`, unless it is null for all of them.
    std::function<void(const TextChange* change)> onChange;
    /// The document was saved, or is not any more as it was saved.
    std::function<void()> onModified;

private:
    struct Own;

    void Show(ReadText text);
    bool ShowStored();
    bool ShowAnew(const std::function<ReadText()>& read);
    int32_t SavesHere() const;
    std::vector<TabPlace> TabsIn(int32_t first, int32_t count) const;
    void TextChanged(const TextChange& change) override;
    void TextReset() override;
    void ModifiedChanged(bool modified) override;

    DocumentServices& services_;
    std::unique_ptr<Own> own_; ///< null for a document
    std::weak_ptr<mvDocument> document_;
    SourceDocument* heard_ = nullptr; ///< the document's text, told of its changes
    std::vector<TabPlace> tabs_;      ///< of a text that was read, where blanks stand for them
    Text name_;
    Text note_;
    std::shared_ptr<mvItem> item_;
    std::function<ReadText()> again_;
    StoredState state_ = StoredState::Same;
    int32_t saved_ = 0; ///< of the document on the item, when reading it was last tried
};

} // namespace nib
