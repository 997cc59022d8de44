#include "language/Dialects.h"

#include "base/Text.h"

#include <algorithm>

namespace nib {

namespace {

constexpr char16_t kBar = u'|';

template <typename Value>
struct Named {
    TextView name;
    Value value;
};

template <typename Value, size_t N>
const Value* Lookup(const Named<Value> (&rows)[N], TextView name)
{
    const auto* row = std::find_if(std::begin(rows), std::end(rows),
                                   [&](const Named<Value>& candidate) { return EqualsNoCase(candidate.name, name); });
    return row == std::end(rows) ? nullptr : &row->value;
}

constexpr Named<WordKind> kKinds[] = {{u"statement", WordKind::Statement},
                                      {u"function", WordKind::Function},
                                      {u"clause", WordKind::Clause},
                                      {u"variable", WordKind::Variable}};

constexpr Named<BlockRole> kRoles[] = {{u"opens", BlockRole::Opens},
                                       {u"routine", BlockRole::Routine},
                                       {u"continues", BlockRole::Continues},
                                       {u"closes", BlockRole::Closes}};

struct Place {
    bool first;
    bool last;
};
constexpr Named<Place> kPlaces[] = {
    {u"anywhere", {false, false}}, {u"first", {true, false}}, {u"last", {false, true}}, {u"alone", {true, true}}};

/// Characters one behind the other.
constexpr Named<Text Dialect::*> kCharacters[] = {{u"in names", &Dialect::inNames},
                                                  {u"begin names", &Dialect::beginNames},
                                                  {u"comments", &Dialect::comments},
                                                  {u"directives", &Dialect::directives},
                                                  {u"continuations", &Dialect::continuations}};
constexpr Named<std::vector<Text> Dialect::*> kLists[] = {{u"comment words", &Dialect::commentWords},
                                                          {u"include files", &Dialect::includeFiles}};
constexpr Named<Text Dialect::*> kTexts[] = {{u"title", &Dialect::title}};
constexpr Named<bool Dialect::*> kSwitches[] = {{u"blank before colon", &Dialect::blankBeforeColon}};

std::vector<Text> Fields(TextView line)
{
    std::vector<Text> fields = Split(line, kBar);
    for (Text& field : fields) field = Trim(field);
    return fields;
}

std::vector<Text> WordsOf(TextView text)
{
    std::vector<Text> words = Split(text, u' ');
    std::erase_if(words, [](const Text& word) { return word.empty(); });
    return words;
}

/// What the parentheses of a form hold: "NAME(a [, b [, c]])" takes one to three, "NAME(a, ...)" any number.
class FormArguments {
public:
    /// False for a form without parentheses, or one where something is not closed.
    bool Read(TextView form)
    {
        const size_t open = form.find(u'(');
        if (open == TextView::npos) return false;
        for (size_t i = open + 1; i < form.size(); ++i) {
            if (form[i] == u')' && depth_ == 0) {
                End();
                return brackets_ == 0;
            }
            Take(form, i);
        }
        return false;
    }
    int32_t least = 0;
    int32_t most = 0;

private:
    void Take(TextView form, size_t at)
    {
        const char16_t c = form[at];
        if (c == u'(') ++depth_;
        if (c == u')') --depth_;
        if (c == u'[') ++brackets_;
        if (c == u']') --brackets_;
        if (c == u',' && depth_ == 0) return End();
        if (c == u' ' || c == u'[' || c == u']') return;
        if (!inArgument_) optional_ = brackets_ > 0;
        inArgument_ = true;
        dots_ = form.substr(at).starts_with(u"...") || (dots_ && c == u'.');
    }
    void End()
    {
        if (!inArgument_) return;
        inArgument_ = false;
        if (dots_) most = -1;
        if (dots_) return;
        if (most >= 0) ++most;
        if (!optional_) ++least;
    }

    int32_t depth_ = 0;
    int32_t brackets_ = 0;
    bool inArgument_ = false;
    bool optional_ = false;
    bool dots_ = false;
};

class Reader {
public:
    Reader(Dialect& dialect, std::vector<DialectNote>& notes) : dialect_(dialect), notes_(notes) {}

    void Read(TextView text)
    {
        while (!text.empty()) {
            ++number_;
            const size_t end = text.find(u'\n');
            Text line(text.substr(0, end));
            std::replace_if(
                line.begin(), line.end(), [](char16_t c) { return c == u'\t' || c == u'\r'; }, u' ');
            Line(Trim(line));
            if (end == TextView::npos) break;
            text.remove_prefix(end + 1);
        }
        dialect_.SetWords(std::move(words_));
    }

private:
    using Section = void (Reader::*)(TextView);
    struct SectionRow {
        TextView name;
        Section read;
    };

