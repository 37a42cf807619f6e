// The sections of board.xml that tie the components together: jtag chains,
// IP association rules, the parameter table, connections and connected boards.
#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "ComMsgMgr.h"
#include "HBOBoard.h"
#include "HBOBoardBus.h"
#include "HBOBoardBusNet.h"
#include "HBOBoardComponent.h"
#include "HBOBoardParser.h"
#include "HBOBoardUtils.h"
#include "HBOIpPreset.h"
#include "HBOPinProps.h"
#include "HEXAll.h"

namespace {

const char* const kNullRoot = "Root XML element is NULL";

// An empty text is no delay; anything else must be a number.
float parseDelay(const std::string& text) {
    return text.empty() ? 0.0f : std::stof(text);
}

// The I/O standard without creating an empty entry on the pin by reading it.
const std::string& ioStandardOf(const HBOPinProps* pin) {
    static const std::string key = "iostandard";
    static const std::string none;
    const std::string* value = pin->findPortProp(key);
    return value ? *value : none;
}

}  // namespace

bool HBOBoardParser::readJtagChains(HXMLWElement* root, std::string& reason) {
    if (!root) {
        reason = kNullRoot;
        return false;
    }
    for (HXMLWElement* section : getChildElements(root)) {
        if (!isNamed(section, "jtag_chains"))
            continue;
        for (HXMLWElement* chain : getChildElements(section)) {
            const std::string chainName = getAttr(chain, "name");
            board->addJtagChain(chainName);
            // The place in the chain counts every entry, also those naming no component.
            int place = 0;
            for (HXMLWElement* entry : getChildElements(chain)) {
                if (HBOBoardComponent* component = board->findBoardComponent(getAttr(entry, "component"))) {
                    component->setJtagPosition(getAttr(entry, "name"));
                    component->addJtagPosition(chainName, std::to_string(place));
                }
                ++place;
            }
        }
    }
    return true;
}

bool HBOBoardParser::readIpAssociatedRules(HXMLWElement* root, std::string& reason) {
    if (!root) {
        reason = kNullRoot;
        return false;
    }
    for (HXMLWElement* section : getChildElements(root)) {
        if (!isNamed(section, "ip_associated_rules"))
            continue;
        const HBOElementScope atSection(boardFile(), section);
        // The dispatch records the file's schema on the board; a board handed to
        // this reader directly has none, and then the file's own word counts.
        std::string schema = board->getBoardSchemaVersion();
        if (schema.empty())
            schema = getAttr(root, "schema_version");
        if (!HBOBoardUtils::isEqualOrGreater(schema, "2.1"))
            throw HEXError(ComMsgMgrInstance::createInstance::eval(1, __FILE__, __LINE__, "board",
                                                                   ComMsgMgr::MSG_WARNING, "@49-77@%s", schema));
        for (HXMLWElement* rule : getChildElements(section)) {
            if (!isNamed(rule, "ip_associated_rule"))
                continue;
            const std::string ruleName = getAttr(rule, "name");
            std::vector<HBOIpPreset*> presets;
            for (HXMLWElement* ip : getChildElements(rule)) {
                const HBOElementScope atIp(boardFile(), ip);
                HBOIpPreset* preset = new HBOIpPreset();
                preset->setPresetProcName(ruleName);
                preset->setPresetorAssocIntf("assoc_intf");
                bool good = false;
                try {
                    readIpIdentity(preset, ip);
                    for (HXMLWElement* child : getChildElements(ip)) {
                        if (!isNamed(child, "associated_board_interfaces"))
                            continue;
                        for (HXMLWElement* intf : getChildElements(child))
                            preset->setParam(getAttr(intf, "name"), getAttr(intf, "order"));
                    }
                    good = checkPreset(preset);
                } catch (...) {
                    delete preset;
                    for (HBOIpPreset* p : presets)
                        delete p;
                    throw;
                }
                if (good)
                    presets.push_back(preset);
                else
                    delete preset;
            }
            if (ruleName.empty()) {
                // The board ignores an empty key; nothing would reach these.
                for (HBOIpPreset* p : presets)
                    delete p;
                continue;
            }
            board->setIpAssociatedInterface(ruleName, presets);
            for (HBOIpPreset* p : presets)
                board->adoptPreset(p);
        }
    }
    return true;
}

