// Joining boards: an integrated board is a copy of a base board with daughter
// boards merged in under prefixes and wired to the base board's connectors.
#include "HBOBoard.h"

#include <locale>
#include <memory>

#include <boost/algorithm/string/case_conv.hpp>
#include <boost/format.hpp>

#include "HBOCase.h"
#include "ComMsgMgr.h"
#include "HBOBoardBus.h"
#include "HBOBoardBusNet.h"
#include "HBOBoardComponent.h"
#include "HBOBusIf.h"
#include "HBOImage.h"
#include "HBOIpPreset.h"
#include "HBOJumper.h"
#include "HBOParameter.h"
#include "HBOPinProps.h"
#include "HBORebase.h"
#include "HEXAll.h"
#include "HTCTaskHelpers.h"
#include "HUTMemWatcher.h"

namespace {

std::string lower(const std::string& s) {
    return HBOCase::lower(s);
}

// The last pin index of a connector of the given kind. Only these spellings
// count here ("som_240", not "som240"): connectors of other spellings get no
// pins of their own, and that is what boards built so far rely on.
int lastPinIndexOf(const std::string& subType) {
    if (subType == "fmc_lpc" || subType == "fmc_hpc")
        return 400;
    if (subType == "fmc_lpc_plus" || subType == "fmc_plus" || subType == "dimm")
        return 560;
    if (subType == "pmod")
        return 100;
    if (subType == "som_240" || subType == "som")
        return 240;
    if (subType == "som_480")
        return 480;
    return 0;
}

// Verifies that `board` has a connector named `connector`; throws otherwise.
void checkConnector(const HBOBoard& board, const std::string& connector) {
    const HBOBoardComponent* c = board.findBoardComponent(connector);
    if (!c)
        throw HEXError(ComMsgMgrInstance::createInstance::eval(2, __FILE__, __LINE__, "board", ComMsgMgr::MSG_ERROR,
                                                               "@49-126@%s%s", board.getName(), connector));
    if (!c->isConnector())
        throw HEXError(ComMsgMgrInstance::createInstance::eval(2, __FILE__, __LINE__, "board", ComMsgMgr::MSG_ERROR,
                                                               "@49-127@%s%s", connector, board.getName()));
}

}  // namespace

HBOBoard* HBOBoard::createBoard(const HBOBoard* base, const std::vector<IntegratedConnection>& connections,
                                const std::string& name) {
    const std::string watchName = (boost::format("HBOBoard::CreateBoard %1%") % name).str();
    HUTMemWatcher watch(watchName.c_str(), "board");
    ComMsgMgr::sendScopedMsg::eval(3, __FILE__, __LINE__, "board", "board.BoardCreation", ComMsgMgr::MSG_DEBUG1,
                                   "Creating Integrated Board %s : Base Board=%s, Connections Size=%d\n", name,
                                   base ? base->getName() : std::string(), static_cast<int>(connections.size()));
    for (std::size_t i = 0; i < connections.size(); ++i) {
        const HBOBoard* daughter = connections[i].get<1>();
        ComMsgMgr::sendScopedMsg::eval(
            4, __FILE__, __LINE__, "board", "board.BoardCreation", ComMsgMgr::MSG_DEBUG1,
            "  Connection(%d): Base Board Connector=%s, Daughter Board=%s Daughter Board Connector=%s\n",
            static_cast<int>(i), connections[i].get<0>(), daughter ? daughter->getName() : std::string(),
            connections[i].get<2>());
    }

    if (!base)
        throw HEXError(ComMsgMgrInstance::createInstance::eval(0, __FILE__, __LINE__, "board", ComMsgMgr::MSG_ERROR,
                                                               "@49-85@"));
    if (base->isIntegratedBoard())
        throw HEXError(ComMsgMgrInstance::createInstance::eval(1, __FILE__, __LINE__, "board", ComMsgMgr::MSG_ERROR,
                                                               "@49-84@%s", base->getName()));

    const HBOBoardComponent* baseActive = base->getActivePart();
    const std::string activeName = baseActive ? baseActive->getComponentName() : std::string();

    // Every connector is checked before anything is built, so a failure leaves nothing behind.
    for (const IntegratedConnection& c : connections) {
        if (!c.get<1>())
            continue;
        checkConnector(*base, c.get<0>());
        checkConnector(*c.get<1>(), c.get<2>());
    }

    std::unique_ptr<HBOBoard> board(new HBOBoard(*base, name));
    board->setIntegratedBoard(true);
    board->setBaseBoard(base);

    for (const IntegratedConnection& c : connections)
        if (c.get<1>())
            board->mergeDaughterBoard(*c.get<1>(), c.get<0>());
    for (const IntegratedConnection& c : connections)
        board->createConnection(c.get<0>(), c.get<0>() + "_" + c.get<2>());

    HBOBoardComponent* active = activeName.empty() ? board->findFpgaComponent()
                                                   : board->findFpgaComponentByName(activeName);
    board->setActivePart(active);
    if (active) {
        for (const IntegratedConnection& c : connections) {
            const HBOBoardComponent* baseConnector = board->findBoardComponent(lower(c.get<0>()));
            const HBOBoardComponent* daughterConnector =
                board->findBoardComponent(lower(c.get<0>() + "_" + c.get<2>()));
            active->copyInterfacesFromComponent(baseConnector, daughterConnector);
        }
        active->createModelPortsForInterfaces();
    }

    board->setBaseBoard(base);
    board->m_integratedConnections = connections;
    board->updateEnablement();
    return board.release();
}

