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
    /// What the text is written in, for the user to read.
    Text CodingName() const { return coding_.NameOf(form_.coding) + (form_.byteOrderMark && IsUtf8() ? u" BOM" : u""); }
    Text CodingName(TextCoding coding) const { return coding_.NameOf(coding); }
    TextCoding Coding() const { return form_.coding; }
    /// What it may be written in instead, the next time.
    std::vector<TextCoding> Codings() const { return coding_.Codings(); }
    void SetCoding(TextCoding coding);
    /// A server's item has none.
    bool HasLineEnds() const { return coding_.HasLineEnds(); }
    LineEnd Ends() const { return form_.lineEnd; }
    /// Of all lines, the next time.
    void SetEnds(LineEnd end);

    /// A text of the other is to be written here, in the way it stood there as far as the rules here are the same.
    /// False where nothing is: an item is no local file.
    bool TakeForm(const StoredForm& other);

private:
    bool IsUtf8() const { return form_.coding == TextCoding::Utf8; }
    std::string Encoded(const LinewiseText& text);

    ItemText coding_;
    Text name_;
    TextForm form_;
    bool formTaken_ = false;
    std::vector<OddEnd> odd_;
};

} // namespace nib
