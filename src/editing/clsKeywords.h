#pragma once
// What the editor knows of the words of the language and of those that the user added.

#include "editing/LexRules.h"

#include <vector>

namespace nib {

/// What a character can be, bits of KeywordTables::Of.
namespace unit_class {
inline constexpr uint8_t kLetter = 0x01;
inline constexpr uint8_t kDigit = 0x02;
inline constexpr uint8_t kLabel = 0x04;      ///< in a label, behind its first letter
inline constexpr uint8_t kFirst = 0x08;      ///< first of a keyword: a letter, or a first character in either case
inline constexpr uint8_t kFirstExact = 0x10; ///< stands in `KeywordFirstChars`
inline constexpr uint8_t kNext = 0x20;       ///< may follow in a keyword
inline constexpr uint8_t kPrefix = 0x40;     ///< begins a comment statement
inline constexpr uint8_t kSyntax = 0x80;     ///< blank, mark, quote, parenthesis, comma or semicolon
} // namespace unit_class

/// What the lexer asks about characters and words, derived from a keyword list once a change.
class KeywordTables {
public:
    KeywordTables();

    /// `rules` may be null.
    void Rebuild(const KeywordList& list, TextView commentPrefixes, const LexRules* rules) noexcept;

    const Text& FirstChars() const { return firstChars_; }
    const Text& NextChars() const { return nextChars_; }
    int16_t CompoundSize() const { return compoundSize_; }
    bool HaveBlanks() const { return haveBlanks_; }
    /// Longest first; of the same length in the order of the list.
    const std::vector<const clsKeyword*>& Comments() const { return comments_; }

    const uint8_t* Classes() const { return classes_.data(); }
    uint8_t Of(char16_t c) const { return classes_[c]; }

    /// What the words that look like this one from afar (ends and length) may be; never less than they are. Bit 0: a
    /// keyword is this word. Bit 1: more than one may be it. Above: the most words of a keyword that begins with it.
    uint8_t Hint(TextView word) const { return hints_[HintIndex(word.front(), word.back(), word.size())]; }
    static constexpr uint8_t kWhole = 1;
    static constexpr uint8_t kSeveral = 2;
    static constexpr int kWordsShift = 2;
    /// The one keyword that a word can be of which the hint says "whole" and not "several"; the word is ASCII then.
    const KeywordList::Entry& Candidate(TextView word) const
    {
        return *candidates_[HintIndex(word.front(), word.back(), word.size())];
    }

    /// Most words that are tried as one keyword.
    static constexpr int32_t kMostWords = 10;

private:
    static constexpr size_t kHintBits = 13;
    static size_t HintIndex(char16_t first, char16_t last, size_t length)
    {
        size_t ends = static_cast<size_t>(first & 31U) << 8 | static_cast<size_t>(last & 31U) << 3;
        return (ends ^ length ^ (length & ~size_t{7}) << 2) & ((size_t{1} << kHintBits) - 1);
    }

    void Clear(TextView commentPrefixes);
    void AddWord(const KeywordList::Entry& entry);
    void AddRules(const LexRules& rules);
    void AddFollowing(TextView word);
    void AddHints(const KeywordList::Entry& entry);
    void AllowFirst(char16_t c);
    void SortComments();

    std::vector<uint8_t> classes_; ///< for each of the 65536 units
    std::vector<uint8_t> hints_;
    std::vector<const KeywordList::Entry*> candidates_;
    Text firstChars_;
    Text nextChars_;
    std::vector<const clsKeyword*> comments_;
    int16_t compoundSize_ = 0;
    bool haveBlanks_ = false;
    bool wide_ = false; ///< a keyword may hold characters beyond ASCII
};

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

    /// What a dialect adds, which outlives this object and its copies; null for none.
    void SetRules(const LexRules* rules)
    {
        rules_ = rules;
        dirty_ = true;
    }
    const LexRules* Rules() const { return rules_; }

    const Text& KeywordFirstChars() const { return Tables().FirstChars(); }
    const Text& KeywordNextChars() const { return Tables().NextChars(); }

    /// Null when the word is not held. Allocates nothing for ASCII words.
    const clsKeyword* Item(TextView Key) const;
    /// The same, or the word of the dialect, with what Tables().Hint() said of the word.
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
    /// `found`, unless it is spelled otherwise than `Key` and that counts.
    const clsKeyword* Spelled(const clsKeyword* found, TextView Key) const
    {
        return found && caseSensitive_ && found->Word != Key ? nullptr : found;
    }
    void Rebuild() const;
    void ReadField(int32_t Class, TextView field);
    void ClearClass(int32_t Class);

    KeywordList list_;
    Text prefixes_;
    const LexRules* rules_ = nullptr;
    bool caseSensitive_ = false;
    mutable bool dirty_ = true;
    mutable KeywordTables tables_;
};

} // namespace nib