void HBOBoard::mergeDaughterBoard(const HBOBoard& daughter, const std::string& prefix) {
    m_fallbackString = daughter.m_fallbackString;
    m_constraintsFlagFallback = daughter.m_constraintsFlagFallback;

    for (const HBOParameter* p : daughter.m_parameters)
        if (p)
            m_parameters.push_back(new HBOParameter(*p, prefix));
    for (const std::string& chain : daughter.m_jtagChains)
        addJtagChain(lower(prefix + "_" + chain));
    cloneJumpersAndImages(daughter.m_jumpers, daughter.m_images, prefix);

    for (const auto& entry : daughter.m_components) {
        const HBOBoardComponent* c = entry.second;
        if (!c || c->getType() == "fpga")
            continue;
        // A daughter part may exist only on one base connector.
        std::string connectsWith;
        if (c->getParamValue("connects_with", connectsWith) && connectsWith != prefix)
            continue;
        HBOBoardComponent* clone = new HBOBoardComponent(*c, this, prefix);
        for (const HBOJumper* j : daughter.m_jumpers)
            if (j)
                clone->updateEnablementDependencyJumperName(j->getName(), prefix + "_" + j->getName());
        HBOBoardComponent*& slot = m_components[clone->getComponentName()];
        if (slot && slot != clone) {
            // Only a clone of this board can sit there, and it would be lost.
            if (m_activePart == slot)
                m_activePart = nullptr;
            delete slot;
        }
        slot = clone;
    }

    for (const HBOBoardBus* b : daughter.m_buses) {
        if (!b)
            continue;
        HBOBoardBus* clone = new HBOBoardBus(*b, this, prefix);
        for (const HBOJumper* j : daughter.m_jumpers)
            if (j)
                clone->updateEnablementDependencyJumperName(j->getName(), prefix + "_" + j->getName());
        m_buses.push_back(clone);
    }

    auto mergePresets = [this, &prefix](const IpPresetMap& from, bool associations) {
        for (const auto& entry : from) {
            std::vector<HBOIpPreset*> clones;
            for (const HBOIpPreset* p : entry.second) {
                if (!p)
                    continue;
                HBOIpPreset* clone = new HBOIpPreset(*p, this, prefix);
                m_ownedPresets.push_back(clone);
                clones.push_back(clone);
            }
            if (associations)
                setIpAssociatedInterface(HBORebase::name(prefix, entry.first), clones);
            else
                setIpPreset(HBORebase::name(prefix, entry.first), clones);
        }
    };
    mergePresets(daughter.m_ipPresets, false);
    mergePresets(daughter.m_ipAssocInterfaces, true);
}

void HBOBoard::createConnection(const std::string& a, const std::string& b) {
    const std::string nameA = lower(a);
    const std::string nameB = lower(b);
    const HBOBoardComponent* compA = findBoardComponent(nameA);
    if (!compA || !findBoardComponent(nameB))
        return;

    const std::string connection = nameA + "_" + nameB;
    const int last = lastPinIndexOf(compA->getSubType());

    HBOBoardBus* bus = new HBOBoardBus();
    bus->setConnectionName(connection);
    bus->setName(connection);
    bus->setComp1(nameA);
    bus->setComp2(nameB);
    bus->setStartIndexComp1(0);
    bus->setStopIndexComp1(last);
    bus->setStartIndexComp2(0);
    bus->setStopIndexComp2(last);

    createPinsForComponent(nameA, 0, last);
    createPinsForComponent(nameB, 0, last);

    for (int i = 0; i <= last; ++i) {
        HBOBoardBusNet* net = new HBOBoardBusNet();
        net->setName(connection + "_" + std::to_string(i));
        net->setBoardBus(connection);
        net->setOwner(bus);
        net->setC1PinIndex(i);
        net->setC2PinIndex(i);
        bus->addBoardBusNet(net);
    }
    m_buses.push_back(bus);
    bus->setOwner(this);
}

