// Properties of a board interface, listed in the order of registration, with
// its parameters as "PARAM." names and its port maps as "PORT." names.
#include "HBOBoardComponent.h"
#include "HBOBusIf.h"
#include "HBOBusIfPreference.h"
#include "HBOCPropertyInit.h"
#include "HBOPortMap.h"
#include "HBOPropertyRegistry.h"

using namespace HBOPropertyRegistry;

namespace HBOCPropertyInit {
namespace board_part_interface {

namespace {

typedef HBOBusIf I;

bool readDynamic(Tcl_Interp* interp, const tclany& value, const std::string& name, HATAttrAny& out) {
    const I* i = HCPProperty::Types::nativeOf<I*>(value);
    if (!i)
        return false;
    std::string key, found;
    bool ok = (hasPrefix(name, "PARAM.", key) && i->getParamValue(key, found)) ||
              (hasPrefix(name, "PORT.", key) && i->getPPortByLPort(key, found));
    if (!ok)
        return false;
    HATAttrUtils::setAny(out, found);
    HCPProperty::Utils::setAttrResult(interp, out);
    return true;
}

void listDynamic(const tclany& value, HSTVector<HCPProperty::Types::PNameAndProp>& out) {
    const I* i = HCPProperty::Types::nativeOf<I*>(value);
    if (!i)
        return;
    for (const auto& param : i->getParamList())
        out.emplace_back("PARAM." + param.first, HATAttr(param.second));
    for (const HBOPortMap* map : i->getPortMapSeq())
        if (map)
            out.emplace_back("PORT." + map->getLogicalPort(), HATAttr(map->getPhysicalPort()));
}

// One spec for every dynamic name, made on first use and kept for good.
const HATAttrSpec* dynamicSpec(const tclany&, const std::string&) {
    static HATAttrSpec* spec = nullptr;
    if (!spec) {
        spec = new HATAttrSpec;
        spec->setAttrType(HATAttrTypes::ATTR_STRING);
        spec->setReadOnly(true);
        spec->setVisible(true);
    }
    return spec;
}

}  // namespace

void init() {
    HCPProperty::ObjectInfo info = objectInfo<I>();
    info.setSortProperties(false);
    addClass(info, "board_part_interface");
    addString<I>(info, "name", [](const I& i) { return i.getName(); });
    addString<I>(info, "VLNV", [](const I& i) {
        std::string vlnv;
        i.getAbstractTypeVLNV(vlnv, ":");
        return vlnv;
    });
    deprecate(addString<I>(info, "PRESET_FILE", [](const I& i) { return i.getPresetFile(); }), "Use 'PRESETS'");
    addString<I>(info, "MODE", [](const I& i) { return i.getInterfaceMode(); });
    addString<I>(info, "vendor", [](const I& i) { return i.getAbstractTypeVendorName(); });
    addString<I>(info, "library", [](const I& i) { return i.getAbstractTypeLibraryName(); });
    addString<I>(info, "busdef_name", [](const I& i) { return i.getAbstractTypeName(); });
    addString<I>(info, "version", [](const I& i) { return i.getAbstractTypeVersion(); });
    addList<I>(info, "presets", [](const I& i) {
        const HBOBoardComponent* owner = i.getOwnerComponent();
        return presetList(i.getPresetProcName(), owner ? owner->getBoard() : nullptr);
    });
    addDefault(info, readDynamic, listDynamic, true).setGetDefaultAttrSpecFcn(dynamicSpec);
}

void initV2Props() {
    HCPProperty::ObjectInfo info = objectInfo<I>();
    info.setSortProperties(false);
    renameClass(info, "board_component_interface");
    addString<I>(info, "of_component", [](const I& i) { return i.getOfComponent(); });
    addString<I>(info, "description", [](const I& i) { return i.getDescription(); });
    addList<I>(info, "preferences", [](const I& i) {
        HATStringList names;
        for (const HBOBusIfPreference* p : i.getPreferences())
            if (p)
                names.append(p->getPrefName());
        return names;
    });
    addString<I>(info, "is_enabled", [](const I& i) { return i.getIsEnabled(); }).getAttrSpec().setVisible(false);
}

}  // namespace board_part_interface
}  // namespace HBOCPropertyInit
