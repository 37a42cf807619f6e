// The components section of board.xml: components with their drivers,
// positions, modes, interfaces, port maps and pins.
#include <algorithm>
#include <cstdlib>
#include <map>
#include <memory_resource>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/split.hpp>
#include <boost/algorithm/string/trim.hpp>

#include "ComMsgMgr.h"
#include "HBOBoard.h"
#include "HBOBoardCompMuxPosition.h"
#include "HBOBoardComponent.h"
#include "HBOBoardComponentDriver.h"
#include "HBOBoardParser.h"
#include "HBOBusIf.h"
#include "HBOBusIfPreference.h"
#include "HBOComponentMode.h"
#include "HBOImage.h"
#include "HBOIpPreset.h"
#include "HBOModelPort.h"
#include "HBOParameter.h"
#include "HBOParsedVLNVs.h"
#include "HBOPinProps.h"
#include "HBOPortMap.h"
#include "HPAParamMgr.h"
#include "HSTStringUtils.h"

namespace {

const char* const kNullRoot = "Root XML element is NULL";

// "a,b,,c" -> a, b, c. An empty text is an empty list rather than one empty entry.
std::vector<std::string> splitCommaList(const std::string& text) {
    std::vector<std::string> out;
    if (text.empty())
        return out;
    boost::algorithm::split(out, text, boost::algorithm::is_any_of(","), boost::algorithm::token_compress_on);
    return out;
}

}  // namespace

std::unordered_set<std::string> HBOBoardParser::getIgnoredPortProps(const std::string& boardName) {
    // Legacy mode honours only the properties that older releases knew.
    static const std::unordered_set<std::string> legacyIgnored = [] {
        static const std::set<std::string> kept = {"iostandard", "diff_term", "drive", "slew", "dqs_bias"};
        std::unordered_set<std::string> ignored;
        for (const std::string& name : HBOPinProps::getPortPropNames())
            if (!kept.count(name))
                ignored.insert(name);
        return ignored;
    }();
    // Early revisions of this board carry odt values that its device does not accept.
    static const std::unordered_map<std::string, std::unordered_set<std::string>> byBoard = {
        {"korvelhw:bda1:1.0", {"odt"}}, {"korvelhw:bda1:1.1", {"odt"}}, {"korvelhw:bda1:1.2", {"odt"}},
        {"korvelhw:bda1:1.3", {"odt"}}, {"korvelhw:bda1:1.4", {"odt"}}, {"korvelhw:bda1:1.5", {"odt"}},
    };

    HPAParamMgr* mgr = HPAParamMgr::getParamMgr();
    if (mgr && mgr->getValueAsBool("board.usePre2019Dot2Mode"))
        return legacyIgnored;
    auto it = byBoard.find(boardName);
    return it == byBoard.end() ? std::unordered_set<std::string>() : it->second;
}

int HBOBoardParser::parseIntAttribute(const char* text, const std::string& label) {
    if (!text)
        return 0;
    if (checks2020Enabled)
        return parseNonNegativeInt(text, label, boardFile());
    return std::atoi(text);
}

std::string HBOBoardParser::readEnablementJumpers(HXMLWElement* dependencies) {
    std::string text = "{";
    std::string result;
    for (HXMLWElement* group : getChildElements(dependencies)) {
        if (!isNamed(group, "jumpers"))
            continue;
        for (HXMLWElement* jumper : getChildElements(group)) {
            if (text != "{")
                text += "} {";
            text += getAttr(jumper, "name") + " " + getText(jumper);
        }
        text += "}";
        result = text;
    }
    return result;
}