bool HBOBoard::createPinsForComponent(const std::string& component, int first, int last) {
    HBOBoardComponent* c = findBoardComponent(component);
    if (!c || first > last)
        return false;
    for (int i = first; i <= last; ++i) {
        // The index table decides: in a copied component it still shows the source's pins.
        if (c->getPinByIndex(i))
            continue;
        HBOPinProps* pin = new HBOPinProps();
        pin->setName(component + "_" + std::to_string(i));
        pin->setPinIndex(i);
        pin->setOwner(c);
        c->addPin(pin);
    }
    return true;
}

void HBOBoard::appendBoard(const HBOBoard* other, const std::string& name) {
    if (!other)
        return;
    if (other != this) {
        m_fallbackString = other->m_fallbackString;
        m_constraintsFlagFallback = other->m_constraintsFlagFallback;
    }
    // Walk copies: `other` may be this board itself.
    const std::vector<std::string> chains = other->m_jtagChains;
    for (const std::string& chain : chains)
        addJtagChain(chain);
    cloneJumpersAndImages(std::vector<HBOJumper*>(other->m_jumpers), std::vector<HBOImage*>(other->m_images), "");

    const ComponentMap components = other->m_components;
    for (const auto& entry : components) {
        if (!entry.second)
            continue;
        HBOBoardComponent* clone = new HBOBoardComponent(*entry.second, this, "");
        const std::string componentName = lower(name + "_" + clone->getComponentName());
        clone->setName(lower(m_vendor + ":" + m_boardName + ":" + componentName + ":" + m_version));
        clone->setComponentName(componentName);
        std::vector<HBOBusIf*> interfaces;
        clone->getBusIfSeq(interfaces, true);
        for (HBOBusIf* busIf : interfaces)
            busIf->setName(name + "_" + busIf->getName());
        HBOBoardComponent*& slot = m_components[componentName];
        if (slot && slot != clone) {
            if (m_activePart == slot)
                m_activePart = nullptr;
            delete slot;
        }
        slot = clone;
    }

    const std::vector<HBOBoardBus*> buses = other->m_buses;
    for (const HBOBoardBus* b : buses) {
        if (!b)
            continue;
        HBOBoardBus* clone = new HBOBoardBus(*b, this, "");
        clone->setName(name + "_" + clone->getName());
        clone->setComp1(name + "_" + clone->getComp1());
        clone->setComp2(name + "_" + clone->getComp2());
        clone->setConnectionName(name + "_" + clone->getConnectionName());
        m_buses.push_back(clone);
    }

    // Copies of the maps: `other` may be this board.
    const IpPresetMap presets = other->m_ipPresets;
    const IpPresetMap associations = other->m_ipAssocInterfaces;
    for (const auto& entry : presets)
        setIpPreset(entry.first, clonePresets(entry.second));
    for (const auto& entry : associations)
        setIpAssociatedInterface(entry.first, clonePresets(entry.second));

    m_activePart = findFpgaComponent();
}

std::string HBOBoard::getIntegratedBoardConnectionsAsString() const {
    std::string out;
    for (const IntegratedConnection& c : m_integratedConnections) {
        if (!out.empty())
            out += " ";
        out += HTCTaskHelpers::brace(c.get<0>());
        const HBOBoard* daughter = c.get<1>();
        const HBOBoardComponent* connector =
            (daughter && !c.get<2>().empty()) ? daughter->findBoardComponent(c.get<2>()) : nullptr;
        if (connector)
            out += " " + connector->getName();
    }
    return out;
}

std::string HBOBoard::getIntegratedBoardConnectionsAsStringProperty() const {
    std::string out;
    for (const IntegratedConnection& c : m_integratedConnections) {
        if (!out.empty())
            out += " ";
        out += c.get<0>();
        const HBOBoard* daughter = c.get<1>();
        const HBOBoardComponent* connector =
            (daughter && !c.get<2>().empty()) ? daughter->findBoardComponent(c.get<2>()) : nullptr;
        if (connector)
            out += " " + connector->getName();
    }
    return "{" + out + "}";
}
