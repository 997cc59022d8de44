#include "shell/CommandLine.h"

#include <algorithm>
#include <optional>

namespace nib {

namespace {

using Kind = CommandLineAction::Kind;

struct Switch {
    TextView name; ///< upper case, three characters
    Kind kind;
};

constexpr Switch kSwitches[] = {
    {u"/T=", Kind::Provider}, {u"/H=", Kind::Server},   {u"/A=", Kind::Database},
    {u"/F=", Kind::Folder},   {u"/I=", Kind::OpenItem},
};

constexpr char16_t kQuote = u'"';
/// Stands for a blank that the cutting at blanks would lose; no character, so no argument holds it.
constexpr char16_t kKeptBlank = 0xFFFF;

std::optional<Kind> FindSwitch(TextView field)
{
    Text name = ToUpper(field.substr(0, 3));
    for (const Switch& row : kSwitches)
        if (row.name == name) return row.kind;
    return {};
}

/// Walks the fields of the line.
class Fields {
public:
    explicit Fields(TextView line) : fields_(Split(line, u' ')) {}
    bool Next(Text& field)
    {
        if (at_ >= fields_.size()) return false;
        field = fields_[at_++];
        return true;
    }
    /// Appends the following fields up to one that ends in a quote, or an empty one; then drops a closing quote.
    void JoinQuoted(Text& value)
    {
        while (!value.ends_with(kQuote) && at_ < fields_.size() && !fields_[at_].empty())
            value.append(u" ").append(fields_[at_++]);
        if (value.ends_with(kQuote)) value.pop_back();
    }

private:
    std::vector<Text> fields_;
    size_t at_ = 0;
};

/// A value in quotes without its opening quote; it may be just that quote, or close in its own first field.
void TakeQuotes(Fields& fields, Text& value)
{
    value.erase(0, 1);
    fields.JoinQuoted(value);
}

void StripFolderQuotes(Text& value)
{
    if (!value.starts_with(kQuote)) return;
    if (value.size() >= 2 && value.ends_with(kQuote)) value.pop_back();
    value.erase(0, 1);
}

Text RestoreBlanks(Text value)
{
    std::replace(value.begin(), value.end(), kKeptBlank, u' ');
    return value;
}

bool NeedsQuotes(TextView value)
{
    return value.empty() || value.find(u' ') != TextView::npos || value.front() == kQuote;
}

void AppendQuoted(Text& line, TextView value)
{
    line += kQuote;
    char16_t before = 0;
    for (char16_t c : value) {
        bool wouldCut = c == u' ' && (before == u' ' || before == kQuote);
        line += wouldCut ? kKeptBlank : c;
        before = c;
    }
    line += kQuote;
}

bool IsFileName(TextView field)
{
    return !field.starts_with(u'/') || (!FindSwitch(field) && field.find(u'/', 1) != TextView::npos);
}

} // namespace

std::vector<CommandLineAction> ParseCommandLine(TextView line)
{
    std::vector<CommandLineAction> actions;
    Fields fields(Trim(line));
    Text field;
    while (fields.Next(field)) {
        if (field.empty()) continue;
        if (IsFileName(field)) {
            if (field.starts_with(kQuote)) TakeQuotes(fields, field);
            if (!field.empty()) actions.push_back({Kind::OpenFile, RestoreBlanks(field)});
            continue;
        }
        Text value = field.substr(std::min<size_t>(field.size(), 3));
        if (value.starts_with(kQuote)) TakeQuotes(fields, value);
        if (auto kind = FindSwitch(field)) {
            if (*kind == Kind::Folder) StripFolderQuotes(value);
            actions.push_back({*kind, RestoreBlanks(std::move(value))});
        } else if (EqualsNoCase(field, u"/L")) {
            actions.push_back({Kind::ReadOnly, {}});
        }
    }
    return actions;
}

Text RebuildCommandLine(const std::vector<Text>& arguments)
{
    Text line;
    for (const Text& argument : arguments) {
        if (!line.empty()) line += u' ';
        size_t prefix = FindSwitch(argument) ? 3 : 0;
        TextView value = TextView(argument).substr(prefix);
        line.append(argument, 0, prefix);
        if (NeedsQuotes(value) && !(prefix > 0 && value.empty()))
            AppendQuoted(line, value);
        else
            line.append(value);
    }
    return line;
}

} // namespace nib
