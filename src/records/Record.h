#pragma once
#include "text/SourceDocument.h"

#include <functional>
#include <map>
#include <span>
#include <vector>

namespace nib {

/// A text as the record that it is: its lines are attributes, value marks cut them into values. Attributes and values
/// are numbered from 1, and there is no end to them: those that the text does not have are empty.
///
/// Each edit is one step of undo and leaves all text alone that it is not about. It is for those who may edit.
class Record final : public BufferListener {
public:
    static constexpr int32_t kMostAttributes = 100'000;
    static constexpr int32_t kMostValues = 100'000;

    /// `document` outlives it.
    explicit Record(SourceDocument& document);
    ~Record() override;

    SourceDocument& Document() { return document_; }
    /// It would take too long to show as a table.
    bool IsTooLarge();
    int32_t AttributeCount() const { return document_.LineCount(); }
    /// 0 for an empty attribute.
    int32_t ValueCount(int32_t attribute);
    Text Value(int32_t attribute, int32_t value);
    /// Where a value stands in the text, or, of one that is not there, where that ends.
    TextRange Place(int32_t attribute, int32_t value);
    /// The value at a place, 1 in an empty attribute.
    int32_t ValueAt(Position at);

    /// `text` holds neither value marks nor line breaks.
    void SetValue(int32_t attribute, int32_t value, TextView text);
    // In all these attributes at once, so that values that belong together stay side by side. An attribute that has no
    // value there stays as it is.
    void InsertValues(std::span<const int32_t> attributes, int32_t before);
    void DeleteValues(std::span<const int32_t> attributes, int32_t value);
    void MoveValues(std::span<const int32_t> attributes, int32_t from, int32_t to);

    /// One of the edits above is being made.
    bool IsEditing() const { return editing_; }
    /// The text has changed, by whomever; `whole`: it is another one.
    std::function<void(bool whole)> changed;

    // BufferListener
    void TextChanged(const TextChange& change) override;
    void TextReset() override;

private:
    /// Columns at which the values of an attribute begin; none of an empty one.
    const std::vector<int32_t>& Starts(int32_t attribute);
    void Replace(std::vector<RangeEdit> edits);

    SourceDocument& document_;
    std::map<int32_t, std::vector<int32_t>> starts_; ///< of the attributes that were asked about
    Text scratch_;
    bool editing_ = false;
};

} // namespace nib