bool HBOBoardParser::readParamTable(HXMLWElement* root, std::string& reason) {
    if (!root) {
        reason = kNullRoot;
        return false;
    }
    // The table is part of the grammar but of no use to the model: it is
    // accepted and ignored.
    return true;
}

bool HBOBoardParser::readConnections(HXMLWElement* root, std::string& reason) {
    if (!root) {
        reason = kNullRoot;
        return false;
    }
    pinsPastTable.clear();
    for (HXMLWElement* section : getChildElements(root)) {
        if (!isNamed(section, "connections"))
            continue;
        for (HXMLWElement* connection : getChildElements(section)) {
            const std::string name = getAttr(connection, "name");
            const std::string comp1 = getAttr(connection, "component1");
            const std::string comp2 = getAttr(connection, "component2");
            for (HXMLWElement* map : getChildElements(connection))
                if (isNamed(map, "connection_map") && !readConnectionMap(map, name, comp1, comp2, reason))
                    return false;
        }
    }
    return true;
}

bool HBOBoardParser::readConnectionMap(HXMLWElement* map, const std::string& connectionName,
                                       const std::string& comp1, const std::string& comp2,
                                       std::string& /*reason*/) {
    const HBOElementScope at(boardFile(), map);
    const char* st1 = map->getAttribute("c1_st_index");
    const char* end1 = map->getAttribute("c1_end_index");
    const char* st2 = map->getAttribute("c2_st_index");
    const char* end2 = map->getAttribute("c2_end_index");
    if (!st1 || !end1 || !st2 || !end2) {
        addDeferredMessage(ComMsgMgrInstance::createInstance::eval(2, __FILE__, __LINE__, "board",
                                                                   ComMsgMgr::MSG_WARNING, "@49-99@%s%s",
                                                                   boardFile(), connectionName));
        return true;
    }
    const int start1 = parseIntAttribute(st1, "connection_map c1_st_index");
    const int stop1 = parseIntAttribute(end1, "connection_map c1_end_index");
    const int start2 = parseIntAttribute(st2, "connection_map c2_st_index");
    const int stop2 = parseIntAttribute(end2, "connection_map c2_end_index");
    const float delay = parseDelay(getAttr(map, "typical_delay"));
    const float minDelay = parseDelay(getAttr(map, "min_delay"));
    const float maxDelay = parseDelay(getAttr(map, "max_delay"));
    const std::string mapName = getAttr(map, "name");

    HBOBoardBus* bus = new HBOBoardBus();
    try {
        bus->setConnectionName(connectionName);
        bus->setComp1(comp1);
        bus->setComp2(comp2);
        bus->setName(mapName);
        bus->setDelay(delay);
        bus->setMinDelay(minDelay);
        bus->setMaxDelay(maxDelay);
        bus->setStartIndexComp1(start1);
        bus->setStopIndexComp1(stop1);
        bus->setStartIndexComp2(start2);
        bus->setStopIndexComp2(stop2);

        const int width = stop1 - start1;
        // Unequal widths make no nets; the bus check reports them.
        if (width == stop2 - start2) {
            checkPinIndices(comp1, start1, stop1, connectionName);
            checkPinIndices(comp2, start2, stop2, connectionName);
            HBOBoardComponent* c1 = board->findBoardComponent(comp1);
            HBOBoardComponent* c2 = board->findBoardComponent(comp2);
            for (int i = 0; i <= width; ++i) {
                HBOBoardBusNet* net = new HBOBoardBusNet();
                net->setName(mapName + "_" + std::to_string(i));
                net->setBoardBus(mapName);
                net->setOwner(bus);
                net->setC1PinIndex(start1 + i);
                net->setC2PinIndex(start2 + i);
                net->setTypicalDelay(delay);
                net->setMinDelay(minDelay);
                net->setMaxDelay(maxDelay);

                // The FPGA side fixes the I/O standard of what it is wired to.
                HBOPinProps* pin1 = c1 ? pinByIndex(c1, start1 + i) : nullptr;
                HBOPinProps* pin2 = c2 ? pinByIndex(c2, start2 + i) : nullptr;
                if (pin1 && pin2) {
                    // Copies: setting one pin's standard may be the other pin's, when both are one.
                    const std::string std1 = ioStandardOf(pin1);
                    const std::string std2 = ioStandardOf(pin2);
                    if (c1->getType() == "fpga" && !std1.empty())
                        pin2->setPinIOStandard(std1);
                    else if (c2->getType() == "fpga" && !std2.empty())
                        pin1->setPinIOStandard(std2);
                }
                bus->addBoardBusNet(net);
            }
        }

        for (HXMLWElement* child : getChildElements(map)) {
            if (isNamed(child, "enablement_dependencies")) {
                const std::string dependency = readEnablementJumpers(child);
                if (dependency.empty())
                    continue;
                bus->setEnablementDependency(dependency);
                for (HBOBoardBusNet* net : bus->getBoardBusNets())
                    net->setEnablementDependency(dependency);
            } else if (isNamed(child, "nets")) {
                for (HXMLWElement* netElem : getChildElements(child)) {
                    const HBOElementScope atNet(boardFile(), netElem);
                    const int index = parseIntAttribute(netElem->getAttribute("index"), "net index");
                    const float typical = parseDelay(getAttr(netElem, "typical_delay"));
                    const float netMin = parseDelay(getAttr(netElem, "min_delay"));
                    const float netMax = parseDelay(getAttr(netElem, "max_delay"));
                    for (HBOBoardBusNet* net : bus->getBoardBusNets()) {
                        if (net->getC1PinIndex() - start1 != index)
                            continue;
                        net->setTypicalDelay(typical);
                        net->setMaxDelay(netMax);
                        net->setMinDelay(netMin);
                    }
                }
            }
            // A lone `net` child is part of the grammar and carries nothing the model keeps.
        }
    } catch (...) {
        delete bus;
        throw;
    }

    if (!checkBus(bus)) {
        delete bus;
        return false;
    }
    board->addBus(bus);
    bus->setOwner(board);
    return true;
}

