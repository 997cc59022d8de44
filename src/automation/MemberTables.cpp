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
    call.application.Activate();
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

namespace {

constexpr std::string_view kHead = "<!DOCTYPE node PUBLIC \"-//freedesktop//DTD D-BUS Object Introspection 1.0//EN\"\n"
                                   "\"http://www.freedesktop.org/standards/dbus/1.0/introspect.dtd\">\n<node>\n";

constexpr std::string_view kStandard = R"(  <interface name="org.freedesktop.DBus.Introspectable">
    <method name="Introspect"><arg name="xml_data" type="s" direction="out"/></method>
  </interface>
  <interface name="org.freedesktop.DBus.Peer">
    <method name="Ping"/>
    <method name="GetMachineId"><arg name="machine_uuid" type="s" direction="out"/></method>
  </interface>
  <interface name="org.freedesktop.DBus.Properties">
    <method name="Get">
      <arg name="interface_name" type="s" direction="in"/>
      <arg name="property_name" type="s" direction="in"/>
      <arg name="value" type="v" direction="out"/>
    </method>
    <method name="Set">
      <arg name="interface_name" type="s" direction="in"/>
      <arg name="property_name" type="s" direction="in"/>
      <arg name="value" type="v" direction="in"/>
    </method>
    <method name="GetAll">
      <arg name="interface_name" type="s" direction="in"/>
      <arg name="properties" type="a{sv}" direction="out"/>
    </method>
  </interface>
)";

std::string Argument(const MemberArgument& argument, const char* direction)
{
    std::string xml = "      <arg";
    if (*argument.name) xml += std::string(" name=\"") + argument.name + "\"";
    xml += std::string(" type=\"") + argument.type + "\"";
    if (*direction) xml += std::string(" direction=\"") + direction + "\"";
    return xml + "/>\n";
}

std::string PropertyXml(const Member& member)
{
    return std::string("    <property name=\"") + member.name + "\" type=\"" + member.result + "\" access=\"" +
           (member.put ? "readwrite" : "read") +
           "\">\n      <annotation name=\"org.freedesktop.DBus.Property.EmitsChangedSignal\" value=\"false\"/>\n"
           "    </property>\n";
}

std::string MemberXml(const Member& member)
{
    if (member.kind == MemberKind::Property) return PropertyXml(member);
    bool method = member.kind == MemberKind::Method;
    std::string tag = method ? "method" : "signal";
    std::string arguments;
    for (size_t i = 0; i < member.argumentCount; ++i) arguments += Argument(member.arguments[i], method ? "in" : "");
    if (*member.result) arguments += Argument({"", member.result}, "out");
    std::string open = "    <" + tag + " name=\"" + member.name + "\"";
    return arguments.empty() ? open + "/>\n" : open + ">\n" + arguments + "    </" + tag + ">\n";
}

} // namespace

std::string IntrospectionXml(const BusInterface* interface, const std::vector<std::string>& children)
{
    std::string xml(kHead);
    if (interface) {
        xml += std::string("  <interface name=\"") + interface->name + "\">\n";
        for (const Member& member : interface->members) xml += MemberXml(member);
        xml += "  </interface>\n";
    }
    xml += kStandard;
    for (const std::string& child : children) xml += "  <node name=\"" + child + "\"/>\n";
    return xml + "</node>\n";
}

} // namespace nib
