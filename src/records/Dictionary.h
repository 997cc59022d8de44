#pragma once
#include "records/Conversion.h"

#include <map>
#include <memory>
#include <vector>

namespace nib {

class ItemReader;
class Record;

/// One attribute as a dictionary tells of it.
struct DictionaryField {
    Text name;
    Text heading; ///< for people; never empty
    int32_t attribute = 0;
    Conversion conversion;
    bool right = false; ///< where it stands in its column
    bool several = false;
    Text association; ///< empty for none
};

/// What is known of the attributes of a file's records.
class Dictionary {
public:
    /// An item of the dictionary, with CR LF or LF between lines. What tells of no attribute is left out.
    void Add(TextView id, TextView item);
    bool IsEmpty() const { return fields_.empty(); }
    const std::vector<DictionaryField>& Fields() const { return fields_; }
    /// The field of each attribute that a dictionary tells of, by what explains the record best where there are
    /// several. The answers point into the dictionary.
    std::map<int32_t, const DictionaryField*> FieldsFor(Record& record) const;

    Text name;  ///< of where it was read; empty where there is none
    Text fault; ///< why nobody knows whether there is one

private:
    std::map<TextView, int32_t> Leads() const;
    bool AddField(TextView id, const std::vector<Text>& lines);
    bool AddOldField(TextView id, const std::vector<Text>& lines);

    std::vector<DictionaryField> fields_; ///< by name
    std::vector<Text> listed_;            ///< names that a list of the file shows by itself
};

/// That of a file, from where its host keeps it: beside it, or as folders named for it. Without fields where there is
/// none. May run on any thread. Throws Error when the host cannot be reached any more.
Dictionary ReadDictionary(ItemReader& reader, TextView file);

} // namespace nib