bool HBOBoardParser::readComponents(HXMLWElement* root, std::string& reason) {
    if (!root) {
        reason = kNullRoot;
        return false;
    }
    ignoredPortProps = getIgnoredPortProps(board->getName());
    HBOChildElements children = getChildElements(root);
    if (children.empty())
        return false;

    for (HXMLWElement* section : children) {
        if (!isNamed(section, "components"))
            continue;
        for (HXMLWElement* e : getChildElements(section)) {
            const HBOElementScope atComponent(boardFile(), e);
            HBOBoardComponent* component = new HBOBoardComponent();
            readFrom[component] = e;
            bool ok = false;
            try {
                ok = readComponent(component, e, reason);
                ok = ok && checkComponent(component);
            } catch (...) {
                if (board->getActivePart() == component)
                    board->setActivePart(nullptr);
                delete component;
                throw;
            }
            if (!ok) {
                // Never added, so the board must not keep pointing at it.
                if (board->getActivePart() == component)
                    board->setActivePart(nullptr);
                delete component;
                return false;
            }
            // The board only replaces an equal name; the one pushed out is still ours.
            auto same = board->getBoardComponents().find(component->getComponentName());
            if (same != board->getBoardComponents().end() && same->second != component)
                board->keepReplacedComponent(same->second);
            board->addBoardComponent(component);
        }
    }
    return true;
}

bool HBOBoardParser::readComponent(HBOBoardComponent* component, HXMLWElement* e, std::string& reason) {
    const std::string name = toLower(getAttr(e, "name"));
    const std::string type = getAttr(e, "type");
    const std::string partName = getAttr(e, "part_name");
    const std::string pinMapFile = getAttr(e, "pin_map_file");
    std::string connectedTo = getAttr(e, "connected_to");
    if (connectedTo.empty())
        connectedTo = "PL";

    component->setBoard(board);
    component->setComponentName(name);
    component->setName(board->getVendor() + ":" + board->getBoardName() + ":" + name + ":" + board->getVersion());
    component->setDisplayName(getAttr(e, "display_name"));
    component->setType(type);
    component->setSubType(getAttr(e, "sub_type"));
    component->setMajorGroup(getAttr(e, "major_group"));
    component->setPartName(partName);
    component->setPinMapFile(pinMapFile);
    component->setVendorName(getAttr(e, "vendor"));
    component->setSpecUrl(getAttr(e, "spec_url"));
    component->setConnectedToLogicStr(connectedTo);
    component->setDescription(board->getDescription());
    component->setLongDesc(board->getDescription());
    component->setRtlFileParseStatus(true);
    // Exact on purpose: only the lower-case word makes the active part.
    if (type == "fpga") {
        board->setActivePart(component);
        board->setPartString(partName);
    }

    if (!pinMapFile.empty()) {
        PinList pins;
        DesignConstrList constrs;
        try {
            readPinFile(pinMapFile, pins, constrs);
        } catch (...) {
            for (HBOPinProps* pin : pins)
                delete pin;
            throw;
        }
        component->setDesignConstrs(constrs);
        component->reservePins(pins.size());
        for (HBOPinProps* pin : pins) {
            pin->setOwner(component);
            component->addPin(pin);
        }
    }

    for (HXMLWElement* child : getChildElements(e)) {
        if (isNamed(child, "description")) {
            component->setDescription(getText(child));
        } else if (isNamed(child, "additional_supported_parts")) {
            for (HXMLWElement* part : getChildElements(child)) {
                const char* tag = part->getTagName();
                if (!tag || std::string(tag) != "supported_part")
                    continue;
                const std::string value = boost::algorithm::trim_copy(getAttr(part, "part_name"));
                if (!value.empty() && type == "fpga")
                    component->addAdditionalSupportedPart(value);
            }
        } else if (isNamed(child, "drivers")) {
            for (HXMLWElement* d : getChildElements(child)) {
                HBOBoardComponentDriver* driver = readDriver(d);
                driver->setBoardComponent(component);
                component->addDriver(driver);
            }
        } else if (isNamed(child, "parameters")) {
            for (HXMLWElement* p : getChildElements(child))
                component->addParameter(makeParameter(p));
        } else if (isNamed(child, "images")) {
            for (HXMLWElement* i : getChildElements(child))
                component->addImage(makeImage(i));
        } else if (isNamed(child, "positions")) {
            for (HXMLWElement* p : getChildElements(child))
                readPosition(component, p);
        } else if (isNamed(child, "component_modes")) {
            for (HXMLWElement* m : getChildElements(child))
                if (!readComponentMode(component, m, reason))
                    return false;
        } else if (isNamed(child, "param_table")) {
            // Accepted for the grammar's sake; nothing of it reaches the model.
        } else if (isNamed(child, "interfaces")) {
            if (!readInterfaces(component, child, reason))
                return false;
        } else if (isNamed(child, "pins")) {
            const HBOChildElements pins = getChildElements(child);
            component->reservePins(pins.size());
            for (HXMLWElement* p : pins)
                readComponentPin(component, p);
        }
    }
    return true;
}

