#include "records/Dictionary.h"

#include "diagnostics/Guarded.h"
#include "hosts/ItemReader.h"
#include "records/Record.h"

#include <algorithm>
#include <chrono>

namespace nib {

namespace {

/// Items of the dictionary; a file that was made by mistake must not hold up its records.
constexpr size_t kMostItems = 5000;
constexpr std::chrono::seconds kLongest{3}; ///< the user waits: what is not known by then has a number
constexpr size_t kLargestItem = 1 << 16;
/// Values that are looked at to find out which field they are of.
constexpr int32_t kSamples = 100;
constexpr TextView kListedId{u"@"};
/// Counts more than how well a field fits: whether the association that it belongs to is there.
constexpr int32_t kLed = 100;

TextView Line(const std::vector<Text>& lines, size_t number)
{
    return number <= lines.size() ? TextView(lines[number - 1]) : TextView();
}

/// The first letter or the whole first word of what an item is.
Text TypeOf(const std::vector<Text>& lines)
{
    return ToUpper(Field(Trim(Line(lines, 1)), u' ', 1));
}

/// "12R", "10L#3", "T#20": the letter counts.
bool StandsRight(TextView format)
{
    const size_t letter = format.find_first_of(u"LRTUlrtu");
    return letter != TextView::npos && (format[letter] == u'R' || format[letter] == u'r');
}

Text HeadingOf(TextView heading, TextView id)
{
    Text text(Trim(Replace(heading, ValueMark, u" ")));
    return text.empty() || text == u"\\" ? Text(id) : text;
}

/// What items of a dictionary itself mean, for who edits those.
struct OwnField {
    TextView name;
    bool right;
};
constexpr OwnField kOwnFields[] = {{u"Type", false},       {u"Location", true}, {u"Conversion", false},
                                   {u"Heading", false},    {u"Format", false},  {u"Single or multivalued", false},
                                   {u"Association", false}};

Dictionary OfDictionaries()
{
    Dictionary dictionary;
    int32_t attribute = 0;
    for (const OwnField& field : kOwnFields) {
        dictionary.Add(field.name, u"D\n" + Decimal(++attribute) + u"\n\n\n" + (field.right ? u"5R" : u"20L") + u"\nS");
    }
    return dictionary;
}

bool IsDictionary(TextView file)
{
    return file.starts_with(u"DICT ") || file.starts_with(u"DICT.") || file.ends_with(u".DIC");
}

/// How well a field explains what the record holds there: more is better.
int32_t Fit(const DictionaryField& field, Record& record)
{
    const int32_t count = std::min(record.ValueCount(field.attribute), kSamples);
    if (count == 0) return 0;
    int32_t fit = (count > 1) == field.several ? 1 : 0;
    if (!field.conversion.Converts()) return fit;
    bool any = false;
    for (int32_t value = 1; value <= count; ++value) {
        for (const Text& part : Split(record.Value(field.attribute, value), kSubValueMark)) {
            if (!field.conversion.Show(part)) return fit - 4;
            any = any || !part.empty();
        }
    }
    return fit + (any ? 2 : 0);
}

} // namespace

void Dictionary::Add(TextView id, TextView item)
{
    std::vector<Text> lines = Split(item, u'\n');
    for (Text& line : lines)
        if (line.ends_with(u'\r')) line.pop_back();
    const Text type = TypeOf(lines);
    if (type == u"PH" && id == kListedId) listed_ = Split(Line(lines, 2), u' ');
    if (type.starts_with(u'D') && type != u"DC")
        AddField(id, lines);
    else if (type.starts_with(u'A') || type.starts_with(u'S'))
        AddOldField(id, lines);
}

bool Dictionary::AddField(TextView id, const std::vector<Text>& lines)
{
    const std::optional<int64_t> attribute = WholeNumber(Trim(Line(lines, 2)));
    if (!attribute || *attribute < 1 || *attribute > Record::kMostAttributes) return false;
    DictionaryField field{Text(id),
                          HeadingOf(Line(lines, 4), id),
                          static_cast<int32_t>(*attribute),
                          Conversion(Line(lines, 3)),
                          StandsRight(Line(lines, 5)),
                          false,
                          {}};
    field.several = ToUpper(Line(lines, 6)).starts_with(u'M');
    if (field.several) field.association = Trim(Line(lines, 7));
    fields_.push_back(std::move(field));
    return true;
}

/// The layout with the heading in line 3: C;n;n in line 4 leads an association of those attributes, D;n belongs to the
/// one that attribute n leads.
bool Dictionary::AddOldField(TextView id, const std::vector<Text>& lines)
{
    const std::optional<int64_t> attribute = WholeNumber(Trim(Line(lines, 2)));
    if (!attribute || *attribute < 1 || *attribute > Record::kMostAttributes) return false;
    DictionaryField field{Text(id),
                          HeadingOf(Line(lines, 3), id),
                          static_cast<int32_t>(*attribute),
                          Conversion(Line(lines, 7)),
                          StandsRight(Line(lines, 9)),
                          false,
                          {}};
    const TextView structure = Trim(Line(lines, 4));
    field.several = structure.starts_with(u'C') || structure.starts_with(u'D');
    if (structure.starts_with(u'C')) field.association = Decimal(*attribute);
    if (structure.starts_with(u'D')) field.association = nib::Field(structure, u';', 2);
    fields_.push_back(std::move(field));
    return true;
}

/// The first attribute of each association, which its others go by.
std::map<TextView, int32_t> Dictionary::Leads() const
{
    std::map<TextView, int32_t> leads;
    for (const DictionaryField& field : fields_) {
        const auto [at, first] = leads.try_emplace(field.association, field.attribute);
        if (!first) at->second = std::min(at->second, field.attribute);
    }
    return leads;
}

std::map<int32_t, const DictionaryField*> Dictionary::FieldsFor(Record& record) const
{
    std::map<int32_t, std::vector<const DictionaryField*>> candidates;
    for (const DictionaryField& field : fields_) candidates[field.attribute].push_back(&field);
    const std::map<TextView, int32_t> leads = Leads();
    std::map<int32_t, const DictionaryField*> chosen;
    for (const auto& [attribute, fields] : candidates) {
        const auto rank = [&, own = attribute](const DictionaryField* field) {
            // Those that a list shows come first where else they are alike.
            const bool listed = std::find(listed_.begin(), listed_.end(), field->name) != listed_.end();
            const int32_t fit = 2 * Fit(*field, record) + (listed ? 1 : 0);
            const int32_t lead = leads.at(field->association);
            if (field->association.empty() || lead == own) return fit;
            const auto leader = chosen.find(lead);
            const bool led = leader != chosen.end() && leader->second->association == field->association;
            return fit + (led ? kLed : -kLed);
        };
        chosen[attribute] =
            *std::max_element(fields.begin(), fields.end(), [&](auto* a, auto* b) { return rank(a) < rank(b); });
    }
    return chosen;
}

Dictionary ReadDictionary(ItemReader& reader, TextView file)
{
    if (IsDictionary(file)) return OfDictionaries();
    for (const Text& name : {u"DICT " + Text(file), Text(file) + u".DIC", u"DICT." + Text(file)}) {
        std::vector<Text> ids;
        if (const auto failure = FailureOf([&] { ids = reader.Ids(name); })) {
            if (failure->number == error_number::kDeviceUnavailable) throw *failure;
            continue;
        }
        std::sort(ids.begin(), ids.end());
        if (ids.size() > kMostItems) ids.resize(kMostItems);
        Dictionary dictionary;
        const auto end = std::chrono::steady_clock::now() + kLongest;
        for (const Text& id : ids) {
            if (std::chrono::steady_clock::now() > end) break;
            // An item that cannot be read is one that tells nothing.
            std::optional<Text> item;
            const auto failure = FailureOf([&] { item = reader.Read(name, id); });
            if (failure && failure->number == error_number::kDeviceUnavailable) throw *failure;
            if (item && item->size() <= kLargestItem) dictionary.Add(id, *item);
        }
        dictionary.name = name;
        if (!dictionary.IsEmpty()) return dictionary;
    }
    return {};
}

} // namespace nib
