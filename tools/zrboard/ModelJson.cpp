#include "ModelJson.h"

#include <ostream>
#include <string>
#include <vector>

#include <boost/variant/get.hpp>

#include "HBOBoard.h"
#include "HBOBoardBus.h"
#include "HBOBoardBusNet.h"
#include "HBOBoardCompMuxPosition.h"
#include "HBOBoardComponent.h"
#include "HBOBoardComponentDriver.h"
#include "HBOBusIf.h"
#include "HBOBusIfPreference.h"
#include "HBOComponentMode.h"
#include "HBOImage.h"
#include "HBOIpPreset.h"
#include "HBOJumper.h"
#include "HBOModelPort.h"
#include "HBOParameter.h"
#include "HBOPinProps.h"
#include "HBOPortMap.h"
#include "HBOPowerRail.h"
#include "Json.h"
#include "ShowModel.h"

namespace zrboard {

namespace {

// Every key is written even when its value is empty, so that a consumer can
// rely on the shape of the document. Delays and voltages are floats in the
// model; the writer has no floating-point value, so they travel as their
// shortest decimal text ("0.42"), like every other number the board file
// gives as text.
class ModelJson {
public:
    explicit ModelJson(std::ostream& out) : m_json(out) {}

    void board(const HBOBoard& b);

private:
    void floatField(const std::string& k, double v) { m_json.field(k, v); }
    void stringMap(const std::string& k, const std::map<std::string, std::string>& map) {
        m_json.key(k).beginObject();
        for (const auto& kv : map)
            m_json.field(kv.first, kv.second);
        m_json.endObject();
    }
    void flagMap(const std::string& k, const std::map<std::string, bool>& map) {
        m_json.key(k).beginObject();
        for (const auto& kv : map)
            m_json.field(kv.first, kv.second);
        m_json.endObject();
    }
    void parameters(const std::vector<HBOParameter*>& params);
    void images(const std::vector<HBOImage*>& images);
    void preference(const HBOBusIfPreference& pref);
    void mode(const HBOComponentMode& mode);
    void port(const HBOBusIf& busIf, const HBOPortMap& map);
    void interface(const HBOBusIf& busIf);
    void pin(const HBOPinProps& pin);
    void component(const HBOBoardComponent& c);
    void connection(const HBOBoard& board, const HBOBoardBus& bus);
    void presetMap(const std::string& k, const HBOBoard::IpPresetMap& map);
    void powerRail(const HBOPowerRail& rail);
    void dataProps(const HBOBoardDataProps::PropMap& props);

