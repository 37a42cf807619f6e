// Properties of a board component; several read the board it stands on and
// survive from the time components were board parts.
#include "HBOBoard.h"
#include "HBOBoardComponent.h"
#include "HBOBoardUtils.h"
#include "HBOCPropertyInit.h"
#include "HBOComponentMode.h"
#include "HBOParameter.h"
#include "HBOPropertyRegistry.h"

using namespace HBOPropertyRegistry;

namespace HBOCPropertyInit {
namespace board_component {

namespace {

typedef HBOBoardComponent C;

const char* const kBoardOf = " [get_boards -of_objects <board_part object>]'";

// A property of the component's board; empty without one.
template <class Get>
HCPProperty::Spec& addBoardString(HCPProperty::ObjectInfo& info, const std::string& name, Get get) {
    return addString<C>(info, name, [get](const C& c) { return c.getBoard() ? get(*c.getBoard()) : std::string(); });
}

bool readDynamic(Tcl_Interp* interp, const tclany& value, const std::string& name, HATAttrAny& out) {
    const C* c = HCPProperty::Types::nativeOf<C*>(value);
    if (!c)
        return false;
    std::string key, found;
    if (HBOBoardUtils::isV2SchemaEnabled()) {
        if (hasPrefix(name, "PARAM.", key) && c->getParamValue(key, found))
            return publishStringResult(interp, found, out);
        if (hasPrefix(name, "JTAG_POSITION.", key)) {
            found = c->getJtagPosition(key);
            if (!found.empty())
                return publishStringResult(interp, found, out);
        }
    }
    const HBOBoard* b = c->getBoard();
    if (equalsNoCase(name, "SCHEMA_VERSION"))
        return publishStringResult(interp, b ? b->getBoardSchemaVersion() : std::string(), out);
    if (equalsNoCase(name, "MIGRATED_FROM_SCHEMA"))
        return publishStringResult(interp, b ? b->getMigratedFromSchema() : std::string(), out);
    return false;
}

void listDynamic(const tclany& value, HSTVector<HCPProperty::Types::PNameAndProp>& out) {
    const C* c = HCPProperty::Types::nativeOf<C*>(value);
    if (!c || !HBOBoardUtils::isV2SchemaEnabled())
        return;
    for (const HBOParameter* p : c->getParameters())
        if (p)
            out.emplace_back("PARAM." + p->getName(), HATAttr(p->getValue()));
    if (const HBOBoard* b = c->getBoard()) {
        const std::map<std::string, std::string>& positions = c->getJtagPositions();
        for (const std::string& chain : b->getJtagChains()) {
            auto it = positions.find(chain);
            out.emplace_back("JTAG_POSITION." + chain, HATAttr(it == positions.end() ? std::string() : it->second));
        }
    }
}

}  // namespace

void init() {
    HCPProperty::ObjectInfo info = objectInfo<C>();
    addClass(info, "board_part");
    addString<C>(info, "name", [](const C& c) { return c.getName(); });
    addString<C>(info, "part_name", [](const C& c) { return c.getPartName(); });
    addString<C>(info, "SPEC_URL", [](const C& c) { return c.getSpecUrl(); });
    deprecate(addString<C>(info, "jtag_position", [](const C& c) { return c.getJtagPosition(); }),
              "Use 'JTAG_POSITION.chain1'");
    addDefault(info, readDynamic, listDynamic, false);
    deprecate(addBoardString(info, "BOARD_NAME", [](const HBOBoard& b) { return b.getBoardName(); }),
              (std::string("Use 'get_property BOARD_NAME") + kBoardOf).c_str());
    deprecate(addBoardString(info, "vendor_name", [](const HBOBoard& b) { return b.getVendor(); }),
              (std::string("Use 'get_property VENDOR_NAME") + kBoardOf).c_str());
    deprecate(addBoardString(info, "BOARD_PART_FILE_VERSION", [](const HBOBoard& b) { return b.getVersion(); }),
              (std::string("Use 'get_property FILE_VERSION") + kBoardOf).c_str());
    deprecate(addBoardString(info, "BOARD_REVISION", [](const HBOBoard& b) { return b.getBoardRevision(); }),
              (std::string("Use 'get_property COMPATIBLE_BOARD_REVISIONS") + kBoardOf).c_str());
    addString<C>(info, "DISPLAY_NAME", [](const C& c) { return c.getDisplayName(); });
    addBoardString(info, "FILE_NAME", [](const HBOBoard& b) { return b.getBoardFile(); });
    deprecate(addBoardString(info, "REPOSITORY", [](const HBOBoard& b) { return b.getRepository(); }),
              (std::string("Use 'get_property REPOSITORY") + kBoardOf).c_str());
    addList<C>(info, "additionally_supported_part_names", [](const C& c) {
        std::vector<std::string> parts;
        if (c.getBoard())
            c.getBoard()->getAdditionalSupportedPartNames(parts, false);
        return toList(parts);
    });
}

void initV2Props() {
    HCPProperty::ObjectInfo info = objectInfo<C>();
    renameClass(info, "board_component");
    addString<C>(info, "component_name", [](const C& c) { return c.getComponentName(); });
    deprecate(addString<C>(info, "component_vendor", [](const C& c) { return c.getVendorName(); }),
              (std::string("Use 'get_property VENDOR_NAME") + kBoardOf).c_str());
    addString<C>(info, "type", [](const C& c) { return c.getType(); });
    addString<C>(info, "sub_type", [](const C& c) { return c.getSubType(); });
    addString<C>(info, "description", [](const C& c) { return c.getDescription(); });
    addList<C>(info, "configuration_modes", [](const C& c) {
        HATStringList modes;
        for (const HBOComponentMode* m : c.getComponentModes())
            if (m)
                modes.append(m->getName());
        return modes;
    });
    addString<C>(info, "is_enabled", [](const C& c) { return c.getIsEnabled(); }).getAttrSpec().setVisible(false);
    addSupportsCed<C>(info, [](const C& c) { return c.getBoard(); });
}

}  // namespace board_component
}  // namespace HBOCPropertyInit