HBOBoardComponentDriver* HBOBoardParser::readDriver(HXMLWElement* e) {
    HBOBoardComponentDriver* driver = new HBOBoardComponentDriver();
    driver->setName(getAttr(e, "name"));
    driver->setVersion(getAttr(e, "version"));
    driver->setVendor(getAttr(e, "vendor"));
    driver->setPreCompiled(getAttr(e, "pre_compiled"));
    driver->setOs(splitCommaList(getAttr(e, "os")));
    driver->setPlatform(splitCommaList(getAttr(e, "platform")));
    driver->setProcessorArchitecture(splitCommaList(getAttr(e, "processor_architecture")));
    driver->setDriverPath(boardDirectory());
    for (HXMLWElement* child : getChildElements(e)) {
        if (isNamed(child, "description")) {
            driver->setDescription(getText(child));
        } else if (isNamed(child, "driver_files")) {
            for (HXMLWElement* f : getChildElements(child))
                if (isNamed(f, "file"))
                    driver->addFile(getText(f), getAttr(f, "type"));
        }
    }
    return driver;
}

void HBOBoardParser::readPosition(HBOBoardComponent* component, HXMLWElement* e) {
    const HBOElementScope at(boardFile(), e);
    const char* idText = e->getAttribute("id");
    const int id = (!idText || !*idText) ? 0 : parseIntAttribute(idText, "position id");
    HBOBoardCompMuxPosition* position = new HBOBoardCompMuxPosition();
    position->setPosition(id);
    position->setComponent(getAttr(e, "component"));
    for (HXMLWElement* child : getChildElements(e))
        if (isNamed(child, "address"))
            position->addAddress(getAttr(child, "low"), getAttr(child, "high"));
    component->addIICPosition(id, position);
}

bool HBOBoardParser::readComponentMode(HBOBoardComponent* component, HXMLWElement* e, std::string& /*reason*/) {
    const HBOElementScope at(boardFile(), e);
    HBOComponentMode* mode = new HBOComponentMode();
    readFrom[mode] = e;
    mode->setOwnerComponent(component);
    mode->setName(getAttr(e, "name"));
    mode->setDisplayName(getAttr(e, "display_name"));
    const std::string presetProc = getAttr(e, "preset_proc");
    mode->setPresetProcName(presetProc);
    // Owned by the component from here on, also when a later check fails.
    component->addComponentMode(mode);

    for (HXMLWElement* child : getChildElements(e)) {
        if (isNamed(child, "description")) {
            mode->setDescription(getText(child));
        } else if (isNamed(child, "interfaces")) {
            int place = 0;
            for (HXMLWElement* intf : getChildElements(child)) {
                const HBOElementScope atInterface(boardFile(), intf);
                const char* orderText = intf->getAttribute("order");
                const int order =
                    (!orderText || !*orderText) ? place : parseIntAttribute(orderText, "interface order");
                const bool optional = HSTStringUtils::iequals(getAttr(intf, "optional"), "true");
                mode->addInterface(order, std::make_pair(getAttr(intf, "name"), optional));
                ++place;
            }
        } else if (isNamed(child, "preferred_ips")) {
            for (HXMLWElement* ip : getChildElements(child)) {
                HBOBusIfPreference* pref = new HBOBusIfPreference();
                mode->addPreferredIp(pref);
                if (!readPreferredIp(pref, ip, presetProc, false))
                    return false;
            }
        } else if (isNamed(child, "enablement_dependencies")) {
            const std::string dependency = readEnablementJumpers(child);
            if (!dependency.empty())
                mode->setEnablementDependency(dependency);
        }
    }
    return true;
}

