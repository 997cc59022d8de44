#include "shell/CommandLine.h"

#include <cstdio>
#include <optional>

namespace nib {

namespace {

using Kind = CommandLineAction::Kind;

constexpr const char* kHelp = "Usage: nibpad71 [SWITCH | FILE]...\n"
                              "Edits items of MultiValue files, and local files.\n"
                              "\n"
                              "Switches and files act from left to right; what they set holds for what follows:\n"
                              "  /T=TYPE      connection type, mvdb by default\n"
                              "  /H=HOST      host connection, \"*\" for the default one\n"
                              "  /A=ACCOUNT   account\n"
                              "  /F=FILE      MultiValue file\n"
                              "  /I=ITEM      opens this item of the file\n"
                              "  /L           opens all that follows read-only\n"
                              "  FILE         opens a local file\n"
                              "  --           takes all that follows for files\n"
                              "  -h, --help   shows this text\n"
                              "  --version    shows the version\n"
                              "\n"
                              "Example: nibpad71 '/H=*' /A=DEMO /F=BP /I=INVOICE\n";

struct Switch {
    TextView name; ///< upper case, three characters
    Kind kind;
};

constexpr Switch kSwitches[] = {
    {u"/T=", Kind::Provider}, {u"/H=", Kind::Server},   {u"/A=", Kind::Database},
    {u"/F=", Kind::Folder},   {u"/I=", Kind::OpenItem},
};

constexpr TextView kReadOnly = u"/L";
constexpr TextView kOnlyFilesFollow = u"--";

std::optional<Kind> FindSwitch(TextView word)
{
    Text name = ToUpper(word.substr(0, 3));
    for (const Switch& row : kSwitches)
        if (row.name == name) return row.kind;
    return {};
}

/// A pair of quotes that no shell has taken.
TextView WithoutQuotes(TextView value)
{
    bool quoted = value.size() >= 2 && value.front() == u'"' && value.back() == u'"';
    return quoted ? value.substr(1, value.size() - 2) : value;
}

bool LooksLikeSwitch(TextView word)
{
    return word.front() == u'/' || (word.front() == u'-' && word.size() > 1);
}

} // namespace

CommandLine ParseArguments(std::span<const Text> arguments, const std::function<bool(TextView)>& exists)
{
    CommandLine line;
    bool onlyFiles = false;
    for (const Text& word : arguments) {
        if (&word != arguments.data()) line.text += u' ';
        line.text += word;
        if (word.empty()) continue;
        const auto kind = FindSwitch(word);
        const bool known = kind || word == kOnlyFilesFollow || EqualsNoCase(word, kReadOnly);
        const bool mayBeFile = !known && (word.find(u'/', 1) != Text::npos || exists(word));
        if (onlyFiles || !LooksLikeSwitch(word) || mayBeFile)
            line.actions.push_back({Kind::OpenFile, word});
        else if (kind)
            line.actions.push_back({*kind, Text(WithoutQuotes(TextView(word).substr(3)))});
        else if (word == kOnlyFilesFollow)
            onlyFiles = true;
        else if (known)
            line.actions.push_back({Kind::ReadOnly, {}});
        else
            line.unknown.push_back(word);
    }
    return line;
}

bool AnswersOnTerminal(std::span<const Text> arguments)
{
    for (const Text& word : arguments) {
        if (word == kOnlyFilesFollow) return false;
        if (word == u"--help" || word == u"-h") return std::fputs(kHelp, stdout), true;
        if (word == u"--version") return std::puts("nibpad71 " NIB_VERSION), true;
    }
    return false;
}

} // namespace nib
