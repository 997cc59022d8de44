// nib-basic: checks a program of the account in the current folder.

#include "app/basic/AccountItems.h"
#include "diagnostics/Guarded.h"
#include "platform/posix/FileName.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

using namespace nib;

constexpr const char* kHelp = "Usage: nib-basic [--] FILE ITEM\n"
                              "Checks a BASIC program for what is wrong in every dialect. Run it in the folder of an\n"
                              "account; FILE is a folder there and ITEM an item of it.\n"
                              "\n"
                              "  --help     shows this text\n"
                              "  --version  shows the version\n"
                              "\n"
                              "Prints a line for each fault, or one that says that there is none. Words behind the\n"
                              "item are passed over. Ends with 0 when there is no fault, else with 1.\n";

constexpr int kUsageFault = 2;

struct Request {
    enum class Kind { Check, Help, Version, Wrong };
    Kind kind = Kind::Check;
    Text file;
    std::vector<Text> itemWords;
};

Request Read(int argc, char** argv)
{
    Request request;
    bool options = true;
    std::vector<Text> words;
    for (int i = 1; i < argc; ++i) {
        const std::string_view word = argv[i];
        if (options && word == "--help") return {Request::Kind::Help, {}, {}};
        if (options && word == "--version") return {Request::Kind::Version, {}, {}};
        if (options && word == "--") {
            options = false;
            continue;
        }
        words.push_back(FromFileName(word));
    }
    if (words.size() < 2) return {Request::Kind::Wrong, {}, {}};
    request.file = words.front();
    request.itemWords.assign(words.begin() + 1, words.end());
    return request;
}

void Print(TextView line)
{
    std::puts(ToUtf8(line).c_str());
}

Text Join(const std::vector<Text>& words, size_t count)
{
    Text joined;
    for (size_t i = 0; i < count; ++i) joined.append(i > 0 ? u" " : u"").append(words[i]);
    return joined;
}

/// An id with blanks comes as several words, and options may follow it: as many words are taken as name an item.
IncludeSource::Answer FindProgram(AccountItems& items, const Request& request, Text& item,
                                  std::shared_ptr<const ProgramText>& program)
{
    IncludeSource::Answer answer = IncludeSource::Answer::NoItem;
    for (size_t count = request.itemWords.size(); count > 0; --count) {
        item = Join(request.itemWords, count);
        answer = items.Find(request.file, item, program);
        if (answer == IncludeSource::Answer::Found) return answer;
    }
    const auto isOption = [](const Text& word) { return word.starts_with(u'('); };
    const auto options = std::find_if(request.itemWords.begin() + 1, request.itemWords.end(), isOption);
    item = Join(request.itemWords, static_cast<size_t>(options - request.itemWords.begin()));
    return answer;
}

bool Check(const Request& request)
{
    using Answer = IncludeSource::Answer;
    AccountItems items(".");
    std::shared_ptr<const ProgramText> program;
    Text item;
    const Answer answer = FindProgram(items, request, item, program);
    if (answer != Answer::Found) {
        const bool noFile = answer == Answer::NoFile;
        Print(noFile ? u"There is no file " + request.file + u" in this account."
                     : u"Item " + request.file + u" " + item + u" does not exist.");
        return false;
    }
    const std::vector<Finding> findings = BasicChecker(items).Check(*program, request.file, item);
    for (const Finding& finding : findings) Print(u"Line " + Decimal(finding.line) + u": " + English(finding.text));
    const int32_t lines = program->LineCount();
    if (findings.empty()) Print(Decimal(lines) + (lines == 1 ? u" line" : u" lines") + u" checked, no error found.");
    return findings.empty();
}

} // namespace

int main(int argc, char** argv)
{
    const Request request = Read(argc, argv);
    switch (request.kind) {
    case Request::Kind::Help: std::fputs(kHelp, stdout); return EXIT_SUCCESS;
    case Request::Kind::Version: std::puts("nib-basic " NIB_VERSION); return EXIT_SUCCESS;
    case Request::Kind::Wrong:
        std::fputs("nib-basic: name a file and an item; see --help\n", stderr);
        return kUsageFault;
    case Request::Kind::Check: break;
    }
    bool clean = false;
    const auto failure = FailureOf([&] { clean = Check(request); });
    if (failure) Print(failure->description);
    return clean && !failure ? EXIT_SUCCESS : EXIT_FAILURE;
}
