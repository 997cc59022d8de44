#pragma once
// The root of the automation objects, what it wants of the rooms above it, and what crosses the bus: the few types that
// members use.

#include "documents/DocumentServices.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <variant>
#include <vector>

namespace nib {

struct ObjectPath {
    std::string path;
    bool operator==(const ObjectPath&) const = default;
};

using ObjectPaths = std::vector<ObjectPath>;

/// monostate: nothing, or something that no member takes.
using BusValue = std::variant<std::monostate, bool, int32_t, Text, ObjectPath, ObjectPaths>;

/// D-Bus signatures of the alternatives above, in their order.
inline constexpr const char* kBusSignatures[] = {"", "b", "i", "s", "o", "ao"};

inline const char* SignatureOf(const BusValue& value)
{
    return kBusSignatures[value.index()];
}

/// Who holds the program: a client from its first call until it has released as often as it holds, or has left.
class Holders {
public:
    /// Any call; the first one of a client makes it a holder.
    void Touch(const std::string& client) { counts_.try_emplace(client, 1); }
    /// One more.
    void Hold(const std::string& client) { ++counts_[client]; }
    /// One less; harmless for a client that holds nothing.
    void Release(const std::string& client)
    {
        auto found = counts_.find(client);
        if (found != counts_.end() && --found->second == 0) counts_.erase(found);
    }
    /// True when it held something.
    bool Left(const std::string& client) { return counts_.erase(client) > 0; }
    void Clear() { counts_.clear(); }
    bool Empty() const { return counts_.empty(); }

private:
    std::unordered_map<std::string, int64_t> counts_;
};

/// The program around the automation objects.
class AutomationShell {
public:
    virtual ~AutomationShell() = default;
    virtual void LoadHostConfiguration() = 0;
    /// A tool in the Tools menu. Throws error_number::kKeyInUse.
    virtual void AddCommand(TextView name, TextView caption, int32_t shortcut) = 0;
    virtual void PrintText(mvDocument& document) = 0;
};

/// What clients are told without having asked.
class AutomationEvents {
public:
    virtual ~AutomationEvents() = default;
    /// What calls work on is there: those that came before may run, also while the user is asked something.
    virtual void Ready() {}
    virtual void Quit() = 0;
    virtual void Custom(TextView name) = 0;
    virtual void DocumentClose(int32_t documentId) = 0;
};

inline constexpr std::string_view kApplicationPath = "/com/orlin/NibPad71";
inline constexpr std::string_view kDocumentsPath = "/com/orlin/NibPad71/Documents";

ObjectPath PathOf(int32_t documentId);

/// Lives, in the clients' eyes, while a client or a document holds it.
class Application {
public:
    /// All outlive it. `endsByItself`: nobody but its clients started the program.
    Application(DocumentServices& services, AutomationShell& shell, AutomationEvents& events, bool endsByItself);
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    // Members
    void Activate();
    ObjectPath Documents() const { return {std::string(kDocumentsPath)}; }
    Text ServerName() const { return services_.place.now.ServerName; }
    Text Provider() const { return services_.place.now.Provider; }
    Text Database() const { return services_.place.now.Database; }
    Text Folder() const { return services_.place.now.Folder; }
    void SetServerName(TextView value) { Relocate(&Location::ServerName, value); }
    void SetProvider(TextView value) { Relocate(&Location::Provider, value); }
    void SetDatabase(TextView value) { Relocate(&Location::Database, value); }
    /// Without effect: the folder changes by opening and saving alone.
    void SetFolder(TextView) {}
    bool Visible() const { return services_.frame.Visible(); }
    void SetVisible(bool visible) { services_.frame.SetVisible(visible); }
    void ExtendedCommand(TextView name, TextView caption, int32_t shortcut);

    // Members of the collection
    ObjectPath Item(const BusValue& index) const;
    int32_t Count() const;
    /// "/" when no document could be made.
    ObjectPath AddNew();
    ObjectPaths NewEnum() const;

    std::shared_ptr<mvDocument> Document(int32_t documentId) const;
    AutomationShell& Shell() { return shell_; }
    /// A box or dialog waits for the user.
    bool IsModal() const { return services_.frame.IsModal(); }
    const DebugLog& Log() const { return services_.log; }

    // Life
    void Touch(const std::string& client);
    void Hold(const std::string& client);
    void Release(const std::string& client);
    void Left(const std::string& client);
    /// The bus has gone, and with it every client.
    void AllLeft();
    bool IsAlive() const { return alive_; }
    /// The program ends: clients are told to let go.
    void RaiseQuit();

private:
    void Relocate(Text Location::*part, TextView value);
    void DocumentAdded(mvDocument& document);
    void DocumentClosed(int32_t documentId);
    void Begin();
    /// False when it did not live.
    bool End(const std::function<void()>& last);
    void EndIfUnused();

    DocumentServices& services_;
    AutomationShell& shell_;
    AutomationEvents& events_;
    bool endsByItself_;
    bool alive_ = false;
    Holders holders_;
    std::set<int32_t> holdingDocuments_; ///< made while it was alive
};

} // namespace nib
