// Reshapes a board read by the schema 1 reader (one device component holding
// every interface) into the schema 2 model (one component per interface).
#include <string>
#include <vector>

#include <boost/algorithm/string.hpp>

#include "HBOCase.h"
#include "HBOBoard.h"
#include "HBOBoardComponent.h"
#include "HBOBoardUtils.h"
#include "HBOBusIf.h"
#include "HBOBusIfPreference.h"
#include "HBOIpPreset.h"
#include "HBOModelPort.h"
#include "HBOParser.h"
#include "HBOPinProps.h"
#include "HBOPortMap.h"

namespace {

// Sub-type of a component made from an interface, by name; first hit wins.
std::string subTypeFromName(const std::string& interfaceName) {
    static const char* const table[][2] = {
        {"led", "led"},         {"lcd", "lcd"},           {"switch", "switch"}, {"gpio_sw", "switch"},
        {"sws", "switch"},      {"button", "push_button"}, {"btns", "push_button"},
    };
    const std::string name = HBOCase::lower(interfaceName);
    for (const auto& row : table)
        if (name.find(row[0]) != std::string::npos)
            return row[1];
    return "chip";
}

std::string subTypeOf(HBOBusIf* busIf, HBOBoardComponent* component) {
    HBOBusIfPreference* preference = busIf->getPreference();
    if (!preference)
        return "chip";
    component->setMajorGroup(preference->getMajorGroup());
    if (!preference->getMinorGroup().empty())
        return preference->getMinorGroup();
    return subTypeFromName(busIf->getName());
}

// Interfaces with a preset file of their own get a preset procedure named
// after them; two interface types get the IP that consumes such a file.
void makePreset(HBOBoard* board, HBOBusIf* busIf) {
    const std::string procName = busIf->getName() + "_preset";
    HBOIpPreset* preset = new HBOIpPreset();
    preset->setPresetProcName(procName);
    busIf->setPresetProcName(procName);
    std::string type;
    busIf->getAbstractTypeVLNV(type, ":");
    const std::locale& classic = std::locale::classic();
    if (boost::algorithm::iequals(type, "korvelhw:interface:ddrx_rtl:1.0", classic)) {
        preset->setVendor("korvelhw");
        preset->setLibrary("ip");
        preset->setName("dramhub_g7");
        preset->setVersion("*");
        preset->setOwner(board);
        preset->setPresetName(procName + ":korvelhw:ip:dramhub_g7:*");
        preset->setParam("CONFIG.XML_INPUT_FILE", busIf->getPresetFile());
        preset->setValueType("file");
    } else if (boost::algorithm::iequals(type, "korvelhw:display_cpu_hub7:fixedio_rtl:1.0", classic)) {
        preset->setVendor("korvelhw");
        preset->setLibrary("ip");
        preset->setName("cpu_hub7");
        preset->setVersion("*");
        preset->setOwner(board);
        preset->setPresetName(procName + ":korvelhw:ip:cpu_hub7:*");
        const std::string& boardName = board->getBoardName();
        preset->setParam("CONFIG.preset",
                         boost::algorithm::iequals(boardName, "bdh4", classic) ? std::string("BdhBoard") : boardName);
    }
    board->setIpPreset(procName, std::vector<HBOIpPreset*>{preset});
    board->adoptPreset(preset);
}

}  // namespace

bool HBOParser::migrateV1ToV2(HBOBoard* board) {
    if (!board || !HBOBoardUtils::isV2SchemaEnabled())
        return false;
    const std::string oldVersion = board->getBoardSchemaVersion();
    if (oldVersion != "1.1" && oldVersion != "1.0")
        return false;
    board->addJtagChain("chain1");
    HBOBoardComponent* part = board->getActivePart();
    if (!part)
        return false;
    board->addBoardComponent(part);
    part->setComponentName("part0");
    part->setType("fpga");
    part->setVendorName("korvel");
    const std::string position = part->getJtagPosition();
    part->setJtagPosition(position);
    part->addJtagPosition("chain1", position);

    std::vector<HBOBusIf*> interfaces;
    part->getBusIfSeq(interfaces, true);
    for (HBOBusIf* busIf : interfaces) {
        if (!busIf)
            continue;
        HBOBoardComponent* component = new HBOBoardComponent();
        component->setBoard(board);
        component->setBoardFile(board->getBoardFile());
        component->setRepository(board->getRepository());
        component->setComponentName(busIf->getName());
        busIf->setOfComponent(busIf->getName());
        component->setType("chip");
        component->setSubType(subTypeOf(busIf, component));
        component->setName(board->getVendor(), board->getBoardName(), busIf->getName(), board->getVersion());
        for (HBOPortMap* portMap : busIf->getPortMapSeq()) {
            HBOModelPort* port = nullptr;
            if (portMap && part->getModelPortByName(port, portMap->getPhysicalPort()) && port)
                busIf->addPort(port);
        }
        if (!busIf->getPresetFile().empty())
            makePreset(board, busIf);
        board->addBoardComponent(component);
    }

    std::vector<HBOModelPort*> ports;
    part->getModelPortSeq(ports);
    int runningIndex = 0;
    for (HBOModelPort* port : ports) {
        std::vector<HBOPinProps*> pins;
        port->getPortPropsSeq(pins);
        for (HBOPinProps* pin : pins) {
            HBOPinProps* copy = new HBOPinProps(*pin, part, port);
            copy->setPinIndex(runningIndex++);
            part->addPin(copy);
            // Keyed by the old index on purpose: later look-ups use the file's numbering.
            port->addPinPortMap(std::to_string(pin->getPinIndex()), pin->getName());
        }
    }
    board->setMigratedFromSchema(oldVersion);
    board->setBoardSchemaVersion("2.0");
    return false;
}
