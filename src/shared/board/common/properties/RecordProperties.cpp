// Properties of the small records: parameters, IP presets and IP preferences.
#include <cstdlib>
#include <map>

#include "HBOBusIfPreference.h"
#include "HBOCPropertyInit.h"
#include "HBOIpPreset.h"
#include "HBOParameter.h"
#include "HBOPropertyRegistry.h"

using namespace HBOPropertyRegistry;

namespace HBOCPropertyInit {

namespace board_parameter {
void init() {
    typedef HBOParameter P;
    HCPProperty::ObjectInfo info = objectInfo<P>();
    addClass(info, "board_parameter");
    addString<P>(info, "name", [](const P& p) { return p.getName(); });
    addString<P>(info, "value", [](const P& p) { return p.getValue(); });
    addString<P>(info, "value_type",
                 [](const P& p) { return p.getValueType().empty() ? std::string("string") : p.getValueType(); });
    addList<P>(info, "supported_values", [](const P& p) {
        std::vector<std::string> values;
        p.getSupportedValues(values);
        return toList(values);
    });
    addString<P>(info, "read_only", [](const P& p) { return p.getReadOnly(); });
}
}  // namespace board_parameter

namespace board_ip_preset {

namespace {

typedef HBOIpPreset R;

// The interfaces an association binds, ordered by the number each is filed
// under; a later name with the same number wins.
HATStringList boardInterfaces(const R& r) {
    std::map<int, std::string> byNumber;
    for (const auto& entry : r.getParamList())
        byNumber[std::atoi(entry.second.c_str())] = entry.first;
    HATStringList names;
    for (const auto& entry : byNumber)
        names.append(entry.second);
    return names;
}

// Parameter names are the dynamic names themselves: no prefix.
bool readDynamic(Tcl_Interp* interp, const tclany& value, const std::string& name, HATAttrAny& out) {
    const R* r = HCPProperty::Types::nativeOf<R*>(value);
    if (!r)
        return false;
    std::string found;
    if (r->getParamValue(name, found))
        return publishStringResult(interp, found, out);
    if (equalsNoCase(name, "BOARD_INTERFACES"))
        return publishListResult(interp, boardInterfaces(*r), out);
    return false;
}

void listDynamic(const tclany& value, HSTVector<HCPProperty::Types::PNameAndProp>& out) {
    const R* r = HCPProperty::Types::nativeOf<R*>(value);
    if (!r)
        return;
    if (r->isPreset()) {
        for (const auto& entry : r->getParamList())
            out.emplace_back(entry.first, HATAttr(entry.second));
    } else if (r->isAssocIntf()) {
        out.emplace_back("BOARD_INTERFACES", HATAttr(boardInterfaces(*r)));
    }
}

}  // namespace

void init() {
    HCPProperty::ObjectInfo info = objectInfo<R>();
    info.setSortProperties(false);
    addClass(info, "ip_configuration_info");
    addString<R>(info, "name", [](const R& r) { return r.getPresetName(); });
    addString<R>(info, "ip_name", [](const R& r) { return r.getName(); });
    addString<R>(info, "ip_vendor", [](const R& r) { return r.getVendor(); });
    addString<R>(info, "ip_library", [](const R& r) { return r.getLibrary(); });
    addString<R>(info, "ip_version", [](const R& r) { return r.getVersion(); });
    addString<R>(info, "ip_interface", [](const R& r) { return r.getIpInterface(); });
    addDefault(info, readDynamic, listDynamic, false);
}

}  // namespace board_ip_preset

namespace board_user_preference {
void init() {
    typedef HBOBusIfPreference U;
    HCPProperty::ObjectInfo info = objectInfo<U>();
    info.setSortProperties(false);
    addClass(info, "ip_preference");
    addString<U>(info, "ip_name", [](const U& u) { return u.getName(); });
    addString<U>(info, "ip_vendor", [](const U& u) { return u.getVendor(); });
    addString<U>(info, "ip_library", [](const U& u) { return u.getLibrary(); });
    addString<U>(info, "ip_version", [](const U& u) { return u.getVersion(); });
    addProperty<U>(info, "order", HATAttrTypes::ATTR_INT,
                   [](Tcl_Interp* interp, const U& u, const std::string&, HATAttrAny& out) {
                       return publishIntResult(interp, u.getOrder(), out);
                   });
}
}  // namespace board_user_preference

}  // namespace HBOCPropertyInit
