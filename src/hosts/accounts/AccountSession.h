#pragma once
#include "hosts/accounts/AccountStore.h"
#include "hosts/accounts/VerbPrograms.h"

#include <string>

namespace nib {

struct ProcessRequest;
struct ProcessResult;

/// The commands of an account: its verbs are the items of VOC. A verb's first attribute begins with "V", the second is
/// the command line of a program, the third may say how many seconds it may take. The words of the command after the
/// verb are added to the program's arguments, and it runs in the account's folder.
class AccountSession : public mvSession {
public:
    AccountSession(const AccountStore& store, Text account, VerbPrograms programs)
        : store_(store), account_(std::move(account)), programs_(std::move(programs))
    {
    }

    Text AccountName() override { return account_; }
    /// Throws Error when the verb is missing, its program cannot be run, or it takes too long. What the user stopped
    /// answers its output so far, with a last line that says so.
    Text Execute(TextView command, TextView input, int32_t flags) override;
    Text GetConfiguration(TextView key, int32_t attribute) override;

    bool HasVerbs() const;
    bool HasConfiguration() const;

private:
    struct Verb {
        Text name;
        Text record;
    };
    Verb FindVerb(const Text& word) const;
    ProcessResult RunNoticed(ProcessRequest& request, TextView command) const;

    AccountStore store_;
    Text account_;
    VerbPrograms programs_;
};

} // namespace nib
