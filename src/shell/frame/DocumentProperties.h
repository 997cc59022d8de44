#pragma once
#include "base/Text.h"

#include <vector>

namespace nib {

class mvDocument;
struct Location;

struct PropertyRow {
    Text name;
    Text value;

    friend bool operator==(const PropertyRow&, const PropertyRow&) = default;
};

/// The facts of a document in the order in which they are shown. `current` tells where a document without an item
/// would be saved.
std::vector<PropertyRow> DocumentProperties(mvDocument& document, const Location& current);

/// Characters as storage counts them: a line end of a host item is one mark.
int32_t TextSize(TextView text, TextView provider);
/// Lines that end in CR LF, and one more for text behind the last of them.
int32_t TextLines(TextView text);

} // namespace nib
