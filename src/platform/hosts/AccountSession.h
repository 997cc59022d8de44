#pragma once
#include "platform/hosts/AccountStore.h"

#include <string>

namespace nib {

/// The commands of an account: its verbs are the items of VOC. A verb's first attribute begins with "V", the second is
/// the command line of a program, the third may say how many seconds it may take. The words of the command after the
/// verb are added to the program's arguments, and it runs in the account's folder.
class AccountSession : public mvSession {
public:
    /// Programs of `programFolder` are found before all others.
    AccountSession(const AccountStore& store, Text account, Text programFolder)
        : store_(store), account_(std::move(account)), programFolder_(std::move(programFolder))
    {
    }

    Text AccountName() override { return account_; }
    /// Throws Error when the verb is missing, its program cannot be run, or it takes too long.
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

    AccountStore store_;
    Text account_;
    Text programFolder_;
};

} // namespace nib
