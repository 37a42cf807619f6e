// Properties of an interface port, with its pins as "PIN.port[index]" names.
#include "HBOBusIf.h"
#include "HBOCPropertyInit.h"
#include "HBOModelPort.h"
#include "HBOPropertyRegistry.h"

using namespace HBOPropertyRegistry;

namespace HBOCPropertyInit {
namespace board_interface_port {

namespace {

typedef HBOModelPort P;

// An unknown bound reads as 0.
int boundOr0(bool known, int value) { return known ? value : 0; }

bool readDynamic(Tcl_Interp* interp, const tclany& value, const std::string& name, HATAttrAny& out) {
    const P* p = HCPProperty::Types::nativeOf<P*>(value);
    if (!p)
        return false;
    std::string rest;
    // The index stands between "[" and the last byte, whatever that byte is.
    if (!hasPrefix(name, ("PIN." + p->getName() + "[").c_str(), rest) || rest.empty())
        return false;
    return publishStringResult(interp, p->getPinPort(rest.substr(0, rest.size() - 1)), out);
}

void listDynamic(const tclany& value, HSTVector<HCPProperty::Types::PNameAndProp>& out) {
    const P* p = HCPProperty::Types::nativeOf<P*>(value);
    if (!p)
        return;
    for (const auto& entry : p->getPinPortMap())
        out.emplace_back("PIN." + p->getName() + "[" + entry.first + "]", HATAttr(entry.second));
}

}  // namespace

void init() {
    HCPProperty::ObjectInfo info = objectInfo<P>();
    addClass(info, "board_interface_port");
    addString<P>(info, "name", [](const P& p) { return p.getName(); });
    addString<P>(info, "direction", [](const P& p) { return p.getPortDir(); });
    addString<P>(info, "width", [](const P& p) {
        int width = 0;
        p.getPortWidth(width);
        return intText(width);
    });
    addString<P>(info, "left", [](const P& p) {
        int v = 0;
        bool known = p.getPortVecLeft(v);
        return intText(boundOr0(known, v));
    });
    addString<P>(info, "right", [](const P& p) {
        int v = 0;
        bool known = p.getPortVecRight(v);
        return intText(boundOr0(known, v));
    });
    addString<P>(info, "interface", [](const P& p) { return p.getOwner() ? p.getOwner()->getName() : std::string(); });
    addString<P>(info, "logical_name", [](const P& p) { return p.getBusIfLogicalPortName(); });
    addDefault(info, readDynamic, listDynamic, false);
}

}  // namespace board_interface_port
}  // namespace HBOCPropertyInit
