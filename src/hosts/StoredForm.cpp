#include "hosts/StoredForm.h"

#include "diagnostics/Guarded.h"

namespace nib {

Text StoredForm::Decode(std::string_view bytes)
{
    Text text = coding_.Decode(bytes, form_, name_, &odd_);
    formTaken_ = false;
    return text;
}

ReadText StoredForm::Read(ByteText bytes)
{
    ReadText text = coding_.Read(std::move(bytes), form_, name_, &odd_);
    formTaken_ = false;
    return text;
}

std::string StoredForm::Encode(const LinewiseText& text)
{
    std::string bytes = Encoded(text);
    odd_.clear();
    formTaken_ = false;
    return bytes;
}

std::string StoredForm::Encoded(const LinewiseText& text)
{
    if (formTaken_) {
        // Under a new name a text may be what it could not be under its old one.
        std::string bytes;
        if (!FailureOf([&] { bytes = coding_.Encode(text, form_, name_, odd_); })) return bytes;
        const LineEnd lineEnd = form_.lineEnd;
        form_ = coding_.NewForm();
        form_.lineEnd = lineEnd;
    }
    return coding_.Encode(text, form_, name_, odd_);
}

void StoredForm::SetCoding(TextCoding coding)
{
    form_.coding = coding;
    form_.byteOrderMark = coding == TextCoding::Utf16Le || coding == TextCoding::Utf16Be;
    form_.codedMarks = false;
}

void StoredForm::SetEnds(LineEnd end)
{
    form_.lineEnd = end;
    odd_.clear();
}

bool StoredForm::TakeForm(const StoredForm& other)
{
    if (!coding_.IsLike(other.coding_)) return false;
    formTaken_ = coding_.SharesForms(other.coding_);
    if (formTaken_)
        form_ = other.form_;
    else if (coding_.HasLineEnds() && other.coding_.HasLineEnds())
        form_.lineEnd = other.form_.lineEnd;
    else
        return false;
    return true;
}

} // namespace nib
