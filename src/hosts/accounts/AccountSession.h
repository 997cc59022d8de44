#pragma once
#include "base/Text.h"
#include "hosts/CommandWords.h"
#include "hosts/accounts/AccountStore.h"
#include "platform/MessageBoxes.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace nib {

/// What the programs of verbs run with.
struct VerbPrograms {
    VerbPrograms() = default;
    // A folder alone will do.
    VerbPrograms(Text programFolder, WaitNotice* waitNotice = nullptr, // NOLINT(google-explicit-constructor)
                 std::function<bool(TextView account, TextView commandLine)> asked = {})
        : folder(std::move(programFolder)), notice(waitNotice), mayRun(std::move(asked))
    {
    }

    Text folder;                  ///< its programs are found before all others
    WaitNotice* notice = nullptr; ///< outlives all sessions
    /// Asked about command lines that others may have put into the account's folder; without it they run.
    std::function<bool(TextView account, TextView commandLine)> mayRun;
    /// Command lines that the user has given the connection, by the verb in capitals: before those of VOC, and nobody
    /// is asked about them.
    std::map<Text, Text> own;
};

struct ProcessRequest;
struct ProcessResult;

/// The commands of an account: its verbs are the connection's own and the items of VOC. A verb's first attribute begins
/// with "V", the second is the command line of a program, the third may say how many seconds it may take. The words of
/// the command after the verb are added to the program's arguments, and it runs in the account's folder.
class AccountSession : public mvSession {
public:
    AccountSession(const AccountStore& store, Text account, VerbPrograms programs)
        : store_(store), account_(std::move(account)), programs_(std::move(programs))
    {
    }

    Text AccountName() override { return account_; }
    /// Throws Error when the verb is missing, its program cannot be run, or it takes too long. What the user stopped
    /// answers its output so far, with a last line that says so.
    Text Execute(TextView command, TextView input, int32_t /*flags*/) override { return Run(command, input, {}); }
    Text ExecuteTelling(TextView command, const PrintedLines& printed) override { return Run(command, u"", printed); }
    Text GetConfiguration(TextView key, int32_t attribute) override;

    bool HasVerbs() const;
    bool HasConfiguration() const;

private:
    struct Verb {
        Text name;
        Text record;
        bool isOwn = false; ///< of the connection
    };
    Text Run(TextView command, TextView input, const PrintedLines& printed);
    std::string VocFolder() const;
    Verb FindVerb(const Text& word) const;
    void CheckTrust(const Verb& verb, TextView commandLine) const;
    ProcessResult RunNoticed(ProcessRequest& request, TextView command) const;

    AccountStore store_;
    Text account_;
    VerbPrograms programs_;
};

} // namespace nib