bool HBOBoardParser::readPreferredIp(HBOBusIfPreference* pref, HXMLWElement* e, const std::string& presetProc,
                                     bool inInterface) {
    const HBOElementScope at(boardFile(), e);
    const std::string vendor = getAttr(e, "vendor");
    const std::string library = getAttr(e, "library");
    const std::string name = getAttr(e, "name");
    const std::string version = getAttr(e, "version");
    const std::string namingVersion = version.empty() ? "*" : version;
    const std::string fullName = vendor + ":" + library + ":" + name + ":" + namingVersion;
    if (parsedVlnvs)
        parsedVlnvs->addIpName(fullName);

    pref->setDefaultIpVlnv(fullName);
    pref->setPresetProc(presetProc);
    pref->setPresetFile(getAttr(e, "preset_file"));
    pref->setName(name);
    pref->setPrefName(fullName);
    pref->setVendor(vendor);
    pref->setLibrary(library);
    pref->setVersion(inInterface ? namingVersion : version);

    static const char* const kOrderLabel = "preferred_ip order";
    if (const char* orderText = e->getAttribute("order")) {
        pref->setOrder(parseIntAttribute(orderText, kOrderLabel));
    } else if (inInterface) {
        addDeferredMessage(ComMsgMgrInstance::createInstance::eval(3, __FILE__, __LINE__, "board",
                                                                   ComMsgMgr::MSG_WARNING, "@49-100@%s%s%s",
                                                                   kOrderLabel, name, boardFile()));
        pref->setOrder(0);
    }
    pref->setOwner(board);
    return checkPreferredIp(pref);
}

bool HBOBoardParser::readInterfaces(HBOBoardComponent* component, HXMLWElement* interfaces, std::string& reason) {
    std::set<std::string> names;
    std::set<std::string> masters;
    for (HXMLWElement* e : getChildElements(interfaces)) {
        const HBOElementScope atInterface(boardFile(), e);
        HBOBusIf* busIf = new HBOBusIf();
        readFrom[busIf] = e;
        busIf->setOwnerComponent(component);
        bool ok = false;
        try {
            ok = readInterface(busIf, component, e, reason);
        } catch (...) {
            delete busIf;
            throw;
        }
        const std::string name = busIf->getName();

        if (!names.insert(name).second && checks2020Enabled && reportEnabled)
            addDeferredMessage(ComMsgMgrInstance::createInstance::eval(1, __FILE__, __LINE__, "board",
                                                                       ComMsgMgr::MSG_WARNING, "@49-146@%s", name));
        std::string value;
        if (busIf->getParamValue("is_gt_flow_interface_master", value) && toLower(value) == "true")
            masters.insert(name);
        // A master must come before the interfaces that name it.
        if (busIf->getParamValue("gt_flow_interface_master_name", value) && !masters.count(value))
            addDeferredMessage(ComMsgMgrInstance::createInstance::eval(1, __FILE__, __LINE__, "board",
                                                                       ComMsgMgr::MSG_WARNING, "@49-145@%s", value));

        if (!ok || !checkInterface(busIf)) {
            delete busIf;
            return false;
        }

        // An interface of the same name is replaced (and freed) by setBusIf; the
        // ports it leaves in the component's port map are handed to its successor
        // so that no port points at a freed interface.
        if (HBOBusIf* previous = component->getBusIfByName(name)) {
            if (previous != busIf) {
                for (const auto& kv : previous->getPortMaps()) {
                    HBOModelPort* port = kv.second;
                    if (port && component->getModelPortByName(port->getName()) == port)
                        port->setOwner(busIf);
                }
            }
        }
        component->setBusIf(name, busIf);
        readInterfaceNames.insert(name);
    }
    return true;
}

