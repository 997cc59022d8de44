#pragma once
#include "language/Dialects.h"
#include "language/server/ClientPlaces.h"
#include "language/server/ClientText.h"
#include "language/server/Outbox.h"
#include "language/service/LanguageService.h"

#include <map>

namespace nib {

/// What the client said that it can do.
struct ClientTraits {
    Units units = Units::Utf16;
    bool markdown = false;
    bool labelOffsets = false;   ///< parameters are told by their places in the form
    bool versionedEdits = false; ///< edits of texts come with the versions that they are for
    bool nestedSymbols = false;
    bool progress = false;
};

struct ClientDocument {
    std::string uri; ///< as the client writes it
    Text path;
    ClientText text;
    std::vector<int32_t> tokens{}; ///< as the client has them
    int64_t tokensId = 0;
};

/// What requests are answered from: the texts that are open, where things are, and what is known of programs.
class Workspace {
public:
    explicit Workspace(Outbox& box) : out(box) {}

    /// The one before goes; accounts and open texts come to the new one. A dialect that nobody knows is told of.
    void StartService(const Text& dialectName, const std::string& indexFolder);
    /// Of the account of a path, else the one that the service was started with.
    Text DialectOf(const Text& path) const;
    void AddAccount(const std::string& folder);
    ClientDocument& Open(const std::string& uri, TextView text, Json version);
    void Close(const std::string& uri);
    /// Throws when it is not open.
    ClientDocument& Get(const Json& uri);
    ClientDocument* Find(const Text& path);

    // Of open texts and others; `line` is that of a range in a text that is not open.
    std::string UriOf(const Text& path);
    Json Range(const Text& path, const TextRange& range, TextView line);
    Json Location(const PathRange& place);

    Outbox& out;
    ClientTraits client;
    ClientPlaces places;
    std::map<std::string, ClientDocument> texts; ///< by URI
    Dialects dialects;
    Text dialect; ///< its name; "none": words and blocks of all dialects alone, to the formatter
    std::unique_ptr<LanguageService> service;
    std::vector<Completion> offered; ///< last; their help is asked for one by one
    int64_t offer = 0;               ///< its number

private:
    void TellAccount(const Text& path);
    /// For the service, which always knows words.
    const Dialect* DialectNamed(TextView dialectName);

    std::map<Text, Text> accountDialects_; ///< by path of the account
};

/// What a request of a position is about.
struct Asked {
    Asked(Workspace& workspace, const Json& params);

    ClientDocument& open;
    Position at;
};

} // namespace nib
