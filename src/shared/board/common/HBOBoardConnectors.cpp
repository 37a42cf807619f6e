// Which daughter connectors fit which connectors of this board, computed once
// per catalogue change and kept in two caches.
#include "HBOBoard.h"

#include <locale>
#include <set>

#include <boost/algorithm/string/case_conv.hpp>
#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/split.hpp>

#include "HBOCase.h"
#include "HBOBoardBus.h"
#include "HBOBoardComponent.h"
#include "HBOBusIf.h"
#include "HUTConvert.h"

namespace {

bool sameCategory(const HBOBoardComponent* c, const HBOBoardComponent* d) {
    return (c->isDIMMConnector() && d->isDIMMConnector()) || (c->isPMODConnector() && d->isPMODConnector()) ||
           (c->isLPCCategoryConnector() && d->isLPCCategoryConnector()) ||
           (c->isSOMCategoryConnector() && d->isSOMCategoryConnector());
}

// Counts the interfaces of `daughter` that do and do not reach `fpga` through
// `base`. False when the pair cannot be compared at all.
bool countInterfaces(const HBOBoardComponent* fpga, const HBOBoardComponent* base,
                     const HBOBoardComponent* daughter, std::size_t& passing, std::size_t& failing) {
    passing = failing = 0;
    if (!fpga || !base || !daughter || !base->isConnector() || !daughter->isConnector())
        return false;
    if (!sameCategory(daughter, base))
        return false;
    std::vector<HBOBusIf*> interfaces;
    daughter->getBusIfSeq(interfaces, true);
    for (const HBOBusIf* busIf : interfaces) {
        if (fpga->canInterfaceBeConnected(base, daughter, busIf))
            ++passing;
        else
            ++failing;
    }
    return true;
}

bool inCache(const HBOBoard::ConnectorCache& cache, const HBOBoardComponent* own, const HBOBoardComponent* other) {
    if (!own)
        return false;
    auto it = cache.find(own->getName());
    if (it == cache.end())
        return false;
    for (const HBOBoardComponent* c : it->second)
        if (c == other)
            return true;
    return false;
}

}  // namespace

void HBOBoard::rebuildConnectorsCompatibilityCache(const std::vector<HBOBoard*>& boards) {
    if (m_integrated || !findFpgaComponent())
        return;

    std::vector<HBOBoardComponent*> daughterConnectors;
    for (const HBOBoard* board : boards) {
        if (!board || board->isIntegratedBoard() || board->hasFPGAPart())
            continue;
        board->getConnectorsList(daughterConnectors);
    }

    m_partialCompatCache.clear();
    m_fullCompatCache.clear();
    std::vector<HBOBoardComponent*> own;
    getConnectorsList(own);
    const HBOBoardComponent* fpga = getActivePart();
    if (!fpga)
        return;

    for (HBOBoardComponent* base : own) {
        for (HBOBoardComponent* daughter : daughterConnectors) {
            std::size_t passing = 0, failing = 0;
            if (!countInterfaces(fpga, base, daughter, passing, failing))
                continue;
            if (failing == 0)
                m_fullCompatCache[base->getName()].push_back(daughter);
            else
                m_partialCompatCache[base->getName()].push_back(daughter);
        }
    }
}

bool HBOBoard::isConnectorFullCompatibleWithConnector(const HBOBoardComponent* own,
                                                      const HBOBoardComponent* other) const {
    return inCache(m_fullCompatCache, own, other);
}

bool HBOBoard::isConnectorPartialCompatibleWithConnector(const HBOBoardComponent* own,
                                                         const HBOBoardComponent* other) const {
    return inCache(m_partialCompatCache, own, other);
}

bool HBOBoard::isConnectorCompatibleWithConnector(const HBOBoardComponent* own,
                                                  const HBOBoardComponent* other) const {
    return isConnectorFullCompatibleWithConnector(own, other) || isConnectorPartialCompatibleWithConnector(own, other);
}