bool HBOBoardParser::readInterface(HBOBusIf* busIf, HBOBoardComponent* component, HXMLWElement* e,
                                   std::string& /*reason*/) {
    const std::string name = getAttr(e, "name");
    busIf->setName(name);
    busIf->setDisplayName(name);

    const std::string type = getAttr(e, "type");
    std::vector<std::string> fields;
    boost::algorithm::split(fields, type, boost::algorithm::is_any_of(":"));
    if (fields.size() == 4) {
        busIf->setAbstractTypeVendor(fields[0]);
        busIf->setAbstractTypeLibrary(fields[1]);
        busIf->setAbstractTypeName(fields[2]);
        busIf->setAbstractTypeVersion(fields[3]);
    } else {
        addDeferredMessage(ComMsgMgrInstance::createInstance::eval(1, __FILE__, __LINE__, "board",
                                                                   ComMsgMgr::MSG_WARNING, "@49-37@%s", name));
    }
    busIf->setInterfaceMode(getAttr(e, "mode"));
    busIf->setParentBoard(board);
    busIf->setOfComponent(getAttr(e, "of_component"));
    const std::string presetProc = getAttr(e, "preset_proc");
    busIf->setPresetProcName(presetProc);
    if (!presetProc.empty())
        lookupInterfacePreset(busIf, presetProc);

    std::set<std::string> logicalPorts;
    for (HXMLWElement* child : getChildElements(e)) {
        if (isNamed(child, "parameters")) {
            // Kept both as objects and as name/value pairs: the checks and the
            // scripting layer read the pairs.
            for (HXMLWElement* p : getChildElements(child)) {
                HBOParameter* parameter = makeParameter(p);
                busIf->addParameter(parameter);
                busIf->setParam(parameter->getName(), parameter->getValue());
            }
        } else if (isNamed(child, "description")) {
            busIf->setDescription(getText(child));
        } else if (isNamed(child, "preset_file")) {
            busIf->setPresetFile(getAttr(child, "name"));
        } else if (isNamed(child, "preferred_ips")) {
            for (HXMLWElement* ip : getChildElements(child)) {
                // Owned by the interface before it is read, so that a throw loses nothing.
                HBOBusIfPreference* pref = new HBOBusIfPreference();
                busIf->setPreferences(pref);
                const bool good = readPreferredIp(pref, ip, presetProc, true);
                if (pref->getOrder() == 0)
                    busIf->setPreference(pref);
                if (!good)
                    return false;
            }
        } else if (isNamed(child, "port_maps")) {
            for (HXMLWElement* pm : getChildElements(child))
                if (!readPortMap(busIf, component, pm, logicalPorts))
                    return false;
        } else if (isNamed(child, "enablement_dependencies")) {
            for (HXMLWElement* group : getChildElements(child)) {
                const bool jumpers = isNamed(group, "jumpers");
                const bool params = isNamed(group, "parameters");
                if (!jumpers && !params)
                    continue;
                for (HXMLWElement* item : getChildElements(group)) {
                    const bool value = HSTStringUtils::iequals(getText(item), "true");
                    if (jumpers)
                        busIf->addJumper(getAttr(item, "name"), value);
                    else
                        busIf->addParam(getAttr(item, "name"), value);
                }
            }
        }
    }
    if (parsedVlnvs)
        parsedVlnvs->addLogicalPorts(type, logicalPorts);
    return true;
}

void HBOBoardParser::lookupInterfacePreset(HBOBusIf* busIf, const std::string& presetProc) {
    const std::string folded = toLower(presetProc);
    // The board keeps preset keys in upper case, so any spelling in the file finds its preset.
    const HBOBoard::IpPresetMap& presets = board->getIpPresets();
    auto it = presets.find(toUpper(folded));
    if (it != presets.end() && !it->second.empty()) {
        std::string file;
        if (it->second.front() && it->second.front()->getParamValue("CONFIG.XML_INPUT_FILE", file) && !file.empty())
            busIf->setPresetFile(file);
        return;
    }
    if (checks2020Enabled && reportEnabled)
        addDeferredMessage(ComMsgMgrInstance::createInstance::eval(2, __FILE__, __LINE__, "board",
                                                                   ComMsgMgr::MSG_WARNING, "@49-133@%s%s",
                                                                   busIf->getName(), folded));
}

