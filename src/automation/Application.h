#pragma once
// The root of the automation objects: lives, in the clients' eyes, while a client or a document holds it.

#include "automation/AutomationShell.h"
#include "automation/BusValue.h"
#include "automation/Holders.h"
#include "documents/DocumentServices.h"

#include <memory>
#include <optional>
#include <set>

namespace nib {

inline constexpr std::string_view kApplicationPath = "/com/orlin/NibPad71";
inline constexpr std::string_view kDocumentsPath = "/com/orlin/NibPad71/Documents";

ObjectPath PathOf(int32_t documentId);

class Application {
public:
    /// All outlive it. `endsByItself`: nobody but its clients started the program.
    Application(DocumentServices& services, AutomationShell& shell, AutomationEvents& events, bool endsByItself);
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    // Members
    void Activate() { shell_.ShowMainWindow(); }
    ObjectPath Documents() const { return {std::string(kDocumentsPath)}; }
    Text ServerName() const { return services_.location.ServerName; }
    Text Provider() const { return services_.location.Provider; }
    Text Database() const { return services_.location.Database; }
    Text Folder() const { return services_.location.Folder; }
    void SetServerName(TextView value) { Relocate(services_.location.ServerName, value); }
    void SetProvider(TextView value) { Relocate(services_.location.Provider, value); }
    void SetDatabase(TextView value) { Relocate(services_.location.Database, value); }
    /// Without effect: the folder changes by opening and saving alone.
    void SetFolder(TextView) {}
    bool Visible() const { return shell_.MainWindowVisible(); }
    void SetVisible(bool visible) { shell_.SetMainWindowVisible(visible); }
    void ExtendedCommand(TextView name, TextView caption, int32_t shortcut);

    // Members of the collection
    ObjectPath Item(const BusValue& index) const;
    int32_t Count() const;
    /// "/" when no document could be made.
    ObjectPath AddNew();
    ObjectPaths NewEnum() const;

    std::shared_ptr<mvDocument> Document(int32_t documentId) const;
    AutomationShell& Shell() { return shell_; }

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
    void Relocate(Text& part, TextView value);
    void DocumentAdded(mvDocument& document);
    void DocumentClosed(int32_t documentId);
    void Begin();
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
