#include "ShowOutline.h"

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
#include "HBOBoardUtils.h"
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
#include "ShowModel.h"

namespace zrboard {

namespace {

using show::formatFloat;

const char* yesNo(bool b) { return b ? "yes" : "no"; }

// Two blanks per level; a field with an empty value is left out, so that a
// half-filled board shows what it has and no noise.
class Outline {
public:
    explicit Outline(std::ostream& out) : m_out(out) {}

    void line(int depth, const std::string& text) { m_out << std::string(2 * depth, ' ') << text << "\n"; }
    void field(int depth, const std::string& label, const std::string& value) {
        if (!value.empty())
            line(depth, label + ": " + value);
    }
    // "Title (n):" above the items, or "Title: none".
    bool section(int depth, const std::string& title, std::size_t count) {
        line(depth, count ? title + " (" + std::to_string(count) + "):" : title + ": none");
        return count != 0;
    }

private:
    std::ostream& m_out;
};

std::string parameterLine(const HBOParameter& p) {
    std::string text = p.getName() + " = " + p.getValue();
    std::vector<std::string> notes;
    if (!p.getValueType().empty())
        notes.push_back("type " + p.getValueType());
    if (!p.getValueMin().empty() || !p.getValueMax().empty())
        notes.push_back("range " + p.getValueMin() + ".." + p.getValueMax());
    if (!p.getReadOnly().empty())
        notes.push_back("read only " + p.getReadOnly());
    if (!notes.empty())
        text += " (" + HBOBoardUtils::join(notes, ", ") + ")";
    return text;
}

void writeParameters(Outline& o, int depth, const std::vector<HBOParameter*>& params) {
    if (o.section(depth, "Parameters", params.size()))
        for (const HBOParameter* p : params)
            if (p)
                o.line(depth + 1, parameterLine(*p));
}

std::string preferredIpLine(const HBOBusIfPreference& pref, bool isDefault) {
    std::string text = show::preferredIpVlnv(pref) + " (order " + std::to_string(pref.getOrder());
    if (!pref.getPresetProc().empty())
        text += ", preset proc " + pref.getPresetProc();
    if (!pref.getPresetFile().empty())
        text += ", preset file " + pref.getPresetFile();
    if (isDefault)
        text += ", default";
    return text + ")";
}

void writeImages(Outline& o, int depth, const std::vector<HBOImage*>& images) {
    if (!o.section(depth, "Images", images.size()))
        return;
    for (const HBOImage* image : images) {
        if (!image)
            continue;
        std::vector<std::string> notes;
        if (!image->getSubType().empty())
            notes.push_back(image->getSubType());
        if (!image->getResolution().empty())
            notes.push_back(image->getResolution() + " resolution");
        std::string text = image->getName();
        if (!notes.empty())
            text += " (" + HBOBoardUtils::join(notes, ", ") + ")";
        if (!image->getDisplayName().empty())
            text += ": " + image->getDisplayName();
        o.line(depth + 1, text);
        o.field(depth + 2, "Description", image->getDescription());
    }
}

void writeMode(Outline& o, int depth, const HBOComponentMode& mode) {
    std::string head = mode.getName();
    if (!mode.getDisplayName().empty())
        head += " (" + mode.getDisplayName() + ")";
    o.line(depth, head + ", enabled " + mode.getIsEnabled());
    o.field(depth + 1, "Description", mode.getDescription());
    o.field(depth + 1, "Preset proc", mode.getPresetProcName());
    o.field(depth + 1, "Depends on", mode.getEnablementDependency());
    std::vector<std::string> intfs;
    for (const auto& kv : mode.getInterfaces())
        intfs.push_back(std::to_string(kv.first) + " " + kv.second.first + (kv.second.second ? " (optional)" : ""));
    o.field(depth + 1, "Interfaces", HBOBoardUtils::join(intfs, ", "));
    if (!mode.getPreferredIps().empty() && o.section(depth + 1, "Preferred IPs", mode.getPreferredIps().size()))
        for (const HBOBusIfPreference* pref : mode.getPreferredIps())
            if (pref)
                o.line(depth + 2, preferredIpLine(*pref, false));
}

void writePort(Outline& o, int depth, const HBOBusIf& busIf, const HBOPortMap& map) {
    std::string text = map.getLogicalPort() + " -> " + map.getPhysicalPort();
    const HBOModelPort* port = show::portOf(busIf, map.getPhysicalPort());
    if (!port) {
        o.line(depth, text + " (no such port)");
        return;
    }
    text += show::portRange(*port);
    if (!port->getPortDir().empty())
        text += " (" + port->getPortDir() + ")";
    std::vector<std::string> pins;
    for (const auto& kv : show::pinPortMapByIndex(*port))
        pins.push_back(kv.first + "=" + kv.second);
    // A schema 1 port lists its pins itself.
    if (pins.empty())
        for (const HBOPinProps* pin : port->getPinPropsSeq())
            if (pin)
                pins.push_back(pin->getName() + (pin->hasPinLoc() ? "@" + pin->getPinLoc() : ""));
    if (!pins.empty())
        text += ": " + HBOBoardUtils::join(pins, " ");
    o.line(depth, text);
}

std::string flagList(const std::map<std::string, bool>& flags) {
    std::vector<std::string> items;
    for (const auto& kv : flags)
        items.push_back(kv.first + "=" + (kv.second ? "true" : "false"));
    return HBOBoardUtils::join(items, ", ");
}

void writeInterface(Outline& o, int depth, const HBOBusIf& busIf) {
    std::string head = busIf.getName() + ": " + show::interfaceType(busIf);
    if (!busIf.getInterfaceMode().empty())
        head += ", mode " + busIf.getInterfaceMode();
    o.line(depth, head + ", enabled " + busIf.getIsEnabled());
    o.field(depth + 1, "Display name", busIf.getDisplayName());
    o.field(depth + 1, "Description", busIf.getDescription());
    o.field(depth + 1, "Of component", busIf.getOfComponent());
    o.field(depth + 1, "Preset proc", busIf.getPresetProcName());
    o.field(depth + 1, "Preset file", busIf.getPresetFile());
    std::vector<std::string> params;
    for (const auto& kv : busIf.getParamList())
        params.push_back(kv.first + "=" + kv.second);
    o.field(depth + 1, "Parameters", HBOBoardUtils::join(params, ", "));
    o.field(depth + 1, "Needs jumpers", flagList(busIf.getJumpers()));
    o.field(depth + 1, "Needs board parameters", flagList(busIf.getParams()));
    const HBOBusIfPreference* chosen = busIf.getPreference();
    bool chosenListed = false;
    std::vector<const HBOBusIfPreference*> prefs;
    for (const HBOBusIfPreference* pref : busIf.getPreferences()) {
        if (pref) {
            prefs.push_back(pref);
            chosenListed = chosenListed || pref == chosen;
        }
    }
    // A preference from the preferences file is not among the board's own.
    if (chosen && !chosenListed)
        prefs.push_back(chosen);
    if (!prefs.empty()) {
        o.section(depth + 1, "Preferred IPs", prefs.size());
        for (const HBOBusIfPreference* pref : prefs)
            o.line(depth + 2, preferredIpLine(*pref, pref == chosen));
    }
    if (o.section(depth + 1, "Ports", busIf.getPortMapSeq().size()))
        for (const HBOPortMap* map : busIf.getPortMapSeq())
            if (map)
                writePort(o, depth + 2, busIf, *map);
}

std::string pinLine(const HBOPinProps& pin) {
    std::string text = std::to_string(pin.getPinIndex()) + " " + pin.getName();
    std::vector<std::string> props;
    if (pin.hasPinLoc())
        props.push_back("site " + pin.getPinLoc());
    const std::string iostd = show::portProp(pin, "iostandard");
    if (!iostd.empty())
        props.push_back("iostandard " + iostd);
    for (const auto& kv : show::otherPortProps(pin))
        props.push_back(kv.first + " " + kv.second);
    if (!pin.getPinInternalVref().empty())
        props.push_back("internal vref " + pin.getPinInternalVref());
    if (!pin.getGtLoc().empty())
        props.push_back("gt loc " + pin.getGtLoc());
    for (const auto& kv : pin.getIOBankPropertyList())
        props.push_back("iobank." + kv.first + " " + kv.second);
    for (const auto& kv : pin.getIntfPortMap())
        props.push_back("used by " + kv.first + "[" + kv.second + "]");
    if (!props.empty())
        text += ": " + HBOBoardUtils::join(props, ", ");
    return text;
}

struct ConstraintLine : boost::static_visitor<std::string> {
    std::string operator()(const HBOBoardComponent::DciCascadeConstr& c) const {
        std::vector<std::string> slaves;
        for (int b : c.slaveBanks)
            slaves.push_back(std::to_string(b));
        return "DCI cascade: master bank " + std::to_string(c.masterBank) + ", slave banks " +
               HBOBoardUtils::join(slaves, " ");
    }
    std::string operator()(const HBOBoardComponent::InternalVrefConstr& c) const {
        return "internal Vref: bank " + std::to_string(c.bank) + ", " + formatFloat(c.voltage) + " V";
    }
};

void writeComponentDetails(Outline& o, int depth, const HBOBoard& board, const HBOBoardComponent& c) {
    o.field(depth, "Name", c.getName());
    o.field(depth, "Display name", c.getDisplayName());
    o.field(depth, "Description", c.getDescription());
    // The reader hands the board's long description down to every component;
    // repeating it under each one would drown the outline.
    if (c.getLongDesc() != board.getLongDesc())
        o.field(depth, "Long description", c.getLongDesc());
    o.field(depth, "Sub type", c.getSubType());
    o.field(depth, "Major group", c.getMajorGroup());
    o.field(depth, "Vendor", c.getVendor());
    o.field(depth, "Pin file", c.getPinMapFile());
    o.field(depth, "Connected to", c.getConnectedToLogicStr());
    o.field(depth, "URL", c.getSpecUrl());
    o.field(depth, "Image file", c.getImageFile());
    std::vector<std::string> parts;
    c.getAdditionalSupportedPartNames(parts, false);
    o.field(depth, "Additional parts", HBOBoardUtils::join(parts, ", "));
    std::vector<std::string> jtag;
    for (const auto& kv : c.getJtagPositions())
        jtag.push_back(kv.first + " at " + kv.second);
    o.field(depth, "Jtag positions", HBOBoardUtils::join(jtag, ", "));
    for (const auto& kv : c.getIICPositions()) {
        if (!kv.second)
            continue;
        const std::string addresses = show::iicAddresses(*kv.second);
        o.line(depth, "IIC position " + std::to_string(kv.second->getPosition()) + ": " +
                          kv.second->getComponent() + (addresses.empty() ? "" : ", addresses " + addresses));
    }
    for (const auto& constr : c.getDesignConstrs())
        o.line(depth, "Constraint " + boost::apply_visitor(ConstraintLine(), constr));
    for (const HBOBoardComponentDriver* d : c.getDrivers()) {
        if (!d)
            continue;
        o.line(depth, "Driver " + d->getName() + (d->getVersion().empty() ? "" : " " + d->getVersion()) +
                          (d->getVendor().empty() ? "" : " by " + d->getVendor()));
        o.field(depth + 1, "Description", d->getDescription());
        o.field(depth + 1, "Pre-compiled", d->getPreCompiled());
        o.field(depth + 1, "OS", HBOBoardUtils::join(d->getOs(), ", "));
        o.field(depth + 1, "Platforms", HBOBoardUtils::join(d->getPlatform(), ", "));
        o.field(depth + 1, "Processor architectures", HBOBoardUtils::join(d->getProcessorArchitecture(), ", "));
        o.field(depth + 1, "Path", d->getDriverPath());
        for (const auto& kv : d->getFiles())
            o.line(depth + 1, "File " + kv.first + ": " + kv.second);
    }
}

// Sections a component lacks are left out: most components have no pins or
// interfaces of their own, and "none" under each would only add noise.
void writeComponent(Outline& o, int depth, const HBOBoard& board, const HBOBoardComponent& c) {
    std::string head = c.getComponentName() + ": " + (c.getType().empty() ? "?" : c.getType());
    if (!c.getPartName().empty())
        head += ", part " + c.getPartName();
    o.line(depth, head + ", enabled " + c.getIsEnabled());
    writeComponentDetails(o, depth + 1, board, c);
    if (!c.getParameters().empty())
        writeParameters(o, depth + 1, c.getParameters());
    if (!c.getImages().empty())
        writeImages(o, depth + 1, c.getImages());
    if (!c.getComponentModes().empty() && o.section(depth + 1, "Modes", c.getComponentModes().size()))
        for (const HBOComponentMode* mode : c.getComponentModes())
            if (mode)
                writeMode(o, depth + 2, *mode);
    if (!c.getBusIfMap().empty() && o.section(depth + 1, "Interfaces", c.getBusIfMap().size()))
        for (const auto& kv : c.getBusIfMap())
            if (kv.second)
                writeInterface(o, depth + 2, *kv.second);
    const std::vector<const HBOPinProps*> pins = show::pinsByIndex(c);
    if (!pins.empty() && o.section(depth + 1, "Pins", pins.size()))
        for (const HBOPinProps* pin : pins)
            o.line(depth + 2, pinLine(*pin));
}

std::string delayText(float delay, float minDelay, float maxDelay) {
    if (delay == 0.0f && minDelay == 0.0f && maxDelay == 0.0f)
        return "";
    return formatFloat(delay) + " (min " + formatFloat(minDelay) + ", max " + formatFloat(maxDelay) + ")";
}

std::string netEnd(const HBOBoard& board, const std::string& component, int index) {
    const std::string pin = show::pinNameAt(board, component, index);
    return component + " " + std::to_string(index) + (pin.empty() ? "" : " (" + pin + ")");
}

void writeConnection(Outline& o, int depth, const HBOBoard& board, const HBOBoardBus& bus) {
    std::string head = bus.getName();
    if (!bus.getConnectionName().empty() && bus.getConnectionName() != bus.getName())
        head += " (connection " + bus.getConnectionName() + ")";
    head += ": " + bus.getComp1() + "[" + std::to_string(bus.getStartIndexComp1()) + ".." +
            std::to_string(bus.getStopIndexComp1()) + "] - " + bus.getComp2() + "[" +
            std::to_string(bus.getStartIndexComp2()) + ".." + std::to_string(bus.getStopIndexComp2()) + "]";
    o.line(depth, head + ", enabled " + bus.getIsEnabled());
    o.field(depth + 1, "Depends on", bus.getEnablementDependency());
    o.field(depth + 1, "Delay", delayText(bus.getDelay(), bus.getMinDelay(), bus.getMaxDelay()));
    if (!o.section(depth + 1, "Nets", bus.getBoardBusNets().size()))
        return;
    for (const HBOBoardBusNet* net : bus.getBoardBusNets()) {
        if (!net)
            continue;
        std::string text = net->getName() + ": " + netEnd(board, bus.getComp1(), net->getC1PinIndex()) + " - " +
                           netEnd(board, bus.getComp2(), net->getC2PinIndex()) + ", enabled " + net->getIsEnabled();
        const std::string delay = delayText(net->getTypicalDelay(), net->getMinDelay(), net->getMaxDelay());
        if (!delay.empty())
            text += ", delay " + delay;
        o.line(depth + 2, text);
    }
}

void writePresetMap(Outline& o, int depth, const std::string& title, const HBOBoard::IpPresetMap& map) {
    if (!o.section(depth, title, map.size()))
        return;
    for (const auto& kv : map) {
        o.line(depth + 1, kv.first + ":");
        for (const HBOIpPreset* p : kv.second) {
            if (!p)
                continue;
            std::string text = p->getVendor() + ":" + p->getLibrary() + ":" + p->getName() + ":" + p->getVersion();
            std::vector<std::string> notes;
            if (!p->getPresetName().empty())
                notes.push_back("preset " + p->getPresetName());
            if (!p->getIpInterface().empty())
                notes.push_back("IP interface " + p->getIpInterface());
            if (!p->getValueType().empty())
                notes.push_back("value type " + p->getValueType());
            if (!notes.empty())
                text += " (" + HBOBoardUtils::join(notes, ", ") + ")";
            o.line(depth + 2, text);
            for (const auto& param : p->getParamList())
                o.line(depth + 3, param.first + " = " + param.second);
        }
    }
}

std::string phaseCount(int n) { return std::to_string(n) + (n == 1 ? " phase" : " phases"); }

void writePowerRail(Outline& o, int depth, const HBOPowerRail& rail) {
    std::vector<std::string> notes;
    if (rail.isDirect())
        notes.push_back("direct");
    if (rail.isPhasedRail())
        notes.push_back(phaseCount(rail.getNumPhases()));
    o.line(depth, rail.getName() + (notes.empty() ? "" : " (" + HBOBoardUtils::join(notes, ", ") + ")"));
    for (const std::string& member : rail.getMemberNames()) {
        std::string text = (rail.isSupply(member) ? "supply " : "rail ") + member;
        const auto& phases = rail.getMemberPhases();
        auto it = phases.find(member);
        if (it != phases.end())
            text += ", " + phaseCount(it->second);
        o.line(depth + 1, text);
    }
}

void writeDataProps(Outline& o, int depth, const HBOBoardDataProps::PropMap& props) {
    for (const auto& kv : props) {
        const show::DataPropValue v = show::dataPropValue(kv.second);
        if (v.isGroup) {
            o.line(depth, kv.first + ":");
            writeDataProps(o, depth + 1, *v.group);
        } else {
            o.line(depth, kv.first + " = " + (v.known ? v.text : "<value of type " + v.text + ">"));
        }
    }
}

void writeIdentity(Outline& o, const HBOBoard& board) {
    o.line(0, "Board " + board.getName());
    o.line(1, "Vendor: " + board.getVendor());
    o.line(1, "Board name: " + board.getBoardName());
    o.line(1, "Version: " + board.getVersion());
    o.field(1, "Display name", board.getDisplayName());
    o.line(1, "Schema version: " + board.getBoardSchemaVersion());
    o.field(1, "Migrated from schema", board.getMigratedFromSchema());
    o.field(1, "File", board.getBoardFile());
    o.field(1, "File revision", board.getFileRevision());
    std::vector<std::string> revisions;
    for (const auto& kv : board.getCompatibleBoardRevisions())
        revisions.push_back(std::to_string(kv.first) + " " + kv.second);
    o.field(1, "Revisions", HBOBoardUtils::join(revisions, ", "));
    o.field(1, "Current revision", board.getBoardRevision());
    o.field(1, "Description", board.getDescription());
    if (board.getLongDesc() != board.getDescription())
        o.field(1, "Long description", board.getLongDesc());
    o.field(1, "URL", board.getSpecUrl());
    o.field(1, "Preset file", board.getPresetFile());
    o.field(1, "Board image", board.getBoardImage());
    o.field(1, "Change log", board.getChangeLogFilename());
    const HBOBoardComponent* active = board.getActivePart();
    o.line(1, "Active part: " + (active ? active->getComponentName() + " (" + active->getPartName() + ")"
                                        : std::string("none")));
    o.line(1, std::string("Supports CED: ") + yesNo(board.getSupportsCED()));
    if (board.isIntegratedBoard()) {
        const HBOBoard* base = board.getBaseBoard();
        o.line(1, "Integrated from: " + (base ? base->getName() : std::string("unknown base board")));
        for (const HBOBoard::IntegratedConnection& c : board.getIntegratedBoardConnections())
            o.line(2, c.get<0>() + " <- " + (c.get<1>() ? c.get<1>()->getName() + " " : std::string()) + c.get<2>());
    }
}

}  // namespace

void writeBoardOutline(std::ostream& out, const HBOBoard& board) {
    Outline o(out);
    writeIdentity(o, board);

    writeParameters(o, 0, board.getParameters());

    if (o.section(0, "Jumpers", board.getJumpers().size())) {
        for (const HBOJumper* j : board.getJumpers()) {
            if (j)
                o.line(1, j->getName() + " = " + (j->getDefaultValue() ? "true" : "false") +
                              (j->getDescription().empty() ? "" : ": " + j->getDescription()));
        }
    }

    const HBOBoard::ComponentMap& components = board.getBoardComponents();
    if (o.section(0, "Jtag chains", board.getJtagChains().size())) {
        for (const std::string& chain : board.getJtagChains()) {
            std::vector<std::string> members;
            for (const auto& kv : components) {
                if (!kv.second)
                    continue;
                auto it = kv.second->getJtagPositions().find(chain);
                if (it != kv.second->getJtagPositions().end())
                    members.push_back(kv.second->getComponentName() + " at " + it->second);
            }
            o.line(1, chain + (members.empty() ? "" : ": " + HBOBoardUtils::join(members, ", ")));
        }
    }

    if (o.section(0, "Components", components.size()))
        for (const auto& kv : components)
            if (kv.second)
                writeComponent(o, 1, board, *kv.second);

    if (o.section(0, "Connections", board.getBuses().size()))
        for (const HBOBoardBus* bus : board.getBuses())
            if (bus)
                writeConnection(o, 1, board, *bus);

    writePresetMap(o, 0, "Presets", board.getIpPresets());
    writePresetMap(o, 0, "IP associated rules", board.getIpAssociatedInterfaces());

    if (o.section(0, "Power rails", board.getPowerRails().size()))
        for (const HBOPowerRail& rail : board.getPowerRails())
            writePowerRail(o, 1, rail);

    const HBOBoardDataProps::PropMap& data = board.getBoardDataProps().getAllData();
    if (o.section(0, "Data properties", data.size()))
        writeDataProps(o, 1, data);

    writeImages(o, 0, board.getImages());
}

}  // namespace zrboard
