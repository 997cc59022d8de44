#pragma once
#include "base/Text.h"

#include <functional>
#include <vector>

namespace nib {

/// The one key path of all settings of the editor.
inline constexpr TextView kSettingsKey = u"Software\\Orlin\\MultiValue Editor\\Settings";

/// Named string values that survive between runs, all under kSettingsKey. Nothing here fails: what cannot be read is
/// the fallback, what cannot be written is forgotten.
class SettingsStore {
public:
    virtual ~SettingsStore() = default;
    /// A value that is stored empty counts as absent. The empty name is a name like any other.
    virtual Text Get(TextView valueName, TextView fallback) = 0;
    /// A value equal to a non-empty `fallback` need not be kept: reading with the same one gives it back.
    virtual void Save(TextView valueName, TextView value, TextView fallback = {}) = 0;
    /// Brings to disk what was saved, which otherwise happens in a moment.
    virtual void Flush() {}
    /// `trouble` is told why values cannot be stored, and nothing as soon as they can; empty when there is nobody to
    /// tell any more.
    virtual void TellTrouble(const std::function<void(TextView why)>& /*trouble*/) {}
};

/// The number that the text begins with, 0 when there is none. Decimal numbers may have a fraction and an exponent;
/// "&H80000005&" and "&O17" are numbers too. Infinite when it is beyond all bounds.
double LeadingNumber(TextView text);
/// The same as a whole number, halves going to the even one; cut to what no setting can hold.
int64_t LeadingWhole(TextView text);
/// The same, kept within 32 bits.
int32_t LeadingInt(TextView text);

/// A most-recently-used list of strings, each in it once; entry 1 is the most recent.
class clsRecentList {
public:
    /// Names of files differ by case, what was searched for does not.
    enum class Case : uint8_t { Ignored, Counts };
    explicit clsRecentList(Case how = Case::Ignored) : case_(how) {}

    int32_t ListSize() const { return listSize_; }
    /// Negative: ignored. Above MaxListSize: that. Below 1: the list is empty and stays so.
    void SetListSize(int32_t size);
    int32_t ListCount() const { return listCount_; }
    /// Throws kBadIndex outside 1 to ListCount.
    const Text& ListItem(int32_t index) const;
    void AddItem(TextView text);
    void RemoveItem(TextView text);
    void Clear() { listCount_ = 0; }
    int32_t MaxListSize() const { return maxListSize_; }
    /// Accepted only above 0; ListSize is not adjusted.
    void SetMaxListSize(int32_t size);
    /// Two texts that are one entry.
    bool AreSame(TextView a, TextView b) const { return case_ == Case::Counts ? a == b : EqualsNoCase(a, b); }

private:
    /// 0-based index of the entry, -1 when absent.
    int32_t Find(TextView text) const;
    void MoveToFront(int32_t from, TextView text);

    Case case_;
    int32_t listSize_ = 4;
    int32_t listCount_ = 0;
    int32_t maxListSize_ = 30;
    std::vector<Text> entries_ = std::vector<Text>(4); ///< never shrinks
};

} // namespace nib