    JsonWriter m_json;
};

void ModelJson::parameters(const std::vector<HBOParameter*>& params) {
    m_json.key("parameters").beginArray();
    for (const HBOParameter* p : params) {
        if (!p)
            continue;
        m_json.beginObject()
            .field("name", p->getName())
            .field("value", p->getValue())
            .field("value_type", p->getValueType())
            .field("value_min", p->getValueMin())
            .field("value_max", p->getValueMax())
            .field("read_only", p->getReadOnly())
            .endObject();
    }
    m_json.endArray();
}

void ModelJson::images(const std::vector<HBOImage*>& images) {
    m_json.key("images").beginArray();
    for (const HBOImage* i : images) {
        if (!i)
            continue;
        m_json.beginObject()
            .field("name", i->getName())
            .field("display_name", i->getDisplayName())
            .field("description", i->getDescription())
            .field("resolution", i->getResolution())
            .field("sub_type", i->getSubType())
            .endObject();
    }
    m_json.endArray();
}

void ModelJson::preference(const HBOBusIfPreference& pref) {
    m_json.beginObject()
        .field("vlnv", show::preferredIpVlnv(pref))
        .field("vendor", pref.getVendor())
        .field("library", pref.getLibrary())
        .field("name", pref.getName())
        .field("version", pref.getVersion())
        .field("order", pref.getOrder())
        .field("preset_proc", pref.getPresetProc())
        .field("preset_file", pref.getPresetFile())
        .field("major_group", pref.getMajorGroup())
        .field("minor_group", pref.getMinorGroup())
        .endObject();
}

void ModelJson::mode(const HBOComponentMode& mode) {
    m_json.beginObject()
        .field("name", mode.getName())
        .field("display_name", mode.getDisplayName())
        .field("description", mode.getDescription())
        .field("is_enabled", mode.getIsEnabled())
        .field("enablement_dependency", mode.getEnablementDependency())
        .field("preset_proc", mode.getPresetProcName());
    m_json.key("interfaces").beginArray();
    for (const auto& kv : mode.getInterfaces())
        m_json.beginObject()
            .field("order", kv.first)
            .field("name", kv.second.first)
            .field("optional", kv.second.second)
            .endObject();
    m_json.endArray();
    m_json.key("preferred_ips").beginArray();
    for (const HBOBusIfPreference* pref : mode.getPreferredIps())
        if (pref)
            preference(*pref);
    m_json.endArray().endObject();
}

void ModelJson::port(const HBOBusIf& busIf, const HBOPortMap& map) {
    m_json.beginObject()
        .field("logical_port", map.getLogicalPort())
        .field("physical_port", map.getPhysicalPort());
    const HBOModelPort* p = show::portOf(busIf, map.getPhysicalPort());
    m_json.key("port");
    if (!p) {
        m_json.null().endObject();
        return;
    }
    int width = 0, left = -1, right = -1;
    p->getPortWidth(width);
    p->getPortVecLeft(left);
    p->getPortVecRight(right);
    m_json.beginObject()
        .field("name", p->getName())
        .field("direction", p->getPortDir())
        .field("is_vector", p->isPortOfTypeVec())
        .field("left", left)
        .field("right", right)
        .field("width", width);
    m_json.key("pins").beginArray();
    for (const auto& kv : show::pinPortMapByIndex(*p))
        m_json.beginObject().field("index", kv.first).field("pin", kv.second).endObject();
    m_json.endArray();
    m_json.key("pin_props").beginArray();
    for (const HBOPinProps* pin : p->getPinPropsSeq())
        if (pin)
            m_json.beginObject().field("name", pin->getName()).field("site", pin->getPinLoc()).endObject();
    m_json.endArray();
    m_json.endObject().endObject();
}

void ModelJson::interface(const HBOBusIf& busIf) {
    m_json.beginObject()
        .field("name", busIf.getName())
        .field("display_name", busIf.getDisplayName())
        .field("description", busIf.getDescription())
        .field("type", show::interfaceType(busIf))
        .field("mode", busIf.getInterfaceMode())
        .field("of_component", busIf.getOfComponent())
        .field("preset_proc", busIf.getPresetProcName())
        .field("preset_file", busIf.getPresetFile())
        .field("is_enabled", busIf.getIsEnabled());
    stringMap("parameters", busIf.getParamList());
    flagMap("jumpers", busIf.getJumpers());
    flagMap("board_parameters", busIf.getParams());
    m_json.key("preferred_ips").beginArray();
    for (const HBOBusIfPreference* pref : busIf.getPreferences())
        if (pref)
            preference(*pref);
    m_json.endArray();
    m_json.key("preference");
    if (const HBOBusIfPreference* chosen = busIf.getPreference())
        preference(*chosen);
    else
        m_json.null();
    m_json.key("ports").beginArray();
    for (const HBOPortMap* map : busIf.getPortMapSeq())
        if (map)
            port(busIf, *map);
    m_json.endArray().endObject();
}

void ModelJson::pin(const HBOPinProps& pin) {
    m_json.beginObject()
        .field("index", pin.getPinIndex())
        .field("name", pin.getName())
        .field("site", pin.getPinLoc())
        .field("iostandard", show::portProp(pin, "iostandard"));
    m_json.key("properties").beginObject();
    for (const auto& kv : show::otherPortProps(pin))
        m_json.field(kv.first, kv.second);
    m_json.endObject();
    m_json.field("internal_vref", pin.getPinInternalVref()).field("gt_loc", pin.getGtLoc());
    stringMap("iobank", pin.getIOBankPropertyList());
    stringMap("interfaces", pin.getIntfPortMap());
    m_json.key("part_of").beginArray();
    for (const auto& group : pin.getPartOf()) {
        m_json.beginObject();
        for (const auto& kv : group)
            m_json.field(kv.first, kv.second);
        m_json.endObject();
    }
    m_json.endArray().endObject();
}

void ModelJson::component(const HBOBoardComponent& c) {
    m_json.beginObject()
        .field("component_name", c.getComponentName())
        .field("name", c.getName())
        .field("display_name", c.getDisplayName())
        .field("description", c.getDescription())
        .field("long_description", c.getLongDesc())
        .field("type", c.getType())
        .field("sub_type", c.getSubType())
        .field("major_group", c.getMajorGroup())
        .field("part_name", c.getPartName())
        .field("vendor", c.getVendor())
        .field("pin_file", c.getPinMapFile())
        .field("connected_to", c.getConnectedToLogicStr())
        .field("spec_url", c.getSpecUrl())
        .field("image_file", c.getImageFile())
        .field("is_enabled", c.getIsEnabled());
    std::vector<std::string> parts;
    c.getAdditionalSupportedPartNames(parts, false);
    m_json.key("additional_parts").strings(parts);
    stringMap("jtag_positions", c.getJtagPositions());
    parameters(c.getParameters());
    images(c.getImages());

    m_json.key("iic_positions").beginArray();
    for (const auto& kv : c.getIICPositions()) {
        if (!kv.second)
            continue;
        m_json.beginObject().field("position", kv.second->getPosition()).field("component", kv.second->getComponent());
        m_json.key("addresses").beginArray();
        for (const auto& a : kv.second->getAddresses())
            m_json.beginArray().value(a.first).value(a.second).endArray();
        m_json.endArray().endObject();
    }
    m_json.endArray();

    m_json.key("design_constraints").beginArray();
    for (const auto& constr : c.getDesignConstrs()) {
        m_json.beginObject();
        if (const auto* dci = boost::get<HBOBoardComponent::DciCascadeConstr>(&constr)) {
            m_json.field("kind", "dci_cascade").field("master_bank", dci->masterBank);
            m_json.key("slave_banks").beginArray();
            for (int b : dci->slaveBanks)
                m_json.value(b);
            m_json.endArray();
        } else if (const auto* vref = boost::get<HBOBoardComponent::InternalVrefConstr>(&constr)) {
            m_json.field("kind", "internal_vref").field("bank", vref->bank);
            floatField("voltage", vref->voltage);
        }
        m_json.endObject();
    }
    m_json.endArray();

    m_json.key("drivers").beginArray();
    for (const HBOBoardComponentDriver* d : c.getDrivers()) {
        if (!d)
            continue;
        m_json.beginObject()
            .field("name", d->getName())
            .field("version", d->getVersion())
            .field("vendor", d->getVendor())
            .field("pre_compiled", d->getPreCompiled())
            .field("description", d->getDescription())
            .field("path", d->getDriverPath());
        m_json.key("os").strings(d->getOs());
        m_json.key("platforms").strings(d->getPlatform());
        m_json.key("processor_architectures").strings(d->getProcessorArchitecture());
        stringMap("files", d->getFiles());
        m_json.endObject();
    }
    m_json.endArray();

    m_json.key("modes").beginArray();
    for (const HBOComponentMode* m : c.getComponentModes())
        if (m)
            mode(*m);
    m_json.endArray();
    m_json.key("interfaces").beginArray();
    for (const auto& kv : c.getBusIfMap())
        if (kv.second)
            interface(*kv.second);
    m_json.endArray();
    m_json.key("pins").beginArray();
    for (const HBOPinProps* p : show::pinsByIndex(c))
        pin(*p);
    m_json.endArray().endObject();
}

void ModelJson::connection(const HBOBoard& board, const HBOBoardBus& bus) {
    m_json.beginObject()
        .field("name", bus.getName())
        .field("connection_name", bus.getConnectionName())
        .field("component1", bus.getComp1())
        .field("component2", bus.getComp2())
        .field("c1_start", bus.getStartIndexComp1())
        .field("c1_end", bus.getStopIndexComp1())
        .field("c2_start", bus.getStartIndexComp2())
        .field("c2_end", bus.getStopIndexComp2());
    floatField("delay", bus.getDelay());
    floatField("min_delay", bus.getMinDelay());
    floatField("max_delay", bus.getMaxDelay());
    m_json.field("is_enabled", bus.getIsEnabled()).field("enablement_dependency", bus.getEnablementDependency());
    m_json.key("nets").beginArray();
    for (const HBOBoardBusNet* net : bus.getBoardBusNets()) {
        if (!net)
            continue;
        m_json.beginObject()
            .field("name", net->getName())
            .field("c1_pin_index", net->getC1PinIndex())
            .field("c1_pin", show::pinNameAt(board, bus.getComp1(), net->getC1PinIndex()))
            .field("c2_pin_index", net->getC2PinIndex())
            .field("c2_pin", show::pinNameAt(board, bus.getComp2(), net->getC2PinIndex()));
        floatField("typical_delay", net->getTypicalDelay());
        floatField("min_delay", net->getMinDelay());
        floatField("max_delay", net->getMaxDelay());
        m_json.field("is_enabled", net->getIsEnabled())
            .field("enablement_dependency", net->getEnablementDependency())
            .endObject();
    }
    m_json.endArray().endObject();
}

void ModelJson::presetMap(const std::string& k, const HBOBoard::IpPresetMap& map) {
    m_json.key(k).beginObject();
    for (const auto& kv : map) {
        m_json.key(kv.first).beginArray();
        for (const HBOIpPreset* p : kv.second) {
            if (!p)
                continue;
            m_json.beginObject()
                .field("vendor", p->getVendor())
                .field("library", p->getLibrary())
                .field("name", p->getName())
                .field("version", p->getVersion())
                .field("preset_proc", p->getPresetProcName())
                .field("preset_name", p->getPresetName())
                .field("ip_interface", p->getIpInterface())
                .field("kind", p->getPresetorAssocIntf())
                .field("value_type", p->getValueType());
            stringMap("parameters", p->getParamList());
            m_json.endObject();
        }
        m_json.endArray();
    }
    m_json.endObject();
}

void ModelJson::powerRail(const HBOPowerRail& rail) {
    m_json.beginObject()
        .field("name", rail.getName())
        .field("is_direct", rail.isDirect())
        .field("num_phases", rail.getNumPhases());
    m_json.key("supplies").strings(rail.getSupplyNames());
    m_json.key("rails").strings(rail.getRailNames());
    m_json.key("member_phases").beginObject();
    for (const auto& kv : rail.getMemberPhases())
        m_json.field(kv.first, kv.second);
    m_json.endObject().endObject();
}

void ModelJson::dataProps(const HBOBoardDataProps::PropMap& props) {
    m_json.beginObject();
    for (const auto& kv : props) {
        const show::DataPropValue v = show::dataPropValue(kv.second);
        m_json.key(kv.first);
        if (v.isGroup)
            dataProps(*v.group);
        else if (v.known)
            m_json.value(v.text);
        else
            m_json.null();
    }
    m_json.endObject();
}

void ModelJson::board(const HBOBoard& b) {
    m_json.beginObject()
        .field("name", b.getName())
        .field("vendor", b.getVendor())
        .field("board_name", b.getBoardName())
        .field("version", b.getVersion())
        .field("display_name", b.getDisplayName())
        .field("schema_version", b.getBoardSchemaVersion())
        .field("migrated_from_schema", b.getMigratedFromSchema())
        .field("file", b.getBoardFile())
        .field("file_revision", b.getFileRevision())
        .field("board_revision", b.getBoardRevision())
        .field("description", b.getDescription())
        .field("long_description", b.getLongDesc())
        .field("url", b.getSpecUrl())
        .field("preset_file", b.getPresetFile())
        .field("board_image", b.getBoardImage())
        .field("change_log", b.getChangeLogFilename());
    const HBOBoardComponent* active = b.getActivePart();
    m_json.field("active_part", active ? active->getComponentName() : std::string());
    m_json.field("supports_ced", b.getSupportsCED());
    if (b.isIntegratedBoard()) {
        const HBOBoard* base = b.getBaseBoard();
        m_json.key("integrated").beginObject().field("base_board", base ? base->getName() : std::string());
        m_json.key("connections").beginArray();
        for (const HBOBoard::IntegratedConnection& c : b.getIntegratedBoardConnections())
            m_json.beginObject()
                .field("base_connector", c.get<0>())
                .field("daughter_board", c.get<1>() ? c.get<1>()->getName() : std::string())
                .field("daughter_connector", c.get<2>())
                .endObject();
        m_json.endArray().endObject();
    }

    m_json.key("revisions").beginArray();
    for (const auto& kv : b.getCompatibleBoardRevisions())
        m_json.beginObject().field("id", kv.first).field("name", kv.second).endObject();
    m_json.endArray();
    m_json.key("jtag_chains").strings(b.getJtagChains());

    parameters(b.getParameters());
    m_json.key("jumpers").beginArray();
    for (const HBOJumper* j : b.getJumpers())
        if (j)
            m_json.beginObject()
                .field("name", j->getName())
                .field("default_value", j->getDefaultValue())
                .field("description", j->getDescription())
                .endObject();
    m_json.endArray();

    m_json.key("components").beginArray();
    for (const auto& kv : b.getBoardComponents())
        if (kv.second)
            component(*kv.second);
    m_json.endArray();

    m_json.key("connections").beginArray();
    for (const HBOBoardBus* bus : b.getBuses())
        if (bus)
            connection(b, *bus);
    m_json.endArray();

    presetMap("presets", b.getIpPresets());
    presetMap("ip_associated_rules", b.getIpAssociatedInterfaces());

    m_json.key("power_rails").beginArray();
    for (const HBOPowerRail& rail : b.getPowerRails())
        powerRail(rail);
    m_json.endArray();

    m_json.key("data_properties");
    dataProps(b.getBoardDataProps().getAllData());
    images(b.getImages());
    m_json.endObject();
}

}  // namespace

void writeBoardJson(std::ostream& out, const HBOBoard& board) {
    ModelJson(out).board(board);
}

}  // namespace zrboard
