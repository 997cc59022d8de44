#pragma once
#include "base/Text.h"

#include <vector>

namespace nib {

/// Names one element: field, value and subvalue, each 1-based; 0 in a lower level means the whole upper one, and -1 as
/// the last level given means one past the end.
struct ElementPath {
    int32_t field = 0;
    int32_t value = 0;
    int32_t subValue = 0;
};

/// A MultiValue dynamic array: a text cut by a list of delimiters, outermost first, into numbered elements.
class DynamicArray {
public:
    /// At most three delimiters are of use.
    void Parse(TextView text, TextView delimiters);
    /// Elements on the level below `at`: {} counts fields, {2} the values of field 2. An empty element counts 0.
    int32_t Count(ElementPath at = {}) const;
    Text Extract(ElementPath at) const;
    void Append(TextView value, ElementPath at = {});
    void Replace(TextView value, ElementPath at);
    Text ToString() const { return text_; }

private:
    Text text_;
    Text delimiters_;
};

} // namespace nib