bool HBOBoardParser::readPortMap(HBOBusIf* busIf, HBOBoardComponent* component, HXMLWElement* e,
                                 std::set<std::string>& logicalPorts) {
    const HBOElementScope at(boardFile(), e);
    const std::string logical = getAttr(e, "logical_port");
    const std::string physical = getAttr(e, "physical_port");

    HBOModelPort* port = new HBOModelPort();
    port->setOwner(busIf);
    port->setName(physical);
    port->setDirection(getAttr(e, "dir"));
    HBOPortMap* portMap = new HBOPortMap();
    portMap->setLogicalPort(logical);
    portMap->setPhysicalPort(physical);

    try {
        const char* left = e->getAttribute("left");
        const char* right = e->getAttribute("right");
        if (left || right) {
            port->setIsVector(true);
            port->setRange(parseIntAttribute(left, "port map left"), parseIntAttribute(right, "port map right"));
        } else {
            port->setIsVector(false);
        }

        for (HXMLWElement* child : getChildElements(e)) {
            if (!isNamed(child, "pin_maps"))
                continue;
            HBOChildElements pinMaps = getChildElements(child);
            int width = 0;
            port->getPortWidth(width);
            if (static_cast<int>(pinMaps.size()) != width)
                deferCheck("Necessary component pins not provided for '" + physical + "'.");

            // Keys and values point into the file's tree, which outlives this loop;
            // the nodes of a port of common width fit in the buffer on the stack.
            alignas(std::max_align_t) char nodes[4096];
            std::pmr::monotonic_buffer_resource pool(nodes, sizeof nodes);
            std::pmr::unordered_map<std::string_view, const char*> pinByIndex(&pool);
            pinByIndex.reserve(pinMaps.size());
            port->reservePinPortMap(pinMaps.size());
            for (HXMLWElement* pm : pinMaps) {
                const HBOElementScope atPinMap(boardFile(), pm);
                const char* indexText = pm->getAttribute("port_index");
                const std::string index = indexText ? indexText : "";
                const char* pinText = pm->getAttribute("component_pin");
                std::string pinName = pinText ? pinText : "";
                auto seen = pinByIndex.find(indexText ? indexText : "");
                if (seen != pinByIndex.end()) {
                    if (checks2020Enabled)
                        deferCheck("In the pin_maps for the logical_port '" + logical + "' and physical port '" +
                                   physical + "' the port index '" + index + "' is used for both '" + seen->second +
                                   "' and for '" + pinName + "'. Port index must be unique.");
                } else {
                    pinByIndex.emplace(indexText ? indexText : "", pinText ? pinText : "");
                }
                if (HBOPinProps* pin = component->findPin(pinName))
                    pin->addIntfPortMap(busIf->getName(), index);
                else
                    deferCheck("Pin Map file does not provide LOC constraints for " + pinName +
                               " COMP : " + component->getComponentName() + ".");
                port->addPinPortMap(index, std::move(pinName));
            }
        }
    } catch (...) {
        delete port;
        delete portMap;
        throw;
    }

    if (!checkPort(port, busIf->getOfComponent(), busIf->getName())) {
        delete port;
        delete portMap;
        return false;
    }
    busIf->addPort(port);
    busIf->populatePortMap(portMap);
    component->setModelPort(physical, port);
    component->adoptModelPort(port);
    if (parsedVlnvs)
        logicalPorts.insert(logical);
    return true;
}

void HBOBoardParser::readComponentPin(HBOBoardComponent* component, HXMLWElement* e) {
    const HBOElementScope at(boardFile(), e);
    const int index = parseIntAttribute(e->getAttribute("index"), "pin index");
    // The pin file came first and wins; a pin listed here again is left alone.
    if (component->getPinByIndex(index))
        return;
    HBOPinProps* pin = new HBOPinProps();
    pin->setName(getAttr(e, "name"));
    pin->setPinIndex(index);
    pin->setPinLoc(getAttr(e, "loc"));
    // One walk over the element's attributes finds the known properties; they
    // are then set in their fixed order, as the pin keeps them.
    const std::vector<std::string>& propNames = HBOPinProps::getPortPropNames();
    const char* values[32] = {};
    const std::size_t known = std::min(propNames.size(), sizeof values / sizeof values[0]);
    for (int i = 0, n = e->getAttributeCount(); i < n; ++i) {
        const char* attr = e->getAttributeName(i);
        if (!attr)
            continue;
        const int place = portPropPlace(attr);
        if (place >= 0 && static_cast<std::size_t>(place) < known)
            values[place] = e->getAttribute(attr);
    }
    for (std::size_t p = 0; p < known; ++p)
        if (values[p] && !ignoredPortProps.count(propNames[p]))
            pin->setPortProp(propNames[p], values[p]);
    pin->setOwner(component);
    component->addPin(pin);
}
