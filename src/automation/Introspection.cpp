#include "automation/Introspection.h"

namespace nib {

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