    void Line(TextView line)
    {
        if (line.empty() || line.front() == u';') return;
        if (line.front() == u'[' && line.back() == u']') return Begin(Trim(line.substr(1, line.size() - 2)));
        if (section_) (this->*section_)(line);
    }

    void Begin(TextView name)
    {
        static constexpr SectionRow kSections[] = {
            {u"lines", &Reader::Rule}, {u"blocks", &Reader::Block}, {u"words", &Reader::Word}};
        const auto* row = std::find_if(std::begin(kSections), std::end(kSections),
                                       [&](const SectionRow& candidate) { return EqualsNoCase(candidate.name, name); });
        section_ = row == std::end(kSections) ? nullptr : row->read;
        if (!section_) Note(u"There is no section [" + Text(name) + u"]; its lines are passed over.");
    }

    void Rule(TextView line)
    {
        const size_t equals = std::min(line.find(u'='), line.size());
        const TextView key = Trim(line.substr(0, equals));
        const TextView value = equals < line.size() ? Trim(line.substr(equals + 1)) : TextView();
        if (equals == line.size()) return Note(u"\"=\" is missing.");
        if (const auto* characters = Lookup(kCharacters, key)) {
            (dialect_.**characters).clear();
            for (const Text& word : WordsOf(value)) dialect_.** characters += word;
        } else if (const auto* list = Lookup(kLists, key)) {
            dialect_.** list = WordsOf(value);
        } else if (const auto* text = Lookup(kTexts, key)) {
            dialect_.** text = value;
        } else if (const auto* state = Lookup(kSwitches, key)) {
            if (!EqualsNoCase(value, u"yes") && !EqualsNoCase(value, u"no")) return Note(u"This is \"yes\" or \"no\".");
            dialect_.** state = EqualsNoCase(value, u"yes");
        } else if (!EqualsNoCase(key, u"base")) {
            Note(u"There is no rule \"" + Text(key) + u"\".");
        }
    }

    void Block(TextView line)
    {
        std::vector<Text> fields = Fields(line);
        if (fields.size() < 3 || fields.size() > 4)
            return Note(u"A block has 3 or 4 fields: words | role | place | closer.");
        const BlockRole* role = Lookup(kRoles, fields[1]);
        const Place* place = Lookup(kPlaces, fields[2]);
        if (fields[0].empty()) return Note(u"The words are missing.");
        if (!role) return Note(u"There is no role \"" + fields[1] + u"\".");
        if (!place) return Note(u"There is no place \"" + fields[2] + u"\".");
        dialect_.SetBlock(
            {ToUpper(fields[0]), *role, place->first, place->last, fields.size() > 3 ? ToUpper(fields[3]) : Text()});
    }

    void Word(TextView line)
    {
        std::vector<Text> fields = Fields(line);
        if (fields.size() != 4) return Note(u"A word has 4 fields: name | kind | form | help.");
        const WordKind* kind = Lookup(kKinds, fields[1]);
        if (fields[0].empty() || fields[0].find(u' ') != Text::npos) return Note(u"The name is one word.");
        if (!kind) return Note(u"There is no kind \"" + fields[1] + u"\".");
        DialectWord word{ToUpper(fields[0]), *kind, std::move(fields[2]), std::move(fields[3])};
        if (*kind == WordKind::Function) {
            FormArguments arguments;
            if (!arguments.Read(word.form)) return Note(u"A function's form ends its arguments with \")\".");
            word.least = arguments.least;
            word.most = arguments.most;
        }
        words_.push_back(std::move(word));
    }

    void Note(Text text) { notes_.push_back({dialect_.name, number_, std::move(text)}); }

    Dialect& dialect_;
    std::vector<DialectNote>& notes_;
    std::vector<DialectWord> words_;
    Section section_ = &Reader::Rule;
    int32_t number_ = 0;
};

} // namespace

void ReadDialect(TextView text, Dialect& dialect, std::vector<DialectNote>& notes)
{
    Reader(dialect, notes).Read(text);
}

Text BaseOfDialect(TextView text)
{
    while (!text.empty()) {
        const size_t end = std::min(text.find(u'\n'), text.size());
        const TextView line = Trim(text.substr(0, end));
        if (line.starts_with(u'[')) break;
        const size_t equals = line.find(u'=');
        if (equals != TextView::npos && EqualsNoCase(Trim(line.substr(0, equals)), u"base")) {
            TextView value = line.substr(equals + 1);
            if (value.ends_with(u'\r')) value.remove_suffix(1);
            return Text(Trim(value));
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return {};
}

} // namespace nib
