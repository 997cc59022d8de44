#include "automation/Application.h"

#include "diagnostics/Guarded.h"
#include "documents/mvDocument.h"

#include <unistd.h>

#include <functional>
#include <thread>

namespace nib {

namespace {

Text ProcessAndThread()
{
    auto thread = static_cast<uint32_t>(std::hash<std::thread::id>{}(std::this_thread::get_id()));
    return u" process=" + Hex(getpid()) + u" thread=" + Hex(static_cast<int32_t>(thread));
}

[[noreturn]] void NoSuchDocument(const BusValue& index)
{
    if (std::holds_alternative<int32_t>(index)) throw Error{error_number::kSubscript, u"Subscript out of range"};
    throw Error{error_number::kInvalidCall, u"Invalid procedure call or argument"};
}

} // namespace

ObjectPath PathOf(int32_t documentId)
{
    return {std::string(kDocumentsPath) + "/" + std::to_string(documentId)};
}

Application::Application(DocumentServices& services, AutomationShell& shell, AutomationEvents& events,
                         bool endsByItself)
    : services_(services), shell_(shell), events_(events), endsByItself_(endsByItself)
{
    services_.openDocuments.Added = [this](mvDocument& document) { DocumentAdded(document); };
    for (auto& document : services_.openDocuments.All()) DocumentAdded(*document);
}

Application::~Application()
{
    services_.openDocuments.Added = nullptr;
    for (auto& document : services_.openDocuments.All()) document->DocumentClose = nullptr;
}

void Application::Relocate(Text Location::*part, TextView value)
{
    if (value.empty()) return;
    CurrentPlace& place = services_.place;
    place.now.*part = value;
    if (value != kFileProvider || part != &Location::Provider) place.host.*part = value;
    shell_.LoadHostConfiguration();
}

void Application::ExtendedCommand(TextView name, TextView caption, int32_t shortcut)
{
    if (name.empty()) throw Error{error_number::kInvalidCall, u"An extended command must have a name."};
    shell_.AddCommand(name, caption, shortcut);
}

// The collection

ObjectPath Application::Item(const BusValue& index) const
{
    const mvDocuments& documents = services_.openDocuments;
    std::shared_ptr<mvDocument> found;
    if (auto* position = std::get_if<int32_t>(&index)) found = documents.Item(*position);
    if (auto* key = std::get_if<Text>(&index)) {
        // The key is the exact text of the number: neither "01" nor "1 " is one.
        found = documents.ById(ToInt(*key));
        if (found && Decimal(found->DocumentID()) != *key) found = nullptr;
    }
    if (!found) NoSuchDocument(index);
    return PathOf(found->DocumentID());
}

int32_t Application::Count() const
{
    return services_.openDocuments.Count();
}

ObjectPath Application::AddNew()
{
    auto document = NewDocumentObject(services_);
    if (!document) return {"/"};
    if (auto failure = FailureOf([&] { document->FileNew(); })) {
        document->FileClose(false);
        throw Error(*failure);
    }
    return PathOf(document->DocumentID());
}

ObjectPaths Application::NewEnum() const
{
    ObjectPaths paths;
    for (auto& document : services_.openDocuments.All()) paths.push_back(PathOf(document->DocumentID()));
    return paths;
}

std::shared_ptr<mvDocument> Application::Document(int32_t documentId) const
{
    return services_.openDocuments.ById(documentId);
}

// Life

void Application::DocumentAdded(mvDocument& document)
{
    int32_t id = document.DocumentID();
    if (alive_) holdingDocuments_.insert(id);
    document.DocumentClose = [this, id] { DocumentClosed(id); };
}

void Application::Activate()
{
    services_.frame.SetVisible(true);
    services_.frame.ToForeground();
}

void Application::DocumentClosed(int32_t documentId)
{
    events_.DocumentClose(documentId);
    if (holdingDocuments_.erase(documentId) > 0) EndIfUnused();
}

void Application::Begin()
{
    if (std::exchange(alive_, true)) return;
    services_.log.Write([] { return u"application initialize begin:" + ProcessAndThread(); }, trace::kObjects);
    services_.frame.DisarmShutdownTimer();
    services_.log.Write(u"application initialize end", trace::kObjects);
}

bool Application::End(const std::function<void()>& last)
{
    if (!std::exchange(alive_, false)) return false;
    services_.log.Write([] { return u"application terminate begin:" + ProcessAndThread(); }, trace::kObjects);
    last();
    services_.log.Write(u"applicaiton terminate end", trace::kObjects); // as readers of the log know it
    return true;
}

void Application::EndIfUnused()
{
    if (!holders_.Empty() || !holdingDocuments_.empty()) return;
    const auto arm = [this] {
        if (endsByItself_ && Count() == 0) services_.frame.ArmShutdownTimer();
    };
    if (!End(arm)) arm();
}

void Application::Touch(const std::string& client)
{
    holders_.Touch(client);
    Begin();
}

void Application::Hold(const std::string& client)
{
    holders_.Hold(client);
    Begin();
}

void Application::Release(const std::string& client)
{
    holders_.Release(client);
    EndIfUnused();
}

void Application::Left(const std::string& client)
{
    if (holders_.Left(client)) EndIfUnused();
}

void Application::AllLeft()
{
    holders_.Clear();
    EndIfUnused();
}

void Application::RaiseQuit()
{
    End([this] { events_.Quit(); });
}

} // namespace nib
