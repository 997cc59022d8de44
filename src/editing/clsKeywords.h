#pragma once
// What the editor knows of the words of the language and of those that the user added.

#include "editing/KeywordTables.h"

namespace nib {

class clsKeywords {
public:
    clsKeywords();
    clsKeywords(clsKeywords&&) = default;
    clsKeywords& operator=(clsKeywords&&) = default;

    bool CaseSensitive() const { return caseSensitive_; }
    /// The list is keyed alike in both modes, so that no word moves or is lost.
    void SetCaseSensitive(bool state) { caseSensitive_ = state; }

    /// The list of a class (2 or 4) as text: words with their suffixes, `delim` between them. Reading skips what is no
    /// word; a field that begins with ";" is a remark and may hold "case sensitive" or "case insensitive".
    void SetKeywordList(int32_t Class, TextView delim, TextView KeywordList);
    Text GetKeywordList(int32_t Class, TextView delim) const;

    const Text& KeywordFirstChars() const { return Tables().FirstChars(); }
    const Text& KeywordNextChars() const { return Tables().NextChars(); }

    /// Null when the word is not held. Allocates nothing for ASCII words.
    const clsKeyword* Item(TextView Key) const;
    /// The same, with what Tables().Hint() said of the word.
    const clsKeyword* Item(TextView Key, uint8_t hint) const;
    clsKeyword* Item(TextView Key) { return const_cast<clsKeyword*>(std::as_const(*this).Item(Key)); }
    /// The word as it is held now; null when a word of another case keeps it out.
    clsKeyword* AddKeyword(TextView Word, int32_t Class, int32_t Block);
    void RemoveKeyword(TextView Word, int32_t Class);
    /// Null when the list holds the word already, in whatever case.
    clsKeyword* Add(clsKeyword NewItem);
    int32_t Count() const { return static_cast<int32_t>(list_.Count()); }
    void Remove(TextView Key);
    KeywordList::const_iterator begin() const { return list_.begin(); }
    KeywordList::const_iterator end() const { return list_.end(); }

    clsKeywords Clone() const;
    void UpdateFrom(const clsKeywords& other) { *this = other.Clone(); }

    /// `Clean` becomes the word without suffix and bad characters (nothing for a comment keyword), `BadChar` the name
    /// of the last kind of bad character met.
    bool ValidateKeyword(TextView Keyword, Text& Clean, Text& BadChar) const;

    int16_t CompoundKeywordSize() const { return Tables().CompoundSize(); }
    bool KeywordsHaveEmbeddedBlanks() const { return Tables().HaveBlanks(); }
    const std::vector<const clsKeyword*>& CommentKeywords() const { return Tables().Comments(); }

    /// "*,!" and so on.
    Text CommentPrefixes() const;
    /// Comma-separated single characters that join "*" and "!"; letters, digits and longer fields are passed over.
    void SetCommentPrefixes(TextView prefixes);
    bool IsCommentPrefix(char16_t code) const { return prefixes_.find(code) != Text::npos; }

    /// Rebuilt first when words came or went; the reference stays good as long as this object.
    const KeywordTables& Tables() const
    {
        if (dirty_) Rebuild();
        return tables_;
    }

private:
    void Rebuild() const;
    void ReadField(int32_t Class, TextView field);
    void ClearClass(int32_t Class);

    KeywordList list_;
    Text prefixes_;
    bool caseSensitive_ = false;
    mutable bool dirty_ = true;
    mutable KeywordTables tables_;
};

} // namespace nib
