// Consistency checks of what the readers took from a board file. Each check
// goes through all of its conditions, so one read shows every fault, leaves
// its findings as deferred messages and answers false when it found one.
#include <cstdlib>
#include <initializer_list>
#include <limits>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <boost/format.hpp>

#include "ComMsgMgr.h"
#include "HBOBoard.h"
#include "HBOBoardBus.h"
#include "HBOBoardComponent.h"
#include "HBOBoardParser.h"
#include "HBOBusIf.h"
#include "HBOBusIfPreference.h"
#include "HBOComponentMode.h"
#include "HBOFoldedComponentIndex.h"
#include "HBOIpPreset.h"
#include "HBOModelPort.h"
#include "HEXAll.h"
#include "HSTStringUtils.h"

namespace {

bool iequalsAny(const std::string& value, std::initializer_list<const char*> words) {
    for (const char* w : words)
        if (HSTStringUtils::iequals(value, w))
            return true;
    return false;
}

}  // namespace

bool HBOBoardParser::checkComponent(HBOBoardComponent* component) {
    bool ok = true;
    const std::string& name = component->getComponentName();
    const std::string& type = component->getType();
    // The full name always holds the board's identity, so the file's own name is what is checked.
    if (name.empty()) {
        deferCheck("Component name cannot be empty.\n");
        ok = false;
    }
    if (type.empty()) {
        deferCheck("Component Type cannot be empty for '" + name + "'.");
        ok = false;
    }
    if (!iequalsAny(type, {"fpga", "chip", "connector"})) {
        deferCheck("Component Type should be fpga/chip/connector for '" + name + "'.");
        ok = false;
    }
    if (iequalsAny(type, {"chip", "connector"})) {
        const std::string& subType = component->getSubType();
        if (subType.empty()) {
            deferCheck("Component SubType cannot be empty for '" + name + "'.");
            ok = false;
        }
        if (!iequalsAny(subType, {"ddr", "switch", "mux", "lcd", "led", "ethernet", "sfp", "sma", "reset",
                                  "push_button", "system_reset", "uart", "mgt_clock", "memory_flash_qspi",
                                  "system_clock", "memory_flash_bpi", "dimm", "pmod", "som", "fmc_lpc", "fmc_hpc",
                                  "fmc_plus", "memory", "pcie", "fixed_io", "chip"})) {
            deferCheck("Component Sub Type should be "
                       "ddr/switch/push_button/lcd/led/ethernet/sfp/sma/mux/reset/system_reset/uart/mgt_clock/"
                       "system_clock/memory_flash_qspi/memory_flash_bpi/memory/dimm/pmod/som/fmc_hpc/fmc_lpc/"
                       "fmc_plus/pcie/fixed_io/chip for '" +
                       name + "'.");
            ok = false;
        }
    }
    const std::string& connectedTo = component->getConnectedToLogicStr();
    if (!iequalsAny(connectedTo, {"pl", "ps", "ps_and_pl"})) {
        deferCheck(boost::str(boost::format("Component %1% attribute 'connected_to' has invalid value '%2%', valid "
                                            "values are 'pl', 'ps', or 'ps_and_pl'") %
                              name % connectedTo));
        ok = false;
    }
    return ok;
}

bool HBOBoardParser::checkInterface(HBOBusIf* busIf) {
    bool ok = true;
    const std::string& name = busIf->getName();
    const std::string& mode = busIf->getInterfaceMode();
    if (name.empty()) {
        deferCheck("Component name cannot be empty.");
        ok = false;
    }
    if (mode.empty()) {
        deferCheck("Component Mode cannot be empty for interface '" + name + "'.");
        ok = false;
    }
    if (busIf->getOfComponent().empty()) {
        deferCheck("Component OfComponent cannot be empty for interface '" + name + "'.");
        ok = false;
    }
    if (!iequalsAny(mode, {"master", "slave"})) {
        deferCheck("Component Mode should be master or slave for interface '" + name + "'.");
        ok = false;
    }
    return ok;
}