HBOPinProps* HBOBoardParser::pinByIndex(HBOBoardComponent* component, int index) {
    if (index >= 0 && index < HBOBoardComponent::PIN_TABLE_SIZE)
        return component->getPinByIndex(index);
    auto known = pinsPastTable.find(component);
    if (known == pinsPastTable.end()) {
        std::vector<HBOPinProps*> pins;
        component->getPinsVec(pins);
        std::vector<std::pair<int, HBOPinProps*>> byIndex;
        byIndex.reserve(pins.size());
        for (HBOPinProps* pin : pins)
            byIndex.emplace_back(pin->getPinIndex(), pin);
        // Stable: of the pins of one index the first in key order wins, as in the walk.
        std::stable_sort(byIndex.begin(), byIndex.end(),
                         [](const auto& a, const auto& b) { return a.first < b.first; });
        known = pinsPastTable.emplace(component, std::move(byIndex)).first;
    }
    const auto& byIndex = known->second;
    auto pin = std::lower_bound(byIndex.begin(), byIndex.end(), index,
                                [](const auto& entry, int wanted) { return entry.first < wanted; });
    return pin != byIndex.end() && pin->first == index ? pin->second : nullptr;
}

void HBOBoardParser::checkPinIndices(const std::string& component, int first, int last,
                                     const std::string& connectionName) {
    HBOBoardComponent* comp = board->findBoardComponent(component);
    if (!comp)
        return;
    for (int index = first; index <= last; ++index) {
        if (pinByIndex(comp, index))
            continue;
        // Only the FPGA's own pin file is held to this; the board still reads.
        if (validateEnabled && checks2020Enabled && component == "part0")
            deferCheck("For connection '" + connectionName + "' the connection_map references a FPGA pin index '" +
                           std::to_string(index) + "' that is not defined in part0_pins.xml.",
                       true);
    }
}

bool HBOBoardParser::readConnectedBoards(HXMLWElement* root, std::string& reason) {
    if (!root) {
        reason = kNullRoot;
        return false;
    }
    for (HXMLWElement* section : getChildElements(root)) {
        if (!isNamed(section, "connected_boards"))
            continue;
        for (HXMLWElement* group : getChildElements(section)) {
            if (isNamed(group, "base_boards")) {
                for (HXMLWElement* b : getChildElements(group))
                    board->addConnectedBoard(getAttr(b, "id"), getAttr(b, "alias_name"));
            } else if (isNamed(group, "connectors")) {
                for (HXMLWElement* c : getChildElements(group))
                    board->addConnectedComponents(getAttr(c, "board1"), getAttr(c, "board1_connector"),
                                                  getAttr(c, "board2"), getAttr(c, "board2_connector"));
            }
        }
    }
    return true;
}
