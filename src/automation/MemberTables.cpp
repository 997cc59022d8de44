#include "automation/MemberTables.h"

namespace nib {

namespace {

void Hold(const MemberCall& call)
{
    call.application.Hold(call.client);
}

void Release(const MemberCall& call)
{
    call.application.Release(call.client);
}

ObjectPath ApplicationOf(const MemberCall&)
{
    return {std::string(kApplicationPath)};
}

bool CloseAsking(const MemberCall& call)
{
    return call.document->FileClose(true);
}

void PrintText(const MemberCall& call)
{
    call.application.Shell().PrintText(*call.document);
}

void ActivateDocument(const MemberCall& call)
{
    call.application.Shell().ShowMainWindow();
    call.document->Activate();
}

constexpr Member kApplicationMembers[] = {
    Method<&Application::Activate>("Activate"),
    Property<&Application::Documents>("Documents"),
    Property<&Application::ServerName, &Application::SetServerName>("ServerName"),
    Property<&Application::Provider, &Application::SetProvider>("Provider"),
    Property<&Application::Database, &Application::SetDatabase>("Database"),
    Property<&Application::Folder, &Application::SetFolder>("Folder"),
    Property<&Application::Visible, &Application::SetVisible>("Visible"),
    Method<&Application::ExtendedCommand>("ExtendedCommand", "Name", "Caption", "Shortcut"),
    Method<&Hold>("Hold"),
    Method<&Release>("Release"),
    Signal("Quit"),
    Signal("Custom", MemberArgument{"Name", "s"}),
};

constexpr Member kDocumentsMembers[] = {
    Method<&Application::Item>("Item", "Index"),
    Method<&Application::Count>("Count"),
    Method<&Application::AddNew>("AddNew"),
    Method<&Application::NewEnum>("NewEnum"),
};

constexpr Member kDocumentMembers[] = {
    Property<&ApplicationOf>("Application"),
    Method<&mvDocument::FileNew>("FileNew").Waiting(),
    Method<&mvDocument::FileOpen>("FileOpen", "Path", "ReadOnly").Waiting(),
    Method<&mvDocument::FileSave>("FileSave").Waiting(),
    Method<&mvDocument::FileSaveAs>("FileSaveAs", "Path").Waiting(),
    // Some bindings keep one signature a name, the last that they read: that one can do more.
    Method<&CloseAsking>("FileClose").Waiting(),
    Method<&mvDocument::FileClose>("FileClose", "Prompt").Waiting(),
    Method<&PrintText>("PrintText").Waiting(),
    Method<&mvDocument::Compile>("Compile").Waiting(),
    Method<&mvDocument::Format>("Format"),
    Property<&mvDocument::ReadOnly>("ReadOnly"),
    Property<&mvDocument::NewItem>("NewItem"),
    Property<&mvDocument::IsDirty>("IsDirty"),
    Property<&mvDocument::Path>("Path"),
    Property<&mvDocument::Filename>("Filename"),
    Property<&mvDocument::ItemID>("ItemID"),
    Property<&mvDocument::LocalFile>("LocalFile"),
    Property<&mvDocument::Highlight, &mvDocument::SetHighlight>("Highlight"),
    Property<&mvDocument::GetText, &mvDocument::SetText>("Text"),
    Property<&mvDocument::SelText, &mvDocument::SetSelText>("SelText"),
    Method<&mvDocument::InsValue>("InsValue"),
    Method<&mvDocument::InsSubValue>("InsSubValue"),
    Method<&ActivateDocument>("Activate"),
    Method<&mvDocument::GotoLabel>("GotoLabel", "Target"),
    Method<&mvDocument::GotoLine>("GotoLine", "Line"),
    Property<&mvDocument::DisplayName>("DisplayName"),
    Signal("DocumentClose"),
};

constexpr BusInterface kApplication{"com.orlin.NibPad71.Application", kApplicationMembers};
constexpr BusInterface kDocuments{"com.orlin.NibPad71.mvDocuments", kDocumentsMembers};
constexpr BusInterface kDocument{"com.orlin.NibPad71.mvDocument", kDocumentMembers};

} // namespace

const BusInterface& ApplicationInterface()
{
    return kApplication;
}

const BusInterface& DocumentsInterface()
{
    return kDocuments;
}

const BusInterface& DocumentInterface()
{
    return kDocument;
}

} // namespace nib