bool HBOBoardParser::checkPort(HBOModelPort* port, const std::string& ofComponent, const std::string& busIfName) {
    bool ok = true;
    const std::string& name = port->getName();
    const std::string& dir = port->getPortDir();
    if (name.empty()) {
        deferCheck("Port name cannot be empty.");
        ok = false;
    }
    if (dir.empty()) {
        deferCheck("Port direction cannot be empty for '" + name + "'.");
        ok = false;
    }
    if (!iequalsAny(dir, {"in", "out", "inout"})) {
        deferCheck("Port direction should be in/out/inout for '" + name + "'.");
        ok = false;
    }
    if (port->isPortOfTypeVec()) {
        // The port answers no negative bound; two unknown bounds are not taken as equal.
        int left = std::numeric_limits<int>::min();
        int right = std::numeric_limits<int>::max();
        port->getPortVecLeft(left);
        port->getPortVecRight(right);
        if (left == right) {
            deferCheck("Port left and right cannot be same for '" + name + "'.");
            ok = false;
        }
    }

    // A physical port used by two interfaces of one component is told, not failed.
    auto seen = portOwners.find(name);
    if (seen != portOwners.end() && seen->second.second == ofComponent && checks2020Enabled && reportEnabled)
        addDeferredMessage(ComMsgMgrInstance::createInstance::eval(4, __FILE__, __LINE__, "board",
                                                                   ComMsgMgr::MSG_WARNING, "@49-150@%s%s%s%s", name,
                                                                   busIfName, boardFile(), seen->second.first),
                           true);
    else
        portOwners[name] = std::make_pair(busIfName, ofComponent);
    return ok;
}

bool HBOBoardParser::checkPreferredIp(HBOBusIfPreference* pref) {
    bool ok = true;
    const std::string& name = pref->getName();
    if (pref->getVendor().empty()) {
        deferCheck("Vendor cannot be empty in preferred_ip '" + name + "'.");
        ok = false;
    }
    if (pref->getLibrary().empty()) {
        deferCheck("Library cannot be empty in preferred_ip '" + name + "'.");
        ok = false;
    }
    if (name.empty()) {
        deferCheck("IP Name cannot be empty  in preferred_ip '" + name + "'.");
        ok = false;
    }
    if (pref->getOrder() < 0) {
        deferCheck("Order cannot be less than zero  in preferred_ip '" + name + "'.");
        ok = false;
    }
    return ok;
}

bool HBOBoardParser::checkPreset(HBOIpPreset* preset) {
    bool ok = true;
    const std::string& name = preset->getName();
    if (preset->getVendor().empty()) {
        deferCheck("Vendor cannot be empty in ip '" + name + "'.");
        ok = false;
    }
    if (preset->getLibrary().empty()) {
        deferCheck("Library cannot be empty in ip '" + name + "'.");
        ok = false;
    }
    if (name.empty()) {
        deferCheck("IP Name cannot be empty.");
        ok = false;
    }
    // Keys are board interface names, values their order.
    for (const auto& kv : preset->getParamList()) {
        HBOBusIf* busIf = nullptr;
        if (board->hasFPGAPart())
            busIf = board->getBusIfByName(kv.first);
        else
            board->getBusIfByNameUsingConnectors(busIf, kv.first);
        if (!busIf)
            throw HEXError(ComMsgMgrInstance::createInstance::eval(
                2, __FILE__, __LINE__, "board", ComMsgMgr::MSG_WARNING, "@49-69@%s%s", boardFile(),
                "Provided Bus interface does not exist on the board '" + kv.first + "'."));
        if (std::atoi(kv.second.c_str()) < 0) {
            deferCheck("In ip '" + name + "' order cannot be less than zero for interface '" + kv.first + "'.");
            ok = false;
        }
    }
    return ok;
}

bool HBOBoardParser::checkBus(HBOBoardBus* bus) {
    bool ok = true;
    const std::string& name = bus->getName();
    if (bus->getConnectionName().empty()) {
        deferCheck("Connection name cannot be empty in '" + name + "'.\n");
        ok = false;
    }
    if (bus->getComp1().empty()) {
        deferCheck("Component1 cannot be empty in '" + name + "'.\n");
        ok = false;
    }
    if (bus->getComp2().empty()) {
        deferCheck("Component2 cannot be empty in '" + name + "'.\n");
        ok = false;
    }
    if (bus->getStopIndexComp1() - bus->getStartIndexComp1() != bus->getStopIndexComp2() - bus->getStartIndexComp2()) {
        deferCheck("Bus width of Component1 and Component2 does not match for " + bus->getConnectionName());
        ok = false;
    }
    return ok;
}

