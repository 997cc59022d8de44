#include "hosts/accounts/AccountSession.h"

#include "base/Error.h"
#include "hosts/accounts/AccountStore.h"
#include "hosts/accounts/ServerAccounts.h"
#include "hosts/accounts/VerbTrust.h"
#include "platform/posix/FileContent.h"
#include "platform/posix/FileName.h"
#include "platform/posix/Process.h"

#include <algorithm>
#include <cstring>

namespace nib {

namespace {

constexpr TextView kVoc{u"VOC"};
constexpr TextView kConfiguration{u"NIB"};
constexpr int32_t kDefaultSeconds = 120;

[[noreturn]] void Refuse(TextView text)
{
    throw Error(error_number::kStorage, Text(text));
}

void AppendLine(Text& output, TextView line)
{
    if (!output.empty()) output += u"\r\n";
    output += line;
}

Text Decoded(const ItemText& coding, std::string output)
{
    std::replace(output.begin(), output.end(), '\0', ' ');
    TextForm form;
    return coding.Decode(output, form, {});
}

/// Tells of the output of a command while it runs.
class LinesAsTheyCome {
public:
    LinesAsTheyCome(const ItemText& coding, const PrintedLines& printed) : coding_(coding), printed_(printed) {}

    void Take(std::string_view bytes)
    {
        if (taken_ > kMostTold) return;
        taken_ += bytes.size();
        begun_ += bytes;
        const size_t end = begun_.rfind('\n');
        if (end == std::string::npos) return;
        printed_(Decoded(coding_, begun_.substr(0, end)));
        begun_.erase(0, end + 1);
    }

private:
    /// Nobody reads on while it floods.
    static constexpr size_t kMostTold = size_t{1} << 20;

    const ItemText coding_;
    const PrintedLines& printed_;
    std::string begun_; ///< a line that may not have ended yet
    size_t taken_ = 0;
};

/// The time of a command as the notice knows it.
class RunningCommand {
public:
    RunningCommand(WaitNotice& notice, TextView command) : notice_(notice)
    {
        if (!notice_.Started(command)) Refuse(Text(command) + u" cannot be run while another command runs.");
    }
    RunningCommand(const RunningCommand&) = delete;
    RunningCommand& operator=(const RunningCommand&) = delete;
    ~RunningCommand() { notice_.Ended(); }

    bool GoOn() const
    {
        using namespace std::chrono;
        return notice_.GoOn(duration_cast<milliseconds>(steady_clock::now() - start_));
    }

private:
    WaitNotice& notice_;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

} // namespace

Text AccountSession::Run(TextView command, TextView input, const PrintedLines& printed)
{
    std::vector<Text> words = SplitCommand(command);
    if (words.empty()) Refuse(u"There is no command to run.");
    const Verb verb = FindVerb(words.front());
    std::vector<Text> program = SplitProgramLine(Attribute(verb.record, 2));
    if (program.empty()) Refuse(u"The verb " + verb.name + u" of account " + account_ + u" names no program.");
    CheckTrust(verb, Attribute(verb.record, 2));
    program.insert(program.end(), words.begin() + 1, words.end());

    ProcessRequest request;
    for (const Text& word : program) request.words.push_back(ToFileName(word));
    request.folder = store_.AccountFolder(account_);
    request.firstInPath = ToFileName(programs_.folder);
    const std::string bytes = ToUtf8(input);
    request.input = bytes;
    const int32_t seconds = ToInt(Attribute(verb.record, 3));
    request.timeLimit = std::chrono::seconds(seconds > 0 ? seconds : kDefaultSeconds);

    LinesAsTheyCome lines(store_.Coding(), printed);
    if (printed) request.printed = [&lines](std::string_view fresh) { lines.Take(fresh); };

    ProcessResult result = RunNoticed(request, command);
    if (result.timedOut) {
        Refuse(verb.name + u" was stopped: it did not end within " + Decimal(request.timeLimit.count() / 1000) +
               u" seconds.");
    }
    Text output = Decoded(store_.Coding(), std::move(result.output));
    if (result.cut) AppendLine(output, u"(the rest of the output was cut off)");
    if (result.cancelled) AppendLine(output, verb.name + u" was stopped.");
    if (result.signal != 0) {
        AppendLine(output, program.front() + u" was ended by signal " + Decimal(result.signal) + u" (" +
                               FromUtf8(strsignal(result.signal)) + u").");
    }
    return output;
}

void AccountSession::CheckTrust(const Verb& verb, TextView commandLine) const
{
    if (!programs_.mayRun || verb.isOwn) return;
    const std::string account = store_.AccountFolder(account_);
    const std::string voc = store_.FileFolder(account_, kVoc);
    if (!OthersMayChange({account, voc, store_.ItemFile(account_, kVoc, verb.name)})) return;
    if (!programs_.mayRun(FromFileName(account), commandLine)) Refuse(verb.name + u" was not run.");
}

ProcessResult AccountSession::RunNoticed(ProcessRequest& request, TextView command) const
{
    if (!programs_.notice) return RunProcess(request);
    const RunningCommand running(*programs_.notice, command);
    request.goOn = [&running] { return running.GoOn(); };
    return RunProcess(request);
}

/// The verb as typed in capitals, then as typed.
AccountSession::Verb AccountSession::FindVerb(const Text& word) const
{
    const auto own = programs_.own.find(ToUpper(word));
    if (own != programs_.own.end()) return {own->first, u"V\n" + own->second, true};
    for (Text name : {ToUpper(word), word}) {
        Text record = store_.ReadRecord(account_, kVoc, name);
        if (record.starts_with(u'V')) return {std::move(name), std::move(record), false};
    }
    Refuse(word + u" is not in the VOC of account " + account_ + u".");
}

Text AccountSession::GetConfiguration(TextView key, int32_t attribute)
{
    return Text(Attribute(store_.ReadRecord(account_, kVoc, key), attribute));
}

std::string AccountSession::VocFolder() const
{
    const std::string account = store_.AccountFolder(account_);
    return account + "/" + FindName(account, kVoc);
}

bool AccountSession::HasVerbs() const
{
    const std::string voc = VocFolder();
    return !programs_.own.empty() || (IsFolder(voc) && !IsHashedFile(voc));
}

bool AccountSession::HasConfiguration() const
{
    const std::string voc = VocFolder();
    return IsPlainFile(voc + "/" + FindName(voc, kConfiguration)) && !IsHashedFile(voc);
}

} // namespace nib
