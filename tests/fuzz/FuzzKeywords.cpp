// Any keyword list: what the reader kept is written in a form that it reads as the same.
// Input: one byte of options, then the list.

#include "Fuzz.h"
#include "editing/clsKeywords.h"

namespace {

using namespace nib;

void RequireHeldWords(const clsKeywords& keywords)
{
    int32_t count = 0;
    for (const clsKeyword& keyword : keywords) {
        Require(keywords.Item(keyword.Word) == &keyword);
        ++count;
    }
    Require(count == keywords.Count());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size == 0) return 0;
    TextView delim = data[0] & 1 ? u"\r\n" : data[0] & 2 ? u" " : u"\n";
    int32_t listClass = data[0] & 4 ? keyword_class::kLanguage : keyword_class::kUser;
    Text list = FromUtf8({reinterpret_cast<const char*>(data) + 1, size - 1});

    clsKeywords keywords;
    keywords.SetCommentPrefixes(data[0] & 8 ? u"#,$" : u"");
    keywords.SetKeywordList(listClass, delim, list);
    RequireHeldWords(keywords);
    Text kept = keywords.GetKeywordList(listClass, delim);
    keywords.SetKeywordList(listClass, delim, kept);
    RequireHeldWords(keywords);
    Require(keywords.GetKeywordList(listClass, delim) == kept);
    Require(keywords.CompoundKeywordSize() == 0 || keywords.KeywordsHaveEmbeddedBlanks());

    clsKeywords copy = keywords.Clone();
    RequireHeldWords(copy);
    Require(copy.CaseSensitive() == keywords.CaseSensitive());

    keywords.SetKeywordList(listClass, delim, u"");
    RequireHeldWords(keywords);
    Require(keywords.GetKeywordList(listClass, delim).empty());
    return 0;
}