void HBOBoard::getCompatibleConnectorsList(const HBOBoardComponent* own, std::vector<HBOBoardComponent*>& out) const {
    if (!own)
        return;
    auto partial = m_partialCompatCache.find(own->getName());
    if (partial != m_partialCompatCache.end())
        out.insert(out.end(), partial->second.begin(), partial->second.end());
    auto full = m_fullCompatCache.find(own->getName());
    if (full != m_fullCompatCache.end())
        out.insert(out.end(), full->second.begin(), full->second.end());
}

void HBOBoard::getLatestCompatibleConnectorsList(const HBOBoardComponent* own,
                                                 std::vector<HBOBoardComponent*>& out) const {
    std::vector<HBOBoardComponent*> list;
    getCompatibleConnectorsList(own, list);
    if (list.empty())
        return;

    std::set<const HBOBoardComponent*> kept;
    std::map<std::string, std::pair<double, HBOBoardComponent*>> newest;
    for (HBOBoardComponent* c : list) {
        if (!c)
            continue;
        std::vector<std::string> parts;
        const std::string name = HBOCase::lower(c->getName());
        boost::algorithm::split(parts, name, boost::algorithm::is_any_of(":"));
        double version = 0;
        if (parts.size() != 4 || !HUTConvert::stringToFloat(parts[3], version)) {
            kept.insert(c);
            continue;
        }
        const std::string key = parts[0] + ":" + parts[1] + ":" + parts[2];
        auto it = newest.find(key);
        if (it == newest.end())
            newest.emplace(key, std::make_pair(version, c));
        else if (version > it->second.first)
            it->second = std::make_pair(version, c);
    }
    for (const auto& entry : newest)
        kept.insert(entry.second.second);

    // A set of pointers has no meaningful order; the result follows the order
    // of the compatible list instead, so that it is the same at every call.
    std::set<const HBOBoardComponent*> added;
    for (HBOBoardComponent* c : list)
        if (c && kept.count(c) && added.insert(c).second)
            out.push_back(c);
}

void HBOBoard::getConnectorsList(std::vector<HBOBoardComponent*>& out) const {
    for (const auto& entry : m_components)
        if (entry.second && entry.second->isConnector())
            out.push_back(entry.second);
}

bool HBOBoard::getConnectedConnectors(const HBOBoardComponent* c, std::vector<HBOBoardComponent*>& out) const {
    if (!c)
        return false;
    const std::string& name = c->getComponentName();
    for (const HBOBoardBus* bus : m_buses) {
        if (!bus)
            continue;
        std::string other;
        if (bus->getComp1() == name)
            other = bus->getComp2();
        else if (bus->getComp2() == name)
            other = bus->getComp1();
        else
            continue;
        HBOBoardComponent* found = findBoardComponent(other);
        if (found && found->getType() == "connector")
            out.push_back(found);
    }
    return true;
}

void HBOBoard::getConnectedConnectors(std::vector<std::pair<HBOBoardComponent*, HBOBoardComponent*>>& pairs) const {
    for (const IntegratedConnection& triple : m_integratedConnections) {
        HBOBoardComponent* base = m_baseBoard ? m_baseBoard->findBoardComponent(triple.get<0>()) : nullptr;
        const HBOBoard* daughterBoard = triple.get<1>();
        HBOBoardComponent* daughter = daughterBoard ? daughterBoard->findBoardComponent(triple.get<2>()) : nullptr;
        // A pair that lost a side is of no use to anyone walking the pairs.
        if (base && daughter)
            pairs.push_back(std::make_pair(base, daughter));
    }
}

HBOBoardComponent* HBOBoard::getConnectorConnected(const HBOBoardComponent* c) const {
    if (!c || !m_baseBoard)
        return nullptr;
    for (const IntegratedConnection& triple : m_integratedConnections) {
        if (m_baseBoard->findBoardComponent(triple.get<0>()) != c)
            continue;
        const HBOBoard* daughterBoard = triple.get<1>();
        return daughterBoard ? daughterBoard->findBoardComponent(triple.get<2>()) : nullptr;
    }
    return nullptr;
}

bool HBOBoard::isConnectorConnected(const HBOBoardComponent* c) const {
    return getConnectorConnected(c) != nullptr;
}
