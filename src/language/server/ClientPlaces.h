#pragma once
#include "hosts/accounts/AccountReader.h"

#include <memory>
#include <string>
#include <vector>

namespace nib {

/// URIs of the client, and the paths that the same texts have here. A folder of the workspace is an account: its
/// folders are files, and what lies in those are items. Any other text is a local file.
class ClientPlaces {
public:
    /// Answers the account's path; empty when it is known already, or no folder.
    Text AddAccount(const std::string& folder);
    std::vector<Text> Accounts() const;
    /// The folder of the account that holds the file, whether it was added or not; empty where it looks like none.
    std::string AccountFolderOf(const std::string& file) const;
    /// For the account of such a path.
    std::unique_ptr<ItemReader> Reader(const Text& accountPath) const;

    /// The dialect that the account names, if it does.
    Text DialectOf(const Text& accountPath) const;

    Text PathOf(const std::string& uri) const;
    /// Empty where a path leads nowhere that a client could go.
    std::string UriOf(const Text& path) const;

    /// The absolute name of the file; empty when the URI is of another kind.
    static std::string FileOf(std::string_view uri);

private:
    struct Account {
        std::string folder;
        ItemPlace place;
        AccountStore store;
    };
    const Account* Find(const ItemPlace& place) const;

    std::vector<Account> accounts_;
};

} // namespace nib
