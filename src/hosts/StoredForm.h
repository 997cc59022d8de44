#pragma once
#include "hosts/ItemText.h"

#include <string>
#include <string_view>
#include <vector>

namespace nib {

/// How a text stands in storage: learnt when it is read, used when it is written back.
class StoredForm {
public:
    /// `name` is what messages call the text.
    StoredForm(ItemText coding, Text name)
        : coding_(std::move(coding)), name_(std::move(name)), form_(coding_.NewForm())
    {
    }

    const Text& Name() const { return name_; }
    /// With CR LF between lines. Throws Error for what is no text.
    Text Decode(std::string_view bytes);
    /// The same where the bytes may be taken.
    ReadText Read(ByteText bytes);
    /// Throws Error that names the character and the line when the text cannot be held.
    std::string Encode(const LinewiseText& text);
    std::string Encode(TextView text) { return Encode(LinesIn(text)); }

    /// Of the text that was read: the lines that end otherwise than most.
    const std::vector<OddEnd>& OddEnds() const { return odd_; }
    /// For the text that is written next.
    void SetOddEnds(std::vector<OddEnd> odd) { odd_ = std::move(odd); }
    /// A text of the other is to be written here, in the way it stood there as far as the rules here are the same.
    /// False where nothing is: an item is no local file.
    bool TakeForm(const StoredForm& other);

private:
    std::string Encoded(const LinewiseText& text);

    ItemText coding_;
    Text name_;
    TextForm form_;
    bool formTaken_ = false;
    std::vector<OddEnd> odd_;
};

} // namespace nib