bool HBOBoardParser::checkClockInterfaces() {
    HBOBoardComponent* active = board->getActivePart();
    if (!active)
        return true;
    bool ok = true;
    std::vector<HBOBusIf*> interfaces;
    active->getInterfacesVec(interfaces);
    for (HBOBusIf* busIf : interfaces) {
        const HBOElementScope at(boardFile(), elementOf(busIf));
        std::string vlnv;
        busIf->getAbstractTypeVLNV(vlnv, ":");
        const std::map<std::string, std::string>& params = busIf->getParamList();
        if (iequalsAny(vlnv, {"korvelhw:interface:diff_clock_rtl:1.0", "korvelhw:signal:clock_rtl:1.0",
                              "korvelhw:interface:clock_rtl:1.0"})) {
            // A clock without a frequency still works; the user is only told.
            if (!params.count("frequency"))
                ComMsgMgr::sendMsg::eval(2, __FILE__, __LINE__, "board", ComMsgMgr::MSG_WARNING, "@49-153@%s%s",
                                         busIf->getName(), boardFile());
        } else if (vlnv == "korvelhw:signal:reset_rtl:1.0" && busIf->getInterfaceMode() == "slave") {
            if (!params.count("rst_polarity")) {
                deferCheck("Polarity Parameter not provided for '" + busIf->getName() + "'.");
                ok = false;
            }
        }
    }
    return ok;
}

bool HBOBoardParser::checkFpgaInterfaces() {
    HBOBoardComponent* active = board->getActivePart();
    if (!active)
        return true;
    bool ok = true;
    std::vector<HBOBusIf*> interfaces;
    active->getInterfacesVec(interfaces);
    const HBOFoldedComponentIndex components(board->getBoardComponents());
    for (HBOBusIf* busIf : interfaces) {
        const std::string& ofComponent = busIf->getOfComponent();
        if (ofComponent.empty() || components.find(ofComponent))
            continue;
        const HBOElementScope at(boardFile(), elementOf(busIf));
        deferCheck("Component " + ofComponent + " provided for interface " + busIf->getName() +
                   " is not found in list of components on the board.");
        ok = false;
    }
    return ok;
}

bool HBOBoardParser::checkRevisionsAndModes() {
    bool ok = true;
    if (checks2020Enabled) {
        std::vector<std::string> revisions;
        board->getCompatibleBoardRevisionsAsVec(revisions);
        if (revisions.empty()) {
            deferCheck("No compatible boards were defined in a compatible_board_revisions element.");
            ok = false;
        }
    }

    std::vector<HBOBoardComponent*> components;
    board->getBoardComponentsVec(components);
    for (HBOBoardComponent* component : components) {
        for (HBOComponentMode* mode : component->getComponentModes()) {
            const HBOElementScope at(boardFile(), elementOf(mode));
            for (const auto& entry : mode->getInterfaces()) {
                const std::string& intf = entry.second.first;
                // Told but not failed: the mode is merely unusable.
                if (!readInterfaceNames.count(intf))
                    addDeferredMessage(ComMsgMgrInstance::createInstance::eval(
                                           3, __FILE__, __LINE__, "board", ComMsgMgr::MSG_WARNING,
                                           "@49-148@%s%s%s", component->getComponentName(), intf, boardFile()),
                                       true);
            }
        }
    }

    // A system clock without modes gets one per FPGA interface that serves it,
    // so that it can be chosen like any other component.
    for (HBOBoardComponent* component : components) {
        if (!HSTStringUtils::iequals(component->getSubType(), "system_clock") ||
            !component->getComponentModes().empty())
            continue;
        const HBOElementScope at(boardFile(), elementOf(component));
        std::vector<HBOBusIf*> served;
        component->getOfCompInterfaces(served, true, nullptr);
        for (HBOBusIf* busIf : served) {
            const std::string& intf = busIf->getName();
            HBOComponentMode* mode = new HBOComponentMode();
            mode->setName(intf);
            mode->setDisplayName(intf);
            mode->setOwnerComponent(component);
            mode->addInterface(0, std::make_pair(intf, false));
            component->addComponentMode(mode);
            if (reportEnabled)
                ComMsgMgr::sendMsg::eval(4, __FILE__, __LINE__, "board", ComMsgMgr::MSG_INFO, "@49-149@%s%s%s%s",
                                         component->getComponentName(), boardFile(), intf, mode->getName());
        }
    }
    return ok;
}
