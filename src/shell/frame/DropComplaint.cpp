#include "shell/frame/DropComplaint.h"

namespace nib {

namespace {

/// More names than these say no more.
constexpr size_t kNamed = 5;

void Append(Text& complaint, TextView sentence, const std::vector<Text>& names)
{
    if (names.empty()) return;
    if (!complaint.empty()) complaint += u"\n\n";
    complaint += sentence;
    for (size_t i = 0; i < names.size() && i < kNamed; ++i) complaint += u"\n" + names[i];
    if (names.size() > kNamed) complaint += u"\nand " + Decimal(static_cast<int64_t>(names.size() - kNamed)) + u" more";
}

} // namespace

Text DropComplaint(const std::vector<Text>& folders, const std::vector<Text>& elsewhere)
{
    Text complaint;
    Append(complaint, u"A folder cannot be opened as a document. Drop the files in it instead.", folders);
    Append(complaint, u"Only files of this computer can be opened by dropping them.", elsewhere);
    return complaint;
}

} // namespace nib
