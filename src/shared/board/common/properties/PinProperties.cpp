// Properties of a component pin: its I/O facts, its bank as "IOBANK." names,
// its interfaces as "PORT." names, and old names that read its port.
#include "HBOCPropertyInit.h"
#include "HBOModelPort.h"
#include "HBOPinProps.h"
#include "HBOPropertyRegistry.h"

using namespace HBOPropertyRegistry;

namespace HBOCPropertyInit {
namespace board_part_pin {

namespace {

typedef HBOPinProps N;

const char* const kPortsOf = " [get_board_interface_ports <port_name>]'";

// A property of the pin's port; empty without one.
template <class Get>
HCPProperty::Spec& addPortString(HCPProperty::ObjectInfo& info, const std::string& name, Get get) {
    return addString<N>(info, name,
                        [get](const N& n) { return n.getOwnerPort() ? get(*n.getOwnerPort()) : std::string(); });
}

std::string vectorBound(const HBOModelPort& port, bool left) {
    if (!port.isPortOfTypeVec())
        return std::string();
    int v = 0;
    if (left)
        port.getPortVecLeft(v);
    else
        port.getPortVecRight(v);
    return intText(v);
}

bool readDynamic(Tcl_Interp* interp, const tclany& value, const std::string& name, HATAttrAny& out) {
    const N* n = HCPProperty::Types::nativeOf<N*>(value);
    if (!n)
        return false;
    std::string key;
    if (hasPrefix(name, "IOBANK.", key)) {
        for (const auto& entry : n->getIOBankPropertyList())
            if (equalsNoCase(entry.first, key.c_str()))
                return publishStringResult(interp, n->getIOBankPropertyValue(key), out);
        return false;
    }
    if (hasPrefix(name, "PORT.", key) && n->getIntfPortMap().count(key))
        return publishStringResult(interp, n->getPortForInterface(key), out);
    return false;
}

void listDynamic(const tclany& value, HSTVector<HCPProperty::Types::PNameAndProp>& out) {
    const N* n = HCPProperty::Types::nativeOf<N*>(value);
    if (!n)
        return;
    for (const auto& entry : n->getIOBankPropertyList())
        out.emplace_back("IOBANK." + entry.first, HATAttr(entry.second));
    for (const auto& entry : n->getIntfPortMap())
        out.emplace_back("PORT." + entry.first, HATAttr(entry.second));
}

}  // namespace

void init() {
    HCPProperty::ObjectInfo info = objectInfo<N>();
    addClass(info, "board_part_pin");
    addString<N>(info, "name", [](const N& n) { return n.getName(); });
    addString<N>(info, "loc", [](const N& n) { return n.getPinLoc(); });
    for (const std::string& prop : HBOPinProps::getPortPropNames())
        // findPortProp, unlike getPortProp, leaves no empty entry behind on a pin that lacks the property.
        addString<N>(info, prop, [prop](const N& n) {
            const std::string* v = n.findPortProp(prop);
            return v ? *v : std::string();
        });
    addString<N>(info, "internal_vref", [](const N& n) { return n.getPinInternalVref(); });
    addString<N>(info, "pin_index", [](const N& n) { return intText(n.getPinIndex()); });
    addDefault(info, readDynamic, listDynamic, false);
    deprecate(addPortString(info, "bus_direction", [](const HBOModelPort& p) { return p.getPortDir(); }),
              (std::string("Use 'get_property DIRECTION") + kPortsOf).c_str());
    deprecate(addPortString(info, "bus_name", [](const HBOModelPort& p) { return p.getName(); }),
              (std::string("Use 'get_property NAME") + kPortsOf).c_str());
    deprecate(addPortString(info, "interface", [](const HBOModelPort& p) { return p.getOwnerBusIf(); }),
              "Use 'INTERFACES'");
    deprecate(addPortString(info, "logical_name", [](const HBOModelPort& p) { return p.getBusIfLogicalPortName(); }),
              (std::string("Use 'get_property LOGICAL_NAME") + kPortsOf).c_str());
    deprecate(addPortString(info, "bus_start", [](const HBOModelPort& p) { return vectorBound(p, true); }),
              (std::string("Use 'get_property LEFT") + kPortsOf).c_str());
    deprecate(addPortString(info, "bus_stop", [](const HBOModelPort& p) { return vectorBound(p, false); }),
              (std::string("Use 'get_property RIGHT") + kPortsOf).c_str());
    // Registered as a string, published as an integer.
    deprecate(addProperty<N>(info, "bus_width", HATAttrTypes::ATTR_STRING,
                             [](Tcl_Interp* interp, const N& n, const std::string&, HATAttrAny& out) {
                                 int width = 0;
                                 if (n.getOwnerPort())
                                     n.getOwnerPort()->getPortWidth(width);
                                 return publishIntResult(interp, width, out);
                             }),
              (std::string("Use 'get_property WIDTH") + kPortsOf).c_str());
}

void initV2Props() {
    HCPProperty::ObjectInfo info = objectInfo<N>();
    renameClass(info, "board_component_pin");
    addList<N>(info, "interfaces", [](const N& n) {
        HATStringList names;
        for (const auto& entry : n.getIntfPortMap())
            names.append(entry.first);
        return names;
    });
}

}  // namespace board_part_pin
}  // namespace HBOCPropertyInit
