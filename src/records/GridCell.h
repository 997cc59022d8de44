#pragma once
// What a cell of the grid shows of a stored value, and back.

#include "records/Dictionary.h"

namespace nib {

// Stand for the mark between subvalues and for text marks, in what is shown and in what is typed.
inline constexpr char16_t kSubValueSign = u'\u00A6';
inline constexpr char16_t kTextSign = u'\u00AC';

struct GridCell {
    int32_t attribute = 0;
    int32_t value = 0;
    const DictionaryField* field = nullptr; ///< null: the dictionary tells nothing of it
};

struct ShownValue {
    Text text;
    bool odd = false; ///< shown as it is stored, since the dictionary's conversion does not fit
};

ShownValue ShowValue(TextView stored, const DictionaryField* field);
/// What is stored when `typed` takes the place of what is shown of a value. Subvalues and characters that were not
/// touched stay as they are stored. Throws Error with the reason for the user where it means no value.
Text StoredValue(TextView before, TextView typed, const DictionaryField* field);

} // namespace nib
